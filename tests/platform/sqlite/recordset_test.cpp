#include "platform/sqlite/support.h"

namespace cuedrill::platform::sqlite::test {
namespace {

using Rows = CourseTest;

TEST_F(Rows, AreReadForwardByNameAndPosition)
{
    add("one", "eins");
    add("two", "zwei");
    const auto rows = database.open_recordset("select q, a as Answer from qa order by cnt");
    EXPECT_FALSE(rows->bof());
    EXPECT_EQ(std::get<std::string>(rows->field("Q")), "one");
    EXPECT_EQ(std::get<std::string>(rows->field("answer")), "eins");
    rows->move_next();
    EXPECT_EQ(std::get<std::string>(rows->field(1)), "zwei");
    rows->move_next();
    EXPECT_TRUE(rows->eof());
    EXPECT_FALSE(rows->bof());
    error_words(DatabaseErrorKind::other, [&] { rows->move_next(); });
    error_words(DatabaseErrorKind::other, [&] { static_cast<void>(rows->field(0)); });
    rows->move_first();
    EXPECT_EQ(std::get<std::string>(rows->field(0)), "one");
    error_words(DatabaseErrorKind::other, [&] { static_cast<void>(rows->field("none")); });
    error_words(DatabaseErrorKind::other, [&] { static_cast<void>(rows->field(2)); });
    error_words(DatabaseErrorKind::other, [&] { static_cast<void>(rows->field(-1)); });
}

TEST_F(Rows, NoneIsBothEnds)
{
    const auto rows = database.open_recordset("select q from qa");
    EXPECT_TRUE(rows->bof());
    EXPECT_TRUE(rows->eof());
    add("one");
    rows->move_first();
    EXPECT_FALSE(rows->bof());
    EXPECT_FALSE(rows->eof());
}

TEST_F(Rows, BehindTheLastRowTheDatabaseCanBeWritten)
{
    add("one");
    const auto rows = database.open_recordset("select q from qa");
    error_words(DatabaseErrorKind::other, [&] { database.execute("delete from qa"); });
    rows->move_next();
    database.execute("update qa set a = 'written'");
    rows->move_first();
    error_words(DatabaseErrorKind::other, [&] { database.execute("delete from qa"); });
}

TEST_F(Rows, TheSameQueryCanBeOpenTwice)
{
    add("one");
    add("two");
    const auto first = database.open_recordset("select q from qa order by cnt");
    const auto second = database.open_recordset("select q from qa order by cnt");
    first->move_next();
    EXPECT_EQ(std::get<std::string>(first->field(0)), "two");
    EXPECT_EQ(std::get<std::string>(second->field(0)), "one");
}

TEST_F(Rows, AreFetchedOneByOne)
{
    // abs() of the smallest integer overflows, so reading the second row fails; reading the first one does not.
    add("x");
    add("xyz");
    const auto rows = database.open_recordset("select abs(case length(q) when 3 then -9223372036854775808 else 1 end) "
                                              "from qa order by cnt");
    EXPECT_EQ(std::get<std::int64_t>(rows->field(0)), 1);
    error_words(DatabaseErrorKind::other, [&] { rows->move_next(); });
    EXPECT_TRUE(rows->eof());
    database.execute("delete from qa");
}

TEST_F(Rows, OnlyASingleReadingStatementIsTaken)
{
    add("one");
    for (const char* sql :
         {"delete from qa", "select q from qa; delete from qa", "select q from qa; select 1", "", "  ", "-- nothing",
          "select", "begin", "update qa set a = '' returning q", "select q from none"})
        error_words(DatabaseErrorKind::other, [&] { static_cast<void>(database.open_recordset(sql)); });
    error_words(DatabaseErrorKind::other,
                [&] { static_cast<void>(database.open_recordset(std::string_view("select 1\0 x", 11))); });
    EXPECT_EQ(count(database, "select count(0) from qa ;\r\n "), 1);
}

TEST_F(Rows, TextsCompareByTheOrderOfTheCourse)
{
    add("b");
    add("A");
    add("a");
    EXPECT_EQ(count(database, "Select count(0) from qa where q = 'A'"), 2);
    EXPECT_EQ(count(database, "Select cnt from qa order by q"), 2);
    EXPECT_EQ(count(database, "Select count(0) from (select distinct q from qa)"), 2);
}

TEST_F(Rows, CvdateReadsADateAsADayNumber)
{
    const auto rows = database.open_recordset("select cvdate('15/Nov/2026 05:47:17')");
    EXPECT_NEAR(std::get<double>(rows->field(0)), 46341.24117, 0.00001);
    for (const char* text : {"'15/11/2026 05:47:17'", "'31/Feb/2026 00:00:00'", "''", "null", "5"}) {
        const std::string words = error_words(DatabaseErrorKind::other, [&] {
            static_cast<void>(database.open_recordset(std::string("select cvdate(") + text + ")"));
        });
        EXPECT_NE(words.find("invalid date"), std::string::npos) << words;
    }
}

TEST_F(Rows, ExecuteTakesASingleStatementWithoutRows)
{
    add("one");
    for (const char* sql : {"select 1", "delete from qa; delete from params", "", "delete from none",
                            "update qa set a = 'x' returning a"})
        error_words(DatabaseErrorKind::other, [&] { database.execute(sql); });
    EXPECT_EQ(count(database, "Select count(0) from qa where a = 'answer'"), 1) << "nothing was written";
    database.execute("update qa set q_attempts = 3 where q = 'ONE';\n");
    EXPECT_EQ(count(database, "Select q_attempts from qa"), 3);
}

TEST_F(Rows, ExecuteReportsBrokenRulesInWords)
{
    add("one");
    EXPECT_EQ(error_words(DatabaseErrorKind::constraint,
                          [&] { database.execute("update qa set q = printf('%.*c', 201, 'x')"); }),
              "The text in column q is too long; 200 characters fit.");
    EXPECT_EQ(error_words(DatabaseErrorKind::constraint, [&] { database.execute("update qa set q_fails = 32768"); }),
              "The number in column q_fails does not fit.");
    EXPECT_NE(error_words(DatabaseErrorKind::constraint, [&] { database.execute("update qa set q_fails = 'x'"); })
                  .find("breaks a rule"),
              std::string::npos);
    error_words(DatabaseErrorKind::constraint, [&] { database.execute("update qa set cnt = null"); });
}

TEST_F(Rows, AComparisonThatFailsIsAnError)
{
    add("one");
    add("two");
    compare.fail = true;
    EXPECT_EQ(error_words(DatabaseErrorKind::other,
                          [&] { static_cast<void>(database.open_recordset("select q from qa where q = 'x'")); }),
              "Texts could not be compared.");
    compare.fail = false;
    EXPECT_EQ(count(database, "Select count(0) from qa where q = 'one'"), 1);
}

TEST_F(Rows, AComparisonForWhichThereIsNoMemoryIsToldAsThat)
{
    add("one");
    add("two");
    compare.out_of_memory = true;
    for (const char* sql : {"select q from qa where q = 'x'", "select q from qa where q like '*x*'"})
        EXPECT_EQ(error_words(DatabaseErrorKind::other, [&] { static_cast<void>(database.open_recordset(sql)); }),
                  "There is not enough memory.");
    {
        const Transaction transaction(database);
        EXPECT_EQ(error_words(DatabaseErrorKind::other, [&] { add("three"); }), "There is not enough memory.");
    }
    compare.out_of_memory = false;
    EXPECT_EQ(count(database), 2);
}

} // namespace
} // namespace cuedrill::platform::sqlite::test
