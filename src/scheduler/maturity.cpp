#include "scheduler/maturity.h"

namespace cuedrill::scheduler {
namespace {

/// The literal of the instant `days` before `now`.
std::string literal_before(common::DateTime now, double days)
{
    return "cvdate('" + common::format_date_literal(now.plus_days(-days)) + "')";
}

std::string not_just_shown(const store::SideFields& asked, const DeadTimes& dead_times, common::DateTime now)
{
    return " and (" + asked.date_last_show + " < " + literal_before(now, dead_times.unanswered_dead_time()) + " or " +
           asked.date_last_show + " is null)";
}

} // namespace

std::string mature_query(const store::SideFields& asked, const DeadTimes& dead_times, int level, bool tested_only,
                         common::DateTime now)
{
    std::string sql = "Select * from qa where (" + asked.successes + "=" + std::to_string(level);
    if (level == 0 && !tested_only)
        sql += " or " + asked.successes + " is null";
    sql += ") and (" + asked.date_last_test + " < " + literal_before(now, dead_times.dead_time(level));
    sql += tested_only ? ")" : " or " + asked.date_last_test + " is null)";
    sql += not_just_shown(asked, dead_times, now);
    sql += " order by " + asked.successes + " desc, " + asked.date_last_test + " asc, cnt asc";
    return sql;
}

std::string all_mature_query(const store::SideFields& asked, const DeadTimes& dead_times, common::Int16 target_level,
                             MatureResult result, common::DateTime now)
{
    std::string sql = std::string("Select ") + (result == MatureResult::count ? "count(0)" : "*") + " from qa where (";
    for (int level = target_level - 1; level >= 0; --level) {
        sql += level == target_level - 1 ? "(" : " or (";
        sql += asked.successes + " = " + std::to_string(level) + " and " + asked.date_last_test + " < " +
               literal_before(now, dead_times.dead_time(level)) + ")";
    }
    sql += ")" + not_just_shown(asked, dead_times, now);
    if (result == MatureResult::rows)
        sql += " order by " + asked.successes + " desc," + asked.date_last_test + " asc";
    return sql;
}

} // namespace cuedrill::scheduler
