#include "drill/scoring_fixture.h"
#include "scheduler/maturity.h"
#include "scheduler/next_question.h"

#include <gtest/gtest.h>

namespace cuedrill::drill {
namespace {

using fakes::CourseBuilder;
using fakes::Operation;

class MatureCount : public ScoringFixture {};

TEST_F(MatureCount, is_over_all_levels_below_the_target)
{
    CourseBuilder builder;
    builder.question("mature 0").level(0).tested_ago(9s);
    builder.question("mature 2").level(2).tested_ago(2h);
    builder.question("mature 2").level(2).tested_ago(3h);
    builder.question("not mature").level(2).tested_ago(30min);
    builder.question("passed").level(3).tested_ago(900 * one_day);
    builder.question("just shown").level(1).tested_ago(one_day).shown_ago(8s);
    builder.number_param("target_level", 3);
    open(builder);
    EXPECT_EQ(count_mature(course, dead_times, clock.now()), 3);
    EXPECT_EQ(database.statements(), std::vector<std::string>{all_mature_query(course.Q_FIELD, dead_times, 3,
                                                                               MatureResult::count, clock.time)});
}

TEST_F(MatureCount, leaves_out_what_was_never_tested_though_it_would_be_asked)
{
    CourseBuilder builder;
    builder.question("never");
    builder.question("no date").level(0);
    builder.question("no level").tested_ago(one_day);
    open(builder);
    EXPECT_EQ(count_mature(course, dead_times, clock.now()), 0);
    selection.next_question();
    EXPECT_NE(current_cnt(), 0);
}

TEST_F(MatureCount, has_rows_in_the_order_in_which_they_would_be_asked)
{
    CourseBuilder builder;
    builder.question("low").level(1).tested_ago(one_day);
    builder.question("high, later").level(2).tested_ago(2h);
    builder.question("high, earlier").level(2).tested_ago(3h);
    open(builder);
    const auto rows =
        database.open_recordset(all_mature_query(course.Q_FIELD, dead_times, 5, MatureResult::rows, clock.time));
    std::vector<std::string> texts;
    for (; !rows->eof(); rows->move_next())
        texts.push_back(std::get<std::string>(rows->field("q")));
    EXPECT_EQ(texts, (std::vector<std::string>{"high, earlier", "high, later", "low"}));
}

TEST_F(MatureCount, is_told_by_its_command)
{
    CourseBuilder builder;
    builder.question("mature").level(2).tested_ago(2h);
    open(builder);
    desktop.expect_box_like({.text = "Number of mature questions: 1"}, platform::BoxAnswer::ok);
    selection.m_disp_nr_mature();
}

TEST_F(MatureCount, passes_on_an_error_of_the_engine)
{
    open(CourseBuilder());
    database.fail_at(Operation::open_recordset);
    EXPECT_THROW(selection.m_disp_nr_mature(), platform::DatabaseError);
    EXPECT_EQ(desktop.pointer_depth, 0);
}

} // namespace
} // namespace cuedrill::drill
