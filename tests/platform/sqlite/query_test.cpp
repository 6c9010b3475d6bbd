#include "platform/sqlite/support.h"

#include <limits>

namespace cuedrill::platform::sqlite::test {
namespace {

using Query = CourseTest;
using Texts = std::vector<std::string>;

Texts first_texts(const Rows& rows)
{
    Texts texts;
    for (const Row row : rows)
        texts.push_back(std::get<std::string>(row.field(0)));
    return texts;
}

TEST_F(Query, GivesAllRowsByNameAndPosition)
{
    add("one", "eins");
    add("two", "zwei");
    const Rows rows = database.query("select q, a as Answer from qa order by cnt");
    ASSERT_EQ(rows.size(), 2U);
    EXPECT_FALSE(rows.empty());
    EXPECT_EQ(first_texts(rows), (Texts{"one", "two"}));
    EXPECT_EQ(rows[1].field("Q"), Value("two"));
    EXPECT_EQ(rows[1].field("answer"), Value("zwei"));
    EXPECT_EQ(rows[1].field(1), Value("zwei"));
    error_words(DatabaseErrorKind::other, [&] { static_cast<void>(rows[2]); });
    for (const int column : {-1, 2})
        error_words(DatabaseErrorKind::other, [&] { static_cast<void>(rows[0].field(column)); });
    EXPECT_EQ(error_words(DatabaseErrorKind::other, [&] { static_cast<void>(rows[0].field("none")); }),
              "The query gives no column none.");
}

TEST_F(Query, GivesNoRows)
{
    const Rows rows = database.query("select q from qa");
    EXPECT_TRUE(rows.empty());
    EXPECT_EQ(rows.size(), 0U);
    EXPECT_EQ(first_texts(rows), Texts{});
    error_words(DatabaseErrorKind::other, [&] { static_cast<void>(rows[0]); });
}

TEST_F(Query, TakesTheValuesOfItsParameters)
{
    const Rows rows = database.query("select ?1, ?2, ?3, ?4, ?1",
                                     {std::int64_t{5}, 2.5, std::string("it's; drop table qa"), Value()});
    EXPECT_EQ(rows[0].field(0), Value(std::int64_t{5}));
    EXPECT_EQ(rows[0].field(1), Value(2.5));
    EXPECT_EQ(rows[0].field(2), Value("it's; drop table qa"));
    EXPECT_EQ(rows[0].field(3), Value());
    EXPECT_EQ(rows[0].field(4), Value(std::int64_t{5}));
}

TEST_F(Query, TakesAsManyValuesAsItHasParameters)
{
    add("one");
    EXPECT_EQ(error_words(DatabaseErrorKind::other,
                          [&] { static_cast<void>(database.query("select q from qa where q = ?1")); }),
              "The statement takes 1 values; it was given 0.");
    error_words(DatabaseErrorKind::other, [&] { static_cast<void>(database.query("select 1", {std::int64_t{1}})); });
    error_words(DatabaseErrorKind::other, [&] { database.execute("delete from qa where cnt = ?1"); });
    EXPECT_EQ(count(database), 1);
}

TEST_F(Query, AValueOfOneUseIsNotThereInTheNext)
{
    add("one");
    const std::string sql = "select count(0) from qa where q = ?1";
    EXPECT_EQ(database.query(sql, {"ONE"})[0].field(0), Value(std::int64_t{1}));
    EXPECT_EQ(database.query(sql, {"two"})[0].field(0), Value(std::int64_t{0}));
    EXPECT_EQ(database.query(sql, {Value()})[0].field(0), Value(std::int64_t{0}));
}

TEST_F(Query, IsASingleReadingStatement)
{
    add("one");
    for (const char* sql :
         {"delete from qa", "select q from qa; delete from qa", "select q from qa; select 1", "", "  ", "-- nothing",
          "select", "begin", "update qa set a = '' returning q", "select q from none"})
        error_words(DatabaseErrorKind::other, [&] { static_cast<void>(database.query(sql)); });
    error_words(DatabaseErrorKind::other,
                [&] { static_cast<void>(database.query(std::string_view("select 1\0 x", 11))); });
    EXPECT_EQ(database.query("select count(0) from qa where a = 'answer' ;\r\n ")[0].field(0), Value(std::int64_t{1}));
}

TEST_F(Query, NeedsAnOpenCourse)
{
    database.close();
    EXPECT_EQ(error_words(DatabaseErrorKind::other, [&] { static_cast<void>(database.query("select 1")); }),
              "No course is open.");
    error_words(DatabaseErrorKind::other, [&] { database.execute("delete from qa"); });
}

TEST_F(Query, IsVisitedRowByRowUntilTheVisitorHasEnough)
{
    // Reading the third row fails, because abs() overflows. A visitor that stops before never reads it.
    for (const char* q : {"a", "b", "xyz"})
        add(q);
    const std::string sql =
        "select q, abs(case length(q) when 3 then -9223372036854775808 else 1 end) from qa order by cnt";
    Texts seen;
    database.query(sql, {}, [&](const Row& row) {
        seen.push_back(std::get<std::string>(row.field("q")));
        return seen.size() < 2;
    });
    EXPECT_EQ(seen, (Texts{"a", "b"}));
    database.execute("update qa set a = 'written'");

    seen.clear();
    error_words(DatabaseErrorKind::other, [&] {
        database.query(sql, {}, [&](const Row& row) {
            seen.push_back(std::get<std::string>(row.field("q")));
            return true;
        });
    });
    EXPECT_EQ(seen, (Texts{"a", "b"}));
    EXPECT_EQ(database.execute("delete from qa"), 3) << "the failed reading holds nothing";
}

TEST_F(Query, ReadsSeveralQueriesInsideEachOther)
{
    add("one");
    add("two");
    Texts seen;
    const std::string sql = "select q from qa order by cnt";
    database.query(sql, {}, [&](const Row& row) {
        for (const std::string& inner : first_texts(database.query(sql)))
            seen.push_back(std::get<std::string>(row.field(0)) + " " + inner);
        return true;
    });
    EXPECT_EQ(seen, (Texts{"one one", "one two", "two one", "two two"}));
}

TEST_F(Query, NothingIsWrittenWhileRowsAreVisited)
{
    add("one");
    const auto write_in_between = [&](const std::function<void()>& write) {
        error_words(DatabaseErrorKind::other, [&] {
            database.query("select q from qa", {}, [&](const Row&) {
                write();
                return true;
            });
        });
    };
    write_in_between([&] { database.execute("delete from qa"); });
    write_in_between([&] { database.begin(); });
    EXPECT_EQ(database.execute("delete from qa"), 1);
}

TEST_F(Query, WhatAVisitorThrowsEndsTheReading)
{
    add("one");
    EXPECT_THROW(database.query("select q from qa", {}, [](const Row&) -> bool { throw std::runtime_error("enough"); }),
                 std::runtime_error);
    EXPECT_EQ(database.execute("delete from qa"), 1);
}

TEST_F(Query, ACourseThatIsClosedMeanwhileEndsTheReading)
{
    add("one");
    add("two");
    int visits = 0;
    EXPECT_EQ(error_words(DatabaseErrorKind::other,
                          [&] {
                              database.query("select q from qa", {}, [&](const Row&) {
                                  ++visits;
                                  database.close();
                                  return true;
                              });
                          }),
              "The course is closed.");
    EXPECT_EQ(visits, 1);
    database.open(path, tables());
    EXPECT_EQ(database.execute("delete from qa"), 2);
}

TEST_F(Query, TextsCompareByTheOrderOfTheCourse)
{
    add("b");
    add("A");
    add("a");
    EXPECT_EQ(database.query("Select q from qa where q = ?1 order by cnt", {"a"}).size(), 2U);
    EXPECT_EQ(database.query("Select distinct q from qa").size(), 2U);
}

TEST_F(Query, KeepsTextsWithAnyBytes)
{
    const std::string odd("a\0b\xF0\x9F\x98\x80\"'%_", 12);
    add(odd);
    EXPECT_EQ(database.query("Select q from qa where q = ?1", {odd})[0].field(0), Value(odd));
}

using Execute = CourseTest;

TEST_F(Execute, NumbersNeverComeBack)
{
    add("one");
    add("two");
    EXPECT_EQ(database.execute("Delete from qa where cnt = 2"), 1);
    reopen();
    EXPECT_EQ(add("three"), 3);
}

TEST_F(Execute, KeepsTheSameTextTwice)
{
    EXPECT_EQ(add("same"), 1);
    EXPECT_EQ(add("same"), 2);
}

TEST_F(Execute, RefusesWhatBreaksARuleOfTheTable)
{
    std::string longest;
    for (int i = 0; i < 200; ++i)
        longest += "\xC3\xA9";
    add("fits", longest);
    EXPECT_EQ(error_words(DatabaseErrorKind::constraint, [&] { add(longest + "x"); }),
              "The text in column q is too long; 200 characters fit.");
    EXPECT_EQ(error_words(DatabaseErrorKind::constraint,
                          [&] { database.execute("Update qa set q_fails = ?1", {std::int64_t{32768}}); }),
              "The number in column q_fails does not fit.");
    database.execute("Insert into params (param) values ('one')");
    EXPECT_EQ(error_words(DatabaseErrorKind::constraint,
                          [&] { database.execute("Insert into params (param) values ('ONE')"); }),
              "There is already a row with this value in column param.");
    EXPECT_EQ(database.query("Select q_fails from qa")[0].field(0), Value());
    EXPECT_EQ(count(database, "Select count(0) from params"), 1);
}

TEST_F(Execute, SaysHowManyRowsItHasChanged)
{
    EXPECT_EQ(database.execute("insert into qa (q) values (?1), (?2)", {"one", "two"}), 2);
    EXPECT_EQ(database.execute("update qa set a = ?1", {"x"}), 2);
    EXPECT_EQ(database.execute("update qa set a = ?1", {"x"}), 2) << "also where it changes nothing";
    EXPECT_EQ(database.execute("update qa set a = ?1 where cnt = ?2", {"x", std::int64_t{7}}), 0);
    EXPECT_EQ(database.execute("delete from qa where q = 'ONE'"), 1);
    EXPECT_EQ(database.execute("delete from qa where q = 'ONE'"), 0);
}

TEST_F(Execute, TakesASingleStatementWithoutRows)
{
    add("one");
    for (const char* sql : {"select 1", "delete from qa; delete from params", "", "delete from none",
                            "update qa set a = 'x' returning a"})
        error_words(DatabaseErrorKind::other, [&] { database.execute(sql); });
    EXPECT_EQ(database.query("Select count(0) from qa where a = 'answer'")[0].field(0), Value(std::int64_t{1}));
}

TEST_F(Execute, RefusesNumbersThatAreNotFinite)
{
    add("one");
    for (const double number : {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity()})
        EXPECT_EQ(error_words(DatabaseErrorKind::constraint,
                              [&] { database.execute("update qa set q_date_last_test = ?1", {number}); }),
                  "Only finite numbers can be stored.");
    EXPECT_EQ(database.query("Select count(0) from qa where q_date_last_test is null")[0].field(0),
              Value(std::int64_t{1}));
}

TEST_F(Execute, ReportsBrokenRulesInWords)
{
    add("one");
    EXPECT_EQ(error_words(DatabaseErrorKind::constraint,
                          [&] { database.execute("update qa set q = ?1", {std::string(201, 'x')}); }),
              "The text in column q is too long; 200 characters fit.");
    EXPECT_EQ(error_words(DatabaseErrorKind::constraint,
                          [&] { database.execute("update qa set q_fails = ?1", {std::int64_t{32768}}); }),
              "The number in column q_fails does not fit.");
}

} // namespace
} // namespace cuedrill::platform::sqlite::test
