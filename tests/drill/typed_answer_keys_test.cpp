#include "common/colour.h"
#include "drill/answer_aids.h"
#include "drill/drill_fixture.h"
#include "drill/drill_state.h"

namespace cuedrill::drill {
namespace {

using platform::Key;
using platform::KeyPress;

constexpr const char* verdict_request = "Press '+' or '-' to indicate success or failure";

/// The question "France?" is on display.
class AnswerKeys : public DrillFixture {
protected:
    void SetUp() override
    {
        start_with_three_questions();
        yes();
    }

    void hold_in_answer(const char* character)
    {
        press_in_answer({.key = Key::character, .character = character, .auto_repeat = true});
    }

    void expect_asked_for_verdict() const
    {
        EXPECT_EQ(answer(), "Paris");
        EXPECT_TRUE(logic->state.AwaitingVerdict);
        EXPECT_TRUE(logic->state.AnswerShown);
        EXPECT_EQ(status(), verdict_request);
        EXPECT_FALSE(form1.screen.panel_a.visible);
    }

    void expect_not_judged() const
    {
        EXPECT_EQ(question(), "France?");
        EXPECT_EQ(stored(1).q_side.attempts, 4);
    }
};

TEST_F(AnswerKeys, enter_in_an_empty_box_shows_the_answer_as_the_command_does)
{
    enter_in_answer();
    expect_asked_for_verdict();
    EXPECT_EQ(form1.Text_a.background, common::light_green);
    expect_not_judged();
}

TEST_F(AnswerKeys, enter_behind_blanks_alone_shows_the_answer)
{
    type_answer("  ");
    enter_in_answer();
    expect_asked_for_verdict();
}

TEST_F(AnswerKeys, enter_shows_the_answer_of_an_empty_question_too)
{
    form1.Text_q.text_value = "";
    enter_in_answer();
    expect_asked_for_verdict();
}

TEST_F(AnswerKeys, star_shows_the_answer_and_is_not_text)
{
    press_in_answer("*");
    expect_asked_for_verdict();
}

TEST_F(AnswerKeys, star_shows_the_answer_in_place_of_a_text_that_was_begun)
{
    type_answer("Par");
    press_in_answer("*");
    expect_asked_for_verdict();
}

TEST_F(AnswerKeys, plus_in_an_empty_box_reveals_the_answer_on_green)
{
    press_in_answer("+");
    EXPECT_EQ(answer(), "Paris");
    EXPECT_EQ(form1.Text_a.background, common::light_green);
    EXPECT_EQ(logic->state.SelfJudgement, "+");
    EXPECT_FALSE(logic->state.AwaitingVerdict);
    EXPECT_TRUE(form1.screen.panel_a.visible);
    EXPECT_EQ(logic->state.dialog, DialogState::OfferAnswer);
    expect_not_judged();
}

TEST_F(AnswerKeys, minus_in_an_empty_box_reveals_the_answer_on_red)
{
    press_in_answer("-");
    EXPECT_EQ(answer(), "Paris");
    EXPECT_EQ(form1.Text_a.background, common::light_red);
    expect_not_judged();
}

TEST_F(AnswerKeys, minus_leaves_the_request_for_a_verdict_when_hints_are_switched)
{
    press_in_answer("-");
    ASSERT_EQ(status(), verdict_request);
    choose("m_list_mode");
    EXPECT_EQ(status(), verdict_request);
    EXPECT_EQ(form1.Text_a.background, common::light_red);
    choose("m_list_mode");
    EXPECT_EQ(status(), verdict_request);
}

TEST_F(AnswerKeys, minus_leaves_the_request_for_a_verdict_behind_a_list)
{
    press_in_answer("-");
    choose("m_show_all");
    ASSERT_NE(status(), verdict_request);
    choose("m_view_stats");
    EXPECT_EQ(status(), verdict_request);
}

TEST_F(AnswerKeys, minus_leaves_the_request_for_a_verdict_that_is_not_stored)
{
    press_in_answer("-");
    database.fail_at(fakes::Operation::execute);
    desktop.expect_box("The course " + path + " could not be read or written.\r\n\r\nThe disk is full.");
    press_in_answer("-");
    expect_not_judged();
    EXPECT_EQ(status(), verdict_request);
}

TEST_F(AnswerKeys, minus_leaves_the_request_for_a_verdict_where_the_work_time_cannot_be_stored)
{
    press_in_answer("-");
    database.fail_at(fakes::Operation::execute);
    form1.timer_1_min.tick();
    EXPECT_EQ(status(), verdict_request);
}

TEST_F(AnswerKeys, plus_asks_for_no_verdict)
{
    press_in_answer("+");
    choose("m_list_mode");
    EXPECT_EQ(status(), "");
}

TEST_F(AnswerKeys, second_sign_is_the_verdict_whatever_the_first_one_was)
{
    press_in_answer("-");
    press_in_answer("+");
    EXPECT_EQ(stored(1).q_side, (fakes::SideRow{5, 1, 4, clock.time, clock.time}));
    EXPECT_EQ(question(), "Italy?");
    press_in_answer("+");
    press_in_answer("-");
    EXPECT_EQ(stored(2).q_side, (fakes::SideRow{4, 4, 0, clock.time, clock.time}));
    EXPECT_EQ(question(), "Spain?");
    EXPECT_EQ(logic->state.SelfJudgement, "");
}

TEST_F(AnswerKeys, enter_after_plus_tells_that_the_answer_was_right)
{
    press_in_answer("+");
    std::vector<std::string> seen;
    desktop.on_pump = [&] { seen.push_back(status()); };
    enter_in_answer();
    desktop.on_pump = nullptr;
    EXPECT_EQ(seen, std::vector<std::string>{"OK"});
}

TEST_F(AnswerKeys, enter_after_plus_gives_no_success_behind_a_hint)
{
    toolbar(4);
    press_in_answer("+");
    desktop.expect_box("Your answer is: \r\n\r\n   Paris\r\n\r\nThe correct answer is: \r\n\r\n   Paris");
    enter_in_answer();
    EXPECT_EQ(stored(1).q_side, (fakes::SideRow{5, 2, 0, clock.time, clock.time}));
}

TEST_F(AnswerKeys, enter_after_plus_beeps_once_the_dialog_has_asked_for_the_verdict)
{
    press_in_answer("+");
    yes();
    enter_in_answer();
    EXPECT_EQ(desktop.beeps, 1);
    expect_not_judged();
}

TEST_F(AnswerKeys, yes_after_a_sign_reveals_the_answer_on_green)
{
    press_in_answer("-");
    yes();
    EXPECT_EQ(form1.Text_a.background, common::light_green);
    EXPECT_EQ(logic->state.dialog, DialogState::AskKnown);
}

TEST_F(AnswerKeys, signs_behind_other_characters_are_text)
{
    type_answer("a+b-");
    EXPECT_EQ(answer(), "a+b-");
    expect_not_judged();
}

TEST_F(AnswerKeys, signs_behind_a_blank_are_text)
{
    type_answer(" +");
    EXPECT_EQ(answer(), " +");
}

TEST_F(AnswerKeys, plus_behind_the_right_answer_is_the_verdict)
{
    type_answer("pARIS");
    press_in_answer("+");
    EXPECT_EQ(stored(1).q_side.successes, 4);
    EXPECT_EQ(question(), "Italy?");
}

TEST_F(AnswerKeys, do_nothing_without_a_question)
{
    desktop.expect_box(nothing_mature);
    no();
    no();
    no();
    const fakes::CourseContents before = fakes::read_course(path);
    const std::string told = status();
    for (const char* character : {"*", "+", "-", "x"})
        press_in_answer(character);
    enter_in_answer();
    EXPECT_EQ(answer(), "");
    EXPECT_EQ(status(), told);
    EXPECT_EQ(form1.Text_a.background, std::nullopt);
    EXPECT_FALSE(logic->state.AwaitingVerdict);
    EXPECT_FALSE(logic->state.AnswerShown);
    EXPECT_EQ(fakes::read_course(path), before);
}

TEST_F(AnswerKeys, held_down_run_no_command)
{
    press_in_answer({.key = Key::enter, .auto_repeat = true});
    for (const char* character : {"*", "+", "-"})
        hold_in_answer(character);
    EXPECT_EQ(answer(), "");
    EXPECT_EQ(form1.Text_a.background, std::nullopt);
    EXPECT_EQ(logic->state.SelfJudgement, "");
    type_answer("Paris");
    press_in_answer({.key = Key::enter, .auto_repeat = true});
    press_in_answer({.key = Key::escape, .auto_repeat = true});
    hold_in_answer("+");
    EXPECT_EQ(answer(), "Paris");
    expect_not_judged();
    EXPECT_FALSE(ended);
}

TEST_F(AnswerKeys, held_down_type_other_characters)
{
    type_answer("a");
    hold_in_answer("a");
    form1.Text_a.set_caret(1);
    hold_in_answer("b");
    EXPECT_EQ(answer(), "aba");
}

TEST_F(AnswerKeys, of_the_editor_are_all_text)
{
    toolbar(8);
    form1.Text_a.text_value = "";
    for (const char* character : {"+", "-", "*", "a"})
        type_answer(character);
    enter_in_answer();
    EXPECT_EQ(answer(), "+-*a\r\n");
    EXPECT_FALSE(logic->state.AwaitingVerdict);
    form1.Text_a.selection = {0, 3};
    press_in_answer("b");
    EXPECT_EQ(answer(), "ba\r\n") << "a selection is replaced there";
}

/// The parameter is the way in which the answer was revealed.
class RevealedAnswer : public AnswerKeys, public testing::WithParamInterface<const char*> {
protected:
    void SetUp() override
    {
        AnswerKeys::SetUp();
        const std::string way = GetParam();
        if (way == "yes")
            yes();
        else if (way == "plus")
            press_in_answer("+");
        else if (way == "minus")
            press_in_answer("-");
        else
            choose("m_show_answer");
        ASSERT_EQ(answer(), "Paris");
    }
};

TEST_P(RevealedAnswer, is_locked)
{
    EXPECT_TRUE(form1.Text_a.locked);
    type_answer("x");
    form1.Text_a.set_caret(2);
    press_in_answer("y");
    EXPECT_EQ(answer(), "Paris");
}

TEST_P(RevealedAnswer, is_judged_by_enter_only_where_the_user_said_that_it_was_known)
{
    enter_in_answer();
    if (GetParam() == std::string_view("plus")) {
        EXPECT_EQ(desktop.beeps, 0);
        EXPECT_EQ(stored(1).q_side, (fakes::SideRow{5, 1, 4, clock.time, clock.time}));
        EXPECT_EQ(question(), "Italy?");
        EXPECT_EQ(answer(), "");
        return;
    }
    EXPECT_EQ(desktop.beeps, 1);
    EXPECT_EQ(answer(), "Paris");
    expect_not_judged();
}

TEST_P(RevealedAnswer, gets_its_verdict_by_a_sign)
{
    press_in_answer("-");
    EXPECT_EQ(stored(1).q_side, (fakes::SideRow{5, 2, 0, clock.time, clock.time}));
    EXPECT_EQ(question(), "Italy?");
}

INSTANTIATE_TEST_SUITE_P(Ways, RevealedAnswer, testing::Values("yes", "plus", "minus", "command"),
                         [](const auto& way) { return std::string(way.param); });

/// The answer box contains "Genève", which is not the answer.
class Insertion : public AnswerKeys {
protected:
    void SetUp() override
    {
        AnswerKeys::SetUp();
        type_answer("Genève");
    }

