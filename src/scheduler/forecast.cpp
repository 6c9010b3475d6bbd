#include "scheduler/forecast.h"

#include "common/number_format.h"
#include "store/course.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <tuple>
#include <variant>
#include <vector>

namespace cuedrill::scheduler {
namespace {

/// The first second in which a question is mature: the dead times must have passed.
common::DateTime mature_at(common::DateTime tested, std::optional<common::DateTime> shown, double rest,
                           double rest_without_verdict)
{
    common::DateTime passed = tested.plus_days(rest);
    if (shown)
        passed = std::max(passed, shown->plus_days(rest_without_verdict));
    return common::DateTime::from_seconds(passed.seconds() + 1);
}

void add(Forecast& forecast, common::DateTime at, common::DateTime now)
{
    const std::int64_t day = at.day() - now.day();
    if (day < 0)
        ++forecast.overdue;
    else if (day == 0)
        ++(at <= now ? forecast.today : forecast.later);
    else if (day <= static_cast<std::int64_t>(forecast.days.size()))
        ++forecast.days[static_cast<std::size_t>(day - 1)];
    else
        ++forecast.afterwards;
}

constexpr std::size_t later_today_part = 1;
constexpr std::size_t first_day_part = 2;
constexpr std::size_t dated_parts = first_day_part + std::tuple_size_v<decltype(DueSoon::days)>;
constexpr std::size_t new_part = dated_parts;

/// The last second of each part: now, the end of today, and of each day.
std::vector<common::DateTime> ends_of_parts(common::DateTime now)
{
    std::vector<common::DateTime> ends{now};
    for (std::int64_t day = 0; ends.size() < dated_parts; ++day)
        ends.push_back(now.end_of_day(day));
    return ends;
}

/// Adds the spans of one group to a list of values: for each part its number, the level, and the dates of the last test
/// that it begins and ends with. A null date stands for the questions that were never tested.
void add_spans(std::string& values, const std::string& level, double rest, const std::vector<common::DateTime>& ends)
{
    std::string low = "-9e999"; // before all dates
    for (std::size_t part = 0; part < ends.size(); ++part) {
        // What is mature at a second was tested at least one second before its rest began. Half a second less, because
        // stored dates have rounding errors.
        const double last = static_cast<double>(ends[part].seconds()) - 0.5;
        const std::string high = common::format_general(last / common::seconds_per_day - rest);
        values += (values.empty() ? "(" : ", (") + std::to_string(part) + ", " + level + ", " + low + ", " + high + ")";
        low = high;
    }
    values += ", (" + std::to_string(new_part) + ", " + level + ", null, null)";
}

/// Selects the number of a part and how many questions are in it, one row for each part of each group.
std::string due_soon_query(const store::SideFields& asked, const DeadTimes& dead_times, common::Int16 target_level,
                           common::DateTime now)
{
    const std::vector<common::DateTime> ends = ends_of_parts(now);
    std::string spans;
    add_spans(spans, "null", dead_times.dead_time(0), ends);
    for (int level = 0; level < target_level; ++level)
        add_spans(spans, std::to_string(level), dead_times.dead_time(level), ends);
    const std::string of_level = "(Select count(*) from qa where " + asked.successes + " is of_level and ";
    return "With span(part, of_level, low, high) as (values " + spans + ") Select part, case when high is null then " +
           of_level + asked.date_last_test + " is null) else " + of_level + asked.date_last_test + " >= low and " +
           asked.date_last_test + " < high) end from span";
}

} // namespace

Forecast forecast(platform::Database& database, const store::SideFields& side, const DeadTimes& dead_times,
                  common::Int16 target_level, common::DateTime now, int days)
{
    Forecast forecast;
    forecast.days.resize(static_cast<std::size_t>(days));
    database.query("Select " + side.successes + ", " + side.date_last_test + ", " + side.date_last_show + " from qa",
                   {}, [&](const platform::Row& row) {
                       const double level = store::nz(row.field(0));
                       const std::optional<common::DateTime> tested = store::stored_date(row.field(1));
                       if (level >= target_level)
                           ++forecast.passed;
                       else if (!tested)
                           ++forecast.never_tested;
                       else if (level >= 0) // a course made elsewhere may have others, which are never asked
                           add(forecast,
                               mature_at(*tested, store::stored_date(row.field(2)),
                                         dead_times.dead_time(static_cast<int>(level)),
                                         dead_times.unanswered_dead_time()),
                               now);
                       return true;
                   });
    return forecast;
}

DueSoon due_soon(store::Course& course, const DeadTimes& dead_times, common::DateTime now)
{
    std::array<std::int64_t, new_part + 1> counted{};
    const platform::Rows rows =
        course.database().query(due_soon_query(course.Q_FIELD, dead_times, course.params.target_level, now));
    for (const platform::Row row : rows)
        counted.at(static_cast<std::size_t>(std::get<std::int64_t>(row.field(0)))) +=
            std::get<std::int64_t>(row.field(1));
    DueSoon due{.now = counted.front(), .later_today = counted[later_today_part], .never_tested = counted[new_part]};
    std::copy_n(counted.begin() + first_day_part, due.days.size(), due.days.begin());
    return due;
}

} // namespace cuedrill::scheduler
