#pragma once

#include "platform/system/system_clock.h"
#include "tools/verb.h"

#include <optional>

namespace cuedrill::tools {

/// Tells on a terminal how far a work is that takes more than a second. It is one line, which is written anew each
/// time.
class ProgressLine {
public:
    explicit ProgressLine(Surroundings& around) : around_(around), begun_(clock_.steady_seconds()) {}

    /// @param percent how much is done; std::nullopt where it is not known, or is done soon.
    void show(std::optional<int> percent);

    /// Removes the line.
    void clear();

private:
    Surroundings& around_;
    platform::system::SystemClock clock_;
    double begun_;
    std::optional<int> shown_;
};

} // namespace cuedrill::tools
