#pragma once

#include "common/date_time.h"
#include "common/int16.h"
#include "keep/history_line.h"
#include "scheduler/dead_time.h"

#include <cstdint>
#include <span>
#include <vector>

namespace cuedrill::keep {

/// What was due on a day, and what was asked.
struct ForecastOfDay {
    common::DateTime day;      ///< at 00:00:00
    std::int64_t expected = 0; ///< questions that were due by the end of the day, as the verdicts before it tell
    std::int64_t asked = 0;    ///< those among them that got a verdict on the day

    friend bool operator==(const ForecastOfDay&, const ForecastOfDay&) = default;
};

/// Compares, day by day up to `today`, what was due with what was asked, in both directions together. Only questions
/// whose verdicts are in the history are known; those that have reached the target level are not due.
/// @param days how many days, `today` included.
/// @return one for each day, oldest first; days before the first line of the history are left out.
[[nodiscard]] std::vector<ForecastOfDay> forecast_by_day(std::span<const HistoryEvent> events,
                                                         const scheduler::DeadTimes& dead_times,
                                                         common::Int16 target_level, common::DateTime today, int days);

} // namespace cuedrill::keep
