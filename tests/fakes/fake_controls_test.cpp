#include "fakes/fake_controls.h"
#include "fakes/fake_form1.h"

#include <gtest/gtest.h>

namespace cuedrill::fakes {
namespace {

using platform::Key;
using platform::KeyPress;
using platform::MouseButton;

class Button : public testing::Test {
protected:
    Button()
    {
        button.on_mouse_down = [this](MouseButton pressed) {
            events.emplace_back(pressed == MouseButton::left ? "left" : "right");
        };
        button.on_click = [this] { events.emplace_back("click"); };
    }

    FakeButton button{"bot_yes"};
    std::vector<std::string> events;
};

using Events = std::vector<std::string>;

TEST_F(Button, goes_down_before_it_clicks)
{
    button.click();
    EXPECT_EQ(events, (Events{"left", "click"}));
}

TEST_F(Button, right_mouse_button_does_not_click)
{
    button.right_click();
    EXPECT_EQ(events, Events{"right"});
}

TEST_F(Button, keyboard_clicks_without_the_mouse)
{
    button.activate();
    EXPECT_EQ(events, Events{"click"});
}

TEST_F(Button, is_inert_while_disabled_or_hidden)
{
    button.set_enabled(false);
    button.click();
    button.right_click();
    button.activate();
    button.set_enabled(true);
    button.set_visible(false);
    button.click();
    button.right_click();
    button.activate();
    EXPECT_EQ(events, Events{});
}

TEST_F(Button, that_going_down_disabled_does_not_click)
{
    button.on_mouse_down = [this](MouseButton) { button.set_enabled(false); };
    button.click();
    EXPECT_EQ(events, Events{});
}

TEST(Menus, find_entries_by_name_and_keep_their_order)
{
    FakeMenuBar bar;
    platform::Menu& menu = bar.add_menu("m_file", "&File");
    int opened = 0;
    menu.add_entry("m_open", "&Open").on_click = [&] { ++opened; };
    menu.add_entry("m_exit", "E&xit");

    bar.entry("m_open").click();
    bar.entry("m_open").set_enabled(false);
    bar.entry("m_open").click();

    EXPECT_EQ(opened, 1);
    EXPECT_EQ(bar.menu("m_file").order, (std::vector<std::string>{"m_open", "m_exit"}));
    EXPECT_EQ(bar.menu("m_file").caption, "&File");
    EXPECT_EQ(bar.entry("m_exit").caption(), "E&xit");
    EXPECT_THROW((void)bar.entry("m_unknown"), std::out_of_range);
    EXPECT_THROW((void)bar.menu("m_unknown"), std::out_of_range);
}

TEST(Timer, ticks_only_while_it_runs)
{
    FakeTimer timer;
    int ticks = 0;
    timer.on_tick = [&] { ++ticks; };
    timer.tick();
    timer.start(std::chrono::milliseconds(250));
    timer.tick();
    timer.stop();
    timer.tick();
    EXPECT_EQ(ticks, 1);
    EXPECT_EQ(timer.period.count(), 250);
}

TEST(Window, tells_whether_a_key_was_swallowed)
{
    FakeWindow window;
    EXPECT_FALSE(window.press("y"));
    window.on_key = [](const KeyPress& key) { return key.character == "y" && !key.auto_repeat; };
    EXPECT_TRUE(window.press("y"));
    EXPECT_FALSE(window.press("y", true));
    EXPECT_FALSE(window.press(Key::enter));
}

TEST(Form1, notes_what_is_done_to_its_controls_in_one_journal)
{
    FakeForm1 form1;
    platform::Screen screen;
    screen.panel_dialog = {.text = "Show answer?", .news = 1};
    form1.controls.screen.show(screen);
    form1.controls.bot_yes.set_visible(false);
    form1.controls.Text_a.set_background(common::light_green);
    form1.controls.bot_no.set_focus();
    EXPECT_EQ(form1.journal, (Journal{"panel_dialog.caption=Show answer?", "bot_yes.visible=false",
                                      "Text_a.background=128,255,128", "bot_no.focus"}));
}

TEST(Form1, has_the_focus_in_one_place_and_loses_it_with_the_button_that_has_it)
{
    FakeForm1 form1;
    form1.bot_yes.set_focus();
    form1.bot_no.take_focus();
    EXPECT_FALSE(form1.bot_yes.has_focus());
    EXPECT_TRUE(form1.bot_no.has_focus());
    form1.bot_yes.set_enabled(false);
    EXPECT_TRUE(form1.bot_no.has_focus());
    form1.bot_no.set_visible(false);
    EXPECT_FALSE(form1.bot_no.has_focus());
    form1.bot_other.set_focus();
    form1.bot_focus.set_focus();
    EXPECT_FALSE(form1.bot_other.has_focus());
}

TEST(Form1, gives_the_logic_its_own_controls)
{
    FakeForm1 form1;
    EXPECT_EQ(&form1.controls.bot_other, &form1.bot_other);
    EXPECT_EQ(&form1.controls.timer_1_min, &form1.timer_1_min);
    platform::Screen screen;
    screen.P_status.text = "Saved.";
    form1.controls.screen.show(screen);
    EXPECT_EQ(form1.screen, screen);
}

/// Two boxes, a hint and a button that share the focus of a window.
class FocusedControls : public testing::Test {
protected:
    FakeForm1 form1;
};

TEST_F(FocusedControls, have_it_one_at_a_time)
{
    form1.Text_q.set_focus();
    EXPECT_TRUE(form1.Text_q.has_focus());
    form1.t_hint.set_focus();
    EXPECT_FALSE(form1.Text_q.has_focus());
    EXPECT_TRUE(form1.t_hint.has_focus());
    form1.bot_focus.set_focus();
    EXPECT_FALSE(form1.t_hint.has_focus());
}

TEST_F(FocusedControls, get_it_when_they_are_clicked_or_written_into)
{
    form1.t_hint.click(0);
    EXPECT_TRUE(form1.t_hint.has_focus());
    form1.type(form1.Text_a, "x");
    EXPECT_TRUE(form1.Text_a.has_focus());
    EXPECT_FALSE(form1.t_hint.has_focus());
}

TEST(Form1, shows_a_key_to_the_window_and_then_to_the_box)
{
    FakeForm1 form1;
    Events events;
    bool window_swallows = false;
    bool box_swallows = false;
    form1.window.on_key = [&](const KeyPress& key) {
        events.push_back("window " + key.character);
        return window_swallows;
    };
    form1.Text_a.on_key = [&](const KeyPress& key) {
        events.push_back("box " + key.character);
        return box_swallows;
    };
    form1.type(form1.Text_a, "é");
    box_swallows = true;
    form1.type(form1.Text_a, "b");
    window_swallows = true;
    form1.type(form1.Text_a, "c");
    EXPECT_EQ(events, (Events{"window é", "box é", "window b", "box b", "window c"}));
    EXPECT_EQ(form1.Text_a.text(), "é");
}

TEST(Form1, makes_a_line_of_an_enter_that_nobody_wants_and_nothing_of_an_escape)
{
    FakeForm1 form1;
    form1.press_in(form1.Text_a, {.key = Key::enter});
    form1.press_in(form1.Text_a, {.key = Key::escape});
    form1.press_in(form1.t_hint, {.key = Key::enter});
    EXPECT_EQ(form1.Text_a.text(), "\r\n");
    EXPECT_EQ(form1.Text_a.caret(), 2U);
    EXPECT_EQ(form1.t_hint.text(), "");
}

TEST(Form1, numbers_its_toolbar_from_one)
{
    FakeForm1 form1;
    for (int number = 1; number <= platform::toolbar_buttons; ++number) {
        EXPECT_EQ(form1.toolbar(number).name, "pb_" + std::to_string(number));
        EXPECT_EQ(form1.controls.pb.at(static_cast<std::size_t>(number - 1)), &form1.toolbar(number));
    }
    EXPECT_THROW((void)form1.toolbar(0), std::out_of_range);
    EXPECT_THROW((void)form1.toolbar(12), std::out_of_range);
}

TEST(TextBox, has_the_caret_before_a_new_text)
{
    FakeTextBox box;
    box.set_text("Zürich");
    EXPECT_EQ(box.caret(), 0U);
    box.set_caret(99);
    EXPECT_EQ(box.caret(), 6U);
    box.set_text("Bern");
    EXPECT_EQ(box.caret(), 0U);
}

TEST(TextBox, inserts_beside_a_selection_and_types_over_it)
{
    FakeTextBox box;
    box.set_text("Zürich");
    box.selection = {1, 3};
    EXPECT_EQ(box.caret(), 1U);
    box.insert(1, "éé");
    EXPECT_EQ(box.text(), "Zééürich");
    EXPECT_EQ(box.selection, (common::TextRange{3, 3}));
    box.selection = {1, 4};
    box.take_character("u");
    EXPECT_EQ(box.text(), "Zurich");
    EXPECT_EQ(box.caret(), 2U);
}

TEST(TextBox, that_is_locked_takes_nothing_from_the_user)
{
    FakeTextBox box;
    box.set_text("Bern");
    box.set_locked(true);
    box.take_character("x");
    EXPECT_EQ(box.text(), "Bern");
    box.set_locked(false);
    box.take_character("x");
    EXPECT_EQ(box.text(), "xBern");
}

TEST(HintBox, knows_where_it_was_clicked_until_its_text_is_another)
{
    FakeHintBox box;
    std::optional<std::size_t> seen;
    box.on_click = [&] { seen = box.caret(); };
    EXPECT_EQ(box.caret(), std::nullopt);
    box.click(3);
    EXPECT_EQ(seen, 3U);
    box.set_words({{1, 2}});
    box.set_text("other");
    EXPECT_EQ(box.caret(), std::nullopt);
    EXPECT_TRUE(box.words.empty());
}

TEST(Frame, tells_of_a_new_width)
{
    FakeFrame frame;
    common::Twips seen = 0;
    frame.on_resize = [&] { seen = frame.width(); };
    frame.resize(12000);
    EXPECT_EQ(seen, 12000);
}

} // namespace
} // namespace cuedrill::fakes
