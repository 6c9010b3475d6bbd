#include "platform/sqlite/support.h"
#include "platform/sqlite/table_layout.h"

#include <cmath>
#include <limits>

namespace cuedrill::platform::sqlite::test {
namespace {

TEST(Layout, MakesTheTablesOfACourse)
{
    const auto params = TableLayout(params_table()).create_statements();
    ASSERT_EQ(params.size(), 1U);
    EXPECT_EQ(params[0], "CREATE TABLE \"params\" (\"param\" TEXT COLLATE CUEDRILL CHECK (length(\"param\") <= 20), "
                         "\"date_value\" REAL, "
                         "\"string_value\" TEXT COLLATE CUEDRILL CHECK (length(\"string_value\") <= 200), "
                         "\"number_value\" REAL, CONSTRAINT \"params_PrimaryKey\" PRIMARY KEY (\"param\")) STRICT");
    const auto qa = TableLayout(qa_table()).create_statements();
    ASSERT_EQ(qa.size(), 3U);
    EXPECT_TRUE(qa[0].starts_with("CREATE TABLE \"qa\" (\"cnt\" INTEGER PRIMARY KEY AUTOINCREMENT, \"q\" TEXT"));
    EXPECT_NE(qa[0].find("\"q_fails\" INTEGER CHECK (\"q_fails\" BETWEEN -32768 AND 32767)"), std::string::npos);
    EXPECT_EQ(qa[1], "CREATE INDEX \"qa_q\" ON \"qa\" (\"q\")");
    EXPECT_EQ(qa[2], "CREATE INDEX \"qa_a\" ON \"qa\" (\"a\")");
}

TEST(Layout, QuotesNames)
{
    EXPECT_EQ(quoted_name("a\"b"), "\"a\"\"b\"");
    const auto statements =
        TableLayout({"order", {{"group", ColumnType::long_integer}}, {{"by", "group", false, true}}})
            .create_statements();
    EXPECT_EQ(statements[1], "CREATE UNIQUE INDEX \"order_by\" ON \"order\" (\"group\")");
}

TEST(Layout, RefusesDefinitionsThatAreNotSound)
{
    error_words(DatabaseErrorKind::other, [] { const TableLayout layout({"t", {}, {}}); });
    error_words(DatabaseErrorKind::other, [] {
        const TableLayout layout({"t", {{"a", ColumnType::text, 5}}, {{"P", "b", true, true}}});
    });
    error_words(DatabaseErrorKind::other, [] {
        const TableLayout layout({"t", {{"a", ColumnType::long_integer, 0, true}}, {}});
    });
    error_words(DatabaseErrorKind::other, [] {
        const TableLayout layout({"t", std::vector<ColumnDefinition>(65, {"a", ColumnType::text, 5}), {}});
    });
}

class StoredForm : public testing::Test {
protected:
    Value form(const char* column, Value value) const
    {
        return layout.stored_form(layout.column(column), std::move(value));
    }
    std::string refused(const char* column, const Value& value) const
    {
        return error_words(DatabaseErrorKind::constraint, [&] { static_cast<void>(form(column, value)); });
    }

    TableLayout layout{qa_table()};
};

TEST_F(StoredForm, OfWholeNumbersIsCheckedAgainstTheRange)
{
    EXPECT_EQ(form("q_fails", std::int64_t{-32768}), Value(std::int64_t{-32768}));
    EXPECT_EQ(form("q_fails", 32767.0), Value(std::int64_t{32767}));
    EXPECT_EQ(refused("q_fails", std::int64_t{32768}),
              "The number 32768 in column q_fails does not fit; it must be between -32768 and 32767.");
    refused("q_fails", std::int64_t{-32769});
    refused("q_fails", 1e300);
    refused("q_fails", 1.5);
    refused("q_fails", std::numeric_limits<double>::quiet_NaN());
    refused("q_fails", std::string("5"));
}

TEST_F(StoredForm, OfNumbersIsFinite)
{
    EXPECT_EQ(form("q_date_last_test", std::int64_t{3}), Value(3.0));
    EXPECT_EQ(form("q_date_last_test", Value()), Value());
    refused("q_date_last_test", std::numeric_limits<double>::infinity());
    refused("q_date_last_test", std::numeric_limits<double>::quiet_NaN());
    refused("q_date_last_test", std::string("1"));
}

TEST_F(StoredForm, OfTextsCountsCharacters)
{
    EXPECT_EQ(form("q", std::string(200, 'x')), Value(std::string(200, 'x')));
    refused("q", std::string(201, 'x'));
    refused("q", std::int64_t{1});
}

} // namespace
} // namespace cuedrill::platform::sqlite::test
