#include "platform/sqlite/support.h"

#include <cerrno>

// Tests aid indexes, which make a course faster. A course is complete without them.
namespace cuedrill::platform::sqlite::test {
namespace {

constexpr const char* aid_statement = R"(CREATE INDEX "qa_level" ON "qa" ("q_successes", "cnt"))";

class AidIndexes : public CourseTest {
protected:
    AidIndexes() { fill(200); }

    void fill(int rows)
    {
        Transaction transaction(database);
        for (int i = 0; i < rows; ++i)
            add("question " + std::to_string(i), std::string(100, 'x'));
        transaction.commit();
        database.close();
    }

    [[nodiscard]] static std::vector<TableSchema> tables_with_aid()
    {
        std::vector<TableSchema> all = tables();
        all.back().aids = {{.name = "qa_level", .statement = aid_statement}};
        return all;
    }

    void open_with_aid() { database.open(path, tables_with_aid()); }

    /// The definition of the object with this name in the file; "" if there is none.
    [[nodiscard]] std::string definition(const std::string& name = "qa_level") const
    {
        return RawConnection(path).query("SELECT sql FROM sqlite_schema WHERE name = '" + name + "'");
    }

    [[nodiscard]] bool uses_aid()
    {
        const Rows plan = database.query("explain query plan Select count(*) from qa where q_successes = 1");
        return std::get<std::string>(plan[0].field("detail")).find("USING COVERING INDEX qa_level") !=
               std::string::npos;
    }

