#include "drill/answer_aids.h"

#include "bank/compared_text.h"

namespace cuedrill::drill {

void AnswerAids::m_view_stats()
{
    state_.shared_place = SharedPlace::statistics;
    services_.layout.RelayoutWindow();
    services_.statistics.refresh_counts();
}

void AnswerAids::m_view_hints()
{
    const Mode mode = services_.layout.mode();
    if (mode == Mode::empty_course || mode == Mode::nothing)
        services_.status.show_until_question("No question is on display.", status_seconds);
    if (mode != Mode::question)
        return;
    if (!state_.TypingMode) {
        services_.hints.BuildWordListHint();
        return;
    }
    services_.hints.BuildMaskedHint();
    // The hint helps with typing, so typing can go on at once.
    form1_.Text_a.set_focus();
}

void AnswerAids::m_let_me_type()
{
    if (services_.layout.can_type())
        services_.display.let_me_type();
}

void AnswerAids::ToggleAlwaysType()
{
    // The user switches what the menu shows, whatever an earlier change of unknown outcome turns out to have stored.
    const bool on = !course_.params.always_type;
    services_.params.change_params([on](store::CourseParams& params) { params.always_type = on; });
    services_.options.show_options();
    form1_.window.announce(CourseOptions::words_for(Command::always_type, on));
    if (on && services_.layout.can_type())
        services_.display.let_me_type();
    else
        form1_.Text_q.set_focus();
    services_.layout.RelayoutWindow();
}

void AnswerAids::ToggleListMode()
{
    const bool on = !course_.params.list_mode;
    services_.params.change_params([on](store::CourseParams& params) { params.list_mode = on; });
    // The status line may be asking for a verdict; the user still owes it.
    if (state_.verdict_requested())
        services_.status.ask_for_verdict();
    else
        services_.status.reset_status();
    services_.options.show_options();
    form1_.window.announce(CourseOptions::words_for(Command::always_hint, on));
    if (!on) {
        state_.AnswerShown = false;
        state_.shared_place = SharedPlace::statistics;
        services_.layout.RelayoutWindow();
    } else if (services_.layout.can_type() && !answer_box_holds_answer()) {
        services_.hints.BuildWordListHint();
    }
}

bool AnswerAids::answer_box_holds_answer() const
{
    const std::string text = form1_.Text_a.text();
    return !text.empty() && bank::same_text(text, state_.shown.loaded_answer(), services_.text_compare);
}

} // namespace cuedrill::drill
