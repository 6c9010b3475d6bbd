#include "record_lists_fixture.h"
#include "store/course.h"

#include <optional>
#include <utility>

namespace cuedrill::drill {
namespace {

using fakes::Operation;
using platform::BoxAnswer;

struct Searched {
    const char* name;
    bool inverted;
    bool questions; ///< search the questions; otherwise the answers
};

const Searched all_searched[] = {{"questions", false, true},
                                 {"answers", false, false},
                                 {"questions_of_an_inverted_course", true, true},
                                 {"answers_of_an_inverted_course", true, false}};

/// "Text" refers to the side that is searched. The n-th record has "other n" on the other side.
class SearchCommand : public RecordListsTest, public testing::WithParamInterface<Searched> {
protected:
    void SetUp() override { inverted = GetParam().inverted; }

    void open_texts(const Lines& texts)
    {
        for (const std::string& text : texts)
            add_text(text);
        open_course();
    }

    void add_text(const std::string& text)
    {
        const std::string other = "other " + std::to_string(++others_);
        NewRecord record = GetParam().questions ? add(text, other) : add(other, text);
        record.asked.level(GetParam().questions ? 3 : 4);
        record.answered.level(GetParam().questions ? 4 : 3);
    }

    void find(std::optional<std::string> text)
    {
        if (GetParam().questions)
            find_question(std::move(text));
        else
            find_answer(std::move(text));
    }

    /// A search that ends with this box and finds nothing.
    void find_in_vain(const std::string& text, const platform::MessageBox& box)
    {
        desktop.expect_input("String?", text);
        desktop.expect_box_like(box, BoxAnswer::ok);
        choose(GetParam().questions ? "m_find_q" : "m_find_a");
    }

    /// The same search on the other side.
    void find_on_other_side(std::optional<std::string> text)
    {
        if (GetParam().questions)
            find_answer(std::move(text));
        else
            find_question(std::move(text));
    }

    [[nodiscard]] std::string column() const { return inverted == GetParam().questions ? "a" : "q"; }

    [[nodiscard]] std::string sql(const std::string& pattern) const
    {
        return "Select * from qa where " + column() + " like '" + pattern + "' order by " + column();
    }

private:
    int others_ = 0;
};

INSTANTIATE_TEST_SUITE_P(Of, SearchCommand, testing::ValuesIn(all_searched),
                         [](const auto& searched) { return std::string(searched.param.name); });

TEST_P(SearchCommand, lists_the_texts_that_hold_the_string_in_their_order)
{
    open_texts({"Paris in Texas", "Rome", "Gay Paris"});
    find("Paris");
    EXPECT_EQ(lines(), (Lines{"03 - Gay Paris", "03 - Paris in Texas"}));
    EXPECT_TRUE(list_shown());
    EXPECT_EQ(lists_shown(), 1);
    expect_status(GetParam().questions ? "2 questions found." : "2 answers found.");
    EXPECT_EQ(database.statements(), (Lines{sql("*Paris*")}));
}

TEST_P(SearchCommand, drops_blanks_around_the_string_and_composes_it)
{
    open_texts({"une \u00E9cole", "une ecole"});
    find("  e\u0301cole ");
    EXPECT_EQ(lines(), (Lines{"03 - une \u00E9cole"}));
    EXPECT_EQ(database.statements(), (Lines{sql("*\u00E9cole*")}));
}

TEST_P(SearchCommand, for_nothing_does_nothing)
{
    open_texts({"Paris"});
    for (const std::optional<std::string>& text :
         {std::optional<std::string>(), std::optional<std::string>(""), std::optional<std::string>("   ")})
        find(text);
    EXPECT_TRUE(database.statements().empty());
    EXPECT_EQ(form1.journal, Lines{});
    EXPECT_TRUE(desktop.boxes.empty());
}

TEST_P(SearchCommand, offers_the_last_string)
{
    open_texts({"Paris"});
    find("  Paris ");
    find(std::nullopt);
    find("");
    find_in_vain("Rome", {.text = "No records found."});
    find_on_other_side(std::nullopt);
    Lines offered;
    for (const platform::InputBox& input : desktop.inputs)
        offered.push_back(input.default_text);
    EXPECT_EQ(offered, (Lines{"", "Paris", "Paris", "Paris", "Rome"}));
}

TEST_P(SearchCommand, reads_with_a_busy_pointer)
{
    open_texts({"Paris"});
    int depth = 0;
    database.at_each_call([&](Operation) { depth = desktop.pointer_depth; });
    find("Paris");
    EXPECT_EQ(depth, 1);
    EXPECT_EQ(desktop.pointer_depth, 0);
}

TEST_P(SearchCommand, lists_10000_texts_without_a_word)
{
    open_course_with_items(10000);
    find("item");
    EXPECT_EQ(lines().size(), 10000U);
    expect_status(GetParam().questions ? "10000 questions found." : "10000 answers found.");
}

TEST_P(SearchCommand, in_an_empty_course_finds_nothing_and_goes_on)
{
    open_course();
    find_in_vain("Paris", {.text = "No records found."});
    EXPECT_TRUE(logic->course.is_open());
    EXPECT_FALSE(ended);
}

/// Searches that produce no list. The previous list shows the other side.
class FruitlessSearch : public SearchCommand {
protected:
    void SetUp() override
    {
        SearchCommand::SetUp();
        for (const char* const text : {"Rome", "Paris"})
            add_text(text);
    }

