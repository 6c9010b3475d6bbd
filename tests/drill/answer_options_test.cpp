#include "common/colour.h"
#include "drill/display.h"
#include "drill/drill_state.h"
#include "drill/hints_fixture.h"
#include "drill/question_import.h"
#include "drill/status_line.h"
#include "store/course.h"

namespace cuedrill::drill {
namespace {

class AlwaysType : public DrillFixture {
protected:
    void start_typing_always()
    {
        builder.number_param("always_type", 1);
        start_with_three_questions();
    }

    void expect_typing() const
    {
        EXPECT_TRUE(logic->state.TypingMode);
        EXPECT_TRUE(form1.Text_a.has_focus());
        EXPECT_FALSE(form1.Text_a.locked);
        EXPECT_FALSE(form1.pb.at(4).is_enabled);
        EXPECT_EQ(form1.screen.panel_a.text, "Type the answer, then press Enter");
    }
};

TEST_F(AlwaysType, is_off_in_a_course_that_does_not_say_so)
{
    start_with_three_questions();
    EXPECT_TRUE(entry("m_always_let_me_type").checkable);
    EXPECT_FALSE(entry("m_always_let_me_type").checked);
    yes();
    EXPECT_FALSE(logic->state.TypingMode);
    EXPECT_FALSE(form1.Text_a.has_focus());
    EXPECT_TRUE(form1.toolbar(5).is_enabled);
}

TEST_F(AlwaysType, is_read_with_the_course)
{
    start_typing_always();
    EXPECT_TRUE(entry("m_always_let_me_type").checked);
    EXPECT_FALSE(logic->state.TypingMode) << "no question is on display";
    EXPECT_FALSE(form1.Text_a.has_focus());
}

TEST_F(AlwaysType, puts_the_caret_into_the_answer_box_at_each_question)
{
    start_typing_always();
    yes();
    expect_typing();
    type_answer("Paris");
    enter_in_answer();
    ASSERT_EQ(question(), "Italy?");
    expect_typing();
    form1.bot_no.take_focus();
    no();
    ASSERT_EQ(question(), "Spain?");
    expect_typing();
}

TEST_F(AlwaysType, takes_no_focus_where_no_question_follows)
{
    start_typing_always();
    yes();
    no();
    no();
    form1.bot_focus.set_focus();
    desktop.expect_box(nothing_mature);
    no();
    EXPECT_FALSE(logic->state.TypingMode);
    EXPECT_FALSE(form1.Text_a.has_focus());
}

TEST_F(AlwaysType, takes_no_focus_where_the_record_has_vanished)
{
    start_typing_always();
    yes();
    form1.bot_focus.set_focus();
    database.execute("Delete from qa where cnt = 1");
    user([this] { logic->display.ask(1); });
    EXPECT_EQ(question(), "");
    EXPECT_FALSE(logic->state.TypingMode);
    EXPECT_FALSE(form1.Text_a.has_focus());
}

TEST_F(AlwaysType, begins_with_the_question_on_display)
{
    start_with_three_questions();
    yes();
    choose("m_always_let_me_type");
    EXPECT_TRUE(entry("m_always_let_me_type").checked);
    EXPECT_EQ(fakes::read_course(path).number("always_type"), 1);
    expect_typing();
}

TEST_F(AlwaysType, goes_to_the_question_box_without_a_question)
{
    start_with_three_questions();
    choose("m_always_let_me_type");
    EXPECT_TRUE(form1.Text_q.has_focus());
    EXPECT_FALSE(logic->state.TypingMode);
    yes();
    expect_typing();
}

TEST_F(AlwaysType, goes_to_the_question_box_while_the_answer_is_on_display)
{
    start_with_three_questions();
    yes();
    yes();
    choose("m_always_let_me_type");
    EXPECT_TRUE(form1.Text_q.has_focus());
    EXPECT_FALSE(logic->state.TypingMode);
    EXPECT_EQ(answer(), "Paris");
}

TEST_F(AlwaysType, is_switched_off_again)
{
    start_typing_always();
    yes();
    choose("m_always_let_me_type");
    EXPECT_FALSE(entry("m_always_let_me_type").checked);
    EXPECT_EQ(fakes::read_course(path).number("always_type"), 0);
    EXPECT_TRUE(form1.Text_q.has_focus());
    EXPECT_TRUE(form1.toolbar(5).is_enabled);
    no();
    EXPECT_FALSE(logic->state.TypingMode);
    EXPECT_FALSE(form1.Text_a.has_focus());
}

TEST_F(AlwaysType, shows_the_masked_hint_without_leaving_the_answer_box)
{
    start_typing_always();
    yes();
    toolbar(4);
    EXPECT_EQ(form1.t_hint.text_value, "\x01\x01\x01\x01\x01");
    EXPECT_TRUE(form1.Text_a.has_focus());
}

class AlwaysHints : public HintsFixture {
protected:
    void start_with_hints()
    {
        builder.number_param("list_mode", 1);
        start_with_three_questions();
    }

