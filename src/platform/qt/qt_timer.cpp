#include "platform/qt/qt_timer.h"

#include <algorithm>
#include <utility>

namespace cuedrill::platform::qt {

QtTimer::QtTimer(QtGuard& guard)
    : QtTimer(
          [&guard](const Handler& handler) {
              guard.run(handler);
              return true;
          },
          std::chrono::milliseconds::zero())
{
}

QtTimer::QtTimer(QtActionGate& gate, std::chrono::milliseconds longest_wait)
    : QtTimer([&gate](const Handler& handler) { return gate.run(handler); }, longest_wait)
{
}

QtTimer::QtTimer(Run run, std::chrono::milliseconds longest_wait) : run_(std::move(run)), longest_wait_(longest_wait)
{
    // A coarse timer may be 5 % late, and a clock of seconds would sometimes skip one.
    timer_.setTimerType(Qt::PreciseTimer);
    QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { tick(); });
}

void QtTimer::start(std::chrono::milliseconds period)
{
    period_ = period;
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
    const bool ran = run_(on_tick);
    ticking_ = false;
    const std::chrono::milliseconds next = ran ? period_ : wait_after_skipped_tick();
    if (timer_.isActive() && next != wait())
        timer_.start(next);
}

std::chrono::milliseconds QtTimer::wait_after_skipped_tick() const
{
    const std::chrono::milliseconds doubled = std::max(2 * wait(), std::chrono::milliseconds(1));
    return std::max(period_, std::min(doubled, longest_wait_));
}

} // namespace cuedrill::platform::qt
