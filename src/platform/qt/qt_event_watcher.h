#pragma once

#include <QEvent>
#include <QObject>
#include <functional>

namespace cuedrill::platform::qt {

/// Reports the events of an object before it gets them, until the watcher is destroyed.
class EventWatcher : public QObject {
public:
    EventWatcher(QObject& watched, std::function<void(QEvent::Type)> told) : told_(std::move(told))
    {
        watched.installEventFilter(this);
    }

    bool eventFilter(QObject* /*watched*/, QEvent* event) override
    {
        told_(event->type());
        return false;
    }

private:
    std::function<void(QEvent::Type)> told_;
};

} // namespace cuedrill::platform::qt