    [[nodiscard]] std::ptrdiff_t hints_built() const
    {
        return std::count_if(form1.journal.begin(), form1.journal.end(),
                             [](const std::string& noted) { return noted.starts_with("t_hint.text="); });
    }

    void expect_hint_shown() const
    {
        EXPECT_TRUE(form1.panel_lista.is_visible);
        EXPECT_TRUE(form1.t_hint.is_visible);
        EXPECT_FALSE(form1.frame_stats.is_visible);
        EXPECT_TRUE(logic->state.AnswerShown);
    }
    void expect_no_hint() const
    {
        EXPECT_FALSE(form1.panel_lista.is_visible);
        EXPECT_FALSE(form1.t_hint.is_visible);
        EXPECT_TRUE(form1.frame_stats.is_visible);
        EXPECT_FALSE(form1.pb.at(2).is_enabled);
        EXPECT_FALSE(entry("m_view_stats").is_enabled);
    }
};

TEST_F(AlwaysHints, are_read_with_the_course)
{
    start_with_hints();
    EXPECT_TRUE(entry("m_list_mode").checkable);
    EXPECT_TRUE(entry("m_list_mode").checked);
    expect_no_hint();
    EXPECT_EQ(hints_built(), 0);
}

TEST_F(AlwaysHints, are_built_once_for_each_question)
{
    start_with_hints();
    yes();
    EXPECT_EQ(words(), Words{"Paris"});
    EXPECT_EQ(hints_built(), 1);
    expect_hint_shown();
    no();
    EXPECT_EQ(hints_built(), 2);
    const Words listed = words();
    EXPECT_EQ(std::count(listed.begin(), listed.end(), "Rome"), 1);
    expect_hint_shown();
}

TEST_F(AlwaysHints, are_not_built_where_no_question_follows)
{
    start_with_hints();
    yes();
    no();
    no();
    desktop.expect_box(nothing_mature);
    no();
    EXPECT_EQ(hints_built(), 3);
    expect_no_hint();
}

TEST_F(AlwaysHints, are_not_built_while_questions_are_imported)
{
    start_with_hints();
    yes();
    desktop.expect_box("2 questions and answers insterted.");
    user([this] {
        logic->question_import.import_file(
            folder.write("questions.txt", "@Q@ Norway? @A@ Oslo @Q@ Chile? @A@ Santiago"));
    });
    EXPECT_EQ(fakes::read_course(path).qa.size(), 5U);
    EXPECT_EQ(hints_built(), 1);
    expect_no_hint();
}

TEST_F(AlwaysHints, can_still_lead_to_a_success)
{
    start_with_hints();
    yes();
    click_word("Paris");
    EXPECT_EQ(stored(1).q_side.successes, 4);
    EXPECT_EQ(question(), "Italy?");
    expect_hint_shown();
}

TEST_F(AlwaysHints, leave_the_caret_to_typing_where_both_are_wanted)
{
    builder.number_param("always_type", 1);
    start_with_hints();
    yes();
    EXPECT_EQ(words(), Words{"Paris"});
    EXPECT_TRUE(form1.Text_a.has_focus());
    EXPECT_TRUE(logic->state.TypingMode);
}

TEST_F(AlwaysHints, that_cannot_be_read_leave_no_question_that_could_be_judged)
{
    start_with_hints();
    database.at_each_call([this](fakes::Operation operation) {
        if (operation == fakes::Operation::open_recordset &&
            database.statements().back().starts_with("Select min(cnt)"))
            throw platform::DatabaseError(platform::DatabaseErrorKind::full, 0, "The disk is full.");
    });
    desktop.expect_box("The course " + path + " could not be read or written.\r\n\r\nThe disk is full.");
    yes();
    EXPECT_EQ(question(), "");
    EXPECT_EQ(logic->state.shown.current_cnt(), 0);
    expect_no_hint();
    database.at_each_call({});
    yes();
    expect_hint_shown();
}

TEST_F(AlwaysHints, begin_with_the_question_on_display)
{
    start_with_three_questions();
    yes();
    logic->status.ShowStatus("something else", 0);
    choose("m_list_mode");
    EXPECT_TRUE(entry("m_list_mode").checked);
    EXPECT_EQ(fakes::read_course(path).number("list_mode"), 1);
    EXPECT_EQ(status(), "");
    expect_hint_shown();
}

TEST_F(AlwaysHints, begin_with_a_text_that_is_not_the_answer)
{
    start_with_three_questions();
    yes();
    type_answer("Pari");
    choose("m_list_mode");
    expect_hint_shown();
    EXPECT_EQ(answer(), "Pari");
}

TEST_F(AlwaysHints, do_not_begin_where_the_answer_stands_in_the_box)
{
    start_with_three_questions();
    yes();
    type_answer("pARIS");
    choose("m_list_mode");
    EXPECT_TRUE(entry("m_list_mode").checked);
    expect_no_hint();
    EXPECT_FALSE(logic->state.AnswerShown);
    choose("m_list_mode");
    yes();
    choose("m_list_mode");
    expect_no_hint();
}

TEST_F(AlwaysHints, begin_with_the_next_question_where_there_is_none)
{
    start_with_three_questions();
    choose("m_list_mode");
    expect_no_hint();
    yes();
    expect_hint_shown();
}

TEST_F(AlwaysHints, are_switched_off_with_what_they_have_shown)
{
    start_with_hints();
    yes();
    form1.t_hint.take_focus();
    choose("m_list_mode");
    EXPECT_FALSE(entry("m_list_mode").checked);
    EXPECT_EQ(fakes::read_course(path).number("list_mode"), 0);
    expect_no_hint();
    EXPECT_FALSE(logic->state.AnswerShown);
    EXPECT_FALSE(form1.t_hint.has_focus());
    EXPECT_TRUE(form1.toolbar(4).is_enabled);
    type_answer("Paris");
    enter_in_answer();
    EXPECT_EQ(stored(1).q_side.successes, 4);
    expect_no_hint();
}

TEST_F(AlwaysHints, leave_the_request_for_a_verdict_in_the_status_line)
{
    start_with_three_questions();
    yes();
    choose("m_show_answer");
    for (const bool on : {true, false}) {
        choose("m_list_mode");
        ASSERT_EQ(logic->course.params.list_mode, on);
        EXPECT_EQ(status(), "Press '+' or '-' to indicate success or failure");
        EXPECT_EQ(form1.screen.P_status.background, common::pure_red);
        EXPECT_TRUE(form1.screen.P_status.bold);
        clock.advance_seconds(600);
        form1.timer_250_ms.tick();
        EXPECT_EQ(status(), "Press '+' or '-' to indicate success or failure");
    }
    press("+");
    EXPECT_NE(form1.screen.P_status.background, common::pure_red);
}

/// The option cannot be stored.
class OptionFailure : public HintsFixture, public testing::WithParamInterface<fakes::Operation> {
protected:
    void SetUp() override
    {
        start_with_three_questions();
        yes();
        type_answer("Pa");
        logic->status.ShowStatus("something else", 0);
        before = fakes::read_course(path);
    }

