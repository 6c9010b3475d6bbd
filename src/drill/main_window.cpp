#include "drill/main_window.h"

namespace cuedrill::drill {

void MainWindow::attach()
{
    form1_.window.on_close = [this] { close(); };
    form1_.window.on_session_end = [this] { end_of_program_.end_program(); };
}

/// Asks whether to save unsaved texts before the program ends.
void MainWindow::close()
{
    if (editor_.ask_to_save())
        end_of_program_.end_program();
}

void MainWindow::load()
{
    {
        const platform::BusyPointer busy(desktop_);
        forget_display();
        display_.ApplyTextFont();
        options_.show_course();
        statistics_.show_course();
        timers_.timer_1_sec_tick();
        title_.set_window_title();
        // The dialog's refresh lets windows paint. The window is shown only after it, so it is painted once.
        dialog_.RefreshDialog();
        form1_.window.show();
        form1_.bot_yes.set_focus();
        timers_.start();
    }
    statistics_.announce_passed(statistics_.passed_on_showing());
}

void MainWindow::unload()
{
    timers_.stop();
    forget_display();
    form1_.window.hide();
}

void MainWindow::forget_display()
{
    dialog_.forget();
    editor_.forget();
    last_list_.forget_list();
    display_.leave_list();
    display_.forget();
    status_.ShowStatus("", 0);
}

} // namespace cuedrill::drill