    void expect_as_before(const std::string& bytes)
    {
        EXPECT_TRUE(bytes_of(path) == bytes) << "the file is not as it was";
        EXPECT_EQ(folder.names(), std::vector<std::string>{"course.crs"});
    }
};

TEST_F(AidIndexes, AreMadeWhereTheyAreNotThere)
{
    open_with_aid();
    EXPECT_EQ(database.unstored(), "") << "nobody is told";
    EXPECT_TRUE(uses_aid());
    EXPECT_EQ(count(database), 200);
    database.close();
    EXPECT_EQ(definition(), aid_statement);
    EXPECT_EQ(RawConnection(path).query("PRAGMA integrity_check"), "ok");
}

TEST_F(AidIndexes, AreMadeWithANewCourse)
{
    path = folder / "new.crs";
    database.create(path);
    for (const TableSchema& table : tables_with_aid())
        database.append_table(table);
    database.finish_creation();
    EXPECT_TRUE(uses_aid());
    EXPECT_EQ(definition(), aid_statement);
}

TEST_F(AidIndexes, ThatAreThereAreNotMadeAgain)
{
    open_with_aid();
    database.close();
    const std::string bytes = bytes_of(path);
    open_with_aid();
    database.close();
    expect_as_before(bytes);
}

TEST_F(AidIndexes, ThatNobodyAsksForAreAccepted)
{
    open_with_aid();
    database.close();
    const std::string bytes = bytes_of(path);
    database.open(path, tables());
    EXPECT_EQ(count(database), 200);
    database.close();
    expect_as_before(bytes);
}

// The engine updates every index, also for programs that only know the tables.
TEST_F(AidIndexes, FollowWhatAnotherProgramWrites)
{
    open_with_aid();
    database.close();
    RawConnection(path).run("UPDATE qa SET q_successes = 3 WHERE cnt <= 5; DELETE FROM qa WHERE cnt = 1");
    open_with_aid();
    EXPECT_EQ(count(database, "Select count(*) from qa where q_successes = 3"), 4);
}

TEST_F(AidIndexes, AreLeftOutForLackOfRoom)
{
    const std::string bytes = bytes_of(path);
    {
        const FileSizeLimit limit(bytes.size());
        open_with_aid();
        EXPECT_EQ(database.unstored(), "");
        EXPECT_EQ(count(database), 200);
        EXPECT_FALSE(uses_aid());
        expect_as_before(bytes);
        EXPECT_EQ(database.execute("Update qa set a = 'y' where cnt = 7"), 1) << "the course can be worked with";
        database.close();
    }
    open_with_aid();
    EXPECT_TRUE(uses_aid()) << "the next opening makes them";
}

TEST_F(AidIndexes, AreLeftOutWhereTheJournalCannotBeMade)
{
    const std::string bytes = bytes_of(path);
    {

        const FailingOpen failing("-journal", ENOSPC);
        open_with_aid();
        EXPECT_FALSE(uses_aid());
        EXPECT_EQ(count(database), 200);
        database.close();
    }
    expect_as_before(bytes);
}

// They are created in one transaction, so a course never has only some of them.
TEST_F(AidIndexes, AreMadeAllOrNone)
{
    std::vector<TableSchema> two = tables_with_aid();
    two.back().aids.push_back(
        {.name = "qa_second", .statement = R"(CREATE INDEX "qa_second" ON "qa" ("a_fails", "a"))"});
    const std::string bytes = bytes_of(path);
    {
        // There is room for the first one only.
        constexpr std::size_t page = 4096;
        const FileSizeLimit limit(bytes.size() + 3 * page);
        database.open(path, two);
        EXPECT_FALSE(uses_aid());
        database.close();
    }
    expect_as_before(bytes);
    database.open(path, two);
    database.close();
    EXPECT_EQ(definition(), aid_statement);
    EXPECT_NE(definition("qa_second"), "");
}

TEST_F(AidIndexes, WithAnotherDefinitionAreBuiltAnew)
{
    for (const char* const other : {"CREATE INDEX qa_level ON qa (a)", "CREATE UNIQUE INDEX \"QA_Level\" ON qa (cnt)",
                                    "CREATE INDEX qa_level ON qa (q_successes, cnt) WHERE q_successes > 3"}) {
        RawConnection(path).run(std::string("DROP INDEX IF EXISTS qa_level; ") + other);
        open_with_aid();
        EXPECT_TRUE(uses_aid()) << other;
        EXPECT_EQ(count(database), 200);
        database.close();
        EXPECT_EQ(definition(), aid_statement);
    }
}

TEST_F(AidIndexes, WithAnotherDefinitionStayWhereTheyCannotBeWritten)
{
    RawConnection(path).run("CREATE INDEX qa_level ON qa (a)");
    const std::string bytes = bytes_of(path);
    {
        const FailingOpen failing("-journal", ENOSPC);
        open_with_aid();
        EXPECT_EQ(count(database), 200);
        database.close();
    }
    expect_as_before(bytes);
}

// An object of this name that is not an index of the table belongs to another program.
TEST_F(AidIndexes, LeaveAloneWhatElseHasTheirName)
{
    for (const char* const other : {"CREATE TABLE qa_level (x)", "CREATE INDEX qa_level ON params (number_value)"}) {
        RawConnection(path).run(other);
        const std::string bytes = bytes_of(path);
        open_with_aid();
        EXPECT_FALSE(uses_aid()) << other;
        EXPECT_EQ(count(database), 200);
        database.close();
        expect_as_before(bytes);
        RawConnection(path).run(std::string(other).starts_with("CREATE TABLE") ? "DROP TABLE qa_level"
                                                                               : "DROP INDEX qa_level");
    }
}

// While the rebuild for another text order is deferred, aid indexes are not created either.
TEST_F(AidIndexes, WaitForTheOrderOfTheTexts)
{
    const std::string bytes = bytes_of(path);
    compare.reversed = true;
    compare.version = 2;
    {
        const FileSizeLimit limit(100);
        open_with_aid();
        EXPECT_NE(database.unstored(), "");
        EXPECT_EQ(count(database), 200);
        EXPECT_TRUE(bytes_of(path) == bytes);
    }
    add("one more");
    EXPECT_FALSE(uses_aid());
    database.close();
    open_with_aid();
    EXPECT_TRUE(uses_aid());
}

TEST_F(AidIndexes, AreLeftOutWhileAnotherProgramReads)
{
    RawConnection other(path);
    other.run("BEGIN; SELECT * FROM qa LIMIT 1");
    open_with_aid();
    EXPECT_FALSE(uses_aid());
    EXPECT_EQ(count(database), 200);
}

} // namespace
} // namespace cuedrill::platform::sqlite::test
