#include "record_lists_fixture.h"

namespace cuedrill::bank {
namespace {

using fakes::Operation;

class RecalledList : public EitherDirectionLists {};

INSTANTIATE_TEST_SUITE_P(Directions, RecalledList, testing::Bool(), direction_name);

TEST_P(RecalledList, is_the_last_one_without_answers)
{
    add("France?", "Paris").asked.level(2);
    add("two\r\nlines", "b");
    open_course();
    lists.m_all_q_and_a();
    database.forget();
    lists.recall_find_list();
    EXPECT_EQ(screen.lines, (Lines{"02 - France?", "00 - two\r\nlines"}));
    EXPECT_EQ(screen.lists_shown, 2);
    expect_status("Lines of the last list: 2");
    EXPECT_TRUE(database.statements().empty());
    EXPECT_EQ(database.count(Operation::query), 0);
}

TEST_P(RecalledList, is_what_was_read_then)
{
    add("France?");
    open_course();
    lists.m_show_all();
    database.execute("Delete from qa");
    EXPECT_EQ(recalled(), (Lines{"00 - France?"}));
}

TEST_P(RecalledList, before_the_first_list_is_empty)
{
    add("France?");
    open_course();
    lists.recall_find_list();
    EXPECT_TRUE(screen.shown);
    EXPECT_TRUE(screen.lines.empty());
    expect_status("Lines of the last list: 0");
}

TEST_P(RecalledList, of_all_questions_comes_again_when_a_record_has_changed)
{
    add("France?", "Paris");
    open_course();
    lists.m_all_q_and_a();
    lists.recall_find_list();
    database.execute("Update qa set " + asked_column("_successes") + " = 5");
    lists.rebuild_shown_list();
    EXPECT_EQ(screen.lists_replaced, 1);
    EXPECT_EQ(screen.lines, (Lines{"05 - France?  --->  Paris"}));
}

TEST_P(RecalledList, of_a_course_that_is_forgotten_is_empty)
{
    add("France?");
    open_course();
    lists.m_show_all();
    lists.forget_list();
    EXPECT_TRUE(recalled().empty());
}

/// A list that stands while the sides of the course are exchanged.
class ExchangedSides : public EitherDirectionLists {
protected:
    void exchange_sides()
    {
        course.params.invert = !course.params.invert;
        course.set_side_fields();
        lists.exchange_sides();
    }

    void expect_chosen(const std::string& line, common::Int16 cnt)
    {
        screen.chosen.clear();
        lists.listav_click(line);
        EXPECT_EQ(screen.chosen, (std::vector<common::Int16>{cnt})) << line;
    }
};

INSTANTIATE_TEST_SUITE_P(Directions, ExchangedSides, testing::Bool(), direction_name);

TEST_P(ExchangedSides, leave_the_lines_of_questions_to_their_records)
{
    add("France?", "Paris");
    add("Paris", "Texas?");
    open_course();
    lists.m_show_all();
    exchange_sides();
    EXPECT_EQ(recalled(), (Lines{"00 - France?", "00 - Paris"}));
    expect_chosen("00 - France?", 1);
    expect_chosen("00 - Paris", 2);
    exchange_sides();
    expect_chosen("00 - Paris", 2);
}

TEST_P(ExchangedSides, leave_the_lines_of_a_search_to_their_records)
{
    add("France?", "Paris");
    add("Paris", "Texas?");
    open_course();
    find_answer("Par");
    exchange_sides();
    expect_chosen(recalled().at(0), 1);
    find_question("Par");
    EXPECT_EQ(screen.lines, (Lines{"00 - Paris"}));
    expect_chosen(screen.lines.at(0), 1);
    exchange_sides();
    expect_chosen(recalled().at(0), 1);
}

TEST_P(ExchangedSides, are_those_of_now_in_a_list_that_is_built_anew)
{
    add("France?", "Paris");
    open_course();
    lists.m_show_all();
    exchange_sides();
    lists.recall_find_list();
    lists.rebuild_shown_list();
    EXPECT_EQ(screen.lines, (Lines{"00 - Paris"}));
    expect_chosen("00 - Paris", 1);
}

/// Proves that a list whose order is that of the other side now has the answer of the first record beside each.
TEST_P(ExchangedSides, leave_the_answer_of_the_first_one_beside_equal_questions)
{
    add("Seine", "River?");
    add("Atlas", "Mountain?");
    add("Loire", "river?");
    add("Ebro", "RIVER?");
    open_course();
    lists.m_all_q_and_a();
    exchange_sides();
    lists.recall_find_list();
    lists.rebuild_shown_list();
    EXPECT_EQ(screen.lines, (Lines{"00 - Mountain?  --->  Atlas", "00 - RIVER?  --->  Seine",
                                   "00 - river?  --->  Seine", "00 - River?  --->  Seine"}));
}

class RebuiltList : public RecordListsTest {
protected:
    void SetUp() override
    {
        add("France?", "Paris");
        add("Italy?", "Rome");
        open_course();
    }

