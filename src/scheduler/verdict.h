#pragma once

#include "common/date_time.h"
#include "common/int16.h"
#include "scheduler/dead_time.h"
#include "store/course.h"

#include <optional>
#include <string>

namespace cuedrill::scheduler {

/// A verdict on a question, as the course holds it.
struct Verdict {
    common::Int16 cnt = 0;
    common::Int16 old_level = 0;
    common::Int16 new_level = 0;
    common::Int16 score_today = 0; ///< the day's score after it
    double elapsed = 0;            ///< days since the last test, or what a question never tested counts as
};

/// Records a verdict on the question `cnt`: known lifts its level to what the time since its last test proves, not
/// known sends it to 0. The day's score and the work time are stored together with it, so that neither is ever there
/// without the other, and it becomes the course's last verdict.
/// @throws store::RecordGone when there is no such record; platform::DatabaseError, common::OverflowError. Nothing has
/// changed in these cases.
/// @throws store::OutcomeUnknown when nobody can tell whether it is stored; `store::settle` finds out.
Verdict judge(store::Course& course, const DeadTimes& dead_times, common::Int16 cnt, bool known, common::DateTime now);

/// "score of previous question increased from 0 to 3 (elapsed 0.40 days)", or why it was not.
std::string success_text(const Verdict& verdict);

/// Gives the question that was last judged its level of before, and nothing else of its history.
/// @return the verdict that is undone; nothing where there is none.
/// @throws store::RecordGone, platform::DatabaseError; nothing has changed then.
/// @throws store::OutcomeUnknown
std::optional<store::LastVerdict> undo_last_verdict(store::Course& course);

/// Sends every question back to level 0 and forgets its history in both directions, the score and the work times too.
/// No verdict can be undone then.
/// @throws platform::DatabaseError; nothing has changed then.
/// @throws store::OutcomeUnknown
void reset_all(store::Course& course, common::DateTime now);

/// Marks the question `cnt` as shown at `now`, so that it is not asked again at once. One that has vanished needs none.
/// @throws platform::DatabaseError
void stamp_last_show(store::Course& course, common::Int16 cnt, common::DateTime now);

} // namespace cuedrill::scheduler
