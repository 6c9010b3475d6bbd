#include "bank/record_search.h"
#include "common/errors.h"
#include "lists_fixture.h"

namespace cuedrill::bank {
namespace {

using fakes::Operation;

struct Searched {
    const char* name;
    bool inverted;
    bool questions; ///< otherwise the answers are searched
};

const Searched all_searched[] = {{"questions", false, true},
                                 {"answers", false, false},
                                 {"questions_of_an_inverted_course", true, true},
                                 {"answers_of_an_inverted_course", true, false}};

/// In these tests, texts and levels are those of the searched side.
class Search : public ListsOfACourse, public testing::WithParamInterface<Searched> {
protected:
    void SetUp() override { inverted = GetParam().inverted; }

    void add_text(const std::string& text, int level = 0)
    {
        const std::string other = "other " + std::to_string(++others_);
        NewRecord record = GetParam().questions ? add(text, other) : add(other, text);
        if (!GetParam().questions)
            std::swap(record.asked, record.answered);
        record.asked.level(level);
        record.answered.level(99);
    }

    void open_texts(const Lines& texts)
    {
        for (const std::string& text : texts)
            add_text(text);
        open_course();
    }

    FoundRecords find(const std::string& text)
    {
        return search(course, GetParam().questions ? course.Q_FIELD : course.A_FIELD, text);
    }

    void expect_found(const std::string& text, const Lines& lines)
    {
        const FoundRecords found = find(text);
        EXPECT_EQ(found.list.lines(), lines) << "searched: " << text;
        EXPECT_TRUE(found.complete);
        EXPECT_EQ(database.open_recordsets(), 0);
    }

    [[nodiscard]] std::string column() const { return inverted == GetParam().questions ? "a" : "q"; }

