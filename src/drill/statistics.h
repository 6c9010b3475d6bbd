#pragma once

#include "common/date_time.h"
#include "drill/display.h"
#include "drill/screen.h"
#include "platform/clock.h"
#include "platform/desktop.h"
#include "store/course.h"
#include "store/course_params.h"

#include <cstdint>
#include <functional>
#include <string>

namespace cuedrill::drill {

/// The figures beside the drill. Each refresh counts them anew.
class Statistics {
public:
    /// @param start_time when the program started; the open time counts from there.
    Statistics(store::Course& course, store::CourseParamsStore& params, MainScreen& screen, platform::Clock& clock,
               platform::Desktop& desktop, common::DateTime start_time);

    /// Called after each count of the levels.
    std::function<void()> when_counted;

    /// Shows the figures of a course that has just been opened. No level is marked.
    /// @throws platform::DatabaseError
    void show_course();

    /// Shows the total, the score, the work times, and the numbers of questions of each level and of questions not yet
    /// passed.
    /// @throws platform::DatabaseError
    void refresh_counts();

    /// Shows the score and marks only this level, 0 to 5, the result of the last verdict.
    void show_verdict(int level);

    /// Shows the score after it was reset.
    void show_score();

    /// Shows the open time and the work times of the day and of the course as a whole, including the current run.
    void refresh_work_time();

    /// The number of questions not yet passed, as last shown.
    [[nodiscard]] std::int64_t unpassed() const { return screen_.told.course.counts.unpassed; }

    /// If every question has passed the target level, says so once per target level.
    void announce_passed(const std::string& text);

    /// Text of that message when the window opens, and after a success.
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

/// Refreshes the counts after a stored change. If that fails, withdraws the question: the boxes may be out of date and
/// must not be judged.
/// @throws whatever `Statistics::refresh_counts` throws.
void refresh_counts_or_withdraw(Statistics& statistics, Display& display);

} // namespace cuedrill::drill
