#include "scheduler/counts.h"

namespace cuedrill::scheduler {
namespace {

std::int64_t count_level(store::Course& course, int level)
{
    const char* const comparison = level < last_counted_level ? " = " : " >= ";
    return store::single_number(course.database(), "Select count(0) from qa WHERE " + course.Q_FIELD.successes +
                                                       comparison + std::to_string(level));
}

} // namespace

Counts count(store::Course& course)
{
    Counts counts;
    for (int level = 0; level <= last_counted_level; ++level) {
        const std::int64_t questions = count_level(course, level);
        counts.level.at(static_cast<std::size_t>(level)) = questions;
        // With a target above 5 the last group counts passed questions as well; six groups cannot tell more.
        if (level < course.params.target_level)
            counts.unpassed += questions;
    }
    return counts;
}

} // namespace cuedrill::scheduler
