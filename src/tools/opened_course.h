#pragma once

#include "platform/icu/icu_text_compare.h"
#include "platform/sqlite/sqlite_database.h"
#include "platform/system/system_clock.h"
#include "platform/system/system_directories.h"
#include "platform/system/system_files.h"
#include "platform/system/system_open_courses.h"
#include "scheduler/dead_time.h"
#include "store/course.h"
#include "store/course_params.h"
#include "store/records.h"
#include "tools/verb.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace cuedrill::tools {

/// A sound course that a verb works on, with its parameters read. "Question" is the side that a course asks which is
/// not inverted, whatever this one asks at present.
class OpenedCourse {
public:
    enum class For {
        reading, ///< a window may have it open
        writing  ///< nobody else may have it open
    };

    /// @param lasting_path the path that a file under a temporary name will have: a course without a title is called
    /// after its file. Empty for any other course.
    /// @throws Refusal that says why when it cannot be opened, or for writing when a window has it open.
    OpenedCourse(const std::string& path, For purpose, const Surroundings& around,
                 const std::string& lasting_path = {});

    [[nodiscard]] store::Course& course() { return course_; }
    [[nodiscard]] store::CourseParamsStore& params() { return params_; }
    [[nodiscard]] const platform::TextCompare& text_compare() const { return text_compare_; }
    [[nodiscard]] const scheduler::DeadTimes& dead_times() const { return dead_times_; }
    [[nodiscard]] platform::system::SystemFiles& files() { return files_; }
    [[nodiscard]] platform::system::SystemClock& clock() { return clock_; }
    /// Whether a window asks its answers at present.
    [[nodiscard]] bool inverted() const { return inverted_; }
    /// When it was opened.
    [[nodiscard]] common::DateTime now() const { return now_; }

    /// Makes a copy of it, before a change that cannot be undone, unless it is empty or the newest copy holds it as it
    /// is. Where none can be made, a message says so and the work goes on.
    void copy_first();

    /// Keeps texts that are going to be replaced in "removed.txt"; where that fails, a message says so.
    void keep_replaced(const store::QaTexts& texts);

private:
    void write_history();

    const Surroundings& around_;
    platform::icu::IcuTextCompare text_compare_;
    platform::system::SystemClock clock_;
    platform::system::SystemFiles files_;
    platform::system::SystemDirectories folders_;
    platform::system::SystemOpenCourses open_courses_;
    platform::sqlite::SqliteDatabase database_{text_compare_};
    store::Course course_{database_};
    store::CourseParamsStore params_{course_, clock_};
    scheduler::DeadTimes dead_times_;
    common::DateTime now_;
    bool inverted_ = false;
};

/// The number in a word of the command line.
/// @param what names it in the message.
/// @throws UsageError unless it is a whole number from `lowest` to `highest`.
[[nodiscard]] std::int64_t number_in(const std::string& word, std::string_view what, std::int64_t lowest,
                                     std::int64_t highest);

} // namespace cuedrill::tools
