#pragma once

#include "drill/course_copies.h"
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

/// Records verdicts and updates the levels. A verdict and the day's score that it changes are stored in one
/// transaction.
class Scoring {
public:
    Scoring(store::Course& course, const scheduler::DeadTimes& dead_times, const DrillState& state, Display& display,
            Statistics& statistics, StatusLine& status, platform::Clock& clock, platform::Desktop& desktop,
            EndOfProgram& end_of_program, CourseCopies& copies);

    /// Judges the current question as known: its level rises as far as the time since its last test allows.
    /// @throws platform::DatabaseError, common::OverflowError; nothing has changed then.
    /// @throws store::OutcomeUnknown; no question is on display then.
    /// @throws common::ProgramEnded, after a message, if the record has vanished: another program has changed the
    /// course.
    void set_success(scheduler::JudgedBy by = scheduler::JudgedBy::user);

    /// Judges the current question as not known: its level falls to 0. Clears the status line first; if this throws,
    /// the caller has to ask for the verdict again.
    /// @throws platform::DatabaseError, common::OverflowError; nothing has changed then.
    /// @throws store::OutcomeUnknown, or store::RecordGone if the record has vanished; no question is on display then.
    void set_failure(scheduler::JudgedBy by = scheduler::JudgedBy::user);

    /// Stores that the current question, if any, was shown now, so that it is not asked again at once.
    /// @throws platform::DatabaseError
    void StampLastShow();

    /// Command: gives the question judged last its previous level and shows it again. Only the level is restored.
    /// Without a verdict since the course was opened it does nothing. An error is reported in a box.
    void m_undo();

    /// Command: after a confirmation and a copy of the course, resets every question to level 0 and clears its history
    /// in both directions.
    /// @throws platform::DatabaseError; nothing has changed then.
    void m_reset_all();

private:
    scheduler::Verdict judge_current(bool known, scheduler::JudgedBy by);
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
    CourseCopies& copies_;
};

} // namespace cuedrill::drill
