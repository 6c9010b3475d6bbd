#include "drill/command_controls.h"
#include "drill/commands.h"
#include "drill/drill_fixture.h"
#include "drill/drill_state.h"
#include "drill/edit_flags.h"
#include "drill/main_window.h"

namespace cuedrill::drill {
namespace {

TEST(Grid, is_reached_from_above)
{
    EXPECT_EQ(SnapToGrid(0), 0);
    EXPECT_EQ(SnapToGrid(14), 0);
    EXPECT_EQ(SnapToGrid(15), 15);
    EXPECT_EQ(SnapToGrid(220), 210);
    EXPECT_EQ(SnapToGrid(300), 300);
    EXPECT_EQ(SnapToGrid(-1), -15);
    EXPECT_EQ(SnapToGrid(-15), -15);
    EXPECT_EQ(SnapToGrid(-16), -30);
}

class ToolbarTest : public DrillFixture {};

TEST_F(ToolbarTest, has_captions_tool_tips_and_room_around_them)
{
    for (fakes::FakeButton& button : form1.pb)
        button.width_value = 1000;
    make_program();
    const struct {
        const char* caption;
        const char* tool_tip;
        common::Twips width;
    } expected[] = {{"Next &Question", " display next question ", 1300},
                    {"Show &Answer", " display answer ", 1300},
                    {"Show &Stats", " display statistics ", 1090},
                    {"Show &Hints", " display hint ", 1195},
                    {"Let me &Type", " let me type the answer ", 1195},
                    {"+", " set success ", 1195},
                    {"-", " set failure ", 1195},
                    {"&Edit", " modify question or answer ", 1090},
                    {"&Insert", " insert new question and answer ", 1195},
                    {"&Save", " save edited question and answer ", 1195},
                    {"&Delete", " delete question and answer ", 1210}};
    for (std::size_t place = 0; place < std::size(expected); ++place) {
        const fakes::FakeButton& button = form1.pb.at(place);
        EXPECT_EQ(button.caption_value, expected[place].caption);
        EXPECT_EQ(button.tool_tip, expected[place].tool_tip);
        EXPECT_EQ(button.width_value, expected[place].width) << button.caption_value;
    }
}

TEST_F(ToolbarTest, keeps_its_widths_when_the_next_course_is_loaded)
{
    start_with_three_questions();
    const common::Twips width = form1.toolbar(1).width_value;
    user([this] { logic->main_window.unload(); });
    user([this] { logic->main_window.load(); });
    EXPECT_EQ(form1.toolbar(1).width_value, width);
}

TEST_F(ToolbarTest, underlines_the_letters_that_alt_brings_to_it_and_not_to_a_menu)
{
    start_with_three_questions();
    for (int index = 1; index <= platform::toolbar_buttons; ++index) {
        const bool works = index == 1 || index == 4 || index == 5 || index == 8 || index == 11;
        EXPECT_EQ(form1.toolbar(index).access_letter_shown, works) << index;
    }
    for (const char menu : {'f', 'o', 'l', 'a', 's', 'i', '\0', 'x'})
        EXPECT_EQ(command_with_access_letter(menu), std::nullopt) << menu;
    EXPECT_EQ(command_with_access_letter('d'), Command::delete_record);
}

TEST_F(ToolbarTest, knows_its_keys)
{
    const struct {
        char key;
        Command command;
    } keys[] = {{'q', Command::next_question}, {'a', Command::show_answer},  {'s', Command::show_stats},
                {'h', Command::show_hints},    {'t', Command::let_me_type},  {'e', Command::edit},
                {'i', Command::insert},        {'d', Command::delete_record}};
    for (const auto& one : keys)
        EXPECT_EQ(command_with_key(one.key), one.command) << one.key;
    for (const char none : {'\0', '+', '-', 'n', 'x'})
        EXPECT_EQ(command_with_key(none), std::nullopt) << none;
}

/// A question is on display, without its answer.
class ToolbarButton : public DrillFixture {
protected:
    void SetUp() override
    {
        start_with_three_questions();
        yes();
    }
};

TEST_F(ToolbarButton, next_question_leaves_the_question_without_a_verdict)
{
    toolbar(1);
    EXPECT_EQ(question(), "Italy?");
    EXPECT_EQ(stored(1).q_side.date_last_show, clock.time);
    EXPECT_EQ(stored(1).q_side.attempts, 4);
}

TEST_F(ToolbarButton, show_answer_asks_for_the_verdict)
{
    toolbar(2);
    EXPECT_EQ(answer(), "Paris");
    EXPECT_TRUE(logic->state.AwaitingVerdict);
}

TEST_F(ToolbarButton, show_hints_and_show_stats_take_turns_in_their_place)
{
    toolbar(4);
    EXPECT_TRUE(form1.panel_lista.is_visible);
    EXPECT_TRUE(form1.t_hint.is_visible);
    EXPECT_FALSE(form1.frame_stats.is_visible);
    toolbar(3);
    EXPECT_FALSE(form1.panel_lista.is_visible);
    EXPECT_FALSE(form1.t_hint.is_visible);
    EXPECT_TRUE(form1.frame_stats.is_visible);
}

TEST_F(ToolbarButton, show_stats_counts_anew)
{
    toolbar(4);
    database.execute("Delete from qa where cnt = 2");
    ASSERT_EQ(form1.screen.panel_level[0].count, 1);
    toolbar(3);
    EXPECT_EQ(form1.screen.panel_level[0].count, 0);
}

TEST_F(ToolbarButton, let_me_type_goes_to_the_answer_box)
{
    toolbar(5);
    EXPECT_TRUE(logic->state.TypingMode);
    EXPECT_TRUE(form1.Text_a.has_focus());
    EXPECT_EQ(form1.screen.panel_a.text, "Type the answer, then press Enter");
}

TEST_F(ToolbarButton, plus_and_minus_give_the_verdict_at_once)
{
    toolbar(6);
    EXPECT_EQ(stored(1).q_side, (fakes::SideRow{5, 1, 4, clock.time, clock.time}));
    EXPECT_EQ(question(), "Italy?");
    toolbar(7);
    EXPECT_EQ(stored(2).q_side, (fakes::SideRow{4, 4, 0, clock.time, clock.time}));
    EXPECT_EQ(question(), "Spain?");
    EXPECT_EQ(logic->state.dialog, DialogState::OfferAnswer);
}

TEST_F(ToolbarButton, edit_opens_the_record)
{
    toolbar(8);
    EXPECT_TRUE(logic->edit_flags.edit_mode);
    EXPECT_EQ(question(), "France?");
    EXPECT_EQ(answer(), "Paris");
    EXPECT_TRUE(form1.Text_q.has_focus());
}

TEST_F(ToolbarButton, insert_opens_an_empty_record)
{
    toolbar(9);
    EXPECT_TRUE(logic->edit_flags.new_mode);
    EXPECT_EQ(question(), "");
    EXPECT_TRUE(form1.Text_q.has_focus());
}

TEST_F(ToolbarButton, save_stores_the_record_and_goes_to_insert)
{
    toolbar(9);
    form1.Text_q.text_value = "Norway?";
    form1.Text_a.text_value = "Oslo";
    toolbar(10);
    EXPECT_EQ(stored(4).a, "Oslo");
    EXPECT_TRUE(form1.toolbar(9).has_focus());
}

TEST_F(ToolbarButton, save_that_is_refused_does_not_go_to_insert)
{
    toolbar(9);
    form1.Text_q.text_value = "Norway?";
    desktop.expect_box("The answer is empty. No saving performed.");
    toolbar(10);
    EXPECT_FALSE(form1.toolbar(9).has_focus());
    EXPECT_TRUE(form1.Text_a.has_focus());
}

TEST_F(ToolbarButton, delete_removes_the_record_after_a_question)
{
    desktop.expect_box("Are you sure you want to delete question \"France?\" and its asnwer?",
                       platform::BoxAnswer::yes);
    toolbar(11);
    EXPECT_EQ(question(), "Italy?");
    EXPECT_EQ(form1.screen.panel_total.text, "2");
}

TEST_F(ToolbarButton, takes_the_focus_out_of_the_text_box)
{
    desktop.expect_box(nothing_mature); // after the last question
    for (const int number : {1, 2, 6, 7}) {
        form1.Text_a.take_focus();
        const int focused = form1.bot_focus.focused;
        toolbar(number);
        EXPECT_EQ(form1.bot_focus.focused, focused + 1) << number;
        EXPECT_FALSE(form1.Text_a.has_focus()) << number;
    }
}

TEST_F(ToolbarButton, takes_the_focus_away_before_its_command)
{
    form1.journal.clear();
    toolbar(5);
    EXPECT_LT(place_of("bot_focus.focus"), place_of("Text_a.focus"));
}

TEST_F(ToolbarButton, that_is_disabled_is_not_run_by_its_key_either)
{
    press("a");
    const int focused = form1.bot_focus.focused;
    for (const char* key : {"h", "t", "s"})
        EXPECT_TRUE(press(key)) << key;
    EXPECT_FALSE(form1.panel_lista.is_visible);
    EXPECT_FALSE(logic->state.TypingMode);
    EXPECT_EQ(form1.bot_focus.focused, focused);
}

TEST_F(ToolbarButton, is_run_by_its_key_whatever_the_case)
{
    press("H");
    EXPECT_TRUE(form1.panel_lista.is_visible);
    press("s");
    EXPECT_FALSE(form1.panel_lista.is_visible);
    press("T");
    EXPECT_TRUE(logic->state.TypingMode);
    EXPECT_TRUE(form1.Text_a.has_focus());
    EXPECT_FALSE(press("e")) << "now letters are text";
}

TEST_F(ToolbarButton, of_the_editor_is_run_by_its_key)
{
    desktop.expect_box("Are you sure you want to delete question \"France?\" and its asnwer?", platform::BoxAnswer::no);
    press("d");
    press("E");
    EXPECT_TRUE(logic->edit_flags.edit_mode);
    form1.bot_focus.set_focus();
    press("i");
    EXPECT_FALSE(logic->edit_flags.new_mode) << "the record is being changed";
}

} // namespace
} // namespace cuedrill::drill
