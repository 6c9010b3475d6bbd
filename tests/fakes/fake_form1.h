#pragma once

#include "fakes/fake_controls.h"
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
    std::array<FakeButton, platform::toolbar_buttons> pb{
        FakeButton{"pb_1", &journal},  FakeButton{"pb_2", &journal}, FakeButton{"pb_3", &journal},
        FakeButton{"pb_4", &journal},  FakeButton{"pb_5", &journal}, FakeButton{"pb_6", &journal},
        FakeButton{"pb_7", &journal},  FakeButton{"pb_8", &journal}, FakeButton{"pb_9", &journal},
        FakeButton{"pb_10", &journal}, FakeButton{"pb_11", &journal}};

    FakeLabel lab_q{"lab_q", &journal};
    FakeTextBox Text_q{"Text_q", &journal};
    FakeLabel panel_a{"panel_a", &journal};
    FakeTextBox Text_a{"Text_a", &journal};

    FakeLabel lab_q_level{"lab_q_level", &journal};
    FakeLabel PANEL_Q_LEVEL{"PANEL_Q_LEVEL", &journal};
    FakeLabel lab_q_attempts{"lab_q_attempts", &journal};
    FakeLabel PANEL_Q_ATTEMPTS{"PANEL_Q_ATTEMPTS", &journal};
    FakeLabel lab_fails{"lab_fails", &journal};
    FakeLabel PANEL_FAILS{"PANEL_FAILS", &journal};
    FakeLabel lab_elapsed{"lab_elapsed", &journal};
    FakeLabel PANEL_ELAPSED{"PANEL_ELAPSED", &journal};

    FakeFrame frame_stats{"frame_stats", &journal};
    std::array<FakeLevelPanel, platform::level_panels> panel_level{
        FakeLevelPanel{"panel_level[0]", &journal}, FakeLevelPanel{"panel_level[1]", &journal},
        FakeLevelPanel{"panel_level[2]", &journal}, FakeLevelPanel{"panel_level[3]", &journal},
        FakeLevelPanel{"panel_level[4]", &journal}, FakeLevelPanel{"panel_level[5]", &journal}};
    FakeLabel lab_total{"lab_total", &journal};
    FakeLabel panel_total{"panel_total", &journal};
    FakeLabel lab_nr_unpassed{"lab_nr_unpassed", &journal};
    FakeLabel panel_nr_unpassed{"panel_nr_unpassed", &journal};
    FakeLabel lab_score{"lab_score", &journal};
    FakeLabel Panel_score{"Panel_score", &journal};
    FakeLabel lab_open_time{"lab_open_time", &journal};
    FakeLabel panel_open_time{"panel_open_time", &journal};
    FakeLabel lab_time_today{"lab_time_today", &journal};
    FakeLabel panel_time_today{"panel_time_today", &journal};
    FakeLabel lab_time_ever{"lab_time_ever", &journal};
    FakeLabel panel_time_ever{"panel_time_ever", &journal};
    FakeLabel lab_time_now{"lab_time_now", &journal};
    FakeLabel Panel_time_now{"Panel_time_now", &journal};

    FakeFrame panel_lista{"panel_lista", &journal};
    FakeHintBox t_hint{"t_hint", &journal};
    FakeListBox listav{"listav", &journal};

    FakeLabel panel_dialog{"panel_dialog", &journal};
    FakeFrame dialog_strip{"dialog_strip", &journal};
    FakeButton bot_yes{"bot_yes", &journal};
    FakeButton bot_no{"bot_no", &journal};
    FakeButton bot_other{"bot_other", &journal};

    FakeFocusHolder bot_focus{"bot_focus", &journal};

    FakeLabel P_status{"P_status", &journal};

    FakeTimer timer_250_ms{"timer_250_ms", &journal};
    FakeTimer timer_1_sec{"timer_1_sec", &journal};
    FakeTimer timer_1_min{"timer_1_min", &journal};

    platform::Form1 controls{
        .window = window,
        .menu_bar = menu_bar,
        .pb = {&pb[0], &pb[1], &pb[2], &pb[3], &pb[4], &pb[5], &pb[6], &pb[7], &pb[8], &pb[9], &pb[10]},
        .lab_q = lab_q,
        .Text_q = Text_q,
        .panel_a = panel_a,
        .Text_a = Text_a,
        .lab_q_level = lab_q_level,
        .PANEL_Q_LEVEL = PANEL_Q_LEVEL,
        .lab_q_attempts = lab_q_attempts,
        .PANEL_Q_ATTEMPTS = PANEL_Q_ATTEMPTS,
        .lab_fails = lab_fails,
        .PANEL_FAILS = PANEL_FAILS,
        .lab_elapsed = lab_elapsed,
        .PANEL_ELAPSED = PANEL_ELAPSED,
        .frame_stats = frame_stats,
        .panel_level = {&panel_level[0], &panel_level[1], &panel_level[2], &panel_level[3], &panel_level[4],
                        &panel_level[5]},
        .lab_total = lab_total,
        .panel_total = panel_total,
        .lab_nr_unpassed = lab_nr_unpassed,
        .panel_nr_unpassed = panel_nr_unpassed,
        .lab_score = lab_score,
        .Panel_score = Panel_score,
        .lab_open_time = lab_open_time,
        .panel_open_time = panel_open_time,
        .lab_time_today = lab_time_today,
        .panel_time_today = panel_time_today,
        .lab_time_ever = lab_time_ever,
        .panel_time_ever = panel_time_ever,
        .lab_time_now = lab_time_now,
        .Panel_time_now = Panel_time_now,
        .panel_lista = panel_lista,
        .t_hint = t_hint,
        .listav = listav,
        .panel_dialog = panel_dialog,
        .dialog_strip = dialog_strip,
        .bot_yes = bot_yes,
        .bot_no = bot_no,
        .bot_other = bot_other,
        .bot_focus = bot_focus,
        .P_status = P_status,
        .timer_250_ms = timer_250_ms,
        .timer_1_sec = timer_1_sec,
        .timer_1_min = timer_1_min,
    };
};

} // namespace cuedrill::fakes
