#pragma once

#include "common/date_time.h"
#include "common/errors.h"
#include "common/int16.h"
#include "platform/database.h"
#include "store/side_fields.h"
#include "store/stored_change.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace cuedrill::store {

inline constexpr common::Int16 lowest_target_level = 1;
inline constexpr common::Int16 highest_target_level = 10;

/// The parameters of a course in memory; they are stored in its table `params`.
struct CourseParams {
    std::string course_title;
    bool invert = false;      ///< the answer side is asked
    bool random_mode = false; ///< mature questions of a level are drawn at random
    bool list_mode = false;   ///< "Always show hints"
    bool always_type = false; ///< always type the answer
    common::Int16 target_level = 0;
    double time_ever = 0;       ///< work time over the life of the course, seconds, as it was read at opening
    double time_today = 0;      ///< work time of the day, seconds, as it was read at opening
    common::DateTime last_date; ///< when the work counters had last been stored, as it was read at opening
    common::Int16 score_today = 0;
    std::string font; ///< font of questions and answers; empty is the standard font
};

/// The verdict that can be undone.
struct LastVerdict {
    common::Int16 cnt = 0;
    common::Int16 old_level = 0; ///< before the verdict
    common::Int16 new_level = 0; ///< after it
};

/// How to find out the outcome of a transaction whose commit has failed.
struct Change {
    /// Reads the course and returns whether it holds what was written. If it throws, the outcome is still unknown.
    std::function<bool()> is_stored;
    /// Updates memory if the change turns out to be stored only later; not called if `commit` returned normally. Throws
    /// nothing; may be empty.
    std::function<void()> when_stored_after_all{};
};

/// A change whose outcome is not known yet.
struct UnsettledChange {
    Change change;
    platform::DatabaseError failure; ///< of the commit
};

/// The record to be judged, changed or deleted no longer exists.
class RecordGone : public common::Error {
public:
    RecordGone() : Error("The question is no longer in the course; another program has deleted it.") {}
};

/// The one course that is open, and the values that belong to it. Made once; lives as long as the program.
class Course {
public:
    explicit Course(platform::Database& database) : database_(database) {}

    std::string db_path;     ///< full path; empty for none
    std::string course_name; ///< file name without folder and extension

    CourseParams params;
    SideFields Q_FIELD; ///< columns of the asked side
    SideFields A_FIELD; ///< columns of the answer side

    /// Number of rows of `qa`. Counted in more than 16 bits, because a course made elsewhere may be larger.
    std::int64_t record_count = 0;

    /// The notice that all questions have passed the target level was shown for this target.
    bool all_passed_announced = false;

    /// The last verdict since the course was opened, while it can be undone.
    std::optional<LastVerdict> last_verdict;

    /// Forgets the last verdict if it was about this record, because the record was changed or deleted.
    void forget_last_verdict_on(common::Int16 cnt);

    /// Called behind each stored change of the records, also when one of unknown outcome turns out to be stored. No
    /// transaction is open then. It must neither throw nor show a box nor use the course's file.
    std::function<void(const StoredChange&)> when_stored;

    /// Calls `when_stored`, if somebody listens.
    void tell_stored(const StoredChange& change) const;

    /// Called when a change of unknown outcome has turned out to be stored and memory is updated, to show it. No
    /// transaction is open then. It may read the course and throw what that throws.
    std::function<void()> when_stored_after_all;

    /// For `settle` (see course_transaction.h).
    std::optional<UnsettledChange> unsettled;

    [[nodiscard]] platform::Database& database() { return database_; }

    [[nodiscard]] bool is_open() const { return open_; }

    /// Opens the file at `db_path` for reading and writing.
    /// @throws platform::DatabaseError; no file is open then.
    void apri_db();

    /// Counts the work time of the open course from `from` on. Requires that its parameters have been read.
    void start_counting(common::DateTime from);

    /// Whether work time is being counted. A course that is open but not yet read has no counters to store.
    [[nodiscard]] bool is_in_use() const { return in_use_; }

    /// Closes the file, if it is open.
    void close() noexcept;

    /// Sets the columns of both sides from `params.invert`.
    void set_side_fields();

    /// The number of rows of `qa`, counted now.
    /// @throws platform::DatabaseError
    [[nodiscard]] std::int64_t count_records();

    /// Work time from the start of counting to `now`, seconds; 0 when the clock was put back.
    [[nodiscard]] double elapsed_seconds(common::DateTime now) const;

private:
    platform::Database& database_;
    bool open_ = false;
    common::DateTime counted_from_;
    bool in_use_ = false;
};

/// The text that tells the user of `error`. It names the course's file if the error is about it.
std::string words_about(const common::Error& error, const Course& course);

/// The first value of the first row that the statement gives, as a whole number; null counts as 0.
/// @throws platform::DatabaseError
std::int64_t single_number(platform::Database& database, const std::string& sql);

/// A stored number; null counts as 0 (a record that was never tested has no counters yet).
/// @throws platform::DatabaseError (damaged) when a text is stored in its place.
double nz(const platform::Value& value);

/// A stored whole number in 16 bits; null counts as 0.
/// @param what names the value in the error text.
/// @throws platform::DatabaseError (damaged) for a text; common::OverflowError
common::Int16 nz_int16(const platform::Value& value, std::string_view what);

/// A stored date; std::nullopt if it is null.
/// @throws platform::DatabaseError (damaged) for a text
std::optional<common::DateTime> stored_date(const platform::Value& value);

/// A stored text; null counts as empty.
std::string stored_text(const platform::Value& value);
std::string stored_text(platform::Value&& value);

/// A stored answer as it is shown: without a line end at its end.
std::string shown_answer(std::string answer);

} // namespace cuedrill::store
