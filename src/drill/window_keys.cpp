#include "drill/window_keys.h"

#include "bank/compared_text.h"
#include "common/text.h"
#include "drill/letter_key.h"

namespace cuedrill::drill {

using platform::Key;
using platform::KeyModifier;

void WindowKeys::attach()
{
    m_form1.window.on_key = [this](const platform::KeyPress& press) { return OnWindowKey(press); };
}

bool WindowKeys::OnWindowKey(const platform::KeyPress& press)
{
    if (m_services.echo.is_echo(press))
        return true;
    // A new text may be begun meanwhile.
    if (!m_services.editor.editing() && m_services.pause.holds(press))
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

/// Enter shows the answer that nobody has begun to type. In the editor it makes a line, in the hint it chooses a word,
/// and in the list a record.
bool WindowKeys::on_enter(const platform::KeyPress& press)
{
    if (m_services.editor.editing() || m_form1.t_hint.has_focus() || m_form1.listav.has_focus())
        return false;
    if (press.auto_repeat)
        return true;
    if (m_state.AwaitingVerdict) {
        m_services.desktop.beep();
        return true;
    }
    if (!m_services.layout.question_on_display() || !common::trim_blanks_and_line_ends(m_form1.Text_a.text()).empty() ||
        common::trim_blanks(m_form1.Text_q.text()).empty())
        return false;
    m_services.echo.run(press, [this] { m_services.dialog.ShowAnswerCommand(); });
    return true;
}

/// One press, one step: out of the editor or the box, out of the hint or the list, out of the program.
bool WindowKeys::on_escape(const platform::KeyPress& press)
{
    if (press.auto_repeat)
        return true;
    m_services.echo.run(press, [this] {
        if (m_services.editor.editing() || in_text_box())
            leave_boxes();
        else if (m_form1.panel_lista.visible())
            close_shared_place();
        else
            m_services.end_of_program.end_program();
    });
    return true;
}

void WindowKeys::leave_boxes()
{
    m_form1.bot_focus.set_focus();
    if (!m_services.editor.editing()) {
        m_services.layout.RelayoutWindow();
        return;
    }
    m_services.editor.leave_editor();
}

void WindowKeys::close_shared_place()
{
    m_state.shared_place = SharedPlace::statistics;
    m_services.layout.RelayoutWindow();
    // Who was typing an answer goes on typing it.
    if (m_state.TypingMode && m_services.layout.can_type())
        m_form1.Text_a.set_focus();
}

bool WindowKeys::answer_is_shown() const
{
    return bank::same_text(m_form1.Text_a.text(), m_state.loaded_answer, m_services.text_compare);
}

/// The verdict on an answer that is on display. Anywhere else "+" and "-" are ordinary characters; while an answer is
/// being typed, too, until the stored one is shown, in whichever way.
bool WindowKeys::on_sign(const platform::KeyPress& press)
{
    if (m_services.editor.editing() || (m_state.TypingMode && !m_state.answer_revealed))
        return false;
    if (!m_services.layout.question_on_display() || m_form1.Text_q.text().empty() || !answer_is_shown())
        return false;
    // An empty answer equals an empty box before anything was shown.
    if (m_state.loaded_answer.empty() && !m_state.answer_revealed)
        return false;
    if (press.auto_repeat)
        return true;
    m_services.echo.run(press, [this, &press] {
        m_services.desktop.pump();
        if (press.character == "+")
            m_services.dialog.SucceedAndNext();
        else
            m_services.dialog.FailAndNext();
    });
    return true;
}

bool WindowKeys::on_letter(const platform::KeyPress& press)
{
    if (in_text_box())
        return false;
    const std::optional<Command> command = command_with_key(command_letter(press));
    if (!command)
        return false;
    if (!press.auto_repeat)
        m_services.echo.run(press, [&] { m_services.commands.RunToolbarCommand(*command); });
    return true;
}

/// With Ctrl or Alt some buttons of the toolbar can be pressed from anywhere, also out of a text.
bool WindowKeys::on_combination(const platform::KeyPress& press)
{
    const std::optional<Command> command = command_of_combination(press);
    if (!command)
        return false;
    if (!press.auto_repeat)
        m_services.echo.run(press, [&] { m_services.commands.RunToolbarCommand(*command); });
    return true;
}

std::optional<Command> WindowKeys::command_of_combination(const platform::KeyPress& press) const
{
    if (press.modifier == KeyModifier::alt)
        return command_with_access_letter(command_letter(press));
    const bool saves = press.key == Key::enter || command_letter(press) == 's';
    return saves && m_services.editor.editing() ? std::optional(Command::save) : std::nullopt;
}

} // namespace cuedrill::drill
