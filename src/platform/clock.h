#pragma once

#include "common/date_time.h"

namespace cuedrill::platform {

/// The local time. An operation reads it once and passes it on.
class Clock {
public:
    virtual ~Clock() = default;

    /// The present local date and time in whole seconds.
    [[nodiscard]] virtual common::DateTime now() const = 0;

    /// Seconds since local midnight, with fractions.
    [[nodiscard]] virtual double seconds_since_midnight() const = 0;

    /// Seconds, with fractions, from some moment on that means nothing. They only go forward, whatever is done to the
    /// clock of the machine, and are cheap to read: for short intervals within one operation.
    [[nodiscard]] virtual double steady_seconds() const = 0;
};

} // namespace cuedrill::platform
