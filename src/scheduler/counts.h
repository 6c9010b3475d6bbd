#pragma once

#include "store/course.h"

#include <array>
#include <cstdint>

namespace cuedrill::scheduler {

/// The last group counts its level and all above it.
inline constexpr int last_counted_level = 5;

/// Number of questions by level, in the direction that is asked.
struct Counts {
    std::array<std::int64_t, last_counted_level + 1> level{}; ///< questions of each level; a null level counts in none
    std::int64_t unpassed = 0;                                ///< questions below the target level
};

/// Counts the questions of the open course.
/// @throws platform::DatabaseError
Counts count(store::Course& course);

} // namespace cuedrill::scheduler
