#include "platform/sqlite/support.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <fstream>
#include <new>
#include <sqlite3.h>
#include <sstream>
#include <stdexcept>
#include <stdlib.h>
#include <unistd.h>
#include <utility>

namespace cuedrill::platform::sqlite::test {
namespace {

int raw_compare(void* context, int length_a, const void* a, int length_b, const void* b)
{
    return static_cast<FoldingCompare*>(context)->compare(
        std::string_view(static_cast<const char*>(a), static_cast<std::size_t>(length_a)),
        std::string_view(static_cast<const char*>(b), static_cast<std::size_t>(length_b)));
}

using OpenCall = int (*)(const char*, int, int);

struct {
    std::string ending;
    int error = 0;
    OpenCall real = nullptr;
} failing_open;

int open_or_fail(const char* path, int flags, int mode)
{
    const bool concerned = failing_open.error != ENOSPC || (flags & O_CREAT) != 0;
    if (!concerned || !std::string_view(path).ends_with(failing_open.ending))
        return failing_open.real(path, flags, mode);
    errno = failing_open.error;
    return -1;
}

} // namespace

FailingOpen::FailingOpen(std::string ending, int error)
{
    sqlite3_vfs* const system = sqlite3_vfs_find(nullptr);
    failing_open = {std::move(ending), error, reinterpret_cast<OpenCall>(system->xGetSystemCall(system, "open"))};
    system->xSetSystemCall(system, "open", reinterpret_cast<sqlite3_syscall_ptr>(open_or_fail));
}

FailingOpen::~FailingOpen()
{
    sqlite3_vfs* const system = sqlite3_vfs_find(nullptr);
    system->xSetSystemCall(system, "open", nullptr);
}

int FoldingCompare::compare(std::string_view a, std::string_view b) const
{
    const int result = fold(a).compare(fold(b));
    return reversed ? -result : result;
}

std::string FoldingCompare::fold(std::string_view text) const
{
    if (fail)
        throw std::runtime_error("no folding");
    if (out_of_memory)
        throw std::bad_alloc();
    ++foldings;
    return ignore_case ? lower(text) : std::string(text);
}

std::string FoldingCompare::lower(std::string_view text) const
{
    std::string folded(text);
    std::transform(folded.begin(), folded.end(), folded.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return folded;
}

TemporaryFolder::TemporaryFolder()
{
    // Prefer a file system in memory, where the many syncs of small files cost nothing.
    const std::filesystem::path memory = "/dev/shm";
    const bool has_memory = ::access(memory.c_str(), W_OK) == 0;
    std::string name =
        ((has_memory ? memory : std::filesystem::temp_directory_path()) / "cuedrill-test-XXXXXX").string();
    if (::mkdtemp(name.data()) == nullptr)
        throw std::runtime_error("no temporary folder");
    path_ = std::filesystem::canonical(name);
}

TemporaryFolder::~TemporaryFolder()
{
    std::error_code error;
    std::filesystem::permissions(path_, std::filesystem::perms::owner_all, error);
    std::filesystem::remove_all(path_, error);
}

std::vector<std::string> TemporaryFolder::names() const
{
    std::vector<std::string> found;
    for (const auto& entry : std::filesystem::directory_iterator(path_))
        found.push_back(entry.path().filename().string());
    std::sort(found.begin(), found.end());
    return found;
}

RawConnection::RawConnection(const std::string& file)
{
    EXPECT_EQ(sqlite3_open(file.c_str(), &db_), SQLITE_OK);
    sqlite3_create_collation(db_, "CUEDRILL", SQLITE_UTF8, &compare_, raw_compare);
    sqlite3_db_config(db_, SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 0, nullptr);
}

RawConnection::~RawConnection()
{
    sqlite3_close(db_);
}

void RawConnection::run(const std::string& sql)
{
    EXPECT_EQ(sqlite3_exec(db_, sql.c_str(), nullptr, nullptr, nullptr), SQLITE_OK) << sqlite3_errmsg(db_);
}

std::string RawConnection::query(const std::string& sql)
{
    const std::string all = lines(sql, 0);
    return all.substr(0, all.find('\n'));
}

std::string RawConnection::lines(const std::string& sql, int column)
{
    sqlite3_stmt* statement = nullptr;
    EXPECT_EQ(sqlite3_prepare_v2(db_, sql.c_str(), -1, &statement, nullptr), SQLITE_OK) << sqlite3_errmsg(db_);
    std::string text;
    while (sqlite3_step(statement) == SQLITE_ROW) {
        const void* cell = sqlite3_column_text(statement, column);
        text += (cell == nullptr ? std::string("null") : std::string(static_cast<const char*>(cell))) + "\n";
    }
    sqlite3_finalize(statement);
    return text;
}

TableSchema params_table()
{
    return {.name = "params",
            .table = R"(CREATE TABLE "params" ("param" TEXT COLLATE CUEDRILL CHECK (length("param") <= 20), )"
                     R"("date_value" REAL, )"
                     R"("string_value" TEXT COLLATE CUEDRILL CHECK (length("string_value") <= 200), )"
                     R"("number_value" REAL, CONSTRAINT "params_PrimaryKey" PRIMARY KEY ("param")) STRICT)",
            .indexes = {}};
}

TableSchema qa_table()
{
    std::string table = R"(CREATE TABLE "qa" ("cnt" INTEGER PRIMARY KEY AUTOINCREMENT)";
    for (const std::string text : {"q", "a"})
        table += R"(, ")" + text + R"(" TEXT COLLATE CUEDRILL CHECK (length(")" + text + R"(") <= 200))";
    for (const std::string number : {"q_attempts", "a_attempts", "q_fails", "a_fails", "q_successes", "a_successes"})
        table += R"(, ")" + number + R"(" INTEGER CHECK (")" + number + R"(" BETWEEN -32768 AND 32767))";
    for (const std::string date : {"q_date_last_test", "a_date_last_test", "q_date_last_show", "a_date_last_show"})
        table += R"(, ")" + date + R"(" REAL)";
    return {.name = "qa",
            .table = table + ") STRICT",
            .indexes = {R"(CREATE INDEX "qa_q" ON "qa" ("q"))", R"(CREATE INDEX "qa_a" ON "qa" ("a"))"}};
}

std::vector<TableSchema> tables()
{
    return {params_table(), qa_table()};
}

void create_course(Database& database, const std::string& path)
{
    database.create(path);
    for (const TableSchema& table : tables())
        database.append_table(table);
    database.finish_creation();
}

std::string bytes_of(const std::string& path)
{
    std::ifstream stream(path, std::ios::binary);
    std::ostringstream bytes;
    bytes << stream.rdbuf();
    return bytes.str();
}

void write_bytes(const std::string& path, std::string_view bytes)
{
    std::ofstream stream(path, std::ios::binary | std::ios::trunc);
    stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

std::string error_words(DatabaseErrorKind kind, const std::function<void()>& action)
{
    try {
        action();
    } catch (const DatabaseError& error) {
        EXPECT_EQ(static_cast<int>(error.kind()), static_cast<int>(kind)) << error.what();
        EXPECT_EQ(std::string(error.what()).find('/'), std::string::npos) << "a path in: " << error.what();
        return error.what();
    }
    ADD_FAILURE() << "nothing was thrown";
    return {};
}

std::int64_t add_row(Database& database, const std::string& q, const std::string& a)
{
    database.execute("Insert into qa (q, a) values (?1, ?2)", {q, a});
    return count(database, "Select last_insert_rowid()");
}

std::int64_t count(Database& database, std::string_view sql)
{
    return std::get<std::int64_t>(database.open_recordset(sql)->field(0));
}

CourseTest::CourseTest()
{
    create_course(database, path);
}

void CourseTest::reopen()
{
    database.close();
    database.open(path, tables());
}

} // namespace cuedrill::platform::sqlite::test
