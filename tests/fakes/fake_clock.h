#pragma once

#include "platform/clock.h"

#include <cstdint>
#include <optional>

namespace cuedrill::fakes {

/// A clock that stands still until a test advances it.
class FakeClock : public platform::Clock {
public:
    FakeClock();

    common::DateTime time; ///< initially 15/11/2026 05:47:17
    /// Overrides the time of day, for fractions or for a value that disagrees with `time`; by default it follows
    /// `time`.
    std::optional<double> set_seconds_since_midnight;
    /// Advances only the steady clock; may have fractions.
    double steady_seconds_more = 0;

    [[nodiscard]] common::DateTime now() const override;
    [[nodiscard]] double seconds_since_midnight() const override;
    [[nodiscard]] double steady_seconds() const override;

    void advance_seconds(std::int64_t seconds);
    void advance_days(double days);
};

} // namespace cuedrill::fakes
