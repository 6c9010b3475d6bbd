#include "common/errors.h"
#include "course_fixture.h"
#include "store/course_params.h"

#include <gtest/gtest.h>
#include <optional>

namespace cuedrill::store {
namespace {

using fakes::CourseBuilder;
using fakes::Operation;
using platform::DatabaseError;

const std::vector<std::string> settings_rows{"random_mode", "course_title", "invert",
                                             "list_mode",   "always_type",  "target_level"};

class ReadParams : public CourseFixture {
protected:
    void read(const CourseBuilder& builder, const std::string& name = "Verbs")
    {
        open(builder, name);
        params.read_params();
    }
};

TEST_F(ReadParams, gives_the_defaults_on_a_new_course_and_stores_the_settings)
{
    read(CourseBuilder());
    EXPECT_EQ(course.params.course_title, "Course Verbs");
    EXPECT_FALSE(course.params.invert);
    EXPECT_FALSE(course.params.random_mode);
    EXPECT_FALSE(course.params.list_mode);
    EXPECT_FALSE(course.params.always_type);
    EXPECT_EQ(course.params.target_level, 5);
    EXPECT_EQ(course.params.time_ever, 0);
    EXPECT_EQ(course.params.time_today, 0);
    EXPECT_EQ(course.params.score_today, 0);
    EXPECT_EQ(course.params.last_date, clock.time.plus_days(-1));
    EXPECT_EQ(course.params.font, "");
    EXPECT_EQ(file().param_names(), settings_rows);
    EXPECT_EQ(file().number("target_level"), 5);
}

TEST_F(ReadParams, gives_what_is_stored)
{
    const auto last_date = clock.time.plus_days(-0.125);
    read(CourseBuilder()
             .text_param("course_title", "Irregular verbs")
             .number_param("invert", 1)
             .number_param("random_mode", 1)
             .number_param("list_mode", 1)
             .number_param("always_type", 1)
             .number_param("target_level", 7)
             .number_param("time_ever", 36000.5)
             .date_param("last_date", last_date)
             .number_param("time_TODAY", 120)
             .number_param("score_TODAY", -4)
             .text_param("font", "Serif"));
    EXPECT_EQ(course.params.course_title, "Irregular verbs");
    EXPECT_TRUE(course.params.invert);
    EXPECT_TRUE(course.params.random_mode);
    EXPECT_TRUE(course.params.list_mode);
    EXPECT_TRUE(course.params.always_type);
    EXPECT_EQ(course.params.target_level, 7);
    EXPECT_EQ(course.params.time_ever, 36000.5);
    EXPECT_EQ(course.params.last_date, last_date);
    EXPECT_EQ(course.params.time_today, 120);
    EXPECT_EQ(course.params.score_today, -4);
    EXPECT_EQ(course.params.font, "Serif");
}

TEST_F(ReadParams, treats_null_as_missing)
{
    read(CourseBuilder()
             .text_param("course_title", std::nullopt)
             .number_param("invert", std::nullopt)
             .number_param("target_level", std::nullopt)
             .number_param("time_ever", std::nullopt)
             .date_param("last_date", std::nullopt)
             .number_param("time_today", std::nullopt)
             .number_param("score_today", std::nullopt)
             .text_param("font", std::nullopt));
    EXPECT_EQ(course.params.course_title, "Course Verbs");
    EXPECT_FALSE(course.params.invert);
    EXPECT_EQ(course.params.target_level, 5);
    EXPECT_EQ(course.params.time_ever, 0);
    EXPECT_EQ(course.params.last_date, clock.time.plus_days(-1));
    EXPECT_EQ(course.params.time_today, 0);
    EXPECT_EQ(course.params.score_today, 0);
    EXPECT_EQ(course.params.font, "");
}

TEST_F(ReadParams, takes_the_target_level_of_the_course_before_where_its_own_is_null)
{
    read(CourseBuilder().number_param("target_level", 8), "Before");
    read(CourseBuilder().number_param("target_level", std::nullopt));
    EXPECT_EQ(course.params.target_level, 8);
    EXPECT_EQ(file().number("target_level"), std::nullopt) << "the row stays as it is";
}

TEST_F(ReadParams, keeps_an_empty_title_in_memory_and_stores_the_default)
{
    read(CourseBuilder().text_param("course_title", "").number_param("target_level", 0));
    EXPECT_EQ(course.params.course_title, "");
    EXPECT_EQ(file().param("course_title")->string_value, "Course Verbs");
}

TEST_F(ReadParams, takes_an_option_as_set_for_exactly_1)
{
    for (const double number : {2.0, -1.0, 0.0, 0.999, 1.001}) {
        SCOPED_TRACE(number);
        fakes::CourseBuilder builder;
        for (const char* name : {"invert", "random_mode", "list_mode", "always_type"})
            builder.number_param(name, number);
        read(builder.number_param("target_level", 5), "c" + std::to_string(number));
        EXPECT_FALSE(course.params.invert);
        EXPECT_FALSE(course.params.random_mode);
        EXPECT_FALSE(course.params.list_mode);
        EXPECT_FALSE(course.params.always_type);
    }
}

TEST_F(ReadParams, finds_names_in_any_case)
{
    read(CourseBuilder().number_param("INVERT", 1).text_param("Course_Title", "Verbs").number_param("Target_Level", 3));
    EXPECT_TRUE(course.params.invert);
    EXPECT_EQ(course.params.course_title, "Verbs");
    EXPECT_EQ(course.params.target_level, 3);
}

TEST_F(ReadParams, takes_over_what_the_course_before_had_for_always_type_and_target_level_only)
{
    read(CourseBuilder()
             .number_param("invert", 1)
             .number_param("random_mode", 1)
             .number_param("list_mode", 1)
             .number_param("always_type", 1)
             .number_param("target_level", 8)
             .number_param("time_ever", 5)
             .text_param("font", "Serif"),
         "first");
    read(CourseBuilder(), "second");
    EXPECT_TRUE(course.params.always_type);
    EXPECT_EQ(course.params.target_level, 8);
    EXPECT_FALSE(course.params.invert);
    EXPECT_FALSE(course.params.random_mode);
    EXPECT_FALSE(course.params.list_mode);
    EXPECT_EQ(course.params.time_ever, 0);
    EXPECT_EQ(course.params.font, "");
    EXPECT_EQ(file(), fakes::CourseContents{}) << "an inherited level in its range is not stored";
}

TEST_F(ReadParams, leaves_alone_what_the_file_says_to_be_false)
{
    course.params.always_type = true;
    read(CourseBuilder().number_param("always_type", 0).number_param("target_level", 5));
    EXPECT_FALSE(course.params.always_type);
}

struct TargetCase {
    double stored;
    common::Int16 read;
    bool written_back;
};

class ReadTargetLevel : public ReadParams, public testing::WithParamInterface<TargetCase> {};

TEST_P(ReadTargetLevel, is_cut_to_a_whole_number_and_forced_into_its_range)
{
    const auto [stored, expected, written_back] = GetParam();
    read(CourseBuilder().number_param("target_level", stored));
    EXPECT_EQ(course.params.target_level, expected);
    EXPECT_EQ(file().number("target_level"), written_back ? expected : stored);
    EXPECT_EQ(file().params.size(), written_back ? 6U : 1U);
}

INSTANTIATE_TEST_SUITE_P(Levels, ReadTargetLevel,
                         testing::Values(TargetCase{1, 1, false}, TargetCase{10, 10, false},
                                         TargetCase{10.9, 10, false}, TargetCase{1.5, 1, false},
                                         TargetCase{11, 5, true}, TargetCase{0, 5, true}, TargetCase{0.99, 5, true},
                                         TargetCase{-3, 5, true}, TargetCase{1e300, 5, true}));

TEST_F(ReadParams, reads_on_after_the_target_level_was_corrected)
{
    read(CourseBuilder()
             .number_param("target_level", 99)
             .number_param("time_ever", 50)
             .date_param("last_date", clock.time)
             .number_param("score_TODAY", 3)
             .text_param("font", "Serif"));
    EXPECT_EQ(course.params.target_level, 5);
    EXPECT_EQ(course.params.time_ever, 50);
    EXPECT_EQ(course.params.score_today, 3);
    EXPECT_EQ(course.params.font, "Serif");
}

TEST_F(ReadParams, starts_the_figures_of_the_day_at_zero_on_another_day)
{
    const auto midnight = clock.time.date_only();
    for (const auto last_date :
         {midnight.plus_days(-1), common::DateTime::from_seconds(midnight.seconds() - 1), midnight.plus_days(1)}) {
        SCOPED_TRACE(common::format_date_literal(last_date));
        read(CourseBuilder()
                 .number_param("target_level", 5)
                 .number_param("time_ever", 5000)
                 .date_param("last_date", last_date)
                 .number_param("time_TODAY", 300)
                 .number_param("score_TODAY", 12),
             "c" + std::to_string(last_date.seconds()));
        EXPECT_EQ(course.params.time_today, 0);
        EXPECT_EQ(course.params.score_today, 0);
        EXPECT_EQ(course.params.time_ever, 5000);
        EXPECT_EQ(course.params.last_date, last_date);
    }
}

TEST_F(ReadParams, goes_on_with_the_figures_of_the_day_from_its_first_second_to_its_last)
{
    const auto midnight = clock.time.date_only();
    for (const std::int64_t second : {0, 86399}) {
        SCOPED_TRACE(second);
        read(CourseBuilder()
                 .number_param("target_level", 5)
                 .date_param("last_date", common::DateTime::from_seconds(midnight.seconds() + second))
                 .number_param("time_TODAY", 300)
                 .number_param("score_TODAY", 12),
             "c" + std::to_string(second));
        EXPECT_EQ(course.params.time_today, 300);
        EXPECT_EQ(course.params.score_today, 12);
    }
}

TEST_F(ReadParams, refuses_a_score_beyond_16_bits)
{
    open(CourseBuilder()
             .number_param("target_level", 5)
             .date_param("last_date", clock.time)
             .number_param("score_TODAY", 32768));
    EXPECT_THROW(params.read_params(), common::OverflowError);
}

TEST_F(ReadParams, passes_on_an_error_of_the_engine)
{
    open(CourseBuilder());
    database.fail_at(Operation::query);
    EXPECT_THROW(params.read_params(), DatabaseError);
    database.fail_at(Operation::query, 4);
    EXPECT_THROW(params.read_params(), DatabaseError);
    database.fail_at(Operation::commit, 1, platform::DatabaseErrorKind::input_output, "The disk is ill.");
    EXPECT_THROW(params.read_params(), DatabaseError);
    EXPECT_EQ(file(), fakes::CourseContents{});
}

} // namespace
} // namespace cuedrill::store
