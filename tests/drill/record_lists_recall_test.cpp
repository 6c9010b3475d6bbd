#include "drill/display.h"
#include "drill/last_list.h"
#include "drill/record_editor.h"
#include "record_lists_fixture.h"
#include "store/course.h"

namespace cuedrill::drill {
namespace {

using fakes::Operation;

class RecalledList : public EitherDirectionLists {};

INSTANTIATE_TEST_SUITE_P(Directions, RecalledList, testing::Bool(), direction_name);

TEST_P(RecalledList, is_the_last_one_without_answers)
{
    add("France?", "Paris").asked.level(2);
    add("two\r\nlines", "b");
    open_course();
    choose("m_all_q_and_a");
    database.forget();
    choose("m_recall_find_list");
    EXPECT_EQ(lines(), (Lines{"02 - France?", "00 - two\r\nlines"}));
    EXPECT_EQ(lists_shown(), 2);
    expect_status("Lines of the last list: 2");
    EXPECT_TRUE(database.statements().empty());
}

TEST_P(RecalledList, is_what_was_read_then)
{
    add("France?");
    open_course();
    choose("m_show_all");
    change_course("Delete from qa");
    EXPECT_EQ(recalled(), (Lines{"00 - France?"}));
}

TEST_P(RecalledList, before_the_first_list_is_empty)
{
    add("France?");
    open_course();
    EXPECT_TRUE(recalled().empty());
    EXPECT_TRUE(list_shown());
    expect_status("Lines of the last list: 0");
}

TEST_P(RecalledList, of_all_questions_comes_again_when_a_record_has_changed)
{
    add("France?", "Paris");
    open_course();
    choose("m_all_q_and_a");
    choose("m_recall_find_list");
    change_course("Update qa set " + asked_column("_successes") + " = 5");
    logic->last_list.rebuild_shown_list();
    EXPECT_EQ(lists_replaced(), 1);
    EXPECT_EQ(lines(), (Lines{"05 - France?  --->  Paris"}));
}

TEST_P(RecalledList, of_a_course_that_is_forgotten_is_empty)
{
    add("France?");
    open_course();
    choose("m_show_all");
    logic->last_list.forget_list();
    EXPECT_TRUE(recalled().empty());
}

/// A list that is visible while questions and answers are swapped.
class ExchangedSides : public EitherDirectionLists {
protected:
    void exchange_sides()
    {
        logic->course.params.invert = inverted = !inverted;
        logic->course.set_side_fields();
    }

    void expect_to_lead_to(const std::string& line, common::Int16 cnt)
    {
        logic->display.withdraw_question();
        click_line(line);
        expect_chosen(cnt);
    }
};

INSTANTIATE_TEST_SUITE_P(Directions, ExchangedSides, testing::Bool(), direction_name);

TEST_P(ExchangedSides, leave_the_lines_of_questions_to_their_records)
{
    add("France?", "Paris");
    add("Paris", "Texas?");
    open_course();
    choose("m_show_all");
    exchange_sides();
    EXPECT_EQ(recalled(), (Lines{"00 - France?", "00 - Paris"}));
    expect_to_lead_to("00 - France?", 1);
    expect_to_lead_to("00 - Paris", 2);
    exchange_sides();
    expect_to_lead_to("00 - Paris", 2);
}

TEST_P(ExchangedSides, leave_the_lines_of_a_search_to_their_records)
{
    add("France?", "Paris");
    add("Paris", "Texas?");
    open_course();
    find_answer("Par");
    exchange_sides();
    expect_to_lead_to(recalled().at(0), 1);
    find_question("Par");
    EXPECT_EQ(lines(), (Lines{"00 - Paris"}));
    expect_to_lead_to(lines().at(0), 1);
    exchange_sides();
    expect_to_lead_to(recalled().at(0), 1);
}

TEST_P(ExchangedSides, are_those_of_now_in_a_list_that_is_built_anew)
{
    add("France?", "Paris");
    open_course();
    choose("m_show_all");
    exchange_sides();
    choose("m_recall_find_list");
    logic->last_list.rebuild_shown_list();
    EXPECT_EQ(lines(), (Lines{"00 - Paris"}));
    expect_to_lead_to("00 - Paris", 1);
}

/// The list is still sorted by the other side. Each line now shows the answer of the first of several equal questions.
TEST_P(ExchangedSides, leave_the_answer_of_the_first_one_beside_equal_questions)
{
    add("Seine", "River?");
    add("Atlas", "Mountain?");
    add("Loire", "river?");
    add("Ebro", "RIVER?");
    open_course();
    choose("m_all_q_and_a");
    exchange_sides();
    choose("m_recall_find_list");
    logic->last_list.rebuild_shown_list();
    EXPECT_EQ(lines(), (Lines{"00 - Mountain?  --->  Atlas", "00 - RIVER?  --->  Seine", "00 - river?  --->  Seine",
                              "00 - River?  --->  Seine"}));
}

class RebuiltList : public RecordListsTest {
protected:
    void SetUp() override
    {
        add("France?", "Paris");
        add("Italy?", "Rome");
        open_course();
    }

