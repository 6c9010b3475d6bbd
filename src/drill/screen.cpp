#include "drill/screen.h"

#include "common/colour.h"
#include "common/date_time.h"

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

Screen render(const Told& told, const DrillState& state, Mode mode, common::Int16 target_level)
{
    Screen screen;
    screen.lab_q.text = "Question";
    screen.panel_a.text = answer_heading(state, mode);
    // While a verdict is awaited, the status line asks for it.
    screen.panel_a.visible = !state.AwaitingVerdict;
    put_question_figures(screen, told.question);
    put_levels(screen, told.course, target_level);
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
