#pragma once

#include "drill/course_options.h"
#include "drill/statistics.h"
#include "platform/desktop.h"
#include "scheduler/dead_time.h"
#include "store/course.h"
#include "store/course_params.h"

namespace cuedrill::drill {

/// Commands about levels: the table of dead times and the target level.
class LevelCommands {
public:
    LevelCommands(store::Course& course, store::CourseParamsStore& params, const scheduler::DeadTimes& dead_times,
                  Statistics& statistics, CourseOptions& options, platform::Desktop& desktop)
        : course_(course), params_(params), dead_times_(dead_times), statistics_(statistics), options_(options),
          desktop_(desktop)
    {
    }

    /// Shows the table of dead times.
    void m_score_elapsed_table();

    /// Asks for a new target level until the input is valid or empty, and stores it.
    /// @throws platform::DatabaseError; the target is unchanged then.
    void m_change_target_level();

private:
    store::Course& course_;
    store::CourseParamsStore& params_;
    const scheduler::DeadTimes& dead_times_;
    Statistics& statistics_;
    CourseOptions& options_;
    platform::Desktop& desktop_;
};

} // namespace cuedrill::drill
