#pragma once

#include "common/date_time.h"
#include "common/int16.h"
#include "drill/drill_state.h"
#include "drill/hints.h"
#include "drill/screen.h"
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

/// What is on display: which record, its texts in the question and answer boxes, and its figures. Nobody else chooses
/// the current record.
class Display {
public:
    /// A change of what is on display, or of the course that it belongs to. The question is withdrawn at the end of the
    /// scope unless the change is kept, as a transaction is undone unless it is committed: a verdict must never go to a
    /// question that nobody sees, nor to one that has had its verdict.
    class Change {
    public:
        explicit Change(Display& display) : display_(display) {}
        Change(const Change&) = delete;
        Change& operator=(const Change&) = delete;
        ~Change();

        void keep() { kept_ = true; }

    private:
        Display& display_;
        bool kept_ = false;
    };

    Display(platform::Form1& form1, store::Course& course, DrillState& state, MainScreen& screen, StatusLine& status,
            WindowLayout& layout, Hints& hints, platform::Clock& clock)
        : form1_(form1), course_(course), state_(state), screen_(screen), status_(status), layout_(layout),
          hints_(hints), clock_(clock)
    {
    }

    /// Names the boxes for assistive technology.
    void name_boxes();

    /// Applies the font of the course to both boxes.
    void ApplyTextFont();

    /// Asks the record: with its hint and the caret in the answer box where the course wants them always. Where the
    /// record has vanished meanwhile, no question is on display afterwards.
    /// @throws platform::DatabaseError; no question is on display then either.
    void ask(common::Int16 cnt);

    /// Shows the record as `ask` does, but asks nothing.
    /// @throws platform::DatabaseError; no question is on display then.
    void show_record(common::Int16 cnt);

    /// Shows the record with its answer.
    /// @throws platform::DatabaseError; no question is on display then.
    void show_record_and_answer(common::Int16 cnt);

    /// What stands in the boxes is a change of this record from now on.
    void take_for_record(common::Int16 cnt) { state_.shown.current_cnt_ = cnt; }

    /// The drill goes on from the record `previous`, 0 for none: forgets what was done about its answer, and leaves a
    /// list of records. What is on display stays until the next question is asked.
    void leave_question(common::Int16 previous);

    /// Shows the figures of the current record, if there is one, as they are now; its texts stay.
    /// @throws platform::DatabaseError
    void refresh_figures();

    /// Shows the statistics where a list stands.
    void leave_list();

    /// Empties the question and answer boxes. From now on there is no current record, and nothing that a verdict could
    /// be given on.
    void withdraw_question();

    /// Withdraws the question, and forgets which one was asked before: the course is another one.
    void forget();

    /// Shows the stored answer, on light red when the user had marked it as not known, otherwise on light green.
    void RevealAnswer();

    /// Announces `verdict` together with the next question: assistive technology might skip the first of two texts.
    void announce_with_next(std::string verdict) { verdict_to_tell_ = std::move(verdict); }

    /// Shows the stored answer to be changed.
    void show_answer_for_editing();

    /// Puts the caret into the answer box. Until the answer is shown, "*", "+" and "-" are ordinary characters then.
    void let_me_type();

private:
    void forget_record() noexcept;
    void forget_answer();
    void load(common::Int16 cnt);
    void set_up_answer();
    void announce();
    void show_figures(const store::RecordSide& asked, common::DateTime now);
    void show_texts(std::string_view question);

    platform::Form1& form1_;
    store::Course& course_;
    DrillState& state_;
    MainScreen& screen_;
    StatusLine& status_;
    WindowLayout& layout_;
    Hints& hints_;
    platform::Clock& clock_;
    std::string verdict_to_tell_;
};

} // namespace cuedrill::drill
