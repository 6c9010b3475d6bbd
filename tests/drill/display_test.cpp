#include "drill/display.h"
#include "drill/drill_fixture.h"
#include "drill/drill_state.h"
#include "store/course.h"

#include <array>
#include <cstdio>
#include <vector>

namespace cuedrill::drill {
namespace {

class QuestionDisplayTest : public DrillFixture {
protected:
    /// Starts the program and shows the one mature question.
    void show()
    {
        start();
        yes();
    }

    void expect_figures(const char* level, const char* attempts, const char* fails, const char* elapsed)
    {
        EXPECT_EQ(form1.screen.PANEL_Q_LEVEL.text, level);
        EXPECT_EQ(form1.screen.PANEL_Q_ATTEMPTS.text, attempts);
        EXPECT_EQ(form1.screen.PANEL_FAILS.text, fails);
        EXPECT_EQ(form1.screen.PANEL_ELAPSED.text, elapsed);
    }
};

TEST_F(QuestionDisplayTest, shows_the_figures_of_the_question)
{
    builder.question("France?", "Paris").level(2).attempts(4).fails(1).tested_ago(26h + 5min + 59s);
    show();
    EXPECT_EQ(question(), "France?");
    EXPECT_EQ(answer(), "");
    expect_figures("2", "4", "1", "26:05");
}

TEST_F(QuestionDisplayTest, shows_the_elapsed_time_exactly_at_every_whole_minute_of_three_days)
{
    builder.question("France?", "Paris").level(2).attempts(4).fails(1).tested_ago(24h);
    show();
    const auto tested = clock.time.seconds() - 24 * 3600;
    for (int minute = 0; minute <= 3 * 24 * 60; ++minute) {
        clock.time = common::DateTime::from_seconds(tested + minute * 60);
        logic->display.refresh_figures();
        std::array<char, 16> expected{};
        std::snprintf(expected.data(), expected.size(), "%02d:%02d", minute / 60, minute % 60);
        ASSERT_EQ(form1.screen.PANEL_ELAPSED.text, expected.data());
    }
}

TEST_F(QuestionDisplayTest, shows_a_question_without_a_history)
{
    desktop.expect_box("You have passed level 5 for all questions.");
    builder.question("France?", "Paris");
    show();
    EXPECT_EQ(question(), "France?");
    expect_figures("0", "0", "0", "");
}

TEST_F(QuestionDisplayTest, shows_the_figures_of_the_asked_direction)
{
    builder.question("France?", "Paris")
        .level(2)
        .attempts(4)
        .fails(1)
        .tested_ago(24h)
        .inverted()
        .level(1)
        .attempts(7)
        .fails(6)
        .tested_ago(2h);
    builder.number_param("invert", 1);
    show();
    EXPECT_EQ(question(), "Paris");
    expect_figures("1", "7", "6", "02:00");
    yes();
    EXPECT_EQ(answer(), "France?");
}

TEST_F(QuestionDisplayTest, drops_one_line_end_at_the_end_of_the_answer)
{
    builder.question("a?\r\n", "b\r\n\r\n").level(0).attempts(0).fails(0).tested_ago(1h);
    show();
    EXPECT_EQ(question(), "a?\r\n") << "the question stays as it is";
    yes();
    EXPECT_EQ(answer(), "b\r\n");
}

TEST_F(QuestionDisplayTest, keeps_a_lone_line_feed_at_the_end_of_the_answer)
{
    builder.question("a?", "b\n").level(0).attempts(0).fails(0).tested_ago(1h);
    show();
    yes();
    EXPECT_EQ(answer(), "b\n");
}

TEST_F(QuestionDisplayTest, remembers_the_record_and_its_texts)
{
    builder.question("France?", "Paris").level(0).tested_ago(1h);
    show();
    EXPECT_EQ(logic->state.shown.current_cnt(), 1);
    EXPECT_EQ(logic->state.shown.loaded_question(), "France?");
    EXPECT_EQ(logic->state.shown.loaded_answer(), "Paris");
}

TEST_F(QuestionDisplayTest, counts_a_test_in_the_future_as_just_now)
{
    builder.question("France?", "Paris").level(2).attempts(1).fails(0).tested_ago(-1h);
    start();
    logic->display.ask(1);
    expect_figures("2", "1", "0", "00:00");
}

TEST_F(QuestionDisplayTest, shows_levels_of_other_programs_inside_their_range)
{
    builder.question("high", "a").level(77).tested_ago(1h);
    builder.question("low", "a").level(-3).tested_ago(1h);
    desktop.expect_box("You have passed level 5 for all questions.");
    start();
    const struct {
        common::Int16 cnt;
        const char* shown;
    } cases[] = {{1, "10"}, {2, "0"}};
    for (const auto& one : cases) {
        logic->display.ask(one.cnt);
        EXPECT_EQ(form1.screen.PANEL_Q_LEVEL.text, one.shown);
    }
}

TEST_F(QuestionDisplayTest, is_empty_when_the_record_has_vanished)
{
    start_with_three_questions();
    yes();
    database.execute("Delete from qa where cnt = 1");
    logic->display.ask(1);
    EXPECT_EQ(question(), "");
    EXPECT_EQ(logic->state.shown.current_cnt(), 0);
    EXPECT_FALSE(form1.bot_yes.usable());
    EXPECT_EQ(logic->state.shown.loaded_answer(), "");
}

TEST_F(QuestionDisplayTest, has_names_and_descriptions_for_assistive_technology)
{
    start_with_three_questions();
    EXPECT_EQ(form1.Text_q.accessible_name, "Question");
    EXPECT_EQ(form1.Text_a.accessible_name, "Answer");
    EXPECT_TRUE(form1.Text_q.locked);
    EXPECT_TRUE(form1.Text_a.locked);
    EXPECT_EQ(form1.screen.PANEL_Q_LEVEL.description, "Question level");
    EXPECT_EQ(form1.screen.PANEL_Q_ATTEMPTS.description, "Attempts");
    EXPECT_EQ(form1.screen.PANEL_FAILS.description, "Failures");
    EXPECT_EQ(form1.screen.PANEL_ELAPSED.description, "Elapsed");
    EXPECT_EQ(form1.screen.panel_dialog.description, "Prompt");
    EXPECT_EQ(form1.screen.P_status.description, "Status");
}

void expect_font(const platform::Font& font, const char* name, int points, bool bold)
{
    EXPECT_EQ(font.name, name);
    EXPECT_EQ(font.points, points);
    EXPECT_EQ(font.bold, bold);
}

TEST_F(QuestionDisplayTest, without_a_font_of_the_course_has_the_fixed_pitch_font)
{
    start_with_three_questions();
    expect_font(form1.Text_q.font, "FixedSys", 9, false);
    expect_font(form1.Text_a.font, "FixedSys", 9, false);
}

TEST_F(QuestionDisplayTest, has_the_font_of_the_course_large_and_bold)
{
    builder.text_param("font", "Times New Roman");
    start_with_three_questions();
    expect_font(form1.Text_q.font, "Times New Roman", 12, true);
    expect_font(form1.Text_a.font, "Times New Roman", 12, true);
}

class Announcements : public DrillFixture {
protected:
    using Texts = std::vector<std::string>;

