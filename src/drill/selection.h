#pragma once

#include "drill/course_options.h"
#include "drill/display.h"
#include "drill/status_line.h"
#include "platform/clock.h"
#include "platform/desktop.h"
#include "platform/random_source.h"
#include "scheduler/dead_time.h"
#include "store/course.h"
#include "store/course_params.h"

#include <optional>

namespace cuedrill::drill {

/// Decides which question comes next.
class Selection {
public:
    struct Services {
        platform::Clock& clock;
        platform::RandomSource& random;
        platform::Desktop& desktop;
        StatusLine& status;
    };

    Selection(store::Course& course, store::CourseParamsStore& params, const scheduler::DeadTimes& dead_times,
              const DrillState& state, Display& display, CourseOptions& options, const Services& services);

    /// Puts the next mature question on display, higher levels first and not the same one twice in a row, or says
    /// that there is none, and in the status line when the next one is due; then no question is on display and the
    /// current record is 0.
    /// @throws platform::DatabaseError, common::OverflowError, common::OutOfRangeError; no question is on display then.
    void next_question() { next_question_after(state_.shown.current_cnt()); }

    /// The same where the last question was the record `previous`; 0 for none.
    void next_question_after(common::Int16 previous);

    /// Tells in the status line when the next question is due; nothing when none will ever be.
    /// @throws platform::DatabaseError
    void tell_next_due();

    /// Command: turns the random extraction on or off.
    void m_random_extraction();

    /// Command: tells the number of mature questions.
    void m_disp_nr_mature();

private:
    [[nodiscard]] bool ask_next(common::DateTime now);
    [[nodiscard]] std::optional<common::Int16> find_next_question(common::DateTime now);
    void show_next_due(std::optional<common::DateTime> searched_at);

    store::Course& course_;
    store::CourseParamsStore& params_;
    const scheduler::DeadTimes& dead_times_;
    const DrillState& state_;
    Display& display_;
    CourseOptions& options_;
    Services services_;
};

} // namespace cuedrill::drill