    /// Whether the logic consumes the key, so that the box ignores it.
    bool swallows(const KeyPress& key) { return form1.Text_a.on_key(key); }
};

TEST_F(Insertion, behind_the_text_is_left_to_the_box)
{
    EXPECT_FALSE(swallows({.character = "x"}));
    EXPECT_EQ(answer(), "Genève");
}

TEST_F(Insertion, before_the_end_is_done_by_the_program)
{
    form1.Text_a.set_caret(4);
    EXPECT_TRUE(swallows({.character = "ü"}));
    EXPECT_EQ(answer(), "Genèüve");
    EXPECT_EQ(form1.Text_a.caret(), 5U);
}

TEST_F(Insertion, goes_on_behind_the_character)
{
    form1.Text_a.set_caret(0);
    press_in_answer("A");
    press_in_answer("é");
    press_in_answer(" ");
    EXPECT_EQ(answer(), "Aé Genève");
    EXPECT_EQ(form1.Text_a.caret(), 3U);
}

TEST_F(Insertion, goes_before_a_selection_that_stays)
{
    form1.Text_a.selection = {1, 4};
    press_in_answer("x");
    EXPECT_EQ(answer(), "Gxenève");
    EXPECT_EQ(form1.Text_a.selection, (common::TextRange{2, 2}));
    form1.Text_a.selection = {0, 7};
    press_in_answer("y");
    EXPECT_EQ(answer(), "yGxenève");
}

TEST_F(Insertion, of_a_composed_character_is_left_to_the_box)
{
    form1.Text_a.selection = {1, 6};
    EXPECT_FALSE(swallows({.character = "é", .composed = true}));
    press_in_answer({.character = "é", .composed = true});
    EXPECT_EQ(answer(), "Gé");
}

TEST_F(Insertion, puts_signs_and_letters_of_commands_in_as_well)
{
    form1.Text_a.set_caret(1);
    for (const char* character : {"q", "+", "-"})
        press_in_answer(character);
    EXPECT_EQ(answer(), "Gq+-enève");
}

/// The user has chosen to type the answer.
class TypingModeTest : public AnswerKeys {
protected:
    void SetUp() override
    {
        AnswerKeys::SetUp();
        toolbar(5);
        ASSERT_TRUE(logic->state.TypingMode);
    }
};

TEST_F(TypingModeTest, makes_the_keys_of_commands_text)
{
    for (const char* character : {"*", "+", "-", "q", "a"})
        press_in_answer(character);
    EXPECT_EQ(answer(), "*+-qa");
    expect_not_judged();
}

TEST_F(TypingModeTest, makes_held_keys_text)
{
    for (const char* character : {"*", "+", "-"}) {
        hold_in_answer(character);
        hold_in_answer(character);
        form1.Text_a.set_caret(9);
    }
    EXPECT_EQ(answer(), "**++--");
}

TEST_F(TypingModeTest, takes_a_sign_behind_the_right_answer_for_text)
{
    type_answer("Paris+");
    EXPECT_EQ(answer(), "Paris+");
    expect_not_judged();
}

TEST_F(TypingModeTest, still_shows_the_answer_by_enter_in_an_empty_box)
{
    enter_in_answer();
    expect_asked_for_verdict();
}

TEST_F(TypingModeTest, takes_a_sign_for_the_verdict_that_the_status_line_asks_for)
{
    choose("m_show_answer");
    press_in_answer("+");
    EXPECT_EQ(stored(1).q_side.successes, 4);
    EXPECT_EQ(question(), "Italy?");
}

TEST_F(TypingModeTest, takes_a_sign_for_the_verdict_that_the_dialog_asks_for)
{
    yes();
    press_in_answer("-");
    EXPECT_EQ(stored(1).q_side, (fakes::SideRow{5, 2, 0, clock.time, clock.time}));
    EXPECT_EQ(question(), "Italy?");
}

TEST_F(TypingModeTest, ends_with_the_question)
{
    toolbar(1);
    EXPECT_FALSE(logic->state.TypingMode);
    EXPECT_EQ(form1.screen.panel_a.text, "Answer");
    press_in_answer("+");
    EXPECT_EQ(answer(), "Rome");
}

TEST_F(TypingModeTest, is_not_entered_while_the_answer_is_on_display)
{
    toolbar(1);
    yes();
    user([this] { logic->aids.m_let_me_type(); });
    EXPECT_FALSE(logic->state.TypingMode);
}

TEST_F(DrillFixture, heading_of_the_answer_tells_what_its_colour_tells)
{
    start_with_three_questions();
    yes();
    EXPECT_EQ(form1.screen.panel_a.text, "Answer");
    press_in_answer("-");
    EXPECT_EQ(form1.screen.panel_a.text, "Answer: not known (-)");
    EXPECT_EQ(form1.window.announcements.back(), "Answer: Paris") << "nothing is scored yet";
    EXPECT_EQ(status(), "Press '+' or '-' to indicate success or failure");
    toolbar(1);
    EXPECT_EQ(form1.screen.panel_a.text, "Answer");
    press_in_answer("+");
    EXPECT_EQ(form1.screen.panel_a.text, "Answer: known (+)");
    toolbar(1);
    yes();
    EXPECT_EQ(form1.screen.panel_a.text, "Answer");
}

} // namespace
} // namespace cuedrill::drill
