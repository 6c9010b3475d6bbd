#include "drill/scoring_fixture.h"
#include "drill/statistics.h"

#include <gtest/gtest.h>

namespace cuedrill::drill {
namespace {

using fakes::CourseBuilder;
using fakes::Operation;

class Counts : public ScoringFixture {
protected:
    void open_levels(std::initializer_list<int> levels, double target, bool inverted = false)
    {
        CourseBuilder builder;
        for (const int level : levels) {
            auto question = builder.question("level " + std::to_string(level));
            (inverted ? question.inverted() : question).level(level);
        }
        open(builder.number_param("target_level", target).number_param("invert", inverted ? 1 : 0));
    }
};

TEST_F(Counts, are_zero_everywhere_in_a_course_of_never_tested_questions)
{
    CourseBuilder builder;
    builder.question("a");
    builder.question("b");
    open(builder);
    statistics.refresh_counts();
    EXPECT_EQ(panels().total, 2);
    EXPECT_EQ(panels().counts, (std::vector<std::int64_t>(6, 0)));
    EXPECT_EQ(panels().unpassed, 0);
}

TEST_F(Counts, put_level_5_and_above_into_the_last_panel)
{
    open_levels({5, 7, 9, 10, 0, 0, 2}, 5);
    statistics.refresh_counts();
    EXPECT_EQ(panels().counts, (std::vector<std::int64_t>{2, 0, 1, 0, 0, 4}));
    EXPECT_EQ(panels().unpassed, 3);
    EXPECT_EQ(statistics.unpassed(), 3);
}

TEST_F(Counts, are_one_query_for_all_panels)
{
    open_levels({1}, 5);
    statistics.refresh_counts();
    EXPECT_EQ(
        database.statements(),
        (std::vector<std::string>{
            "Select (Select count(*) from qa), (Select count(*) from qa WHERE q_successes is null), "
            "(Select count(*) from qa WHERE q_successes < 0), (Select count(*) from qa WHERE q_successes = 1), "
            "(Select count(*) from qa WHERE q_successes = 2), (Select count(*) from qa WHERE q_successes = 3), "
            "(Select count(*) from qa WHERE q_successes = 4), (Select count(*) from qa WHERE q_successes >= 5)"}));
}

TEST_F(Counts, of_an_inverted_course_are_about_the_other_direction)
{
    open_levels({1, 3}, 5, true);
    statistics.refresh_counts();
    EXPECT_EQ(panels().counts, (std::vector<std::int64_t>{0, 1, 0, 1, 0, 0}));
    EXPECT_NE(database.statements().back().find("(Select count(*) from qa WHERE a_successes >= 5)"), std::string::npos);
    EXPECT_EQ(database.statements().back().find("q_successes"), std::string::npos);
}

TEST_F(Counts, mark_the_panel_of_the_target_and_sum_up_those_below_it)
{
    open_levels({0, 1, 2, 2, 3, 3, 3, 6}, 3);
    statistics.refresh_counts();
    for (int level = 0; level <= 5; ++level)
        EXPECT_EQ(is_target(level), level == 3) << level;
    EXPECT_EQ(panels().unpassed, 4);
}

TEST_F(Counts, tell_each_panel_of_what_its_number_is_a_share)
{
    open_levels({0, 1, 1}, 5);
    statistics.refresh_counts();
    EXPECT_EQ(form1.screen.panel_level[1].count, 2);
    EXPECT_EQ(form1.screen.panel_level[1].total, 3);
}

/// With a target above 5, the last panel also counts passed questions, and all of its questions count as unpassed.
TEST_F(Counts, keep_level_5_and_above_among_the_unpassed_for_a_higher_target)
{
    open_levels({5, 9, 10}, 6);
    statistics.refresh_counts();
    EXPECT_EQ(panels().unpassed, 3);
    for (int level = 0; level <= 5; ++level)
        EXPECT_FALSE(is_target(level)) << level;
}

TEST_F(Counts, are_taken_anew_at_each_refresh)
{
    open_levels({0, 0}, 5);
    statistics.refresh_counts();
    database.execute("Update qa set q_successes=5 where cnt=1");
    statistics.refresh_counts();
    EXPECT_EQ(panels().counts, (std::vector<std::int64_t>{1, 0, 0, 0, 0, 1}));
    EXPECT_EQ(panels().unpassed, 1);
}

TEST_F(Counts, pass_on_an_error_of_the_engine)
{
    open_levels({0}, 5);
    database.fail_at(Operation::open_recordset);
    EXPECT_THROW(statistics.refresh_counts(), platform::DatabaseError);
    EXPECT_EQ(desktop.pointer_depth, 0);
    EXPECT_EQ(panels().counts, std::vector<std::int64_t>(6, 0)) << "no figure is shown that was not counted to its end";
}

class PassedNotice : public Counts {};

TEST_F(PassedNotice, names_the_target)
{
    open_levels({4}, 4);
    EXPECT_EQ(statistics.passed_on_showing(), "You have passed level 4 for all questions.");
    EXPECT_EQ(statistics.passed_after_success(), "Congratulations! You have passed level 4 for all questions.");
}

TEST_F(PassedNotice, is_shown_once_when_nothing_is_unpassed)
{
    open_levels({4, 6}, 4);
    statistics.refresh_counts();
    desktop.expect_box_like({.text = statistics.passed_on_showing()}, platform::BoxAnswer::ok);
    statistics.announce_passed(statistics.passed_on_showing());
    EXPECT_TRUE(course.all_passed_announced);
    statistics.announce_passed(statistics.passed_after_success());
    EXPECT_EQ(desktop.boxes.size(), 1U);
}

TEST_F(PassedNotice, is_not_shown_while_a_question_is_unpassed)
{
    open_levels({4, 3}, 4);
    statistics.refresh_counts();
    statistics.announce_passed(statistics.passed_on_showing());
    EXPECT_FALSE(course.all_passed_announced);
}

TEST_F(PassedNotice, is_shown_when_all_questions_were_never_tested)
{
    CourseBuilder builder;
    builder.question("a");
    open(builder);
    statistics.refresh_counts();
    desktop.expect_box("You have passed level 5 for all questions.");
    statistics.announce_passed(statistics.passed_on_showing());
}

} // namespace
} // namespace cuedrill::drill
