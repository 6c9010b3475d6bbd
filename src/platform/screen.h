#pragma once

#include "common/colour.h"

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace cuedrill::platform {

/// How a text is placed in its line.
enum class Alignment { left, emphasised };

/// A line of text that the main window shows: a caption, a prompt, a figure, the status.
struct Line {
    std::string text{};
    /// What the line tells, for assistive technology ("Status"); its name is its text.
    std::string description{};
    /// Nothing for the window's own background. On a colour the text is dark.
    std::optional<common::Colour> background{};
    bool bold = false;
    Alignment alignment = Alignment::left;
    bool visible = true;
    bool enabled = true;
    /// The prompt and the status line are read out by assistive technology each time this number has changed.
    int news = 0;

    friend bool operator==(const Line&, const Line&) = default;
};

inline constexpr int level_panels = 6;

/// The number of questions of one level, as a figure with a bar.
struct LevelLine {
    std::string caption{};
    std::string description{}; ///< for assistive technology
    std::int64_t count = 0;
    std::int64_t total = 0; ///< the bar is filled by the share `count` of it; it is empty when this is 0
    std::optional<common::Colour> background{};
    bool marked = false; ///< the last verdict led here

    friend bool operator==(const LevelLine&, const LevelLine&) = default;
};

/// Everything that the main window tells and nobody can answer, by the names of its controls.
struct Screen {
    Line lab_q;   ///< heading of the question area
    Line panel_a; ///< heading and typing prompt of the answer area

    // The question's own figures, each with its caption.
    Line lab_q_level;
    Line PANEL_Q_LEVEL;
    Line lab_q_attempts;
    Line PANEL_Q_ATTEMPTS;
    Line lab_fails;
    Line PANEL_FAILS;
    Line lab_elapsed;
    Line PANEL_ELAPSED;

    std::array<LevelLine, level_panels> panel_level; ///< levels 0 to 4, and 5 or more
    Line lab_total;
    Line panel_total;
    Line lab_nr_unpassed;
    Line panel_nr_unpassed;
    Line lab_score;
    Line Panel_score;
    Line lab_open_time;
    Line panel_open_time;
    Line lab_time_today;
    Line panel_time_today;
    Line lab_time_ever;
    Line panel_time_ever;
    Line lab_time_now;
    Line Panel_time_now;

    Line panel_dialog; ///< the prompt
    Line P_status;

    friend bool operator==(const Screen&, const Screen&) = default;
};

/// One of the lines of a Screen.
using ScreenLine = Line Screen::*;

struct NamedLine {
    const char* name;
    ScreenLine line;
};

inline constexpr std::array screen_lines{
    NamedLine{"lab_q", &Screen::lab_q},
    NamedLine{"panel_a", &Screen::panel_a},
    NamedLine{"lab_q_level", &Screen::lab_q_level},
    NamedLine{"PANEL_Q_LEVEL", &Screen::PANEL_Q_LEVEL},
    NamedLine{"lab_q_attempts", &Screen::lab_q_attempts},
    NamedLine{"PANEL_Q_ATTEMPTS", &Screen::PANEL_Q_ATTEMPTS},
    NamedLine{"lab_fails", &Screen::lab_fails},
    NamedLine{"PANEL_FAILS", &Screen::PANEL_FAILS},
    NamedLine{"lab_elapsed", &Screen::lab_elapsed},
    NamedLine{"PANEL_ELAPSED", &Screen::PANEL_ELAPSED},
    NamedLine{"lab_total", &Screen::lab_total},
    NamedLine{"panel_total", &Screen::panel_total},
    NamedLine{"lab_nr_unpassed", &Screen::lab_nr_unpassed},
    NamedLine{"panel_nr_unpassed", &Screen::panel_nr_unpassed},
    NamedLine{"lab_score", &Screen::lab_score},
    NamedLine{"Panel_score", &Screen::Panel_score},
    NamedLine{"lab_open_time", &Screen::lab_open_time},
    NamedLine{"panel_open_time", &Screen::panel_open_time},
    NamedLine{"lab_time_today", &Screen::lab_time_today},
    NamedLine{"panel_time_today", &Screen::panel_time_today},
    NamedLine{"lab_time_ever", &Screen::lab_time_ever},
    NamedLine{"panel_time_ever", &Screen::panel_time_ever},
    NamedLine{"lab_time_now", &Screen::lab_time_now},
    NamedLine{"Panel_time_now", &Screen::Panel_time_now},
    NamedLine{"panel_dialog", &Screen::panel_dialog},
    NamedLine{"P_status", &Screen::P_status},
};

/// The part of the main window that draws a Screen.
class ScreenView {
public:
    ScreenView() = default;
    ScreenView(const ScreenView&) = delete;
    ScreenView& operator=(const ScreenView&) = delete;
    virtual ~ScreenView() = default;

    /// Draws what differs from the screen before.
    virtual void show(const Screen& screen) = 0;

    /// From now on Shift and a click on the line calls `ask`. The pointer over the line becomes an upright arrow.
    virtual void offer_help(ScreenLine line, const std::function<void()>& ask) = 0;
    /// The same for each of the level panels.
    virtual void offer_level_help(const std::function<void()>& ask) = 0;
};

} // namespace cuedrill::platform
