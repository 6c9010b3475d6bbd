#include "app/start/start.h"
#include "drill/drill_fixture.h"
#include "drill/drill_state.h"
#include "drill/record_editor.h"
#include "drill/window_layout.h"
#include "store/course.h"

namespace cuedrill::drill {
namespace {

using fakes::Operation;
using fakes::SideRow;
using platform::DatabaseErrorKind;

/// The first question is on display.
class SaveInTheWindow : public DrillFixture {
protected:
    void SetUp() override
    {
        start_with_three_questions();
        yes();
    }

    void expect_saved_on_display(const std::string& question_text, const std::string& answer_text)
    {
        EXPECT_FALSE(logic->editor.editing());
        EXPECT_EQ(question(), question_text);
        EXPECT_EQ(answer(), answer_text);
        EXPECT_TRUE(form1.Text_q.locked);
        EXPECT_TRUE(form1.Text_a.locked);
        EXPECT_EQ(logic->layout.mode(), Mode::answer);
        EXPECT_TRUE(form1.toolbar(9).has_focus());
        EXPECT_FALSE(form1.toolbar(10).usable());
    }

    void expect_open(const std::string& question_text, const std::string& answer_text)
    {
        EXPECT_TRUE(logic->editor.editing());
        EXPECT_EQ(question(), question_text);
        EXPECT_EQ(answer(), answer_text);
        EXPECT_FALSE(form1.Text_q.locked);
        EXPECT_FALSE(form1.Text_a.locked);
        EXPECT_FALSE(form1.toolbar(9).usable());
        EXPECT_TRUE(form1.toolbar(10).usable());
        EXPECT_EQ(database.transaction_depth(), 0);
    }
};

TEST_F(SaveInTheWindow, shows_a_new_record_with_its_answer)
{
    write_new(" Norway? ", " Oslo ");
    toolbar(10);
    expect_saved_on_display("Norway?", "Oslo");
    EXPECT_EQ(stored(4), (fakes::QaRow{4, "Norway?", "Oslo", SideRow{0, 0, 0, std::nullopt, std::nullopt},
                                       SideRow{0, 0, 0, std::nullopt, std::nullopt}}));
    EXPECT_EQ(logic->state.shown.current_cnt(), 4);
    EXPECT_EQ(form1.screen.PANEL_Q_LEVEL.text, "0");
    EXPECT_EQ(form1.screen.PANEL_Q_ATTEMPTS.text, "0");
    EXPECT_EQ(form1.screen.PANEL_ELAPSED.text, "");
}

TEST_F(SaveInTheWindow, is_told_for_5_seconds)
{
    write_new("Norway?", "Oslo");
    toolbar(10);
    EXPECT_EQ(status(), "Saved.");
    clock.advance_seconds(5);
    form1.timer_250_ms.tick();
    EXPECT_EQ(status(), "");
}

TEST_F(SaveInTheWindow, counts_a_new_record)
{
    ASSERT_EQ(form1.screen.panel_level[0].count, 1);
    write_new("Norway?", "Oslo");
    toolbar(10);
    EXPECT_EQ(form1.screen.panel_total.text, "4");
    EXPECT_EQ(form1.screen.panel_level[0].count, 2);
    EXPECT_EQ(form1.screen.panel_level[0].total, 4);
    EXPECT_EQ(form1.screen.panel_nr_unpassed.text, "3");
}

TEST_F(SaveInTheWindow, shows_a_changed_record_that_starts_its_history_again)
{
    const fakes::QaRow before = stored(1);
    change_to("Gaul?", "Lutetia");
    toolbar(10);
    expect_saved_on_display("Gaul?", "Lutetia");
    EXPECT_EQ(stored(1).q, "Gaul?");
    EXPECT_EQ(stored(1).a, "Lutetia");
    EXPECT_EQ(stored(1).q_side, (SideRow{0, 0, 0, before.q_side.date_last_test, before.q_side.date_last_show}));
    EXPECT_EQ(logic->state.shown.current_cnt(), 1);
    EXPECT_EQ(form1.screen.PANEL_Q_LEVEL.text, "0");
    EXPECT_EQ(form1.screen.PANEL_FAILS.text, "0");
    EXPECT_EQ(form1.screen.PANEL_ELAPSED.text, "24:00");
    EXPECT_EQ(form1.screen.panel_total.text, "3");
    EXPECT_EQ(form1.screen.panel_level[2].count, 0);
    EXPECT_EQ(form1.screen.panel_level[0].count, 2);
}

TEST_F(SaveInTheWindow, makes_the_next_change_one_of_the_saved_texts)
{
    change_to("Gaul?", "Lutetia");
    toolbar(10);
    toolbar(8);
    EXPECT_EQ(answer(), "Lutetia");
    EXPECT_FALSE(logic->editor.has_changes());
    toolbar(10);
    expect_saved_on_display("Gaul?", "Lutetia");
}

TEST_F(SaveInTheWindow, lets_a_sign_judge_the_record)
{
    write_new("Norway?", "Oslo");
    toolbar(10);
    EXPECT_TRUE(press("-"));
    EXPECT_EQ(stored(4).q_side, (SideRow{1, 1, 0, clock.time, clock.time}));
    EXPECT_EQ(question(), "France?");
    change_to("Gaul?", "Lutetia");
    toolbar(10);
    EXPECT_TRUE(press("+"));
    EXPECT_EQ(stored(1).q_side.attempts, 1);
    EXPECT_EQ(stored(1).q_side.fails, 0);
    EXPECT_EQ(stored(1).q_side.date_last_test, clock.time);
    EXPECT_EQ(question(), "Italy?");
}

TEST_F(SaveInTheWindow, of_texts_that_are_there_already_goes_back_to_the_question)
{
    write_new("italy?", "Milan");
    desktop.expect_box("Question is already in database.");
    toolbar(10);
    expect_open("italy?", "Milan");
    EXPECT_TRUE(form1.Text_q.has_focus());
}

TEST_F(SaveInTheWindow, of_an_empty_answer_goes_back_to_the_answer)
{
    write_new("Norway?", "  ");
    desktop.expect_box("The answer is empty. No saving performed.");
    toolbar(10);
    expect_open("Norway?", "");
    EXPECT_TRUE(form1.Text_a.has_focus());
}

TEST_F(SaveInTheWindow, of_an_empty_question_leaves_the_editor)
{
    write_new("  ", "Oslo");
    desktop.expect_box("The question is empty. No saving performed.");
    toolbar(10);
    EXPECT_FALSE(logic->editor.editing());
    EXPECT_TRUE(form1.Text_q.locked);
    EXPECT_TRUE(form1.Text_a.locked);
    EXPECT_EQ(answer(), "Oslo");
    EXPECT_TRUE(form1.toolbar(9).has_focus());
    EXPECT_EQ(fakes::read_course(path).qa.size(), 3U);
}

TEST_F(SaveInTheWindow, that_the_course_refuses_goes_back_to_the_text_that_is_too_long)
{
    change_to("Gaul?", std::string(213, 'a'));
    desktop.expect_box("The answer has 213 characters; 200 fit.");
    toolbar(10);
    expect_open("Gaul?", std::string(213, 'a'));
    EXPECT_TRUE(form1.Text_a.has_focus());
    EXPECT_EQ(stored(1).q, "France?");
    form1.Text_q.text_value = std::string(201, 'q');
    desktop.expect_box("The question has 201 characters; 200 fit. The answer has 213 characters; 200 fit.");
    toolbar(10);
    EXPECT_TRUE(form1.Text_q.has_focus());
}

TEST_F(SaveInTheWindow, that_fails_keeps_the_editor_open_and_may_be_repeated)
{
    const fakes::QaRow before = stored(1);
    change_to("Gaul?", "Lutetia");
    database.fail_at(Operation::begin, 1, DatabaseErrorKind::locked, "Another program is using the course.");
    desktop.expect_box("The question and its answer are not saved.\r\n\r\nThe course " + path +
                       " could not be read or written.\r\n\r\nAnother program is using the course.");
    form1.Text_q.take_focus();
    toolbar(10);
    expect_open("Gaul?", "Lutetia");
    EXPECT_TRUE(form1.Text_q.has_focus()) << "typing goes on where it stopped";
    EXPECT_EQ(stored(1), before);
    EXPECT_EQ(logic->state.shown.current_cnt(), 1);
    toolbar(10);
    expect_saved_on_display("Gaul?", "Lutetia");
    EXPECT_EQ(stored(1).q, "Gaul?");
}

TEST_F(SaveInTheWindow, whose_record_is_gone_gives_the_keyboard_back_to_the_box_that_had_it)
{
    change_to("Gaul?", "Lutetia");
    database.execute("Delete from qa where cnt=1");
    for (fakes::FakeTextBox* box : {&form1.Text_q, &form1.Text_a}) {
        box->take_focus();
        desktop.expect_box("The question is no longer in the course; another program has deleted it.\r\n\r\n"
                           "Do you want to save the texts as a new question and answer?",
                           platform::BoxAnswer::no);
        toolbar(10);
        expect_open("Gaul?", "Lutetia");
        EXPECT_TRUE(box->has_focus());
    }
}

TEST_F(SaveInTheWindow, whose_record_cannot_be_read_afterwards_leaves_the_texts_and_says_that_they_are_saved)
{
    for (const Operation operation : {Operation::open_recordset, Operation::query}) {
        SCOPED_TRACE(static_cast<int>(operation));
        const bool first = operation == Operation::open_recordset;
        const std::string text = first ? "Norway?" : "Sweden?";
        write_new(text, "North");
        // The queries for a duplicate and for the number of the record come first.
        database.fail_at(operation, first ? 1 : 3, DatabaseErrorKind::input_output, "It cannot be read.");
        desktop.expect_box("The question and its answer are saved, but they cannot be shown now.\r\n\r\nThe course " +
                           path + " could not be read or written.\r\n\r\nIt cannot be read.");
        toolbar(10);
        EXPECT_EQ(stored(first ? 4 : 5).q, text);
        EXPECT_FALSE(logic->editor.editing());
        EXPECT_EQ(logic->state.shown.current_cnt(), 0);
        EXPECT_EQ(logic->course.record_count, first ? 4 : 5);
        EXPECT_EQ(question(), text);
        EXPECT_EQ(answer(), "North");
        EXPECT_EQ(status(), "Saved.");
        EXPECT_TRUE(form1.Text_q.locked);
        EXPECT_FALSE(form1.toolbar(10).usable());
    }
}

TEST_F(SaveInTheWindow, of_unknown_outcome_keeps_the_editor_open_and_finds_out_at_the_next_save)
{
    write_new("Norway?", "Oslo");
    save_with_unknown_outcome();
    expect_open("Norway?", "Oslo");
    toolbar(10);
    expect_saved_on_display("Norway?", "Oslo");
    EXPECT_EQ(fakes::read_course(path).qa.size(), 4U);
    EXPECT_EQ(form1.screen.panel_total.text, "4");
}

TEST_F(SaveInTheWindow, of_unknown_outcome_is_told_once_the_editor_is_left)
{
    change_to("Gaul?", "Lutetia");
    save_with_unknown_outcome();
    press(platform::Key::escape);
    EXPECT_FALSE(logic->editor.editing());
    EXPECT_EQ(status(), "It is not known whether the changes are saved.");
    EXPECT_EQ(question(), "Gaul?");
    EXPECT_EQ(answer(), "Lutetia");
    EXPECT_EQ(logic->state.shown.current_cnt(), 0);
    form1.window.press(platform::Key::escape);
    EXPECT_FALSE(ended) << "a second Escape within the second ends nothing";
}

TEST_F(SaveInTheWindow, begun_before_the_first_question_leaves_the_dialog_as_it_was)
{
    user([this] { form1.window.close(); });
    ended = false;
    make_program();
    user([this] { started = logic->start.run(path); });
    write_new("Norway?", "Oslo");
    EXPECT_FALSE(form1.bot_yes.usable());
    toolbar(10);
    expect_saved_on_display("Norway?", "Oslo");
    EXPECT_EQ(prompt(), "Shall I ask you a question?");
    EXPECT_TRUE(form1.bot_yes.usable());
    yes();
    EXPECT_EQ(question(), "France?");
    EXPECT_EQ(logic->state.dialog, DialogState::OfferAnswer);
}

class UndoAfterEditing : public SaveInTheWindow {
protected:
    /// Judges the first question and shows it again months later.
    void judge_first_and_ask_it_again()
    {
        yes();
        yes();
        ASSERT_EQ(stored(1).q_side.successes, 4);
        clock.advance_days(400);
        toolbar(1);
        ASSERT_EQ(question(), "France?");
    }
};

TEST_F(UndoAfterEditing, takes_back_no_verdict_on_a_record_that_was_changed)
{
    judge_first_and_ask_it_again();
    change_to("Gaul?", "Lutetia");
    toolbar(10);
    choose("m_undo");
    EXPECT_EQ(stored(1).q_side.successes, 0);
    EXPECT_EQ(question(), "Gaul?");
    EXPECT_EQ(answer(), "Lutetia");
}

TEST_F(UndoAfterEditing, takes_back_the_verdict_on_another_record)
{
    yes();
    yes();
    ASSERT_EQ(question(), "Italy?");
    change_to("Italia?", "Roma");
    toolbar(10);
    choose("m_undo");
    EXPECT_EQ(stored(1).q_side.successes, 2);
    EXPECT_EQ(question(), "France?");
}

TEST_F(UndoAfterEditing, takes_back_the_verdict_where_a_save_was_refused)
{
    judge_first_and_ask_it_again();
    change_to("Italy?", "Lutetia");
    desktop.expect_box("Question is already in database.");
    toolbar(10);
    press(platform::Key::escape);
    choose("m_undo");
    EXPECT_EQ(stored(1).q_side.successes, 2);
}

TEST_F(UndoAfterEditing, takes_back_nothing_on_a_record_that_was_deleted)
{
    judge_first_and_ask_it_again();
    desktop.expect_box("Are you sure you want to delete question \"France?\" and its asnwer?",
                       platform::BoxAnswer::yes);
    toolbar(11);
    ASSERT_EQ(question(), "Spain?");
    const fakes::CourseContents before = fakes::read_course(path);
    choose("m_undo");
    EXPECT_EQ(fakes::read_course(path), before);
    EXPECT_EQ(question(), "Spain?");
}

class SaveWithAids : public SaveInTheWindow {
protected:
    void SetUp() override
    {
        builder.number_param("always_type", 1).number_param("list_mode", 1);
        SaveInTheWindow::SetUp();
    }
};

TEST_F(SaveWithAids, asks_for_no_answer_to_the_record)
{
    write_new("Norway?", "Oslo");
    toolbar(10);
    expect_saved_on_display("Norway?", "Oslo");
    EXPECT_FALSE(form1.panel_lista.is_visible);
    EXPECT_FALSE(logic->state.TypingMode);
}

class SaveInInvertedCourse : public SaveInTheWindow {
protected:
    void SetUp() override
    {
        builder.number_param("invert", 1);
        builder.question("France?", "Paris")
            .level(2)
            .attempts(4)
            .fails(1)
            .tested_ago(24h)
            .inverted()
            .level(1)
            .attempts(2)
            .fails(1)
            .tested_ago(48h);
        builder.question("Italy?", "Rome").inverted().level(0).attempts(1).fails(1).tested_ago(1h);
        start();
        yes();
        ASSERT_EQ(question(), "Paris");
    }
};

TEST_F(SaveInInvertedCourse, puts_the_question_into_the_column_that_is_asked)
{
    write_new("Rome", "Largest town of Italy?");
    toolbar(10);
    expect_saved_on_display("Rome", "Largest town of Italy?");
    EXPECT_EQ(stored(3).q, "Largest town of Italy?");
    EXPECT_EQ(stored(3).a, "Rome");
    EXPECT_EQ(logic->state.shown.current_cnt(), 3) << "not the first record with that text";
    EXPECT_TRUE(press("-"));
    EXPECT_EQ(stored(3).a_side.fails, 1);
    EXPECT_EQ(stored(3).q_side.fails, 0);
}

TEST_F(SaveInInvertedCourse, starts_the_history_of_both_directions_again)
{
    const fakes::QaRow before = stored(1);
    change_to("Lutetia", "France?");
    toolbar(10);
    expect_saved_on_display("Lutetia", "France?");
    EXPECT_EQ(stored(1), (fakes::QaRow{1, "France?", "Lutetia",
                                       SideRow{0, 0, 0, before.q_side.date_last_test, before.q_side.date_last_show},
                                       SideRow{0, 0, 0, before.a_side.date_last_test, before.a_side.date_last_show}}));
}

TEST_F(SaveInInvertedCourse, of_an_answer_that_is_there_already_leaves_the_editor)
{
    write_new("Milan", "Italy?");
    desktop.expect_box("Answer is already in database.");
    toolbar(10);
    EXPECT_FALSE(logic->editor.editing());
    EXPECT_EQ(question(), "Milan");
    EXPECT_EQ(answer(), "Italy?");
    EXPECT_TRUE(form1.Text_q.locked);
    EXPECT_TRUE(form1.Text_a.locked);
    EXPECT_EQ(logic->state.shown.current_cnt(), 0);
    EXPECT_TRUE(form1.toolbar(9).has_focus());
    EXPECT_EQ(fakes::read_course(path).qa.size(), 2U);
}

} // namespace
} // namespace cuedrill::drill
