#pragma once

#include "platform/clock.h"

#include <cstdint>
#include <optional>

namespace cuedrill::fakes {

/// A clock that stands still until a test moves it.
class FakeClock : public platform::Clock {
public:
    common::DateTime time =
        common::DateTime::from_fields({.year = 2026, .month = 11, .day = 15, .hour = 5, .minute = 47, .second = 17});
    /// Set for a time of day with fractions, or one that disagrees with `time`; else it is that of `time`.
    std::optional<double> set_seconds_since_midnight;
    /// Moves the steady seconds alone, by fractions too.
    double steady_seconds_more = 0;

    [[nodiscard]] common::DateTime now() const override { return time; }

    [[nodiscard]] double seconds_since_midnight() const override
    {
        return set_seconds_since_midnight.value_or(static_cast<double>(time.seconds() - time.date_only().seconds()));
    }

    [[nodiscard]] double steady_seconds() const override
    {
        return static_cast<double>(time.seconds()) + steady_seconds_more;
    }

    void advance_seconds(std::int64_t seconds) { time = common::DateTime::from_seconds(time.seconds() + seconds); }
    void advance_days(double days) { time = time.plus_days(days); }
};

} // namespace cuedrill::fakes
