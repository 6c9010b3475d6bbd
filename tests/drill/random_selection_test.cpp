#include "common/errors.h"
#include "drill/scoring_fixture.h"
#include "drill/selection.h"
#include "scheduler/next_question.h"

#include <gtest/gtest.h>

namespace cuedrill::drill {
namespace {

using fakes::CourseBuilder;
using fakes::Operation;

const std::string randomly = "Mature questions of a given level will be extracted randomly";
const std::string by_date = "Mature questions of a given level will be extracted ordered by date of last test";

class RandomSelection : public ScoringFixture {
protected:
    [[nodiscard]] fakes::FakeMenuEntry& random_entry() const { return form1.menu_bar.entry("m_random_extraction"); }

    /// `count` new questions.
    void open_with(int count)
    {
        CourseBuilder builder;
        for (int i = 0; i < count; ++i)
            builder.question("question " + std::to_string(i));
        open(builder.number_param("random_mode", 1).number_param("target_level", 5));
    }
};

TEST_F(RandomSelection, draws_every_place_of_the_level_by_the_random_number)
{
    open_with(4);
    for (const auto& [number, drawn] : {std::pair(0.0, 1), std::pair(0.2499, 1), std::pair(0.25, 2), std::pair(0.5, 3),
                                        std::pair(0.75, 4), std::pair(0.9999999999999999, 4)}) {
        random.queue = {number};
        EXPECT_EQ(select_mature(course, dead_times, 0, false, clock.time, random), drawn) << number;
    }
}

TEST_F(RandomSelection, draws_in_the_order_of_the_query)
{
    CourseBuilder builder;
    builder.question("later").level(2).tested_ago(2h);
    builder.question("earlier").level(2).tested_ago(3h);
    open(builder.number_param("random_mode", 1));
    random.constant = 0;
    selection.next_question();
    EXPECT_EQ(current_cnt(), 2);
}

TEST_F(RandomSelection, draws_no_number_for_a_level_without_questions_nor_when_it_is_off)
{
    open_with(2);
    EXPECT_FALSE(select_mature(course, dead_times, 4, false, clock.time, random));
    course.params.random_mode = false;
    EXPECT_EQ(select_mature(course, dead_times, 0, false, clock.time, random), 1);
    EXPECT_EQ(random.calls, 0);
}

TEST_F(RandomSelection, skips_the_level_when_it_draws_the_previous_one)
{
    open_with(3);
    display.take_for_record(2);
    random.queue = {0.5};
    desktop.expect_box("No question is mature for being asked.");
    selection.next_question();
    EXPECT_EQ(current_cnt(), 0);
    random.queue = {0.5};
    selection.next_question();
    EXPECT_EQ(current_cnt(), 2);
}

TEST_F(RandomSelection, draws_from_10000_questions_and_not_from_one_more)
{
    open_with(10000);
    random.constant = 0.9999999999999999;
    EXPECT_EQ(select_mature(course, dead_times, 0, false, clock.time, random), 10000);

    database.execute("Insert into qa (q) values ('one more')");
    EXPECT_THROW(selection.next_question(), common::OutOfRangeError);
    EXPECT_EQ(current_cnt(), 0);
    EXPECT_FALSE(state.shown.is_question());
}

TEST_F(RandomSelection, is_disturbed_by_a_number_beyond_16_bits_only_when_it_is_drawn)
{
    CourseBuilder builder;
    builder.question("near");
    builder.question("far").number(32768);
    open(builder.number_param("random_mode", 1));
    random.queue = {0.0, 0.5};
    EXPECT_EQ(select_mature(course, dead_times, 0, false, clock.time, random), 1);
    EXPECT_THROW((void)select_mature(course, dead_times, 0, false, clock.time, random), common::OverflowError);
}

TEST_F(RandomSelection, is_turned_on_and_off_by_its_command)
{
    open(CourseBuilder());
    desktop.expect_box_like({.text = randomly}, platform::BoxAnswer::ok);
    selection.m_random_extraction();
    EXPECT_TRUE(course.params.random_mode);
    EXPECT_EQ(file().number("random_mode"), 1);
    EXPECT_TRUE(random_entry().checked);

    desktop.expect_box_like({.text = by_date}, platform::BoxAnswer::ok);
    selection.m_random_extraction();
    EXPECT_FALSE(course.params.random_mode);
    EXPECT_EQ(file().number("random_mode"), 0);
    EXPECT_FALSE(random_entry().checked);
}

/// The option is unchanged in memory, file and menu.
TEST_F(RandomSelection, is_unchanged_when_it_cannot_be_stored)
{
    open(CourseBuilder());
    const auto before = file();
    database.fail_at(Operation::commit);
    EXPECT_THROW(selection.m_random_extraction(), platform::DatabaseError);
    EXPECT_FALSE(course.params.random_mode);
    EXPECT_EQ(file(), before);
    EXPECT_FALSE(random_entry().checked);
}

} // namespace
} // namespace cuedrill::drill
