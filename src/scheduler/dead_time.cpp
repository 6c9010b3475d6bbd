#include "scheduler/dead_time.h"

#include "common/errors.h"

#include <string>

namespace cuedrill::scheduler {

void DeadTimes::init_dead_time_array()
{
    dead_time_array_ = {duration(0, 0, 0, 8),   duration(0, 0, 5, 0),  duration(0, 1, 0, 0),  duration(0, 12, 0, 0),
                        duration(2, 0, 0, 0),   duration(7, 0, 0, 0),  duration(20, 0, 0, 0), duration(60, 0, 0, 0),
                        duration(120, 0, 0, 0), duration(365, 0, 0, 0)};
    unanswered_dead_time_ = duration(0, 0, 0, 8);
}

double DeadTimes::dead_time(int level) const
{
    if (level < 0 || level >= count)
        throw common::OutOfRangeError("Subscript out of range: there is no dead time for level " +
                                      std::to_string(level) + ".");
    return dead_time_array_[static_cast<std::size_t>(level)];
}

int DeadTimes::proven_level(double elapsed) const
{
    int level = count;
    while (level > 0 && elapsed < dead_time(level - 1))
        --level;
    return level;
}

} // namespace cuedrill::scheduler
