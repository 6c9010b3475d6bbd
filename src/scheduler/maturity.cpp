#include "scheduler/maturity.h"

#include <vector>

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

// Each combination of "this level or null" and "tested before or null" is a SELECT of its own: one range of the side's
// index, already in the required order. With OR the engine would scan the whole level, or sort. It merges the ranges
// while rows are fetched, so the first row costs one index look-up per range. Only columns of the index are selected,
// so the table is not read.
std::string mature_query(const store::SideFields& asked, const DeadTimes& dead_times, int level, bool tested_only,
                         common::DateTime now)
{
    std::vector<std::string> levels{"=" + std::to_string(level)};
    if (level == 0 && !tested_only)
        levels.emplace_back(" is null");
    std::vector<std::string> tests{" < " + literal_before(now, dead_times.dead_time(level))};
    if (!tested_only)
        tests.emplace_back(" is null");
    std::string sql;
    for (const std::string& of_level : levels) {
        for (const std::string& tested : tests) {
            sql += sql.empty() ? "" : " union all ";
            sql += "Select cnt, " + asked.successes + ", " + asked.date_last_test + " from qa where (" +
                   asked.successes + of_level + ") and (" + asked.date_last_test + tested + ")" +
                   not_just_shown(asked, dead_times, now);
        }
    }
    return sql + " order by " + asked.successes + " desc, " + asked.date_last_test + " asc, cnt asc";
}

// One SELECT per level again: with OR the engine would remember every row, in order to return none twice.
std::string all_mature_query(const store::SideFields& asked, const DeadTimes& dead_times, common::Int16 target_level,
                             MatureResult result, common::DateTime now)
{
    const bool counted = result == MatureResult::count;
    std::string sql = counted ? "Select " : "";
    for (int level = target_level - 1; level >= 0; --level) {
        if (level < target_level - 1)
            sql += counted ? " + " : " union all ";
        sql += std::string(counted ? "(Select count(0)" : "Select *") + " from qa where (" + asked.successes + " = " +
               std::to_string(level) + " and " + asked.date_last_test + " < " +
               literal_before(now, dead_times.dead_time(level)) + ")" + not_just_shown(asked, dead_times, now) +
               (counted ? ")" : "");
    }
    if (!counted)
        sql += " order by " + asked.successes + " desc," + asked.date_last_test + " asc";
    return sql;
}

} // namespace cuedrill::scheduler
