#include "drill/drill_fixture.h"
#include "drill/drill_state.h"
#include "drill/question_import.h"
#include "store/course.h"

namespace cuedrill::drill {
namespace {

class Commands : public DrillFixture {
protected:
    void SetUp() override { start_with_three_questions(); }
};

TEST_F(Commands, next_question_stamps_the_one_that_is_left)
{
    choose("m_display_next_question");
    ASSERT_EQ(question(), "France?");
    const fakes::QaRow before = stored(1);
    choose("m_display_next_question");
    EXPECT_EQ(question(), "Italy?");
    fakes::QaRow expected = before;
    expected.q_side.date_last_show = clock.time;
    EXPECT_EQ(stored(1), expected);
}

TEST_F(Commands, number_of_the_question_is_told)
{
    yes();
    no();
    desktop.expect_box_like({.text = "Question number: 2"}, platform::BoxAnswer::ok);
    choose("m_display_q_nr");
}

TEST_F(Commands, number_of_mature_questions_is_told)
{
    desktop.expect_box("Number of mature questions: 2");
    choose("m_disp_nr_mature");
}

TEST_F(Commands, undo_gives_the_level_back_and_shows_the_question)
{
    yes();
    yes();
    no();
    ASSERT_EQ(stored(1).q_side.successes, 0);
    choose("m_undo");
    EXPECT_EQ(stored(1).q_side, (fakes::SideRow{5, 2, 2, clock.time, clock.time}));
    EXPECT_EQ(question(), "France?");
    EXPECT_EQ(form1.screen.panel_level[2].count, 1);
}

TEST_F(Commands, undo_without_a_verdict_does_nothing)
{
    yes();
    const fakes::CourseContents before = fakes::read_course(path);
    choose("m_undo");
    EXPECT_EQ(fakes::read_course(path), before);
    EXPECT_EQ(question(), "France?");
}

TEST_F(Commands, reset_all_reaches_every_question)
{
    desktop.expect_box("This will set all question at level 0; do you really want to do this?",
                       platform::BoxAnswer::yes);
    choose("m_reset_all");
    EXPECT_EQ(stored(1).q_side, (fakes::SideRow{0, 0, 0, std::nullopt, std::nullopt}));
    EXPECT_EQ(form1.screen.panel_level[0].count, 3);
}

TEST_F(Commands, table_of_dead_times_is_shown)
{
    desktop.expect_box("At least 0.1 minutes must elapse to pass from level 0 to 1\r\n"
                       "At least 5.0 minutes must elapse to pass from level 1 to 2\r\n"
                       "At least 60.0 minutes must elapse to pass from level 2 to 3\r\n"
                       "At least 0.5 days must elapse to pass from level 3 to 4\r\n"
                       "At least 2.0 days must elapse to pass from level 4 to 5\r\n"
                       "At least 7.0 days must elapse to pass from level 5 to 6\r\n"
                       "At least 20.0 days must elapse to pass from level 6 to 7\r\n"
                       "At least 60.0 days must elapse to pass from level 7 to 8\r\n"
                       "At least 120.0 days must elapse to pass from level 8 to 9\r\n"
                       "At least 365.0 days must elapse to pass from level 9 to 10\r\n"
                       "At least 0.1 minutes must elapse to show the same question after an unanswered test");
    choose("m_score_elapsed_table");
}

TEST_F(Commands, title_of_the_course_is_changed)
{
    desktop.expect_input("New title?", "Capitals");
    choose("m_change_course_title");
    EXPECT_EQ(form1.window.caption_value, "Cuedrill: Capitals [course]");
    EXPECT_EQ(fakes::read_course(path).param("course_title")->string_value, "Capitals");
}

TEST_F(Commands, import_adds_to_the_course_and_shows_the_last_record)
{
    const std::string file = folder.write("more.txt", "@Q@ Norway? @A@ Oslo\r\n@Q@ Peru? @A@ Lima\r\n");
    desktop.expect_box("This function will import questions and answers form a text file and put them in the current "
                       "course.\r\n"
                       "In the text file each question must be preceded by '@Q@', and the related answer by '@A@'\r\n"
                       "Questions and answers may be on different lines and consist of more than one line each.\r\n"
                       "Spaces, newline and TAB characters at beginning or end of questions and answers are "
                       "trimmed.\r\n"
                       "Lines beginning with /*/ are ignored.\r\n"
                       "Example 1: @Q@ What is the capital of Alabama?  @A@ Montgomery\r\n"
                       "Example 2:\r\n@Q@\r\nWhat is the capital of Alabama?\r\n@A@\r\nMontgomery\r\n"
                       "Do you wish to continue?",
                       platform::BoxAnswer::yes);
    desktop.expect_file({.path = file, .title = "more.txt"});
    desktop.expect_box("Questions from file \"" + file +
                           "\"will be added to current course (Course course).\r\nDo you wish to continue?",
                       platform::BoxAnswer::yes);
    desktop.expect_box("2 questions and answers insterted.");
    choose("m_import");
    EXPECT_EQ(question(), "Peru?");
    EXPECT_EQ(logic->state.shown.current_cnt(), 5);
    EXPECT_EQ(form1.screen.panel_total.text, "5");
    EXPECT_EQ(form1.screen.panel_level[0].count, 3) << "imported records stand at level 0";
    EXPECT_EQ(status(), "");
}

TEST_F(Commands, import_takes_the_request_for_a_verdict_away)
{
    const std::string file = folder.write("more.txt", "@Q@ Norway? @A@ Oslo");
    yes();
    choose("m_show_answer");
    desktop.expect_box("1 questions and answers insterted.");
    logic->question_import.import_file(file);
    EXPECT_EQ(question(), "Norway?");
    EXPECT_EQ(answer(), "");
    EXPECT_FALSE(logic->state.AwaitingVerdict);
    EXPECT_FALSE(press("+")) << "the answer of the new question has not been shown";
}

class Inversion : public Commands {};

TEST_F(Inversion, asks_the_other_side_at_once_and_is_stored)
{
    yes();
    no();
    ASSERT_EQ(question(), "Italy?");
    choose("m_invert");
    EXPECT_EQ(question(), "Paris") << "no question was ever tested in this direction";
    EXPECT_EQ(logic->state.shown.loaded_answer(), "France?");
    EXPECT_TRUE(entry("m_invert").checked);
    EXPECT_EQ(fakes::read_course(path).number("invert"), 1);
    EXPECT_EQ(form1.screen.panel_level[2].count, 0) << "the other direction has its own levels";
    choose("m_invert");
    EXPECT_FALSE(entry("m_invert").checked);
    EXPECT_EQ(fakes::read_course(path).number("invert"), 0);
    EXPECT_EQ(form1.screen.panel_level[2].count, 1);
}

TEST_F(Inversion, judges_the_direction_that_is_asked)
{
    const fakes::SideRow before = stored(1).q_side;
    choose("m_invert");
    ASSERT_EQ(question(), "Paris");
    choose("m_set_success");
    EXPECT_EQ(stored(1).q_side, before);
    EXPECT_EQ(stored(1).a_side, (fakes::SideRow{1, std::nullopt, 3, clock.time, clock.time}));
}

TEST_F(Inversion, forgets_the_last_verdict)
{
    yes();
    yes();
    yes();
    choose("m_invert");
    const fakes::CourseContents before = fakes::read_course(path);
    choose("m_undo");
    EXPECT_EQ(fakes::read_course(path), before);
}

TEST_F(Inversion, that_cannot_be_stored_changes_nothing)
{
    yes();
    database.fail_at(fakes::Operation::execute);
    desktop.expect_box("The course " + path + " could not be read or written.\r\n\r\nThe disk is full.");
    choose("m_invert");
    EXPECT_FALSE(entry("m_invert").checked);
    EXPECT_FALSE(logic->course.params.invert);
    EXPECT_EQ(logic->course.Q_FIELD.text, "q");
    EXPECT_EQ(question(), "France?");
    EXPECT_EQ(fakes::read_course(path).number("invert"), 0);
}

// The new direction is stored; the question on display belongs to the old one.
TEST_F(Inversion, whose_counts_fail_leaves_no_question_that_could_be_judged)
{
    yes();
    const fakes::QaRow before = stored(1);
    database.fail_at(fakes::Operation::open_recordset);
    desktop.expect_box("The course " + path + " could not be read or written.\r\n\r\nThe disk is full.");
    choose("m_invert");
    EXPECT_EQ(question(), "");
    EXPECT_FALSE(form1.bot_yes.usable());
    EXPECT_FALSE(entry("m_set_success").is_enabled);
    EXPECT_EQ(stored(1), before);
    EXPECT_TRUE(entry("m_invert").checked);
}

} // namespace
} // namespace cuedrill::drill
