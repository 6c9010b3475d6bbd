#include "drill/timers.h"

#include "common/errors.h"
#include "store/course_transaction.h"

#include <chrono>

namespace cuedrill::drill {
namespace {

using namespace std::chrono_literals;

} // namespace

void Timers::attach()
{
    form1_.timer_1_min.on_tick = [this] { timer_1_min_tick(); };
    form1_.timer_1_sec.on_tick = [this] { timer_1_sec_tick(); };
    form1_.timer_250_ms.on_tick = [this] { timer_250_ms_tick(); };
}

void Timers::start()
{
    form1_.timer_1_min.start(1min);
    form1_.timer_1_sec.start(1s);
    form1_.timer_250_ms.start(250ms);
}

void Timers::stop()
{
    for (platform::Timer* timer : {&form1_.timer_1_min, &form1_.timer_1_sec, &form1_.timer_250_ms})
        timer->stop();
}

void Timers::timer_1_sec_tick()
{
    screen_.told.course.time_now = common::format_clock(clock_.now());
    screen_.repaint();
}

void Timers::timer_250_ms_tick()
{
    editor_.write_draft();
    kept_.tell_failures();
    history_.tell_failures();
    status_.expire();
}

void Timers::timer_1_min_tick()
{
    statistics_.refresh_work_time();
    try {
        params_.save_work_time(clock_.now());
    } catch (const store::OutcomeUnknown& error) {
        tell_about_work_time("It is not known whether the work time is stored.");
        trace_.write_trace(std::string("timer_1_min - not known whether the work time is stored - ") + error.what());
    } catch (const common::Error& error) {
        tell_about_work_time(std::string("The work time could not be stored. ") + error.what());
        trace_.write_trace(std::string("timer_1_min - work time not stored - ") + error.what());
    }
}

/// Uses the status line, not a box: this runs without the user asking, and is retried in a minute. A request for a
/// verdict in the status line stays.
void Timers::tell_about_work_time(const std::string& text)
{
    if (!state_.verdict_requested())
        status_.ShowStatus(text, status_seconds);
}

} // namespace cuedrill::drill
