#include "drill/typed_answer.h"

#include "bank/compared_text.h"
#include "common/text.h"
#include "drill/text_difference.h"

#include <algorithm>

namespace cuedrill::drill {
namespace {

using platform::Key;

bool is_sign(const platform::KeyPress& press)
{
    return press.character == "+" || press.character == "-";
}

/// A single character of ASCII that is neither a letter nor a digit and sorts before the letters. It follows a word
/// without a blank.
bool is_punctuation(std::string_view word)
{
    const auto code = word.size() == 1 ? static_cast<unsigned char>(word.front()) : 'A';
    return code < '0' || (code > '9' && code < 'A');
}

/// What is worth being marked: texts with little in common differ as a whole, and single letters that they happen to
/// share would only confuse.
TextDifference telling_difference(std::string_view typed, std::string_view correct,
                                  const platform::TextCompare& text_compare)
{
    TextDifference found = difference(typed, correct, text_compare);
    std::size_t shared = common::code_points(correct);
    for (const common::TextRange& mark : found.in_second)
        shared -= mark.end - mark.begin;
    if (2 * shared < std::max(common::code_points(typed), common::code_points(correct)))
        found = {};
    return found;
}

void append(std::string& message, std::vector<common::TextRange>& marked, std::string_view text,
            const std::vector<common::TextRange>& marks)
{
    const std::size_t begin = common::code_points(message);
    for (const common::TextRange& mark : marks)
        marked.push_back({begin + mark.begin, begin + mark.end});
    message += text;
}

} // namespace

bool TypedAnswer::OnAnswerKey(const platform::KeyPress& press)
{
    if (m_flags.editing())
        return false;
    if (press.key == Key::enter)
        return run(press, &TypedAnswer::on_enter);
    if (press.character == "*" && !m_state.TypingMode)
        return run(press, &TypedAnswer::show_answer);
    if (is_sign(press) && !m_state.TypingMode && m_form1.Text_a.text().empty()) {
        if (!press.auto_repeat && m_services.layout.question_on_display())
            m_state.SelfJudgement = press.character;
        return run(press, &TypedAnswer::reveal);
    }
    return insert_before_end(press);
}

/// Runs the command of a key once, however long the key is held.
bool TypedAnswer::run(const platform::KeyPress& press, void (TypedAnswer::*command)())
{
    if (!press.auto_repeat)
        m_services.echo.run(press, [this, command] { (this->*command)(); });
    return true;
}

void TypedAnswer::show_answer()
{
    m_services.dialog.ShowAnswerCommand();
}

void TypedAnswer::reveal()
{
    if (m_services.layout.question_on_display())
        m_services.view.RevealAnswer();
    // Nothing is scored yet.
    if (m_services.layout.answer_on_display() && m_state.SelfJudgement == "-")
        m_services.status.ask_for_verdict();
}

void TypedAnswer::on_enter()
{
    if (common::trim_blanks_and_line_ends(m_form1.Text_a.text()).empty())
        show_answer();
    else if (m_services.layout.can_type() || marked_as_known())
        JudgeTypedAnswer();
    else
        // What stands there was not typed, so there is nothing to be judged.
        m_services.desktop.beep();
}

/// Whether the answer was revealed because the user said that it was known. Enter then agrees with that, and is judged
/// as if the answer was typed: after a hint it counts as not known.
bool TypedAnswer::marked_as_known() const
{
    return m_services.layout.mode() == Mode::answer && m_state.SelfJudgement == "+";
}

/// A character in the middle of the text goes before a selection, which stays in the text.
bool TypedAnswer::insert_before_end(const platform::KeyPress& press)
{
    platform::TextBox& box = m_form1.Text_a;
    if (press.key != Key::character || press.composed || !m_services.layout.can_type())
        return false;
    const std::size_t caret = box.caret();
    if (common::code_points(box.text()) <= caret)
        return false;
    box.insert(caret, press.character);
    return true;
}

bool TypedAnswer::same(std::string_view a, std::string_view b) const
{
    return bank::same_text(a, b, m_services.text_compare);
}

void TypedAnswer::JudgeTypedAnswer()
{
    const std::string typed = m_form1.Text_a.text();
    const bool right =
        same(common::trim_blanks_and_line_ends(typed), common::trim_blanks_and_line_ends(m_state.loaded_answer));
    if (right && !m_state.AnswerShown) {
        succeed();
        return;
    }
    msgbox_incorrect_answer(typed, m_state.loaded_answer);
    m_services.dialog.FailAndNext();
    // The box has shown the same words twice.
    if (right)
        m_services.status.ShowStatus("An answer that is typed after a hint or the answer itself counts as not known.",
                                     status_seconds);
}

void TypedAnswer::succeed()
{
    m_services.status.show_right();
    m_form1.window.announce("Right.");
    m_services.desktop.pump();
    try {
        m_services.dialog.SucceedAndNext();
    } catch (...) {
        m_services.status.reset_status();
        throw;
    }
}

void TypedAnswer::msgbox_incorrect_answer(const std::string& typed, const std::string& correct)
{
    const TextDifference differing =
        same(typed, correct) ? TextDifference{} : telling_difference(typed, correct, m_services.text_compare);
    std::string message;
    std::vector<common::TextRange> marked;
    if (!typed.empty()) {
        message += "Your answer is: \r\n\r\n   ";
        append(message, marked, typed, differing.in_first);
        message += "\r\n\r\n";
    }
    message += "The correct answer is: \r\n\r\n   ";
    append(message, marked, correct, differing.in_second);
    m_services.status.show_wrong();
    m_services.desktop.message_box({.text = message,
                                    .icon = platform::BoxIcon::information,
                                    .title = "Wrong answer",
                                    .marked = std::move(marked)});
    m_services.echo.note_box_closed();
    m_services.status.reset_status();
}

void TypedAnswer::OnHintClick()
{
    const std::optional<std::string> word = m_services.hints.chosen_word();
    if (!word || m_flags.editing() || !m_services.layout.question_on_display())
        return;
    if (!m_services.layout.can_type()) {
        m_services.desktop.beep();
        return;
    }
    const std::string before = m_form1.Text_a.text();
    std::string answer(common::trim_blanks(before));
    if (!answer.empty() && !is_punctuation(*word))
        answer += " ";
    answer += *word;
    if (!begins_stored_answer(answer)) {
        msgbox_incorrect_answer(answer, m_state.loaded_answer);
        m_services.dialog.FailAndNext();
        return;
    }
    put(answer);
    if (!same(common::trim_blanks_and_line_ends(answer), common::trim_blanks_and_line_ends(m_state.loaded_answer)))
        return;
    try {
        succeed();
    } catch (...) {
        // Where the verdict is not stored, the last word can be chosen again.
        if (m_services.layout.can_type())
            put(before);
        throw;
    }
}

bool TypedAnswer::begins_stored_answer(const std::string& text) const
{
    const std::string composed = m_services.text_compare.nfc(text);
    const std::string stored = m_services.text_compare.nfc(common::trim_blanks_and_line_ends(m_state.loaded_answer));
    return same(composed, common::first_code_points(stored, common::code_points(composed)));
}

void TypedAnswer::put(const std::string& answer)
{
    m_form1.Text_a.set_text(answer);
    m_form1.Text_a.set_caret(common::code_points(answer));
}

bool TypedAnswer::OnHintKey(const platform::KeyPress& press)
{
    m_form1.t_hint.set_focus();
    if (press.key == Key::enter || press.character == " ")
        return run(press, &TypedAnswer::OnHintClick);
    return true;
}

} // namespace cuedrill::drill