    void expect_nothing_done()
    {
        const int lists_shown = screen.lists_shown;
        const auto said = status.texts;
        database.forget();
        lists.rebuild_shown_list();
        EXPECT_TRUE(database.statements().empty());
        EXPECT_EQ(screen.lists_replaced, 0);
        EXPECT_EQ(screen.lists_shown, lists_shown);
        EXPECT_EQ(status.texts, said);
    }
};

TEST_F(RebuiltList, has_the_records_and_the_count_of_now)
{
    lists.m_show_all();
    database.execute("Insert into qa (q, a, q_successes) values ('Spain?', 'Madrid', 4)");
    lists.rebuild_shown_list();
    EXPECT_EQ(screen.lines, (Lines{"00 - France?", "00 - Italy?", "04 - Spain?"}));
    expect_status("3 questions (the number on the left is the question score)");
    EXPECT_EQ(recalled(), (Lines{"00 - France?", "00 - Italy?", "04 - Spain?"}));
}

TEST_F(RebuiltList, is_none_before_the_first_list)
{
    screen.shown = true;
    expect_nothing_done();
}

TEST_F(RebuiltList, is_none_where_the_list_is_not_shown)
{
    lists.m_show_all();
    screen.shown = false;
    expect_nothing_done();
}

TEST_F(RebuiltList, is_none_after_a_search)
{
    lists.m_show_all();
    find_question("France");
    expect_nothing_done();
    find_answer("Rome");
    expect_nothing_done();
}

TEST_F(RebuiltList, is_none_of_similar_questions)
{
    lists.m_show_all();
    screen.question = "France?";
    lists.list_similar();
    expect_nothing_done();
}

TEST_F(RebuiltList, is_none_once_it_is_forgotten)
{
    lists.m_show_all();
    lists.forget_list();
    expect_nothing_done();
}

TEST_F(RebuiltList, goes_on_after_a_search_that_has_found_nothing)
{
    lists.m_show_all();
    desktop.expect_input("String?", "Spain");
    desktop.expect_box("No records found.");
    lists.m_find_a();
    lists.rebuild_shown_list();
    EXPECT_EQ(screen.lists_replaced, 1);
}

TEST_F(RebuiltList, of_a_course_without_records_stays_and_ends_nothing)
{
    lists.m_show_all();
    database.execute("Delete from qa");
    lists.rebuild_shown_list();
    EXPECT_TRUE(course.is_open());
    EXPECT_EQ(screen.lines, (Lines{"00 - France?", "00 - Italy?"}));
}

TEST_F(RebuiltList, that_cannot_be_read_stays)
{
    lists.m_show_all();
    database.execute("Delete from qa where cnt = 1");
    database.fail_at(Operation::open_recordset);
    expect_warning("The list is not up to date.\r\n\r\n" + unreadable());
    lists.rebuild_shown_list();
    EXPECT_EQ(screen.lists_replaced, 0);
    EXPECT_EQ(desktop.pointer_depth, 0);
    EXPECT_EQ(recalled(), (Lines{"00 - France?", "00 - Italy?"}));
    lists.rebuild_shown_list();
    EXPECT_EQ(screen.lines, (Lines{"00 - Italy?"})) << "the next time";
}

TEST_F(RebuiltList, that_cannot_be_read_keeps_no_record_from_being_saved)
{
    lists.m_show_all();
    begin_new("Spain?", "Madrid");
    database.fail_at(Operation::open_recordset);
    expect_warning("The list is not up to date.\r\n\r\n" + unreadable());
    EXPECT_EQ(editor.save_record(), SaveResult::saved);
    EXPECT_EQ(file().qa.size(), 3U);
    EXPECT_EQ(screen.lines, (Lines{"00 - France?", "00 - Italy?"}));
}

TEST_F(RebuiltList, says_that_it_is_not_complete)
{
    lists.m_show_all();
    database.execute(
        "Insert into qa (q, a) with recursive numbers (n) as (select 1 union all select n + 1 from numbers "
        "where n < 9999) select 'item ' || n, 'x' from numbers");
    desktop.expect_box("Too many items found, the list is not complete.");
    lists.rebuild_shown_list();
    EXPECT_EQ(screen.lines.size(), 10000U);
    EXPECT_EQ(screen.lists_replaced, 1);
}

} // namespace
} // namespace cuedrill::bank
