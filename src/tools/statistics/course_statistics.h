#pragma once

#include "keep/history_figures.h"
#include "keep/history_file.h"
#include "keep/history_forecast.h"
#include "scheduler/counts.h"
#include "scheduler/forecast.h"
#include "store/records.h"
#include "tools/opened_course.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace cuedrill::tools {

/// How many days a forecast looks ahead.
inline constexpr int forecast_days = 60;

/// A question that was failed.
struct HardQuestion {
    std::int64_t cnt = 0;
    bool inverted = false; ///< its answer side is asked
    std::string asked{};
    std::string answer{};
    std::int64_t attempts = 0;
    std::int64_t fails = 0;
    std::int64_t level = 0;
};

/// What the history of a course tells.
struct HistoryStatistics {
    keep::KnownByLevel known;
    std::vector<keep::WorkOfDay> work;
    std::vector<keep::LevelsOfDay> levels;
    std::vector<keep::ForecastOfDay> forecast;
    std::int64_t unreadable = 0; ///< lines that were skipped
};

/// What a course and its history tell about how it is learnt.
struct CourseStatistics {
    std::string title;
    std::string path;
    common::DateTime now;
    std::int64_t records = 0;
    common::Int16 target_level = 0;
    scheduler::LevelsOfBoth levels;
    scheduler::Forecast questions; ///< for `forecast_days` days
    scheduler::Forecast inverted;
    std::vector<HardQuestion> hardest;        ///< at most twenty, those failed most often first
    std::optional<HistoryStatistics> history; ///< nothing where there is none
};

/// Where the history cannot be read, a message says so.
/// @throws platform::DatabaseError
[[nodiscard]] CourseStatistics statistics_of(OpenedCourse& opened, const Surroundings& around);

} // namespace cuedrill::tools
