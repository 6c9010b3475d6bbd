#include "scheduler/next_question.h"

#include "common/errors.h"
#include "scheduler/maturity.h"

#include <cmath>
#include <vector>

namespace cuedrill::scheduler {
namespace {

using common::Int16;

/// The most questions that are drawn from at random.
constexpr std::size_t most_candidates = 10000;

/// Column of the statement that selects the mature questions of a level.
constexpr int cnt_column = 0;

Int16 record_number(const platform::Value& cnt)
{
    return store::nz_int16(cnt, "record number");
}

Int16 draw(platform::Recordset& rows, platform::RandomSource& random)
{
    std::vector<platform::Value> candidates;
    for (; !rows.eof(); rows.move_next()) {
        if (candidates.size() == most_candidates)
            throw common::OutOfRangeError("Subscript out of range: more than 10000 mature questions of one level "
                                          "cannot be drawn from at random.");
        candidates.push_back(rows.field(cnt_column));
    }
    const double position = std::floor(random.uniform() * static_cast<double>(candidates.size()));
    // A number beyond 16 bits is an error only when it is the one that is drawn.
    return record_number(candidates.at(static_cast<std::size_t>(position)));
}

} // namespace

std::optional<Int16> next_question(store::Course& course, const DeadTimes& dead_times, Int16 not_this,
                                   common::DateTime now, platform::RandomSource& random)
{
    const auto other = [&](Int16 level, bool tested_only) {
        // The question that was just asked may be found; it is skipped, and may come again later.
        const auto found = select_mature(course, dead_times, level, tested_only, now, random);
        return found != not_this ? found : std::nullopt;
    };
    for (int level = course.params.target_level - 1; level >= 0; --level) {
        const auto level16 = static_cast<Int16>(level);
        // At level 0 those that were tested and failed come before those that were never tested.
        for (const bool tested_only : {true, false}) {
            if (tested_only && level != 0)
                continue;
            if (const auto found = other(level16, tested_only))
                return found;
        }
    }
    return std::nullopt;
}

std::optional<Int16> select_mature(store::Course& course, const DeadTimes& dead_times, Int16 level, bool tested_only,
                                   common::DateTime now, platform::RandomSource& random)
{
    const auto rows =
        course.database().open_recordset(mature_query(course.Q_FIELD, dead_times, level, tested_only, now));
    if (rows->bof() && rows->eof())
        return std::nullopt;
    return course.params.random_mode ? draw(*rows, random) : record_number(rows->field(cnt_column));
}

std::int64_t count_mature(store::Course& course, const DeadTimes& dead_times, common::DateTime now)
{
    return store::single_number(
        course.database(),
        all_mature_query(course.Q_FIELD, dead_times, course.params.target_level, MatureResult::count, now));
}

} // namespace cuedrill::scheduler
