#include "drill/question_dialog.h"

#include <exception>

namespace cuedrill::drill {
namespace {

struct DialogTexts {
    const char* prompt;
    const char* yes;
    const char* no;
};

DialogTexts texts_of(DialogState state)
{
    switch (state) {
    case DialogState::AskToStart:
        return {"Shall I ask you a question?", "Yes", "No"};
    case DialogState::OfferAnswer:
        return {"Do you want to see the answer?", "Yes", "No, ask another question"};
    case DialogState::AskKnown:
        break;
    }
    return {"Did you know the answer?", "Yes", "No"};
}

} // namespace

QuestionDialog::QuestionDialog(platform::Form1& form1, DrillState& state, QuestionView& view, StatusLine& status,
                               WindowLayout& layout, platform::Desktop& desktop, Selection& selection, Scoring& scoring,
                               RecordEditor& editor, EndOfProgram& end_of_program, const store::Course& course)
    : m_form1(form1), m_state(state), m_view(view), m_status(status), m_layout(layout), m_desktop(desktop),
      m_selection(selection), m_scoring(scoring), m_editor(editor), m_end_of_program(end_of_program), m_course(course)
{
}

void QuestionDialog::RefreshDialog()
{
    const DialogTexts texts = texts_of(m_state.dialog);
    m_form1.panel_dialog.set_caption("");
    m_desktop.pump();
    m_form1.panel_dialog.set_caption(texts.prompt);
    m_layout.lay_out_buttons();
    m_form1.bot_yes.set_caption(texts.yes);
    m_form1.bot_no.set_caption(texts.no);
    m_form1.bot_other.set_caption("Ignore");
    m_layout.RelayoutWindow();
}

void QuestionDialog::enter(DialogState state)
{
    m_state.dialog = state;
    RefreshDialog();
}

/// Takes a step that may put another question on display, and then offers its answer. Meanwhile the buttons stay as
/// they are: in the state of before they would be disabled for a moment, which shows, and moves the focus.
template <class Step>
void QuestionDialog::go_on(Step step)
{
    m_layout.hold_dialog(true);
    try {
        step();
    } catch (...) {
        m_layout.hold_dialog(false);
        m_layout.RelayoutWindow();
        throw;
    }
    m_layout.hold_dialog(false);
    enter(DialogState::OfferAnswer);
}

void QuestionDialog::leave_question()
{
    m_scoring.StampLastShow();
    m_selection.next_question();
}

void QuestionDialog::OnYes()
{
    if (m_state.RightClickConsumed) {
        m_state.RightClickConsumed = false;
        return;
    }
    switch (m_state.dialog) {
    case DialogState::AskToStart:
        go_on([this] { leave_question(); });
        break;
    case DialogState::OfferAnswer:
        if (!can_judge())
            return;
        m_state.SelfJudgement.clear();
        m_view.RevealAnswer();
        enter(DialogState::AskKnown);
        break;
    case DialogState::AskKnown:
        if (m_layout.answer_on_display())
            go_on([this] { SucceedAndNext(); });
        break;
    }
}

void QuestionDialog::OnNo()
{
    switch (m_state.dialog) {
    case DialogState::AskToStart:
        if (!m_layout.question_on_display())
            m_end_of_program.end_program();
        break;
    case DialogState::OfferAnswer:
        go_on([this] { leave_question(); });
        break;
    case DialogState::AskKnown:
        if (m_layout.answer_on_display())
            go_on([this] { FailAndNext(); });
        break;
    }
}

void QuestionDialog::OnOther()
{
    if (m_state.dialog == DialogState::AskKnown)
        go_on([this] { leave_question(); });
}

void QuestionDialog::OnYesMouseDown(platform::MouseButton button)
{
    m_state.RightClickConsumed = button == platform::MouseButton::right;
    if (m_state.RightClickConsumed)
        OnNo();
}

void QuestionDialog::ShowAnswerCommand()
{
    if (!can_judge())
        return;
    m_state.AnswerShown = true;
    m_state.SelfJudgement.clear();
    m_view.RevealAnswer();
    m_state.AwaitingVerdict = true;
    m_layout.RelayoutWindow();
    m_status.ask_for_verdict();
}

void QuestionDialog::NextQuestionCommand()
{
    if (!m_editor.editing()) {
        leave_question();
        return;
    }
    const common::Int16 edited = m_course.current_cnt;
    if (m_editor.offer_to_save() == SaveResult::refused)
        return;
    if (m_editor.editing())
        m_editor.close_editor();
    // Texts that were rejected have taken the record off the display.
    m_selection.next_question_after(m_course.current_cnt != 0 ? m_course.current_cnt : edited);
}

void QuestionDialog::SucceedAndNext()
{
    if (!can_judge())
        return;
    m_scoring.set_success();
    m_selection.next_question();
}

void QuestionDialog::FailAndNext()
{
    if (!can_judge())
        return;
    try {
        m_scoring.set_failure();
    } catch (const std::exception&) {
        // The status line was emptied for a verdict that is still awaited.
        if (m_state.AwaitingVerdict)
            m_status.ask_for_verdict();
        throw;
    }
    // A success is told by the status line.
    m_view.announce_with_next("Not known. Level 0.");
    m_selection.next_question();
}

} // namespace cuedrill::drill
