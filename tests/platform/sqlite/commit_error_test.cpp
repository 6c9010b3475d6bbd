#include "platform/sqlite/support.h"

#include <cstring>
#include <sqlite3.h>

// A VFS for the engine whose calls do their work and then report an error, as some devices do. It proves after which
// errors of a commit the written data are in the file.
namespace cuedrill::platform::sqlite::test {
namespace {

enum class Step { none, sync, unlock, unlink };

Step failing = Step::none;
int calls_left = 0;

/// Whether this call is the one that reports the error.
bool fails(Step step)
{
    if (failing != step || --calls_left != 0)
        return false;
    failing = Step::none;
    return true;
}

struct LateFile {
    sqlite3_file base;
    sqlite3_file* real() { return reinterpret_cast<sqlite3_file*>(this + 1); }
};

sqlite3_file* real(sqlite3_file* file)
{
    return reinterpret_cast<LateFile*>(file)->real();
}

int behind(int code, Step step, int error)
{
    return code == SQLITE_OK && fails(step) ? error : code;
}

sqlite3_io_methods late_methods()
{
    sqlite3_io_methods methods{};
    methods.iVersion = 1;
    methods.xClose = [](sqlite3_file* f) { return real(f)->pMethods->xClose(real(f)); };
    methods.xRead = [](sqlite3_file* f, void* p, int n, sqlite3_int64 at) {
        return real(f)->pMethods->xRead(real(f), p, n, at);
    };
    methods.xWrite = [](sqlite3_file* f, const void* p, int n, sqlite3_int64 at) {
        return real(f)->pMethods->xWrite(real(f), p, n, at);
    };
    methods.xTruncate = [](sqlite3_file* f, sqlite3_int64 size) { return real(f)->pMethods->xTruncate(real(f), size); };
    methods.xSync = [](sqlite3_file* f, int flags) {
        return behind(real(f)->pMethods->xSync(real(f), flags), Step::sync, SQLITE_IOERR_FSYNC);
    };
    methods.xFileSize = [](sqlite3_file* f, sqlite3_int64* size) {
        return real(f)->pMethods->xFileSize(real(f), size);
    };
    methods.xLock = [](sqlite3_file* f, int level) { return real(f)->pMethods->xLock(real(f), level); };
    methods.xUnlock = [](sqlite3_file* f, int level) {
        return behind(real(f)->pMethods->xUnlock(real(f), level), Step::unlock, SQLITE_IOERR_UNLOCK);
    };
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

const sqlite3_io_methods methods_in_use = late_methods();
sqlite3_vfs* real_system = nullptr;

int open_through(sqlite3_vfs*, sqlite3_filename name, sqlite3_file* file, int flags, int* out_flags)
{
    sqlite3_file* inner = real(file);
    std::memset(static_cast<void*>(inner), 0, static_cast<std::size_t>(real_system->szOsFile));
    const int code = real_system->xOpen(real_system, name, inner, flags, out_flags);
    file->pMethods = code == SQLITE_OK ? &methods_in_use : nullptr;
    return code;
}

int unlink_through(sqlite3_vfs*, const char* name, int sync_folder)
{
    return behind(real_system->xDelete(real_system, name, sync_folder), Step::unlink, SQLITE_IOERR_DIR_FSYNC);
}

/// Makes the late file system the engine's default while an object of this class exists.
class LateSystem {
public:
    LateSystem()
    {
        real_system = sqlite3_vfs_find(nullptr);
        system_ = *real_system;
        system_.zName = "late";
        system_.pNext = nullptr;
        system_.szOsFile = real_system->szOsFile + static_cast<int>(sizeof(LateFile));
        system_.xOpen = open_through;
        system_.xDelete = unlink_through;
        sqlite3_vfs_register(&system_, 1);
        failing = Step::none;
    }
    LateSystem(const LateSystem&) = delete;
    LateSystem& operator=(const LateSystem&) = delete;
    ~LateSystem()
    {
        failing = Step::none;
        sqlite3_vfs_unregister(&system_);
        sqlite3_vfs_register(real_system, 1);
    }

private:
    sqlite3_vfs system_{};
};

struct LateError {
    const char* name;
    Step step;
    int call; ///< which call of this step fails, counted from 1 at the commit
    bool stored;
};

class CommitErrors : public testing::TestWithParam<LateError> {
protected:
    CommitErrors() { create_course(database, path); }

    void add() { add_row(database, std::string(200, 'q')); }

    LateSystem system;
    TemporaryFolder folder;
    FoldingCompare compare;
    std::string path = folder / "course.crs";
    SqliteDatabase database{compare, std::chrono::milliseconds(0)};
};

TEST_P(CommitErrors, AreToldApartAndTheSameConnectionReadsWhatIsStored)
{
    const LateError& error = GetParam();
    {
        Transaction transaction(database);
        for (int i = 0; i < 30; ++i)
            add();
        failing = error.step;
        calls_left = error.call;
        EXPECT_THROW(transaction.commit(), CommitError);
        EXPECT_EQ(failing, Step::none) << "the error came";
    }
    const std::int64_t rows = error.stored ? 30 : 0;
    EXPECT_EQ(count(database), rows);
    EXPECT_EQ(folder.names(), std::vector<std::string>{"course.crs"});
    EXPECT_EQ(RawConnection(path).query("Select count(0) from qa"), std::to_string(rows));
    {
        Transaction again(database);
        add();
        again.commit();
    }
    database.close();
    database.open(path, tables());
    EXPECT_EQ(count(database), rows + 1);
}

// A commit syncs the journal twice (its pages, then its header) and then the file, deletes the journal and syncs its
// folder, and releases the lock.
INSTANTIATE_TEST_SUITE_P(OfEachStep, CommitErrors,
                         testing::Values(LateError{"journal_sync", Step::sync, 1, false},
                                         LateError{"file_sync", Step::sync, 3, false},
                                         LateError{"journal_unlink", Step::unlink, 1, true},
                                         LateError{"unlock", Step::unlock, 1, true}),
                         [](const auto& one) { return std::string(one.param.name); });

TEST_F(CommitErrors, DoNotIncludeACommitThatAnotherProgramBlocks)
{
    RawConnection other(path);
    other.run("BEGIN; Select count(0) from qa");
    {
        Transaction transaction(database);
        add();
        try {
            transaction.commit();
            ADD_FAILURE() << "nothing was thrown";
        } catch (const CommitError&) {
            ADD_FAILURE() << "it is known that nothing is stored";
        } catch (const DatabaseError& error) {
            EXPECT_EQ(error.kind(), DatabaseErrorKind::locked);
        }
    }
    EXPECT_EQ(count(database), 0);
}

TEST_F(CommitErrors, DoNotIncludeTheEndOfAPart)
{
    Transaction outer(database);
    Transaction inner(database);
    database.execute("ROLLBACK");
    try {
        inner.commit();
        ADD_FAILURE() << "nothing was thrown";
    } catch (const CommitError&) {
        ADD_FAILURE() << "the engine has undone all of it";
    } catch (const DatabaseError& error) {
        EXPECT_EQ(error.kind(), DatabaseErrorKind::other);
    }
}

} // namespace
} // namespace cuedrill::platform::sqlite::test
