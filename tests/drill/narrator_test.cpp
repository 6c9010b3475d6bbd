// What a user who cannot see the window is told.

#include "drill/drill_state.h"
#include "drill/hints_fixture.h"
#include "store/course.h"

namespace cuedrill::drill {
namespace {

using platform::Key;
using platform::KeyModifier;

platform::KeyPress with_ctrl(const char* letter)
{
    return {.character = letter, .modifier = KeyModifier::control};
}

class Told : public HintsFixture {
protected:
    using Texts = std::vector<std::string>;

    /// What `action` has announced, without the status line.
    template <class Action>
    Texts told(Action action)
    {
        form1.window.announcements.clear();
        action();
        return form1.window.announcements;
    }

    Texts told_by_key(const platform::KeyPress& key)
    {
        return told([&] { EXPECT_TRUE(press(key)); });
    }

    static constexpr const char* steps =
        "Press A for the answer, H for a hint, T to type the answer, Q for another question.";
};

TEST_F(Told, ctrl_r_says_the_question_and_what_can_be_done)
{
    start_with_three_questions();
    EXPECT_EQ(told_by_key(with_ctrl("r")), Texts{"No question is on display. Press Q for the next one."});
    yes();
    EXPECT_EQ(told_by_key(with_ctrl("r")), Texts{std::string("Question: France? ") + steps});
    EXPECT_EQ(question(), "France?");
}

TEST_F(Told, ctrl_r_says_what_was_typed_and_leaves_the_cursor_where_it_is)
{
    start_with_three_questions();
    yes();
    toolbar(5);
    type_answer("Par");
    EXPECT_EQ(told_by_key(with_ctrl("r")),
              Texts{"Question: France? You have typed: Par. Type the answer, then press Enter."});
    EXPECT_TRUE(form1.Text_a.has_focus());
    EXPECT_EQ(answer(), "Par");
}

TEST_F(Told, ctrl_r_says_the_answer_on_display_and_asks_for_the_verdict_once)
{
    start_with_three_questions();
    yes();
    yes();
    EXPECT_EQ(told_by_key(with_ctrl("r")),
              Texts{"Question: France? Answer: Paris. Press + if you knew the answer, - if you did not."});
    toolbar(1);
    toolbar(2);
    EXPECT_EQ(told_by_key(with_ctrl("r")),
              Texts{"Question: Italy? Answer: Rome. Press '+' or '-' to indicate success or failure."});
}

TEST_F(Told, ctrl_r_says_what_is_written_in_the_editor)
{
    start_with_three_questions();
    write_new("Oslo?\r\n", "");
    EXPECT_EQ(told_by_key(with_ctrl("r")),
              Texts{"You are writing a new question. Question: Oslo? Type the question and its answer, then press "
                    "Save. Escape leaves without saving. Tab leads from box to box, Ctrl+S saves, Escape leaves."});
    EXPECT_TRUE(form1.Text_a.has_focus() || form1.Text_q.has_focus());
}

TEST_F(Told, ctrl_r_says_that_a_hint_or_a_list_is_open)
{
    start_with_three_questions();
    yes();
    show_hint({0.0});
    EXPECT_EQ(told_by_key(with_ctrl("r")).front(),
              std::string("Question: France? ") + steps +
                  " A hint is shown: Tab and the arrow keys lead to its words, Enter chooses one, Escape closes it.");
    toolbar(5);
    toolbar(4);
    EXPECT_EQ(told_by_key(with_ctrl("r")).front(),
              "Question: France? Type the answer, then press Enter. It counts as not known now. A hint is shown; "
              "Escape closes it.");
    choose("m_show_all");
    EXPECT_NE(told_by_key(with_ctrl("r")).front().find("A list is shown:"), std::string::npos);
}

TEST_F(Told, ctrl_r_says_that_a_course_is_empty)
{
    desktop.expect_box("You have passed level 5 for all questions.");
    start();
    EXPECT_EQ(told_by_key(with_ctrl("r")), Texts{"The course has no questions. Press I to write one."});
}

TEST_F(Told, ctrl_l_says_the_figures_of_the_question_and_of_the_course)
{
    const std::string course = "The course has 3 questions, 2 unpassed. Level 0: 1, level 1: 0, level 2: 1, level 3: "
                               "0, level 4: 0, level 5 and more: 0. Score today 0. Time today 00:00.";
    start_with_three_questions();
    EXPECT_EQ(told_by_key(with_ctrl("l")), Texts{"No question is on display. " + course});
    yes();
    EXPECT_EQ(told_by_key(with_ctrl("l")), Texts{"Level 2, 4 attempts, 1 failure, tested 24:00 hours ago. " + course});
    toolbar(1);
    toolbar(1);
    EXPECT_EQ(told_by_key(with_ctrl("l")).front().find("Level 0, 0 attempts, 0 failures, never tested. "), 0U);
}

TEST_F(Told, ctrl_l_says_what_is_due_once_that_is_counted)
{
    start_with_three_questions();
    EXPECT_EQ(told_by_key(with_ctrl("l")).front().find(" due "), std::string::npos);
    user([this] { form1.timer_due.tick(); });
    const std::string words = form1.screen.due_picture.words;
    EXPECT_FALSE(words.empty());
    EXPECT_NE(told_by_key(with_ctrl("l")).front().find("level 5 and more: 0. " + words + " Score today 0."),
              std::string::npos);
}

TEST_F(Told, a_key_with_ctrl_that_is_held_down_speaks_once)
{
    start_with_three_questions();
    platform::KeyPress held = with_ctrl("r");
    held.auto_repeat = true;
    EXPECT_EQ(told_by_key(held), Texts{});
}

TEST_F(Told, the_statistics_are_read_also_where_they_are_shown_already)
{
    start_with_three_questions();
    yes();
    EXPECT_EQ(told([&] { press("s"); }).front().find("The course has 3 questions"), 0U);
    show_hint({0.0});
    EXPECT_EQ(told([&] { press("s"); }).front().find("The course has 3 questions"), 0U);
    EXPECT_FALSE(form1.t_hint.is_visible);
}

TEST_F(Told, a_hint_comes_with_its_words_and_its_end_is_told)
{
    start_with_answers("Paris", {"Rome", "Oslo"});
    EXPECT_EQ(told([&] { show_hint({0.0, 0.4}); }), Texts{"Hint with 2 words: Paris, Rome."});
    EXPECT_EQ(told([&] { press(Key::escape); }), Texts{"The hint is closed."});
    choose("m_show_all");
    EXPECT_EQ(told([&] { press(Key::escape); }), Texts{"The list is closed."});
}

TEST_F(Told, a_hint_that_comes_with_the_question_is_told_behind_it)
{
    start_with_three_questions();
    choose("m_list_mode");
    const Texts texts = told([&] { toolbar(1); });
    ASSERT_EQ(texts.size(), 2U);
    EXPECT_EQ(texts[0], "France?");
    EXPECT_EQ(texts[1].find("Hint with "), 0U);
}

TEST_F(Told, a_masked_hint_is_told_by_the_number_of_its_letters)
{
    start_with_answers("K\u00f8benhavn, 2 x", {"Rome"});
    toolbar(5);
    EXPECT_EQ(told([&] { show_hint(); }), Texts{"Hint: 1 hidden \u00f8 7 hidden , 1 hidden, 1 hidden."});
}

TEST_F(Told, a_right_word_is_told_with_the_answer_so_far)
{
    start_with_answers("Rio de Janeiro", {"Rome"});
    show_hint({0.0});
    EXPECT_EQ(told([&] { click_word("Rio"); }), Texts{"Right so far: Rio"});
    EXPECT_EQ(told([&] { click_word("de"); }), Texts{"Right so far: Rio de"});
    EXPECT_EQ(told([&] { click_word("Janeiro"); }).front(), "Right.");
}

TEST_F(Told, a_word_that_cannot_be_chosen_any_more_says_what_to_do)
{
    start_with_answers("Rio", {"Rome"});
    show_hint({0.0});
    toolbar(2);
    EXPECT_EQ(told([&] { click_word("Rio"); }),
              Texts{"Press + if you knew the answer, - if you did not. A hint is shown; Escape closes it."});
    EXPECT_EQ(desktop.beeps, 1);
}

TEST_F(Told, an_option_says_whether_it_is_on)
{
    start_with_three_questions();
    EXPECT_EQ(told([&] { choose("m_always_let_me_type"); }), Texts{"Always let me type the answer: on."});
    EXPECT_EQ(told([&] { choose("m_always_let_me_type"); }), Texts{"Always let me type the answer: off."});
    EXPECT_EQ(told([&] { choose("m_list_mode"); }), Texts{"Always show hints: on."});
    EXPECT_EQ(told([&] { choose("m_list_mode"); }), Texts{"Always show hints: off."});
    EXPECT_EQ(told([&] { choose("m_invert"); }).front(), "Invert questions/answers: on.");
}

TEST_F(Told, a_sign_without_an_answer_on_display_says_what_to_do)
{
    start_with_three_questions();
    EXPECT_EQ(told([&] { EXPECT_FALSE(press("+")); }), Texts{"No question is on display. Press Q for the next one."});
    yes();
    EXPECT_EQ(told([&] { EXPECT_FALSE(press("-")); }), Texts{steps});
    EXPECT_EQ(told([&] { EXPECT_FALSE(press("-", true)); }), Texts{}) << "held down";
    form1.Text_a.take_focus();
    EXPECT_EQ(told([&] { EXPECT_FALSE(press("+")); }), Texts{}) << "a character of the answer box";
    EXPECT_EQ(stored(1).q_side.attempts, 4);
}

TEST_F(Told, a_sign_outside_the_boxes_says_what_to_do_while_an_answer_is_typed)
{
    start_with_three_questions();
    yes();
    toolbar(5);
    type_answer("Par");
    EXPECT_EQ(told([&] { EXPECT_FALSE(press("+")); }), Texts{}) << "a character of the answer box";
    form1.bot_focus.set_focus();
    EXPECT_EQ(told([&] { EXPECT_FALSE(press("+")); }), Texts{"Type the answer, then press Enter."});
    EXPECT_EQ(told([&] { EXPECT_FALSE(press("+", true)); }), Texts{}) << "held down";
}

TEST_F(Told, a_sign_in_the_list_says_what_to_do)
{
    start_with_three_questions();
    choose("m_show_all");
    ASSERT_TRUE(form1.listav.has_focus());
    EXPECT_EQ(told([&] { EXPECT_FALSE(press("-")); }),
              Texts{"No question is on display. Press Q for the next one. A list is shown: Tab and the arrow keys lead "
                    "to its lines, Enter chooses one, Escape closes it."});
}

TEST_F(Told, a_sign_in_the_editor_says_what_to_do_outside_its_boxes)
{
    start_with_three_questions();
    toolbar(9);
    form1.Text_q.take_focus();
    EXPECT_EQ(told([&] { EXPECT_FALSE(press("+")); }), Texts{}) << "a character of the question";
    form1.Text_a.take_focus();
    EXPECT_EQ(told([&] { EXPECT_FALSE(press("-")); }), Texts{}) << "a character of the answer";
    form1.bot_focus.set_focus();
    EXPECT_EQ(told([&] { EXPECT_FALSE(press("+")); }),
              Texts{"Tab leads from box to box, Ctrl+S saves, Escape leaves."});
}

TEST_F(Told, a_sign_in_the_question_that_cannot_be_changed_says_what_to_do)
{
    start_with_three_questions();
    yes();
    form1.Text_q.take_focus();
    EXPECT_EQ(told([&] { EXPECT_FALSE(press("+")); }), Texts{steps});
}

TEST_F(Told, enter_that_beeps_says_what_to_do)
{
    start_with_three_questions();
    yes();
    toolbar(2);
    EXPECT_EQ(told([&] { press(Key::enter); }), Texts{"Press + if you knew the answer, - if you did not."});
    EXPECT_EQ(desktop.beeps, 1);
}

TEST_F(Told, a_plus_that_shows_the_answer_says_what_to_do_then)
{
    start_with_three_questions();
    yes();
    form1.Text_a.take_focus();
    EXPECT_EQ(told([&] { press_in_answer("+"); }),
              (Texts{"Answer: Paris", "Press + if you knew the answer, - if you did not."}));
}

TEST_F(Told, a_letter_whose_command_is_disabled_says_so)
{
    start_with_three_questions();
    EXPECT_EQ(told([&] { press("a"); }),
              (Texts{"Show Answer cannot be used now.", "No question is on display. Press Q for the next one."}));
}

TEST_F(Told, a_new_question_and_a_change_are_told_as_such)
{
    start_with_three_questions();
    EXPECT_EQ(told([&] { toolbar(9); }), Texts{"New question. Question box."});
    press(Key::escape);
    toolbar(1);
    EXPECT_EQ(told([&] { toolbar(8); }), Texts{"You are changing this question."});
}

TEST_F(Told, the_end_of_the_program_by_escape_is_told)
{
    start_with_three_questions();
    EXPECT_EQ(told([&] { press(Key::escape); }), Texts{"Cuedrill ends."});
    EXPECT_TRUE(ended);
}

TEST_F(Told, the_end_of_the_program_by_the_button_is_told)
{
    start_with_three_questions();
    EXPECT_EQ(told([&] { no(); }), Texts{"Cuedrill ends."});
    EXPECT_TRUE(ended);
}

} // namespace
} // namespace cuedrill::drill
