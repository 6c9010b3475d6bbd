#pragma once

#include "drill/displays.h"
#include "drill/statistics.h"
#include "platform/desktop.h"
#include "scheduler/dead_time.h"
#include "store/course.h"
#include "store/course_params.h"

namespace cuedrill::drill {

/// The commands about levels: the table of dead times, and the target.
class LevelCommands {
public:
    LevelCommands(store::Course& course, store::CourseParamsStore& params, const scheduler::DeadTimes& dead_times,
                  Statistics& statistics, StatisticsPanels& panels, platform::Desktop& desktop)
        : m_course(course), m_params(params), m_dead_times(dead_times), m_statistics(statistics), m_panels(panels),
          m_desktop(desktop)
    {
    }

    /// Shows the table of dead times.
    void m_score_elapsed_table();

    /// Asks for a new target level, until it is valid or empty, and stores it.
    /// @throws platform::DatabaseError; the target is unchanged then.
    void m_change_target_level();

private:
    store::Course& m_course;
    store::CourseParamsStore& m_params;
    const scheduler::DeadTimes& m_dead_times;
    Statistics& m_statistics;
    StatisticsPanels& m_panels;
    platform::Desktop& m_desktop;
};

} // namespace cuedrill::drill
