#include "drill/drill_fixture.h"
#include "drill/drill_state.h"
#include "drill/record_editor.h"
#include "store/course.h"

namespace cuedrill::drill {
namespace {

using fakes::Operation;
using platform::BoxAnswer;

/// The first question is on display.
class DeleteInTheWindow : public DrillFixture {
protected:
    void SetUp() override
    {
        start_with_three_questions();
        yes();
        before = fakes::read_course(path);
    }

    void expect_question(const std::string& text, BoxAnswer answer)
    {
        desktop.expect_box_like({.text = "Are you sure you want to delete question \"" + text + "\" and its asnwer?",
                                 .buttons = platform::BoxButtons::yes_no,
                                 .icon = platform::BoxIcon::exclamation,
                                 .default_button = BoxAnswer::no},
                                answer);
    }

    void expect_error(const std::string& reason)
    {
        desktop.expect_box("The course " + path + " could not be read or written.\r\n\r\n" + reason);
    }

    fakes::CourseContents before;
};

TEST_F(DeleteInTheWindow, changes_nothing_when_it_is_not_confirmed)
{
    yes();
    expect_question("France?", BoxAnswer::no);
    toolbar(11);
    EXPECT_EQ(fakes::read_course(path), before);
    EXPECT_EQ(question(), "France?");
    EXPECT_EQ(answer(), "Paris");
    EXPECT_EQ(logic->course.record_count, 3);
    EXPECT_EQ(logic->state.dialog, DialogState::AskKnown);
}

TEST_F(DeleteInTheWindow, takes_the_record_away_and_asks_the_next_question)
{
    expect_question("France?", BoxAnswer::yes);
    toolbar(11);
    EXPECT_EQ(fakes::read_course(path).qa, (std::vector{before.qa.at(1), before.qa.at(2)}));
    EXPECT_EQ(question(), "Italy?");
    EXPECT_EQ(answer(), "");
    EXPECT_EQ(logic->state.shown.current_cnt(), 2);
    EXPECT_EQ(form1.screen.panel_total.text, "2");
    EXPECT_EQ(form1.screen.panel_level[2].count, 0);
    EXPECT_EQ(form1.screen.panel_nr_unpassed.text, "1");
}

TEST_F(DeleteInTheWindow, is_chosen_by_the_menu_and_by_its_letter_too)
{
    expect_question("France?", BoxAnswer::yes);
    choose("m_delete");
    expect_question("Italy?", BoxAnswer::yes);
    EXPECT_TRUE(press("d"));
    EXPECT_EQ(fakes::read_course(path).qa, std::vector{before.qa.at(2)});
    EXPECT_EQ(question(), "Spain?");
}

TEST_F(DeleteInTheWindow, names_what_stands_in_the_question_box)
{
    form1.Text_q.text_value = "Gaul?";
    expect_question("Gaul?", BoxAnswer::yes);
    toolbar(11);
    EXPECT_EQ(fakes::read_course(path).qa, (std::vector{before.qa.at(1), before.qa.at(2)}));
}

TEST_F(DeleteInTheWindow, of_texts_that_were_left_in_the_boxes_only_empties_them)
{
    toolbar(8);
    form1.Text_q.text_value = "Gaul?";
    press(platform::Key::escape);
    expect_question("Gaul?", BoxAnswer::yes);
    toolbar(11);
    EXPECT_EQ(question(), "");
    EXPECT_EQ(answer(), "");
    EXPECT_EQ(fakes::read_course(path), before);
}

TEST_F(DeleteInTheWindow, is_not_to_be_had_in_the_editor)
{
    toolbar(8);
    toolbar(11);
    choose("m_delete");
    EXPECT_TRUE(desktop.boxes.empty());
    EXPECT_TRUE(logic->editor.editing());
    EXPECT_EQ(fakes::read_course(path), before);
}

TEST_F(DeleteInTheWindow, only_empties_the_boxes_without_a_current_record)
{
    toolbar(9);
    form1.type(form1.Text_q, "Norway?");
    form1.type(form1.Text_a, "Oslo");
    press(platform::Key::escape);
    expect_question("Norway?", BoxAnswer::no);
    toolbar(11);
    EXPECT_EQ(question(), "Norway?");
    expect_question("Norway?", BoxAnswer::yes);
    toolbar(11);
    EXPECT_EQ(question(), "");
    EXPECT_EQ(answer(), "");
    EXPECT_EQ(fakes::read_course(path), before);
    EXPECT_EQ(logic->course.record_count, 3);
}

TEST_F(DeleteInTheWindow, of_a_record_that_has_vanished_is_told)
{
    database.execute("Delete from qa where cnt = 1");
    expect_question("France?", BoxAnswer::yes);
    desktop.expect_box("The question is no longer in the course; another program has deleted it.");
    toolbar(11);
    EXPECT_EQ(fakes::read_course(path).qa, (std::vector{before.qa.at(1), before.qa.at(2)}));
    EXPECT_EQ(database.transaction_depth(), 0);
    EXPECT_EQ(logic->state.shown.current_cnt(), 0);
    EXPECT_EQ(form1.screen.panel_total.text, "2");
}

TEST_F(DeleteInTheWindow, whose_counts_fail_leaves_no_question_on_display)
{
    expect_question("France?", BoxAnswer::yes);
    database.fail_at(Operation::open_recordset);
    expect_error("The disk is full.");
    toolbar(11);
    EXPECT_EQ(fakes::read_course(path).qa, (std::vector{before.qa.at(1), before.qa.at(2)}));
    EXPECT_EQ(logic->course.record_count, 2);
    EXPECT_EQ(logic->state.shown.current_cnt(), 0);
    EXPECT_EQ(question(), "");
    EXPECT_EQ(answer(), "");
    toolbar(1);
    EXPECT_EQ(question(), "Italy?");
}

class FailingDeleteInTheWindow : public DeleteInTheWindow, public testing::WithParamInterface<Operation> {};

TEST_P(FailingDeleteInTheWindow, keeps_the_question_on_display_and_may_be_repeated)
{
    expect_question("France?", BoxAnswer::yes);
    database.fail_at(GetParam());
    expect_error("The disk is full.");
    toolbar(11);
    EXPECT_EQ(fakes::read_course(path), before);
    EXPECT_EQ(logic->course.record_count, 3);
    EXPECT_EQ(logic->state.shown.current_cnt(), 1);
    EXPECT_EQ(question(), "France?");
    EXPECT_EQ(database.transaction_depth(), 0);
    expect_question("France?", BoxAnswer::yes);
    toolbar(11);
    EXPECT_EQ(fakes::read_course(path).qa.size(), 2U);
    EXPECT_EQ(question(), "Italy?");
}

INSTANTIATE_TEST_SUITE_P(Steps, FailingDeleteInTheWindow,
                         testing::Values(Operation::begin, Operation::execute, Operation::commit));

class DeleteTheLastRecord : public DrillFixture, public testing::WithParamInterface<bool> {};

TEST_P(DeleteTheLastRecord, empties_the_boxes_and_says_so)
{
    builder.question("France?", "Paris")
        .level(0)
        .attempts(1)
        .fails(1)
        .tested_ago(1h)
        .inverted()
        .level(0)
        .attempts(1)
        .fails(1)
        .tested_ago(1h);
    builder.number_param("invert", GetParam() ? 1 : 0);
    start();
    yes();
    const std::string text = GetParam() ? "Paris" : "France?";
    desktop.expect_box("Are you sure you want to delete question \"" + text + "\" and its asnwer?", BoxAnswer::yes);
    desktop.expect_box("There are no questions in the database.");
    toolbar(11);
    EXPECT_TRUE(fakes::read_course(path).qa.empty());
    EXPECT_EQ(question(), "");
    EXPECT_EQ(answer(), "");
    EXPECT_EQ(logic->state.shown.current_cnt(), 0);
    EXPECT_EQ(form1.screen.panel_total.text, "0");
    EXPECT_FALSE(entry("m_edit").usable());
}

INSTANTIATE_TEST_SUITE_P(Directions, DeleteTheLastRecord, testing::Values(false, true),
                         [](const auto& inverted) { return std::string(inverted.param ? "inverted" : "straight"); });

class DeleteWithoutRecords : public DrillFixture {};

TEST_F(DeleteWithoutRecords, deletes_nothing)
{
    desktop.expect_box("You have passed level 5 for all questions.");
    start();
    desktop.expect_box("Are you sure you want to delete question \"\" and its asnwer?", BoxAnswer::yes);
    choose("m_delete");
    EXPECT_EQ(logic->course.record_count, 0);
    EXPECT_EQ(question(), "");
}

} // namespace
} // namespace cuedrill::drill
