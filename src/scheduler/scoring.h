#pragma once

#include "common/date_time.h"
#include "common/int16.h"
#include "platform/clock.h"
#include "platform/desktop.h"
#include "scheduler/dead_time.h"
#include "scheduler/end_of_program.h"
#include "scheduler/ports.h"
#include "scheduler/statistics.h"
#include "store/course.h"
#include "store/course_params.h"
#include "store/course_transaction.h"
#include "store/records.h"

#include <optional>

namespace cuedrill::scheduler {

/// Records verdicts and moves the levels. The day's score is stored together with the verdict that changed it, so that
/// neither is ever there without the other.
class Scoring {
public:
    struct Views {
        QuestionDisplay& display;
        StatusLine& status;
        StatisticsPanels& panels;
    };

    Scoring(store::Course& course, store::CourseParamsStore& params, const DeadTimes& dead_times,
            Statistics& statistics, const Views& views, platform::Clock& clock, platform::Desktop& desktop,
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

    /// From now on there is no verdict to be undone.
    void forget_last_verdict() { m_last_verdict.reset(); }

    /// There is no verdict to be undone when the last one was about this record: it has been changed or deleted.
    void forget_last_verdict_on(common::Int16 cnt);

private:
    struct LastVerdict {
        common::Int16 cnt = 0;
        common::Int16 old_score = 0; ///< level before the verdict
    };

    [[nodiscard]] std::optional<store::RecordSide> asked_side(common::Int16 cnt) const;
    [[nodiscard]] store::CourseParams with_score(int change) const;
    void restore_level(const LastVerdict& verdict);
    void store_verdict(store::CourseTransaction& transaction, const LastVerdict& verdict,
                       const store::CourseParams& params, const store::StoredVerdict& stored);
    void after_verdict(common::Int16 new_score);
    void reset_all();
    bool nothing_tested();
    void refresh_counts();
    void tell_success(common::Int16 old_score, common::Int16 new_score, double elapsed);

    store::Course& m_course;
    store::CourseParamsStore& m_params;
    const DeadTimes& m_dead_times;
    Statistics& m_statistics;
    Views m_views;
    platform::Clock& m_clock;
    platform::Desktop& m_desktop;
    EndOfProgram& m_end_of_program;
    std::optional<LastVerdict> m_last_verdict;
};

} // namespace cuedrill::scheduler
