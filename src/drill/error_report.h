#pragma once

#include "app/base/trace_log.h"
#include "platform/desktop.h"
#include "store/course.h"

#include <exception>

namespace cuedrill::drill {

/// Tells an error that no command expected: one box with the reason and the course, and a line in the trace. The
/// program goes on.
class ErrorReport {
public:
    ErrorReport(const store::Course& course, platform::Desktop& desktop, app::TraceLog& trace)
        : m_course(course), m_desktop(desktop), m_trace(trace)
    {
    }

    void report(const std::exception& error);

private:
    const store::Course& m_course;
    platform::Desktop& m_desktop;
    app::TraceLog& m_trace;
};

} // namespace cuedrill::drill
