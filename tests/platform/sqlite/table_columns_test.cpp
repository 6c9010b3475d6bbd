#include "platform/sqlite/support.h"
#include "platform/sqlite/table_columns.h"

namespace cuedrill::platform::sqlite::test {
namespace {

class TableColumns : public testing::Test {
protected:
    [[nodiscard]] std::vector<ExpectedTable> made_of(const TableSchema& schema) const
    {
        return expected_tables(std::vector{schema}, compare);
    }

    FoldingCompare compare;
};

TEST_F(TableColumns, AreThoseThatTheStatementMakes)
{
    const auto tables = expected_tables(std::vector{params_table(), qa_table()}, compare);
    ASSERT_EQ(tables.size(), 2U);
    EXPECT_EQ(tables[0].collation_of_key, "CUEDRILL");
    EXPECT_EQ(tables[1].collation_of_key, "") << "the key is the row id";
    const std::vector<TableColumn>& qa = tables[1].columns;
    ASSERT_EQ(qa.size(), 13U);
    EXPECT_EQ(qa[0].name, "cnt");
    EXPECT_EQ(qa[0].place_in_key, 1);
    EXPECT_TRUE(qa[0].numbered);
    EXPECT_FALSE(qa[0].holds_text());
    EXPECT_EQ(qa[1].name, "q");
    EXPECT_EQ(qa[1].place_in_key, 0);
    EXPECT_EQ(qa[1].collation, "CUEDRILL");
    EXPECT_TRUE(qa[1].holds_text());
    EXPECT_FALSE(qa[1].numbered);
    EXPECT_EQ(qa[3].type, "INTEGER");
    EXPECT_EQ(qa[12].type, "REAL");
}

TEST_F(TableColumns, TellWhatIsComputed)
{
    const auto tables = made_of({.name = "t",
                                 .table = "CREATE TABLE t (plain TEXT, given TEXT DEFAULT 'x', made AS (plain)) ",
                                 .indexes = {"CREATE INDEX t_plain ON t (plain)"}});
    const std::vector<TableColumn>& columns = tables.at(0).columns;
    ASSERT_EQ(columns.size(), 3U);
    EXPECT_FALSE(columns[0].computed);
    EXPECT_TRUE(columns[1].computed);
    EXPECT_TRUE(columns[2].computed);
}

TEST_F(TableColumns, NeedSoundStatements)
{
    for (const TableSchema& schema :
         {TableSchema{.name = "t", .table = "CREATE TABLE t (", .indexes = {}},
          TableSchema{.name = "t", .table = "CREATE TABLE t (a)", .indexes = {"CREATE INDEX i ON t (b)"}}})
        error_words(DatabaseErrorKind::other, [&] { static_cast<void>(made_of(schema)); });
}

TEST_F(TableColumns, AreFoundWhateverTheNameOfTheTable)
{
    EXPECT_EQ(quoted_name("a\"b"), "\"a\"\"b\"");
    const auto tables = made_of({.name = "a\"b", .table = "CREATE TABLE \"a\"\"b\" (x TEXT)", .indexes = {}});
    EXPECT_EQ(tables.at(0).columns.size(), 1U);
}

} // namespace
} // namespace cuedrill::platform::sqlite::test
