#pragma once

#include "platform/controls.h"
#include "platform/screen.h"

#include <array>

namespace cuedrill::platform {

inline constexpr int toolbar_buttons = 11;

/// The controls of the main window.
struct Form1 {
    Window& window;
    MenuBar& menu_bar;
    ScreenView& screen;

    std::array<Button*, toolbar_buttons> pb; ///< the toolbar; button number n is at index n - 1; never null

    TextBox& Text_q;
    TextBox& Text_a;

    Frame& frame_stats;

    Frame& panel_lista; ///< takes the place of frame_stats; holds the hint and the list, one of which is visible
    HintBox& t_hint;
    ListBox& listav;

    Frame& dialog_strip; ///< holds the three buttons
    Button& bot_yes;
    Button& bot_no;
    Button& bot_other;

    FocusHolder& bot_focus; ///< has the focus when no visible control should have it

    Timer& timer_250_ms;
    Timer& timer_1_sec;
    Timer& timer_1_min;
    // These tick only while no action of the user is running and no box is open.
    Timer& timer_idle;  ///< while a copy of the course is being made
    Timer& timer_due;   ///< while a course is open, for the picture of what is due
    Timer& timer_check; ///< while a check of the course waits for another program
};

} // namespace cuedrill::platform
