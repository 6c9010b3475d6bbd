#include "drill/key_policy.h"
#include "fakes/fake_clock.h"

#include <cstdint>
#include <gtest/gtest.h>

namespace cuedrill::drill {
namespace {

using platform::Key;
using platform::KeyEvent;
using platform::KeyJudgement;
using platform::KeyKind;
using platform::KeyPress;

KeyPress character(const char* text, bool auto_repeat = false)
{
    return {.key = Key::character, .character = text, .auto_repeat = auto_repeat};
}

/// Keys pressed in two controls of the main window, and in a box.
class KeyJudgements : public testing::Test {
protected:
    static KeyEvent at(std::int64_t milliseconds, KeyKind kind, const void* focus)
    {
        return {.kind = kind, .milliseconds = milliseconds, .focus = focus};
    }
    static KeyEvent in_box(std::int64_t milliseconds, KeyKind kind, const void* focus)
    {
        return {.kind = kind, .milliseconds = milliseconds, .focus = focus, .in_box = true};
    }

    KeyJudgement press_at(std::int64_t milliseconds, KeyKind kind, const void* focus)
    {
        return policy.judge(at(milliseconds, kind, focus));
    }
    KeyJudgement press_in_box(std::int64_t milliseconds, KeyKind kind, const void* focus)
    {
        return policy.judge(in_box(milliseconds, kind, focus));
    }
    KeyJudgement type_at(std::int64_t milliseconds, KeyKind kind, const void* focus)
    {
        KeyEvent event = at(milliseconds, kind, focus);
        event.typing = true;
        return policy.judge(event);
    }
    KeyJudgement hold(KeyEvent event)
    {
        event.auto_repeat = true;
        return policy.judge(event);
    }
    void release_at(std::int64_t milliseconds, std::uint32_t scan_code)
    {
        static_cast<void>(policy.judge({.down = false, .scan_code = scan_code, .milliseconds = milliseconds}));
    }

    static constexpr KeyKind kinds_that_act[] = {KeyKind::enter, KeyKind::escape, KeyKind::blank};

