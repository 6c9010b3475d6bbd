#include "record_lists_fixture.h"

namespace cuedrill::bank {
namespace {

using fakes::Operation;
using platform::BoxAnswer;

struct Searched {
    const char* name;
    bool inverted;
    bool questions; ///< the questions are searched, not the answers
};

const Searched all_searched[] = {{"questions", false, true},
                                 {"answers", false, false},
                                 {"questions_of_an_inverted_course", true, true},
                                 {"answers_of_an_inverted_course", true, false}};

/// What is said about texts and levels is about the side that is searched.
class Search : public RecordListsTest, public testing::WithParamInterface<Searched> {
protected:
    void SetUp() override { inverted = GetParam().inverted; }

    void add_text(const std::string& text, int level = 0)
    {
        const std::string other = "other " + std::to_string(++m_others);
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

    void find(std::optional<std::string> text)
    {
        if (GetParam().questions)
            find_question(std::move(text));
        else
            find_answer(std::move(text));
    }

    /// A search that ends with this box.
    void find_in_vain(const std::string& text, const platform::MessageBox& box)
    {
        desktop.expect_input("String?", text);
        desktop.expect_box_like(box, BoxAnswer::ok);
        if (GetParam().questions)
            lists.m_find_q();
        else
            lists.m_find_a();
    }

    /// The same search on the other side.
    void find_on_other_side(std::optional<std::string> text)
    {
        if (GetParam().questions)
            find_answer(std::move(text));
        else
            find_question(std::move(text));
    }

    void expect_found(const std::string& text, const Lines& lines)
    {
        const int lists_before = screen.lists_shown;
        find(text);
        EXPECT_EQ(screen.lines, lines) << "searched: " << text;
        EXPECT_EQ(screen.lists_shown, lists_before + 1) << "searched: " << text;
    }

    void expect_nothing_found(const std::string& text)
    {
        const int lists_before = screen.lists_shown;
        find_in_vain(text, {.text = "No records found."});
        EXPECT_EQ(screen.lists_shown, lists_before) << "searched: " << text;
    }

    [[nodiscard]] std::string column() const { return inverted == GetParam().questions ? "a" : "q"; }

    [[nodiscard]] std::string sql(const std::string& pattern) const
    {
        return "Select * from qa where " + column() + " like '" + pattern + "' order by " + column();
    }

private:
    int m_others = 0;
};

INSTANTIATE_TEST_SUITE_P(Of, Search, testing::ValuesIn(all_searched),
                         [](const auto& searched) { return std::string(searched.param.name); });

TEST_P(Search, lists_the_texts_that_hold_the_string_in_their_order)
{
    add_text("Paris in Texas", 2);
    add_text("Rome", 3);
    add_text("Gay Paris", 12);
    open_course();
    find("Paris");
    EXPECT_EQ(screen.lines, (Lines{"12 - Gay Paris", "02 - Paris in Texas"}));
    EXPECT_TRUE(screen.shown);
    expect_status(GetParam().questions ? "2 questions found." : "2 answers found.");
    EXPECT_EQ(database.statements(), (std::vector<std::string>{sql("*Paris*")}));
}

TEST_P(Search, looks_at_one_side_only)
{
    add_text("Rome");
    open_course();
    expect_nothing_found("other");
    expect_found("Rome", {"00 - Rome"});
}

TEST_P(Search, lists_each_of_several_records_with_one_text)
{
    open_texts({"Paris", "paris", "Paris"});
    find("paris");
    EXPECT_EQ(screen.lines, (Lines{"00 - Paris", "00 - paris", "00 - Paris"}));
}

TEST_P(Search, finds_any_case)
{
    open_texts({"\u00C9COLE Normale", "ecole"});
    expect_found("\u00E9cole n", {"00 - \u00C9COLE Normale"});
    expect_found("ECO", {"00 - ecole"});
}

TEST_P(Search, drops_blanks_around_the_string_and_composes_it)
{
    open_texts({"une \u00E9cole", "une ecole"});
    find("  e\u0301cole ");
    EXPECT_EQ(screen.lines, (Lines{"00 - une \u00E9cole"}));
    EXPECT_EQ(database.statements(), (std::vector<std::string>{sql("*\u00E9cole*")}));
}

TEST_P(Search, of_nothing_does_nothing)
{
    open_texts({"Paris"});
    for (const std::optional<std::string>& text :
         {std::optional<std::string>(), std::optional<std::string>(""), std::optional<std::string>("   ")})
        find(text);
    EXPECT_TRUE(database.statements().empty());
    EXPECT_EQ(screen.lists_shown, 0);
    EXPECT_TRUE(status.texts.empty());
    EXPECT_TRUE(desktop.boxes.empty());
}

TEST_P(Search, offers_the_last_string)
{
    open_texts({"Paris"});
    find("  Paris ");
    find(std::nullopt);
    find("");
    expect_nothing_found("Rome");
    find_on_other_side(std::nullopt);
    Lines offered;
    for (const platform::InputBox& input : desktop.inputs)
        offered.push_back(input.default_text);
    EXPECT_EQ(offered, (Lines{"", "Paris", "Paris", "Paris", "Rome"}));
}

TEST_P(Search, takes_apostrophes_as_they_are)
{
    open_texts({"five o'clock", "'tis", "boys''", "none"});
    expect_found("o'c", {"00 - five o'clock"});
    expect_found("'t", {"00 - 'tis"});
    expect_found("''", {"00 - boys''"});
    EXPECT_EQ(database.statements().back(), sql("*''''*"));
    find("'");
    EXPECT_EQ(screen.lines.size(), 3U);
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
    expect_nothing_found("100%sure");
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
    expect_nothing_found("' or 'a' = 'a");
    expect_nothing_found("x*'; delete from qa where q like '");
    EXPECT_EQ(file(), before);
}

TEST_P(Search, reads_with_a_busy_pointer)
{
    open_texts({"Paris"});
    int depth = 0;
    database.at_each_call([&](Operation) { depth = desktop.pointer_depth; });
    find("Paris");
    EXPECT_EQ(depth, 1);
    EXPECT_EQ(desktop.pointer_depth, 0);
}

TEST_P(Search, lists_10000_texts_without_a_word)
{
    open_course_with_items(10000);
    find("item");
    EXPECT_EQ(screen.lines.size(), 10000U);
    expect_status(GetParam().questions ? "10000 questions found." : "10000 answers found.");
}

TEST_P(Search, of_an_empty_course_finds_nothing)
{
    open_course();
    expect_nothing_found("Paris");
    EXPECT_TRUE(course.is_open());
}

/// How a search ends without a list of its own. The list before is one of the other side.
class FruitlessSearch : public Search {
protected:
    void SetUp() override
    {
        Search::SetUp();
        for (const char* const text : {"Rome", "Paris"})
            add_text(text);
    }

