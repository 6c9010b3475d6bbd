#pragma once

#include "common/date_time.h"
#include "common/int16.h"
#include "scheduler/dead_time.h"
#include "store/course.h"

#include <optional>
#include <string>

namespace cuedrill::scheduler {

/// Who has found out whether the answer was known.
enum class JudgedBy {
    user,   ///< who has seen the answer
    program ///< by comparing what was typed, or put together from the words of a hint
};

/// A verdict on a question, as it is stored.
struct Verdict {
    common::Int16 cnt = 0;
    common::Int16 old_level = 0;
    common::Int16 new_level = 0;
    common::Int16 score_today = 0; ///< the day's score after it
    double elapsed = 0;            ///< days since the last test, or what a question never tested counts as
};

/// Stores a verdict on the question `cnt`. If it was known, its level rises as far as the time since its last test
/// allows; otherwise it falls to 0. The day's score and the work time are stored in the same transaction. The verdict
/// becomes the last one of the course, which can be undone.
/// @throws store::RecordGone if there is no such record; platform::DatabaseError, common::OverflowError. Nothing has
/// changed in these cases.
/// @throws store::OutcomeUnknown if it is not known whether it is stored; `store::settle` finds out.
Verdict judge(store::Course& course, const DeadTimes& dead_times, common::Int16 cnt, bool known, common::DateTime now,
              JudgedBy by = JudgedBy::user);

/// "score of previous question increased from 0 to 3 (elapsed 0.40 days)", or why it was not.
std::string success_text(const Verdict& verdict);

/// Restores the level that the last judged question had before; the rest of its history stays.
/// @return the verdict that was undone; std::nullopt if there is none.
/// @throws store::RecordGone, platform::DatabaseError; nothing has changed then.
/// @throws store::OutcomeUnknown
std::optional<store::LastVerdict> undo_last_verdict(store::Course& course);

/// Resets every question to level 0 and clears its history in both directions, and resets the score and the work times.
/// No verdict can be undone afterwards.
/// @throws platform::DatabaseError; nothing has changed then.
/// @throws store::OutcomeUnknown
void reset_all(store::Course& course, common::DateTime now);

/// Marks the question `cnt` as shown at `now`, so that it is not asked again at once. A record that
/// no longer exists is ignored.
/// @throws platform::DatabaseError
void stamp_last_show(store::Course& course, common::Int16 cnt, common::DateTime now);

} // namespace cuedrill::scheduler
