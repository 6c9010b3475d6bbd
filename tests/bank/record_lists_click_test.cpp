#include "record_lists_fixture.h"

namespace cuedrill::bank {
namespace {

using fakes::Operation;
using platform::BoxAnswer;

using Numbers = std::vector<common::Int16>;

class ListClick : public EitherDirectionLists {
protected:
    /// The first record is the current one.
    void open_course_on_first()
    {
        open_course();
        course.current_cnt = 1;
    }

    void open_three()
    {
        add("France?", "Paris");
        add("Italy?", "Rome");
        add("Spain?", "Madrid");
        open_course_on_first();
    }

    /// Clicks on a line of the list that is shown.
    void click(std::size_t place)
    {
        // The text is gone with the line when others are shown meanwhile.
        const std::string line = screen.lines.at(place);
        lists.listav_click(line);
    }

    void expect_no_match(const std::string& line)
    {
        const common::Int16 current_before = course.current_cnt;
        const Numbers chosen_before = screen.chosen;
        desktop.expect_box_like({.text = "nomatch in listav_click."}, BoxAnswer::ok);
        lists.listav_click(line);
        expect_status("Use Find, Find answer to reach it.");
        EXPECT_EQ(course.current_cnt, current_before) << line;
        EXPECT_EQ(screen.chosen, chosen_before) << line;
    }

