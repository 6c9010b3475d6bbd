#pragma once

#include "common/colour.h"

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace cuedrill::platform {

/// Alignment and emphasis of the text in its line.
enum class Alignment { left, emphasised };

/// A line of text in the main window: a caption, the prompt, a figure, the status.
struct Line {
    std::string text{};
    /// The accessible description, such as "Status". The accessible name is the text.
    std::string description{};
    /// std::nullopt means the background of the window. On a background of its own the text is dark.
    std::optional<common::Colour> background{};
    bool bold = false;
    Alignment alignment = Alignment::left;
    bool visible = true;
    bool enabled = true;
    /// For the prompt and the status line: whenever this number changes, assistive technology reads the text out.
    int news = 0;

    friend bool operator==(const Line&, const Line&) = default;
};

inline constexpr int level_panels = 6;

/// The number of questions of one level, with a bar.
struct LevelLine {
    std::string caption{};
    std::string description{}; ///< accessible description
    std::int64_t count = 0;
    std::int64_t total = 0; ///< the bar shows the share count / total; it is empty if this is 0
    std::optional<common::Colour> background{};
    bool marked = false; ///< the level of the last verdict

    friend bool operator==(const LevelLine&, const LevelLine&) = default;
};

/// Bars of the picture of what is due: now, later today, each of six days, and the questions never tested.
inline constexpr int due_bars = 9;

/// A number of questions, with a bar.
struct DueBar {
    std::string caption{};
    std::string figure{};
    std::int64_t count = 0;
    std::int64_t whole = 0; ///< the bar shows the share count / whole; it is empty if this is 0

    friend bool operator==(const DueBar&, const DueBar&) = default;
};

/// A picture of how many questions are due, now and later.
struct DuePicture {
    std::string words{}; ///< the picture in words, as its accessible name and its tool tip
    std::string description{};
    std::array<DueBar, due_bars> bars{};

    friend bool operator==(const DuePicture&, const DuePicture&) = default;
};

/// Everything in the main window that is display only, by the names of its controls.
struct Screen {
    Line lab_q;   ///< heading of the question area
    Line panel_a; ///< heading and typing prompt of the answer area

    // The figures of the question on display, each with its caption.
    Line lab_q_level;
    Line PANEL_Q_LEVEL;
    Line lab_q_attempts;
    Line PANEL_Q_ATTEMPTS;
    Line lab_fails;
    Line PANEL_FAILS;
    Line lab_elapsed;
    Line PANEL_ELAPSED;

    std::array<LevelLine, level_panels> panel_level; ///< levels 0 to 4, and 5 or more
    DuePicture due_picture;
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

/// Draws a Screen in the main window.
class ScreenView {
public:
    ScreenView() = default;
    ScreenView(const ScreenView&) = delete;
    ScreenView& operator=(const ScreenView&) = delete;
    virtual ~ScreenView() = default;

    /// Draws what has changed since the last call.
    virtual void show(const Screen& screen) = 0;

    /// Calls `ask` on Shift+click on the line. The pointer over the line becomes an upright arrow.
    virtual void offer_help(ScreenLine line, const std::function<void()>& ask) = 0;
    /// The same for every level panel.
    virtual void offer_level_help(const std::function<void()>& ask) = 0;
    /// The same for the picture of what is due.
    virtual void offer_due_help(const std::function<void()>& ask) = 0;
};

} // namespace cuedrill::platform
