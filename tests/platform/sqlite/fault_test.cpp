#include "platform/sqlite/support.h"

#include <cstring>
#include <filesystem>
#include <sqlite3.h>

// A file system for the engine that passes all calls to the real one, but fails the n-th write, sync or read. It proves
// that after a failure at any point either all or nothing of a transaction is stored, and no incomplete course remains.
namespace cuedrill::platform::sqlite::test {
namespace {

struct FaultPlan {
    int countdown = -1; ///< operations until the failure; negative for none
    int code = SQLITE_IOERR_WRITE;
    bool on_reads = false;

    bool fails_now() { return countdown >= 0 && countdown-- == 0; }
};

FaultPlan plan;

struct FaultFile {
    sqlite3_file base;
    sqlite3_file* real() { return reinterpret_cast<sqlite3_file*>(this + 1); }
};

sqlite3_file* real(sqlite3_file* file)
{
    return reinterpret_cast<FaultFile*>(file)->real();
}

sqlite3_io_methods fault_methods()
{
    sqlite3_io_methods methods{};
    methods.iVersion = 1;
    methods.xClose = [](sqlite3_file* f) {
        return real(f)->pMethods == nullptr ? SQLITE_OK : real(f)->pMethods->xClose(real(f));
    };
    methods.xRead = [](sqlite3_file* f, void* p, int n, sqlite3_int64 at) {
        return plan.on_reads && plan.fails_now() ? SQLITE_IOERR_READ : real(f)->pMethods->xRead(real(f), p, n, at);
    };
    methods.xWrite = [](sqlite3_file* f, const void* p, int n, sqlite3_int64 at) {
        return !plan.on_reads && plan.fails_now() ? plan.code : real(f)->pMethods->xWrite(real(f), p, n, at);
    };
    methods.xTruncate = [](sqlite3_file* f, sqlite3_int64 size) { return real(f)->pMethods->xTruncate(real(f), size); };
    methods.xSync = [](sqlite3_file* f, int flags) {
        return !plan.on_reads && plan.fails_now() ? SQLITE_IOERR_FSYNC : real(f)->pMethods->xSync(real(f), flags);
    };
    methods.xFileSize = [](sqlite3_file* f, sqlite3_int64* size) {
        return real(f)->pMethods->xFileSize(real(f), size);
    };
    methods.xLock = [](sqlite3_file* f, int level) { return real(f)->pMethods->xLock(real(f), level); };
    methods.xUnlock = [](sqlite3_file* f, int level) { return real(f)->pMethods->xUnlock(real(f), level); };
    methods.xCheckReservedLock = [](sqlite3_file* f, int* out) {
        return real(f)->pMethods->xCheckReservedLock(real(f), out);
    };
    methods.xFileControl = [](sqlite3_file* f, int op, void* p) {
        return real(f)->pMethods->xFileControl(real(f), op, p);
    };
    methods.xSectorSize = [](sqlite3_file* f) { return real(f)->pMethods->xSectorSize(real(f)); };
    methods.xDeviceCharacteristics = [](sqlite3_file* f) { return real(f)->pMethods->xDeviceCharacteristics(real(f)); };
    return methods;
}

const sqlite3_io_methods methods_in_use = fault_methods();
sqlite3_vfs* real_system = nullptr;

int open_through(sqlite3_vfs*, sqlite3_filename name, sqlite3_file* file, int flags, int* out_flags)
{
    sqlite3_file* inner = real(file);
    std::memset(static_cast<void*>(inner), 0, static_cast<std::size_t>(real_system->szOsFile));
    const int code = real_system->xOpen(real_system, name, inner, flags, out_flags);
    file->pMethods = code == SQLITE_OK ? &methods_in_use : nullptr;
    return code;
}

/// Makes the failing file system the engine's default while an object of this class exists.
class FaultSystem {
public:
    FaultSystem()
    {
        real_system = sqlite3_vfs_find(nullptr);
        system_ = *real_system;
        system_.zName = "fault";
        system_.pNext = nullptr;
        system_.szOsFile = real_system->szOsFile + static_cast<int>(sizeof(FaultFile));
        system_.xOpen = open_through;
        sqlite3_vfs_register(&system_, 1);
        plan = {};
    }
    FaultSystem(const FaultSystem&) = delete;
    FaultSystem& operator=(const FaultSystem&) = delete;
    ~FaultSystem()
    {
        sqlite3_vfs_unregister(&system_);
        sqlite3_vfs_register(real_system, 1);
    }

private:
    sqlite3_vfs system_{};
};

class Fault : public testing::TestWithParam<std::pair<int, DatabaseErrorKind>> {
protected:
    /// Runs `action` with the n-th operation failing, for n = 0, 1, …, and `check` after each run, until `action` has
    /// no n-th operation. Returns the number of its operations; -1 if there are 1000 or more.
    template <typename Action, typename Check>
    int fail_at_each_point(Action action, Check check)
    {
        for (int point = 0; point < 1000; ++point) {
            plan = {point, GetParam().first, false};
            bool failed = false;
            try {
                action();
            } catch (const DatabaseError& error) {
                failed = true;
                EXPECT_TRUE(error.kind() == GetParam().second || error.kind() == DatabaseErrorKind::input_output)
                    << error.what();
            }
            const bool was_reached = plan.countdown < 0;
            plan = {};
            check(failed);
            if (!was_reached)
                return point;
        }
        return -1;
    }

    FaultSystem system;
    TemporaryFolder folder;
    FoldingCompare compare;
    std::string path = folder / "course.crs";
    SqliteDatabase database{compare, std::chrono::milliseconds(0)};

    void create() { create_course(database, path); }
};

TEST_P(Fault, InACreationLeavesNothingOrAWholeCourse)
{
    const int points = fail_at_each_point([&] { create(); },
                                          [&](bool failed) {
                                              database.close();
                                              EXPECT_EQ(folder.names().empty(), failed);
                                              std::filesystem::remove(path);
                                          });
    EXPECT_GT(points, 5);
}

TEST_P(Fault, InATransactionLeavesAllOrNothing)
{
    create();
    std::int64_t rows = 0;
    const auto action = [&] {
        Transaction transaction(database);
        for (int i = 0; i < 30; ++i)
            add_row(database, std::string(200, 'q'));
        transaction.commit();
    };
    const auto check = [&](bool failed) {
        database.close();
        database.open(path, tables());
        rows += failed ? 0 : 30;
        EXPECT_EQ(count(database), rows);
    };
    EXPECT_GT(fail_at_each_point(action, check), 5);
    EXPECT_GE(rows, 30);
}

TEST_P(Fault, InReadingIsReported)
{
    create();
    database.close();
    int failures = 0;
    for (int point = 0; point < 100; ++point) {
        plan = {point, 0, true};
        try {
            database.open(path, tables());
        } catch (const DatabaseError& error) {
            EXPECT_EQ(static_cast<int>(error.kind()), static_cast<int>(DatabaseErrorKind::input_output))
                << error.what();
            ++failures;
        }
        const bool was_reached = plan.countdown < 0;
        plan = {};
        database.close();
        if (!was_reached)
            break;
    }
    EXPECT_GT(failures, 3);
    EXPECT_EQ(folder.names(), std::vector<std::string>{"course.crs"});
}

INSTANTIATE_TEST_SUITE_P(OfEachKind, Fault,
                         testing::Values(std::pair(SQLITE_IOERR_WRITE, DatabaseErrorKind::input_output),
                                         std::pair(SQLITE_FULL, DatabaseErrorKind::full)));

} // namespace
} // namespace cuedrill::platform::sqlite::test
