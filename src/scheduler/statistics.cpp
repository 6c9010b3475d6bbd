#include "scheduler/statistics.h"

#include "store/course_transaction.h"

namespace cuedrill::scheduler {
namespace {

/// The last panel counts its level and all above it.
constexpr int last_panel = 5;

} // namespace

Statistics::Statistics(store::Course& course, store::CourseParamsStore& params, StatisticsPanels& panels,
                       platform::Clock& clock, platform::Desktop& desktop, common::DateTime start_time)
    : m_course(course), m_params(params), m_panels(panels), m_clock(clock), m_desktop(desktop), m_start_time(start_time)
{
}

void Statistics::refresh_counts()
{
    const platform::BusyPointer busy(m_desktop);
    store::settle(m_course);
    m_panels.show_score(m_course.params.score_today);
    m_panels.show_total(m_course.record_count);
    refresh_work_time();
    const common::Int16 target = m_course.params.target_level;
    m_unpassed = 0;
    for (int level = 0; level <= last_panel; ++level) {
        const std::int64_t count = count_level(level);
        m_panels.show_level(level, count, m_course.record_count, level == target);
        // With a target above 5 the last panel counts passed questions as well; six panels cannot tell more.
        if (level < target)
            m_unpassed += count;
    }
    m_panels.show_unpassed(m_unpassed);
}

std::int64_t Statistics::count_level(int level)
{
    const char* const comparison = level < last_panel ? " = " : " >= ";
    return store::single_number(m_course.database(), "Select count(0) from qa WHERE " + m_course.Q_FIELD.successes +
                                                         comparison + std::to_string(level));
}

void Statistics::refresh_work_time()
{
    const common::DateTime now = m_clock.now();
    const auto open_time = static_cast<double>(common::seconds_between(m_start_time, now));
    m_panels.show_work_time(common::format_hours_minutes(open_time),
                            common::format_hours_minutes(m_params.time_today(now)),
                            common::format_hours_minutes(m_params.time_ever(now)));
}

void Statistics::announce_passed(const std::string& text)
{
    if (m_unpassed != 0 || m_course.all_passed_announced)
        return;
    m_course.all_passed_announced = true;
    m_desktop.message_box({.text = text});
}

std::string Statistics::passed_on_showing() const
{
    return "You have passed level " + std::to_string(m_course.params.target_level) + " for all questions.";
}

std::string Statistics::passed_after_success() const
{
    return "Congratulations! " + passed_on_showing();
}

} // namespace cuedrill::scheduler
