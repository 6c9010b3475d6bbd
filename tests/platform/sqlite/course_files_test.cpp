#include "fakes/super_journal.h"
#include "platform/sqlite/course_files.h"
#include "platform/sqlite/engine_error.h"
#include "platform/sqlite/support.h"

#include <filesystem>
#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

// A course may come from anywhere, and so may the files next to it. Whatever they contain, opening the course touches
// only the course, its own journal and its own log.
namespace cuedrill::platform::sqlite::test {
namespace {

using Names = std::vector<std::string>;

using fakes::big_endian;
using fakes::naming;

/// A closed course with records, and a file of the user's own next to it.
class Neighbours : public CourseTest {
protected:
    Neighbours()
    {
        for (int i = 0; i < 200; ++i)
            add("question " + std::to_string(i), std::string(150, 'x'));
        database.close();
        write_bytes(precious, "precious");
    }

    /// Leaves the course half changed, with the hot journal of a transaction that was interrupted by a crash.
    void leave_hot_journal()
    {
        const TemporaryFolder elsewhere;
        RawConnection crashing(path);
        crashing.run("PRAGMA cache_size = 2; BEGIN; UPDATE qa SET q_attempts = 7");
        std::filesystem::copy(path, elsewhere / "course");
        std::filesystem::copy(journal, elsewhere / "journal");
        crashing.run("ROLLBACK");
        const std::string cut = bytes_of(elsewhere / "course");
        ASSERT_NE(cut, bytes_of(path));
        write_bytes(path, cut);
        write_bytes(journal, bytes_of(elsewhere / "journal"));
    }

    /// Opens the course, which must be rejected without changing anything in the folder.
    std::string refused()
    {
        const std::string course_bytes = bytes_of(path);
        const Names names = folder.names();
        const std::string words = error_words(DatabaseErrorKind::damaged, [&] { database.open(path, tables()); });
        EXPECT_FALSE(database.is_open());
        EXPECT_TRUE(bytes_of(path) == course_bytes) << "the course was changed";
        EXPECT_EQ(bytes_of(precious), "precious");
        EXPECT_EQ(folder.names(), names);
        return words;
    }

    void expect_opens()
    {
        database.open(path, tables());
        EXPECT_EQ(count(database, "Select count(0) from qa where q_attempts is null"), 200);
        EXPECT_EQ(add("one more"), 201);
        EXPECT_EQ(bytes_of(precious), "precious");
    }

