#include "common/text.h"
#include "record_lists_fixture.h"

#include <tuple>

namespace cuedrill::bank {
namespace {

using fakes::Operation;
using platform::BoxAnswer;

struct Order {
    const char* name;
    void (RecordLists::*command)();
    const char* clause; ///< with "SIDE" for the letter of the side that is asked
    Lines lines;
};

const Order orders[] = {
    {"m_show_all",
     &RecordLists::m_show_all,
     "order by cnt",
     {"03 - Delta?", "00 - alpha?", "01 - Charlie?", "12 - Bravo?"}},
    {"m_view_all_q",
     &RecordLists::m_view_all_q,
     "order by cnt",
     {"03 - Delta?", "00 - alpha?", "01 - Charlie?", "12 - Bravo?"}},
    {"m_show_all_alphabetically",
     &RecordLists::m_show_all_alphabetically,
     "order by SIDE",
     {"00 - alpha?", "12 - Bravo?", "01 - Charlie?", "03 - Delta?"}},
    {"m_all_q_and_a",
     &RecordLists::m_all_q_and_a,
     "order by SIDE",
     {"00 - alpha?  --->  one", "12 - Bravo?  --->  two", "01 - Charlie?  --->  three", "03 - Delta?  --->  four"}},
    {"m_show_sort_by_score",
     &RecordLists::m_show_sort_by_score,
     "order by SIDE_successes",
     {"00 - alpha?", "01 - Charlie?", "03 - Delta?", "12 - Bravo?"}},
    {"m_show_sort_last_show",
     &RecordLists::m_show_sort_last_show,
     "order by SIDE_date_last_show",
     {"00 - alpha?", "12 - Bravo?", "03 - Delta?", "01 - Charlie?"}},
    {"m_history",
     &RecordLists::m_history,
     "order by SIDE_date_last_show desc",
     {"01 - Charlie?", "03 - Delta?", "12 - Bravo?", "00 - alpha?"}},
    {"m_view_history",
     &RecordLists::m_view_history,
     "order by SIDE_date_last_show desc",
     {"01 - Charlie?", "03 - Delta?", "12 - Bravo?", "00 - alpha?"}},
};

class EachOrder : public RecordListsTest, public testing::WithParamInterface<std::tuple<Order, bool>> {
protected:
    void SetUp() override { inverted = std::get<bool>(GetParam()); }

    void show() { (lists.*std::get<Order>(GetParam()).command)(); }

