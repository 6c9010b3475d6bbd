#include "course_fixture.h"
#include "store/param_rows.h"

#include <array>
#include <functional>
#include <gtest/gtest.h>

namespace cuedrill::store {
namespace {

using fakes::CourseBuilder;
using fakes::CourseContents;
using platform::DatabaseError;
using platform::Value;

constexpr std::array<std::string_view, 3> keys{"course_title", "time_today", "last_date"};

class ParamTable : public CourseFixture {};

TEST_F(ParamTable, is_read_by_one_statement_without_regard_to_case)
{
    open(CourseBuilder()
             .text_param("COURSE_title", "Verbs")
             .number_param("time_TODAY", 12.5)
             .date_param("last_date", clock.time)
             .number_param("other", 1));
    database.forget();
    const ParamRows rows = read_param_rows(database, keys);
    EXPECT_EQ(database.statement_count(), 1);
    ASSERT_EQ(rows.size(), 3U);
    EXPECT_EQ(rows.at("course_title").string_value, Value("Verbs"));
    EXPECT_EQ(rows.at("course_title").number_value, Value());
    EXPECT_EQ(rows.at("time_today").number_value, Value(12.5));
    EXPECT_EQ(rows.at("last_date").date_value, Value(clock.time.day_number()));
}

TEST_F(ParamTable, gives_nothing_for_a_key_without_a_row)
{
    open(CourseBuilder().number_param("time_TODAY", std::nullopt));
    const ParamRows rows = read_param_rows(database, keys);
    ASSERT_EQ(rows.size(), 1U);
    EXPECT_EQ(rows.at("time_today").number_value, Value());
}

// Both sides of a key go by the order of the course: "ſ" is an "s" there.
TEST_F(ParamTable, reads_the_row_that_would_be_stored_in)
{
    open(CourseBuilder().number_param("courſe_title", 1));
    EXPECT_TRUE(read_param_rows(database, keys).contains("course_title"));
    store_text(database, "course_title", "Verbs");
    EXPECT_EQ(file().param_names(), std::vector<std::string>{"courſe_title"});
}

TEST_F(ParamTable, is_searched_by_its_key_however_many_rows_it_has)
{
    open(CourseBuilder());
    static_cast<void>(read_param_rows(database, keys));
    const std::string sql = "explain query plan " + database.statements().back();
    std::string plan;
    for (const platform::Row row : engine.database.query(sql, {"a", "b", "c"}))
        plan += stored_text(row.field("detail")) + "\n";
    EXPECT_NE(plan.find("SEARCH params USING INDEX sqlite_autoindex_params_1 (param=?)"), std::string::npos) << plan;
}

TEST_F(ParamTable, takes_a_new_row_with_its_key_as_it_is_spelled)
{
    open(CourseBuilder());
    store_number(database, "time_TODAY", 1.5);
    store_text(database, "course_title", "Verbs");
    store_date(database, "last_date", clock.time);
    EXPECT_EQ(file().params, (std::vector<fakes::ParamRow>{{.param = "time_TODAY", .number_value = 1.5},
                                                           {.param = "course_title", .string_value = "Verbs"},
                                                           {.param = "last_date", .date_value = clock.time}}));
}

TEST_F(ParamTable, keeps_key_place_and_other_columns_of_a_row_that_is_there)
{
    open(CourseBuilder().number_param("TIME_today", 1).text_param("x", "y"));
    engine.database.execute("Update params set string_value='kept', date_value=5 where param='time_today'");
    database.forget();
    store_number(database, "time_TODAY", 2);
    EXPECT_EQ(database.statement_count(), 1);
    const CourseContents contents = file();
    EXPECT_EQ(contents.param_names(), (std::vector<std::string>{"TIME_today", "x"}));
    EXPECT_EQ(contents.param("TIME_today")->number_value, 2);
    EXPECT_EQ(contents.param("TIME_today")->string_value, "kept");
    EXPECT_EQ(contents.param("TIME_today")->date_value, common::DateTime::from_day_number(5));
}

TEST_F(ParamTable, refuses_what_does_not_fit_before_anything_is_written)
{
    open(CourseBuilder());
    database.forget();
    EXPECT_THROW(store_text(database, "course_title", std::string(201, 'x')), DatabaseError);
    EXPECT_EQ(database.statement_count(), 0);
    EXPECT_THROW(store_number(database, std::string(21, 'k'), 1), DatabaseError);
    EXPECT_EQ(file(), CourseContents{});
}

TEST_F(ParamTable, a_failing_statement_is_reported_and_stores_nothing)
{
    open(CourseBuilder().number_param("time_ever", 1));
    const CourseContents before = file();
    const std::function<void()> calls[] = {
        [&] { static_cast<void>(read_param_rows(database, keys)); }, [&] { store_number(database, "time_ever", 2); },
        [&] { store_text(database, "course_title", "x"); }, [&] { store_date(database, "last_date", clock.time); }};
    for (const auto& call : calls) {
        database.fail_at_statement(1);
        EXPECT_THROW(call(), DatabaseError);
    }
    EXPECT_EQ(file(), before);
}

} // namespace
} // namespace cuedrill::store
