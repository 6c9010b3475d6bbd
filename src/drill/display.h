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

/// Owner of what is on display: the current record, its texts in the question and answer boxes, and its figures. Only
/// this class changes the current record.
class Display {
public:
    /// Scope guard for a change of the display, or of the course that it shows. Unless `keep` is called, the destructor
    /// withdraws the question, so that no verdict goes to a question that is not visible or has already been judged.
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

    /// Sets the accessible names of the boxes.
    void name_boxes();

    /// Applies the course's font to both boxes.
    void ApplyTextFont();

    /// Asks the record's question: shows it, with a hint and the cursor in the answer box if the options of the course
    /// ask for it. If the record no longer exists, no question is on display afterwards.
    /// @throws platform::DatabaseError; no question is on display then.
    void ask(common::Int16 cnt);

    /// Shows the record's question and figures without asking it: no announcement, no hint.
    /// @throws platform::DatabaseError; no question is on display then.
    void show_record(common::Int16 cnt);

    /// Shows the record with its answer.
    /// @throws platform::DatabaseError; no question is on display then.
    void show_record_and_answer(common::Int16 cnt);

    /// Makes the record current without changing the boxes: their texts become an edit of this record.
    void take_for_record(common::Int16 cnt) { state_.shown.current_cnt_ = cnt; }

    /// Leaves the current question and any list of records before the next question is selected. Clears the state of
    /// the answer and remembers `previous`, 0 for none, as the record asked last. The boxes do not change until the
    /// next question is shown.
    void leave_question(common::Int16 previous);

    /// Shows the figures of the current record, if there is one, as they are now; its texts stay.
    /// @throws platform::DatabaseError
    void refresh_figures();

    /// If a list of records is visible, shows the statistics instead.
    void leave_list();

    /// Empties the question and answer boxes. There is no current record afterwards, so nothing can be judged.
    void withdraw_question();

    /// Withdraws the question and forgets which one was asked last, because another course is being opened.
    void forget();

    /// Shows the stored answer: on light red if the user has marked it as not known, otherwise on light green.
    void RevealAnswer();

    /// Announces `verdict` together with the next question, because assistive technology might skip the first of two
    /// announcements.
    void announce_with_next(std::string verdict) { verdict_to_tell_ = std::move(verdict); }

    /// Shows the stored answer for editing.
    void show_answer_for_editing();

    /// Puts the cursor into the answer box. From then on, until the answer is shown, "*", "+" and "-" are ordinary
    /// characters.
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