    std::string precious = folder / "diary.txt";
    std::string journal = path + "-journal";
    std::string log = path + "-wal";
    const std::string names_a_file =
        "The file beside it, course.crs-journal, names another file that would be deleted. Nothing was changed or "
        "deleted. No course of this program has such a file: get the course once more from where it came from.";
    const std::string no_file_of_the_course =
        ", which is no file of the course: it is a link, a folder, a pipe, another course, the journal of a far larger "
        "file, or has a second name. Nothing was changed. Give it another name or place, then open the course again.";
};

TEST_F(Neighbours, AJournalOfNothingButTheNameOfAFileRefusesTheCourse)
{
    const std::string name = naming(precious);
    write_bytes(journal, std::string(512 - name.size(), 'j') + name);
    const std::string bytes = bytes_of(journal);
    EXPECT_EQ(refused(), names_a_file);
    EXPECT_EQ(bytes_of(journal), bytes);
}

TEST_F(Neighbours, AHotJournalThatNamesAFileRefusesTheCourse)
{
    leave_hot_journal();
    const std::string bytes = bytes_of(journal) + naming(precious);
    write_bytes(journal, bytes);
    EXPECT_EQ(refused(), names_a_file);
    EXPECT_TRUE(bytes_of(journal) == bytes);
}

// The engine ignores such a journal at first, but deletes the file that its end names at the next rollback.
TEST_F(Neighbours, AJournalThatIsUsedUpAndNamesAFileRefusesTheCourse)
{
    write_bytes(journal, std::string(1024, '\0') + naming(precious));
    EXPECT_EQ(refused(), names_a_file);
}

TEST_F(Neighbours, AJournalThatNamesNoExistingFileRefusesTheCourseToo)
{
    leave_hot_journal();
    write_bytes(journal, bytes_of(journal) + naming(folder / "none"));
    EXPECT_EQ(refused(), names_a_file);
}

TEST_F(Neighbours, AJournalThatNamesTheCourseItselfRefusesIt)
{
    write_bytes(journal, std::string(512, 'j') + naming(path));
    EXPECT_EQ(refused(), names_a_file);
}

TEST_F(Neighbours, AJournalThatComesLaterAndNamesAFileStopsTheNextUse)
{
    database.open(path, tables());
    write_bytes(journal, std::string(512, 'j') + naming(precious));
    EXPECT_EQ(error_words(DatabaseErrorKind::damaged, [&] { add("one more"); }), names_a_file);
    EXPECT_EQ(bytes_of(precious), "precious");
    std::filesystem::remove(journal);
    EXPECT_EQ(add("one more"), 201) << "nothing but the journal was in the way";
}

TEST_F(Neighbours, AHotJournalUndoesWhatACrashCut)
{
    leave_hot_journal();
    expect_opens();
    EXPECT_EQ(folder.names(), (Names{"course.crs", "diary.txt"}));
}

TEST_F(Neighbours, AnEmptyJournalIsUsedAgain)
{
    write_bytes(journal, "");
    expect_opens();
    EXPECT_EQ(folder.names(), (Names{"course.crs", "diary.txt"}));
}

TEST_F(Neighbours, AJournalOfGarbageChangesNothing)
{
    for (const std::string& garbage :
         {std::string(5000, 'g'), std::string("x"), std::string(3000, '\0'), std::string(600, '\xD7')}) {
        const std::string before = bytes_of(path);
        write_bytes(journal, garbage);
        database.open(path, tables());
        EXPECT_EQ(count(database), 200);
        database.close();
        EXPECT_TRUE(bytes_of(path) == before);
        EXPECT_EQ(bytes_of(precious), "precious");
        std::filesystem::remove(journal);
    }
}

TEST_F(Neighbours, AnEmptyLogIsLeftAlone)
{
    write_bytes(log, "");
    expect_opens();
    EXPECT_EQ(folder.names(), (Names{"course.crs", "course.crs-wal", "diary.txt"}));
}

TEST_F(Neighbours, ALogOfGarbageGoesWithTheOpening)
{
    for (const std::string& garbage : {std::string("x"), std::string(9000, 'g')}) {
        write_bytes(log, garbage);
        database.open(path, tables());
        EXPECT_EQ(count(database), 200);
        database.close();
        EXPECT_EQ(folder.names(), (Names{"course.crs", "diary.txt"}));
    }
}

// The engine would truncate and fill a file of this name to share its index of the log.
TEST_F(Neighbours, TheIndexOfALogIsNeverTouched)
{
    RawConnection(path).run("PRAGMA journal_mode = WAL");
    std::filesystem::create_hard_link(precious, path + "-shm");
    expect_opens();
}

TEST_F(Neighbours, AnotherProgramsChangeToALogSaysThatItIsInUse)
{
    database.open(path, tables());
    RawConnection other(path);
    other.run("PRAGMA journal_mode = WAL");
    EXPECT_EQ(error_words(DatabaseErrorKind::locked, [&] { add("one more"); }), "Another program is using it.");
    EXPECT_EQ(error_words(DatabaseErrorKind::locked, [&] { static_cast<void>(count(database)); }),
              "Another program is using it.");
    other.run("PRAGMA journal_mode = DELETE");
    EXPECT_EQ(add("one more"), 201);
}

TEST_F(Neighbours, WhatIsNoFileOfTheCoursesOwnRefusesIt)
{
    for (const std::string& neighbour : {journal, log}) {
        const std::string words =
            "Beside it lies " + neighbour.substr(folder.path().size() + 1) + no_file_of_the_course;
        std::filesystem::create_symlink(precious, neighbour);
        EXPECT_EQ(refused(), words) << "a link";
        std::filesystem::remove(neighbour);
        std::filesystem::create_symlink(folder / "none", neighbour);
        EXPECT_EQ(refused(), words) << "a link that leads nowhere";
        std::filesystem::remove(neighbour);
        std::filesystem::create_hard_link(precious, neighbour);
        EXPECT_EQ(refused(), words) << "a file with two names";
        std::filesystem::remove(neighbour);
        std::filesystem::create_directory(neighbour);
        EXPECT_EQ(refused(), words) << "a folder";
        std::filesystem::remove(neighbour);
        ASSERT_EQ(::mkfifo(neighbour.c_str(), 0666), 0);
        EXPECT_EQ(refused(), words) << "a pipe";
        std::filesystem::remove(neighbour);
    }
}

TEST_F(Neighbours, ACourseThatIsCalledLikeTheJournalIsNotDeleted)
{
    std::filesystem::copy(path, journal);
    EXPECT_EQ(refused(), "Beside it lies course.crs-journal" + no_file_of_the_course);
}

// The engine would extend the course to the size that its journal claims.
TEST_F(Neighbours, AJournalOfAFarLargerFileRefusesTheCourse)
{
    const std::string header = "\xD9\xD5\x05\xF9\x20\xA1\x63\xD7" + big_endian(0) + big_endian(1) +
                               big_endian(0xFFFFFFFE) + big_endian(512) + big_endian(4096);
    write_bytes(journal, header + std::string(512 - header.size(), '\0'));
    EXPECT_EQ(refused(), "Beside it lies course.crs-journal" + no_file_of_the_course);
}

TEST_F(Neighbours, ANewCourseDoesNotTakeOverTheFilesOfAnEarlierOne)
{
    leave_hot_journal();
    std::filesystem::remove(path);
    const std::string bytes = bytes_of(journal);
    EXPECT_EQ(error_words(DatabaseErrorKind::exists, [&] { database.create(path); }),
              "A file of an earlier course of that name is still there: course.crs-journal.");
    std::filesystem::rename(journal, log);
    EXPECT_EQ(error_words(DatabaseErrorKind::exists, [&] { database.create(path); }),
              "A file of an earlier course of that name is still there: course.crs-wal.");
    EXPECT_TRUE(bytes_of(log) == bytes);
    EXPECT_EQ(folder.names(), (Names{"course.crs-wal", "diary.txt"}));
}

/// What the engine sees through `CourseFiles`.
class View : public Neighbours {
protected:
    View() : system(sqlite3_vfs_find(files.name())) {}

