#pragma once

#include "common/date_time.h"
#include "scheduler/dead_time.h"
#include "store/course.h"

#include <cstdint>
#include <optional>
#include <string>

namespace cuedrill::scheduler {

/// When the next question can be asked.
struct NextDue {
    common::DateTime at;            ///< the first second in which one is mature; may have passed
    std::int64_t by_end_of_day = 0; ///< how many are mature by the end of that day, or of today when it has passed
    bool was_just_shown = false;    ///< it is mature, but was asked last, and no question is asked twice in a row
};

/// Finds the question of the open course that is mature first, by the rules of the selection: it is below the target
/// level, its dead time has passed since its last test, and the dead time without a verdict since its last show.
/// @return std::nullopt if none ever will be, because all questions have reached the target level.
/// @throws platform::DatabaseError
std::optional<NextDue> find_next_due(store::Course& course, const DeadTimes& dead_times, common::DateTime now);

/// "The next question is due at 18:05. 3 questions are due by the end of the day." The time is rounded up to the
/// minute; within the next minute, and in the last minute of a day, it has seconds. The date is given if it
/// differs from that of `now`.
std::string next_due_text(const NextDue& due, common::DateTime now);

} // namespace cuedrill::scheduler
