#pragma once

#include "scheduler/dead_time.h"
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

/// Number of questions by level, from 0 to 10.
using LevelNumbers = std::array<std::int64_t, highest_level + 1>;

/// Number of questions by level in both directions. A level that is null or no level counts in none.
struct LevelsOfBoth {
    LevelNumbers q{}; ///< where `q` is asked
    LevelNumbers a{}; ///< where `a` is asked

    friend bool operator==(const LevelsOfBoth&, const LevelsOfBoth&) = default;
};

/// Counts the questions of the open course at each level, with one statement that reads the two indexes.
/// @throws platform::DatabaseError
LevelsOfBoth count_levels(store::Course& course);

} // namespace cuedrill::scheduler
