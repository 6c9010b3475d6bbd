#pragma once

#include "keep/copies.h"
#include "platform/icu/icu_text_compare.h"
#include "platform/sqlite/sqlite_database.h"
#include "platform/system/system_directories.h"
#include "platform/system/system_files.h"
#include "tools/verb.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace cuedrill::tools {

/// A course that is looked at without a change.
class CourseReading {
public:
    /// @throws platform::DatabaseError when it cannot be read as a course at all.
    explicit CourseReading(const std::string& path);

    [[nodiscard]] platform::sqlite::SqliteDatabase& database() { return database_; }

    /// All that is wrong with it, in sentences; empty for a sound course.
    [[nodiscard]] std::vector<std::string> findings();
    /// The number of records; std::nullopt if they cannot be counted.
    [[nodiscard]] std::optional<std::int64_t> records();

private:
    platform::icu::IcuTextCompare text_compare_;
    platform::sqlite::SqliteDatabase database_{text_compare_};
};

/// What a look at a file has brought.
struct Look {
    std::vector<std::string> findings; ///< empty for a sound course
    std::optional<std::int64_t> records;

    [[nodiscard]] bool sound() const { return findings.empty(); }
};

/// Looks at a file, which need not be a course.
[[nodiscard]] Look look_at(const std::string& path);

/// The copies that a verb works with.
class CopiesOfUser {
public:
    /// @throws Refusal for a user without a data folder.
    explicit CopiesOfUser(const Surroundings& around);

    /// @throws common::Error when there are none.
    [[nodiscard]] std::vector<keep::Copy> of(const std::string& course) const;

private:
    platform::system::SystemFiles files_;
    platform::system::SystemDirectories folders_;
    keep::Copies copies_;
};

/// `path` made absolute against the working folder.
[[nodiscard]] std::string absolute(const std::string& path);

} // namespace cuedrill::tools
