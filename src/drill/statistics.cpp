#include "drill/statistics.h"

#include "scheduler/counts.h"
#include "store/course_transaction.h"

namespace cuedrill::drill {
Statistics::Statistics(store::Course& course, store::CourseParamsStore& params, StatisticsPanels& panels,
                       platform::Clock& clock, platform::Desktop& desktop, common::DateTime start_time)
    : course_(course), params_(params), panels_(panels), clock_(clock), desktop_(desktop), start_time_(start_time)
{
}

void Statistics::refresh_counts()
{
    const platform::BusyPointer busy(desktop_);
    store::settle(course_);
    panels_.show_score(course_.params.score_today);
    panels_.show_total(course_.record_count);
    refresh_work_time();
    const scheduler::Counts counts = scheduler::count(course_);
    for (int level = 0; level <= scheduler::last_counted_level; ++level)
        panels_.show_level(level, counts.level.at(static_cast<std::size_t>(level)), course_.record_count,
                           level == course_.params.target_level);
    unpassed_ = counts.unpassed;
    panels_.show_unpassed(unpassed_);
}

void Statistics::refresh_work_time()
{
    const common::DateTime now = clock_.now();
    const auto open_time = static_cast<double>(common::seconds_between(start_time_, now));
    panels_.show_work_time(common::format_hours_minutes(open_time),
                           common::format_hours_minutes(params_.time_today(now)),
                           common::format_hours_minutes(params_.time_ever(now)));
}

void Statistics::announce_passed(const std::string& text)
{
    if (unpassed_ != 0 || course_.all_passed_announced)
        return;
    course_.all_passed_announced = true;
    desktop_.message_box({.text = text});
}

std::string Statistics::passed_on_showing() const
{
    return "You have passed level " + std::to_string(course_.params.target_level) + " for all questions.";
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
