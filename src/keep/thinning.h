#pragma once

#include "common/date_time.h"

#include <vector>

namespace cuedrill::keep {

/// Which copies are no longer needed. All of the last two days stay, also those that bear a later time than `now`; of
/// older ones, the last of each day for two weeks, the last of each week for two months, and the last of each month for
/// a year. The newest one always stays.
/// @param times of the copies, in any order and without repetitions.
/// @return a part of `times`, oldest first.
[[nodiscard]] std::vector<common::DateTime> to_remove(std::vector<common::DateTime> times, common::DateTime now);

} // namespace cuedrill::keep
