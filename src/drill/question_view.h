#pragma once

#include "common/date_time.h"
#include "drill/displays.h"
#include "drill/drill_state.h"
#include "drill/hints.h"
#include "drill/status_line.h"
#include "drill/window_layout.h"
#include "platform/clock.h"
#include "platform/form1.h"
#include "store/course.h"
#include "store/records.h"

#include <string>
#include <string_view>
#include <utility>

namespace cuedrill::drill {

/// The question and answer boxes, and the figures of the question on display.
class QuestionView : public QuestionDisplay {
public:
    QuestionView(platform::Form1& form1, store::Course& course, DrillState& state, StatusLine& status,
                 WindowLayout& layout, Hints& hints, platform::Clock& clock)
        : form1_(form1), course_(course), state_(state), status_(status), layout_(layout), hints_(hints), clock_(clock)
    {
    }

    /// Gives every label its fixed text.
    void set_captions();

    /// Applies the font of the course to both boxes.
    void ApplyTextFont();

    /// Asks the current record: with its hint and the caret in the answer box where the course wants them always. Where
    /// the record has vanished meanwhile, no question is on display afterwards.
    /// @throws platform::DatabaseError; no question is on display then either.
    void show_question() override;

    /// Shows the current record as `show_question` does, but asks nothing.
    /// @throws platform::DatabaseError; no question is on display then.
    void show_record();

    /// Shows the current record with its answer.
    /// @throws platform::DatabaseError; no question is on display then.
    void show_record_and_answer();

    void refresh_figures() override;
    void clear_answer_state() override;

    /// Shows the statistics where a list stands.
    void leave_list();

    void withdraw_question() override;

    /// Shows the stored answer, on light red when the user had marked it as not known, otherwise on light green.
    void RevealAnswer();

    /// Has `verdict` told together with the next question: assistive technology might skip the first of two texts.
    void announce_with_next(std::string verdict) { verdict_to_tell_ = std::move(verdict); }

    /// Shows the stored answer to be changed.
    void show_answer_for_editing();

    /// Puts the caret into the answer box. Until the answer is shown, "*", "+" and "-" are ordinary characters then.
    void let_me_type();

private:
    void forget_answer();
    void load_current_record();
    void ask();
    void announce();
    void show_figures(const store::RecordSide& asked, common::DateTime now);
    void show_texts(std::string_view question);
    template <class Show>
    void or_withdraw(Show show);

    platform::Form1& form1_;
    store::Course& course_;
    DrillState& state_;
    StatusLine& status_;
    WindowLayout& layout_;
    Hints& hints_;
    platform::Clock& clock_;
    std::string verdict_to_tell_;
};

} // namespace cuedrill::drill
