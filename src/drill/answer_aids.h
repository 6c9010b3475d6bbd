#pragma once

#include "drill/course_options.h"
#include "drill/display.h"
#include "drill/drill_state.h"
#include "drill/hints.h"
#include "drill/statistics.h"
#include "drill/status_line.h"
#include "drill/window_layout.h"
#include "platform/form1.h"
#include "platform/text_compare.h"
#include "store/course.h"
#include "store/course_params.h"

namespace cuedrill::drill {

/// Commands that help with an answer: hints, typing, and the two options that turn them on for every question.
class AnswerAids {
public:
    struct Services {
        store::CourseParamsStore& params;
        Statistics& statistics;
        CourseOptions& options;
        Display& display;
        StatusLine& status;
        Hints& hints;
        WindowLayout& layout;
        const platform::TextCompare& text_compare;
    };

    AnswerAids(platform::Form1& form1, const store::Course& course, DrillState& state, const Services& services)
        : form1_(form1), course_(course), state_(state), services_(services)
    {
    }

    /// Command: refreshes the statistics and shows them in place of a hint or list.
    /// @throws platform::DatabaseError
    void m_view_stats();

    /// Command: shows a hint: the masked answer while the user is typing it, otherwise a list of words. If no question
    /// is on display, the status line says so.
    /// @throws platform::DatabaseError
    void m_view_hints();

    /// Command: lets the user type the answer.
    void m_let_me_type();

    /// Commands: toggle an option and store it with the course.
    /// @throws platform::DatabaseError; the option is unchanged then.
    void ToggleAlwaysType();
    void ToggleListMode();

private:
    [[nodiscard]] bool answer_box_holds_answer() const;

    platform::Form1& form1_;
    const store::Course& course_;
    DrillState& state_;
    Services services_;
};

} // namespace cuedrill::drill
