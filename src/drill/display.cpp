#include "drill/display.h"

#include "common/colour.h"
#include "scheduler/dead_time.h"
#include "store/course_transaction.h"

#include <algorithm>
#include <string>

namespace cuedrill::drill {

Display::Change::~Change()
{
    if (kept_)
        return;
    display_.forget_record();
    try {
        display_.withdraw_question();
    } catch (...) {
        // Out of memory: the old texts may stay visible. No record is current any more, so nothing can be judged.
    }
}

void Display::name_boxes()
{
    form1_.Text_q.set_name("Question");
    form1_.Text_a.set_name("Answer");
    form1_.t_hint.set_name("Hint");
    form1_.listav.set_name("List");
}

void Display::ApplyTextFont()
{
    const std::string& name = course_.params.font;
    const platform::Font font = name.empty() ? platform::Font{.name = "FixedSys", .points = 9, .bold = false}
                                             : platform::Font{.name = name, .points = 12, .bold = true};
    form1_.Text_q.set_font(font);
    form1_.Text_a.set_font(font);
}

void Display::ask(common::Int16 cnt)
{
    leave_list();
    Change change(*this);
    load(cnt);
    announce();
    set_up_answer();
    change.keep();
}

void Display::show_record(common::Int16 cnt)
{
    Change change(*this);
    load(cnt);
    layout_.RelayoutWindow();
    change.keep();
}

void Display::show_record_and_answer(common::Int16 cnt)
{
    Change change(*this);
    load(cnt);
    form1_.Text_a.set_text(state_.shown.loaded_answer());
    state_.AnswerShown = state_.answer_revealed = state_.shown.is_question();
    layout_.RelayoutWindow();
    change.keep();
}

/// Announces the pending verdict, if any, and the question on display.
void Display::announce()
{
    std::string text = std::exchange(verdict_to_tell_, {});
    if (state_.shown.is_question())
        text += (text.empty() ? "" : " ") + state_.shown.loaded_question();
    if (!text.empty())
        form1_.window.announce(text);
}

/// Builds the hint and puts the cursor into the answer box if the options of the course ask for it.
void Display::set_up_answer()
{
    const bool question = state_.shown.is_question();
    if (question && course_.params.list_mode)
        hints_.BuildWordListHint();
    if (question && course_.params.always_type)
        let_me_type();
    layout_.RelayoutWindow();
}

void Display::let_me_type()
{
    state_.TypingMode = true;
    leave_list();
    layout_.RelayoutWindow();
    form1_.Text_a.set_focus();
}

/// Makes the record current and shows its question and figures. If the record no longer exists, withdraws the question.
void Display::load(common::Int16 cnt)
{
    // If the direction of the course changed while a question is on display, the other side would be judged.
    store::settle(course_);
    state_.shown.current_cnt_ = cnt;
    const auto record = store::find_record(course_.database(), cnt);
    if (!record) {
        withdraw_question();
        return;
    }
    forget_answer();
    store::RecordSide asked = store::side_of(*record, course_.Q_FIELD);
    show_figures(asked, clock_.now());

    state_.shown.question_ = std::move(asked.text);
    state_.shown.answer_ = store::shown_answer(store::side_of(*record, course_.A_FIELD).text);
    show_texts(state_.shown.loaded_question());
}

void Display::refresh_figures()
{
    if (!state_.shown.is_question())
        return;
    if (const auto record = store::find_record(course_.database(), state_.shown.current_cnt()))
        show_figures(store::side_of(*record, course_.Q_FIELD), clock_.now());
}

void Display::show_figures(const store::RecordSide& asked, common::DateTime now)
{
    QuestionFigures figures;
    figures.attempts = asked.attempts;
    figures.fails = asked.fails;
    // A course made by another program may hold any number here. It is only displayed, so it need not fit into 16 bits.
    figures.level = std::clamp<std::int64_t>(asked.successes, 0, scheduler::highest_level);
    if (asked.date_last_test)
        figures.elapsed = common::seconds_between(*asked.date_last_test, now);
    screen_.told.question = figures;
    screen_.repaint();
}

void Display::show_texts(std::string_view question)
{
    form1_.Text_q.set_text(question);
    form1_.Text_a.set_text("");
    form1_.Text_a.set_background(std::nullopt);
}

void Display::leave_question(common::Int16 previous)
{
    state_.shown.previous_cnt_ = previous;
    leave_list();
    forget_answer();
}

void Display::leave_list()
{
    if (state_.list_shown())
        state_.shared_place = SharedPlace::statistics;
}

void Display::forget_record() noexcept
{
    state_.shown.current_cnt_ = 0;
    state_.shown.question_.clear();
    state_.shown.answer_.clear();
}

void Display::forget_answer()
{
    state_.clear_answer();
    status_.withdraw_request();
    status_.withdraw_about_due();
}

void Display::withdraw_question()
{
    forget_record();
    forget_answer();
    screen_.told.question.reset();
    show_texts("");
    layout_.RelayoutWindow();
    announce();
}

void Display::forget()
{
    state_.shown.previous_cnt_ = 0;
    withdraw_question();
}

void Display::RevealAnswer()
{
    form1_.Text_a.set_text(state_.shown.loaded_answer());
    form1_.Text_a.set_background(state_.SelfJudgement == "-" ? common::light_red : common::light_green);
    state_.answer_revealed = true;
    leave_list();
    layout_.RelayoutWindow();
    form1_.window.announce("Answer: " + state_.shown.loaded_answer());
}

void Display::show_answer_for_editing()
{
    forget_answer();
    form1_.Text_a.set_text(state_.shown.loaded_answer());
    form1_.Text_a.set_background(std::nullopt);
    state_.AnswerShown = state_.answer_revealed = state_.shown.is_question();
}

} // namespace cuedrill::drill
