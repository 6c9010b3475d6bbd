#include "drill/scoring_fixture.h"
#include "scheduler/next_due.h"
#include "scheduler/next_question.h"

#include <gtest/gtest.h>

namespace cuedrill::drill {
namespace {

using fakes::CourseBuilder;

/// Now is 15 November 2026, 05:47:17.
class NextDueTold : public ScoringFixture {
protected:
    void expect_told(const std::string& text)
    {
        desktop.expect_box("No question is mature for being asked.");
        selection.next_question();
        expect_status(text, 0);
    }

    void expect_nothing_told()
    {
        desktop.expect_box("No question is mature for being asked.");
        selection.next_question();
        EXPECT_TRUE(status_texts().empty());
    }

    CourseBuilder builder;
};

TEST_F(NextDueTold, is_the_end_of_the_dead_time_rounded_up_to_the_minute)
{
    builder.question("a").level(2).tested_ago(10min);
    builder.question("b").level(1).tested_ago(1min);
    open(builder);
    expect_told("The next question is due at 05:52. 2 questions are due by the end of the day.");
}

TEST_F(NextDueTold, needs_no_rounding_at_a_whole_minute)
{
    builder.question("a").level(2).tested_ago(17s);
    open(builder);
    expect_told("The next question is due at 06:47. 1 question is due by the end of the day.");
}

TEST_F(NextDueTold, has_seconds_within_the_next_minute)
{
    builder.question("a").level(1).tested_ago(4min + 30s);
    open(builder);
    expect_told("The next question is due at 05:47:48. 1 question is due by the end of the day.");
}

TEST_F(NextDueTold, has_its_date_on_another_day)
{
    builder.question("a").level(4).tested_ago(17s);
    builder.question("b").level(4).tested_ago(16s);
    builder.question("c").level(5).tested_ago(17s);
    builder.number_param("target_level", 9);
    open(builder);
    expect_told("The next question is due on 17/Nov/2026 at 05:47. 2 questions are due by the end of that day.");
}

TEST_F(NextDueTold, waits_for_a_question_that_was_passed_over)
{
    builder.question("a").level(3).tested_ago(one_day).shown_ago(0s);
    builder.question("b").shown_ago(2s);
    open(builder);
    expect_told("The next question is due at 05:47:24. 2 questions are due by the end of the day.");
}

TEST_F(NextDueTold, is_now_where_only_the_last_question_could_come)
{
    builder.question("a").level(0).tested_ago(1h);
    builder.question("b").level(4).tested_ago(0s);
    open(builder);
    display.take_for_record(1);
    expect_told("The question just shown can be asked again now. 1 question is due by the end of the day.");
    selection.next_question();
    EXPECT_EQ(current_cnt(), 1);
}

TEST_F(NextDueTold, is_now_where_it_has_come_while_the_box_was_open)
{
    builder.question("a").level(1).tested_ago(5min - 3s);
    builder.question("b").level(2).tested_ago(0s);
    open(builder);
    display.take_for_record(2);
    desktop.on_box = [this] { clock.advance_seconds(10); };
    expect_told("The next question is due now. 2 questions are due by the end of the day.");
    selection.next_question();
    EXPECT_EQ(current_cnt(), 1);
}

TEST_F(NextDueTold, is_told_of_no_question_just_shown_where_there_was_none)
{
    builder.question("a").level(1).tested_ago(0s);
    open(builder);
    // Another program adds a question.
    desktop.on_box = [this] { engine.database.execute("Insert into qa (q, a, q_successes) values ('b', 'B', 0)"); };
    expect_told("The next question is due now. 2 questions are due by the end of the day.");
    selection.next_question();
    EXPECT_EQ(current_cnt(), 2);
}

TEST_F(NextDueTold, is_another_one_where_that_came_while_the_box_was_open)
{
    builder.question("a").level(0).tested_ago(1h);
    open(builder);
    display.take_for_record(1);
    // Another program adds a question, which was never tested.
    desktop.on_box = [this] { engine.database.execute("Insert into qa (q, a, q_successes) values ('b', 'B', 1)"); };
    expect_told("The next question is due now. 2 questions are due by the end of the day.");
}

TEST_F(NextDueTold, is_a_time_to_come_where_the_clock_was_put_back_while_the_box_was_open)
{
    builder.question("a").level(0).tested_ago(1h);
    open(builder);
    display.take_for_record(1);
    desktop.on_box = [this] { clock.advance_seconds(-2 * 3600); };
    expect_told("The next question is due at 04:48. 1 question is due by the end of the day.");
}

TEST_F(NextDueTold, has_seconds_in_the_last_minute_before_midnight)
{
    builder.question("a").level(4).tested_ago(48h - (18h + 12min + 13s)); // dead time ends at 23:59:30
    open(builder);
    expect_told("The next question is due at 23:59:31. 1 question is due by the end of the day.");
}

TEST_F(NextDueTold, has_seconds_in_the_last_minute_of_another_day)
{
    builder.question("a").level(4).tested_ago(24h - (18h + 12min + 13s));
    builder.question("b").level(4).tested_ago(24h - (18h + 12min + 44s)); // dead time ends one second after midnight
    open(builder);
    expect_told("The next question is due on 16/Nov/2026 at 23:59:31. 1 question is due by the end of that day.");
}

TEST_F(NextDueTold, may_be_midnight_itself)
{
    builder.question("a").level(4).tested_ago(24h - (18h + 12min + 42s)); // dead time ends at 23:59:59
    builder.question("b").level(4).tested_ago(24h - (18h + 12min + 43s));
    open(builder);
    expect_told("The next question is due on 17/Nov/2026 at 00:00. 2 questions are due by the end of that day.");
}

TEST_F(NextDueTold, leaves_out_what_has_reached_the_target_level)
{
    builder.question("a").level(3).tested_ago(1h);
    builder.question("b").level(2).tested_ago(17s);
    builder.number_param("target_level", 3);
    open(builder);
    expect_told("The next question is due at 06:47. 1 question is due by the end of the day.");
}

TEST_F(NextDueTold, is_nothing_when_none_will_ever_be)
{
    builder.question("a").level(5).tested_ago(1h);
    builder.question("b").level(10).tested_ago(1h);
    builder.question("c").level(-1).tested_ago(1h);
    open(builder);
    expect_nothing_told();
}

TEST_F(NextDueTold, is_that_of_the_side_that_is_asked)
{
    builder.question("a").level(1).tested_ago(0s).inverted().level(2).tested_ago(17s);
    builder.number_param("invert", 1);
    open(builder);
    expect_told("The next question is due at 06:47. 1 question is due by the end of the day.");
}

TEST_F(NextDueTold, counts_to_the_last_second_of_the_day)
{
    builder.question("a").level(2).tested_ago(17s);
    for (const auto before_midnight : {1s, 2s, 0s}) {
        const auto asked = 18h + 12min + 43s - before_midnight; // time from now to that long before midnight
        builder.question("b").level(4).tested_ago(48h - asked);
    }
    open(builder);
    expect_told("The next question is due at 06:47. 2 questions are due by the end of the day.");
}

/// The time is right for each level, to the second.
TEST_F(NextDueTold, is_when_the_selection_finds_it)
{
    for (int level = 0; level < DeadTimes::count; ++level) {
        CourseBuilder one(clock.now());
        one.question("a").level(level).tested_ago(0s);
        one.number_param("target_level", 10);
        course.db_path = one.write(folder, "level" + std::to_string(level) + ".crs");
        course.apri_db();
        params.read_params();
        course.set_side_fields();
        course.record_count = 1;
        const auto due = find_next_due(course, dead_times, clock.now());
        ASSERT_TRUE(due);
        EXPECT_FALSE(select_mature(course, dead_times, static_cast<common::Int16>(level), false,
                                   common::DateTime::from_seconds(due->at.seconds() - 1), random))
            << level;
        EXPECT_TRUE(select_mature(course, dead_times, static_cast<common::Int16>(level), false, due->at, random))
            << level;
        course.close();
    }
}

TEST_F(NextDueTold, is_asked_of_the_course_in_two_statements)
{
    builder.question("a").level(1).tested_ago(0s);
    open(builder);
    static_cast<void>(find_next_due(course, dead_times, clock.now()));
    EXPECT_EQ(database.statements().size(), 2U);
    EXPECT_EQ(database.open_recordsets(), 0);
}

TEST_F(NextDueTold, may_fail_and_leaves_no_busy_pointer)
{
    builder.question("a").level(1).tested_ago(0s);
    open(builder);
    desktop.expect_box("No question is mature for being asked.");
    database.fail_at(fakes::Operation::open_recordset, 7);
    EXPECT_THROW(selection.next_question(), platform::DatabaseError);
    EXPECT_EQ(desktop.pointer_depth, 0);
    EXPECT_TRUE(status_texts().empty());
}

} // namespace
} // namespace cuedrill::drill
