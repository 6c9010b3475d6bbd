#include "platform/qt/qt_timer.h"

namespace cuedrill::platform::qt {

QtTimer::QtTimer(QtGuard& guard) : m_guard(guard)
{
    // A coarse timer may be late by a twentieth, and a clock of seconds would now and then skip one.
    m_timer.setTimerType(Qt::PreciseTimer);
    QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { tick(); });
}

void QtTimer::start(std::chrono::milliseconds period)
{
    m_timer.start(period);
}

void QtTimer::stop()
{
    m_timer.stop();
}

void QtTimer::tick()
{
    if (m_ticking)
        return;
    m_ticking = true;
    m_guard.run(on_tick);
    m_ticking = false;
}

} // namespace cuedrill::platform::qt
