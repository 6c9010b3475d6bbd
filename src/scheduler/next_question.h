#pragma once

#include "common/date_time.h"
#include "common/int16.h"
#include "platform/random_source.h"
#include "scheduler/dead_time.h"
#include "store/course.h"

#include <cstdint>
#include <optional>

namespace cuedrill::scheduler {

/// The mature question of the open course that comes next: higher levels first, and never `not_this`. Nothing where
/// there is none.
/// @throws platform::DatabaseError, and what `select_mature` throws
std::optional<common::Int16> next_question(store::Course& course, const DeadTimes& dead_times, common::Int16 not_this,
                                           common::DateTime now, platform::RandomSource& random);

/// A mature question of one level; nothing where there is none. By the course's option it is the one that was tested
/// longest ago, or one drawn at random.
/// @param tested_only leaves out questions that were never tested.
/// @throws common::OverflowError when its number does not fit 16 bits; common::OutOfRangeError when there are more than
///         10000 to draw from at random.
std::optional<common::Int16> select_mature(store::Course& course, const DeadTimes& dead_times, common::Int16 level,
                                           bool tested_only, common::DateTime now, platform::RandomSource& random);

/// The number of mature questions of all levels below the target, those never tested left out.
/// @throws platform::DatabaseError
std::int64_t count_mature(store::Course& course, const DeadTimes& dead_times, common::DateTime now);

} // namespace cuedrill::scheduler