    const char button = 0;
    const char text = 0;
    const char ok = 0;
    const char next_ok = 0;
    fakes::FakeClock clock;
    KeyPolicy policy{clock};
};

TEST_F(KeyJudgements, take_a_key_that_is_held_for_what_it_is)
{
    EXPECT_EQ(press_at(10'000, KeyKind::other, &text), KeyJudgement::meant);
    EXPECT_EQ(hold(at(10'500, KeyKind::other, &text)), KeyJudgement::held);
    EXPECT_EQ(hold(at(10'530, KeyKind::other, &text)), KeyJudgement::held);
}

TEST_F(KeyJudgements, let_a_key_held_on_while_the_focus_moves_do_nothing)
{
    for (const KeyKind kind : {KeyKind::blank, KeyKind::other}) {
        EXPECT_EQ(press_at(10'000, kind, &button), KeyJudgement::meant);
        EXPECT_EQ(hold(at(10'500, kind, &text)), KeyJudgement::stray);
        EXPECT_EQ(type_at(11'000, kind, &text), KeyJudgement::meant);
        EXPECT_EQ(hold(at(11'500, kind, &text)), KeyJudgement::held);
    }
}

TEST_F(KeyJudgements, let_a_key_held_on_while_a_box_opens_not_answer_it)
{
    press_at(10'000, KeyKind::enter, &text);
    for (const KeyKind kind : kinds_that_act)
        EXPECT_EQ(hold(in_box(10'500, kind, &ok)), KeyJudgement::stray);
    EXPECT_EQ(press_in_box(11'000, KeyKind::enter, &ok), KeyJudgement::meant);
}

TEST_F(KeyJudgements, take_two_quick_presses_of_a_key_that_acts_for_one)
{
    for (const KeyKind kind : kinds_that_act) {
        EXPECT_EQ(press_at(10'000, kind, &button), KeyJudgement::meant);
        EXPECT_EQ(press_at(10'149, kind, &button), KeyJudgement::stray);
        EXPECT_EQ(press_at(10'299, kind, &button), KeyJudgement::meant);
    }
}

TEST_F(KeyJudgements, take_a_row_of_quick_presses_for_one)
{
    EXPECT_EQ(press_at(10'000, KeyKind::blank, &button), KeyJudgement::meant);
    EXPECT_EQ(press_at(10'100, KeyKind::blank, &button), KeyJudgement::stray);
    EXPECT_EQ(press_at(10'200, KeyKind::blank, &button), KeyJudgement::stray);
    EXPECT_EQ(press_at(10'350, KeyKind::blank, &button), KeyJudgement::meant);
}

TEST_F(KeyJudgements, let_other_keys_follow_each_other_at_once)
{
    press_at(10'000, KeyKind::enter, &button);
    EXPECT_EQ(press_at(10'010, KeyKind::escape, &button), KeyJudgement::meant);
    EXPECT_EQ(press_at(10'020, KeyKind::other, &button), KeyJudgement::meant);
    EXPECT_EQ(press_at(10'030, KeyKind::other, &button), KeyJudgement::meant);
    EXPECT_EQ(press_at(10'040, KeyKind::escape, &button), KeyJudgement::meant);
    // The second Enter key of the keyboard.
    EXPECT_EQ(policy.judge({.kind = KeyKind::enter, .scan_code = 36, .milliseconds = 10'050, .focus = &button}),
              KeyJudgement::meant);
    EXPECT_EQ(policy.judge({.kind = KeyKind::enter, .scan_code = 104, .milliseconds = 10'060, .focus = &button}),
              KeyJudgement::meant);
}

TEST_F(KeyJudgements, let_a_key_that_bounces_not_reach_the_next_window)
{
    for (const KeyKind kind : kinds_that_act) {
        press_at(10'000, kind, &ok);
        EXPECT_EQ(type_at(10'100, kind, &text), KeyJudgement::stray);
        EXPECT_EQ(type_at(10'300, kind, &text), KeyJudgement::meant);
    }
}

TEST_F(KeyJudgements, let_an_enter_that_has_closed_a_box_be_followed_by_another_one_at_once)
{
    for (const std::int64_t gap : {50, 100, 149}) {
        EXPECT_EQ(press_in_box(10'000, KeyKind::enter, &ok), KeyJudgement::meant);
        EXPECT_EQ(type_at(10'000 + gap, KeyKind::enter, &text), KeyJudgement::meant) << gap;
        EXPECT_EQ(press_in_box(20'000, KeyKind::enter, &ok), KeyJudgement::meant);
        EXPECT_EQ(press_at(20'000 + gap, KeyKind::enter, &button), KeyJudgement::meant) << gap;
    }
}

TEST_F(KeyJudgements, let_the_contact_that_closes_a_box_chatter)
{
    press_in_box(10'000, KeyKind::enter, &ok);
    EXPECT_EQ(press_at(10'008, KeyKind::enter, &button), KeyJudgement::stray);
    EXPECT_EQ(press_at(10'057, KeyKind::enter, &button), KeyJudgement::stray);
    EXPECT_EQ(press_at(10'107, KeyKind::enter, &button), KeyJudgement::meant);
}

TEST_F(KeyJudgements, let_an_enter_that_closes_a_box_and_is_held_do_nothing_more)
{
    press_in_box(10'000, KeyKind::enter, &ok);
    EXPECT_EQ(hold(at(10'500, KeyKind::enter, &button)), KeyJudgement::stray);
}

TEST_F(KeyJudgements, let_an_enter_that_closes_a_box_not_close_the_next_one_unseen)
{
    press_in_box(10'000, KeyKind::enter, &ok);
    EXPECT_EQ(press_in_box(10'149, KeyKind::enter, &next_ok), KeyJudgement::stray);
    EXPECT_EQ(press_in_box(10'299, KeyKind::enter, &next_ok), KeyJudgement::meant);
}

TEST_F(KeyJudgements, let_an_escape_that_closes_a_box_do_nothing_else_unseen)
{
    for (const KeyKind kind : {KeyKind::escape, KeyKind::blank}) {
        press_in_box(10'000, kind, &ok);
        EXPECT_EQ(type_at(10'149, kind, &text), KeyJudgement::stray);
    }
}

TEST_F(KeyJudgements, count_every_key_in_text_that_is_being_edited)
{
    for (const KeyKind kind : {KeyKind::enter, KeyKind::blank, KeyKind::other}) {
        for (const std::int64_t moment : {10'000, 10'020, 10'040})
            EXPECT_EQ(type_at(moment, kind, &text), KeyJudgement::meant);
    }
}

// X11 sends a held key like this if the toolkit does not recognise auto-repeat.
TEST_F(KeyJudgements, take_a_press_at_the_time_of_the_release_of_the_same_key_for_a_held_one)
{
    const auto press = [this](std::int64_t moment, std::uint32_t scan_code) {
        return policy.judge({.kind = KeyKind::enter, .scan_code = scan_code, .milliseconds = moment, .focus = &button});
    };
    EXPECT_EQ(press(1000, 36), KeyJudgement::meant);
    release_at(1500, 36);
    EXPECT_EQ(press(1500, 36), KeyJudgement::held);
    release_at(1530, 36);
    EXPECT_EQ(press(1530, 37), KeyJudgement::meant) << "another key";
    release_at(1600, 36);
    EXPECT_EQ(press(1602, 36), KeyJudgement::held);
    release_at(1700, 36);
    EXPECT_EQ(press(1703, 36), KeyJudgement::meant);
}

TEST_F(KeyJudgements, know_no_release_of_a_key_without_a_place)
{
    press_at(1000, KeyKind::enter, &button);
    release_at(1500, 0);
    EXPECT_EQ(press_at(1500, KeyKind::enter, &button), KeyJudgement::meant);
}

TEST_F(KeyJudgements, do_not_measure_one_clock_by_the_other)
{
    EXPECT_EQ(press_at(9'000'000, KeyKind::blank, &button), KeyJudgement::meant);
    EXPECT_EQ(press_at(5000, KeyKind::blank, &button), KeyJudgement::meant);
    EXPECT_EQ(press_at(9'000'010, KeyKind::blank, &button), KeyJudgement::meant);
}

/// Echoes of the key that ran the last command.
class KeyEchoes : public testing::Test {
protected:
    bool is_echo(const KeyPress& press) { return !policy.counts(press, false); }
    bool is_echo_after(double seconds, const KeyPress& press)
    {
        clock.steady_seconds_more += seconds;
        return is_echo(press);
    }

    fakes::FakeClock clock;
    KeyPolicy policy{clock};
};

TEST_F(KeyEchoes, are_none_before_a_command)
{
    EXPECT_FALSE(is_echo({.key = Key::enter}));
    EXPECT_FALSE(is_echo(character("+", true)));
}

TEST_F(KeyEchoes, are_second_presses_of_a_command_key_within_150_ms)
{
    for (const KeyPress& press :
         {KeyPress{.key = Key::enter}, KeyPress{.key = Key::escape}, character("+"), character("-"), character("*")}) {
        policy.run(press, [] {});
        EXPECT_TRUE(is_echo_after(0.14, press)) << press.character;
        EXPECT_FALSE(is_echo_after(0.02, press)) << press.character;
    }
}

TEST_F(KeyEchoes, do_not_last_longer_by_further_presses)
{
    policy.run({.key = Key::enter}, [] {});
    EXPECT_TRUE(is_echo_after(0.1, {.key = Key::enter}));
    EXPECT_FALSE(is_echo_after(0.1, {.key = Key::enter}));
}

TEST_F(KeyEchoes, of_a_letter_are_only_its_repetitions)
{
    policy.run(character("t"), [] {});
    EXPECT_TRUE(is_echo_after(5, character("t", true)));
    EXPECT_FALSE(is_echo_after(0.01, character("t")));
    EXPECT_FALSE(is_echo(character("t", true))) << "the new press is one of its own";
}

TEST_F(KeyEchoes, are_measured_from_the_end_of_a_long_command)
{
    policy.run(character("+"), [this] { clock.steady_seconds_more += 3; });
    EXPECT_TRUE(is_echo_after(0.1, character("+")));
}

TEST_F(KeyEchoes, are_only_repetitions_after_a_box_that_the_user_has_closed)
{
    const KeyPress enter{.key = Key::enter};
    policy.run(enter, [this] {
        clock.steady_seconds_more += 3;
        policy.note_box_closed();
    });
    EXPECT_TRUE(is_echo_after(0.1, {.key = Key::enter, .auto_repeat = true}));
    EXPECT_FALSE(is_echo_after(0.01, enter));
    policy.run(enter, [] {});
    EXPECT_TRUE(is_echo_after(0.1, enter)) << "the next command has closed none";
}

TEST_F(KeyEchoes, are_only_repetitions_after_a_key_pressed_in_a_box)
{
    const KeyPress enter{.key = Key::enter};
    std::int64_t milliseconds = 0;
    const auto press = [&](bool in_box) {
        clock.steady_seconds_more += 3;
        milliseconds += 3000; // no bounce
        EXPECT_EQ(policy.judge({.kind = KeyKind::enter, .milliseconds = milliseconds, .in_box = in_box}),
                  KeyJudgement::meant);
    };
    policy.run(enter, [&] { press(true); });
    EXPECT_TRUE(is_echo_after(0.1, {.key = Key::enter, .auto_repeat = true}));
    EXPECT_FALSE(is_echo_after(0.01, enter));
    policy.run(enter, [&] { press(false); });
    EXPECT_TRUE(is_echo_after(0.1, enter)) << "no box was open";
}

TEST_F(KeyEchoes, are_not_the_same_key_with_a_modifier)
{
    const KeyPress combination{.key = Key::enter, .modifier = platform::KeyModifier::control};
    policy.run(combination, [] {});
    EXPECT_TRUE(is_echo_after(0.01, combination));
    EXPECT_FALSE(is_echo_after(0.01, {.key = Key::enter}));
}

TEST_F(KeyEchoes, of_a_composed_character_last_as_long_as_the_key_may_be_held)
{
    const KeyPress plus{.key = Key::character, .character = "+", .auto_repeat = false, .composed = true};
    policy.run(plus, [] {});
    for (int repetition = 0; repetition < 5; ++repetition)
        EXPECT_TRUE(is_echo_after(0.5, plus));
    EXPECT_FALSE(is_echo_after(0.8, plus));
}

TEST_F(KeyEchoes, of_a_held_key_last_until_another_press)
{
    policy.run(character("+"), [] {});
    EXPECT_TRUE(is_echo_after(60, character("+", true)));
    EXPECT_FALSE(is_echo(character("x", true)));
    EXPECT_TRUE(is_echo(character("+", true)));
    EXPECT_FALSE(is_echo(character("x")));
    EXPECT_FALSE(is_echo(character("+", true)));
}

TEST_F(KeyEchoes, are_no_other_keys)
{
    policy.run(character("+"), [] {});
    EXPECT_FALSE(is_echo(character("-")));
    policy.run({.key = Key::enter}, [] {});
    EXPECT_FALSE(is_echo({.key = Key::escape}));
}

TEST(KeyPauses, hold_escape_or_all_keys_for_a_second)
{
    fakes::FakeClock clock;
    KeyPolicy policy{clock};
    EXPECT_TRUE(policy.counts({.key = Key::escape}, false));
    policy.pause(KeyPolicy::Paused::escape);
    EXPECT_FALSE(policy.counts({.key = Key::escape}, false));
    EXPECT_TRUE(policy.counts(character("i"), false));
    policy.pause(KeyPolicy::Paused::all);
    clock.steady_seconds_more += 0.99;
    EXPECT_FALSE(policy.counts(character("i"), false));
    clock.steady_seconds_more += 0.02;
    EXPECT_TRUE(policy.counts(character("i"), false));
}

TEST(KeyPauses, hold_nothing_while_a_record_is_typed)
{
    fakes::FakeClock clock;
    KeyPolicy policy{clock};
    policy.pause(KeyPolicy::Paused::all);
    EXPECT_TRUE(policy.counts({.key = Key::escape}, true));
    EXPECT_FALSE(policy.counts({.key = Key::escape}, false));
}

TEST(KeyPauses, do_not_let_echoes_count)
{
    fakes::FakeClock clock;
    KeyPolicy policy{clock};
    policy.run({.key = Key::escape}, [&] { policy.pause(KeyPolicy::Paused::escape); });
    EXPECT_FALSE(policy.counts({.key = Key::escape}, true));
}

TEST_F(KeyJudgements, tell_for_how_long_no_key_was_pressed)
{
    EXPECT_FALSE(policy.pressed_within(1000));
    static_cast<void>(press_at(5000, KeyKind::other, &text));
    clock.steady_seconds_more += 1.5;
    release_at(6000, 30);
    EXPECT_TRUE(policy.pressed_within(1.6));
    EXPECT_FALSE(policy.pressed_within(1.5));
    static_cast<void>(hold(at(6100, KeyKind::other, &text)));
    EXPECT_TRUE(policy.pressed_within(0.1)) << "a held key counts, too";
}

} // namespace
} // namespace cuedrill::drill
