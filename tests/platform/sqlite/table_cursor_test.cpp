#include "platform/sqlite/support.h"

namespace cuedrill::platform::sqlite::test {
namespace {

using Numbers = std::vector<std::int64_t>;

class Cursor : public CourseTest {
protected:
    std::string text(const std::string& column) { return std::get<std::string>(cursor->field(column)); }
    std::int64_t number() { return std::get<std::int64_t>(cursor->field("cnt")); }
    bool is_null(const std::string& column) { return std::holds_alternative<std::monostate>(cursor->field(column)); }

    std::unique_ptr<TableCursor> cursor = database.open_table("QA");
};

TEST_F(Cursor, StandsOnBothEndsOfAnEmptyTable)
{
    for (const auto& move : {&TableCursor::move_first, &TableCursor::move_last}) {
        (cursor.get()->*move)();
        EXPECT_TRUE(cursor->bof());
        EXPECT_TRUE(cursor->eof());
    }
    error_words(DatabaseErrorKind::other, [&] { static_cast<void>(cursor->field("q")); });
    error_words(DatabaseErrorKind::other, [&] { cursor->move_next(); });
    error_words(DatabaseErrorKind::other, [&] { cursor->move_previous(); });
    error_words(DatabaseErrorKind::other, [&] { cursor->edit(); });
    error_words(DatabaseErrorKind::other, [&] { cursor->delete_row(); });
}

TEST_F(Cursor, StandsOnTheNewRowWithItsNumber)
{
    cursor->add_new();
    cursor->set("Q", std::string("What?"));
    EXPECT_EQ(text("q"), "What?");
    EXPECT_TRUE(is_null("a"));
    cursor->update();
    EXPECT_EQ(number(), 1);
    EXPECT_EQ(text("Q"), "What?");
    EXPECT_TRUE(is_null("q_date_last_test")) << "an unset date is null";
    EXPECT_FALSE(cursor->bof());
    EXPECT_FALSE(cursor->eof());
    cursor->seek(std::int64_t{1});
    EXPECT_EQ(text("q"), "What?");
}

TEST_F(Cursor, TakesARowInWhichNothingWasSet)
{
    cursor->add_new();
    cursor->update();
    EXPECT_EQ(number(), 1);
    EXPECT_EQ(count(database, "Select count(0) from qa where q is null"), 1);
}

TEST_F(Cursor, KeepsTheSameTextTwice)
{
    EXPECT_EQ(add("same"), 1);
    EXPECT_EQ(add("same"), 2);
}

TEST_F(Cursor, NumbersNeverComeBack)
{
    add("one");
    add("two");
    cursor->seek(std::int64_t{2});
    cursor->delete_row();
    reopen();
    EXPECT_EQ(add("three"), 3);
    cursor = database.open_table("qa");
    cursor->add_new();
    error_words(DatabaseErrorKind::other, [&] { cursor->set("cnt", std::int64_t{2}); });
}

TEST_F(Cursor, SeekFindsTextsWithoutRegardToCase)
{
    const auto params = database.open_table("params");
    params->add_new();
    params->set("param", std::string("course_title"));
    params->set("string_value", std::string("German"));
    params->update();
    params->set_index("PrimaryKey");
    params->seek(std::string("COURSE_TITLE"));
    EXPECT_FALSE(params->no_match());
    EXPECT_EQ(std::get<std::string>(params->field("string_value")), "German");
    params->seek(std::string("course"));
    EXPECT_TRUE(params->no_match());
    error_words(DatabaseErrorKind::other, [&] { static_cast<void>(params->field("param")); });
}

TEST_F(Cursor, SeekGivesTheLowestNumberOfEqualKeys)
{
    add("x");
    add("Word", "first");
    add("word", "second");
    cursor->set_index("q");
    cursor->seek(std::string("WORD"));
    EXPECT_EQ(text("a"), "first");
    cursor->move_next();
    EXPECT_EQ(text("a"), "second");
    cursor->seek(std::monostate());
    EXPECT_TRUE(cursor->no_match());
}

TEST_F(Cursor, WalksEachIndexBothWays)
{
    add("b", "1");
    add("A", "2");
    add("a", "1");
    cursor->add_new();
    cursor->update();
    cursor->add_new();
    cursor->update();
    add("B", "0");
    EXPECT_EQ(walk("PrimaryKey"), (Numbers{1, 2, 3, 4, 5, 6}));
    EXPECT_EQ(walk("PRIMARYKEY", true), (Numbers{6, 5, 4, 3, 2, 1}));
    EXPECT_EQ(walk("q"), (Numbers{4, 5, 2, 3, 1, 6})) << "rows without a key come first, equal keys by number";
    EXPECT_EQ(walk("q", true), (Numbers{6, 1, 3, 2, 5, 4}));
    EXPECT_EQ(walk("a"), (Numbers{4, 5, 6, 1, 3, 2}));
}

TEST_F(Cursor, MovesBackInFromOutside)
{
    add("one");
    add("two");
    cursor->move_last();
    cursor->move_next();
    EXPECT_TRUE(cursor->eof());
    EXPECT_FALSE(cursor->bof());
    error_words(DatabaseErrorKind::other, [&] { cursor->move_next(); });
    cursor->move_previous();
    EXPECT_EQ(number(), 2);
    cursor->move_first();
    cursor->move_previous();
    EXPECT_TRUE(cursor->bof());
    EXPECT_FALSE(cursor->eof());
    error_words(DatabaseErrorKind::other, [&] { cursor->move_previous(); });
    cursor->move_next();
    EXPECT_EQ(number(), 1);
}

TEST_F(Cursor, GoesOnFromADeletedRow)
{
    for (const char* q : {"a", "b", "c"})
        add(q);
    cursor->seek(std::int64_t{2});
    cursor->delete_row();
    error_words(DatabaseErrorKind::other, [&] { static_cast<void>(cursor->field("q")); });
    error_words(DatabaseErrorKind::other, [&] { cursor->delete_row(); });
    cursor->move_next();
    EXPECT_EQ(number(), 3);
    cursor->delete_row();
    cursor->move_previous();
    EXPECT_EQ(number(), 1);
    cursor->delete_row();
    cursor->move_next();
    EXPECT_TRUE(cursor->eof());
    EXPECT_TRUE(cursor->bof()) << "the table is empty now";
}

TEST_F(Cursor, EditReadsTheRowAfresh)
{
    add("one", "old");
    cursor->move_first();
    database.execute("update qa set a = 'new'");
    EXPECT_EQ(text("a"), "old") << "a cursor holds a copy";
    cursor->edit();
    EXPECT_EQ(text("a"), "new");
    cursor->cancel();
    EXPECT_EQ(text("a"), "new");
}

TEST_F(Cursor, UpdateWritesOnlyTheColumnsThatWereSet)
{
    add("one", "old");
    cursor->move_first();
    cursor->edit();
    cursor->set("q_attempts", std::int64_t{5});
    database.execute("update qa set a = 'meanwhile'");
    cursor->update();
    cursor->seek(std::int64_t{1});
    EXPECT_EQ(text("a"), "meanwhile");
    EXPECT_EQ(std::get<std::int64_t>(cursor->field("q_attempts")), 5);
    cursor->edit();
    cursor->update();
    EXPECT_EQ(text("a"), "meanwhile") << "an edit without a change is fine";
}

TEST_F(Cursor, GoesByTheNewKeyAfterAnEdit)
{
    add("a");
    add("b");
    add("c");
    cursor->set_index("q");
    cursor->move_first();
    cursor->edit();
    cursor->set("q", std::string("bb"));
    cursor->update();
    cursor->move_next();
    EXPECT_EQ(text("q"), "c");
}

TEST_F(Cursor, CancelKeepsTheFormerRow)
{
    add("one");
    cursor->move_first();
    cursor->add_new();
    cursor->set("q", std::string("dropped"));
    cursor->cancel();
    EXPECT_EQ(text("q"), "one");
    error_words(DatabaseErrorKind::other, [&] { cursor->update(); });
    error_words(DatabaseErrorKind::other, [&] { cursor->set("q", {}); });
    EXPECT_EQ(count(database), 1);
}

TEST_F(Cursor, AMoveDropsTheRowInProgress)
{
    add("one");
    cursor->move_first();
    cursor->edit();
    cursor->set("q", std::string("dropped"));
    cursor->move_first();
    EXPECT_EQ(text("q"), "one");
    error_words(DatabaseErrorKind::other, [&] { cursor->update(); });
}

TEST_F(Cursor, NullSurvivesAReadAndWrite)
{
    add("one");
    cursor->move_first();
    cursor->edit();
    cursor->set("q_date_last_test", 46341.25);
    cursor->update();
    EXPECT_EQ(std::get<double>(cursor->field("q_date_last_test")), 46341.25);
    cursor->edit();
    cursor->set("q_date_last_test", cursor->field("a_date_last_test"));
    cursor->update();
    cursor->seek(std::int64_t{1});
    EXPECT_TRUE(is_null("q_date_last_test"));
}

TEST_F(Cursor, ReportsARowThatVanished)
{
    add("one");
    add("two");
    cursor->move_first();
    cursor->edit();
    cursor->set("q", std::string("changed"));
    database.execute("delete from qa where cnt = 1");
    EXPECT_EQ(error_words(DatabaseErrorKind::other, [&] { cursor->update(); }), "The row is no longer there.");
    cursor->cancel();
    error_words(DatabaseErrorKind::other, [&] { cursor->edit(); });
    error_words(DatabaseErrorKind::other, [&] { static_cast<void>(cursor->field("q")); });
    cursor->move_next();
    EXPECT_EQ(number(), 2);
    database.execute("delete from qa");
    EXPECT_EQ(error_words(DatabaseErrorKind::other, [&] { cursor->delete_row(); }), "The row is no longer there.");
}

TEST_F(Cursor, ATextThatIsTooLongIsRefusedAndTheRowStaysInProgress)
{
    std::string longest;
    for (int i = 0; i < 200; ++i)
        longest += "\xC3\xA9";
    cursor->add_new();
    cursor->set("a", longest);
    EXPECT_EQ(error_words(DatabaseErrorKind::constraint, [&] { cursor->set("q", std::string(213, 'x')); }),
              "The text in column q has 213 characters; 200 fit.");
    error_words(DatabaseErrorKind::constraint, [&] { cursor->set("q", std::string(201, '\0')); });
    cursor->set("q", std::string("fits"));
    cursor->update();
    EXPECT_EQ(text("a"), longest);
}

TEST_F(Cursor, AnErrorInUpdateWritesNothingAndKeepsTheRowInProgress)
{
    const auto params = database.open_table("params");
    for (const char* name : {"one", "two"}) {
        params->add_new();
        params->set("param", std::string(name));
        params->update();
    }
    params->add_new();
    params->set("param", std::string("ONE"));
    EXPECT_EQ(error_words(DatabaseErrorKind::constraint, [&] { params->update(); }),
              "There is already a row with this value in column param.");
    EXPECT_EQ(std::get<std::string>(params->field("param")), "ONE");
    EXPECT_EQ(count(database, "Select count(0) from params"), 2);
    params->set("param", std::string("three"));
    params->update();
    EXPECT_EQ(count(database, "Select count(0) from params"), 3);
    params->add_new();
    EXPECT_EQ(error_words(DatabaseErrorKind::constraint, [&] { params->update(); }),
              "The column param must have a value.");
}

TEST_F(Cursor, UnknownNamesAreErrors)
{
    add("one");
    cursor->move_first();
    error_words(DatabaseErrorKind::other, [&] { cursor->set_index("qq"); });
    error_words(DatabaseErrorKind::other, [&] { static_cast<void>(cursor->field("qq")); });
    cursor->edit();
    error_words(DatabaseErrorKind::other, [&] { cursor->set("qq", {}); });
    error_words(DatabaseErrorKind::other, [&] { static_cast<void>(database.open_table("qq")); });
}

TEST_F(Cursor, WritesNothingWhileARecordsetIsOpen)
{
    add("one");
    cursor->move_first();
    cursor->edit();
    cursor->set("q", std::string("two"));
    auto rows = database.open_recordset("select q from qa");
    for (const auto& use : std::vector<std::function<void()>>{
             [&] { cursor->update(); }, [&] { cursor->add_new(); }, [&] { cursor->edit(); },
             [&] { cursor->delete_row(); }, [&] { database.begin(); }, [&] { database.execute("delete from qa"); }})
        EXPECT_EQ(error_words(DatabaseErrorKind::other, use), "A recordset is still open.");
    rows.reset();
    cursor->update();
    EXPECT_EQ(count(database, "Select count(0) from qa where q = 'TWO'"), 1);
}

TEST_F(Cursor, KeepsTextsWithAnyBytes)
{
    const std::string odd("a\0b\xF0\x9F\x98\x80\"'%_", 12);
    add(odd);
    cursor->move_first();
    EXPECT_EQ(text("q"), odd);
    cursor->set_index("q");
    cursor->seek(odd);
    EXPECT_FALSE(cursor->no_match());
}

} // namespace
} // namespace cuedrill::platform::sqlite::test
