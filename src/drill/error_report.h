#pragma once

#include "app/base/trace_log.h"
#include "platform/desktop.h"
#include "store/course.h"

#include <exception>

namespace cuedrill::drill {

/// Reports an error that no command handles: a box with the reason and the course, and a line in the trace. The program
/// goes on.
class ErrorReport {
public:
    ErrorReport(const store::Course& course, platform::Desktop& desktop, app::TraceLog& trace)
        : course_(course), desktop_(desktop), trace_(trace)
    {
    }

    void report(const std::exception& error);

private:
    const store::Course& course_;
    platform::Desktop& desktop_;
    app::TraceLog& trace_;
};

} // namespace cuedrill::drill