    /// Lists one record by its text on the other side.
    void open_with_list()
    {
        open_course();
        find_on_other_side("other 2");
        ASSERT_EQ(screen.lines, (Lines{"99 - other 2"}));
        said = status.texts.size();
    }

    static platform::MessageBox given_up(const std::string& reason)
    {
        return {.text = "The search was given up.\r\n\r\n" + reason, .icon = platform::BoxIcon::exclamation};
    }

    /// Told about a statement that the database refuses for its pattern.
    [[nodiscard]] platform::MessageBox malformed(const std::string& statement)
    {
        return given_up(refusal_of(statement) + "\r\n\r\nTo find [ itself, type [[].");
    }

    void expect_list_before()
    {
        EXPECT_EQ(screen.lists_shown, 1);
        EXPECT_EQ(status.texts.size(), said);
        EXPECT_EQ(recalled(), (Lines{"99 - other 2"}));
        lists.listav_click("99 - other 2");
        EXPECT_EQ(screen.chosen, (std::vector<common::Int16>{2}));
    }

    std::size_t said = 0;
};

INSTANTIATE_TEST_SUITE_P(Of, FruitlessSearch, testing::ValuesIn(all_searched),
                         [](const auto& searched) { return std::string(searched.param.name); });

TEST_P(FruitlessSearch, leaves_the_list_before_when_it_is_cancelled)
{
    open_with_list();
    find(std::nullopt);
    expect_list_before();
}

TEST_P(FruitlessSearch, leaves_the_list_before_when_nothing_is_found)
{
    open_with_list();
    expect_nothing_found("Madrid");
    expect_list_before();
}

TEST_P(FruitlessSearch, leaves_the_list_before_when_the_pattern_is_malformed)
{
    open_with_list();
    find_in_vain("[", malformed(sql("*[*")));
    expect_list_before();
}

TEST_P(FruitlessSearch, leaves_the_list_before_when_the_course_cannot_be_read)
{
    open_with_list();
    database.fail_at(Operation::open_recordset);
    find_in_vain("Paris", given_up(unreadable()));
    expect_list_before();
}

TEST_P(FruitlessSearch, leaves_the_list_before_when_a_score_does_not_fit_16_bits)
{
    open_with_list();
    engine.database.execute("Pragma ignore_check_constraints = on");
    database.execute("Update qa set " + column() + "_successes = 32768 where cnt = 2");
    find_in_vain("Paris", given_up("Overflow: the score 32768 is outside -32768 to 32767."));
    expect_list_before();
}

TEST_P(FruitlessSearch, leaves_the_list_before_when_more_than_10000_texts_are_found)
{
    open_course_with_items(10001);
    find_on_other_side("other 2");
    said = status.texts.size();
    find_in_vain("item", given_up("Too many items found: 10000 are the most that a list can hold."));
    expect_list_before();
}

TEST_P(FruitlessSearch, may_be_repeated)
{
    open_with_list();
    find_in_vain("Par[", malformed(sql("*Par[*")));
    expect_found("Paris", {"00 - Paris"});
    lists.listav_click("00 - Paris");
    EXPECT_EQ(screen.chosen, (std::vector<common::Int16>{2}));
}

} // namespace
} // namespace cuedrill::bank
