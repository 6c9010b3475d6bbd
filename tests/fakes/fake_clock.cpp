#include "fakes/fake_clock.h"

namespace cuedrill::fakes {

FakeClock::FakeClock()
    : time(common::DateTime::from_fields({.year = 2026, .month = 11, .day = 15, .hour = 5, .minute = 47, .second = 17}))
{
}

common::DateTime FakeClock::now() const
{
    return time;
}

double FakeClock::seconds_since_midnight() const
{
    return set_seconds_since_midnight.value_or(static_cast<double>(time.seconds() - time.date_only().seconds()));
}

double FakeClock::steady_seconds() const
{
    return static_cast<double>(time.seconds()) + steady_seconds_more;
}

void FakeClock::advance_seconds(std::int64_t seconds)
{
    time = common::DateTime::from_seconds(time.seconds() + seconds);
}

void FakeClock::advance_days(double days)
{
    time = time.plus_days(days);
}

} // namespace cuedrill::fakes
