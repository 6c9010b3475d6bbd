#pragma once

#include "app/base/trace_log.h"
#include "drill/course_copies.h"
#include "platform/desktop.h"
#include "store/course.h"

#include <exception>

namespace cuedrill::drill {

/// Reports an error that no command handles: a box with the reason and the course, and a line in the trace. Of a
/// damaged course the box names the newest copy. The program goes on.
class ErrorReport {
public:
    ErrorReport(const store::Course& course, const CourseCopies& copies, platform::Desktop& desktop,
                app::TraceLog& trace)
        : course_(course), copies_(copies), desktop_(desktop), trace_(trace)
    {
    }

    void report(const std::exception& error);

private:
    const store::Course& course_;
    const CourseCopies& copies_;
    platform::Desktop& desktop_;
    app::TraceLog& trace_;
};

} // namespace cuedrill::drill
