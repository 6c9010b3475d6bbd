#pragma once

#include "app/base/trace_log.h"
#include "platform/clock.h"
#include "store/course.h"
#include "store/course_params.h"

namespace cuedrill::drill {

/// How the program ends, from wherever: the work counters are stored and the course is closed, without a word.
class EndOfProgram {
public:
    EndOfProgram(store::Course& course, store::CourseParamsStore& params, platform::Clock& clock, app::TraceLog& trace)
        : course_(course), params_(params), clock_(clock), trace_(trace)
    {
    }

    /// Stores and closes the open course, and throws common::ProgramEnded.
    [[noreturn]] void end_program();

private:
    store::Course& course_;
    store::CourseParamsStore& params_;
    platform::Clock& clock_;
    app::TraceLog& trace_;
};

} // namespace cuedrill::drill
