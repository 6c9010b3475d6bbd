#include "drill/drill_fixture.h"
#include "drill/record_editor.h"
#include "store/course.h"

namespace cuedrill::drill {
namespace {

using platform::BoxAnswer;

/// The first of two questions is on display; either of them could be asked first.
class UntestedCourse : public DrillFixture {
protected:
    void start_and_ask(bool inverted)
    {
        builder.question("France?", "Paris");
        builder.question("Italy?", "Rome");
        if (inverted)
            builder.number_param("invert", 1);
        desktop.expect_box("You have passed level 5 for all questions.");
        start();
        yes();
        ASSERT_EQ(logic->state.shown.current_cnt(), 1);
        toolbar(8);
    }

    void next_question(BoxAnswer save, const char* rejection)
    {
        desktop.expect_box("Do you want to save the changes?", save);
        if (rejection != nullptr)
            desktop.expect_box(rejection);
        desktop.expect_box(nothing_mature);
        toolbar(1);
        EXPECT_FALSE(logic->editor.editing());
        EXPECT_EQ(question(), "");
        EXPECT_EQ(logic->state.shown.current_cnt(), 0);
        EXPECT_EQ(status(), "The question just shown can be asked again now. 2 questions are due by the end of the "
                            "day.");
    }
};

TEST_F(UntestedCourse, does_not_ask_the_question_again_that_was_being_changed)
{
    start_and_ask(false);
    next_question(BoxAnswer::no, nullptr);
}

TEST_F(UntestedCourse, does_not_ask_the_question_again_whose_change_was_empty)
{
    start_and_ask(false);
    form1.Text_q.text_value = "";
    next_question(BoxAnswer::yes, "The question is empty. No saving performed.");
}

TEST_F(UntestedCourse, does_not_ask_the_question_again_whose_changed_answer_was_there_already)
{
    start_and_ask(true);
    ASSERT_EQ(question(), "Paris");
    form1.Text_a.text_value = "Italy?";
    next_question(BoxAnswer::yes, "Answer is already in database.");
}

} // namespace
} // namespace cuedrill::drill
