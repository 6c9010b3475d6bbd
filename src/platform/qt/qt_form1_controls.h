#pragma once

#include "platform/form1.h"
#include "platform/qt/qt_button.h"
#include "platform/qt/qt_card.h"
#include "platform/qt/qt_focus_holder.h"
#include "platform/qt/qt_frame.h"
#include "platform/qt/qt_hint_box.h"
#include "platform/qt/qt_list_box.h"
#include "platform/qt/qt_menu_bar.h"
#include "platform/qt/qt_screen.h"
#include "platform/qt/qt_session_end.h"
#include "platform/qt/qt_text_box.h"
#include "platform/qt/qt_timer.h"
#include "platform/qt/qt_type_size.h"
#include "platform/qt/qt_window.h"

namespace cuedrill::platform::qt {

/// The adapters of all controls of the main window. After `lay_out` the window owns the widgets.
struct QtForm1Controls {
    QtForm1Controls(QtGuard& guard, QtWindowState state);

    QtWindow window;
    QtMenuBar menu_bar;
    QtScreen screen;

    std::array<QtButton, toolbar_buttons> pb{toolbar_button("pb_1"),  toolbar_button("pb_2"), toolbar_button("pb_3"),
                                             toolbar_button("pb_4"),  toolbar_button("pb_5"), toolbar_button("pb_6"),
                                             toolbar_button("pb_7"),  toolbar_button("pb_8"), toolbar_button("pb_9"),
                                             toolbar_button("pb_10"), toolbar_button("pb_11")};

    QtTextBox Text_q;
    QtTextBox Text_a;

    QtFrame frame_stats;

    QtFrame panel_lista;
    QtHintBox t_hint;
    QtListBox listav;

    QtFrame dialog_strip;
    QtButton bot_yes;
    QtButton bot_no;
    QtButton bot_other;

    QtFocusHolder bot_focus{"bot_focus"};

    QtTimer timer_250_ms;
    QtTimer timer_1_sec;
    QtTimer timer_1_min;
    QtTimer timer_idle;
    QtTimer timer_due;
    QtTimer timer_check;

    QtTypeSize type_size;

    QtSessionEnd session_end;

private:
    QtButton toolbar_button(const char* name);
};

/// Arranges the controls in the window.
void lay_out(QtForm1Controls& controls);

} // namespace cuedrill::platform::qt
