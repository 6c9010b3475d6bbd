#pragma once

#include <array>
#include <functional>

class QLabel;
class QString;
class QWidget;

namespace cuedrill::platform::qt {

/// Presents `label` to assistive technology as a notification, of which screen readers tell at once, instead of as a
/// label, which they read only on demand. To be called before the label is first shown.
void make_notification(QLabel& label);

/// Tells assistive technology that the notification `label` has something new to say.
void announce(QLabel& label);

/// Notifications that take no room in their window, for what is only to be told. Assistive technology learns that there
/// is one and asks for its text later, so each text stays while the next one is told.
class QtAnnouncer {
public:
    /// @param tell tells that a label has something new to say.
    explicit QtAnnouncer(QWidget& window, std::function<void(QLabel&)> tell = qt::announce);

    /// Has assistive technology tell `text`, also when it is the same as the last one. Nothing to be told is not told.
    void tell(const QString& text);

private:
    std::array<QLabel*, 2> labels_; ///< the one that is next comes first
    std::function<void(QLabel&)> tell_;
};

} // namespace cuedrill::platform::qt
