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
        : m_course(course), m_params(params), m_clock(clock), m_trace(trace)
    {
    }

    /// Stores and closes the open course, and throws common::ProgramEnded.
    [[noreturn]] void end_program();

private:
    store::Course& m_course;
    store::CourseParamsStore& m_params;
    platform::Clock& m_clock;
    app::TraceLog& m_trace;
};

} // namespace cuedrill::drill
