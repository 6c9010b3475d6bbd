#include "drill/main_window.h"

#include "common/errors.h"
#include "store/course_transaction.h"

#include <chrono>
#include <string>

namespace cuedrill::drill {
namespace {

using namespace std::chrono_literals;

} // namespace

void MainWindow::attach()
{
    platform::Form1& form1 = parts_.form1;
    parts_.display.name_boxes();
    attach_dialog();
    attach_boxes();
    form1.window.on_close = [this] { close(); };
    form1.window.on_session_end = [this] { parts_.end_of_program.end_program(); };

    form1.timer_1_min.on_tick = [this] { timer_1_min_tick(); };
    form1.timer_1_sec.on_tick = [this] { timer_1_sec_tick(); };
    form1.timer_250_ms.on_tick = [this] { parts_.status.expire(); };
}

void MainWindow::attach_dialog()
{
    platform::Form1& form1 = parts_.form1;
    form1.bot_yes.on_click = [this] { parts_.dialog.OnYes(); };
    form1.bot_yes.on_mouse_down = [this](platform::MouseButton button) { parts_.dialog.OnYesMouseDown(button); };
    form1.bot_yes.on_mouse_up = [this](platform::MouseButton) { parts_.state.RightClickConsumed = false; };
    form1.bot_no.on_click = [this] { parts_.dialog.OnNo(); };
    form1.bot_other.on_click = [this] { parts_.dialog.OnOther(); };
    form1.dialog_strip.on_resize = [this] { parts_.layout.lay_out_buttons(); };
}

void MainWindow::attach_boxes()
{
    platform::Form1& form1 = parts_.form1;
    form1.Text_a.on_key = [this](const platform::KeyPress& press) { return parts_.typed_answer.OnAnswerKey(press); };
    form1.t_hint.on_click = [this] { parts_.typed_answer.OnHintClick(); };
    form1.t_hint.on_key = [this](const platform::KeyPress& press) { return parts_.typed_answer.OnHintKey(press); };
    form1.listav.on_click = [this](const std::string& line) { parts_.lists.listav_click(line); };
}

/// Asks whether to save unsaved texts before the program ends.
void MainWindow::close()
{
    if (parts_.editor.ask_to_save())
        parts_.end_of_program.end_program();
}

void MainWindow::load()
{
    {
        const platform::BusyPointer busy(parts_.desktop);
        forget_display();
        parts_.display.ApplyTextFont();
        parts_.options.show_course();
        parts_.statistics.show_course();
        timer_1_sec_tick();
        parts_.title.set_window_title();
        parts_.form1.window.show();
        parts_.dialog.RefreshDialog();
        parts_.form1.bot_yes.set_focus();
        parts_.form1.timer_1_min.start(1min);
        parts_.form1.timer_1_sec.start(1s);
        parts_.form1.timer_250_ms.start(250ms);
    }
    parts_.statistics.announce_passed(parts_.statistics.passed_on_showing());
}

void MainWindow::unload()
{
    for (platform::Timer* timer : {&parts_.form1.timer_1_min, &parts_.form1.timer_1_sec, &parts_.form1.timer_250_ms})
        timer->stop();
    forget_display();
    parts_.form1.window.hide();
}

void MainWindow::forget_display()
{
    parts_.state.dialog = DialogState::AskToStart;
    parts_.state.RightClickConsumed = false;
    parts_.edit_flags.clear();
    parts_.last_list.forget_list();
    parts_.state.list_built = false;
    parts_.display.leave_list();
    parts_.display.forget();
    parts_.status.ShowStatus("", 0);
}

void MainWindow::show_stored_record(common::Int16 cnt)
{
    refresh_counts_or_withdraw(parts_.statistics, parts_.display);
    parts_.display.show_record(cnt);
}

void MainWindow::timer_1_sec_tick()
{
    parts_.screen.told.course.time_now = common::format_clock(parts_.clock.now());
    parts_.screen.repaint();
}

void MainWindow::timer_1_min_tick()
{
    parts_.statistics.refresh_work_time();
    try {
        parts_.params.save_work_time(parts_.clock.now());
    } catch (const store::OutcomeUnknown& error) {
        tell_about_work_time("It is not known whether the work time is stored.");
        parts_.trace.write_trace(std::string("timer_1_min - not known whether the work time is stored - ") +
                                 error.what());
    } catch (const common::Error& error) {
        tell_about_work_time(std::string("The work time could not be stored. ") + error.what());
        parts_.trace.write_trace(std::string("timer_1_min - work time not stored - ") + error.what());
    }
}

/// Uses the status line, not a box: this runs without the user asking, and is retried in a minute. A request for a
/// verdict in the status line stays.
void MainWindow::tell_about_work_time(const std::string& text)
{
    if (!parts_.state.AwaitingVerdict)
        parts_.status.ShowStatus(text, status_seconds);
}

} // namespace cuedrill::drill
