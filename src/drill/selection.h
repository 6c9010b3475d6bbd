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

/// Selects the next question.
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

    /// Shows the next mature question: higher levels first, and never the same one twice in a row. If there is none, a
    /// box says so, the status line shows when the next one is due, no question is on display and the current record is
    /// 0.
    /// @throws platform::DatabaseError, common::OverflowError, common::OutOfRangeError; no question is on display then.
    void next_question() { next_question_after(state_.shown.current_cnt()); }

    /// Likewise, with the record `previous` as the last question; 0 for none.
    void next_question_after(common::Int16 previous);

    /// Shows in the status line when the next question is due. Does nothing if none will ever be.
    /// @throws platform::DatabaseError
    void tell_next_due();

    /// Command: turns random extraction on or off.
    void m_random_extraction();

    /// Command: shows the number of mature questions.
    void m_disp_nr_mature();

private:
    void settle();
    [[nodiscard]] bool ask_next(common::DateTime now);
    [[nodiscard]] std::optional<common::Int16> find_next_question(common::DateTime now);
    void show_next_due(bool found_nothing);

    store::Course& course_;
    store::CourseParamsStore& params_;
    const scheduler::DeadTimes& dead_times_;
    const DrillState& state_;
    Display& display_;
    CourseOptions& options_;
    Services services_;
};

} // namespace cuedrill::drill
