#include "platform/qt/qt_form1.h"

#include "common/errors.h"
#include "platform/qt/qt_form1_controls.h"
#include "platform/qt/qt_text.h"

#include <QPixmap>
#include <chrono>

namespace cuedrill::platform::qt {

namespace {

Form1 interfaces_of(QtForm1Controls& c)
{
    return Form1{.window = c.window,
                 .menu_bar = c.menu_bar,
                 .screen = c.screen,
                 .pb = {&c.pb[0], &c.pb[1], &c.pb[2], &c.pb[3], &c.pb[4], &c.pb[5], &c.pb[6], &c.pb[7], &c.pb[8],
                        &c.pb[9], &c.pb[10]},
                 .Text_q = c.Text_q,
                 .Text_a = c.Text_a,
                 .frame_stats = c.frame_stats,
                 .panel_lista = c.panel_lista,
                 .t_hint = c.t_hint,
                 .listav = c.listav,
                 .dialog_strip = c.dialog_strip,
                 .bot_yes = c.bot_yes,
                 .bot_no = c.bot_no,
                 .bot_other = c.bot_other,
                 .bot_focus = c.bot_focus,
                 .timer_250_ms = c.timer_250_ms,
                 .timer_1_sec = c.timer_1_sec,
                 .timer_1_min = c.timer_1_min,
                 .timer_idle = c.timer_idle,
                 .timer_due = c.timer_due,
                 .timer_check = c.timer_check};
}

/// Until the timer of what is due ticks after a box is closed, at most; as long as one is open, it wakes the program
/// that often.
constexpr std::chrono::seconds longest_wait_of_due{1};

} // namespace

QtForm1Controls::QtForm1Controls(QtGuard& guard, QtWindowState state)
    : window("Form1", first_size, guard, state),
      menu_bar(*window.widget().menuBar(), window.gate(),
               [this](const QString& text) { window.announcer().tell(text); }),
      screen(window.widget(), [this](const QString& text) { window.announcer().tell(text); }),
      Text_q("Text_q", window.gate(), window.key_filter()), Text_a("Text_a", window.gate(), window.key_filter()),
      frame_stats("frame_stats", *new Card, guard), panel_lista("panel_lista", *new QWidget, guard),
      t_hint("t_hint", window.gate(), window.key_filter()), listav("listav", window.gate(), window.key_filter()),
      dialog_strip("dialog_strip", *new QWidget, guard), bot_yes("bot_yes", window.gate()),
      bot_no("bot_no", window.gate()), bot_other("bot_other", window.gate()), timer_250_ms(guard), timer_1_sec(guard),
      timer_1_min(guard), timer_idle(window.gate()), timer_due(window.gate(), longest_wait_of_due),
      timer_check(window.gate()), type_size(window.widget(), {Text_q, Text_a, t_hint.widget(), listav.widget()}, state),
      session_end(guard, [this] {
          type_size.keep();
          window.end_session();
      })
{
    t_hint.widget().word_reached = [this](const QString& word) { window.announcer().tell_now(word); };
    Text_q.centre_when_locked();
    Text_a.centre_when_locked();
    lay_out(*this);
}

QtButton QtForm1Controls::toolbar_button(const char* name)
{
    return {name, window.gate(), QtButton::Kind::toolbar};
}

QtForm1::QtForm1(QtGuard& guard, QtWindowState state)
    : controls_(std::make_unique<QtForm1Controls>(guard, state)), form1_(interfaces_of(*controls_))
{
}

QtForm1::~QtForm1() = default;

Form1& QtForm1::controls()
{
    return form1_;
}

QMainWindow& QtForm1::widget()
{
    return controls_->window.widget();
}

QtKeyFilter& QtForm1::key_filter()
{
    return controls_->window.key_filter();
}

void QtForm1::save_picture(const std::string& path)
{
    if (!controls_->window.widget().grab().save(to_qt(path)))
        throw common::Error(path + ": the picture cannot be written");
}

} // namespace cuedrill::platform::qt
