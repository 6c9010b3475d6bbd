#pragma once

#include "common/date_time.h"
#include "common/int16.h"
#include "platform/random_source.h"
#include "scheduler/dead_time.h"
#include "store/course.h"

#include <cstdint>
#include <optional>

namespace cuedrill::scheduler {

/// Selects the next mature question of the open course: higher levels first, and never `not_this`.
/// @return its number; std::nullopt if there is none.
/// @throws platform::DatabaseError, and what `select_mature` throws
std::optional<common::Int16> next_question(store::Course& course, const DeadTimes& dead_times, common::Int16 not_this,
                                           common::DateTime now, platform::RandomSource& random);

/// Selects a mature question of one level: the one tested longest ago, or a random one if the course is set so.
/// @return std::nullopt if there is none.
/// @param tested_only leaves out questions that were never tested.
/// @throws common::OverflowError when its number does not fit 16 bits; common::OutOfRangeError when there are more than
///         10000 to draw from at random.
std::optional<common::Int16> select_mature(store::Course& course, const DeadTimes& dead_times, common::Int16 level,
                                           bool tested_only, common::DateTime now, platform::RandomSource& random);

/// Counts the mature questions of all levels below the target, except those never tested.
/// @throws platform::DatabaseError
std::int64_t count_mature(store::Course& course, const DeadTimes& dead_times, common::DateTime now);

} // namespace cuedrill::scheduler
