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

TEST_F(Commands, settings_that_turn_out_to_be_stored_are_shown)
{
    const auto make_unknown = [this] {
        database.fail_commit(true);
        database.fail_at(fakes::Operation::query);
        desktop.expect_box(
            "The course " + path +
            " could not be read or written.\r\n\r\nThe commit failed. It is not known whether the change is "
            "stored, because the course cannot be read again.");
    };
    desktop.expect_input("New title?", "Capitals");
    make_unknown();
    choose("m_change_course_title");
    EXPECT_EQ(form1.window.caption_value, "Cuedrill: Course course [course]");
    form1.timer_1_min.tick();
    EXPECT_EQ(form1.window.caption_value, "Cuedrill: Capitals [course]");

    desktop.expect_input("New target level (1 to 10)?", "2");
    make_unknown();
    choose("m_change_target_level");
    ASSERT_EQ(form1.screen.panel_nr_unpassed.text, "2");
    form1.timer_1_min.tick();
    EXPECT_EQ(entry("m_change_target_level").caption_value, "Change &target level  (now 2)");

    make_unknown();
    choose("m_always_let_me_type");
    EXPECT_FALSE(entry("m_always_let_me_type").checked);
    form1.timer_1_min.tick();
    EXPECT_TRUE(entry("m_always_let_me_type").checked);
}

TEST_F(Commands, undo_shows_what_it_has_found_to_be_stored)
{
    yes();
    ASSERT_EQ(form1.screen.panel_total.text, "3");
    desktop.expect_box("Are you sure you want to delete question \"France?\" and its asnwer?",
                       platform::BoxAnswer::yes);
    database.fail_commit(true);
    database.fail_at(fakes::Operation::query, 2); // the first query reads the old texts
    desktop.expect_box("The course " + path +
                       " could not be read or written.\r\n\r\nThe commit failed. It is not known whether the change is "
                       "stored, because the course cannot be read again.");
    choose("m_delete");
    ASSERT_EQ(form1.screen.panel_total.text, "3");
    choose("m_undo");
    EXPECT_EQ(logic->course.record_count, 2);
    EXPECT_EQ(form1.screen.panel_total.text, "2");
}

TEST_F(Commands, minute_shows_a_verdict_that_turns_out_to_be_stored)
{
    yes();
    yes();
    database.fail_commit(true);
    database.fail_at(fakes::Operation::query, 2); // the first query reads the record
    desktop.expect_box("The course " + path +
                       " could not be read or written.\r\n\r\nThe commit failed. It is not known whether the change is "
                       "stored, because the course cannot be read again.");
    yes();
    ASSERT_EQ(form1.screen.Panel_score.text, "0");
    form1.timer_1_min.tick();
    EXPECT_EQ(form1.screen.Panel_score.text, "1");
    EXPECT_EQ(form1.screen.panel_level[4].count, 1);
}

