#include "drill/answer_aids.h"

#include "bank/compared_text.h"

namespace cuedrill::drill {

void AnswerAids::m_view_stats()
{
    m_state.shared_place = SharedPlace::statistics;
    m_services.layout.RelayoutWindow();
    m_services.statistics.refresh_counts();
}

void AnswerAids::m_view_hints()
{
    const Mode mode = m_services.layout.mode();
    if (mode == Mode::empty_course || mode == Mode::nothing)
        m_services.status.show_until_question("No question is on display.", status_seconds);
    if (mode != Mode::question)
        return;
    if (!m_state.TypingMode) {
        m_services.hints.BuildWordListHint();
        return;
    }
    m_services.hints.BuildMaskedHint();
    // The hint is one for going on with typing.
    m_form1.Text_a.set_focus();
}

void AnswerAids::m_let_me_type()
{
    if (m_services.layout.can_type())
        m_services.view.let_me_type();
}

void AnswerAids::ToggleAlwaysType()
{
    store::CourseParams changed = m_course.params;
    changed.always_type = !changed.always_type;
    m_services.params.change_params(changed);
    m_services.statistics_view.show_options();
    if (changed.always_type && m_services.layout.can_type())
        m_services.view.let_me_type();
    else
        m_form1.Text_q.set_focus();
    m_services.layout.RelayoutWindow();
}

void AnswerAids::ToggleListMode()
{
    store::CourseParams changed = m_course.params;
    changed.list_mode = !changed.list_mode;
    m_services.params.change_params(changed);
    // Nobody has given the verdict yet that the status line may be asking for.
    if (m_state.AwaitingVerdict)
        m_services.status.ask_for_verdict();
    else
        m_services.status.reset_status();
    m_services.statistics_view.show_options();
    if (!changed.list_mode) {
        m_state.AnswerShown = false;
        m_state.shared_place = SharedPlace::statistics;
        m_services.layout.RelayoutWindow();
    } else if (m_services.layout.can_type() && !answer_box_holds_answer()) {
        m_services.hints.BuildWordListHint();
    }
}

bool AnswerAids::answer_box_holds_answer() const
{
    const std::string text = m_form1.Text_a.text();
    return !text.empty() && bank::same_text(text, m_state.loaded_answer, m_services.text_compare);
}

} // namespace cuedrill::drill
