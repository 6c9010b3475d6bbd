#pragma once

#include "common/date_time.h"
#include "drill/display.h"
#include "drill/screen.h"
#include "platform/clock.h"
#include "platform/desktop.h"
#include "store/course.h"
#include "store/course_params.h"

#include <cstdint>
#include <string>

namespace cuedrill::drill {

/// The figures beside the drill: counted anew at each refresh.
class Statistics {
public:
    /// @param start_time when the program started: the open time runs from there.
    Statistics(store::Course& course, store::CourseParamsStore& params, MainScreen& screen, platform::Clock& clock,
               platform::Desktop& desktop, common::DateTime start_time);

    /// Shows the figures of a course that has just been opened: no level is marked.
    /// @throws platform::DatabaseError
    void show_course();

    /// Shows the total, the score, the work times, the number of questions of each level and of those not yet passed.
    /// @throws platform::DatabaseError
    void refresh_counts();

    /// Shows the score, and marks the level, 0 to 5, that the last verdict led to, and no other.
    void show_verdict(int level);

    /// Shows the score after it was set back.
    void show_score();

    /// Shows the open time and the work times of the day and of the course's life, the running time included.
    void refresh_work_time();

    /// The number of questions not yet passed, as it was last shown.
    [[nodiscard]] std::int64_t unpassed() const { return screen_.told.course.counts.unpassed; }

    /// Tells once for the target level that every question has passed it, when that is so.
    void announce_passed(const std::string& text);

    /// Text of the notice when the window is shown, and after a success.
    [[nodiscard]] std::string passed_on_showing() const;
    [[nodiscard]] std::string passed_after_success() const;

private:
    store::Course& course_;
    store::CourseParamsStore& params_;
    MainScreen& screen_;
    platform::Clock& clock_;
    platform::Desktop& desktop_;
    common::DateTime start_time_;
};

/// Counts anew after a change that is stored. When that fails no question is on display: what stands in the boxes must
/// not be given a verdict that belongs to another moment, or to another record.
/// @throws what `Statistics::refresh_counts` throws.
void refresh_counts_or_withdraw(Statistics& statistics, Display& display);

} // namespace cuedrill::drill
