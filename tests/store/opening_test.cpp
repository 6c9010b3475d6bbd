// What an opened course brings into memory.
#include "opener_fixture.h"

#include <gtest/gtest.h>

namespace cuedrill::store {
namespace {

using fakes::CourseBuilder;

class Opening : public OpenerFixture {
protected:
    void open_remembered(const CourseBuilder& builder)
    {
        remember(builder.write(folder));
        ASSERT_TRUE(opener.apertura_db());
    }
};

TEST_F(Opening, reads_the_parameters_and_fixes_the_asked_side)
{
    open_remembered(CourseBuilder().number_param("invert", 1).number_param("target_level", 3));
    EXPECT_TRUE(course.params.invert);
    EXPECT_EQ(course.params.target_level, 3);
    EXPECT_EQ(course.Q_FIELD.successes, "a_successes");
    EXPECT_EQ(course.A_FIELD.text, "q");
}

TEST_F(Opening, counts_the_records_by_one_query)
{
    CourseBuilder builder;
    builder.question("a");
    builder.question("b");
    open_remembered(builder);
    EXPECT_EQ(course.record_count, 2);
    EXPECT_EQ(database.statements(), std::vector<std::string>{"Select count(0) from qa"});
}

TEST_F(Opening, opens_a_course_with_numbers_beyond_16_bits)
{
    CourseBuilder builder;
    builder.question("far").number(2147483647);
    open_remembered(builder);
    EXPECT_EQ(course.record_count, 1);
}

TEST_F(Opening, forgets_the_font_of_the_course_before)
{
    course.params.font = "Serif";
    open_remembered(CourseBuilder());
    EXPECT_EQ(course.params.font, "");
}

TEST_F(Opening, loads_the_window_when_all_is_known_and_then_forgets_the_notice)
{
    bool ready = false;
    host.on_load = [&] {
        ready = course.is_open() && course.params.target_level == 5 && !course.Q_FIELD.text.empty() &&
                course.record_count == 1 && remembered() == course.db_path;
        course.all_passed_announced = true;
    };
    CourseBuilder builder;
    builder.question("a");
    open_remembered(builder);
    EXPECT_TRUE(ready);
    EXPECT_FALSE(course.all_passed_announced);
    EXPECT_EQ(host.loads, 1);
    EXPECT_EQ(host.unloads, 0);
}

TEST_F(Opening, counts_the_work_time_of_the_first_course_from_the_start_of_the_program)
{
    const auto start = clock.time;
    clock.advance_seconds(40);
    open_remembered(CourseBuilder());
    EXPECT_EQ(course.counted_from(), start);
}

TEST_F(Opening, ends_the_program_when_the_window_asks_for_it_while_it_loads)
{
    remember(CourseBuilder().write(folder));
    host.on_load = [] { throw common::ProgramEnded{}; };
    EXPECT_THROW((void)opener.apertura_db(), common::ProgramEnded);
}

} // namespace
} // namespace cuedrill::store
