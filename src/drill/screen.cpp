#include "drill/screen.h"

#include "common/colour.h"
#include "common/date_time.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

namespace cuedrill::drill {
namespace {

using platform::Line;
using platform::Screen;

/// Heading of the answer area. It says in words what the colour of a revealed answer means, and, before an answer is
/// typed, whether it will count.
const char* answer_heading(const DrillState& state, Mode mode)
{
    const bool can_type = mode == Mode::question;
    if (state.AnswerShown && can_type) {
        const bool has_words = state.shared_place == SharedPlace::hint && !state.hint_is_masked;
        return has_words ? "Typed answers count as not known now; clicked words count"
                         : "Typed answers count as not known now";
    }
    if (state.TypingMode && can_type)
        return "Type the answer, then press Enter";
    if (!state.answer_revealed || state.SelfJudgement.empty())
        return "Answer";
    return state.SelfJudgement == "-" ? "Answer: not known (-)" : "Answer: known (+)";
}

struct Figure {
    platform::ScreenLine caption;
    platform::ScreenLine value;
    const char* text;        ///< text of the caption
    const char* description; ///< accessible description of the value
};

void put(Screen& screen, const Figure& figure, std::string value)
{
    (screen.*figure.caption).text = figure.text;
    (screen.*figure.value).text = std::move(value);
    (screen.*figure.value).description = figure.description;
}

void put_question_figures(Screen& screen, const std::optional<QuestionFigures>& figures)
{
    const auto number = [&](std::int64_t QuestionFigures::*figure) {
        return figures ? std::to_string((*figures).*figure) : std::string();
    };
    put(screen, {&Screen::lab_q_level, &Screen::PANEL_Q_LEVEL, "Level", "Question level"},
        number(&QuestionFigures::level));
    put(screen, {&Screen::lab_q_attempts, &Screen::PANEL_Q_ATTEMPTS, "Attempts", "Attempts"},
        number(&QuestionFigures::attempts));
    put(screen, {&Screen::lab_fails, &Screen::PANEL_FAILS, "Failures", "Failures"}, number(&QuestionFigures::fails));
    put(screen, {&Screen::lab_elapsed, &Screen::PANEL_ELAPSED, "Elapsed", "Elapsed"},
        figures && figures->elapsed ? common::format_hours_minutes(static_cast<double>(*figures->elapsed)) : "");
}

void put_levels(Screen& screen, const CourseFigures& figures, common::Int16 target_level)
{
    for (int level = 0; level < platform::level_panels; ++level) {
        const auto index = static_cast<std::size_t>(level);
        platform::LevelLine& line = screen.panel_level.at(index);
        const bool is_target = level == target_level;
        line.description = "Level " + std::to_string(level);
        line.caption = line.description;
        if (level == scheduler::last_counted_level)
            line.caption += "+";
        // A sign marks the target as well as a colour, for users who cannot tell colours apart.
        if (is_target) {
            line.caption += " \u25CE";
            line.background = common::light_cyan;
        }
        line.count = figures.counts.level.at(index);
        line.total = figures.records;
        line.marked = figures.marked_level == level;
    }
}

/// The day of the week, `days` after that of `instant`.
std::string_view weekday(common::DateTime instant, std::size_t days)
{
    // Day 0 of a course's dates was a Saturday.
    constexpr std::array<std::string_view, 7> names{"Saturday",  "Sunday",   "Monday", "Tuesday",
                                                    "Wednesday", "Thursday", "Friday"};
    constexpr std::int64_t week = 7;
    const std::int64_t day = instant.day() % week; // negative before day 0
    return names.at((static_cast<std::size_t>(day + week) + days) % names.size());
}

/// "12 questions are " with an ending, "1 question is ", "No question is ".
std::string questions_are(std::int64_t count)
{
    if (count == 0)
        return "No question is ";
    return std::to_string(count) + (count == 1 ? " question is " : " questions are ");
}

/// Days are named by their first letters. The bars of what is due share one scale; that of the new questions, of which
/// there may be many more, shows their share of the course, as the bars of the levels do.
void put_due(Screen& screen, const CourseFigures& figures)
{
    constexpr std::size_t letters_of_day = 3;
    platform::DuePicture& picture = screen.due_picture;
    picture.description = "What is due";
    picture.bars.front().caption = "Now";
    picture.bars[1].caption = "Today";
    picture.bars.back().caption = "New";
    if (!figures.due)
        return;
    const scheduler::DueSoon& questions = figures.due->questions;
    picture.words = in_words(*figures.due);
    picture.bars.front().count = questions.now;
    picture.bars[1].count = questions.later_today;
    for (std::size_t day = 0; day < questions.days.size(); ++day) {
        picture.bars.at(day + 2).count = questions.days.at(day);
        picture.bars.at(day + 2).caption = weekday(figures.due->counted_at, day + 1).substr(0, letters_of_day);
    }
    picture.bars.back().count = questions.never_tested;

    const auto most = std::max_element(picture.bars.begin(), picture.bars.end() - 1,
                                       [](const auto& one, const auto& other) { return one.count < other.count; });
    for (platform::DueBar& bar : picture.bars) {
        bar.figure = std::to_string(bar.count);
        bar.whole = most->count;
    }
    picture.bars.back().whole = figures.records;
}

void put_course_figures(Screen& screen, const CourseFigures& figures, common::Int16 target_level)
{
    put(screen, {&Screen::lab_total, &Screen::panel_total, "Total", "Total"}, std::to_string(figures.records));
    put(screen, {&Screen::lab_nr_unpassed, &Screen::panel_nr_unpassed, "", "Unpassed"},
        std::to_string(figures.counts.unpassed));
    screen.lab_nr_unpassed.text = "q. unpassed (level <" + std::to_string(target_level) + ")";
    put(screen, {&Screen::lab_score, &Screen::Panel_score, "Score today", "Score today"},
        std::to_string(figures.score));
    put(screen, {&Screen::lab_open_time, &Screen::panel_open_time, "Open time", "Open time"}, figures.open_time);
    put(screen, {&Screen::lab_time_today, &Screen::panel_time_today, "Time today", "Time today"}, figures.time_today);
    put(screen, {&Screen::lab_time_ever, &Screen::panel_time_ever, "Time ever", "Time ever"}, figures.time_ever);
    put(screen, {&Screen::lab_time_now, &Screen::Panel_time_now, "Time now", "Time now"}, figures.time_now);
}

} // namespace

std::string in_words(const DueFigures& due)
{
    const scheduler::DueSoon& questions = due.questions;
    std::string words = questions_are(questions.now) + "due now, " + std::to_string(questions.later_today) +
                        " more today, tomorrow " + std::to_string(questions.days.front());
    for (std::size_t day = 1; day < questions.days.size(); ++day)
        words.append(", ")
            .append(weekday(due.counted_at, day + 1))
            .append(" ")
            .append(std::to_string(questions.days.at(day)));
    return words + ". " + questions_are(questions.never_tested) + "new.";
}

Screen render(const Told& told, const DrillState& state, Mode mode, common::Int16 target_level)
{
    Screen screen;
    screen.lab_q.text = "Question";
    screen.panel_a.text = answer_heading(state, mode);
    // While a verdict is awaited, the status line asks for it.
    screen.panel_a.visible = !state.AwaitingVerdict;
    put_question_figures(screen, told.question);
    put_levels(screen, told.course, target_level);
    put_due(screen, told.course);
    put_course_figures(screen, told.course, target_level);
    screen.panel_dialog = told.prompt;
    // The dialog is disabled while a record is being edited.
    screen.panel_dialog.enabled = mode != Mode::new_record && mode != Mode::edit_record;
    screen.P_status = told.status;
    return screen;
}

void MainScreen::repaint()
{
    view_.show(render(told, state_, mode_of(course_.record_count, flags_, state_), course_.params.target_level));
}

} // namespace cuedrill::drill
