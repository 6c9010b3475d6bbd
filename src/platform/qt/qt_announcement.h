#pragma once

#include "platform/qt/qt_event_watcher.h"

#include <QString>
#include <QTimer>
#include <array>
#include <functional>

class QLabel;
class QWidget;

namespace cuedrill::platform::qt {

/// Tells assistive technology that the notification `label` has new text.
void announce(QLabel& label);

/// Announces texts that need not be visible.
///
/// Screen readers speak a notification at once, but some stop when the next one comes. So the texts of one action are
/// collected for a moment and announced as one.
class QtAnnouncer {
public:
    /// @param window the main window. Before a modal box blocks it, texts that wait are announced.
    /// @param tell announces a label; a parameter for tests.
    explicit QtAnnouncer(QWidget& window, std::function<void(QLabel&)> tell = qt::announce);

    /// Has assistive technology announce `text`, even if it equals the last one. Does nothing for an empty text.
    void tell(const QString& text);

    /// The same at once, for a text that the next one replaces: those that wait come first.
    void tell_now(const QString& text);

    /// The same at once, for the last text before the program ends. If assistive technology is active, this returns
    /// only when it has had the time to read the text; meanwhile there is no input of the user.
    void tell_last(const QString& text);

private:
    void flush();

    std::array<QLabel*, 2> labels_; ///< the next one to use comes first
    std::function<void(QLabel&)> tell_;
    QString waiting_;
    QTimer timer_;
    EventWatcher watcher_;
};

} // namespace cuedrill::platform::qt
