#include "platform/sqlite/support.h"

namespace cuedrill::platform::sqlite::test {
namespace {

class Like : public CourseTest {
protected:
    /// The questions that match a condition, in order, each followed by a blank.
    [[nodiscard]] std::string found(const std::string& condition)
    {
        std::string all;
        const auto rows = database.open_recordset("Select q from qa where " + condition + " order by q");
        for (; !rows->eof(); rows->move_next())
            all += std::get<std::string>(rows->field(0)) + " ";
        return all;
    }

    /// The text of the error that a condition causes.
    [[nodiscard]] std::string refusal(const std::string& condition)
    {
        return error_words(DatabaseErrorKind::other, [&] { static_cast<void>(found(condition)); });
    }
};

TEST_F(Like, FindsTextsByAPatternWithoutRegardToCase)
{
    for (const char* text : {"ABCd", "xabc", "abx", "Abc", "b1", "abc%"})
        add(text);
    EXPECT_EQ(found("q like 'abc*'"), "Abc abc% ABCd ");
    EXPECT_EQ(found("q like '*ABC'"), "Abc xabc ");
    EXPECT_EQ(found("q like '?bc'"), "Abc ");
    EXPECT_EQ(found("q like '[A-B]#'"), "b1 ");
    EXPECT_EQ(found("q like '[a-C]b[!X]*'"), "Abc abc% ABCd ");
    EXPECT_EQ(found("q like 'abc%'"), "abc% ");
    EXPECT_EQ(found("q not like '*b*'"), "");
    EXPECT_EQ(found("q not like 'a*'"), "b1 xabc ");
}

// A range search in an index would follow other rules than the pattern.
TEST_F(Like, IsNotTurnedIntoASearchInAnIndex)
{
    for (const char* sql : {"explain query plan Select * from qa where q like 'abc*'",
                            "explain query plan Select * from qa where q like 'abc%' order by q"}) {
        const auto plan = database.open_recordset(sql);
        EXPECT_TRUE(std::get<std::string>(plan->field("detail")).starts_with("SCAN qa")) << sql;
    }
}

TEST_F(Like, OfNullIsNull)
{
    add("one");
    database.execute("insert into qa (a) values ('no question')");
    for (const char* value : {"null like 'a'", "'a' like null", "null like null", "null like '['"}) {
        const auto rows = database.open_recordset(std::string("Select ") + value);
        EXPECT_TRUE(std::holds_alternative<std::monostate>(rows->field(0))) << value;
    }
    EXPECT_EQ(count(database, "Select count(0) from qa where q like '*'"), 1);
    EXPECT_EQ(count(database, "Select count(0) from qa where q not like 'x'"), 1);
}

TEST_F(Like, TakesNumbersAsTheirTexts)
{
    for (int i = 0; i < 12; ++i)
        add("x");
    EXPECT_EQ(count(database, "Select count(0) from qa where cnt like '1*'"), 4);
    EXPECT_EQ(count(database, "Select count(0) from qa where cnt like '#'"), 9);
    EXPECT_EQ(count(database, "Select 12 like 12"), 1);
    EXPECT_EQ(count(database, "Select 1.5 like '1.#'"), 1);
}

TEST_F(Like, TakesDoubledApostrophesForOne)
{
    add("don't");
    add("' escape '");
    EXPECT_EQ(found("q like '*''T'"), "don't ");
    EXPECT_EQ(found("q like '*'' ESCAPE ''*'"), "' escape ' ");
}

TEST_F(Like, WithAnEscapeCharacterIsTheEngines)
{
    EXPECT_EQ(count(database, "Select 'a%c' like 'A!%_' escape '!'"), 1);
    EXPECT_EQ(count(database, "Select 'abc' like 'a*' escape '!'"), 0);
}

TEST_F(Like, ReportsAMalformedPatternAsItWasGiven)
{
    add("one");
    EXPECT_EQ(refusal("q like '*[AB*'"), "The pattern \"*[AB*\" has a \"[\" without a \"]\".");
    EXPECT_EQ(refusal("q like '*[Z-a]*'"), "The pattern \"*[Z-a]*\" has a range that runs backwards.");
    EXPECT_EQ(refusal("not q like '['"), "The pattern \"[\" has a \"[\" without a \"]\".");
}

TEST_F(Like, CanBeAskedAgainAfterAnError)
{
    add("one");
    const std::string first = refusal("q like '*[*'");
    EXPECT_EQ(refusal("q like '*[*'"), first);
    EXPECT_EQ(found("q like '*n*'"), "one ");
    database.execute("update qa set a = 'written'");
    EXPECT_EQ(refusal("q like '*[*'"), first);
    reopen();
    EXPECT_EQ(found("q like '*n*'"), "one ");
}

TEST_F(Like, ThatFailsChangesNothing)
{
    add("one");
    add("two");
    EXPECT_EQ(error_words(DatabaseErrorKind::other,
                          [&] { database.execute("update qa set a = 'written' where q = 'one' or q like '['"); }),
              "The pattern \"[\" has a \"[\" without a \"]\".");
    EXPECT_EQ(count(database, "Select count(0) from qa where a = 'written'"), 0);
}

TEST_F(Like, ReadsItsPatternOnce)
{
    for (int i = 0; i < 10; ++i)
        add("text");
    const std::size_t before = compare.foldings;
    EXPECT_EQ(count(database, "Select count(0) from qa where q like '*X*'"), 10);
    EXPECT_EQ(compare.foldings - before, 11U) << "each text and the pattern";
}

TEST_F(Like, TakesThePatternOfEachRow)
{
    add("abc", "A*");
    add("abd", "*c");
    add("xbc", "?B[cd]");
    EXPECT_EQ(found("q like a"), "abc xbc ");
    EXPECT_EQ(found("'abd' like a"), "abc xbc ");
}

TEST_F(Like, ThatCannotBeComparedIsAnError)
{
    add("one");
    compare.fail = true;
    EXPECT_EQ(refusal("q like '*n*'"), "Texts could not be compared.");
    compare.fail = false;
    EXPECT_EQ(found("q like '*n*'"), "one ");
}

} // namespace
} // namespace cuedrill::platform::sqlite::test