    /// Four records whose order differs with what they are sorted by.
    void open_four()
    {
        using scheduler::one_day;
        add_with_level("Delta?", "four", 3).asked.shown_ago(2 * one_day);
        add("alpha?", "one").answered.level(2).shown_ago(one_day);
        add_with_level("Charlie?", "three", 1).asked.shown_ago(one_day / 2);
        add_with_level("Bravo?", "two", 12).asked.shown_ago(5 * one_day);
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
                             return std::string(std::get<Order>(parameters.param).name) +
                                    (std::get<bool>(parameters.param) ? "_inverted" : "");
                         });

TEST_P(EachOrder, lists_all_questions)
{
    open_four();
    show();
    EXPECT_EQ(screen.lines, std::get<Order>(GetParam()).lines);
    EXPECT_TRUE(screen.shown);
    EXPECT_EQ(screen.lists_shown, 1);
    expect_status("4 questions (the number on the left is the question score)");
}

TEST_P(EachOrder, asks_the_course_once)
{
    open_four();
    show();
    EXPECT_EQ(database.statements(), (std::vector<std::string>{sql()}));
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
    database.execute("Update qa set q = 'Foxtrot?', a = 'Foxtrot?' where cnt = 2");
    database.forget();
    lists.rebuild_shown_list();
    Lines expected = std::get<Order>(GetParam()).lines;
    EXPECT_EQ(database.statements(), (std::vector<std::string>{sql()}));
    EXPECT_EQ(screen.lists_replaced, 1);
    EXPECT_EQ(screen.lists_shown, 1) << "the place in the list stays";
    EXPECT_EQ(screen.lines.size(), expected.size());
    EXPECT_NE(screen.lines, expected);
    Lines shown_anew = screen.lines;
    show();
    EXPECT_EQ(screen.lines, shown_anew);
}

TEST_P(EachOrder, of_an_empty_course_ends_the_program)
{
    open_course();
    clock.advance_seconds(90);
    desktop.expect_box_like({.text = "Database empty."}, BoxAnswer::ok);
    EXPECT_THROW(show(), common::ProgramEnded);
    EXPECT_FALSE(course.is_open());
    EXPECT_EQ(file().number("time_ever"), 90);
    EXPECT_EQ(screen.lists_shown, 0);
}

TEST_P(EachOrder, that_cannot_be_read_leaves_the_list_before)
{
    open_four();
    find_answer("one");
    const Lines before = screen.lines;
    database.fail_at(Operation::open_recordset);
    EXPECT_THROW(show(), platform::DatabaseError);
    EXPECT_EQ(screen.lists_shown, 1);
    EXPECT_EQ(desktop.pointer_depth, 0);
    EXPECT_EQ(recalled(), before);
    lists.listav_click(before.at(0));
    EXPECT_EQ(screen.chosen, (std::vector<common::Int16>{2})) << "its lines are answers still";
}

class QuestionLists : public EitherDirectionLists {};

INSTANTIATE_TEST_SUITE_P(Directions, QuestionLists, testing::Bool(), direction_name);

TEST_P(QuestionLists, have_scores_of_at_least_two_digits)
{
    add("one").asked.level(7);
    add("two").asked.level(10);
    add("three").asked.level(100);
    add("none");
    open_course();
    lists.m_show_all();
    EXPECT_EQ(screen.lines, (Lines{"07 - one", "10 - two", "100 - three", "00 - none"}));
}

TEST_P(QuestionLists, leave_alone_what_is_being_typed)
{
    add("France?");
    open_course();
    begin_new("Spain?", "Madrid");
    lists.m_show_all();
    EXPECT_TRUE(editor.editing());
    EXPECT_EQ(view.typed.question, "Spain?");
    EXPECT_EQ(view.typed.answer, "Madrid");
    EXPECT_TRUE(desktop.boxes.empty());
}

TEST_P(QuestionLists, have_each_record_on_one_line)
{
    add("two\r\nlines", "a\r\nb\r\n\r\nc");
    add("other\nends\rhere", "x\ny");
    open_course();
    lists.m_show_all();
    EXPECT_EQ(screen.lines, (Lines{"00 - two lines", "00 - other\nends\rhere"}));
    lists.m_all_q_and_a();
    EXPECT_EQ(screen.lines, (Lines{"00 - other\nends\rhere  --->  x\ny", "00 - two lines  --->  a b  c"}));
}

TEST_P(QuestionLists, have_the_answer_of_the_first_record_beside_equal_questions)
{
    add("Twice?", "first");
    add("Once?", "single");
    add("twice?", "second");
    add("TWICE?", "third");
    open_course();
    lists.m_all_q_and_a();
    EXPECT_EQ(screen.lines, (Lines{"00 - Once?  --->  single", "00 - Twice?  --->  first", "00 - twice?  --->  first",
                                   "00 - TWICE?  --->  first"}));
    EXPECT_EQ(database.statements().size(), 1U + 2U) << "the records, and those that repeat a question";
}

TEST_P(QuestionLists, have_its_own_answer_beside_each_record_without_a_question)
{
    add("x", "first");
    add("x", "second");
    open_course();
    database.execute("Update qa set " + asked_column() + " = null");
    lists.m_all_q_and_a();
    EXPECT_EQ(screen.lines, (Lines{"00 -   --->  first", "00 -   --->  second"}));
}

TEST_P(QuestionLists, tell_that_an_answer_has_vanished_meanwhile)
{
    add("Twice?", "first");
    add("twice?", "second");
    open_course();
    database.at_each_call([this](Operation operation) {
        if (operation == Operation::query)
            engine.database.execute("Delete from qa");
    });
    desktop.expect_box_like({.text = "nomatch in function 'risposta_item_selezionato'."}, BoxAnswer::ok);
    lists.m_all_q_and_a();
    EXPECT_EQ(screen.lines, (Lines{"00 - Twice?  --->  first", "00 - twice?  --->  "}));
}

TEST_P(QuestionLists, whose_answers_cannot_be_read_leave_the_list_before)
{
    add("Twice?", "first");
    add("twice?", "second");
    open_course();
    lists.m_show_all();
    const Lines before = screen.lines;
    database.fail_at(Operation::query);
    EXPECT_THROW(lists.m_all_q_and_a(), platform::DatabaseError);
    EXPECT_EQ(screen.lists_shown, 1);
    EXPECT_EQ(recalled(), before);
    database.forget();
    lists.rebuild_shown_list();
    EXPECT_EQ(database.statements(), (std::vector<std::string>{"Select * from qa order by cnt"}));
    EXPECT_EQ(screen.lines, before) << "still without answers";
}

TEST_P(QuestionLists, with_a_score_beyond_16_bits_leave_the_list_before)
{
    add("France?");
    open_course();
    lists.m_show_all();
    engine.database.execute("Pragma ignore_check_constraints = on");
    database.execute("Update qa set " + asked_column("_successes") + " = 32768");
    EXPECT_THROW(lists.m_history(), common::OverflowError);
    EXPECT_EQ(database.open_recordsets(), 0);
    EXPECT_EQ(desktop.pointer_depth, 0);
    EXPECT_EQ(recalled(), (Lines{"00 - France?"}));
}

TEST_P(QuestionLists, hold_10000_records_without_a_word)
{
    open_course_with_items(10000);
    lists.m_show_all();
    ASSERT_EQ(screen.lines.size(), 10000U);
    EXPECT_EQ(screen.lines.back(), "00 - item 10000");
    expect_status("10000 questions (the number on the left is the question score)");
}

TEST_P(QuestionLists, hold_no_more_than_10000_records_and_say_so)
{
    open_course_with_items(10001);
    desktop.expect_box_like({.text = "Too many items found, the list is not complete."}, BoxAnswer::ok);
    lists.m_show_all();
    ASSERT_EQ(screen.lines.size(), 10000U);
    EXPECT_EQ(screen.lines.back(), "00 - item 10000");
    expect_status("10000 questions (the number on the left is the question score)");
    desktop.expect_box("Too many items found, the list is not complete.");
    lists.m_all_q_and_a();
    ASSERT_EQ(screen.lines.size(), 10000U);
    EXPECT_EQ(screen.lines.front(), "00 - item 1  --->  item 1");
}

class EmptyCourse : public RecordListsTest {
protected:
    void SetUp() override
    {
        open_course();
        begin_new("France?", "Paris");
        desktop.expect_box("Database empty.");
    }
};

TEST_F(EmptyCourse, ends_the_program_with_the_typed_record_saved)
{
    expect_question_about_saving(BoxAnswer::yes);
    EXPECT_THROW(lists.m_show_all(), common::ProgramEnded);
    EXPECT_FALSE(course.is_open());
    EXPECT_EQ(file().qa.size(), 1U);
}

TEST_F(EmptyCourse, ends_the_program_without_the_typed_record)
{
    expect_question_about_saving(BoxAnswer::no);
    EXPECT_THROW(lists.m_show_all(), common::ProgramEnded);
    EXPECT_FALSE(course.is_open());
    EXPECT_TRUE(file().qa.empty());
}

TEST_F(EmptyCourse, does_not_end_the_program_over_a_record_that_could_not_be_saved)
{
    view.typed.answer = "";
    expect_question_about_saving(BoxAnswer::yes);
    desktop.expect_box("The answer is empty. No saving performed.");
    lists.m_show_all();
    EXPECT_TRUE(course.is_open());
    EXPECT_EQ(screen.lists_shown, 0);
}

} // namespace
} // namespace cuedrill::bank