    /// A click on the first line, which leaves the editor and finds nothing.
    void expect_no_match_in_editor()
    {
        desktop.expect_box("nomatch in listav_click.");
        click(0);
        EXPECT_FALSE(editor.editing());
        EXPECT_TRUE(screen.chosen.empty());
    }
};

INSTANTIATE_TEST_SUITE_P(Directions, ListClick, testing::Bool(), direction_name);

TEST_P(ListClick, puts_the_record_of_the_line_on_display)
{
    open_three();
    lists.m_show_all();
    click(1);
    EXPECT_EQ(course.current_cnt, 2);
    EXPECT_EQ(screen.chosen, Numbers{2});
}

TEST_P(ListClick, finds_the_record_of_a_line_with_an_answer)
{
    add("  France?  ", "Paris");
    add("Italy?", "Rome");
    open_course_on_first();
    lists.m_all_q_and_a();
    click(1);
    EXPECT_EQ(screen.chosen, Numbers{2});
    lists.listav_click("00 - Italy?  --->  something else");
    EXPECT_EQ(screen.chosen, (Numbers{2, 2}));
    expect_no_match(screen.lines.at(0));
}

TEST_P(ListClick, that_finds_no_answer_leads_to_the_question)
{
    add("Which sign?", "a * b");
    open_course_on_first();
    find_answer("b");
    desktop.expect_box("nomatch in listav_click.");
    lists.listav_click(screen.lines.at(0));
    expect_status("Use Find, Find question to reach it.");
}

TEST_P(ListClick, finds_the_record_of_a_marked_line)
{
    add("Kings of France");
    add("Capital of France and of the world");
    open_course_on_first();
    screen.question = "Kings of France";
    lists.list_similar();
    ASSERT_EQ(screen.lines.at(0), "00 - Capital of* France and of* the world");
    click(0);
    EXPECT_EQ(screen.chosen, Numbers{2});
}

TEST_P(ListClick, finds_the_first_of_equal_questions)
{
    add("Italy?");
    add("Twice?");
    add("twice?");
    add("TWICE?");
    open_course_on_first();
    lists.m_show_all();
    click(3);
    click(2);
    EXPECT_EQ(screen.chosen, (Numbers{2, 2}));
}

TEST_P(ListClick, finds_by_the_answer_after_a_search_of_answers)
{
    add("France?", "Paris");
    add("Paris", "Texas");
    open_course_on_first();
    find_answer("a");
    ASSERT_EQ(screen.lines, (Lines{"00 - Paris", "00 - Texas"}));
    click(0);
    EXPECT_EQ(screen.chosen, Numbers{1});
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
    find_answer("Paris");
    lists.m_show_all();
    click(1);
    find_answer("Paris");
    screen.question = "Paris now";
    lists.list_similar();
    ASSERT_EQ(screen.lines, (Lines{"00 - Paris*"}));
    click(0);
    EXPECT_EQ(screen.chosen, (Numbers{2, 2, 2}));
}

TEST_P(ListClick, finds_by_the_answer_in_a_recalled_list_of_answers)
{
    add("France?", "Paris");
    add("Paris", "Texas");
    open_course_on_first();
    find_answer("Paris");
    lists.recall_find_list();
    click(0);
    EXPECT_EQ(screen.chosen, Numbers{1});
}

TEST_P(ListClick, tells_that_a_record_has_vanished)
{
    open_three();
    lists.m_show_all();
    database.execute("Delete from qa where cnt = 2");
    expect_no_match(screen.lines.at(1));
    EXPECT_TRUE(screen.shown);
}

TEST_P(ListClick, does_not_find_a_question_that_holds_a_star_or_an_arrow)
{
    add("2*3?");
    add("a ---> b?");
    open_course_on_first();
    lists.m_show_all();
    expect_no_match("00 - 2*3?");
    expect_no_match("00 - a ---> b?");
    find_question("2*3");
    ASSERT_EQ(screen.lines, (Lines{"00 - 2*3?"}));
    expect_no_match("00 - 2*3?");
}

TEST_P(ListClick, finds_a_text_with_a_line_end_only_where_the_list_has_kept_it)
{
    add("France?", "one\r\ntwo");
    add("first\r\nsecond", "Paris");
    add("second");
    open_course_on_first();
    lists.m_show_all();
    expect_no_match(screen.lines.at(1));
    lists.recall_find_list();
    click(1);
    find_question("first");
    click(0);
    screen.question = "second";
    lists.list_similar();
    EXPECT_TRUE(screen.lines.empty()) << "a line end is no separator";
    find_answer("two");
    click(0);
    EXPECT_EQ(screen.chosen, (Numbers{2, 2, 1}));
}

TEST_P(ListClick, finds_a_question_with_hyphens_apostrophes_and_blanks)
{
    add(" well-known - o'clock \"x\" ");
    add("other");
    open_course();
    lists.m_show_all();
    click(0);
    EXPECT_EQ(screen.chosen, Numbers{1});
}

TEST_P(ListClick, refuses_a_number_beyond_16_bits)
{
    add("France?");
    add("last").asked.number(32767);
    add("one more").asked.number(32768);
    open_course_on_first();
    lists.m_show_all();
    try {
        click(2);
        FAIL() << "not refused";
    } catch (const common::OverflowError& error) {
        EXPECT_STREQ(error.what(), "Overflow: the record number 32768 is outside -32768 to 32767.");
    }
    EXPECT_EQ(course.current_cnt, 1);
    EXPECT_TRUE(screen.chosen.empty());
    click(1);
    EXPECT_EQ(screen.chosen, Numbers{32767});
}

TEST_P(ListClick, that_cannot_read_the_course_chooses_nothing_and_may_be_repeated)
{
    open_three();
    lists.m_show_all();
    database.fail_at(Operation::query);
    EXPECT_THROW(click(1), platform::DatabaseError);
    EXPECT_EQ(course.current_cnt, 1);
    EXPECT_TRUE(screen.chosen.empty());
    click(1);
    EXPECT_EQ(screen.chosen, Numbers{2});
}

TEST_P(ListClick, saves_what_is_being_typed_first)
{
    open_three();
    lists.m_show_all();
    begin_new("Greece?", "Athens");
    expect_question_about_saving(BoxAnswer::yes);
    click(1);
    EXPECT_EQ(file().qa.size(), 4U);
    EXPECT_EQ(screen.lines, (Lines{"00 - France?", "00 - Italy?", "00 - Spain?", "00 - Greece?"}));
    EXPECT_FALSE(editor.editing());
    EXPECT_EQ(course.current_cnt, 2);
    EXPECT_EQ(screen.chosen, Numbers{2});
}

TEST_P(ListClick, drops_what_is_being_typed_when_the_user_does_not_want_it)
{
    open_three();
    lists.m_show_all();
    begin_new("Greece?", "Athens");
    expect_question_about_saving(BoxAnswer::no);
    click(1);
    EXPECT_EQ(file().qa.size(), 3U);
    EXPECT_FALSE(editor.editing());
    EXPECT_EQ(screen.chosen, Numbers{2});
}

TEST_P(ListClick, stays_with_a_record_that_is_rejected)
{
    open_three();
    lists.m_show_all();
    begin_new("Greece?", "");
    expect_question_about_saving(BoxAnswer::yes);
    desktop.expect_box("The answer is empty. No saving performed.");
    click(1);
    EXPECT_TRUE(screen.chosen.empty());
    EXPECT_EQ(course.current_cnt, 0);
    EXPECT_EQ(view.typed.question, "Greece?");
    EXPECT_EQ(file().qa.size(), 3U);
}

TEST_P(ListClick, stays_with_a_record_that_the_course_refuses)
{
    open_three();
    lists.m_show_all();
    begin_new("Greece?", "Athens");
    database.fail_at(Operation::commit);
    expect_question_about_saving(BoxAnswer::yes);
    desktop.expect_box("The question and its answer are not saved.\r\n\r\nThe course " + course.db_path +
                       " could not be read or written.\r\n\r\nThe disk is full.");
    click(1);
    EXPECT_TRUE(screen.chosen.empty());
    EXPECT_TRUE(editor.editing());
    EXPECT_EQ(view.typed.question, "Greece?");
}

TEST_P(ListClick, tells_the_other_search_where_the_editor_was_open_and_nothing_typed)
{
    add("Which sign?  a * b");
    open_course_on_first();
    lists.m_show_all();
    begin_new("", "");
    expect_no_match_in_editor();
    expect_status("Use Find, Find answer to reach it.");
}

TEST_P(ListClick, leaves_what_was_told_of_the_typed_texts)
{
    add("Which sign?  a * b");
    open_course_on_first();
    lists.m_show_all();
    status.texts.clear();
    begin_new("Greece?", "Athens");
    expect_question_about_saving(BoxAnswer::no);
    expect_no_match_in_editor();
    EXPECT_TRUE(status.texts.empty());
}

} // namespace
} // namespace cuedrill::bank
