#pragma once

#include "platform/clock.h"
#include "platform/database.h"
#include "store/course.h"

#include <functional>
#include <string>
#include <vector>

namespace cuedrill::store {

/// A row of `params`: its key, and one of its columns.
struct StoredParam {
    std::string key;
    std::string column;
    platform::Value value;
};

/// Writes the counters and the score of `counters` and the work time since opening, within the caller's transaction.
/// The caller updates memory once that is stored.
/// @throws platform::DatabaseError
void write_counters(Course& course, const CourseParams& counters, common::DateTime now);

/// Whether the course holds what `write_counters` has written with these values.
/// @throws platform::DatabaseError
[[nodiscard]] bool holds_counters(Course& course, const CourseParams& counters, common::DateTime now);

/// Reads and writes the table `params` of the open course; nothing else touches it.
class CourseParamsStore {
public:
    CourseParamsStore(Course& course, platform::Clock& clock) : course_(course), clock_(clock) {}

    /// Fills the parameters of the course from its file, with the defaults for what is missing. A target level outside
    /// its range becomes 5 and is stored at once. Where they are missing, the level (null is missing too) and the
    /// option to always type keep the values of the course that was open before.
    /// @throws platform::DatabaseError, common::OverflowError
    void read_params();

    /// Why `read_params` could not store the target level, for lack of room; empty where nothing is missing.
    [[nodiscard]] const std::string& unstored() const { return unstored_; }

    /// Stores the six settings of the course as they stand in memory.
    /// @throws platform::DatabaseError; nothing is stored then.
    void write_params();

    /// Stores the settings as `edit` leaves them, and only when that has succeeded makes them those of the course. In
    /// another direction the columns of the sides are exchanged and no verdict can be undone; a higher target level is
    /// announced again when all questions have passed it.
    /// @param edit gets the parameters of the course, after an earlier change of unknown outcome was settled. The
    /// counters do not matter.
    /// @throws platform::DatabaseError; nothing has changed then.
    /// @throws OutcomeUnknown if it is not known whether they are stored; `settle` finds out.
    void change_params(const std::function<void(CourseParams&)>& edit);

    /// Stores the font of questions and answers, and only when that has succeeded makes it that of the course.
    /// @param font empty for the standard font.
    /// @throws platform::DatabaseError; nothing has changed then.
    /// @throws OutcomeUnknown
    void change_font(const std::string& font);

    /// Stores the work counters as they are at `now`: what was read at opening and the work time since. Calling it
    /// again later stores the later state; nothing is counted twice.
    /// @throws platform::DatabaseError; nothing is stored then.
    void save_work_time(common::DateTime now);

    /// Work time of the day of `now`, the running time included, seconds.
    [[nodiscard]] double time_today(common::DateTime now) const;

    /// Work time over the life of the course, the running time included, seconds.
    [[nodiscard]] double time_ever(common::DateTime now) const;

private:
    void adopt(const CourseParams& settings);
    [[nodiscard]] std::vector<StoredParam> settings_of(const CourseParams& params) const;
    [[nodiscard]] std::string stored_title(const CourseParams& params) const;
    void read_target_level();
    void store_target_level();
    void read_counters(common::DateTime now);
    [[nodiscard]] std::string default_title() const;

    Course& course_;
    platform::Clock& clock_;
    std::string unstored_;
};

} // namespace cuedrill::store
