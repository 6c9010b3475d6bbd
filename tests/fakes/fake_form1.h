#pragma once

#include "fakes/fake_controls.h"
#include "fakes/fake_screen.h"
#include "platform/form1.h"

#include <array>
#include <string_view>

namespace cuedrill::fakes {

/// The main window with all its controls; pass `controls` to the logic.
class FakeForm1 {
public:
    FakeForm1();
    FakeForm1(const FakeForm1&) = delete;
    FakeForm1& operator=(const FakeForm1&) = delete;
    ~FakeForm1();

    /// The user presses a key while `box` has the focus. The window gets it first, then the box. If neither consumes
    /// it, a character is inserted into the text, and Enter inserts a line end.
    void press_in(FakeTextBox& box, const platform::KeyPress& key);
    void press_in(FakeHintBox& box, const platform::KeyPress& key);

    /// The user types `text` into `box` at its cursor, character by character.
    void type(FakeTextBox& box, std::string_view text);

    /// The toolbar button with this number, from 1.
    FakeButton& toolbar(int number);

    Journal journal;
    FakeFocus focus;

    FakeWindow window{"Form1", &journal};
    FakeMenuBar menu_bar{&journal};
    FakeScreen screen_view{&journal};
    const platform::Screen& screen = screen_view.shown; ///< as it was drawn last
    std::array<FakeButton, platform::toolbar_buttons> pb{
        FakeButton{"pb_1", &journal},  FakeButton{"pb_2", &journal}, FakeButton{"pb_3", &journal},
        FakeButton{"pb_4", &journal},  FakeButton{"pb_5", &journal}, FakeButton{"pb_6", &journal},
        FakeButton{"pb_7", &journal},  FakeButton{"pb_8", &journal}, FakeButton{"pb_9", &journal},
        FakeButton{"pb_10", &journal}, FakeButton{"pb_11", &journal}};

    FakeTextBox Text_q{"Text_q", &journal};
    FakeTextBox Text_a{"Text_a", &journal};

    FakeFrame frame_stats{"frame_stats", &journal};

    FakeFrame panel_lista{"panel_lista", &journal};
    FakeHintBox t_hint{"t_hint", &journal};
    FakeListBox listav{"listav", &journal};

    FakeFrame dialog_strip{"dialog_strip", &journal};
    FakeButton bot_yes{"bot_yes", &journal};
    FakeButton bot_no{"bot_no", &journal};
    FakeButton bot_other{"bot_other", &journal};

    FakeFocusHolder bot_focus{"bot_focus", &journal};

    FakeTimer timer_250_ms{"timer_250_ms", &journal};
    FakeTimer timer_1_sec{"timer_1_sec", &journal};
    FakeTimer timer_1_min{"timer_1_min", &journal};
    FakeTimer timer_idle{"timer_idle", &journal};
    FakeTimer timer_due{"timer_due", &journal};
    FakeTimer timer_check{"timer_check", &journal};

    platform::Form1 controls{
        .window = window,
        .menu_bar = menu_bar,
        .screen = screen_view,
        .pb = {&pb[0], &pb[1], &pb[2], &pb[3], &pb[4], &pb[5], &pb[6], &pb[7], &pb[8], &pb[9], &pb[10]},
        .Text_q = Text_q,
        .Text_a = Text_a,
        .frame_stats = frame_stats,
        .panel_lista = panel_lista,
        .t_hint = t_hint,
        .listav = listav,
        .dialog_strip = dialog_strip,
        .bot_yes = bot_yes,
        .bot_no = bot_no,
        .bot_other = bot_other,
        .bot_focus = bot_focus,
        .timer_250_ms = timer_250_ms,
        .timer_1_sec = timer_1_sec,
        .timer_1_min = timer_1_min,
        .timer_idle = timer_idle,
        .timer_due = timer_due,
        .timer_check = timer_check,
    };
};

} // namespace cuedrill::fakes
