#pragma once

#include "app/base/trace_log.h"
#include "drill/drill_state.h"
#include "drill/kept_texts.h"
#include "drill/record_editor.h"
#include "drill/review_history.h"
#include "drill/screen.h"
#include "drill/statistics.h"
#include "drill/status_line.h"
#include "platform/clock.h"
#include "platform/form1.h"
#include "store/course_params.h"

#include <string>

namespace cuedrill::drill {

/// The timers that run while a course is open: the clock, the work time, the expiry of the status line, and the draft
/// of what is being typed.
class Timers {
public:
    Timers(platform::Form1& form1, store::CourseParamsStore& params, Statistics& statistics, MainScreen& screen,
           StatusLine& status, RecordEditor& editor, KeptTexts& kept, ReviewHistory& history, const DrillState& state,
           platform::Clock& clock, app::TraceLog& trace)
        : form1_(form1), params_(params), statistics_(statistics), screen_(screen), status_(status), editor_(editor),
          kept_(kept), history_(history), state_(state), clock_(clock), trace_(trace)
    {
    }

    void attach();
    void start();
    void stop();

    /// Shows and stores the work time. Runs every minute, so that a crash loses at most one minute of it.
    void timer_1_min_tick();
    /// Shows the time of day.
    void timer_1_sec_tick();
    /// Clears an old text of the status line, writes the draft, and tells what could not be kept or written.
    void timer_250_ms_tick();

private:
    void tell_about_work_time(const std::string& text);

    platform::Form1& form1_;
    store::CourseParamsStore& params_;
    Statistics& statistics_;
    MainScreen& screen_;
    StatusLine& status_;
    RecordEditor& editor_;
    KeptTexts& kept_;
    ReviewHistory& history_;
    const DrillState& state_;
    platform::Clock& clock_;
    app::TraceLog& trace_;
};

} // namespace cuedrill::drill