    void rebuild() { logic->last_list.rebuild_shown_list(); }

    void expect_nothing_done()
    {
        const Lines before = lines();
        form1.journal.clear();
        database.forget();
        rebuild();
        EXPECT_TRUE(database.statements().empty());
        EXPECT_EQ(form1.journal, Lines{});
        EXPECT_EQ(lines(), before);
    }
};

TEST_F(RebuiltList, has_the_records_and_the_count_of_now)
{
    choose("m_show_all");
    change_course("Insert into qa (q, a, q_successes) values ('Spain?', 'Madrid', 4)");
    rebuild();
    EXPECT_EQ(lines(), (Lines{"00 - France?", "00 - Italy?", "04 - Spain?"}));
    expect_status("3 questions (the number on the left is the question score)");
    EXPECT_EQ(recalled(), (Lines{"00 - France?", "00 - Italy?", "04 - Spain?"}));
}

TEST_F(RebuiltList, is_none_before_the_first_list)
{
    ASSERT_TRUE(recalled().empty());
    ASSERT_TRUE(list_shown());
    expect_nothing_done();
}

TEST_F(RebuiltList, is_none_where_the_list_is_not_shown)
{
    choose("m_show_all");
    choose("m_view_stats");
    ASSERT_FALSE(list_shown());
    expect_nothing_done();
}

TEST_F(RebuiltList, is_none_after_a_search)
{
    choose("m_show_all");
    find_question("France");
    expect_nothing_done();
    find_answer("Rome");
    expect_nothing_done();
}

TEST_F(RebuiltList, is_none_of_similar_questions)
{
    show(1);
    choose("m_show_all");
    choose("m_list_similar");
    expect_nothing_done();
}

TEST_F(RebuiltList, is_none_once_it_is_forgotten)
{
    choose("m_show_all");
    logic->last_list.forget_list();
    expect_nothing_done();
}

TEST_F(RebuiltList, goes_on_after_a_search_that_has_found_nothing)
{
    choose("m_show_all");
    desktop.expect_input("String?", "Spain");
    desktop.expect_box("No records found.");
    choose("m_find_a");
    rebuild();
    EXPECT_EQ(lists_replaced(), 1);
}

TEST_F(RebuiltList, of_a_course_without_records_stays_and_ends_nothing)
{
    choose("m_show_all");
    change_course("Delete from qa");
    rebuild();
    EXPECT_TRUE(logic->course.is_open());
    EXPECT_EQ(lines(), (Lines{"00 - France?", "00 - Italy?"}));
}

TEST_F(RebuiltList, that_cannot_be_read_stays)
{
    choose("m_show_all");
    change_course("Delete from qa where cnt = 1");
    database.fail_at(Operation::open_recordset);
    expect_warning("The list is not up to date.\r\n\r\n" + unreadable());
    rebuild();
    EXPECT_EQ(lists_replaced(), 0);
    EXPECT_EQ(desktop.pointer_depth, 0);
    EXPECT_EQ(recalled(), (Lines{"00 - France?", "00 - Italy?"}));
    rebuild();
    EXPECT_EQ(lines(), (Lines{"00 - Italy?"})) << "the next time";
}

TEST_F(RebuiltList, that_cannot_be_read_keeps_no_record_from_being_saved)
{
    choose("m_show_all");
    begin_new("Spain?", "Madrid");
    database.at_each_call([this](Operation operation) {
        if (operation == Operation::open_recordset && database.statements().back() == "Select * from qa order by cnt")
            throw platform::DatabaseError(platform::DatabaseErrorKind::full, 0, "The disk is full.");
    });
    expect_warning("The list is not up to date.\r\n\r\n" + unreadable());
    toolbar(10);
    EXPECT_FALSE(logic->editor.editing());
    EXPECT_EQ(file().qa.size(), 3U);
    EXPECT_EQ(lines(), (Lines{"00 - France?", "00 - Italy?"}));
}

TEST_F(RebuiltList, says_that_it_is_not_complete)
{
    choose("m_show_all");
    change_course("Insert into qa (q, a) with recursive numbers (n) as (select 1 union all select n + 1 from numbers "
                  "where n < 9999) select 'item ' || n, 'x' from numbers");
    desktop.expect_box("Too many items found, the list is not complete.");
    rebuild();
    EXPECT_EQ(lines().size(), 10000U);
    EXPECT_EQ(lists_replaced(), 1);
}

} // namespace
} // namespace cuedrill::drill
