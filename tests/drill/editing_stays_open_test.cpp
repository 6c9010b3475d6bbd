#include "drill/drill_fixture.h"
#include "drill/edit_flags.h"
#include "drill/record_editor.h"

namespace cuedrill::drill {
namespace {

using platform::BoxAnswer;

constexpr const char* offer = "Do you want to save the changes?";

/// A list is shown while a record is being edited.
class LineClickedInTheEditor : public DrillFixture {
protected:
    void SetUp() override
    {
        start_with_three_questions();
        yes();
        choose("m_show_all");
    }

    void click_line(std::size_t line)
    {
        user([&] { form1.listav.click(line); });
    }
};

TEST_F(LineClickedInTheEditor, asks_nothing_where_nothing_was_typed)
{
    toolbar(8);
    click_line(1);
    EXPECT_FALSE(logic->editor.editing());
    EXPECT_EQ(question(), "Italy?");
    EXPECT_EQ(answer(), "");
}

TEST_F(LineClickedInTheEditor, stays_where_a_text_is_not_taken)
{
    toolbar(9);
    form1.type(form1.Text_a, "Oslo");
    desktop.expect_box(offer, BoxAnswer::yes);
    desktop.expect_box("The question is empty. No saving performed.");
    click_line(1);
    EXPECT_TRUE(logic->edit_flags.new_mode);
    EXPECT_EQ(question(), "");
    EXPECT_EQ(answer(), "Oslo");
}

class UnsavedTexts : public DrillFixture {};

TEST_F(UnsavedTexts, are_told_of_no_more_once_a_question_takes_their_place)
{
    start_with_three_questions();
    toolbar(9);
    form1.type(form1.Text_q, "Norway?");
    press(platform::Key::escape);
    ASSERT_EQ(status(), "The changes are not saved.");
    toolbar(1);
    ASSERT_EQ(question(), "France?");
    EXPECT_EQ(status(), "");
}

class LeavingInvertedCourse : public DrillFixture {};

TEST_F(LeavingInvertedCourse, stays_with_an_answer_that_is_there_already)
{
    builder.number_param("invert", 1);
    builder.question("Italy?", "Rome").inverted().level(0).attempts(1).fails(1).tested_ago(1h);
    start();
    toolbar(9);
    form1.type(form1.Text_q, "Milan");
    form1.type(form1.Text_a, "Italy?");
    desktop.expect_box(offer, BoxAnswer::yes);
    desktop.expect_box("Answer is already in database.");
    choose("m_exit");
    EXPECT_FALSE(ended);
    EXPECT_TRUE(logic->edit_flags.new_mode);
    EXPECT_EQ(question(), "Milan");
    EXPECT_EQ(answer(), "Italy?");
    EXPECT_TRUE(form1.Text_a.has_focus());
}

} // namespace
} // namespace cuedrill::drill
