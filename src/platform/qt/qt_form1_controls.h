#pragma once

#include "platform/form1.h"
#include "platform/qt/qt_button.h"
#include "platform/qt/qt_card.h"
#include "platform/qt/qt_focus_holder.h"
#include "platform/qt/qt_frame.h"
#include "platform/qt/qt_hint_box.h"
#include "platform/qt/qt_label.h"
#include "platform/qt/qt_level_panel.h"
#include "platform/qt/qt_list_box.h"
#include "platform/qt/qt_menu_bar.h"
#include "platform/qt/qt_session_end.h"
#include "platform/qt/qt_text_box.h"
#include "platform/qt/qt_timer.h"
#include "platform/qt/qt_window.h"

namespace cuedrill::platform::qt {

/// The adapters of all controls of the main window. The widgets belong to the window once they are laid out.
struct QtForm1Controls {
    QtForm1Controls(QtGuard& guard, QtWindowState state);

    QtWindow window;
    QtMenuBar menu_bar;

    std::array<QtButton, toolbar_buttons> pb{toolbar_button("pb_1"),  toolbar_button("pb_2"), toolbar_button("pb_3"),
                                             toolbar_button("pb_4"),  toolbar_button("pb_5"), toolbar_button("pb_6"),
                                             toolbar_button("pb_7"),  toolbar_button("pb_8"), toolbar_button("pb_9"),
                                             toolbar_button("pb_10"), toolbar_button("pb_11")};

    QtLabel lab_q{"lab_q", QtLabel::Kind::heading};
    QtTextBox Text_q;
    QtLabel panel_a{"panel_a", QtLabel::Kind::heading};
    QtTextBox Text_a;

    QtLabel lab_q_level{"lab_q_level", QtLabel::Kind::caption};
    QtLabel PANEL_Q_LEVEL{"PANEL_Q_LEVEL", QtLabel::Kind::value};
    QtLabel lab_q_attempts{"lab_q_attempts", QtLabel::Kind::caption};
    QtLabel PANEL_Q_ATTEMPTS{"PANEL_Q_ATTEMPTS", QtLabel::Kind::value};
    QtLabel lab_fails{"lab_fails", QtLabel::Kind::caption};
    QtLabel PANEL_FAILS{"PANEL_FAILS", QtLabel::Kind::value};
    QtLabel lab_elapsed{"lab_elapsed", QtLabel::Kind::caption};
    QtLabel PANEL_ELAPSED{"PANEL_ELAPSED", QtLabel::Kind::value};

    QtFrame frame_stats;
    std::array<QtLevelPanel, level_panels> panel_level{QtLevelPanel{"panel_level_0"}, QtLevelPanel{"panel_level_1"},
                                                       QtLevelPanel{"panel_level_2"}, QtLevelPanel{"panel_level_3"},
                                                       QtLevelPanel{"panel_level_4"}, QtLevelPanel{"panel_level_5"}};
    QtLabel lab_total{"lab_total", QtLabel::Kind::caption};
    QtLabel panel_total{"panel_total", QtLabel::Kind::value};
    QtLabel lab_nr_unpassed{"lab_nr_unpassed", QtLabel::Kind::caption};
    QtLabel panel_nr_unpassed{"panel_nr_unpassed", QtLabel::Kind::value};
    QtLabel lab_score{"lab_score", QtLabel::Kind::caption};
    QtLabel Panel_score{"Panel_score", QtLabel::Kind::value};
    QtLabel lab_open_time{"lab_open_time", QtLabel::Kind::caption};
    QtLabel panel_open_time{"panel_open_time", QtLabel::Kind::value};
    QtLabel lab_time_today{"lab_time_today", QtLabel::Kind::caption};
    QtLabel panel_time_today{"panel_time_today", QtLabel::Kind::value};
    QtLabel lab_time_ever{"lab_time_ever", QtLabel::Kind::caption};
    QtLabel panel_time_ever{"panel_time_ever", QtLabel::Kind::value};
    QtLabel lab_time_now{"lab_time_now", QtLabel::Kind::caption};
    QtLabel Panel_time_now{"Panel_time_now", QtLabel::Kind::value};

    QtFrame panel_lista;
    QtHintBox t_hint;
    QtListBox listav;

    QtLabel panel_dialog{"panel_dialog", QtLabel::Kind::prompt, QtLabel::Announced::yes};
    QtFrame dialog_strip;
    QtButton bot_yes;
    QtButton bot_no;
    QtButton bot_other;

    QtFocusHolder bot_focus{"bot_focus"};

    QtLabel P_status{"P_status", QtLabel::Kind::value, QtLabel::Announced::yes};

    QtTimer timer_250_ms;
    QtTimer timer_1_sec;
    QtTimer timer_1_min;

    QtSessionEnd session_end;

private:
    QtButton toolbar_button(const char* name);
};

/// Puts the controls into their places in the window.
void lay_out(QtForm1Controls& controls);

} // namespace cuedrill::platform::qt
