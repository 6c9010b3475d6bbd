#include "common/colour.h"
#include "drill/drill_state.h"
#include "drill/edit_flags.h"
#include "drill/hints_fixture.h"

namespace cuedrill::drill {
namespace {

using platform::Key;

class ChosenWord : public HintsFixture {
protected:
    void expect_known() const
    {
        EXPECT_EQ(stored(1).q_side, (fakes::SideRow{5, 1, 4, clock.time, clock.time}));
        EXPECT_NE(question(), "first");
    }
    void expect_not_known() const
    {
        EXPECT_EQ(stored(1).q_side, (fakes::SideRow{5, 2, 0, clock.time, clock.time}));
        EXPECT_NE(question(), "first");
    }
    void expect_not_judged() const
    {
        EXPECT_EQ(stored(1).q_side.attempts, 4);
        EXPECT_EQ(question(), "first");
    }
    void expect_wrong(const std::string& composed, const std::string& correct)
    {
        desktop.expect_box_like(
            {.text = "Your answer is: \r\n\r\n   " + composed + "\r\n\r\nThe correct answer is: \r\n\r\n   " + correct,
             .icon = platform::BoxIcon::information,
             .title = "Wrong answer"},
            platform::BoxAnswer::ok);
    }
};

TEST_F(ChosenWord, that_is_the_answer_is_a_success)
{
    start_with_answers("Paris", {"Rome", "Oslo"});
    show_hint({0.0, 0.4});
    std::vector<std::string> seen;
    desktop.on_pump = [&] {
        seen.push_back(status() + " " + answer());
        EXPECT_EQ(form1.screen.P_status.background, common::pure_green);
        EXPECT_TRUE(form1.screen.P_status.bold);
    };
    click_word("Paris");
    desktop.on_pump = nullptr;
    EXPECT_EQ(seen, std::vector<std::string>{"OK Paris"});
    expect_known();
    EXPECT_FALSE(form1.panel_lista.is_visible);
    EXPECT_EQ(answer(), "");
}

TEST_F(ChosenWord, that_is_wrong_is_a_failure_at_once)
{
    start_with_answers("Paris", {"Rome", "Oslo"});
    show_hint({0.0, 0.4});
    expect_wrong("Rome", "Paris");
    desktop.on_box = [this] {
        EXPECT_EQ(form1.screen.P_status.background, common::pure_red);
        EXPECT_EQ(answer(), "");
        EXPECT_EQ(stored(1).q_side.attempts, 4);
    };
    click_word("Rome");
    desktop.on_box = nullptr;
    EXPECT_EQ(status(), "");
    expect_not_known();
}

TEST_F(ChosenWord, goes_behind_those_before_it_with_a_blank)
{
    start_with_answers("New York City", {"x", "y"});
    show_hint({0.0, 0.4});
    click_word("New");
    EXPECT_EQ(answer(), "New");
    EXPECT_EQ(form1.Text_a.caret(), 3U);
    click_word("York");
    EXPECT_EQ(answer(), "New York");
    expect_not_judged();
    click_word("City");
    expect_known();
}

TEST_F(ChosenWord, that_does_not_go_on_the_answer_is_told_with_those_before_it)
{
    start_with_answers("New York City", {"x", "y"});
    show_hint({0.0, 0.4});
    click_word("New");
    expect_wrong("New City", "New York City");
    click_word("City");
    expect_not_known();
}

TEST_F(ChosenWord, goes_on_what_was_typed_whatever_its_case_and_blanks)
{
    start_with_answers("New York City", {"x", "y"});
    show_hint({0.0, 0.4});
    type_answer("  new  ");
    click_word("York");
    EXPECT_EQ(answer(), "new York");
    type_answer(" c");
    EXPECT_EQ(answer(), "new York c");
    expect_not_judged();
}

TEST_F(ChosenWord, behind_blanks_alone_is_the_first_one)
{
    start_with_answers("Paris", {"x", "y"});
    show_hint({0.0, 0.4});
    type_answer("  ");
    click_word("Paris");
    expect_known();
}

TEST_F(ChosenWord, that_only_begins_the_answer_does_not_end_the_question)
{
    start_with_answers("Newport", {"New", "x"});
    show_hint({0.0, 0.4});
    click_word("New");
    EXPECT_EQ(answer(), "New");
    expect_not_judged();
}

TEST_F(ChosenWord, that_is_the_answer_and_more_is_wrong)
{
    start_with_answers("New", {"Newport", "x"});
    show_hint({0.0, 0.4});
    expect_wrong("Newport", "New");
    click_word("Newport");
    expect_not_known();
}

struct Pair {
    const char* name;
    const char* answer;
    const char* first;
    const char* second;
};

/// An answer put together from two words, one of which may belong to another answer.
class TwoWords : public ChosenWord, public testing::WithParamInterface<Pair> {};

TEST_P(TwoWords, stand_with_a_blank_between_them_unless_the_second_one_is_punctuation)
{
    const Pair& pair = GetParam();
    start_with_answers(pair.answer, {std::string(pair.first) + " " + pair.second, "x"});
    show_hint({0.0, 0.4});
    click_word(pair.first);
    expect_not_judged();
    click_word(pair.second);
    expect_known();
}

INSTANTIATE_TEST_SUITE_P(
    Pairs, TwoWords,
    testing::Values(Pair{"exclamation_mark", "Stop!", "Stop", "!"}, Pair{"colon", "Note:", "Note", ":"},
                    Pair{"at_sign", "me@", "me", "@"}, Pair{"slash", "and/", "and", "/"},
                    Pair{"digit_zero", "Apollo 0", "Apollo", "0"}, Pair{"digit_nine", "Apollo 9", "Apollo", "9"},
                    Pair{"capital", "Plan B", "Plan", "B"}, Pair{"small_letter", "vitamin c", "vitamin", "c"},
                    Pair{"letter_beyond_ascii", "Plan é", "Plan", "é"}, Pair{"two_signs", "Stop !!", "Stop", "!!"},
                    Pair{"sign_behind_the_letters", "set {", "set", "{"}),
    [](const auto& pair) { return std::string(pair.param.name); });

TEST_F(ChosenWord, counts_with_its_brackets_and_the_blanks_behind_it)
{
    start_with_answers("ab zz", {"x", "y"});
    show_hint({0.0, 0.4});
    ASSERT_EQ(hint(), " [ab]   [x]   [zz]  ");
    click_hint(0);
    EXPECT_EQ(answer(), "") << "no word is before the first blank";
    expect_not_judged();
    for (const std::size_t place : {1U, 2U, 3U, 4U, 5U, 6U, 7U}) {
        click_hint(place);
        EXPECT_EQ(answer(), "ab") << place;
        form1.Text_a.text_value = "";
    }
    expect_not_judged();
}

class BlankBetweenTwo : public ChosenWord, public testing::WithParamInterface<std::size_t> {};

TEST_P(BlankBetweenTwo, means_the_word_to_its_left)
{
    start_with_answers("ab zz", {"x", "y"});
    show_hint({0.0, 0.4});
    ASSERT_EQ(hint(), " [ab]   [x]   [zz]  ");
    expect_wrong("x", "ab zz");
    click_hint(GetParam());
    expect_not_known();
}

INSTANTIATE_TEST_SUITE_P(Places, BlankBetweenTwo, testing::Values(11, 12, 13));

TEST_F(ChosenWord, is_the_last_one_on_the_blanks_behind_it)
{
    start_with_answers("zz ab", {"x", "y"});
    show_hint({0.0, 0.4});
    ASSERT_EQ(hint(), " [ab]   [x]   [zz]  ");
    for (const std::size_t place : {17U, 18U, 19U, 20U}) {
        click_hint(place);
        EXPECT_EQ(answer(), "zz") << place;
        form1.Text_a.text_value = "";
    }
    expect_not_judged();
}

TEST_F(ChosenWord, is_found_behind_words_with_longer_characters)
{
    start_with_answers("Ärger übel", {"x", "y"});
    show_hint({0.0, 0.0});
    ASSERT_EQ(hint(), " [Ärger]   [übel]  ");
    click_hint(4);
    EXPECT_EQ(answer(), "Ärger");
    click_hint(11);
    expect_known();
}

TEST_F(ChosenWord, is_none_before_the_first_click)
{
    start_with_answers("Paris", {"Rome", "Oslo"});
    show_hint();
    user([this] { form1.t_hint.on_click(); });
    press_in_hint({.key = Key::enter});
    press_in_hint({.character = " "});
    EXPECT_EQ(answer(), "");
    EXPECT_EQ(desktop.beeps, 0);
    expect_not_judged();
}

TEST_F(ChosenWord, is_chosen_with_enter_or_the_blank)
{
    start_with_answers("New York", {"x", "y"});
    show_hint({0.0, 0.4});
    go_to_word("New");
    press_in_hint({.character = " "});
    EXPECT_EQ(answer(), "New");
    EXPECT_FALSE(logic->state.AwaitingVerdict);
    EXPECT_TRUE(form1.t_hint.has_focus());
    go_to_word("York");
    press_in_hint({.key = Key::enter});
    expect_known();
}

TEST_F(ChosenWord, is_chosen_once_by_a_key_that_is_held_or_pressed_twice)
{
    start_with_answers("New York", {"x", "y"});
    show_hint({0.0, 0.4});
    go_to_word("New");
    press_in_hint({.key = Key::enter, .auto_repeat = true});
    press_in_hint({.character = " ", .auto_repeat = true});
    EXPECT_EQ(answer(), "");
    press_in_hint({.key = Key::enter});
    press_in_hint({.key = Key::enter, .auto_repeat = true});
    EXPECT_EQ(answer(), "New");
    toolbar(3);
    form1.Text_a.text_value = "";
    show_hint({0.0, 0.4});
    go_to_word("New");
    press_in_hint({.key = Key::enter});
    clock.steady_seconds_more += 0.1;
    user([this] { form1.press_in(form1.t_hint, {.key = Key::enter}); });
    EXPECT_EQ(answer(), "New");
    expect_not_judged();
}

TEST_F(ChosenWord, is_chosen_once_by_a_blank_that_is_pressed_twice_at_once)
{
    start_with_answers("New York", {"x", "y"});
    show_hint({0.0, 0.4});
    go_to_word("New");
    press_in_hint({.character = " "});
    clock.steady_seconds_more += 0.1;
    expect_not_judged();
    user([this] { form1.press_in(form1.t_hint, {.character = " "}); });
    EXPECT_EQ(answer(), "New");
    expect_not_judged();
}

TEST_F(ChosenWord, is_not_chosen_by_other_keys_which_change_nothing)
{
    start_with_answers("Paris", {"Rome", "Oslo"});
    show_hint({0.0, 0.4});
    const std::string before = hint();
    go_to_word("Paris");
    for (const char* key : {"x", "+", "*", "é", "1"}) {
        form1.bot_focus.set_focus();
        EXPECT_TRUE(form1.t_hint.on_key({.character = key})) << key;
        EXPECT_TRUE(form1.t_hint.has_focus()) << key;
    }
    EXPECT_EQ(hint(), before);
    EXPECT_EQ(answer(), "");
    expect_not_judged();
}

TEST_F(ChosenWord, leaves_the_letters_of_commands_to_the_window)
{
    start_with_answers("Paris", {"Rome", "Oslo"});
    show_hint();
    form1.t_hint.take_focus();
    press_in_hint({.character = "q"});
    EXPECT_NE(question(), "first");
    EXPECT_FALSE(form1.t_hint.has_focus());
}

TEST_F(ChosenWord, cannot_be_added_to_an_answer_that_is_on_display)
{
    start_with_answers("Paris", {"Rome", "Oslo"});
    show_hint({0.0, 0.4});
    yes();
    click_word("Paris");
    click_word("Rome");
    EXPECT_EQ(desktop.beeps, 2);
    EXPECT_EQ(answer(), "Paris");
    expect_not_judged();
    choose("m_show_answer");
    go_to_word("Rome");
    press_in_hint({.key = Key::enter});
    EXPECT_EQ(desktop.beeps, 3);
    expect_not_judged();
}

TEST_F(ChosenWord, does_nothing_in_the_editor)
{
    start_with_answers("Paris", {"Rome", "Oslo"});
    show_hint({0.0, 0.4});
    toolbar(8);
    click_word("Rome");
    EXPECT_EQ(answer(), "Paris");
    EXPECT_TRUE(logic->edit_flags.edit_mode);
    EXPECT_EQ(desktop.beeps, 0);
}

TEST_F(ChosenWord, of_decomposed_letters_is_the_same_as_of_composed_ones)
{
    start_with_answers("Café noir", {"Cafe\u0301", "x"});
    show_hint({0.0, 0.4});
    click_word("Cafe\u0301");
    expect_not_judged();
    click_word("noir");
    expect_known();
}

class ChosenWordFailure : public ChosenWord, public testing::WithParamInterface<fakes::Operation> {
protected:
    void SetUp() override
    {
        start_with_answers("New York", {"Rome", "Oslo"});
        show_hint({0.0, 0.4});
        click_word("New");
    }

    void fail()
    {
        database.fail_at(GetParam());
        desktop.expect_box("The course " + path + " could not be read or written.\r\n\r\nThe disk is full.");
    }
};

TEST_P(ChosenWordFailure, of_a_success_lets_the_last_word_be_chosen_again)
{
    fail();
    click_word("York");
    expect_not_judged();
    EXPECT_EQ(answer(), "New");
    EXPECT_TRUE(form1.panel_lista.is_visible);
    click_word("York");
    expect_known();
}

TEST_P(ChosenWordFailure, of_a_failure_leaves_the_words_before_it)
{
    expect_wrong("New Rome", "New York");
    fail();
    click_word("Rome");
    expect_not_judged();
    EXPECT_EQ(answer(), "New");
    click_word("York");
    expect_known();
}

INSTANTIATE_TEST_SUITE_P(Steps, ChosenWordFailure,
                         testing::Values(fakes::Operation::begin, fakes::Operation::execute, fakes::Operation::commit));

} // namespace
} // namespace cuedrill::drill
