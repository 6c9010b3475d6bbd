#include "drill/scoring_fixture.h"
#include "drill/selection.h"
#include "scheduler/maturity.h"
#include "scheduler/next_question.h"

#include <gtest/gtest.h>

namespace cuedrill::drill {
namespace {

using fakes::CourseBuilder;

const std::string nothing_mature = "No question is mature for being asked.";

class NextQuestion : public ScoringFixture {
protected:
    /// The number of the next question; 0 if there is none, which a box must say.
    common::Int16 next()
    {
        selection.next_question();
        EXPECT_EQ(state.shown.is_question(), current_cnt() != 0);
        return current_cnt();
    }

    common::Int16 next_is_none()
    {
        desktop.expect_box_like({.text = nothing_mature}, platform::BoxAnswer::ok);
        return next();
    }
};

TEST_F(NextQuestion, is_refused_in_a_course_without_questions)
{
    open(CourseBuilder());
    state.AnswerShown = true;
    desktop.expect_box_like({.text = "There are no questions in the database."}, platform::BoxAnswer::ok);
    selection.next_question();
    EXPECT_TRUE(state.AnswerShown) << "nothing is forgotten about the answer";
    EXPECT_EQ(shows(), 0);
    EXPECT_TRUE(form1.journal.empty());
    EXPECT_TRUE(database.statements().empty());
}

TEST_F(NextQuestion, of_a_new_course_is_the_one_of_the_lowest_number)
{
    CourseBuilder builder;
    for (const char* text : {"c", "b", "a"})
        builder.question(text);
    open(builder);
    state.AnswerShown = true;
    state.shared_place = SharedPlace::list;
    EXPECT_EQ(next(), 1);
    EXPECT_EQ(shows(), 1);
    EXPECT_FALSE(state.AnswerShown) << "what was done about the answer before is forgotten";
    EXPECT_FALSE(state.list_shown());
}

TEST_F(NextQuestion, makes_the_current_one_the_previous_one)
{
    CourseBuilder builder;
    builder.question("a").shown_ago(2s);
    builder.question("b");
    open(builder);
    display.take_for_record(1);
    EXPECT_EQ(next(), 2);
    EXPECT_EQ(previous_cnt(), 1);
}

TEST_F(NextQuestion, is_none_when_all_have_reached_the_target)
{
    CourseBuilder builder;
    builder.question("a").level(5).tested_ago(900 * one_day);
    builder.question("b").level(10).tested_ago(900 * one_day);
    open(builder);
    display.show_record(2);
    ASSERT_EQ(form1.Text_q.text_value, "b");
    state.shared_place = SharedPlace::list;
    EXPECT_EQ(next_is_none(), 0);
    EXPECT_FALSE(state.list_shown());
    EXPECT_EQ(form1.Text_q.text_value, "") << "the question before is withdrawn";
}

TEST_F(NextQuestion, is_looked_for_from_just_below_the_target_down_to_level_0)
{
    CourseBuilder builder;
    builder.question("a").level(5).tested_ago(900 * one_day);
    open(builder);
    next_is_none();
    const auto asked = course.Q_FIELD;
    std::vector<std::string> statements = database.statements();
    statements.resize(6); // the rest determines when the next one is due
    EXPECT_EQ(statements, (std::vector<std::string>{mature_query(asked, dead_times, 4, false, clock.time),
                                                    mature_query(asked, dead_times, 3, false, clock.time),
                                                    mature_query(asked, dead_times, 2, false, clock.time),
                                                    mature_query(asked, dead_times, 1, false, clock.time),
                                                    mature_query(asked, dead_times, 0, true, clock.time),
                                                    mature_query(asked, dead_times, 0, false, clock.time)}));
}

TEST_F(NextQuestion, stops_looking_at_the_first_level_that_has_one)
{
    CourseBuilder builder;
    builder.question("low").level(1).tested_ago(one_day);
    builder.question("high").level(3).tested_ago(one_day);
    builder.question("never");
    open(builder);
    EXPECT_EQ(next(), 2);
    // Level 4, level 3, and the record on display.
    EXPECT_EQ(database.statements().size(), 3U);
}

TEST_F(NextQuestion, prefers_the_failed_to_the_never_tested)
{
    CourseBuilder builder;
    builder.question("never");
    builder.question("failed").level(0).tested_ago(10s);
    open(builder);
    EXPECT_EQ(next(), 2);
}

TEST_F(NextQuestion, of_a_level_is_the_one_tested_longest_ago)
{
    CourseBuilder builder;
    builder.question("later").level(2).tested_ago(2h);
    builder.question("earlier").level(2).tested_ago(3h);
    open(builder);
    EXPECT_EQ(next(), 2);
}

TEST_F(NextQuestion, of_a_level_begins_with_one_without_a_date)
{
    CourseBuilder builder;
    builder.question("tested").level(2).tested_ago(900 * one_day);
    builder.question("no date").level(2);
    open(builder);
    EXPECT_EQ(next(), 2);
}

TEST_F(NextQuestion, of_equal_dates_is_the_one_of_the_lower_number)
{
    CourseBuilder builder;
    builder.question("b").level(2).tested_ago(2h);
    builder.question("a").level(2).tested_ago(2h);
    open(builder);
    EXPECT_EQ(next(), 1);
}

TEST_F(NextQuestion, treats_a_level_of_null_as_level_0_without_a_test)
{
    CourseBuilder builder;
    builder.question("level 0, never tested").level(0);
    builder.question("null");
    open(builder);
    EXPECT_EQ(next(), 1) << "a level of 0 stands before null";
}

TEST_F(NextQuestion, is_none_of_a_level_outside_the_range)
{
    CourseBuilder builder;
    builder.question("negative").level(-1).tested_ago(one_day);
    builder.question("beyond").level(11).tested_ago(900 * one_day);
    open(builder);
    EXPECT_EQ(next_is_none(), 0);
}

TEST_F(NextQuestion, looks_at_the_asked_side_only)
{
    CourseBuilder builder;
    builder.question("a").level(3).tested_ago(1s).inverted().level(1).tested_ago(one_day);
    builder.number_param("invert", 1);
    open(builder);
    EXPECT_EQ(next(), 1);
}

/// The comparison of dates is strict: exactly at the dead time a question is not mature, one second later it is.
TEST_F(NextQuestion, is_mature_one_second_after_its_dead_time)
{
    const std::chrono::seconds dead[] = {8s,          5min,         1h,           12h,           48h,
                                         7 * one_day, 20 * one_day, 60 * one_day, 120 * one_day, 365 * one_day};
    CourseBuilder builder;
    builder.number_param("target_level", 10);
    for (int level = 0; level < DeadTimes::count; ++level)
        builder.question("level " + std::to_string(level)).level(level).tested_ago(dead[level]).never_shown();
    open(builder);
    for (int level = 0; level < DeadTimes::count; ++level)
        EXPECT_FALSE(select_mature(course, dead_times, static_cast<common::Int16>(level), true, clock.time, random))
            << level;
    clock.advance_seconds(1);
    for (int level = 0; level < DeadTimes::count; ++level)
        EXPECT_EQ(select_mature(course, dead_times, static_cast<common::Int16>(level), true, clock.time, random),
                  level + 1);
}

TEST_F(NextQuestion, was_not_shown_for_more_than_8_seconds)
{
    CourseBuilder builder;
    builder.question("a").level(1).tested_ago(one_day).shown_ago(8s);
    open(builder);
    EXPECT_EQ(next_is_none(), 0);
    clock.advance_seconds(1);
    EXPECT_EQ(next(), 1);
}

TEST_F(NextQuestion, is_never_the_same_twice_in_a_row)
{
    CourseBuilder builder;
    builder.question("high").level(3).tested_ago(900 * one_day);
    builder.question("low").level(1).tested_ago(one_day);
    open(builder);
    EXPECT_EQ(next(), 1);
    EXPECT_EQ(next(), 2);
    EXPECT_EQ(next(), 1);
}

TEST_F(NextQuestion, skips_the_whole_level_of_the_previous_one)
{
    CourseBuilder builder;
    builder.question("first of the level").level(3).tested_ago(900 * one_day);
    builder.question("second of the level").level(3).tested_ago(800 * one_day);
    builder.question("lower").level(1).tested_ago(one_day);
    open(builder);
    display.take_for_record(1);
    EXPECT_EQ(next(), 3);
}

TEST_F(NextQuestion, that_is_alone_comes_again_after_it_was_left_out_once)
{
    CourseBuilder builder;
    builder.question("only").level(2).tested_ago(one_day);
    open(builder);
    EXPECT_EQ(next(), 1);
    EXPECT_EQ(next_is_none(), 0) << "a level that was skipped leaves no current record";
    EXPECT_EQ(previous_cnt(), 1);
    EXPECT_EQ(next(), 1);
}

TEST_F(NextQuestion, passes_from_the_failed_to_the_never_tested_when_the_failed_one_is_the_previous)
{
    CourseBuilder builder;
    builder.question("failed").level(0).tested_ago(10s);
    builder.question("never").level(0);
    open(builder);
    display.take_for_record(1);
    EXPECT_EQ(next(), 2);
}

TEST_F(NextQuestion, sees_what_was_changed_since_the_last_one)
{
    CourseBuilder builder;
    builder.question("a");
    open(builder);
    EXPECT_EQ(next(), 1);
    database.execute("Insert into qa (q, q_successes) values ('b', 4)");
    EXPECT_EQ(next(), 2);
}

TEST_F(NextQuestion, tries_one_level_alone_with_a_target_of_1)
{
    CourseBuilder builder;
    builder.question("passed").level(1).tested_ago(one_day);
    builder.number_param("target_level", 1);
    open(builder);
    EXPECT_EQ(next_is_none(), 0);
    EXPECT_EQ(database.statements().at(0), mature_query(course.Q_FIELD, dead_times, 0, true, clock.time));
    EXPECT_EQ(database.statements().at(1), mature_query(course.Q_FIELD, dead_times, 0, false, clock.time));
    EXPECT_EQ(database.statements().size(), 3U) << "and when the next one is due";
}

} // namespace
} // namespace cuedrill::drill
