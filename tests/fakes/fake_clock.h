#pragma once

#include "platform/clock.h"

#include <cstdint>
#include <optional>

namespace cuedrill::fakes {

/// A clock that stands still until a test moves it.
class FakeClock : public platform::Clock {
public:
    FakeClock();

    common::DateTime time; ///< at first 15/11/2026 05:47:17
    /// Set for a time of day with fractions, or one that disagrees with `time`; else it is that of `time`.
    std::optional<double> set_seconds_since_midnight;
    /// Moves the steady seconds alone, by fractions too.
    double steady_seconds_more = 0;

    [[nodiscard]] common::DateTime now() const override;
    [[nodiscard]] double seconds_since_midnight() const override;
    [[nodiscard]] double steady_seconds() const override;

    void advance_seconds(std::int64_t seconds);
    void advance_days(double days);
};

} // namespace cuedrill::fakes