    int look_for(const std::string& name)
    {
        int found = 0;
        return system->xAccess(system, name.c_str(), SQLITE_ACCESS_EXISTS, &found);
    }

    int open(const char* name, int kind)
    {
        std::string room(static_cast<std::size_t>(system->szOsFile), '\0');
        auto* const file = reinterpret_cast<sqlite3_file*>(room.data());
        const int code = system->xOpen(system, name, file, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | kind, nullptr);
        EXPECT_EQ(code == SQLITE_OK, file->pMethods != nullptr);
        if (code == SQLITE_OK)
            file->pMethods->xClose(file);
        return code;
    }

    CourseFiles files{path};
    sqlite3_vfs* system;
};

TEST_F(View, NoOtherPathIsLookedForDeletedOrOpened)
{
    for (const std::string& other :
         {precious, folder / "other.crs", path + "-shm", path + "-journal2", folder.path()}) {
        EXPECT_NE(look_for(other), SQLITE_OK) << other;
        EXPECT_NE(system->xDelete(system, other.c_str(), 0), SQLITE_OK) << other;
        for (const int kind : {SQLITE_OPEN_MAIN_DB, SQLITE_OPEN_MAIN_JOURNAL, SQLITE_OPEN_WAL, SQLITE_OPEN_TEMP_DB,
                               SQLITE_OPEN_SUPER_JOURNAL, SQLITE_OPEN_TEMP_JOURNAL, SQLITE_OPEN_SUBJOURNAL})
            EXPECT_NE(open(other.c_str(), kind), SQLITE_OK) << other;
    }
    EXPECT_NE(system->xDelete(system, path.c_str(), 0), SQLITE_OK) << "the course itself";
    EXPECT_EQ(folder.names(), (Names{"course.crs", "diary.txt"}));
}

TEST_F(View, EachOfTheThreeFilesIsOpenedForItsOwnUseOnly)
{
    for (const int kind : {SQLITE_OPEN_MAIN_JOURNAL, SQLITE_OPEN_WAL, SQLITE_OPEN_TEMP_DB})
        EXPECT_NE(open(path.c_str(), kind), SQLITE_OK);
    EXPECT_NE(open(journal.c_str(), SQLITE_OPEN_MAIN_DB), SQLITE_OK);
    EXPECT_NE(open(journal.c_str(), SQLITE_OPEN_WAL), SQLITE_OK);
    EXPECT_NE(open(log.c_str(), SQLITE_OPEN_MAIN_JOURNAL), SQLITE_OK);
    EXPECT_NE(open(nullptr, SQLITE_OPEN_TEMP_DB), SQLITE_OK) << "temporary files have no name";
    EXPECT_EQ(open(path.c_str(), SQLITE_OPEN_MAIN_DB), SQLITE_OK);
}

TEST_F(View, EndsWithItsObject)
{
    std::string name;
    {
        const CourseFiles second{path};
        name = second.name();
        EXPECT_NE(name, files.name());
        EXPECT_NE(sqlite3_vfs_find(name.c_str()), nullptr);
    }
    EXPECT_EQ(sqlite3_vfs_find(name.c_str()), nullptr);
    EXPECT_NE(sqlite3_vfs_find(files.name()), nullptr);
    EXPECT_FALSE(error_of_course_files(SQLITE_IOERR_READ, path).has_value());
}

TEST_F(Neighbours, NothingIsEverKeptInATemporaryFile)
{
    database.open(path, tables());
    EXPECT_EQ(count(database, "PRAGMA temp_store"), 2);
    const auto rows = database.open_recordset("select a.q from qa a, qa b order by a.a desc, b.q desc, a.cnt desc");
    EXPECT_FALSE(rows->eof());
}

} // namespace
} // namespace cuedrill::platform::sqlite::test