    void fail_to_choose(const char* option)
    {
        form1.bot_focus.set_focus();
        database.fail_at(GetParam());
        desktop.expect_box("The course " + path + " could not be read or written.\r\n\r\nThe disk is full.");
        choose(option);
        EXPECT_EQ(fakes::read_course(path), before);
        EXPECT_EQ(question(), "France?");
        EXPECT_EQ(answer(), "Pa");
    }

    fakes::CourseContents before;
};

TEST_P(OptionFailure, changes_nothing_about_typing)
{
    fail_to_choose("m_always_let_me_type");
    EXPECT_FALSE(logic->course.params.always_type);
    EXPECT_FALSE(entry("m_always_let_me_type").checked);
    EXPECT_FALSE(logic->state.TypingMode);
    EXPECT_FALSE(form1.Text_a.has_focus());
    EXPECT_FALSE(form1.Text_q.has_focus());
    EXPECT_TRUE(form1.toolbar(5).is_enabled);
    EXPECT_EQ(status(), "something else");
}

TEST_P(OptionFailure, changes_nothing_about_hints)
{
    fail_to_choose("m_list_mode");
    EXPECT_FALSE(logic->course.params.list_mode);
    EXPECT_FALSE(entry("m_list_mode").checked);
    EXPECT_FALSE(form1.panel_lista.is_visible);
    EXPECT_FALSE(logic->state.AnswerShown);
    EXPECT_EQ(status(), "something else");
}

INSTANTIATE_TEST_SUITE_P(Steps, OptionFailure,
                         testing::Values(fakes::Operation::begin, fakes::Operation::execute, fakes::Operation::commit));

} // namespace
} // namespace cuedrill::drill
