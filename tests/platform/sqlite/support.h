#pragma once

#include "fakes/file_size_limit.h"
#include "platform/database.h"
#include "platform/sqlite/sqlite_database.h"
#include "platform/text_compare.h"

#include <chrono>
#include <cstddef>
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

struct sqlite3;

namespace cuedrill::platform::sqlite::test {

/// Folds ASCII letters; sorts by the bytes of the folded texts, ascending or descending.
class FoldingCompare : public TextCompare {
public:
    [[nodiscard]] bool equal(std::string_view a, std::string_view b) const override { return compare(a, b) == 0; }
    [[nodiscard]] int compare(std::string_view a, std::string_view b) const override;
    [[nodiscard]] std::string fold(std::string_view text) const override;
    [[nodiscard]] std::string lower(std::string_view text) const override;
    [[nodiscard]] std::string nfc(std::string_view text) const override { return std::string(text); }
    [[nodiscard]] std::uint32_t order_version() const override { return version; }

    bool reversed = false;
    bool ignore_case = true;
    std::uint32_t version = 1;
    mutable bool fail = false;        ///< makes every comparison and folding throw
    bool out_of_memory = false;       ///< makes them throw std::bad_alloc
    mutable std::size_t foldings = 0; ///< number of folded texts; a comparison folds two
};

/// A temporary folder, removed on destruction.
class TemporaryFolder {
public:
    TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder();

    [[nodiscard]] std::string operator/(std::string_view name) const { return (path_ / name).string(); }
    [[nodiscard]] std::string path() const { return path_.string(); }
    /// The names of its contents, sorted.
    [[nodiscard]] std::vector<std::string> names() const;

private:
    std::filesystem::path path_;
};

/// Uses the engine directly, as another program would.
class RawConnection {
public:
    explicit RawConnection(const std::string& file);
    RawConnection(const RawConnection&) = delete;
    RawConnection& operator=(const RawConnection&) = delete;
    ~RawConnection();

    /// Runs all statements of `sql`; fails the test on an error.
    void run(const std::string& sql);
    /// The first column of the first row as text.
    [[nodiscard]] std::string query(const std::string& sql);
    /// `column` of all rows, one per line.
    [[nodiscard]] std::string lines(const std::string& sql, int column);

private:
    FoldingCompare compare_;
    sqlite3* db_ = nullptr;
};

using fakes::FileSizeLimit;

/// Makes the engine fail to open files with this name ending while an object of this class exists. With ENOSPC it only
/// fails to create them.
class FailingOpen {
public:
    FailingOpen(std::string ending, int error);
    FailingOpen(const FailingOpen&) = delete;
    FailingOpen& operator=(const FailingOpen&) = delete;
    ~FailingOpen();
};

[[nodiscard]] TableSchema params_table();
[[nodiscard]] TableSchema qa_table();
[[nodiscard]] std::vector<TableSchema> tables();

/// Creates a course with these tables and leaves it open.
void create_course(Database& database, const std::string& path);

[[nodiscard]] std::string bytes_of(const std::string& path);
void write_bytes(const std::string& path, std::string_view bytes);

/// Runs `action`, which must throw a DatabaseError of `kind`, and returns its text.
std::string error_words(DatabaseErrorKind kind, const std::function<void()>& action);

/// Adds a row; returns its number.
std::int64_t add_row(Database& database, const std::string& q, const std::string& a = "answer");

[[nodiscard]] std::int64_t count(Database& database, std::string_view sql = "Select count(0) from qa");

/// An empty, open course in a temporary folder.
class CourseTest : public testing::Test {
protected:
    CourseTest();

    void reopen();
    /// Adds a row; returns its number.
    std::int64_t add(const std::string& q, const std::string& a = "answer") { return add_row(database, q, a); }

    TemporaryFolder folder;
    FoldingCompare compare;
    std::string path = folder / "course.crs";
    SqliteDatabase database{compare, std::chrono::milliseconds(0)};
};

} // namespace cuedrill::platform::sqlite::test
