#pragma once

#include "app/base/trace_log.h"
#include "drill/screen.h"
#include "platform/clock.h"
#include "platform/controls.h"
#include "scheduler/dead_time.h"
#include "store/course.h"

namespace cuedrill::drill {

/// The picture of what is due. Its figures are counted while no action of the user is running, so that a verdict and
/// the next question never wait for them.
class DuePicture {
public:
    /// @param timer ticks while no action of the user is running.
    DuePicture(store::Course& course, const scheduler::DeadTimes& dead_times, MainScreen& screen,
               platform::Timer& timer, platform::Clock& clock, app::TraceLog& trace)
        : course_(course), dead_times_(dead_times), screen_(screen), timer_(timer), clock_(clock), trace_(trace)
    {
    }

    void attach();

    /// Has the figures counted soon, and then each minute as long as the course is open. Call it when levels or dates
    /// have changed.
    void ask();

private:
    void tick();
    void count();

    store::Course& course_;
    const scheduler::DeadTimes& dead_times_;
    MainScreen& screen_;
    platform::Timer& timer_;
    platform::Clock& clock_;
    app::TraceLog& trace_;
};

} // namespace cuedrill::drill
