#pragma once

#include "platform/clock.h"

namespace cuedrill::platform::system {

/// The clock of the machine, in its local time zone.
class SystemClock : public Clock {
public:
    [[nodiscard]] common::DateTime now() const override;
    [[nodiscard]] double seconds_since_midnight() const override;
    [[nodiscard]] double steady_seconds() const override;
};

} // namespace cuedrill::platform::system
