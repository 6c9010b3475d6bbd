#pragma once

#include "app/base/trace_log.h"
#include "platform/clock.h"
#include "store/course.h"
#include "store/course_params.h"

#include <functional>
#include <string>

namespace cuedrill::drill {

/// Ends the program from any place: stores the work time and closes the course. It shows no box; an error goes to the
/// trace.
class EndOfProgram {
public:
    EndOfProgram(store::Course& course, store::CourseParamsStore& params, platform::Clock& clock, app::TraceLog& trace)
        : course_(course), params_(params), clock_(clock), trace_(trace)
    {
    }

    /// Called first, while the course is open. Returns words for the trace, or nothing; must show no box.
    std::function<std::string()> before_end;

    /// Stores the work time, closes the open course and throws common::ProgramEnded.
    [[noreturn]] void end_program();

private:
    store::Course& course_;
    store::CourseParamsStore& params_;
    platform::Clock& clock_;
    app::TraceLog& trace_;
};

} // namespace cuedrill::drill
