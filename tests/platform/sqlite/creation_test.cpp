#include "platform/sqlite/new_file.h"
#include "platform/sqlite/support.h"

#include <cerrno>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace cuedrill::platform::sqlite::test {
namespace {

using Names = std::vector<std::string>;

class Creation : public testing::Test {
protected:
    void create_all(const std::string& name) { create_course(database, name); }

    TemporaryFolder folder;
    FoldingCompare compare;
    std::string path = folder / "new.crs";
    SqliteDatabase database{compare, std::chrono::milliseconds(0)};
};

TEST_F(Creation, NoFileHasTheNameBeforeTheEnd)
{
    database.create(path);
    database.append_table(params_table());
    EXPECT_FALSE(std::filesystem::exists(path));
    EXPECT_FALSE(database.is_open());
    database.append_table(qa_table());
    database.finish_creation();
    EXPECT_TRUE(database.is_open());
    EXPECT_EQ(folder.names(), Names{"new.crs"});
}

TEST_F(Creation, NewCourseIsEmptyAndOpensAgain)
{
    create_all(path);
    EXPECT_EQ(count(database), 0);
    EXPECT_EQ(count(database, "Select count(0) from params"), 0);
    database.close();
    database.open(path, tables());
    EXPECT_TRUE(database.query("Select * from params where param = ?1", {"course_title"}).empty());
}

TEST_F(Creation, FileCarriesItsMarksAndTheUsualPermissions)
{
    const mode_t mask = ::umask(022);
    create_all(path);
    ::umask(mask);
    database.close();
    struct stat status {};
    ASSERT_EQ(::stat(path.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0644U);
    EXPECT_EQ(status.st_nlink, 1U);
    RawConnection raw(path);
    EXPECT_EQ(raw.query("PRAGMA application_id"), std::to_string(0x43554544));
    EXPECT_EQ(std::stol(raw.query("PRAGMA user_version")) >> 24, 1);
    EXPECT_EQ(raw.query("PRAGMA encoding"), "UTF-8");
    EXPECT_EQ(raw.lines("SELECT name FROM sqlite_schema WHERE type = 'index' AND sql IS NOT NULL ORDER BY 1", 0),
              "qa_a\nqa_q\n");
}

TEST_F(Creation, CloseBeforeTheEndLeavesNothingBehind)
{
    database.create(path);
    database.append_table(qa_table());
    EXPECT_EQ(folder.names().empty(), false) << "the temporary file is there meanwhile";
    database.close();
    EXPECT_EQ(folder.names(), Names{});
}

TEST_F(Creation, DestructionBeforeTheEndLeavesNothingBehind)
{
    {
        SqliteDatabase other(compare);
        other.create(path);
        other.append_table(qa_table());
    }
    EXPECT_EQ(folder.names(), Names{});
}

// The leftovers of a killed program are not locked; a file that another program is creating is.
TEST_F(Creation, RemovesWhatEarlierOnesLeftBehindAndNobodyHolds)
{
    const std::string left = folder / ".cuedrill-new-17";
    write_bytes(left, "half a course");
    write_bytes(left + "-journal", "its journal");
    SqliteDatabase other(compare);
    other.create(folder / "other.crs");
    other.append_table(params_table());
    create_all(path);
    EXPECT_EQ(folder.names().size(), 3U) << "the other creation and its journal go on";
    EXPECT_FALSE(std::filesystem::exists(left));
    other.append_table(qa_table());
    other.finish_creation();
    EXPECT_EQ(folder.names(), (Names{"new.crs", "other.crs"}));
    EXPECT_EQ(count(other), 0);
}

TEST_F(Creation, HoldsAFileThatItsCallerHasCreated)
{
    {
        TemporaryFile making(path.substr(0, path.rfind('/')), TemporaryFile::Start::only_a_name);
        EXPECT_EQ(folder.names(), Names{});
        EXPECT_THROW(making.hold(), platform::DatabaseError);
        create_all(making.path());
        database.close();
        making.hold();
        create_all(path);
        EXPECT_EQ(folder.names().size(), 2U) << "the creation removes only what nobody holds";
        EXPECT_TRUE(std::filesystem::exists(making.path()));
    }
    EXPECT_EQ(folder.names(), Names{"new.crs"});
}

TEST_F(Creation, ACourseThatGotItsNameKeepsItWhenItsFirstOneIsRemoved)
{
    create_all(path);
    database.close();
    std::filesystem::create_hard_link(path, folder / ".cuedrill-new-17");
    create_all(folder / "second.crs");
    EXPECT_EQ(folder.names(), (Names{"new.crs", "second.crs"}));
    database.close();
    database.open(path, tables());
}

TEST_F(Creation, LeavesOtherFilesOfSuchNamesAlone)
{
    const Names names{".cuedrill-new-",  ".cuedrill-new-1-journal", ".cuedrill-new-5", ".cuedrill-new-6",
                      ".cuedrill-new-7", ".cuedrill-new-mine",      "diary.txt"};
    for (const auto& name : {names[0], names[1], names[5], names[6]})
        write_bytes(folder / name, "precious");
    std::filesystem::create_symlink(folder / "diary.txt", folder / names[2]);
    std::filesystem::create_directory(folder / names[3]);
    ASSERT_EQ(::mkfifo((folder / names[4]).c_str(), 0666), 0);
    create_all(path);
    database.close();
    std::filesystem::remove(path);
    EXPECT_EQ(folder.names(), names);
    EXPECT_EQ(bytes_of(folder / "diary.txt"), "precious");
}

TEST_F(Creation, NeverReplacesAFileThatIsThereAtTheStart)
{
    write_bytes(path, "precious");
    EXPECT_EQ(error_words(DatabaseErrorKind::exists, [&] { database.create(path); }),
              "There is already a file of that name.");
    EXPECT_EQ(bytes_of(path), "precious");
    EXPECT_EQ(folder.names(), Names{"new.crs"});
}

TEST_F(Creation, NeverReplacesAFileThatCameMeanwhile)
{
    database.create(path);
    database.append_table(qa_table());
    write_bytes(path, "precious");
    error_words(DatabaseErrorKind::exists, [&] { database.finish_creation(); });
    EXPECT_EQ(bytes_of(path), "precious");
    EXPECT_EQ(folder.names(), Names{"new.crs"});
    EXPECT_FALSE(database.is_open());
}

// The engine would apply them to the new course.
TEST_F(Creation, GivesNoNameBesideAJournalOrALogThatCameMeanwhile)
{
    for (const std::string ending : {"-journal", "-wal"}) {
        database.create(path);
        database.append_table(params_table());
        database.append_table(qa_table());
        write_bytes(path + ending, "precious");
        EXPECT_EQ(error_words(DatabaseErrorKind::exists, [&] { database.finish_creation(); }),
                  "A file of an earlier course of that name is still there: new.crs" + ending + ".");
        EXPECT_EQ(folder.names(), Names{"new.crs" + ending});
        EXPECT_EQ(bytes_of(path + ending), "precious");
        EXPECT_FALSE(database.is_open());
        std::filesystem::remove(path + ending);
    }
}

TEST_F(Creation, NeverFollowsALinkThatLeadsNowhere)
{
    std::filesystem::create_symlink(folder / "elsewhere.crs", path);
    error_words(DatabaseErrorKind::exists, [&] { database.create(path); });
    EXPECT_EQ(folder.names(), Names{"new.crs"});
}

TEST_F(Creation, FailsInAFolderThatIsNotThere)
{
    error_words(DatabaseErrorKind::missing, [&] { database.create(folder / "none/new.crs"); });
    write_bytes(folder / "file", "x");
    error_words(DatabaseErrorKind::missing, [&] { database.create(folder / "file/new.crs"); });
}

TEST_F(Creation, FailsForNamesThatAreNone)
{
    for (const std::string& name : {std::string(), folder.path() + "/", folder / "..", folder / std::string("a\0b", 3)})
        error_words(DatabaseErrorKind::missing, [&] { database.create(name); });
    error_words(DatabaseErrorKind::other, [&] { database.create(folder / std::string(300, 'x')); });
    EXPECT_EQ(folder.names(), Names{});
}

TEST_F(Creation, NeedsANameThatLeavesRoomForThatOfTheJournal)
{
    for (const std::size_t length : {248U, 255U})
        EXPECT_EQ(error_words(DatabaseErrorKind::other, [&] { create_all(folder / std::string(length, 'x')); }),
                  "The name is too long.");
    EXPECT_EQ(folder.names(), Names{});
    create_all(folder / std::string(247, 'x'));
    EXPECT_EQ(count(database), 0);
}

TEST_F(Creation, LeavesNothingBehindWhereTheNewCourseCannotBeOpened)
{
    const FailingOpen no_opening("new.crs", EMFILE);
    EXPECT_EQ(error_words(DatabaseErrorKind::other, [&] { create_all(path); }), "Too many files are open.");
    EXPECT_EQ(folder.names(), Names{});
}

TEST_F(Creation, FailsInAFolderThatNobodyMayWrite)
{
    std::filesystem::permissions(folder.path(), std::filesystem::perms(0555));
    EXPECT_EQ(error_words(DatabaseErrorKind::read_only, [&] { database.create(path); }),
              "Its folder cannot be written.");
    std::filesystem::permissions(folder.path(), std::filesystem::perms(0755));
    EXPECT_EQ(folder.names(), Names{});
}

TEST_F(Creation, AnErrorInATableEndsItAndLeavesNothingBehind)
{
    database.create(path);
    database.append_table(qa_table());
    error_words(DatabaseErrorKind::other, [&] { database.append_table(qa_table()); });
    EXPECT_EQ(folder.names(), Names{});
    error_words(DatabaseErrorKind::other, [&] { database.finish_creation(); });
    create_all(path);
    EXPECT_TRUE(database.is_open());
}

TEST_F(Creation, NeedsEverythingElseClosed)
{
    error_words(DatabaseErrorKind::other, [&] { database.append_table(qa_table()); });
    create_all(path);
    error_words(DatabaseErrorKind::other, [&] { database.create(folder / "second.crs"); });
    error_words(DatabaseErrorKind::other, [&] { database.open(path, tables()); });
    EXPECT_TRUE(database.is_open());
}

TEST_F(Creation, TakesAPathRelativeToTheWorkingFolder)
{
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(folder.path());
    create_all("file:new.crs?mode=ro");
    std::filesystem::current_path(before);
    EXPECT_EQ(folder.names(), Names{"file:new.crs?mode=ro"}) << "a name is a name, never a URI";
    EXPECT_EQ(count(database), 0);
}

class Naming : public testing::Test {
protected:
    void SetUp() override { write_bytes(from, "complete"); }

    TemporaryFolder folder;
    std::string from = folder / "temporary";
    std::string to = folder / "name";
};

int fail_with(int error)
{
    errno = error;
    return -1;
}

TEST_F(Naming, RenamesWhereThereAreNoHardLinks)
{
    NamingCalls calls = NamingCalls::of_system();
    calls.link = [](const char*, const char*) { return fail_with(EPERM); };
    give_name(from, to, calls);
    EXPECT_EQ(folder.names(), Names{"name"});
    EXPECT_EQ(bytes_of(to), "complete");
}

TEST_F(Naming, TheRenamingReplacesNothingEither)
{
    write_bytes(to, "precious");
    NamingCalls calls = NamingCalls::of_system();
    calls.link = [](const char*, const char*) { return fail_with(EOPNOTSUPP); };
    error_words(DatabaseErrorKind::exists, [&] { give_name(from, to, calls); });
    EXPECT_EQ(bytes_of(to), "precious");
}

TEST_F(Naming, ReportsWhatTheSystemReports)
{
    NamingCalls calls = NamingCalls::of_system();
    calls.link = [](const char*, const char*) { return fail_with(ENOSPC); };
    error_words(DatabaseErrorKind::full, [&] { give_name(from, to, calls); });
    calls.link = [](const char*, const char*) { return fail_with(EIO); };
    error_words(DatabaseErrorKind::input_output, [&] { give_name(from, to, calls); });
    calls.link = [](const char*, const char*) { return fail_with(ENOSYS); };
    calls.rename_no_replace = [](const char*, const char*) { return fail_with(EINVAL); };
    EXPECT_EQ(error_words(DatabaseErrorKind::other, [&] { give_name(from, to, calls); }), "It cannot be created.");
    EXPECT_EQ(folder.names(), Names{"temporary"});
}

TEST_F(Naming, SucceedsWhereTheFolderDoesNotReachTheDisk)
{
    NamingCalls calls = NamingCalls::of_system();
    calls.sync_folder = [](const char*) { return fail_with(EIO); };
    give_name(from, to, calls);
    EXPECT_EQ(folder.names(), Names{"name"});
    EXPECT_EQ(bytes_of(to), "complete");
}

TEST_F(Naming, IsTakenBackUnlessItIsKept)
{
    {
        GivenName name(from);
        name.keep();
    }
    EXPECT_EQ(folder.names(), Names{"temporary"});
    {
        const GivenName name(from);
    }
    EXPECT_EQ(folder.names(), Names{});
}

TEST_F(Naming, IsNotTakenBackFromAnotherFileNorFromOneThatWasWrittenMeanwhile)
{
    {
        const GivenName name(from);
        write_bytes(to, "complete");
        std::filesystem::rename(to, from);
    }
    EXPECT_EQ(folder.names(), Names{"temporary"});
    {
        const GivenName name(from);
        write_bytes(from, "complete, and more");
    }
    EXPECT_EQ(folder.names(), Names{"temporary"});
}

TEST_F(Naming, ATemporaryFileGoesWithItsJournal)
{
    std::string path;
    {
        const TemporaryFile file(folder.path());
        path = file.path();
        write_bytes(path + "-journal", "x");
        EXPECT_TRUE(std::filesystem::exists(path));
    }
    EXPECT_EQ(folder.names(), Names{"temporary"});
    error_words(DatabaseErrorKind::missing, [&] { const TemporaryFile file(folder / "none"); });
}

} // namespace
} // namespace cuedrill::platform::sqlite::test
