#include "common/text.h"
#include "drill/last_list.h"
#include "drill/record_editor.h"
#include "record_lists_fixture.h"
#include "store/course.h"

#include <tuple>

namespace cuedrill::drill {
namespace {

using fakes::Operation;
using platform::BoxAnswer;

struct Order {
    const char* entry;  ///< menu entry
    const char* clause; ///< with "SIDE" for the letter of the side that is asked
    Lines lines;
};

const Order orders[] = {
    {"m_show_all", "order by cnt", {"03 - Delta?", "00 - alpha?", "01 - Charlie?", "12 - Bravo?"}},
    {"m_view_all_q", "order by cnt", {"03 - Delta?", "00 - alpha?", "01 - Charlie?", "12 - Bravo?"}},
    {"m_show_all_alphabetically", "order by SIDE", {"00 - alpha?", "12 - Bravo?", "01 - Charlie?", "03 - Delta?"}},
    {"m_all_q_and_a",
     "order by SIDE",
     {"00 - alpha?  --->  one", "12 - Bravo?  --->  two", "01 - Charlie?  --->  three", "03 - Delta?  --->  four"}},
    {"m_show_sort_by_score", "order by SIDE_successes", {"00 - alpha?", "01 - Charlie?", "03 - Delta?", "12 - Bravo?"}},
    {"m_show_sort_last_show",
     "order by SIDE_date_last_show",
     {"00 - alpha?", "12 - Bravo?", "03 - Delta?", "01 - Charlie?"}},
    {"m_history", "order by SIDE_date_last_show desc", {"01 - Charlie?", "03 - Delta?", "12 - Bravo?", "00 - alpha?"}},
    {"m_view_history",
     "order by SIDE_date_last_show desc",
     {"01 - Charlie?", "03 - Delta?", "12 - Bravo?", "00 - alpha?"}},
};

class EachOrder : public RecordListsTest, public testing::WithParamInterface<std::tuple<Order, bool>> {
protected:
    void SetUp() override { inverted = std::get<bool>(GetParam()); }

    void show() { choose(std::get<Order>(GetParam()).entry); }

    /// Four records, in a different order for each sort key.
    void open_four()
    {
        add_with_level("Delta?", "four", 3).asked.shown_ago(48h);
        add("alpha?", "one").answered.level(2).shown_ago(24h);
        add_with_level("Charlie?", "three", 1).asked.shown_ago(12h);
        add_with_level("Bravo?", "two", 12).asked.shown_ago(120h);
        open_course();
    }

    NewRecord add_with_level(const std::string& question, const std::string& answer, int level)
    {
        NewRecord record = add(question, answer);
        record.asked.level(level);
        record.answered.level(20 - level);
        return record;
    }

