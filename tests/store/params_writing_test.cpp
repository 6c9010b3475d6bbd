#include "course_fixture.h"
#include "store/course_params.h"

#include <gtest/gtest.h>

namespace cuedrill::store {
namespace {

using fakes::CourseBuilder;
using fakes::CourseContents;
using fakes::Operation;
using fakes::ParamRow;
using platform::DatabaseError;

class WriteParams : public CourseFixture {
protected:
    void open_with_defaults()
    {
        open(CourseBuilder(), "Verbs");
        params.read_params();
        database.forget();
    }

    static void change_all(CourseParams& params)
    {
        params.course_title = "Irregular verbs";
        params.invert = params.random_mode = params.list_mode = params.always_type = true;
        params.target_level = 9;
    }

    void expect_defaults_in_memory() const
    {
        EXPECT_EQ(course.params.course_title, "Course Verbs");
        EXPECT_FALSE(course.params.invert);
        EXPECT_FALSE(course.params.random_mode);
        EXPECT_FALSE(course.params.list_mode);
        EXPECT_FALSE(course.params.always_type);
        EXPECT_EQ(course.params.target_level, 5);
    }
};

TEST_F(WriteParams, stores_the_six_settings_in_their_order)
{
    open(CourseBuilder(), "Verbs");
    change_all(course.params);
    params.write_params();
    EXPECT_EQ(file().params, (std::vector<ParamRow>{{.param = "random_mode", .number_value = 1},
                                                    {.param = "course_title", .string_value = "Irregular verbs"},
                                                    {.param = "invert", .number_value = 1},
                                                    {.param = "list_mode", .number_value = 1},
                                                    {.param = "always_type", .number_value = 1},
                                                    {.param = "target_level", .number_value = 9}}));
}

TEST_F(WriteParams, changes_the_rows_that_are_there_and_no_others)
{
    open(CourseBuilder()
             .number_param("INVERT", 1)
             .text_param("font", "Serif")
             .number_param("time_ever", 7)
             .number_param("own_row", 8));
    course.params.target_level = 5;
    params.write_params();
    const CourseContents contents = file();
    EXPECT_EQ(contents.param_names(),
              (std::vector<std::string>{"INVERT", "font", "time_ever", "own_row", "random_mode", "course_title",
                                        "list_mode", "always_type", "target_level"}));
    EXPECT_EQ(contents.number("INVERT"), 0);
    EXPECT_EQ(contents.param("font")->string_value, "Serif");
    EXPECT_EQ(contents.number("time_ever"), 7);
    EXPECT_EQ(contents.number("own_row"), 8);
}

TEST_F(WriteParams, stores_the_default_for_an_empty_title)
{
    open(CourseBuilder(), "Verbs");
    course.params.course_title.clear();
    params.write_params();
    EXPECT_EQ(file().param("course_title")->string_value, "Course Verbs");
}

TEST_F(WriteParams, shortens_a_default_title_that_does_not_fit)
{
    open(CourseBuilder(), "Verbs");
    std::string name;
    for (int i = 0; i < 250; ++i)
        name += "é";
    course.course_name = name;
    course.params.course_title.clear();
    params.write_params();
    std::string expected = "Course ";
    for (int i = 7; i < 200; ++i)
        expected += "é";
    EXPECT_EQ(file().param("course_title")->string_value, expected);
}

TEST_F(WriteParams, makes_a_change_the_course_s_own_once_it_is_stored)
{
    open_with_defaults();
    params.change_params(change_all);
    EXPECT_EQ(course.params.course_title, "Irregular verbs");
    EXPECT_TRUE(course.params.always_type);
    EXPECT_EQ(course.params.target_level, 9);
    EXPECT_EQ(file().number("target_level"), 9);
    EXPECT_EQ(file().number("always_type"), 1);
}

TEST_F(WriteParams, stores_all_in_one_transaction)
{
    open_with_defaults();
    params.write_params();
    EXPECT_EQ(database.count(Operation::begin), 1);
    EXPECT_EQ(database.count(Operation::commit), 1);
    EXPECT_EQ(database.count(Operation::execute), 6);
}

TEST_F(WriteParams, exchanges_the_sides_in_another_direction_and_forgets_the_last_verdict)
{
    open_with_defaults();
    course.set_side_fields();
    course.last_verdict = LastVerdict{.cnt = 1};
    params.change_params([](CourseParams& changed) { changed.random_mode = true; });
    EXPECT_EQ(course.Q_FIELD.text, "q");
    EXPECT_TRUE(course.last_verdict);
    params.change_params([](CourseParams& changed) { changed.invert = true; });
    EXPECT_EQ(course.Q_FIELD.text, "a");
    EXPECT_EQ(course.A_FIELD.text, "q");
    EXPECT_FALSE(course.last_verdict);
}

TEST_F(WriteParams, announces_only_a_higher_target_again)
{
    open_with_defaults();
    course.all_passed_announced = true;
    params.change_params([](CourseParams& changed) { changed.target_level = 4; });
    EXPECT_TRUE(course.all_passed_announced);
    params.change_params([](CourseParams& changed) { changed.target_level = 5; });
    EXPECT_FALSE(course.all_passed_announced);
}

/// Proves that memory and file are as before when storing fails at any step.
class FailingChange : public WriteParams, public testing::WithParamInterface<std::pair<Operation, int>> {};

TEST_P(FailingChange, changes_neither_memory_nor_file)
{
    open_with_defaults();
    const CourseContents before = file();
    database.fail_at(GetParam().first, GetParam().second);
    EXPECT_THROW(params.change_params(change_all), DatabaseError);
    expect_defaults_in_memory();
    EXPECT_EQ(file(), before);
    EXPECT_EQ(database.transaction_depth(), 0);
}

INSTANTIATE_TEST_SUITE_P(AtEveryStep, FailingChange,
                         testing::Values(std::pair(Operation::begin, 1), std::pair(Operation::execute, 1),
                                         std::pair(Operation::execute, 6), std::pair(Operation::commit, 1)));

} // namespace
} // namespace cuedrill::store
