#pragma once

#include <QEvent>
#include <QObject>
#include <functional>

namespace cuedrill::platform::qt {

/// Tells of the events of a widget before the widget gets them. It stops telling when it is destroyed.
class EventWatcher : public QObject {
public:
    EventWatcher(QObject& watched, std::function<void(QEvent::Type)> told) : m_told(std::move(told))
    {
        watched.installEventFilter(this);
    }

    bool eventFilter(QObject* /*watched*/, QEvent* event) override
    {
        m_told(event->type());
        return false;
    }

private:
    std::function<void(QEvent::Type)> m_told;
};

} // namespace cuedrill::platform::qt
