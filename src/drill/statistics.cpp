#include "drill/statistics.h"

#include "scheduler/counts.h"
#include "store/course_transaction.h"

namespace cuedrill::drill {
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
    const scheduler::Counts counts = scheduler::count(m_course);
    for (int level = 0; level <= scheduler::last_counted_level; ++level)
        m_panels.show_level(level, counts.level.at(static_cast<std::size_t>(level)), m_course.record_count,
                            level == m_course.params.target_level);
    m_unpassed = counts.unpassed;
    m_panels.show_unpassed(m_unpassed);
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

void refresh_counts_or_withdraw(Statistics& statistics, QuestionDisplay& display)
{
    try {
        statistics.refresh_counts();
    } catch (...) {
        display.withdraw_question();
        throw;
    }
}

} // namespace cuedrill::drill
