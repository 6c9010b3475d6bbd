#pragma once

#include "common/date_time.h"

namespace cuedrill::platform {

/// The local time. An operation reads it once and passes it on.
class Clock {
public:
    virtual ~Clock() = default;

    /// Current local date and time, in whole seconds.
    [[nodiscard]] virtual common::DateTime now() const = 0;

    /// Seconds since local midnight, with fractions.
    [[nodiscard]] virtual double seconds_since_midnight() const = 0;

    /// Monotonic time in seconds, with fractions, since an arbitrary start. Setting the machine's clock does not affect
    /// it. Cheap to read; meant for short intervals within one operation.
    [[nodiscard]] virtual double steady_seconds() const = 0;
};

} // namespace cuedrill::platform
