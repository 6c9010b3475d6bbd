#pragma once

#include <cstdint>
#include <string>

namespace cuedrill::torture {

/// When a driver is killed.
struct Kill {
    std::uint64_t calls = 0;        ///< by itself, at this call of the engine; 0: from outside
    std::uint64_t microseconds = 0; ///< from outside, after its first acknowledgement
};

/// What was left of a driver.
struct Remains {
    std::string output{};
    bool was_killed = false; ///< by SIGKILL; false if it has ended by itself
};

/// Runs torture_driver on a course until it is killed.
[[nodiscard]] Remains run_and_kill(const std::string& course, std::uint64_t script_seed, const Kill& kill);

} // namespace cuedrill::torture
