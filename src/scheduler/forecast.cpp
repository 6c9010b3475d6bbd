#include "scheduler/forecast.h"

#include "store/course.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <optional>

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
    const auto day = static_cast<std::int64_t>(std::lround(common::days_between(now.date_only(), at.date_only())));
    if (day < 0)
        ++forecast.overdue;
    else if (day == 0)
        ++(at <= now ? forecast.today : forecast.later);
    else if (day <= static_cast<std::int64_t>(forecast.days.size()))
        ++forecast.days[static_cast<std::size_t>(day - 1)];
    else
        ++forecast.afterwards;
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

} // namespace cuedrill::scheduler
