#include "drill/window_keys.h"

#include "bank/compared_text.h"
#include "common/text.h"
#include "drill/letter_key.h"

namespace cuedrill::drill {

using platform::Key;
using platform::KeyModifier;

void WindowKeys::attach()
{
    form1_.window.on_key_event = [this](const platform::KeyEvent& event) { return services_.key_policy.judge(event); };
    form1_.window.on_key = [this](const platform::KeyPress& press) { return OnWindowKey(press); };
}

bool WindowKeys::OnWindowKey(const platform::KeyPress& press)
{
    if (!services_.key_policy.counts(press, services_.editor.editing()))
        return true;
    if (press.modifier != KeyModifier::none)
        return on_combination(press);
    if (press.key == Key::enter)
        return on_enter(press);
    if (press.key == Key::escape)
        return on_escape(press);
    if (press.character == "+" || press.character == "-")
        return on_sign(press);
    return on_letter(press);
}

/// Enter reveals the answer if the answer box is empty. In the editor it inserts a line break, in the hint it chooses a
/// word, and in the list a record.
bool WindowKeys::on_enter(const platform::KeyPress& press)
{
    if (services_.editor.editing() || form1_.t_hint.has_focus() || form1_.listav.has_focus())
        return false;
    if (press.auto_repeat)
        return true;
    if (state_.AwaitingVerdict) {
        services_.desktop.beep();
        services_.narrator.tell_next_step();
        return true;
    }
    if (!services_.layout.question_on_display() || !common::trim_blanks_and_line_ends(form1_.Text_a.text()).empty() ||
        common::trim_blanks(form1_.Text_q.text()).empty())
        return false;
    services_.key_policy.run(press, [this] { services_.dialog.ShowAnswerCommand(); });
    return true;
}

/// Each press takes one step: out of the editor or text box, out of the hint or list, out of the program.
bool WindowKeys::on_escape(const platform::KeyPress& press)
{
    if (press.auto_repeat)
        return true;
    services_.key_policy.run(press, [this] {
        if (services_.editor.editing() || in_text_box())
            leave_boxes();
        else if (form1_.panel_lista.visible())
            close_shared_place();
        else
            end_program();
    });
    return true;
}

void WindowKeys::end_program()
{
    form1_.window.announce_last("Cuedrill ends.");
    services_.end_of_program.end_program();
}

void WindowKeys::leave_boxes()
{
    form1_.bot_focus.set_focus();
    if (!services_.editor.editing()) {
        services_.layout.RelayoutWindow();
        return;
    }
    services_.editor.leave_editor();
}

void WindowKeys::close_shared_place()
{
    form1_.window.announce(state_.list_shown() ? "The list is closed." : "The hint is closed.");
    state_.shared_place = SharedPlace::statistics;
    services_.layout.RelayoutWindow();
    // If the user was typing an answer, typing can go on.
    if (state_.TypingMode && services_.layout.can_type())
        form1_.Text_a.set_focus();
}

bool WindowKeys::answer_is_shown() const
{
    return bank::same_text(form1_.Text_a.text(), state_.shown.loaded_answer(), services_.text_compare);
}

/// Whether "+" and "-" are verdicts now. While an answer is being typed they are characters of it, until the stored one
/// is revealed.
bool WindowKeys::awaits_sign() const
{
    if (services_.editor.editing() || (state_.TypingMode && !state_.answer_revealed))
        return false;
    // If the stored answer is empty, the empty box equals it before anything is revealed.
    const bool shown = answer_is_shown() && (state_.answer_revealed || !state_.shown.loaded_answer().empty());
    return shown && services_.layout.question_on_display() && !form1_.Text_q.text().empty();
}

/// Gives the verdict on an answer on display.
bool WindowKeys::on_sign(const platform::KeyPress& press)
{
    if (!awaits_sign()) {
        if (!press.auto_repeat)
            tell_sign_is_none();
        return false;
    }
    if (press.auto_repeat)
        return true;
    services_.key_policy.run(press, [this, &press] {
        services_.desktop.pump();
        if (press.character == "+")
            services_.dialog.SucceedAndNext();
        else
            services_.dialog.FailAndNext();
    });
    return true;
}

/// Tells what can be done instead of a verdict, unless the sign is a character: in the answer box it is typed, or
/// reveals the answer; the question box takes it only in the editor. Everywhere else, also in the list, it does
/// nothing.
void WindowKeys::tell_sign_is_none() const
{
    const bool is_character = AnswerHasFocus() || (QuestionHasFocus() && services_.editor.editing());
    if (!is_character)
        services_.narrator.tell_next_step();
}

bool WindowKeys::on_letter(const platform::KeyPress& press)
{
    if (in_text_box())
        return false;
    const std::optional<Command> command = command_with_key(command_letter(press));
    if (!command)
        return false;
    if (!press.auto_repeat)
        services_.key_policy.run(press, [&] { services_.commands.RunToolbarCommand(*command); });
    return true;
}

/// With Ctrl or Alt, some toolbar commands can be run from anywhere, even from a text box.
bool WindowKeys::on_combination(const platform::KeyPress& press)
{
    if (on_control(press))
        return true;
    const std::optional<Command> command = command_of_combination(press);
    if (!command)
        return false;
    if (!press.auto_repeat)
        services_.key_policy.run(press, [&] { services_.commands.RunToolbarCommand(*command); });
    return true;
}

/// Commands that run with Ctrl and leave the focus where it is.
bool WindowKeys::on_control(const platform::KeyPress& press)
{
    if (press.modifier != KeyModifier::control)
        return false;
    const std::optional<Command> command = command_with_control_key(command_letter(press));
    if (command && !press.auto_repeat)
        services_.key_policy.run(press, [&] { services_.commands.run(*command); });
    return command.has_value();
}

std::optional<Command> WindowKeys::command_of_combination(const platform::KeyPress& press) const
{
    if (press.modifier == KeyModifier::alt)
        return command_with_access_letter(command_letter(press));
    const bool saves = press.key == Key::enter || command_letter(press) == 's';
    return saves && services_.editor.editing() ? std::optional(Command::save) : std::nullopt;
}

} // namespace cuedrill::drill
