#include "scheduler/next_due.h"

#include "common/number_format.h"

#include <algorithm>

namespace cuedrill::scheduler {
namespace {

constexpr std::int64_t minute_seconds = 60;
constexpr std::int64_t day_seconds = 86400;

/// The rows of `qa` that can become mature, each with the moment `due` that has to have passed, as a day number. What
/// is null never kept a question from being asked.
std::string due_rows(const store::SideFields& asked, const DeadTimes& dead_times, common::Int16 target_level)
{
    std::string sql = "(Select max(ifnull(" + asked.date_last_test + " + case ifnull(" + asked.successes + ", 0)";
    for (int level = 0; level < target_level; ++level)
        sql += " when " + std::to_string(level) + " then " + common::format_general(dead_times.dead_time(level));
    sql += " end, 0), ifnull(" + asked.date_last_show + " + " +
           common::format_general(dead_times.unanswered_dead_time()) + ", 0)) as due from qa where ifnull(" +
           asked.successes + ", 0) in (0";
    for (int level = 1; level < target_level; ++level)
        sql += ", " + std::to_string(level);
    return sql + "))";
}

common::DateTime end_of_day(common::DateTime instant)
{
    return common::DateTime::from_seconds(instant.date_only().seconds() + day_seconds - 1);
}

std::string clock_text(common::DateTime instant, bool with_seconds)
{
    const common::CalendarFields f = instant.fields();
    const std::string minutes = common::format_padded(f.hour, 2) + ":" + common::format_padded(f.minute, 2);
    return with_seconds ? minutes + ":" + common::format_padded(f.second, 2) : minutes;
}

/// "23/Nov/2026"
std::string date_text(common::DateTime instant)
{
    const std::string literal = common::format_date_literal(instant);
    return literal.substr(0, literal.find(' '));
}

/// "at 18:05", "on 23/Nov/2026 at 18:05"
std::string time_text(common::DateTime at, common::DateTime now)
{
    // The moment that has to have passed is the second before: what is tested at 18:00 and rests for 5 minutes is due
    // at 18:05.
    const std::int64_t minutes = (at.seconds() - 1 + minute_seconds - 1) / minute_seconds;
    const auto rounded = common::DateTime::from_seconds(minutes * minute_seconds);
    const bool today = at.date_only() == now.date_only();
    // The questions are counted to the end of the day of `at`, so the time must not be one of the day after.
    const bool with_seconds =
        (today && common::seconds_between(now, at) < minute_seconds) || rounded.date_only() != at.date_only();
    return (today ? "" : "on " + date_text(at) + " ") + "at " + clock_text(with_seconds ? at : rounded, with_seconds);
}

/// The first sentence.
std::string due_text(const NextDue& due, common::DateTime now)
{
    if (due.was_just_shown)
        return "The question just shown can be asked again now.";
    return "The next question is due " + (due.at <= now ? "now" : time_text(due.at, now)) + ".";
}

} // namespace

std::optional<NextDue> find_next_due(store::Course& course, const DeadTimes& dead_times, common::DateTime now)
{
    const std::string rows = due_rows(course.Q_FIELD, dead_times, course.params.target_level);
    NextDue due;
    {
        const auto first = course.database().open_recordset("Select min(due) from " + rows);
        const std::optional<common::DateTime> moment = store::stored_date(first->field(0));
        if (!moment)
            return std::nullopt;
        due.at = common::DateTime::from_seconds(moment->seconds() + 1);
    }
    // Half a second before: the sums of days and fractions differ in their last bits.
    const double end = (static_cast<double>(end_of_day(std::max(due.at, now)).seconds()) - 0.5) / day_seconds;
    due.by_end_of_day = store::single_number(course.database(), "Select count(0) from " + rows + " where due < " +
                                                                    common::format_general(end));
    return due;
}

std::string next_due_text(const NextDue& due, common::DateTime now)
{
    const bool today = due.at <= now || due.at.date_only() == now.date_only();
    return due_text(due, now) + " " + std::to_string(due.by_end_of_day) +
           (due.by_end_of_day == 1 ? " question is" : " questions are") + " due by the end of " +
           (today ? "the day." : "that day.");
}

} // namespace cuedrill::scheduler
