#include "drill/narrator.h"

#include "common/text.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace cuedrill::drill {
namespace {

/// Adds a sentence, with a full stop if it ends with neither a stop nor another mark.
void add(std::string& text, std::string_view sentence)
{
    const std::string_view trimmed = common::trim_blanks_and_line_ends(sentence);
    if (trimmed.empty())
        return;
    if (!text.empty())
        text += " ";
    text += trimmed;
    if (std::string_view(".?!:").find(trimmed.back()) == std::string_view::npos)
        text += ".";
}

std::string counted(std::int64_t count, const std::string& thing)
{
    return std::to_string(count) + " " + thing + (count == 1 ? "" : "s");
}

} // namespace

void Narrator::repeat() const
{
    std::string text = texts();
    add(text, screen_.told.status.text);
    // While a verdict is awaited, the status line has said it.
    add(text, state_.AwaitingVerdict ? step_in_shared_place() : next_step());
    form1_.window.announce(text);
}

void Narrator::tell_figures() const
{
    std::string text;
    add(text, question_figures());
    add(text, statistics());
    form1_.window.announce(text);
}

void Narrator::tell_statistics() const
{
    form1_.window.announce(statistics());
}

void Narrator::tell_next_step() const
{
    form1_.window.announce(next_step());
}

/// What is asked and what is in the answer box.
std::string Narrator::texts() const
{
    std::string text;
    if (flags_.editing())
        add(text, flags_.new_mode ? "You are writing a new question" : "You are changing this question");
    const bool has_question = flags_.editing() || layout_.question_on_display();
    if (!has_question)
        return text;
    const std::string question = form1_.Text_q.text();
    add(text, "Question: " + (common::trim_blanks_and_line_ends(question).empty() ? "empty" : question));
    const std::string answer = form1_.Text_a.text();
    if (common::trim_blanks_and_line_ends(answer).empty())
        return text;
    const bool is_typed = !flags_.editing() && !layout_.answer_on_display();
    add(text, (is_typed ? "You have typed: " : "Answer: ") + answer);
    return text;
}

std::string Narrator::next_step() const
{
    std::string text = step_of_mode();
    add(text, step_in_shared_place());
    return text;
}

std::string Narrator::step_of_mode() const
{
    switch (layout_.mode()) {
    case Mode::empty_course:
        return "The course has no questions. Press I to write one.";
    case Mode::nothing:
        return "No question is on display. Press Q for the next one.";
    case Mode::question:
        if (state_.TypingMode)
            return state_.AnswerShown ? "Type the answer, then press Enter. It counts as not known now."
                                      : "Type the answer, then press Enter.";
        return "Press A for the answer, H for a hint, T to type the answer, Q for another question.";
    case Mode::answer:
        return "Press + if you knew the answer, - if you did not.";
    case Mode::new_record:
    case Mode::edit_record:
        break;
    }
    return "Tab leads from box to box, Ctrl+S saves, Escape leaves.";
}

std::string Narrator::step_in_shared_place() const
{
    switch (state_.shared_place) {
    case SharedPlace::statistics:
        break;
    case SharedPlace::hint:
        return state_.hint_is_masked || !layout_.can_type()
                   ? "A hint is shown; Escape closes it."
                   : "A hint is shown: Tab and the arrow keys lead to its words, Enter chooses one, "
                     "Escape closes it.";
    case SharedPlace::list:
        return "A list is shown: Tab and the arrow keys lead to its lines, Enter chooses one, Escape closes it.";
    }
    return {};
}

std::string Narrator::question_figures() const
{
    const std::optional<QuestionFigures>& figures = screen_.told.question;
    if (!figures)
        return "No question is on display";
    std::string text = "Level " + std::to_string(figures->level) + ", " + counted(figures->attempts, "attempt") + ", " +
                       counted(figures->fails, "failure") + ", ";
    if (!figures->elapsed)
        return text + "never tested";
    return text + "tested " + common::format_hours_minutes(static_cast<double>(*figures->elapsed)) + " hours ago";
}

std::string Narrator::statistics() const
{
    const CourseFigures& course = screen_.told.course;
    std::string text = "The course has " + counted(course.records, "question") + ", " +
                       std::to_string(course.counts.unpassed) + " unpassed.";
    std::string levels;
    for (int level = 0; level < platform::level_panels; ++level)
        levels += (level == 0 ? "Level " : ", level ") + std::to_string(level) +
                  (level == scheduler::last_counted_level ? " and more: " : ": ") +
                  std::to_string(course.counts.level.at(static_cast<std::size_t>(level)));
    add(text, levels);
    if (course.due)
        add(text, in_words(*course.due));
    add(text, "Score today " + std::to_string(course.score));
    add(text, "Time today " + course.time_today);
    return text;
}

} // namespace cuedrill::drill
