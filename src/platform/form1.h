#pragma once

#include "platform/controls.h"

#include <array>

namespace cuedrill::platform {

inline constexpr int level_panels = 6;
inline constexpr int toolbar_buttons = 11;

/// The controls of the main window.
struct Form1 {
    Window& window;
    MenuBar& menu_bar;

    std::array<Button*, toolbar_buttons> pb; ///< the toolbar; button number n is at index n - 1; never null

    Label& lab_q; ///< heading of the question area
    TextBox& Text_q;
    Label& panel_a; ///< heading and typing prompt of the answer area
    TextBox& Text_a;

    // The figures of the current question, each with its caption.
    Label& lab_q_level;
    Label& PANEL_Q_LEVEL;
    Label& lab_q_attempts;
    Label& PANEL_Q_ATTEMPTS;
    Label& lab_fails;
    Label& PANEL_FAILS;
    Label& lab_elapsed;
    Label& PANEL_ELAPSED;

    Frame& frame_stats;
    std::array<LevelPanel*, level_panels> panel_level; ///< levels 0 to 4, and 5 or more; never null
    Label& lab_total;
    Label& panel_total;
    Label& lab_nr_unpassed;
    Label& panel_nr_unpassed;
    Label& lab_score;
    Label& Panel_score;
    Label& lab_open_time;
    Label& panel_open_time;
    Label& lab_time_today;
    Label& panel_time_today;
    Label& lab_time_ever;
    Label& panel_time_ever;
    Label& lab_time_now;
    Label& Panel_time_now;

    Frame& panel_lista; ///< takes the place of frame_stats; holds the hint and the list, one of which is visible
    HintBox& t_hint;
    ListBox& listav;

    Label& panel_dialog; ///< the prompt
    Frame& dialog_strip; ///< holds the three buttons
    Button& bot_yes;
    Button& bot_no;
    Button& bot_other;

    FocusHolder& bot_focus; ///< has the focus when no visible control should have it

    Label& P_status;

    Timer& timer_250_ms;
    Timer& timer_1_sec;
    Timer& timer_1_min;
};

} // namespace cuedrill::platform
