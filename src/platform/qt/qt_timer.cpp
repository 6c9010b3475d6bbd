#include "platform/qt/qt_timer.h"

#include <utility>

namespace cuedrill::platform::qt {

QtTimer::QtTimer(QtGuard& guard) : QtTimer([&guard](const Handler& handler) { guard.run(handler); })
{
}

QtTimer::QtTimer(QtActionGate& gate)
    : QtTimer([&gate](const Handler& handler) { static_cast<void>(gate.run(handler)); })
{
}

QtTimer::QtTimer(std::function<void(const Handler&)> run) : run_(std::move(run))
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
    run_(on_tick);
    ticking_ = false;
}

} // namespace cuedrill::platform::qt
