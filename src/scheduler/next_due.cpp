#include "scheduler/next_due.h"

#include "common/number_format.h"

#include <algorithm>
#include <vector>

namespace cuedrill::scheduler {
namespace {

constexpr std::int64_t minute_seconds = 60;

/// Parts of the statements about one group of questions: those of one level, or those with a null level, which counts
/// as level 0.
struct Group {
    std::string rows;  ///< "from qa where …"
    std::string test;  ///< name of the date of the last test
    std::string due;   ///< moment that has to have passed since the last test, as a day number
    std::string shown; ///< the same since the last show
    double rest = 0;   ///< days of the dead time
};

std::vector<Group> groups_below(const store::SideFields& asked, const DeadTimes& dead_times, common::Int16 target_level)
{
    std::vector<Group> groups;
    const auto add = [&](const std::string& of_level, double rest) {
        groups.push_back(
            {.rows = " from qa where " + asked.successes + of_level,
             .test = asked.date_last_test,
             .due = asked.date_last_test + " + " + common::format_general(rest),
             .shown = asked.date_last_show + " + " + common::format_general(dead_times.unanswered_dead_time()),
             .rest = rest});
    };
    add(" is null", dead_times.dead_time(0));
    for (int level = 0; level < target_level; ++level)
        add(" = " + std::to_string(level), dead_times.dead_time(level));
    return groups;
}

/// Selects the candidates for the first due moment of a group. A null date never delays a question.
///
/// The side's index is read in the order of the last test, up to the first question that has not been shown since: it
/// is due after its dead time, and later entries are due no sooner. Earlier entries only wait for the time since their
/// last show.
std::string first_moments(const Group& group)
{
    const std::string not_shown_since = "(" + group.shown + " <= " + group.due + " or " + group.shown + " is null)";
    const std::string first = group.rows + " and " + group.test + " is not null and " + not_shown_since + " order by " +
                              group.test + " limit 1";
    const std::string beyond_all_dates = "9e999";
    return "Select min(ifnull(" + group.shown + ", 0)) as due" + group.rows + " and " + group.test +
           " is null union all Select (Select " + group.due + first + ") union all Select min(" + group.shown + ")" +
           group.rows + " and " + group.test + " < ifnull((Select " + group.test + first + "), " + beyond_all_dates +
           ")";
}

/// The statement that selects the first due moment of all groups as a day number, at least 0; null if there is none.
std::string first_moment_query(const std::vector<Group>& groups)
{
    std::string moments;
    for (const Group& group : groups)
        moments += (moments.empty() ? "" : " union all ") + first_moments(group);
    return "Select max(min(due), 0) from (" + moments + ")";
}

/// The statement that counts the questions that are due before the day number `end`.
std::string due_before_query(const std::vector<Group>& groups, double end)
{
    const std::string before_end = " < " + common::format_general(end);
    std::string sum;
    for (const Group& group : groups) {
        const std::string count = "(Select count(0)" + group.rows + " and ";
        const std::string shown = " and (" + group.shown + before_end + " or " + group.shown + " is null))";
        // The condition on the bare date lets the engine use the index. It is one second too wide, because a sum and a
        // difference round differently; the exact comparison follows.
        const std::string entered =
            group.test + " < " + common::format_general(end - group.rest + 1.0 / common::seconds_per_day) + " and ";
        sum += (sum.empty() ? "" : " + ") + count + group.test + " is null" + shown;
        sum.append(" + ").append(count).append(entered).append(group.due).append(before_end).append(shown);
    }
    return "Select " + sum;
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
    const std::vector<Group> groups = groups_below(course.Q_FIELD, dead_times, course.params.target_level);
    NextDue due;
    {
        const auto first = course.database().open_recordset(first_moment_query(groups));
        const std::optional<common::DateTime> moment = store::stored_date(first->field(0));
        if (!moment)
            return std::nullopt;
        due.at = common::DateTime::from_seconds(moment->seconds() + 1);
    }
    // Half a second earlier, because sums of days and fractions have rounding errors.
    const double end =
        (static_cast<double>(std::max(due.at, now).end_of_day().seconds()) - 0.5) / common::seconds_per_day;
    due.by_end_of_day = store::single_number(course.database(), due_before_query(groups, end));
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