TEST_F(Commands, minute_shows_a_reset_that_turns_out_to_be_stored)
{
    yes();
    ASSERT_NE(form1.screen.PANEL_Q_LEVEL.text, "0");
    desktop.expect_box("This will set all question at level 0; do you really want to do this?",
                       platform::BoxAnswer::yes);
    database.fail_commit(true);
    database.fail_at(fakes::Operation::open_recordset);
    desktop.expect_box("The course " + path +
                       " could not be read or written.\r\n\r\nThe commit failed. It is not known whether the change is "
                       "stored, because the course cannot be read again.");
    choose("m_reset_all");
    ASSERT_EQ(question(), "France?");
    form1.timer_1_min.tick();
    EXPECT_EQ(form1.screen.panel_level[0].count, 3);
    EXPECT_EQ(form1.screen.PANEL_Q_LEVEL.text, "0");
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

class FirstRecord : public DrillFixture {};

TEST_F(FirstRecord, is_asked_where_it_turns_out_to_be_stored)
{
    desktop.expect_box("You have passed level 5 for all questions.");
    start();
    write_new("Norway?", "Oslo");
    save_with_unknown_outcome();
    desktop.expect_box("Do you want to save the changes?", platform::BoxAnswer::no);
    toolbar(1);
    EXPECT_EQ(question(), "Norway?");
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

/// The commit of the new direction fails, and the course cannot be read right after it.
class InversionOfUnknownOutcome : public Inversion {
protected:
    void invert(bool stored)
    {
        database.fail_commit(stored);
        database.fail_at(fakes::Operation::query);
        desktop.expect_box(
            "The course " + path +
            " could not be read or written.\r\n\r\nThe commit failed. It is not known whether the change is "
            "stored, because the course cannot be read again.");
        choose("m_invert");
        EXPECT_FALSE(entry("m_invert").checked);
    }
};

TEST_F(InversionOfUnknownOutcome, leaves_no_question_that_could_be_judged)
{
    for (const bool is_stored : {false, true}) {
        SCOPED_TRACE(is_stored);
        choose("m_display_next_question");
        ASSERT_NE(question(), "");
        invert(is_stored);
        EXPECT_EQ(question(), "");
        EXPECT_EQ(logic->state.shown.current_cnt(), 0);
        EXPECT_FALSE(entry("m_set_success").is_enabled);
    }
}

TEST_F(InversionOfUnknownOutcome, is_settled_before_the_next_question_is_chosen)
{
    yes();
    invert(true);
    const fakes::SideRow before = stored(1).q_side;
    choose("m_display_next_question");
    EXPECT_EQ(question(), "Paris") << "the first of those that were never tested in this direction";
    EXPECT_TRUE(entry("m_invert").checked);
    EXPECT_EQ(form1.screen.panel_level[2].count, 0);
    choose("m_set_success");
    EXPECT_EQ(stored(1).q_side, before);
    EXPECT_EQ(stored(1).a_side, (fakes::SideRow{1, std::nullopt, 3, clock.time, clock.time}));
}

TEST_F(InversionOfUnknownOutcome, which_is_not_stored_leaves_the_direction)
{
    yes();
    invert(false);
    choose("m_display_next_question");
    EXPECT_EQ(question(), "France?");
    EXPECT_FALSE(entry("m_invert").checked);
    choose("m_set_success");
    EXPECT_EQ(stored(1).q_side, (fakes::SideRow{5, 1, 4, clock.time, clock.time}));
}

TEST_F(InversionOfUnknownOutcome, shows_no_question_while_it_is_unknown)
{
    yes();
    invert(true);
    database.fail_at(fakes::Operation::query);
    desktop.expect_box("The course " + path +
                       " could not be read or written.\r\n\r\nThe commit failed. It is not known whether the change is "
                       "stored, because the course cannot be read again.");
    choose("m_display_next_question");
    EXPECT_EQ(question(), "");
    EXPECT_EQ(logic->state.shown.current_cnt(), 0);
}

TEST_F(InversionOfUnknownOutcome, leaves_the_lines_of_a_list_to_their_records)
{
    choose("m_show_all");
    invert(true);
    user([this] { form1.listav.click(1); });
    EXPECT_EQ(logic->state.shown.current_cnt(), 2);
    EXPECT_EQ(question(), "Rome");
    EXPECT_TRUE(entry("m_invert").checked);
    choose("m_recall_find_list");
    user([this] { form1.listav.click(2); });
    EXPECT_EQ(logic->state.shown.current_cnt(), 3);
}

TEST_F(InversionOfUnknownOutcome, is_settled_before_a_new_record_is_typed)
{
    invert(true);
    toolbar(9);
    EXPECT_TRUE(entry("m_invert").checked);
    form1.type(form1.Text_q, "Oslo");
    form1.type(form1.Text_a, "Norway?");
    toolbar(10);
    EXPECT_EQ(stored(4).q, "Norway?");
    EXPECT_EQ(stored(4).a, "Oslo");
}

TEST_F(InversionOfUnknownOutcome, is_settled_when_it_is_asked_for_again)
{
    invert(true);
    choose("m_invert");
    EXPECT_EQ(question(), "Paris") << "the menu has shown the other direction until now";
    EXPECT_TRUE(entry("m_invert").checked);
    EXPECT_EQ(fakes::read_course(path).number("invert"), 1);
}

TEST_F(InversionOfUnknownOutcome, forgets_the_last_verdict)
{
    yes();
    yes();
    yes();
    invert(true);
    const fakes::CourseContents before = fakes::read_course(path);
    choose("m_undo");
    EXPECT_EQ(fakes::read_course(path), before);
    EXPECT_TRUE(entry("m_invert").checked);
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
