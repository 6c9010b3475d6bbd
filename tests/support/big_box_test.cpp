#include "fakes/fake_f_msgbox.h"
#include "support/big_box.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <utility>

namespace cuedrill::support {
namespace {

using platform::Key;
using platform::Place;

class BigBoxTest : public testing::Test {
protected:
    BigBoxTest() { box.attach(); }

    [[nodiscard]] std::ptrdiff_t times(std::string_view call) const
    {
        return std::count(f_msgbox.journal.begin(), f_msgbox.journal.end(), call);
    }
    [[nodiscard]] Place text_place() const { return f_msgbox.window.places.at(&f_msgbox.Text1); }
    [[nodiscard]] Place ok_place() const { return f_msgbox.window.places.at(&f_msgbox.b_ok); }
    [[nodiscard]] Place adjust_place() const { return f_msgbox.window.places.at(&f_msgbox.pic_adjust); }

    fakes::FakeFMsgbox f_msgbox;
    BigBox box{f_msgbox.controls};
};

TEST_F(BigBoxTest, has_a_locked_text_in_a_fixed_pitch_font_with_a_name)
{
    box.big_box("A text.", "A title");
    EXPECT_EQ(f_msgbox.Text1.font.name, "Courier New");
    EXPECT_EQ(f_msgbox.Text1.font.points, 9);
    EXPECT_FALSE(f_msgbox.Text1.font.bold);
    EXPECT_TRUE(f_msgbox.Text1.locked);
    EXPECT_EQ(f_msgbox.Text1.accessible_name, "Text");
    EXPECT_EQ(f_msgbox.b_ok.caption_value, "OK");
}

TEST_F(BigBoxTest, is_not_shown_before_it_is_called)
{
    EXPECT_FALSE(f_msgbox.window.shown);
    EXPECT_EQ(times("f_msgbox.show"), 0);
}

TEST_F(BigBoxTest, shows_text_and_caption_over_the_main_window)
{
    box.big_box("one\r\ntwo", "Numbers");
    EXPECT_EQ(f_msgbox.Text1.text_value, "one\r\ntwo");
    EXPECT_EQ(box.big_box_text(), "one\r\ntwo");
    EXPECT_EQ(f_msgbox.window.caption, "Numbers");
    EXPECT_EQ(times("f_msgbox.cover"), 1);
    EXPECT_TRUE(f_msgbox.window.shown);
    EXPECT_TRUE(f_msgbox.Text1.has_focus());
}

// Otherwise the user would see it move.
TEST_F(BigBoxTest, is_complete_before_it_is_shown)
{
    box.big_box("one", "Numbers");
    const auto place_of = [&](std::string_view call) {
        return std::find(f_msgbox.journal.begin(), f_msgbox.journal.end(), call) - f_msgbox.journal.begin();
    };
    EXPECT_LT(place_of("Text1.text=one"), place_of("f_msgbox.show"));
    EXPECT_LT(place_of("f_msgbox.caption=Numbers"), place_of("f_msgbox.show"));
    EXPECT_LT(place_of("f_msgbox.cover"), place_of("f_msgbox.show"));
}

TEST_F(BigBoxTest, replaces_text_and_caption_later_and_stays_where_it_is)
{
    box.big_box("one", "Numbers");
    box.big_box("a", "Letters");
    EXPECT_EQ(f_msgbox.Text1.text_value, "a");
    EXPECT_EQ(box.big_box_text(), "a");
    EXPECT_EQ(f_msgbox.window.caption, "Letters");
    EXPECT_EQ(times("f_msgbox.cover"), 1);
}

TEST_F(BigBoxTest, keeps_its_place_while_it_is_hidden)
{
    box.big_box("one", "Numbers");
    f_msgbox.window.close();
    box.big_box("a", "Letters");
    EXPECT_TRUE(f_msgbox.window.shown);
    EXPECT_EQ(times("f_msgbox.cover"), 1);
}

TEST_F(BigBoxTest, is_hidden_by_the_ok_button)
{
    box.big_box("one", "Numbers");
    f_msgbox.b_ok.click();
    EXPECT_FALSE(f_msgbox.window.shown);
}

TEST_F(BigBoxTest, is_hidden_by_its_close_button)
{
    box.big_box("one", "Numbers");
    f_msgbox.window.close();
    EXPECT_FALSE(f_msgbox.window.shown);
}

TEST_F(BigBoxTest, is_hidden_by_escape_and_by_enter)
{
    for (const Key key : {Key::escape, Key::enter}) {
        box.big_box("one", "Numbers");
        EXPECT_TRUE(f_msgbox.window.press(key)) << "swallowed";
        EXPECT_FALSE(f_msgbox.window.shown);
    }
}

// The Enter that chose the command may still be down and auto-repeat.
TEST_F(BigBoxTest, is_left_alone_by_keys_that_are_held)
{
    box.big_box("one", "Numbers");
    for (const Key key : {Key::escape, Key::enter})
        EXPECT_TRUE(f_msgbox.window.on_key({.key = key, .auto_repeat = true})) << "swallowed";
    EXPECT_TRUE(f_msgbox.window.shown);
}

TEST_F(BigBoxTest, leaves_other_keys_to_its_controls)
{
    box.big_box("one", "Numbers");
    EXPECT_FALSE(f_msgbox.window.on_key({.character = " "}));
    EXPECT_TRUE(f_msgbox.window.shown);
}

TEST_F(BigBoxTest, gives_its_text_all_but_the_strip_of_the_ok_button)
{
    box.big_box("one", "Numbers");
    f_msgbox.window.resize(8000, 6000);
    EXPECT_EQ(text_place(), (Place{100, 100, 7800, 5280}));
    EXPECT_EQ(ok_place(), (Place{3325, 5480, 1350, 420}));
    EXPECT_EQ(adjust_place(), (Place{7760, 5760, 240, 240}));
}

TEST_F(BigBoxTest, has_its_controls_placed_from_the_start)
{
    f_msgbox.window.on_resize = {}; // the platform sends no resize event if the window already has the size
    box.big_box("one", "Numbers");
    EXPECT_EQ(text_place(), (Place{100, 100, 11800, 8280}));
}

TEST_F(BigBoxTest, places_nothing_while_it_is_minimised)
{
    box.big_box("one", "Numbers");
    const auto before = f_msgbox.window.places;
    f_msgbox.window.is_minimised = true;
    f_msgbox.window.resize(160, 24);
    EXPECT_EQ(f_msgbox.window.places, before);
    f_msgbox.window.is_minimised = false;
    f_msgbox.window.resize(5000, 4000);
    EXPECT_EQ(adjust_place(), (Place{4760, 3760, 240, 240}));
}

TEST_F(BigBoxTest, keeps_the_ok_button_beside_the_picture_in_the_corner)
{
    box.big_box("one", "Numbers");
    f_msgbox.window.resize(1830, 3000);
    EXPECT_EQ(ok_place(), (Place{140, 2480, 1350, 420}));
    f_msgbox.window.resize(1000, 3000);
    EXPECT_EQ(ok_place(), (Place{100, 2480, 560, 420}));
}

TEST_F(BigBoxTest, has_no_negative_places_and_nothing_outside_in_the_smallest_windows)
{
    box.big_box("one", "Numbers");
    for (const auto& [width, height] : {std::pair{0, 0}, {100, 100}, {300, 90}, {90, 300}, {700, 500}, {1500, 620}}) {
        f_msgbox.window.resize(width, height);
        for (const Place& place : {text_place(), ok_place(), adjust_place()}) {
            EXPECT_GE(place.left, 0) << width << " x " << height;
            EXPECT_GE(place.top, 0) << width << " x " << height;
            EXPECT_GE(place.width, 0) << width << " x " << height;
            EXPECT_GE(place.height, 0) << width << " x " << height;
            EXPECT_TRUE(place.width == 0 || place.left + place.width <= width) << width << " x " << height;
            EXPECT_TRUE(place.height == 0 || place.top + place.height <= height) << width << " x " << height;
        }
    }
}

} // namespace
} // namespace cuedrill::support
