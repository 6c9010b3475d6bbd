#include "common/errors.h"
#include "drill/record_editor.h"
#include "record_lists_fixture.h"
#include "store/course.h"

namespace cuedrill::drill {
namespace {

using fakes::Operation;
using platform::BoxAnswer;

class ListClick : public EitherDirectionLists {
protected:
    /// The first record is on display.
    void open_course_on_first()
    {
        open_course();
        show(1);
    }

    void open_three()
    {
        add("France?", "Paris");
        add("Italy?", "Rome");
        add("Spain?", "Madrid");
        open_course_on_first();
    }

    /// Clicks on a line without a record: the record on display and the list stay.
    void expect_no_match(const std::string& line)
    {
        const common::Int16 current_before = logic->state.shown.current_cnt();
        const std::string shown_before = question();
        desktop.expect_box_like({.text = "nomatch in listav_click."}, BoxAnswer::ok);
        click_line(line);
        expect_status("Use Find, Find answer to reach it.");
        EXPECT_EQ(logic->state.shown.current_cnt(), current_before) << line;
        EXPECT_EQ(question(), shown_before) << line;
        EXPECT_TRUE(list_shown()) << line;
    }
};

INSTANTIATE_TEST_SUITE_P(Directions, ListClick, testing::Bool(), direction_name);

TEST_P(ListClick, puts_the_record_of_the_line_on_display)
{
    open_three();
    choose("m_show_all");
    click(1);
    expect_chosen(2);
}

TEST_P(ListClick, finds_the_record_of_a_line_with_an_answer)
{
    add("  France?  ", "Paris");
    add("Italy?", "Rome");
    open_course_on_first();
    choose("m_all_q_and_a");
    click(1);
    expect_chosen(2);
    choose("m_all_q_and_a");
    click_line("00 - Italy?  --->  something else");
    expect_chosen(2);
    choose("m_all_q_and_a");
    expect_no_match(lines().at(0));
}

TEST_P(ListClick, that_finds_no_answer_leads_to_the_question)
{
    add("Which sign?", "a * b");
    open_course_on_first();
    find_answer("b");
    desktop.expect_box("nomatch in listav_click.");
    click(0);
    expect_status("Use Find, Find question to reach it.");
}

TEST_P(ListClick, finds_the_record_of_a_marked_line)
{
    add("Kings of France");
    add("Capital of France and of the world");
    open_course_on_first();
    choose("m_list_similar");
    ASSERT_EQ(lines().at(0), "00 - Capital of* France and of* the world");
    click(0);
    expect_chosen(2);
}

TEST_P(ListClick, finds_the_first_of_equal_questions)
{
    add("Italy?");
    add("Twice?");
    add("twice?");
    add("TWICE?");
    open_course_on_first();
    for (const std::size_t place : {3U, 2U}) {
        choose("m_show_all");
        click(place);
        expect_chosen(2);
    }
}

TEST_P(ListClick, finds_by_the_answer_after_a_search_of_answers)
{
    add("France?", "Paris");
    add("Paris", "Texas");
    open_course();
    find_answer("a");
    ASSERT_EQ(lines(), (Lines{"00 - Paris", "00 - Texas"}));
    click(0);
    expect_chosen(1);
}

TEST_P(ListClick, finds_by_the_question_again_after_any_other_list)
{
    add("France?", "Paris");
    add("Paris", "France");
    add("Paris now", "z");
    open_course_on_first();
    find_answer("Paris");
    find_question("Paris");
    click(0);
    expect_chosen(2);
    show(1);
    find_answer("Paris");
    choose("m_show_all");
    click(1);
    expect_chosen(2);
    show(3);
    find_answer("Paris");
    choose("m_list_similar");
    ASSERT_EQ(lines(), (Lines{"00 - Paris*"}));
    click(0);
    expect_chosen(2);
}

TEST_P(ListClick, finds_by_the_answer_in_a_recalled_list_of_answers)
{
    add("France?", "Paris");
    add("Paris", "Texas");
    open_course();
    find_answer("Paris");
    choose("m_recall_find_list");
    click(0);
    expect_chosen(1);
}

TEST_P(ListClick, tells_that_a_record_has_vanished)
{
    open_three();
    choose("m_show_all");
    change_course("Delete from qa where cnt = 2");
    expect_no_match(lines().at(1));
}

TEST_P(ListClick, does_not_find_a_question_that_holds_a_star_or_an_arrow)
{
    add("2*3?");
    add("a ---> b?");
    open_course_on_first();
    choose("m_show_all");
    expect_no_match("00 - 2*3?");
    expect_no_match("00 - a ---> b?");
    find_question("2*3");
    ASSERT_EQ(lines(), (Lines{"00 - 2*3?"}));
    expect_no_match("00 - 2*3?");
}

TEST_P(ListClick, finds_a_text_with_a_line_end_only_where_the_list_has_kept_it)
{
    add("France?", "one\r\ntwo");
    add("first\r\nsecond", "Paris");
    add("second");
    open_course_on_first();
    choose("m_show_all");
    expect_no_match(lines().at(1));
    choose("m_recall_find_list");
    click(1);
    expect_chosen(2);
    show(1);
    find_question("first");
    click(0);
    expect_chosen(2);
    show(3);
    choose("m_list_similar");
    EXPECT_TRUE(lines().empty()) << "a line end is no separator";
    find_answer("two");
    click(0);
    expect_chosen(1);
}

TEST_P(ListClick, finds_a_question_with_hyphens_apostrophes_and_blanks)
{
    add(" well-known - o'clock \"x\" ");
    add("other");
    open_course();
    choose("m_show_all");
    click(0);
    expect_chosen(1);
}

TEST_P(ListClick, refuses_a_number_beyond_16_bits)
{
    add("France?");
    add("last").asked.number(32767);
    add("one more").asked.number(32768);
    open_course_on_first();
    choose("m_show_all");
    desktop.expect_box("Overflow: the record number 32768 is outside -32768 to 32767.");
    click(2);
    EXPECT_EQ(logic->state.shown.current_cnt(), 1);
    EXPECT_EQ(question(), "France?");
    EXPECT_TRUE(list_shown());
    click(1);
    expect_chosen(32767);
}

TEST_P(ListClick, that_cannot_read_the_course_chooses_nothing_and_may_be_repeated)
{
    open_three();
    choose("m_show_all");
    database.fail_at(Operation::query);
    desktop.expect_box(unreadable());
    click(1);
    EXPECT_EQ(logic->state.shown.current_cnt(), 1);
    EXPECT_EQ(question(), "France?");
    click(1);
    expect_chosen(2);
}

TEST_P(ListClick, saves_what_is_being_typed_first)
{
    open_three();
    choose("m_show_all");
    begin_new("Greece?", "Athens");
    expect_question_about_saving(BoxAnswer::yes);
    click(1);
    EXPECT_EQ(file().qa.size(), 4U);
    EXPECT_EQ(lines(), (Lines{"00 - France?", "00 - Italy?", "00 - Spain?", "00 - Greece?"}));
    EXPECT_FALSE(logic->editor.editing());
    expect_chosen(2);
}

TEST_P(ListClick, drops_what_is_being_typed_when_the_user_does_not_want_it)
{
    open_three();
    choose("m_show_all");
    begin_new("Greece?", "Athens");
    expect_question_about_saving(BoxAnswer::no);
    click(1);
    EXPECT_EQ(file().qa.size(), 3U);
    EXPECT_FALSE(logic->editor.editing());
    expect_chosen(2);
}

TEST_P(ListClick, stays_with_a_record_that_is_rejected)
{
    open_three();
    choose("m_show_all");
    begin_new("Greece?", "");
    expect_question_about_saving(BoxAnswer::yes);
    desktop.expect_box("The answer is empty. No saving performed.");
    click(1);
    EXPECT_TRUE(list_shown());
    EXPECT_EQ(logic->state.shown.current_cnt(), 0);
    EXPECT_EQ(question(), "Greece?");
    EXPECT_EQ(file().qa.size(), 3U);
}

TEST_P(ListClick, stays_with_a_record_that_the_course_refuses)
{
    open_three();
    choose("m_show_all");
    begin_new("Greece?", "Athens");
    database.fail_at(Operation::commit);
    expect_question_about_saving(BoxAnswer::yes);
    desktop.expect_box("The question and its answer are not saved.\r\n\r\n" + unreadable());
    click(1);
    EXPECT_TRUE(list_shown());
    EXPECT_TRUE(logic->editor.editing());
    EXPECT_EQ(question(), "Greece?");
}

/// The first line has no record.
class FruitlessClickInEditor : public EitherDirectionLists {
protected:
    void SetUp() override
    {
        EitherDirectionLists::SetUp();
        add("Which sign?  a * b");
        open_course();
        choose("m_show_all");
    }

    void click_in_vain()
    {
        desktop.expect_box("nomatch in listav_click.");
        click(0);
        EXPECT_FALSE(logic->editor.editing());
        EXPECT_TRUE(list_shown());
    }
};

INSTANTIATE_TEST_SUITE_P(Directions, FruitlessClickInEditor, testing::Bool(), direction_name);

TEST_P(FruitlessClickInEditor, tells_the_other_search_where_nothing_was_typed)
{
    begin_new("", "");
    click_in_vain();
    expect_status("Use Find, Find answer to reach it.");
}

TEST_P(FruitlessClickInEditor, leaves_what_was_told_of_the_typed_texts)
{
    begin_new("Greece?", "Athens");
    expect_question_about_saving(BoxAnswer::no);
    click_in_vain();
    expect_status("The changes are not saved.");
}

} // namespace
} // namespace cuedrill::drill
