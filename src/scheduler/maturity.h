#pragma once

#include "common/date_time.h"
#include "common/int16.h"
#include "scheduler/dead_time.h"
#include "store/side_fields.h"

#include <string>

namespace cuedrill::scheduler {

/// The statement that selects the mature questions of one level in the order in which they are asked: `cnt`, the level
/// and the date of the last test.
/// @param tested_only leaves out questions that were never tested.
/// @throws common::OutOfRangeError for a level outside 0 to 9.
std::string mature_query(const store::SideFields& asked, const DeadTimes& dead_times, int level, bool tested_only,
                         common::DateTime now);

enum class MatureResult { count, rows };

/// The statement that counts or selects the mature questions of all levels below the target, except those that were
/// never tested.
std::string all_mature_query(const store::SideFields& asked, const DeadTimes& dead_times, common::Int16 target_level,
                             MatureResult result, common::DateTime now);

} // namespace cuedrill::scheduler
