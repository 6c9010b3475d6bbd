#pragma once

#include "common/date_time.h"
#include "common/int16.h"
#include "platform/database.h"
#include "scheduler/dead_time.h"
#include "store/course.h"
#include "store/side_fields.h"

#include <array>
#include <cstdint>
#include <vector>

namespace cuedrill::scheduler {

/// When the questions of a course can be asked, in one direction. Each question is counted once.
struct Forecast {
    std::int64_t overdue = 0; ///< mature since a day before today
    std::int64_t today = 0;   ///< mature since a moment of today
    std::int64_t later = 0;   ///< mature later today
    /// Mature on each of the days after today, in order: the first is tomorrow.
    std::vector<std::int64_t> days{};
    std::int64_t afterwards = 0; ///< mature after these days
    std::int64_t never_tested = 0;
    std::int64_t passed = 0; ///< has the target level; is not asked any more

    /// Those that were tested and can be asked now.
    [[nodiscard]] std::int64_t due_now() const { return overdue + today; }
};

/// Forecasts what can be asked if no more verdicts are given, by the rules of the selection: a question is mature when
/// its dead time has passed since its last test, and the dead time without a verdict since its last show. One that was
/// never tested counts as such, also when it was shown just now. Reads the aid index of the side once.
/// @param days how many days after today are told apart.
/// @throws platform::DatabaseError
[[nodiscard]] Forecast forecast(platform::Database& database, const store::SideFields& side,
                                const DeadTimes& dead_times, common::Int16 target_level, common::DateTime now,
                                int days);

/// What can be asked of a course now and in the next days.
struct DueSoon {
    std::int64_t now = 0;               ///< tested, and mature
    std::int64_t later_today = 0;       ///< mature later today
    std::array<std::int64_t, 6> days{}; ///< mature on each of the days after today; the first is tomorrow
    std::int64_t never_tested = 0;

    friend bool operator==(const DueSoon&, const DueSoon&) = default;
};

/// Counts what can be asked in the direction of the open course if no more verdicts are given, with one statement that
/// counts ranges of the aid index. A question that has just been shown without a verdict counts as mature, unlike in
/// `forecast`: the eight seconds that it waits are no time in this picture. One of a level below 0 counts in none.
/// @throws platform::DatabaseError
[[nodiscard]] DueSoon due_soon(store::Course& course, const DeadTimes& dead_times, common::DateTime now);

} // namespace cuedrill::scheduler
