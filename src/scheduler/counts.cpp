#include "scheduler/counts.h"

#include "platform/database.h"
#include "store/side_fields.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <variant>

namespace cuedrill::scheduler {
namespace {

std::string count_of(const std::string& condition)
{
    return "(Select count(*) from qa" + (condition.empty() ? "" : " WHERE " + condition) + ")";
}

/// Counts all records, those without a level, and those of each level from 1 on. It is one statement, so that all
/// figures are of one moment.
///
/// Each count but the first is one range of the side's index, and the ranges do not overlap. To count all records the
/// engine adds up the entries page by page, without decoding them.
std::string count_query(const std::string& successes)
{
    std::string sql =
        "Select " + count_of("") + ", " + count_of(successes + " is null") + ", " + count_of(successes + " < 0") + ", ";
    for (int level = 1; level < last_counted_level; ++level)
        sql += count_of(successes + " = " + std::to_string(level)) + ", ";
    return sql + count_of(successes + " >= " + std::to_string(last_counted_level));
}

} // namespace

Counts count(store::Course& course)
{
    // Columns of the statement.
    constexpr int all = 0;
    constexpr int no_level = 1;
    constexpr int below_levels = 2; // in courses made elsewhere
    constexpr int before_level_1 = 2;

    const auto row = course.database().open_recordset(count_query(course.Q_FIELD.successes));
    const auto number = [&row](int column) { return std::get<std::int64_t>(row->field(column)); };
    Counts counts;
    // Level 0 is computed as the remainder: it is the largest level for a long time, and would cost most to count.
    std::int64_t rest = number(all) - number(no_level) - number(below_levels);
    for (int level = 1; level <= last_counted_level; ++level) {
        counts.level.at(static_cast<std::size_t>(level)) = number(before_level_1 + level);
        rest -= number(before_level_1 + level);
    }
    counts.level.at(0) = rest;
    for (int level = 0; level <= last_counted_level; ++level) {
        // With a target above 5 the last group includes passed questions, because it is not split by level.
        if (level < course.params.target_level)
            counts.unpassed += counts.level.at(static_cast<std::size_t>(level));
    }
    return counts;
}

LevelsOfBoth count_levels(store::Course& course)
{
    const auto counted_by = [](const store::SideFields& side) {
        return "Select '" + side.text + "', " + side.successes + ", count(*) from qa where " + side.successes +
               " between 0 and " + std::to_string(highest_level) + " group by " + side.successes;
    };
    const store::SideMapping sides = store::set_side_fields(false);
    const platform::Rows rows =
        course.database().query(counted_by(sides.Q_FIELD) + " union all " + counted_by(sides.A_FIELD));
    LevelsOfBoth levels;
    for (const platform::Row row : rows) {
        const bool of_q = std::get<std::string>(row.field(0)) == sides.Q_FIELD.text;
        const auto level = static_cast<std::size_t>(std::get<std::int64_t>(row.field(1)));
        (of_q ? levels.q : levels.a).at(level) = std::get<std::int64_t>(row.field(2));
    }
    return levels;
}

} // namespace cuedrill::scheduler
