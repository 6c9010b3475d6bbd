#include "drill/question_view.h"

#include "common/colour.h"
#include "scheduler/dead_time.h"

#include <algorithm>
#include <string>

namespace cuedrill::drill {

void QuestionView::set_captions()
{
    form1_.lab_q.set_caption("Question");
    form1_.Text_q.set_name("Question");
    form1_.Text_a.set_name("Answer");
    form1_.t_hint.set_name("Hint");
    form1_.listav.set_name("List");
    const struct {
        platform::Label& caption;
        platform::Label& value;
        const char* text;
        const char* description;
    } figures[] = {
        {form1_.lab_q_level, form1_.PANEL_Q_LEVEL, "Level", "Question level"},
        {form1_.lab_q_attempts, form1_.PANEL_Q_ATTEMPTS, "Attempts", "Attempts"},
        {form1_.lab_fails, form1_.PANEL_FAILS, "Failures", "Failures"},
        {form1_.lab_elapsed, form1_.PANEL_ELAPSED, "Elapsed", "Elapsed"},
    };
    for (const auto& figure : figures) {
        figure.caption.set_caption(figure.text);
        figure.value.set_description(figure.description);
    }
}

void QuestionView::ApplyTextFont()
{
    const std::string& name = course_.params.font;
    const platform::Font font = name.empty() ? platform::Font{.name = "FixedSys", .points = 9, .bold = false}
                                             : platform::Font{.name = name, .points = 12, .bold = true};
    form1_.Text_q.set_font(font);
    form1_.Text_a.set_font(font);
}

/// Runs `show`; when it fails, no question is on display: the boxes may still show another record, and a verdict would
/// then go to one that nobody has seen.
template <class Show>
void QuestionView::or_withdraw(Show show)
{
    try {
        show();
    } catch (...) {
        withdraw_question();
        throw;
    }
}

void QuestionView::show_question()
{
    leave_list();
    or_withdraw([this] {
        load_current_record();
        announce();
        ask();
    });
}

void QuestionView::show_record()
{
    or_withdraw([this] {
        load_current_record();
        layout_.RelayoutWindow();
    });
}

void QuestionView::show_record_and_answer()
{
    or_withdraw([this] {
        load_current_record();
        form1_.Text_a.set_text(state_.loaded_answer);
        state_.AnswerShown = state_.answer_revealed = layout_.question_on_display();
        layout_.RelayoutWindow();
    });
}

/// Tells the verdict that waits to be told, and the question that is on display.
void QuestionView::announce()
{
    std::string text = std::exchange(verdict_to_tell_, {});
    if (layout_.question_on_display())
        text += (text.empty() ? "" : " ") + state_.loaded_question;
    if (!text.empty())
        form1_.window.announce(text);
}

void QuestionView::ask()
{
    const bool question = layout_.question_on_display();
    if (question && course_.params.list_mode)
        hints_.BuildWordListHint();
    if (question && course_.params.always_type)
        let_me_type();
    layout_.RelayoutWindow();
}

void QuestionView::let_me_type()
{
    state_.TypingMode = true;
    leave_list();
    layout_.RelayoutWindow();
    form1_.Text_a.set_focus();
}

void QuestionView::load_current_record()
{
    const auto record = store::find_record(course_.database(), course_.current_cnt);
    if (!record) {
        withdraw_question();
        return;
    }
    forget_answer();
    store::RecordSide asked = store::side_of(*record, course_.Q_FIELD);
    show_figures(asked, clock_.now());

    state_.loaded_question = std::move(asked.text);
    state_.loaded_answer = store::shown_answer(store::side_of(*record, course_.A_FIELD).text);
    show_texts(state_.loaded_question);
}

void QuestionView::refresh_figures()
{
    if (course_.current_cnt == 0)
        return;
    if (const auto record = store::find_record(course_.database(), course_.current_cnt))
        show_figures(store::side_of(*record, course_.Q_FIELD), clock_.now());
}

void QuestionView::show_figures(const store::RecordSide& asked, common::DateTime now)
{
    // Courses made elsewhere may hold any number here. It is only shown, so it need not fit the 16 bits of a verdict.
    const auto level = std::clamp<std::int64_t>(asked.successes, 0, scheduler::highest_level);
    const auto tested = asked.date_last_test;
    form1_.PANEL_Q_LEVEL.set_caption(std::to_string(level));
    form1_.PANEL_Q_ATTEMPTS.set_caption(std::to_string(asked.attempts));
    form1_.PANEL_FAILS.set_caption(std::to_string(asked.fails));
    form1_.PANEL_ELAPSED.set_caption(
        tested ? common::format_hours_minutes(static_cast<double>(common::seconds_between(*tested, now))) : "");
}

void QuestionView::show_texts(std::string_view question)
{
    form1_.Text_q.set_text(question);
    form1_.Text_a.set_text("");
    form1_.Text_a.set_background(std::nullopt);
}

void QuestionView::clear_answer_state()
{
    leave_list();
    forget_answer();
}

void QuestionView::leave_list()
{
    if (state_.list_shown())
        state_.shared_place = SharedPlace::statistics;
}

void QuestionView::forget_answer()
{
    state_.clear_answer();
    status_.withdraw_request();
    status_.withdraw_about_due();
}

void QuestionView::withdraw_question()
{
    course_.current_cnt = 0;
    forget_answer();
    state_.loaded_question.clear();
    state_.loaded_answer.clear();
    for (platform::Label* figure :
         {&form1_.PANEL_Q_LEVEL, &form1_.PANEL_Q_ATTEMPTS, &form1_.PANEL_FAILS, &form1_.PANEL_ELAPSED})
        figure->set_caption("");
    show_texts("");
    layout_.RelayoutWindow();
    announce();
}

void QuestionView::RevealAnswer()
{
    form1_.Text_a.set_text(state_.loaded_answer);
    form1_.Text_a.set_background(state_.SelfJudgement == "-" ? common::light_red : common::light_green);
    state_.answer_revealed = true;
    leave_list();
    layout_.RelayoutWindow();
    form1_.window.announce("Answer: " + state_.loaded_answer);
}

void QuestionView::show_answer_for_editing()
{
    forget_answer();
    form1_.Text_a.set_text(state_.loaded_answer);
    form1_.Text_a.set_background(std::nullopt);
    state_.AnswerShown = state_.answer_revealed = layout_.question_on_display();
}

} // namespace cuedrill::drill
