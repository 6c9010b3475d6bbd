#include "platform/sqlite/course_check.h"
#include "platform/sqlite/support.h"

#include <cerrno>

namespace cuedrill::platform::sqlite::test {
namespace {

class Order : public CourseTest {
protected:
    /// The engine's query plan for looking up a question.
    std::string plan()
    {
        const Rows steps = database.query("explain query plan Select cnt from qa where q = ?1", {std::string("a")});
        return std::get<std::string>(steps[0].field("detail"));
    }

    bool finds_all()
    {
        for (char c = 'a'; c <= 'z'; ++c) {
            if (database.query("Select cnt from qa where q = ?1", {std::string(1, c)}).empty())
                return false;
        }
        return true;
    }

    void fill()
    {
        Transaction transaction(database);
        for (char c = 'a'; c <= 'z'; ++c)
            add(std::string(1, c));
        transaction.commit();
    }
};

TEST_F(Order, IndexesAreBuiltAnewWhenTextsSortOtherwise)
{
    fill();
    database.close();
    compare.reversed = true;
    compare.version = 2;
    database.open(path, tables());
    EXPECT_TRUE(finds_all());
    EXPECT_EQ(count(database, "Select cnt from qa order by q"), 26);
    database.close();
    EXPECT_EQ(RawConnection(path).query("PRAGMA user_version"), std::to_string(packed_version(2)));
}

TEST_F(Order, WithoutTheStampRowsWouldBeLost)
{
    fill();
    database.close();
    compare.reversed = true;
    database.open(path, tables());
    EXPECT_FALSE(finds_all()) << "proves that the test above can fail";
}

// Indexes in another order must not be written: rows that get to a wrong place in them could not be found again.
TEST_F(Order, WithoutRoomOnTheDiskIsBroughtAboutBeforeTheNextWrite)
{
    fill();
    database.close();
    const std::string bytes = bytes_of(path);
    compare.reversed = true;
    compare.version = 2;
    {
        const FileSizeLimit limit(100);
        database.open(path, tables());
        EXPECT_EQ(database.unstored(), "A file would become larger than the system allows.");
        EXPECT_EQ(count(database), 26);
        EXPECT_TRUE(finds_all()) << "no row is missed before";
        EXPECT_EQ(count(database, "Select cnt from qa order by q"), 26);
        EXPECT_EQ(plan().find("INDEX"), std::string::npos) << plan();
        for (const auto& write : std::vector<std::function<void()>>{[&] { add("one more"); }, [&] { database.begin(); },
                                                                    [&] { database.execute("delete from qa"); }})
            error_words(DatabaseErrorKind::full, write);
        EXPECT_FALSE(database.unstored().empty());
        EXPECT_TRUE(bytes_of(path) == bytes);
    }
    database.execute("update qa set a = 'x'");
    EXPECT_EQ(database.unstored(), "");
    EXPECT_TRUE(finds_all());
    EXPECT_NE(plan().find("USING COVERING INDEX qa_q"), std::string::npos) << plan();
    EXPECT_EQ(count(database, "PRAGMA user_version"), packed_version(2));
    database.close();
    database.open(path, tables());
    EXPECT_EQ(database.unstored(), "");
    EXPECT_EQ(count(database), 26);
}

TEST_F(Order, WithoutRoomOnTheDiskHidesNoParameter)
{
    {
        Transaction transaction(database);
        for (char c = 'a'; c <= 'z'; ++c)
            database.execute("insert into params (param, number_value) values (?1, 1)", {std::string(1, c)});
        transaction.commit();
    }
    database.close();
    compare.reversed = true;
    compare.version = 2;
    const FileSizeLimit limit(100);
    database.open(path, tables());
    for (char c = 'A'; c <= 'Z'; ++c)
        EXPECT_EQ(database.query("Select number_value from params where param=?1", {std::string(1, c)}).size(), 1U)
            << c;
    EXPECT_EQ(folder.names(), std::vector<std::string>{"course.crs"});
}

// The views that stand in for the tables meanwhile are not part of the file, and do not prevent another opening.
TEST_F(Order, WithoutRoomOnTheDiskLeavesNothingBehindWhenTheCourseIsClosed)
{
    fill();
    database.close();
    const std::string bytes = bytes_of(path);
    compare.reversed = true;
    compare.version = 2;
    for (int round = 0; round < 2; ++round) {
        const FileSizeLimit limit(100);
        database.open(path, tables());
        EXPECT_TRUE(finds_all());
        database.close();
        EXPECT_TRUE(bytes_of(path) == bytes);
    }
    database.open(path, tables());
    EXPECT_EQ(count(database, "Select count(0) from temp.sqlite_schema"), 0);
    EXPECT_TRUE(finds_all());
    add("one more");
}

TEST_F(Order, WithoutRoomForAJournalIsBroughtAboutBeforeTheNextWrite)
{
    fill();
    database.close();
    compare.reversed = true;
    compare.version = 2;
    {
        const FailingOpen no_journal("-journal", ENOSPC);
        database.open(path, tables());
        EXPECT_EQ(database.unstored(), "There is no room left on the disk.");
        EXPECT_EQ(count(database), 26);
        error_words(DatabaseErrorKind::full, [&] { add("one more"); });
    }
    add("one more");
    EXPECT_EQ(database.unstored(), "");
    EXPECT_TRUE(finds_all());
}

TEST_F(Order, AFileWithoutAStampGetsOne)
{
    fill();
    database.close();
    RawConnection(path).run("PRAGMA user_version = 0");
    compare.reversed = true;
    database.open(path, tables());
    EXPECT_TRUE(finds_all());
}

TEST_F(Order, AFileInOrderIsNotWritten)
{
    fill();
    database.close();
    const std::string bytes = bytes_of(path);
    database.open(path, tables());
    database.close();
    EXPECT_EQ(bytes_of(path), bytes);
}

TEST_F(Order, KeysThatBecomeEqualAreReportedAndTheFileStaysAsItIs)
{
    database.close();
    {
        // A course whose texts were compared case-sensitively.
        compare.ignore_case = false;
        compare.version = 3;
        database.open(path, tables());
        database.execute("insert into params (param) values ('x')");
        database.execute("insert into params (param) values ('X')");
        database.close();
    }
    const std::string bytes = bytes_of(path);
    compare.ignore_case = true;
    compare.version = 1;
    EXPECT_EQ(error_words(DatabaseErrorKind::damaged, [&] { database.open(path, tables()); }),
              "It is damaged (two rows have the same key).");
    EXPECT_EQ(bytes_of(path), bytes);
    EXPECT_EQ(folder.names(), std::vector<std::string>{"course.crs"});
}

TEST_F(Order, TheStampDependsOnTheOrderAndCarriesTheSchemaNumber)
{
    EXPECT_NE(packed_version(1), packed_version(2));
    for (const std::uint32_t version : {0U, 1U, 77U, 0xFFFFFFFFU}) {
        EXPECT_EQ(packed_version(version) >> 24, 1);
        EXPECT_NE(packed_version(version) & 0xFFFFFF, 0);
    }
}

} // namespace
} // namespace cuedrill::platform::sqlite::test
