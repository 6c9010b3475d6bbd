// A verdict that cannot be stored changes nothing; a stored one is never given twice.
#include "common/errors.h"
#include "drill/scoring.h"
#include "drill/scoring_fixture.h"

#include <gtest/gtest.h>
#include <new>
#include <utility>

namespace cuedrill::drill {
namespace {

using fakes::CourseBuilder;
using fakes::CourseContents;
using fakes::Operation;

enum class Verdict { success, failure };

class VerdictFailure : public ScoringFixture {
protected:
    void open_course(int attempts = 4, int fails = 2)
    {
        CourseBuilder builder;
        builder.question("asked").level(2).attempts(attempts).fails(fails).tested_ago(13h);
        builder.question("other").level(1).tested_ago(1s);
        open_with_current(builder);
        course.params.score_today = 6;
        statistics.show_score();
    }

    void give(Verdict verdict)
    {
        if (verdict == Verdict::success)
            scoring.set_success();
        else
            scoring.set_failure();
    }

    void expect_nothing_changed(const CourseContents& before)
    {
        EXPECT_EQ(file(), before);
        EXPECT_EQ(course.params.score_today, 6);
        EXPECT_EQ(current_cnt(), 1);
        EXPECT_TRUE(state.shown.is_question());
        EXPECT_EQ(panels().marked, std::nullopt);
        EXPECT_EQ(panels().score, 6);
        EXPECT_EQ(database.transaction_depth(), 0);
        scoring.m_undo();
        EXPECT_EQ(file(), before) << "there is no verdict to undo";
    }
};

/// Whichever step of storing the verdict fails, memory, file and window are unchanged, and the verdict can be given
/// again.
class UnstoredVerdict : public VerdictFailure,
                        public testing::WithParamInterface<std::tuple<Verdict, std::pair<Operation, int>>> {};

TEST_P(UnstoredVerdict, changes_nothing_and_can_be_given_again)
{
    open_course();
    const CourseContents before = file();
    const auto [verdict, step] = GetParam();
    database.fail_at(step.first, step.second);
    EXPECT_THROW(give(verdict), platform::DatabaseError);
    expect_nothing_changed(before);
    give(verdict);
    EXPECT_EQ(stored().attempts, 5);
    EXPECT_EQ(course.params.score_today, verdict == Verdict::success ? 7 : 5);
}

INSTANTIATE_TEST_SUITE_P(
    AtEveryStep, UnstoredVerdict,
    testing::Combine(testing::Values(Verdict::success, Verdict::failure),
                     testing::Values(std::pair(Operation::begin, 1), std::pair(Operation::query, 1),
                                     std::pair(Operation::execute, 1), std::pair(Operation::execute, 2),
                                     std::pair(Operation::execute, 5), std::pair(Operation::commit, 1))));

TEST_F(VerdictFailure, of_a_failure_comes_after_the_status_line_was_emptied)
{
    open_course();
    database.fail_at(Operation::begin);
    EXPECT_THROW(scoring.set_failure(), platform::DatabaseError);
    expect_status("", 0);
}

/// If a counter has reached the 16-bit limit, the verdict is rejected before anything is written.
TEST_F(VerdictFailure, of_a_full_counter_of_attempts_changes_nothing)
{
    open_course(32767, 2);
    const CourseContents before = file();
    EXPECT_THROW(scoring.set_success(), common::OverflowError);
    expect_nothing_changed(before);
    EXPECT_THROW(scoring.set_failure(), common::OverflowError);
    expect_nothing_changed(before);
}

TEST_F(VerdictFailure, of_a_full_counter_of_failures_refuses_the_failure_alone)
{
    open_course(4, 32767);
    const CourseContents before = file();
    EXPECT_THROW(scoring.set_failure(), common::OverflowError);
    expect_nothing_changed(before);
    scoring.set_success();
    EXPECT_EQ(stored().attempts, 5);
}

TEST_F(VerdictFailure, of_a_score_at_the_end_of_16_bits_changes_nothing)
{
    open_course();
    const CourseContents before = file();
    course.params.score_today = 32767;
    EXPECT_THROW(scoring.set_success(), common::OverflowError);
    EXPECT_EQ(course.params.score_today, 32767);
    course.params.score_today = -32768;
    EXPECT_THROW(scoring.set_failure(), common::OverflowError);
    EXPECT_EQ(course.params.score_today, -32768);
    EXPECT_EQ(file(), before);
}

/// A verdict that is stored although the counts cannot be refreshed leaves no question that could be judged again.
class UnrefreshedVerdict : public VerdictFailure, public testing::WithParamInterface<Verdict> {};

TEST_P(UnrefreshedVerdict, is_kept_and_takes_the_question_away)
{
    open_course();
    database.fail_at(Operation::open_recordset);
    EXPECT_THROW(give(GetParam()), platform::DatabaseError);
    EXPECT_EQ(stored().attempts, 5);
    EXPECT_EQ(course.params.score_today, GetParam() == Verdict::success ? 7 : 5);
    EXPECT_EQ(current_cnt(), 0);
    EXPECT_FALSE(state.shown.is_question());
    EXPECT_TRUE(desktop.boxes.empty());

    scoring.m_undo();
    EXPECT_EQ(stored().successes, 2) << "it can still be undone";
    EXPECT_EQ(current_cnt(), 1);
}

TEST_P(UnrefreshedVerdict, takes_the_question_away_for_want_of_memory_too)
{
    open_course();
    database.at_each_call([](Operation operation) {
        if (operation == Operation::open_recordset)
            throw std::bad_alloc();
    });
    EXPECT_THROW(give(GetParam()), std::bad_alloc);
    EXPECT_EQ(stored().attempts, 5);
    EXPECT_EQ(current_cnt(), 0);
    EXPECT_FALSE(state.shown.is_question());
    EXPECT_EQ(desktop.pointer_depth, 0);
}

INSTANTIATE_TEST_SUITE_P(Both, UnrefreshedVerdict, testing::Values(Verdict::success, Verdict::failure));

TEST_F(VerdictFailure, without_an_open_course_is_an_error)
{
    EXPECT_THROW(scoring.set_success(), platform::DatabaseError);
    EXPECT_THROW(scoring.set_failure(), platform::DatabaseError);
}

} // namespace
} // namespace cuedrill::drill
