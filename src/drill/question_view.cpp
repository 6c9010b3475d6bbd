#include "drill/question_view.h"

#include "common/colour.h"
#include "scheduler/dead_time.h"

#include <algorithm>
#include <string>

namespace cuedrill::drill {

void QuestionView::set_captions()
{
    m_form1.lab_q.set_caption("Question");
    m_form1.Text_q.set_name("Question");
    m_form1.Text_a.set_name("Answer");
    m_form1.t_hint.set_name("Hint");
    m_form1.listav.set_name("List");
    const struct {
        platform::Label& caption;
        platform::Label& value;
        const char* text;
        const char* description;
    } figures[] = {
        {m_form1.lab_q_level, m_form1.PANEL_Q_LEVEL, "Level", "Question level"},
        {m_form1.lab_q_attempts, m_form1.PANEL_Q_ATTEMPTS, "Attempts", "Attempts"},
        {m_form1.lab_fails, m_form1.PANEL_FAILS, "Failures", "Failures"},
        {m_form1.lab_elapsed, m_form1.PANEL_ELAPSED, "Elapsed", "Elapsed"},
    };
    for (const auto& figure : figures) {
        figure.caption.set_caption(figure.text);
        figure.value.set_description(figure.description);
    }
}

void QuestionView::ApplyTextFont()
{
    const std::string& name = m_course.params.font;
    const platform::Font font = name.empty() ? platform::Font{.name = "FixedSys", .points = 9, .bold = false}
                                             : platform::Font{.name = name, .points = 12, .bold = true};
    m_form1.Text_q.set_font(font);
    m_form1.Text_a.set_font(font);
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
        m_layout.RelayoutWindow();
    });
}

void QuestionView::show_record_and_answer()
{
    or_withdraw([this] {
        load_current_record();
        m_form1.Text_a.set_text(m_state.loaded_answer);
        m_state.AnswerShown = m_state.answer_revealed = m_layout.question_on_display();
        m_layout.RelayoutWindow();
    });
}

/// Tells the verdict that waits to be told, and the question that is on display.
void QuestionView::announce()
{
    std::string text = std::exchange(m_verdict_to_tell, {});
    if (m_layout.question_on_display())
        text += (text.empty() ? "" : " ") + m_state.loaded_question;
    if (!text.empty())
        m_form1.window.announce(text);
}

void QuestionView::ask()
{
    const bool question = m_layout.question_on_display();
    if (question && m_course.params.list_mode)
        m_hints.BuildWordListHint();
    if (question && m_course.params.always_type)
        let_me_type();
    m_layout.RelayoutWindow();
}

void QuestionView::let_me_type()
{
    m_state.TypingMode = true;
    leave_list();
    m_layout.RelayoutWindow();
    m_form1.Text_a.set_focus();
}

void QuestionView::load_current_record()
{
    const auto record = store::find_record(m_course.database(), m_course.current_cnt);
    if (!record) {
        withdraw_question();
        return;
    }
    forget_answer();
    store::RecordSide asked = store::side_of(*record, m_course.Q_FIELD);
    show_figures(asked, m_clock.now());

    m_state.loaded_question = std::move(asked.text);
    m_state.loaded_answer = store::shown_answer(store::side_of(*record, m_course.A_FIELD).text);
    show_texts(m_state.loaded_question);
}

void QuestionView::refresh_figures()
{
    if (m_course.current_cnt == 0)
        return;
    if (const auto record = store::find_record(m_course.database(), m_course.current_cnt))
        show_figures(store::side_of(*record, m_course.Q_FIELD), m_clock.now());
}

void QuestionView::show_figures(const store::RecordSide& asked, common::DateTime now)
{
    // Courses made elsewhere may hold any number here. It is only shown, so it need not fit the 16 bits of a verdict.
    const auto level = std::clamp<std::int64_t>(asked.successes, 0, scheduler::highest_level);
    const auto tested = asked.date_last_test;
    m_form1.PANEL_Q_LEVEL.set_caption(std::to_string(level));
    m_form1.PANEL_Q_ATTEMPTS.set_caption(std::to_string(asked.attempts));
    m_form1.PANEL_FAILS.set_caption(std::to_string(asked.fails));
    m_form1.PANEL_ELAPSED.set_caption(
        tested ? common::format_hours_minutes(static_cast<double>(common::seconds_between(*tested, now))) : "");
}

void QuestionView::show_texts(std::string_view question)
{
    m_form1.Text_q.set_text(question);
    m_form1.Text_a.set_text("");
    m_form1.Text_a.set_background(std::nullopt);
}

void QuestionView::clear_answer_state()
{
    leave_list();
    forget_answer();
}

void QuestionView::leave_list()
{
    if (m_state.list_shown())
        m_state.shared_place = SharedPlace::statistics;
}

void QuestionView::forget_answer()
{
    m_state.clear_answer();
    m_status.withdraw_request();
    m_status.withdraw_about_due();
}

void QuestionView::withdraw_question()
{
    m_course.current_cnt = 0;
    forget_answer();
    m_state.loaded_question.clear();
    m_state.loaded_answer.clear();
    for (platform::Label* figure :
         {&m_form1.PANEL_Q_LEVEL, &m_form1.PANEL_Q_ATTEMPTS, &m_form1.PANEL_FAILS, &m_form1.PANEL_ELAPSED})
        figure->set_caption("");
    show_texts("");
    m_layout.RelayoutWindow();
    announce();
}

void QuestionView::RevealAnswer()
{
    m_form1.Text_a.set_text(m_state.loaded_answer);
    m_form1.Text_a.set_background(m_state.SelfJudgement == "-" ? common::light_red : common::light_green);
    m_state.answer_revealed = true;
    leave_list();
    m_layout.RelayoutWindow();
    m_form1.window.announce("Answer: " + m_state.loaded_answer);
}

void QuestionView::show_answer_for_editing()
{
    forget_answer();
    m_form1.Text_a.set_text(m_state.loaded_answer);
    m_form1.Text_a.set_background(std::nullopt);
    m_state.AnswerShown = m_state.answer_revealed = m_layout.question_on_display();
}

} // namespace cuedrill::drill
