#include "drill/drill_fixture.h"

#include <set>
#include <vector>

namespace cuedrill::drill {
namespace {

using platform::Screen;

class Help : public DrillFixture {
protected:
    void SetUp() override { start_with_three_questions(); }

    /// The help text shown on Shift+click on the control.
    std::string help_of(const fakes::FakeButton& button)
    {
        return told_by([&] { button.shift_click(); });
    }
    std::string help_of(platform::ScreenLine line)
    {
        return told_by([&] { form1.screen_view.shift_click(line); });
    }
    std::string help_of_levels()
    {
        return told_by([&] { form1.screen_view.shift_click_level(); });
    }

    template <class Ask>
    std::string told_by(Ask ask)
    {
        const std::size_t before = desktop.boxes.size();
        std::string told;
        desktop.on_box = [&] {
            told = desktop.boxes.back().text;
            desktop.expect_box(told);
        };
        user(ask);
        desktop.on_box = {};
        EXPECT_EQ(desktop.boxes.size(), before + (told.empty() ? 0U : 1U));
        return told;
    }
};

TEST_F(Help, of_each_button_of_the_toolbar_is_its_own_and_is_there_while_it_is_disabled)
{
    std::set<std::string> texts;
    for (int number = 1; number <= platform::toolbar_buttons; ++number)
        texts.insert(help_of(form1.toolbar(number)));
    EXPECT_FALSE(form1.toolbar(8).is_enabled);
    EXPECT_EQ(texts.size(), 11U);
    EXPECT_FALSE(texts.contains(""));
}

TEST_F(Help, runs_no_command)
{
    yes();
    const fakes::CourseContents before = fakes::read_course(path);
    for (int number = 1; number <= platform::toolbar_buttons; ++number)
        help_of(form1.toolbar(number));
    help_of(form1.bot_yes);
    help_of(form1.bot_no);
    EXPECT_EQ(question(), "France?");
    EXPECT_EQ(answer(), "");
    EXPECT_EQ(prompt(), "Do you want to see the answer?");
    EXPECT_EQ(fakes::read_course(path), before);
}

TEST_F(Help, is_there_for_the_dialog_and_its_prompt)
{
    yes();
    yes();
    std::set<std::string> texts{help_of(form1.bot_yes), help_of(form1.bot_no), help_of(form1.bot_other),
                                help_of(&Screen::panel_dialog), help_of(&Screen::P_status)};
    EXPECT_EQ(texts.size(), 5U);
    EXPECT_FALSE(texts.contains(""));
}

TEST_F(Help, of_an_indicator_is_that_of_its_caption)
{
    const struct {
        platform::ScreenLine caption;
        platform::ScreenLine value;
    } indicators[] = {
        {&Screen::lab_q_level, &Screen::PANEL_Q_LEVEL},       {&Screen::lab_q_attempts, &Screen::PANEL_Q_ATTEMPTS},
        {&Screen::lab_fails, &Screen::PANEL_FAILS},           {&Screen::lab_elapsed, &Screen::PANEL_ELAPSED},
        {&Screen::lab_total, &Screen::panel_total},           {&Screen::lab_nr_unpassed, &Screen::panel_nr_unpassed},
        {&Screen::lab_score, &Screen::Panel_score},           {&Screen::lab_open_time, &Screen::panel_open_time},
        {&Screen::lab_time_today, &Screen::panel_time_today}, {&Screen::lab_time_ever, &Screen::panel_time_ever},
        {&Screen::lab_time_now, &Screen::Panel_time_now}};
    std::set<std::string> texts;
    for (const auto& indicator : indicators) {
        const std::string text = help_of(indicator.value);
        EXPECT_EQ(help_of(indicator.caption), text) << text;
        texts.insert(text);
    }
    EXPECT_EQ(texts.size(), std::size(indicators));
    EXPECT_FALSE(texts.contains(""));
}

TEST_F(Help, of_what_is_due_tells_what_the_bars_stand_for)
{
    const std::string help = told_by([&] { form1.screen_view.shift_click_due(); });
    EXPECT_NE(help.find("due now, later today, and on each of the next six days"), std::string::npos);
}

TEST_F(Help, of_the_levels_tells_what_the_marks_mean)
{
    EXPECT_NE(help_of_levels().find("The triangle marks the level to which your last verdict led"), std::string::npos);
}

TEST_F(Help, stands_in_a_box_of_its_own_title)
{
    desktop.expect_box_like({.text =
                                 "Leaves the question without a verdict and asks another one. Its level stays as it "
                                 "is.",
                             .icon = platform::BoxIcon::information,
                             .title = "Cuedrill - Help"},
                            platform::BoxAnswer::ok);
    yes();
    yes();
    user([this] { form1.bot_other.shift_click(); });
}

TEST_F(Help, on_help_says_how_to_get_it)
{
    desktop.expect_box_like(
        {.text = "Context-specific help is available for some buttons and indicators, when they are enabled.\r\n\r\n"
                 "You know that context-help is available for a given button or indicator as the mouse pointer changes "
                 "to an upright arrow when passing over it.\r\n\r\n"
                 "To have help on these buttons and indicators, press the shift key and click on the button or "
                 "indicator at the same time."},
        platform::BoxAnswer::ok);
    choose("howtogetcontexthelp");
}

TEST_F(Help, of_everything_is_told_at_once_to_those_without_a_mouse)
{
    std::string all;
    desktop.on_box = [&] {
        all = desktop.boxes.back().details;
        desktop.expect_box("What the buttons and figures of the window are for:");
    };
    user([this] { form1.window.on_help(); });
    desktop.on_box = {};
    for (const char* name :
         {"Next Question", "Show Answer", "Show Stats", "Show Hints", "Let me Type", "+",     "-",        "Edit",
          "Insert",        "Save",        "Delete",     "Prompt",     "Yes",         "No",    "Ignore",   "Status",
          "Level",         "Attempts",    "Failures",   "Elapsed",    "Levels",      "Total", "Unpassed", "Score today",
          "Open time",     "Time today",  "Time ever",  "Time now",   "List"})
        EXPECT_NE(("\r\n" + all).find("\r\n" + std::string(name) + "\r\n"), std::string::npos) << name;
    EXPECT_NE(all.find(help_of(&Screen::PANEL_ELAPSED)), std::string::npos);
}

} // namespace
} // namespace cuedrill::drill
