#include "platform/sqlite/support.h"

#include <filesystem>
#include <sqlite3.h>

namespace cuedrill::platform::sqlite::test {
namespace {

using Names = std::vector<std::string>;
using Opening = CourseTest;

TEST_F(Opening, FollowsALinkToTheFileItself)
{
    add("one");
    database.close();
    std::filesystem::create_symlink(path, folder / "link.crs");
    database.open(folder / "link.crs", tables());
    EXPECT_EQ(count(database), 1);
    database.begin();
    database.execute("update qa set a = 'x'");
    EXPECT_EQ(folder.names(), (Names{"course.crs", "course.crs-journal", "link.crs"}))
        << "the journal stands beside the file, where a recovery looks for it";
    database.commit();
}

TEST_F(Opening, AnUnmarkedFileIsACourseByItsTables)
{
    database.close();
    RawConnection(path).run("PRAGMA application_id = 0");
    database.open(path, tables());
    EXPECT_EQ(count(database), 0);
}

TEST_F(Opening, FurtherTablesViewsAndTheirTriggersAreLeftAlone)
{
    database.close();
    RawConnection(path).run("CREATE TABLE notes (text); CREATE VIEW old AS SELECT q FROM qa; "
                            "CREATE TRIGGER t AFTER INSERT ON notes BEGIN DELETE FROM qa; END");
    database.open(path, tables());
    add("one");
    database.execute("insert into notes values ('x')");
    EXPECT_EQ(count(database), 1) << "triggers do not run";
    error_words(DatabaseErrorKind::other, [&] { static_cast<void>(database.open_recordset("select * from old")); });
}

TEST_F(Opening, AnAcceptedFileLeavesTheLogMode)
{
    add("one");
    database.close();
    RawConnection(path).run("PRAGMA journal_mode = WAL");
    database.open(path, tables());
    EXPECT_EQ(bytes_of(path)[18], 1);
    EXPECT_EQ(folder.names(), Names{"course.crs"});
    RawConnection other(path);
    other.run("UPDATE qa SET a = 'shared'");
    EXPECT_EQ(database.query("Select a from qa")[0].field(0), Value("shared")) << "no lock is kept";
}

TEST_F(Opening, RowsOfALogThatWasLeftBehindAreKept)
{
    const TemporaryFolder elsewhere;
    database.close();
    {
        RawConnection other(path);
        other.run("PRAGMA journal_mode = WAL; INSERT INTO qa (q) VALUES ('late')");
        std::filesystem::copy(path, elsewhere / "course.crs");
        std::filesystem::copy(path + "-wal", elsewhere / "course.crs-wal");
    }
    database.open(elsewhere / "course.crs", tables());
    EXPECT_EQ(count(database), 1);
    EXPECT_EQ(elsewhere.names(), Names{"course.crs"});
}

TEST_F(Opening, ATransactionThatACrashCutIsUndone)
{
    for (int i = 0; i < 200; ++i)
        add("question " + std::to_string(i), std::string(150, 'x'));
    database.close();
    const TemporaryFolder elsewhere;
    {
        RawConnection crashing(path);
        crashing.run("PRAGMA cache_size = 2; BEGIN; UPDATE qa SET q_attempts = 7");
        std::filesystem::copy(path, elsewhere / "course.crs");
        std::filesystem::copy(path + "-journal", elsewhere / "course.crs-journal");
        crashing.run("ROLLBACK");
    }
    const std::string cut = bytes_of(elsewhere / "course.crs");
    ASSERT_NE(cut, bytes_of(path)) << "the crash must have reached the file";
    database.open(elsewhere / "course.crs", tables());
    EXPECT_EQ(count(database, "Select count(0) from qa where q_attempts is null"), 200);
    EXPECT_EQ(elsewhere.names(), Names{"course.crs"});
}

TEST_F(Opening, WritesDurably)
{
    add("one");
    EXPECT_EQ(folder.names(), Names{"course.crs"}) << "all is in the one file, with no journal or log beside it";
    EXPECT_EQ(count(database, "PRAGMA synchronous"), 3);
    EXPECT_EQ(count(database, "PRAGMA cell_size_check"), 1);
}

TEST_F(Opening, CloseMayBeRepeatedAndUndoesWhatIsUnfinished)
{
    database.begin();
    add("one");
    database.close();
    database.close();
    EXPECT_FALSE(database.is_open());
    database.open(path, tables());
    EXPECT_EQ(count(database), 0);
}

TEST_F(Opening, WhatOutlivesTheCourseFailsInWords)
{
    add("one");
    const auto rows = database.open_recordset("select q from qa");
    database.close();
    const std::vector<std::function<void()>> uses{
        [&] { rows->move_next(); },
        [&] { rows->move_first(); },
        [&] { static_cast<void>(rows->field(0)); },
        [&] { static_cast<void>(rows->field("q")); },
    };
    for (const auto& use : uses)
        EXPECT_EQ(error_words(DatabaseErrorKind::other, use), "The course is closed.");
    database.open(path, tables());
    EXPECT_EQ(error_words(DatabaseErrorKind::other, uses[0]), "The course is closed.") << "also after another opening";
    EXPECT_EQ(count(database), 1);
}

TEST_F(Opening, NothingWorksOnAClosedDatabase)
{
    database.close();
    const std::vector<std::function<void()>> uses{[&] { static_cast<void>(database.query("select 1")); },
                                                  [&] { static_cast<void>(database.open_recordset("select 1")); },
                                                  [&] { database.execute("delete from qa"); },
                                                  [&] { database.begin(); }, [&] { database.commit(); }};
    for (const auto& use : uses)
        EXPECT_EQ(error_words(DatabaseErrorKind::other, use), "No course is open.");
    database.rollback();
}

TEST_F(Opening, TheEnginesDangerousDoorsAreShut)
{
    error_words(DatabaseErrorKind::other, [&] { database.execute("attach 'other.db' as x"); });
    error_words(DatabaseErrorKind::other,
                [&] { static_cast<void>(database.open_recordset("select \"no such column\" from qa")); });
    error_words(DatabaseErrorKind::other,
                [&] { static_cast<void>(database.open_recordset("select load_extension('x')")); });
    error_words(DatabaseErrorKind::other, [&] { database.execute("update sqlite_schema set sql = ''"); });
}

} // namespace
} // namespace cuedrill::platform::sqlite::test
