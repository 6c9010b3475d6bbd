#include "platform/qt/qt_timer.h"

namespace cuedrill::platform::qt {

QtTimer::QtTimer(QtGuard& guard) : guard_(guard)
{
    // A coarse timer may be 5 % late, and a clock of seconds would sometimes skip one.
    timer_.setTimerType(Qt::PreciseTimer);
    QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { tick(); });
}

void QtTimer::start(std::chrono::milliseconds period)
{
    timer_.start(period);
}

void QtTimer::stop()
{
    timer_.stop();
}

void QtTimer::tick()
{
    if (ticking_)
        return;
    ticking_ = true;
    guard_.run(on_tick);
    ticking_ = false;
}

} // namespace cuedrill::platform::qt