    [[nodiscard]] const Texts& told() const { return form1.window.announcements; }
};

TEST_F(Announcements, tell_the_question_its_answer_and_a_failure)
{
    start_with_three_questions();
    EXPECT_EQ(told(), Texts());
    yes();
    EXPECT_EQ(told(), Texts{"France?"});
    yes();
    no();
    EXPECT_EQ(told(), (Texts{"France?", "Answer: Paris", "Not known. Level 0. Italy?"}));
}

TEST_F(Announcements, leave_a_success_to_the_status_line)
{
    start_with_three_questions();
    yes();
    yes();
    yes();
    EXPECT_EQ(told(), (Texts{"France?", "Answer: Paris", "Italy?"}));
    EXPECT_EQ(status(), "score of previous question increased from 2 to 4 (elapsed 1.00 days)");
}

TEST_F(Announcements, tell_a_failure_behind_which_nothing_is_mature_at_once)
{
    builder.question("France?", "Paris").level(2).attempts(4).fails(1).tested_ago(24h);
    start();
    yes();
    yes();
    desktop.expect_box(nothing_mature);
    no();
    EXPECT_EQ(told(), (Texts{"France?", "Answer: Paris", "Not known. Level 0."}));
    clock.advance_seconds(60);
    toolbar(1);
    EXPECT_EQ(told().back(), "France?");
}

} // namespace
} // namespace cuedrill::drill
