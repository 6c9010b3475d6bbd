#include "platform/sqlite/cursor_query.h"
#include "platform/sqlite/support.h"

namespace cuedrill::platform::sqlite::test {
namespace {

class CursorQueries : public CourseTest {
protected:
    std::string plan(CursorQuery query, const char* index)
    {
        const TableLayout layout(qa_table());
        RawConnection raw(path);
        return raw.lines("EXPLAIN QUERY PLAN " + cursor_query_text(query, layout, layout.index_column(index)), 3);
    }
};

TEST_F(CursorQueries, FindRowsThroughTheirIndexAndSortNothing)
{
    EXPECT_EQ(plan(CursorQuery::by_row_id, "q"), "SEARCH qa USING INTEGER PRIMARY KEY (rowid=?)\n");
    EXPECT_EQ(plan(CursorQuery::equal, "q"), "SEARCH qa USING INDEX qa_q (q=?)\n");
    EXPECT_EQ(plan(CursorQuery::equal, "a"), "SEARCH qa USING INDEX qa_a (a=?)\n");
    EXPECT_EQ(plan(CursorQuery::next_among_equal, "q"), "SEARCH qa USING INDEX qa_q (q=? AND rowid>?)\n");
    EXPECT_EQ(plan(CursorQuery::previous_among_equal, "q"), "SEARCH qa USING INDEX qa_q (q=? AND rowid<?)\n");
    EXPECT_EQ(plan(CursorQuery::first_greater, "q"), "SEARCH qa USING INDEX qa_q (q>?)\n");
    EXPECT_EQ(plan(CursorQuery::last_less, "q"), "SEARCH qa USING INDEX qa_q (q<?)\n");
    EXPECT_EQ(plan(CursorQuery::last_without_key, "q"), "SEARCH qa USING INDEX qa_q (q=?)\n");
    EXPECT_EQ(plan(CursorQuery::first, "q"), "SCAN qa USING INDEX qa_q\n") << "in the order of the index, one row";
    EXPECT_EQ(plan(CursorQuery::last, "q"), "SCAN qa USING INDEX qa_q\n");
}

TEST_F(CursorQueries, FindRowsByTheirNumber)
{
    EXPECT_EQ(plan(CursorQuery::equal, "PrimaryKey"), "SEARCH qa USING INTEGER PRIMARY KEY (rowid=?)\n");
    EXPECT_EQ(plan(CursorQuery::first_greater, "PrimaryKey"), "SEARCH qa USING INTEGER PRIMARY KEY (rowid>?)\n");
    EXPECT_EQ(plan(CursorQuery::last_less, "PrimaryKey"), "SEARCH qa USING INTEGER PRIMARY KEY (rowid<?)\n");
    EXPECT_EQ(plan(CursorQuery::first, "PrimaryKey"), "SCAN qa\n");
}

TEST(CursorQueryText, OrdersByKeyAndThenByPrimaryKey)
{
    const TableLayout layout(
        {"t", {{"k", ColumnType::long_integer, 0, true}, {"x", ColumnType::text, 5}}, {{"P", "k", true, true}}});
    EXPECT_EQ(cursor_query_text(CursorQuery::previous_among_equal, layout, 1),
              R"(SELECT "k", "x", _rowid_ FROM "t" WHERE "x" IS ?1 AND "k" < ?2 ORDER BY "x" DESC, "k" DESC LIMIT 1)");
    EXPECT_EQ(cursor_query_text(CursorQuery::first, layout, 0),
              R"(SELECT "k", "x", _rowid_ FROM "t" ORDER BY "k" LIMIT 1)");
}

} // namespace
} // namespace cuedrill::platform::sqlite::test