    [[nodiscard]] std::string sql(const std::string& pattern) const
    {
        return "Select * from qa where " + column() + " like '" + pattern + "' order by " + column();
    }

private:
    int others_ = 0;
};

INSTANTIATE_TEST_SUITE_P(Of, Search, testing::ValuesIn(all_searched),
                         [](const auto& searched) { return std::string(searched.param.name); });

TEST_P(Search, finds_the_texts_that_hold_the_string_in_their_order)
{
    add_text("Paris in Texas", 2);
    add_text("Rome", 3);
    add_text("Gay Paris", 12);
    open_course();
    expect_found("Paris", {"12 - Gay Paris", "02 - Paris in Texas"});
    EXPECT_EQ(database.statements(), (Lines{sql("*Paris*")}));
}

TEST_P(Search, looks_at_one_side_only)
{
    add_text("Rome");
    open_course();
    expect_found("other", {});
    expect_found("Rome", {"00 - Rome"});
}

TEST_P(Search, finds_each_of_several_records_with_one_text)
{
    open_texts({"Paris", "paris", "Paris"});
    expect_found("paris", {"00 - Paris", "00 - paris", "00 - Paris"});
}

TEST_P(Search, finds_any_case)
{
    open_texts({"\u00C9COLE Normale", "ecole"});
    expect_found("\u00E9cole n", {"00 - \u00C9COLE Normale"});
    expect_found("ECO", {"00 - ecole"});
}

TEST_P(Search, takes_apostrophes_as_they_are)
{
    open_texts({"five o'clock", "'tis", "boys''", "none"});
    expect_found("o'c", {"00 - five o'clock"});
    expect_found("'t", {"00 - 'tis"});
    expect_found("''", {"00 - boys''"});
    EXPECT_EQ(database.statements().back(), sql("*''''*"));
    EXPECT_EQ(find("'").list.list_count(), 3U);
}

TEST_P(Search, takes_a_string_of_question_marks_or_of_stars_as_it_is)
{
    open_texts({"who?", "2*3", "plain"});
    expect_found("?", {"00 - who?"});
    expect_found("??", {"00 - who?"});
    EXPECT_EQ(database.statements().back(), sql("*[??]*"));
    expect_found("*", {"00 - 2*3"});
    expect_found("***", {"00 - 2*3"});
    EXPECT_EQ(database.statements().back(), sql("*[***]*"));
}

TEST_P(Search, takes_percent_signs_and_underscores_as_they_are)
{
    open_texts({"100% sure", "1000 sure", "a_b", "axb"});
    expect_found("100%", {"00 - 100% sure"});
    expect_found("%", {"00 - 100% sure"});
    expect_found("a_b", {"00 - a_b"});
    expect_found("_", {"00 - a_b"});
    expect_found("100%sure", {});
}

TEST_P(Search, understands_patterns)
{
    open_texts({"abca", "a-b", "b then a", "year 7"});
    expect_found("a*b", {"00 - a-b", "00 - abca"});
    expect_found("a?b", {"00 - a-b"});
    expect_found("r #", {"00 - year 7"});
    expect_found("#", {"00 - year 7"});
    expect_found("[-7]", {"00 - a-b", "00 - year 7"});
    expect_found("b[!b ]", {"00 - abca"});
}

TEST_P(Search, finds_a_bracket_in_brackets)
{
    open_texts({"a[b", "a(b"});
    expect_found("[[]", {"00 - a[b"});
}

TEST_P(Search, finds_line_ends_within_a_text_and_leaves_them)
{
    open_texts({"first\r\nsecond"});
    expect_found("t*s", {"00 - first\r\nsecond"});
}

TEST_P(Search, cannot_run_what_stands_in_the_string)
{
    open_texts({"Paris", "x'; delete from qa; --"});
    const fakes::CourseContents before = file();
    expect_found("x'; delete from qa; --", {"00 - x'; delete from qa; --"});
    expect_found("' or 'a' = 'a", {});
    expect_found("x*'; delete from qa where q like '", {});
    EXPECT_EQ(file(), before);
}

TEST_P(Search, finds_nothing_in_an_empty_course)
{
    open_course();
    expect_found("Paris", {});
}

TEST_P(Search, finds_10000_texts)
{
    open_course_with_items(10000);
    const FoundRecords found = find("item");
    EXPECT_EQ(found.list.list_count(), 10000U);
    EXPECT_TRUE(found.complete);
}

TEST_P(Search, refuses_more_than_10000_texts)
{
    open_course_with_items(10001);
    try {
        static_cast<void>(find("item"));
        FAIL() << "not refused";
    } catch (const common::OutOfRangeError& error) {
        EXPECT_STREQ(error.what(), "Too many items found: 10000 are the most that a list can hold.");
    }
    EXPECT_EQ(database.open_recordsets(), 0);
}

TEST_P(Search, refuses_a_score_beyond_16_bits)
{
    open_texts({"Paris"});
    drop_checks();
    database.execute("Update qa set " + column() + "_successes = 32768");
    EXPECT_THROW(static_cast<void>(find("Paris")), common::OverflowError);
    EXPECT_EQ(database.open_recordsets(), 0);
}

TEST_P(Search, tells_a_malformed_pattern_from_a_course_that_cannot_be_read)
{
    open_texts({"Paris"});
    const auto kind_of_failure = [this](const std::string& text) {
        try {
            static_cast<void>(find(text));
        } catch (const platform::DatabaseError& error) {
            return error.kind();
        }
        ADD_FAILURE() << "not refused: " << text;
        return platform::DatabaseErrorKind::missing;
    };
    EXPECT_EQ(kind_of_failure("Par["), platform::DatabaseErrorKind::other);
    database.fail_at(Operation::open_recordset);
    EXPECT_EQ(kind_of_failure("Paris"), platform::DatabaseErrorKind::full);
}

class SearchOfLongTexts : public ListsOfACourse {};

TEST_F(SearchOfLongTexts, ends_before_it_takes_too_much_memory)
{
    open_course_with_long_texts(37, 900'000);
    const FoundRecords found = search(course, course.Q_FIELD, "item");
    EXPECT_EQ(found.list.list_count(), 35U);
    EXPECT_FALSE(found.complete);
}

/// Finds the record that a line leads to.
class LineOfAList : public EitherDirectionLists {
protected:
    [[nodiscard]] std::optional<std::int64_t> by_question(const std::string& line)
    {
        return record_of_line(course, course.Q_FIELD, line);
    }
    [[nodiscard]] std::optional<std::int64_t> by_answer(const std::string& line)
    {
        return record_of_line(course, course.A_FIELD, line);
    }
};

INSTANTIATE_TEST_SUITE_P(Directions, LineOfAList, testing::Bool(), direction_name);

TEST_P(LineOfAList, leads_to_the_record_with_its_text)
{
    add("France?", "Paris");
    add("Paris", "Texas");
    add("Capital of France and of the world", "x");
    open_course();
    EXPECT_EQ(by_question("00 - Paris"), 2);
    EXPECT_EQ(by_answer("00 - Paris"), 1);
    EXPECT_EQ(by_question("02 - france?"), 1);
    EXPECT_EQ(by_question("00 - France?  --->  something else"), 1);
    EXPECT_EQ(by_question("00 - Capital of* France and of* the world"), 3);
}

TEST_P(LineOfAList, leads_to_the_first_of_equal_questions)
{
    add("Italy?");
    add("Twice?");
    add("twice?");
    add("TWICE?");
    open_course();
    for (const char* const line : {"00 - Twice?", "00 - twice?", "00 - TWICE?"})
        EXPECT_EQ(by_question(line), 2) << line;
}

TEST_P(LineOfAList, of_a_text_with_hyphens_apostrophes_and_blanks_leads_to_it)
{
    add(" well-known - o'clock \"x\" ");
    add("other");
    open_course();
    EXPECT_EQ(by_question("00 -  well-known - o'clock \"x\" "), 1);
}

TEST_P(LineOfAList, that_does_not_have_the_text_whole_leads_nowhere)
{
    add("2*3?");
    add("a ---> b?");
    add("  France?  ");
    add("first\r\nsecond");
    open_course();
    for (const char* const line : {"00 - 2*3?", "00 - a ---> b?", "00 - France?  --->  Paris", "00 - first second"})
        EXPECT_EQ(by_question(line), std::nullopt) << line;
    EXPECT_EQ(by_question("00 - first\r\nsecond"), 4);
}

TEST_P(LineOfAList, may_lead_to_a_number_beyond_16_bits)
{
    add("last").asked.number(32768);
    open_course();
    EXPECT_EQ(by_question("00 - last"), 32768);
}

TEST_P(LineOfAList, leads_nowhere_where_the_course_cannot_be_read)
{
    add("France?");
    open_course();
    database.fail_at(Operation::query);
    EXPECT_THROW(static_cast<void>(by_question("00 - France?")), platform::DatabaseError);
}

} // namespace
} // namespace cuedrill::bank