    /// Lists one record by its text on the other side.
    void open_with_list()
    {
        open_course();
        find_on_other_side("other 2");
        ASSERT_EQ(lines(), (Lines{"04 - other 2"}));
        said_ = status();
    }

    static platform::MessageBox given_up(const std::string& reason)
    {
        return {.text = "The search was given up.\r\n\r\n" + reason, .icon = platform::BoxIcon::exclamation};
    }

    /// The message about a statement that the database rejects because of its pattern.
    [[nodiscard]] platform::MessageBox malformed(const std::string& statement)
    {
        return given_up(refusal_of(statement) + "\r\n\r\nTo find [ itself, type [[].");
    }

    void expect_list_before()
    {
        EXPECT_EQ(lists_shown(), 1);
        expect_status(said_);
        EXPECT_EQ(recalled(), (Lines{"04 - other 2"}));
        click_line("04 - other 2");
        expect_chosen(2);
    }

private:
    std::string said_;
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
    find_in_vain("Madrid", {.text = "No records found."});
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

/// The advice about brackets is only for patterns that the database rejects.
TEST_P(FruitlessSearch, says_nothing_of_a_bracket_when_the_course_cannot_be_read)
{
    open_with_list();
    database.fail_at(Operation::open_recordset);
    find_in_vain("[x]", given_up(unreadable()));
}

TEST_P(FruitlessSearch, leaves_the_list_before_when_a_score_does_not_fit_16_bits)
{
    open_with_list();
    change_course("Pragma ignore_check_constraints = on");
    change_course("Update qa set " + column() + "_successes = 32768 where cnt = 2");
    find_in_vain("Paris", given_up("Overflow: the score 32768 is outside -32768 to 32767."));
    change_course("Update qa set " + column() + "_successes = 3 where cnt = 2");
    expect_list_before();
}

TEST_P(FruitlessSearch, leaves_the_list_before_when_more_than_10000_texts_are_found)
{
    open_course_with_items(10001);
    find_on_other_side("other 2");
    find_in_vain("item", given_up("Too many items found: 10000 are the most that a list can hold."));
    EXPECT_EQ(lists_shown(), 1);
    EXPECT_EQ(recalled(), (Lines{"04 - other 2"}));
}

TEST_P(FruitlessSearch, may_be_repeated)
{
    open_with_list();
    find_in_vain("Par[", malformed(sql("*Par[*")));
    find("Paris");
    EXPECT_EQ(lines(), (Lines{"03 - Paris"}));
    click(0);
    expect_chosen(2);
}

/// A course from another program, with texts far longer than this program allows.
class SearchOfLongTexts : public RecordListsTest {};

TEST_F(SearchOfLongTexts, says_that_the_list_is_not_complete)
{
    open_course();
    change_course("PRAGMA ignore_check_constraints = ON");
    // Sorting long texts is what takes the time.
    change_course("Drop index qa_q");
    change_course("Insert into qa (q, a) with recursive numbers (n) as (select 1 union all select n + 1 from numbers "
                  "where n < 37) select n || ' item ' || replace(hex(zeroblob(450000)), '0', 'x'), 'x' from numbers");
    desktop.expect_input("String?", "item");
    desktop.expect_box_like({.text = "Too many items found, the list is not complete."}, BoxAnswer::ok);
    choose("m_find_q");
    EXPECT_EQ(lines().size(), 35U);
    expect_status("35 questions found.");
}

} // namespace
} // namespace cuedrill::drill
