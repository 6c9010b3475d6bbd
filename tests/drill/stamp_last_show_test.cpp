#include "drill/scoring.h"
#include "drill/scoring_fixture.h"
#include "scheduler/next_question.h"

#include <array>
#include <gtest/gtest.h>

namespace cuedrill::drill {
namespace {

using fakes::CourseBuilder;
using fakes::Operation;

class StampLastShow : public ScoringFixture {
protected:
    void open_question(bool inverted = false)
    {
        CourseBuilder builder;
        builder.question("asked").level(3).attempts(4).fails(2).tested_ago(13h);
        open_with_current(builder.number_param("invert", inverted ? 1 : 0));
    }
};

TEST_F(StampLastShow, sets_the_time_of_the_last_show_alone)
{
    open_question();
    auto expected = stored();
    expected.date_last_show = clock.time;
    scoring.StampLastShow();
    EXPECT_EQ(stored(), expected);
}

TEST_F(StampLastShow, keeps_the_question_away_for_8_seconds)
{
    open_question();
    scoring.StampLastShow();
    clock.advance_seconds(8);
    EXPECT_FALSE(select_mature(course, dead_times, 3, false, clock.time, random));
    clock.advance_seconds(1);
    EXPECT_TRUE(select_mature(course, dead_times, 3, false, clock.time, random));
}

TEST_F(StampLastShow, of_an_inverted_course_stamps_the_other_direction)
{
    open_question(true);
    const auto before = stored();
    scoring.StampLastShow();
    EXPECT_EQ(stored(), before);
    EXPECT_EQ(file().qa.at(0).a_side.date_last_show, clock.time);
    EXPECT_EQ(file().qa.at(0).a_side.date_last_test, std::nullopt);
}

TEST_F(StampLastShow, does_nothing_without_a_question_or_on_one_that_has_vanished)
{
    open_question();
    const auto before = file();
    for (const common::Int16 cnt : std::array<common::Int16, 2>{0, 99}) {
        display.take_for_record(cnt);
        scoring.StampLastShow();
        EXPECT_EQ(file(), before);
        EXPECT_EQ(database.transaction_depth(), 0);
    }
}

/// The record is unchanged, whichever step fails.
class FailingStamp : public StampLastShow, public testing::WithParamInterface<Operation> {};

TEST_P(FailingStamp, changes_nothing)
{
    open_question();
    const auto before = file();
    database.fail_at(GetParam());
    EXPECT_THROW(scoring.StampLastShow(), platform::DatabaseError);
    EXPECT_EQ(file(), before);
    EXPECT_EQ(current_cnt(), 1);
    EXPECT_EQ(database.transaction_depth(), 0);
}

INSTANTIATE_TEST_SUITE_P(AtEveryStep, FailingStamp,
                         testing::Values(Operation::begin, Operation::execute, Operation::commit));

} // namespace
} // namespace cuedrill::drill
