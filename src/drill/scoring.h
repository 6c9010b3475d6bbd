#pragma once

#include "drill/display.h"
#include "drill/drill_state.h"
#include "drill/end_of_program.h"
#include "drill/statistics.h"
#include "drill/status_line.h"
#include "platform/clock.h"
#include "platform/desktop.h"
#include "scheduler/dead_time.h"
#include "scheduler/verdict.h"
#include "store/course.h"

namespace cuedrill::drill {

/// Records verdicts and moves the levels. The day's score is stored together with the verdict that changed it, so that
/// neither is ever there without the other.
class Scoring {
public:
    Scoring(store::Course& course, const scheduler::DeadTimes& dead_times, const DrillState& state, Display& display,
            Statistics& statistics, StatusLine& status, platform::Clock& clock, platform::Desktop& desktop,
            EndOfProgram& end_of_program);

    /// The current question was known: its level rises to what the time since its last test proves.
    /// @throws platform::DatabaseError, common::OverflowError; nothing has changed then.
    /// @throws store::OutcomeUnknown; no question is on display then.
    /// @throws common::ProgramEnded after a notice when the record has vanished: the course is not what it was.
    void set_success();

    /// The current question was not known: its level falls to 0. The status line is emptied first; where the verdict
    /// fails, it is up to the caller to ask for it again.
    /// @throws platform::DatabaseError, common::OverflowError; nothing has changed then.
    /// @throws store::OutcomeUnknown, and store::RecordGone when the record has vanished; no question is on display
    /// then.
    void set_failure();

    /// Marks the current question, if there is one, as shown now, so that it is not asked again at once.
    /// @throws platform::DatabaseError
    void StampLastShow();

    /// Command: gives the question that was last judged the level that it had before, and shows it again. Only the
    /// level comes back. Nothing happens without a verdict since the course was opened. An error is told in a box.
    void m_undo();

    /// Command: after a confirmation, sends every question back to level 0 and forgets its history in both directions.
    /// @throws platform::DatabaseError; nothing has changed then.
    void m_reset_all();

private:
    scheduler::Verdict judge_current(bool known);
    void show_verdict(const scheduler::Verdict& verdict);

    store::Course& course_;
    const scheduler::DeadTimes& dead_times_;
    const DrillState& state_;
    Display& display_;
    Statistics& statistics_;
    StatusLine& status_;
    platform::Clock& clock_;
    platform::Desktop& desktop_;
    EndOfProgram& end_of_program_;
};

} // namespace cuedrill::drill
