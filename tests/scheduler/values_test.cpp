// Tests the rules of the drill by the values that they return. No window and no box is needed, and the tests set the
// time.
#include "common/errors.h"
#include "fakes/course_builder.h"
#include "fakes/fake_clock.h"
#include "fakes/fake_random.h"
#include "fakes/recording_database.h"
#include "fakes/temp_folder.h"
#include "scheduler/counts.h"
#include "scheduler/next_question.h"
#include "scheduler/verdict.h"
#include "store/course_params.h"

#include <chrono>
#include <gtest/gtest.h>

namespace cuedrill::scheduler {
namespace {

using namespace std::chrono_literals;

class Values : public testing::Test {
protected:
    Values() { dead_times.init_dead_time_array(); }

    void open(const fakes::CourseBuilder& builder)
    {
        course.db_path = builder.write(folder);
        course.apri_db();
        store::CourseParamsStore(course, clock).read_params();
        course.set_side_fields();
        course.start_counting(clock.time);
        database.forget();
    }

    [[nodiscard]] fakes::SideRow stored(std::size_t place) const
    {
        return fakes::read_course(course.db_path).qa.at(place).q_side;
    }

    fakes::TempFolder folder;
    fakes::FakeClock clock;
    fakes::FakeRandom random;
    fakes::RealEngine engine;
    fakes::RecordingDatabase database{engine.database};
    store::Course course{database};
    DeadTimes dead_times;
};

TEST_F(Values, of_a_success_tell_the_level_that_the_elapsed_time_proves)
{
    fakes::CourseBuilder builder;
    builder.question("asked").level(1).attempts(4).fails(2).tested_ago(72h);
    open(builder);
    const Verdict verdict = judge(course, dead_times, 1, true, clock.time);
    EXPECT_EQ(verdict.cnt, 1);
    EXPECT_EQ(verdict.old_level, 1);
    EXPECT_EQ(verdict.new_level, 5);
    EXPECT_EQ(verdict.score_today, 1);
    EXPECT_DOUBLE_EQ(verdict.elapsed, 3);
    EXPECT_EQ(success_text(verdict), "score of previous question increased from 1 to 5 (elapsed 3.00 days)");
    EXPECT_EQ(stored(0).successes, 5);
    EXPECT_EQ(stored(0).fails, 2);
}

TEST_F(Values, of_a_failure_send_the_question_to_level_0)
{
    fakes::CourseBuilder builder;
    builder.question("asked").level(3).attempts(4).fails(2).tested_ago(1h);
    open(builder);
    const Verdict verdict = judge(course, dead_times, 1, false, clock.time);
    EXPECT_EQ(verdict.old_level, 3);
    EXPECT_EQ(verdict.new_level, 0);
    EXPECT_EQ(verdict.score_today, -1);
    EXPECT_EQ(stored(0).fails, 3);
    ASSERT_TRUE(course.last_verdict);
    EXPECT_EQ(course.last_verdict->old_level, 3);
}

TEST_F(Values, of_a_verdict_take_eight_statements)
{
    fakes::CourseBuilder builder;
    builder.question("asked").level(1).attempts(4).fails(2).tested_ago(72h);
    open(builder);
    judge(course, dead_times, 1, true, clock.time);
    EXPECT_EQ(database.statement_count(), 8);
}

TEST_F(Values, of_a_verdict_on_a_record_that_is_gone_are_none)
{
    open(fakes::CourseBuilder());
    EXPECT_THROW(judge(course, dead_times, 1, true, clock.time), store::RecordGone);
    EXPECT_EQ(database.transaction_depth(), 0);
    EXPECT_FALSE(course.last_verdict);
}

TEST_F(Values, of_an_undo_are_the_verdict_that_it_took_back)
{
    fakes::CourseBuilder builder;
    builder.question("asked").level(3).attempts(4).fails(2).tested_ago(1h);
    open(builder);
    EXPECT_FALSE(undo_last_verdict(course)) << "there is none yet";
    judge(course, dead_times, 1, false, clock.time);
    const auto undone = undo_last_verdict(course);
    ASSERT_TRUE(undone);
    EXPECT_EQ(undone->cnt, 1);
    EXPECT_EQ(stored(0).successes, 3);
}

TEST_F(Values, of_a_count_group_the_levels_from_5_on)
{
    fakes::CourseBuilder builder;
    for (const std::int64_t level : {0, 0, 2, 5, 9})
        builder.question("question").level(level);
    open(builder.number_param("target_level", 3));
    const Counts counts = count(course);
    EXPECT_EQ(counts.level, (std::array<std::int64_t, 6>{2, 0, 1, 0, 0, 2}));
    EXPECT_EQ(counts.unpassed, 3);
}

TEST_F(Values, of_the_levels_are_those_of_both_directions)
{
    fakes::CourseBuilder builder;
    builder.question("1").level(0).inverted().level(10);
    builder.question("2").level(7).inverted().level(10);
    builder.question("3").level(7).inverted().level(11);
    builder.question("4").level(-1);
    open(builder);
    const LevelsOfBoth levels = count_levels(course);
    EXPECT_EQ(levels.q, (LevelNumbers{1, 0, 0, 0, 0, 0, 0, 2}));
    EXPECT_EQ(levels.a, (LevelNumbers{0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 2}));
    course.params.invert = true;
    course.set_side_fields();
    EXPECT_EQ(count_levels(course), levels) << "whichever is asked";
}

TEST_F(Values, of_the_choice_are_a_key_that_is_not_the_one_just_asked)
{
    fakes::CourseBuilder builder;
    builder.question("higher").level(2).tested_ago(24h);
    builder.question("lower").level(1).tested_ago(24h);
    open(builder);
    EXPECT_EQ(next_question(course, dead_times, 0, clock.time, random), 1);
    EXPECT_EQ(next_question(course, dead_times, 1, clock.time, random), 2);
    course.params.target_level = 2;
    EXPECT_EQ(next_question(course, dead_times, 2, clock.time, random), std::nullopt);
    EXPECT_EQ(count_mature(course, dead_times, clock.time), 1);
}

} // namespace
} // namespace cuedrill::scheduler
