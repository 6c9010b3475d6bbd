#include "drill/window_keys.h"

#include "common/text.h"

#include <string>
#include <string_view>

namespace cuedrill::drill {
namespace {

/// A text box knows one kind of line end only and may give back another one than it was given.
std::string with_one_kind_of_line_end(std::string text)
{
    for (const std::string_view line_end : {"\r\n", "\r", "\u2028", "\u2029"})
        text = common::replace_all(text, line_end, "\n");
    return text;
}

} // namespace

using platform::Key;

bool WindowKeys::OnWindowKey(const platform::KeyPress& press)
{
    const bool verdict = press.character == "+" || press.character == "-";
    const std::string command = command_letter(press);
    if (press.key == Key::character && !verdict && command.empty())
        return false;
    if (press.auto_repeat)
        return true;
    if (press.key == Key::enter)
        return on_enter();
    if (press.key == Key::escape)
        return on_escape();
    if (verdict)
        return on_verdict(press.character == "+");
    if (command == "q")
        m_dialog.NextQuestionCommand();
    else
        m_dialog.ShowAnswerCommand();
    return true;
}

/// "q" or "a" for a key that stands for a command; empty for any other, and for letters that go into a text box.
std::string WindowKeys::command_letter(const platform::KeyPress& press) const
{
    if (press.key != Key::character || m_state.AnswerHasFocus || m_state.QuestionHasFocus)
        return {};
    std::string letter = m_text_compare.lower(press.character);
    return letter == "q" || letter == "a" ? letter : std::string();
}

bool WindowKeys::on_enter()
{
    if (m_state.AwaitingVerdict) {
        m_desktop.beep();
        return true;
    }
    if (!common::trim_blanks(m_form1.Text_a.text()).empty() || common::trim_blanks(m_form1.Text_q.text()).empty())
        return false;
    m_dialog.ShowAnswerCommand();
    return true;
}

bool WindowKeys::on_escape()
{
    if (!m_state.AnswerHasFocus && !m_state.QuestionHasFocus)
        m_end_of_program.end_program();
    m_form1.bot_focus.set_focus();
    return true;
}

bool WindowKeys::answer_is_shown() const
{
    return m_text_compare.equal(with_one_kind_of_line_end(m_form1.Text_a.text()),
                                with_one_kind_of_line_end(m_state.loaded_answer));
}

/// The verdict on an answer that is on display. Anywhere else "+" and "-" are ordinary characters.
bool WindowKeys::on_verdict(bool success)
{
    if (m_form1.Text_q.text().empty() || !answer_is_shown())
        return false;
    // An empty answer equals an empty box before anything was shown.
    if (m_state.loaded_answer.empty() && !m_state.AwaitingVerdict && m_state.dialog != DialogState::AskKnown)
        return false;
    m_desktop.pump();
    if (success)
        m_dialog.SucceedAndNext();
    else
        m_dialog.FailAndNext();
    return true;
}

} // namespace cuedrill::drill
