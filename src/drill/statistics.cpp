#include "drill/statistics.h"

#include "scheduler/counts.h"
#include "store/course_transaction.h"

namespace cuedrill::drill {

Statistics::Statistics(store::Course& course, store::CourseParamsStore& params, MainScreen& screen,
                       platform::Clock& clock, platform::Desktop& desktop, common::DateTime start_time)
    : course_(course), params_(params), screen_(screen), clock_(clock), desktop_(desktop), start_time_(start_time)
{
}

void Statistics::show_course()
{
    screen_.told.course.marked_level.reset();
    screen_.told.course.due.reset();
    refresh_counts();
}

void Statistics::refresh_counts()
{
    const platform::BusyPointer busy(desktop_);
    store::settle(course_);
    screen_.told.course.records = course_.record_count;
    show_score();
    refresh_work_time();
    screen_.told.course.counts = scheduler::count(course_);
    screen_.repaint();
    if (when_counted)
        when_counted();
}

void Statistics::show_verdict(int level)
{
    screen_.told.course.marked_level = level;
    show_score();
}

void Statistics::show_score()
{
    screen_.told.course.score = course_.params.score_today;
    screen_.repaint();
}

void Statistics::refresh_work_time()
{
    const common::DateTime now = clock_.now();
    CourseFigures& figures = screen_.told.course;
    figures.open_time = common::format_hours_minutes(static_cast<double>(common::seconds_between(start_time_, now)));
    figures.time_today = common::format_hours_minutes(params_.time_today(now));
    figures.time_ever = common::format_hours_minutes(params_.time_ever(now));
    screen_.repaint();
}

void Statistics::announce_passed(const std::string& text)
{
    if (unpassed() != 0 || course_.all_passed_announced)
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

void refresh_counts_or_withdraw(Statistics& statistics, Display& display)
{
    Display::Change change(display);
    statistics.refresh_counts();
    change.keep();
}

} // namespace cuedrill::drill
