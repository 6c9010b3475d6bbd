#pragma once

#include "common/date_time.h"
#include "common/int16.h"
#include "keep/history_line.h"
#include "scheduler/counts.h"
#include "scheduler/dead_time.h"

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace cuedrill::keep {

/// The verdicts on questions that had one level.
struct VerdictCount {
    std::int64_t verdicts = 0;
    std::int64_t known = 0; ///< among them

    /// From 0 to 1; nothing without a verdict.
    [[nodiscard]] std::optional<double> share() const;

    friend bool operator==(const VerdictCount&, const VerdictCount&) = default;
};

/// By the level before the verdict, 0 to 10.
using VerdictCounts = std::array<VerdictCount, scheduler::highest_level + 1>;

struct KnownByLevel {
    VerdictCounts q{}; ///< where `q` was asked
    VerdictCounts a{}; ///< where `a` was asked
};

/// Counts the verdicts of a history by level. One that was undone does not count, nor does one on a level that the
/// program never stores.
[[nodiscard]] KnownByLevel known_by_level(std::span<const HistoryEvent> events);

/// Work of a day.
struct WorkOfDay {
    common::DateTime day; ///< at 00:00:00
    common::Int16 score = 0;
    std::int64_t work_seconds = 0;

    friend bool operator==(const WorkOfDay&, const WorkOfDay&) = default;
};

/// How many days `work_by_day` looks at, `today` included.
inline constexpr int days_of_work = 365;

/// Score and work time of each of the last 365 days on which the course was open, oldest first, as the last line of the
/// day tells them.
[[nodiscard]] std::vector<WorkOfDay> work_by_day(std::span<const HistoryEvent> events, common::DateTime today);

/// Questions by level at the end of a day.
struct LevelsOfDay {
    common::DateTime day; ///< at 00:00:00
    scheduler::LevelsOfBoth levels;

    friend bool operator==(const LevelsOfDay&, const LevelsOfDay&) = default;
};

/// The levels of each day on which the course was opened or closed, oldest first: those of the day's last line that
/// tells them.
[[nodiscard]] std::vector<LevelsOfDay> levels_by_day(std::span<const HistoryEvent> events);

} // namespace cuedrill::keep