    [[nodiscard]] std::string sql() const
    {
        return "Select * from qa " +
               common::replace_all(std::get<Order>(GetParam()).clause, "SIDE", inverted ? "a" : "q");
    }
};

INSTANTIATE_TEST_SUITE_P(Directions, EachOrder, testing::Combine(testing::ValuesIn(orders), testing::Bool()),
                         [](const auto& parameters) {
                             return std::string(std::get<Order>(parameters.param).entry) +
                                    (std::get<bool>(parameters.param) ? "_inverted" : "");
                         });

class MarkedLine : public EitherDirectionLists {
protected:
    /// Three questions, of which the second has the lowest level.
    void open_three_and_show(common::Int16 cnt)
    {
        add("France?", "Paris").asked.level(3);
        add("Italy?", "Rome").asked.level(1);
        add("Spain?", "Madrid").asked.level(2);
        open_course();
        show(cnt);
    }
};

INSTANTIATE_TEST_SUITE_P(Directions, MarkedLine, testing::Bool(), direction_name);

TEST_P(EachOrder, lists_all_questions)
{
    open_four();
    show();
    EXPECT_EQ(lines(), std::get<Order>(GetParam()).lines);
    EXPECT_TRUE(list_shown());
    EXPECT_EQ(lists_shown(), 1);
    expect_status("4 questions (the number on the left is the question score)");
}

TEST_P(EachOrder, asks_the_course_once)
{
    open_four();
    show();
    EXPECT_EQ(database.statements(), (Lines{sql()}));
    EXPECT_EQ(database.count(Operation::query), 0);
}

TEST_P(EachOrder, reads_with_a_busy_pointer)
{
    open_four();
    int depth = 0;
    database.at_each_call([&](Operation) { depth = desktop.pointer_depth; });
    show();
    EXPECT_EQ(depth, 1);
    EXPECT_EQ(desktop.pointer_depth, 0);
}

TEST_P(EachOrder, comes_again_when_a_record_has_changed)
{
    open_four();
    show();
    change_course("Update qa set q = 'Foxtrot?', a = 'Foxtrot?' where cnt = 2");
    database.forget();
    logic->last_list.rebuild_shown_list();
    const Lines& expected = std::get<Order>(GetParam()).lines;
    EXPECT_EQ(database.statements(), (Lines{sql()}));
    EXPECT_EQ(lists_replaced(), 1);
    EXPECT_EQ(lists_shown(), 1) << "the place in the list stays";
    EXPECT_EQ(lines().size(), expected.size());
    EXPECT_NE(lines(), expected);
    const Lines shown_anew = lines();
    show();
    EXPECT_EQ(lines(), shown_anew);
}

TEST_P(EachOrder, of_an_empty_course_ends_the_program)
{
    open_course();
    clock.advance_seconds(90);
    desktop.expect_box_like({.text = "Database empty."}, BoxAnswer::ok);
    show();
    EXPECT_TRUE(ended);
    EXPECT_FALSE(logic->course.is_open());
    EXPECT_EQ(file().number("time_ever"), 90);
    EXPECT_EQ(lists_shown(), 0);
}

TEST_P(EachOrder, that_cannot_be_read_leaves_the_list_before)
{
    open_four();
    find_answer("one");
    const Lines before = lines();
    database.fail_at(Operation::open_recordset);
    desktop.expect_box(unreadable());
    show();
    EXPECT_EQ(lists_shown(), 1);
    EXPECT_EQ(desktop.pointer_depth, 0);
    EXPECT_EQ(recalled(), before);
    click(0);
    expect_chosen(2); // its lines are still answers
}

class QuestionLists : public EitherDirectionLists {};

INSTANTIATE_TEST_SUITE_P(Directions, QuestionLists, testing::Bool(), direction_name);

TEST_P(QuestionLists, leave_alone_what_is_being_typed)
{
    add("France?");
    open_course();
    begin_new("Spain?", "Madrid");
    choose("m_show_all");
    EXPECT_TRUE(logic->editor.editing());
    EXPECT_EQ(question(), "Spain?");
    EXPECT_EQ(answer(), "Madrid");
    EXPECT_TRUE(desktop.boxes.empty());
    EXPECT_TRUE(form1.Text_q.has_focus());
}

TEST_P(QuestionLists, tell_that_an_answer_has_vanished_meanwhile)
{
    add("Twice?", "first");
    add("twice?", "second");
    open_course();
    database.at_each_call([this](Operation operation) {
        if (operation == Operation::query)
            change_course("Delete from qa");
    });
    desktop.expect_box_like({.text = "nomatch in function 'risposta_item_selezionato'."}, BoxAnswer::ok);
    choose("m_all_q_and_a");
    EXPECT_EQ(lines(), (Lines{"00 - Twice?  --->  first", "00 - twice?  --->  "}));
}

TEST_P(QuestionLists, whose_answers_cannot_be_read_leave_the_list_before)
{
    add("Twice?", "first");
    add("twice?", "second");
    open_course();
    choose("m_show_all");
    const Lines before = lines();
    database.fail_at(Operation::query);
    desktop.expect_box(unreadable());
    choose("m_all_q_and_a");
    EXPECT_EQ(lists_shown(), 1);
    EXPECT_EQ(recalled(), before);
    database.forget();
    logic->last_list.rebuild_shown_list();
    EXPECT_EQ(database.statements(), (Lines{"Select * from qa order by cnt"}));
    EXPECT_EQ(lines(), before) << "still without answers";
}

TEST_P(QuestionLists, with_a_score_beyond_16_bits_leave_the_list_before)
{
    add("France?");
    open_course();
    choose("m_show_all");
    change_course("Pragma ignore_check_constraints = on");
    change_course("Update qa set " + asked_column("_successes") + " = 32768");
    desktop.expect_box("Overflow: the score 32768 is outside -32768 to 32767.");
    choose("m_history");
    EXPECT_EQ(database.open_recordsets(), 0);
    EXPECT_EQ(desktop.pointer_depth, 0);
    EXPECT_EQ(recalled(), (Lines{"00 - France?"}));
}

TEST_P(QuestionLists, of_10000_records_need_no_word)
{
    open_course_with_items(10000);
    choose("m_show_all");
    EXPECT_EQ(lines().size(), 10000U);
    EXPECT_TRUE(desktop.boxes.empty());
    expect_status("10000 questions (the number on the left is the question score)");
}

TEST_P(QuestionLists, say_that_they_are_not_complete)
{
    open_course_with_items(10001);
    for (const char* const entry_name : {"m_show_all", "m_all_q_and_a"}) {
        desktop.expect_box_like({.text = "Too many items found, the list is not complete."}, BoxAnswer::ok);
        choose(entry_name);
        EXPECT_EQ(lines().size(), 10000U);
        expect_status("10000 questions (the number on the left is the question score)");
    }
    EXPECT_EQ(recalled().size(), 10000U);
}

class ListOfNothing : public RecordListsTest {
protected:
    void SetUp() override
    {
        open_course();
        begin_new("France?", "Paris");
        desktop.expect_box("Database empty.");
    }
};

TEST_F(ListOfNothing, ends_the_program_with_the_typed_record_saved)
{
    expect_question_about_saving(BoxAnswer::yes);
    choose("m_show_all");
    EXPECT_TRUE(ended);
    EXPECT_FALSE(logic->course.is_open());
    EXPECT_EQ(file().qa.size(), 1U);
}

TEST_F(ListOfNothing, ends_the_program_without_the_typed_record)
{
    expect_question_about_saving(BoxAnswer::no);
    choose("m_show_all");
    EXPECT_TRUE(ended);
    EXPECT_FALSE(logic->course.is_open());
    EXPECT_TRUE(file().qa.empty());
}

TEST_F(ListOfNothing, does_not_end_the_program_over_a_record_that_could_not_be_saved)
{
    form1.Text_a.text_value = "";
    expect_question_about_saving(BoxAnswer::yes);
    desktop.expect_box("The answer is empty. No saving performed.");
    choose("m_show_all");
    EXPECT_FALSE(ended);
    EXPECT_TRUE(logic->course.is_open());
    EXPECT_EQ(lists_shown(), 0);
}

TEST_P(MarkedLine, is_that_of_the_question_on_display)
{
    open_three_and_show(2);
    choose("m_show_all");
    EXPECT_EQ(form1.listav.marked, 1U);
    choose("m_show_sort_by_score");
    EXPECT_EQ(form1.listav.marked, 0U);
    choose("m_recall_find_list");
    EXPECT_EQ(form1.listav.marked, 0U);
}

TEST_P(MarkedLine, stays_that_of_the_question_on_display_when_the_record_is_saved)
{
    open_three_and_show(2);
    choose("m_show_all");
    ASSERT_EQ(form1.listav.marked, 1U);
    toolbar(8);
    user([this] { form1.type(form1.Text_q, "Old "); });
    toolbar(10);
    EXPECT_EQ(lines().at(1), "00 - Old Italy?");
    EXPECT_EQ(form1.listav.marked, 1U);
    EXPECT_FALSE(form1.listav.from_first) << "the list keeps its scroll position";
}

TEST_P(MarkedLine, in_a_list_of_answers_is_that_of_its_answer)
{
    open_three_and_show(1);
    find_answer("a");
    ASSERT_EQ(lines().size(), 2U) << "Madrid, Paris";
    EXPECT_EQ(form1.listav.marked, 1U);
}

TEST_P(MarkedLine, is_none_where_nothing_is_on_display_or_not_in_the_list)
{
    open_three_and_show(3);
    find_question("Italy");
    EXPECT_EQ(form1.listav.marked, std::nullopt);
    logic->display.forget();
    choose("m_show_all");
    EXPECT_EQ(form1.listav.marked, std::nullopt);
}

} // namespace
} // namespace cuedrill::drill
