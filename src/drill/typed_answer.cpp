#include "drill/typed_answer.h"

#include "bank/compared_text.h"
#include "common/text.h"
#include "drill/text_difference.h"

#include <algorithm>

namespace cuedrill::drill {
namespace {

using platform::Key;
using scheduler::JudgedBy;

bool is_sign(const platform::KeyPress& press)
{
    return press.character == "+" || press.character == "-";
}

/// A single ASCII character that sorts before the letters and is not a digit. It is appended to a word without a blank.
bool is_punctuation(std::string_view word)
{
    const auto code = word.size() == 1 ? static_cast<unsigned char>(word.front()) : 'A';
    return code < '0' || (code > '9' && code < 'A');
}

/// The differences that are worth marking. Texts with little in common get no marks: a few letters that they happen to
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

void TypedAnswer::attach()
{
    form1_.Text_a.on_key = [this](const platform::KeyPress& press) { return OnAnswerKey(press); };
    form1_.t_hint.on_click = [this] { OnHintClick(); };
    form1_.t_hint.on_key = [this](const platform::KeyPress& press) { return OnHintKey(press); };
}

bool TypedAnswer::OnAnswerKey(const platform::KeyPress& press)
{
    if (flags_.editing())
        return false;
    if (press.key == Key::enter)
        return run(press, &TypedAnswer::on_enter);
    if (press.character == "*" && !state_.TypingMode)
        return run(press, &TypedAnswer::show_answer);
    if (is_sign(press) && !state_.TypingMode && form1_.Text_a.text().empty()) {
        if (!press.auto_repeat && services_.layout.question_on_display())
            state_.SelfJudgement = press.character;
        return run(press, &TypedAnswer::reveal);
    }
    return insert_before_end(press);
}

/// Runs the command of a key once, however long the key is held down.
bool TypedAnswer::run(const platform::KeyPress& press, void (TypedAnswer::*command)())
{
    if (!press.auto_repeat)
        services_.key_policy.run(press, [this, command] { (this->*command)(); });
    return true;
}

void TypedAnswer::show_answer()
{
    services_.dialog.ShowAnswerCommand();
}

void TypedAnswer::reveal()
{
    if (services_.layout.question_on_display())
        services_.display.RevealAnswer();
    // No verdict has been stored yet.
    if (services_.layout.answer_on_display() && state_.SelfJudgement == "-")
        services_.status.ask_for_verdict();
    else
        services_.narrator.tell_next_step();
}

void TypedAnswer::on_enter()
{
    if (common::trim_blanks_and_line_ends(form1_.Text_a.text()).empty())
        show_answer();
    else if (services_.layout.can_type() || marked_as_known())
        JudgeTypedAnswer();
    else
        // The text was not typed by the user, so it cannot be judged.
        beep();
}

void TypedAnswer::beep()
{
    services_.desktop.beep();
    services_.narrator.tell_next_step();
}

/// Whether the answer was revealed after the user marked it as known. Enter then confirms that and is judged like a
/// typed answer: after a hint it counts as not known.
bool TypedAnswer::marked_as_known() const
{
    return services_.layout.mode() == Mode::answer && state_.SelfJudgement == "+";
}

/// Inserts a character typed in the middle of the text before the selection, which is kept.
bool TypedAnswer::insert_before_end(const platform::KeyPress& press)
{
    platform::TextBox& box = form1_.Text_a;
    if (press.key != Key::character || press.composed || !services_.layout.can_type())
        return false;
    const std::size_t caret = box.caret();
    if (common::code_points(box.text()) <= caret)
        return false;
    box.insert(caret, press.character);
    return true;
}

bool TypedAnswer::same(std::string_view a, std::string_view b) const
{
    return bank::same_text(a, b, services_.text_compare);
}

void TypedAnswer::JudgeTypedAnswer()
{
    const std::string typed = form1_.Text_a.text();
    const JudgedBy by = marked_as_known() ? JudgedBy::user : JudgedBy::program;
    const bool right =
        same(common::trim_blanks_and_line_ends(typed), common::trim_blanks_and_line_ends(state_.shown.loaded_answer()));
    if (right && !state_.AnswerShown) {
        succeed(by);
        return;
    }
    msgbox_incorrect_answer(typed, state_.shown.loaded_answer());
    services_.dialog.FailAndNext(by);
    // The box showed the same text twice, so say why it does not count.
    if (right)
        services_.status.ShowStatus("An answer that is typed after a hint or the answer itself counts as not known.",
                                    status_seconds);
}

/// @param answer_before text for the answer box if the verdict is not stored and the user can answer again.
void TypedAnswer::succeed(JudgedBy by, const std::string* answer_before)
{
    services_.status.show_right();
    form1_.window.announce("Right.");
    services_.desktop.pump();
    try {
        services_.dialog.SucceedAndNext(by);
    } catch (...) {
        services_.status.reset_status();
        if (answer_before != nullptr && services_.layout.can_type())
            put(*answer_before);
        throw;
    }
}

void TypedAnswer::msgbox_incorrect_answer(const std::string& typed, const std::string& correct)
{
    const TextDifference differing =
        same(typed, correct) ? TextDifference{} : telling_difference(typed, correct, services_.text_compare);
    std::string message;
    std::vector<common::TextRange> marked;
    if (!typed.empty()) {
        message += "Your answer is: \r\n\r\n   ";
        append(message, marked, typed, differing.in_first);
        message += "\r\n\r\n";
    }
    message += "The correct answer is: \r\n\r\n   ";
    append(message, marked, correct, differing.in_second);
    services_.status.show_wrong();
    services_.desktop.message_box({.text = message,
                                   .icon = platform::BoxIcon::information,
                                   .title = "Wrong answer",
                                   .marked = std::move(marked)});
    services_.key_policy.note_box_closed();
    services_.status.reset_status();
}

void TypedAnswer::OnHintClick()
{
    const std::optional<std::string> word = services_.hints.chosen_word();
    if (!word || flags_.editing() || !services_.layout.question_on_display())
        return;
    if (!services_.layout.can_type()) {
        beep();
        return;
    }
    const std::string before = form1_.Text_a.text();
    std::string answer(common::trim_blanks(before));
    if (!answer.empty() && !is_punctuation(*word))
        answer += " ";
    answer += *word;
    if (!begins_stored_answer(answer)) {
        msgbox_incorrect_answer(answer, state_.shown.loaded_answer());
        services_.dialog.FailAndNext(JudgedBy::program);
        return;
    }
    put(answer);
    if (same(common::trim_blanks_and_line_ends(answer),
             common::trim_blanks_and_line_ends(state_.shown.loaded_answer())))
        succeed(JudgedBy::program, &before);
    else
        form1_.window.announce("Right so far: " + answer);
}

bool TypedAnswer::begins_stored_answer(const std::string& text) const
{
    const std::string composed = services_.text_compare.nfc(text);
    const std::string stored =
        services_.text_compare.nfc(common::trim_blanks_and_line_ends(state_.shown.loaded_answer()));
    return same(composed, common::first_code_points(stored, common::code_points(composed)));
}

void TypedAnswer::put(const std::string& answer)
{
    form1_.Text_a.set_text(answer);
    form1_.Text_a.set_caret(common::code_points(answer));
}

bool TypedAnswer::OnHintKey(const platform::KeyPress& press)
{
    form1_.t_hint.set_focus();
    if (press.key == Key::enter || press.character == " ")
        return run(press, &TypedAnswer::OnHintClick);
    return true;
}

} // namespace cuedrill::drill
