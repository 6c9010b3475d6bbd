#pragma once

#include <array>
#include <functional>

class QLabel;
class QString;
class QWidget;

namespace cuedrill::platform::qt {

/// Presents `label` to assistive technology as a notification, which screen readers announce at once, instead of a
/// label, which they read only on demand. Call it before the label is first shown.
void make_notification(QLabel& label);

/// Tells assistive technology that the notification `label` has new text.
void announce(QLabel& label);

/// Zero-size notifications for announcements without a visible text. Assistive technology hears of an announcement
/// first and asks for its text later, so two labels take turns: each text stays while the next one is announced.
class QtAnnouncer {
public:
    /// @param tell announces a label; a parameter for tests.
    explicit QtAnnouncer(QWidget& window, std::function<void(QLabel&)> tell = qt::announce);

    /// Has assistive technology announce `text`, even if it equals the last one. Does nothing for an empty text.
    void tell(const QString& text);

private:
    std::array<QLabel*, 2> labels_; ///< the next one to use comes first
    std::function<void(QLabel&)> tell_;
};

} // namespace cuedrill::platform::qt
