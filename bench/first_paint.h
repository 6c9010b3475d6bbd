#pragma once

#include <QEvent>
#include <QObject>
#include <QTimer>
#include <QWidget>
#include <cstdlib>

namespace cuedrill::bench {

/// Ends the process after `window` has been painted for the first time and the pending events have been processed.
class EndAtFirstPaint : public QObject {
public:
    explicit EndAtFirstPaint(QWidget& window) { window.installEventFilter(this); }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::Paint)
            QTimer::singleShot(0, [] { std::_Exit(EXIT_SUCCESS); });
        return QObject::eventFilter(watched, event);
    }
};

} // namespace cuedrill::bench
