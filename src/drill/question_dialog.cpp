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

QuestionDialog::QuestionDialog(platform::Form1& form1, DrillState& state, MainScreen& screen, Display& display,
                               StatusLine& status, WindowLayout& layout, platform::Desktop& desktop,
                               Selection& selection, Scoring& scoring, RecordEditor& editor,
                               EndOfProgram& end_of_program)
    : form1_(form1), state_(state), screen_(screen), display_(display), status_(status), layout_(layout),
      desktop_(desktop), selection_(selection), scoring_(scoring), editor_(editor), end_of_program_(end_of_program)
{
}

void QuestionDialog::attach()
{
    form1_.bot_yes.on_click = [this] { OnYes(); };
    form1_.bot_yes.on_mouse_down = [this](platform::MouseButton button) { OnYesMouseDown(button); };
    form1_.bot_yes.on_mouse_up = [this](platform::MouseButton) { state_.RightClickConsumed = false; };
    form1_.bot_no.on_click = [this] { OnNo(); };
    form1_.bot_other.on_click = [this] { OnOther(); };
    form1_.dialog_strip.on_resize = [this] { layout_.lay_out_buttons(); };
}

void QuestionDialog::forget()
{
    state_.dialog = DialogState::AskToStart;
    state_.RightClickConsumed = false;
}

void QuestionDialog::RefreshDialog()
{
    const DialogTexts texts = texts_of(state_.dialog);
    show_prompt("");
    desktop_.pump();
    show_prompt(texts.prompt);
    layout_.lay_out_buttons();
    form1_.bot_yes.set_caption(texts.yes);
    form1_.bot_no.set_caption(texts.no);
    form1_.bot_other.set_caption("Ignore");
    layout_.RelayoutWindow();
}

void QuestionDialog::show_prompt(const char* text)
{
    screen_.told.prompt.text = text;
    ++screen_.told.prompt.news;
    screen_.repaint();
}

void QuestionDialog::enter(DialogState state)
{
    state_.dialog = state;
    RefreshDialog();
}

/// Runs a step that may show another question, and then offers its answer. During the step the buttons stay as they
/// are: in the old state they would be disabled for a moment, which flickers and moves the focus.
template <class Step>
void QuestionDialog::go_on(Step step)
{
    WindowLayout::DialogHold hold(layout_);
    step();
    hold.release();
    enter(DialogState::OfferAnswer);
}

void QuestionDialog::leave_question()
{
    scoring_.StampLastShow();
    selection_.next_question();
}

void QuestionDialog::OnYes()
{
    if (state_.RightClickConsumed) {
        state_.RightClickConsumed = false;
        return;
    }
    switch (state_.dialog) {
    case DialogState::AskToStart:
        go_on([this] { leave_question(); });
        break;
    case DialogState::OfferAnswer:
        if (!can_judge())
            return;
        state_.SelfJudgement.clear();
        display_.RevealAnswer();
        enter(DialogState::AskKnown);
        break;
    case DialogState::AskKnown:
        if (layout_.answer_on_display())
            go_on([this] { SucceedAndNext(); });
        break;
    }
}

void QuestionDialog::OnNo()
{
    switch (state_.dialog) {
    case DialogState::AskToStart:
        if (!layout_.question_on_display()) {
            form1_.window.announce_last("Cuedrill ends.");
            end_of_program_.end_program();
        }
        break;
    case DialogState::OfferAnswer:
        go_on([this] { leave_question(); });
        break;
    case DialogState::AskKnown:
        if (layout_.answer_on_display())
            go_on([this] { FailAndNext(); });
        break;
    }
}

void QuestionDialog::OnOther()
{
    if (state_.dialog == DialogState::AskKnown)
        go_on([this] { leave_question(); });
}

void QuestionDialog::OnYesMouseDown(platform::MouseButton button)
{
    state_.RightClickConsumed = button == platform::MouseButton::right;
    if (state_.RightClickConsumed)
        OnNo();
}

void QuestionDialog::ShowAnswerCommand()
{
    if (!can_judge())
        return;
    state_.AnswerShown = true;
    state_.SelfJudgement.clear();
    display_.RevealAnswer();
    state_.AwaitingVerdict = true;
    layout_.RelayoutWindow();
    status_.ask_for_verdict();
}

void QuestionDialog::NextQuestionCommand()
{
    if (!editor_.editing()) {
        leave_question();
        return;
    }
    const common::Int16 edited = state_.shown.current_cnt();
    if (editor_.offer_to_save() == SaveResult::refused)
        return;
    if (editor_.editing())
        editor_.close_editor();
    // A rejected save may have withdrawn the record.
    selection_.next_question_after(state_.shown.is_question() ? state_.shown.current_cnt() : edited);
}

void QuestionDialog::SucceedAndNext(scheduler::JudgedBy by)
{
    if (!can_judge())
        return;
    scoring_.set_success(by);
    selection_.next_question();
}

void QuestionDialog::FailAndNext(scheduler::JudgedBy by)
{
    if (!can_judge())
        return;
    try {
        scoring_.set_failure(by);
    } catch (const std::exception&) {
        // The verdict is still missing, but set_failure has cleared the request for it.
        if (state_.verdict_requested())
            status_.ask_for_verdict();
        throw;
    }
    // A success is announced by the status line.
    display_.announce_with_next("Not known. Level 0.");
    selection_.next_question();
}

} // namespace cuedrill::drill
