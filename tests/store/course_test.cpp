#include "common/errors.h"
#include "course_fixture.h"
#include "store/course.h"

#include <gtest/gtest.h>
#include <limits>

namespace cuedrill::store {
namespace {

using fakes::CourseBuilder;
using fakes::Operation;
using platform::DatabaseError;
using platform::DatabaseErrorKind;
using platform::Value;

class OpenCourse : public CourseFixture {};

TEST_F(OpenCourse, counts_its_records)
{
    CourseBuilder builder;
    builder.question("Rome");
    builder.question("Paris");
    open(builder);
    database.forget();
    EXPECT_EQ(course.count_records(), 2);
    EXPECT_EQ(database.statements(), std::vector<std::string>{"Select count(0) from qa"});
}

TEST_F(OpenCourse, asks_the_side_that_its_parameter_says)
{
    course.params.invert = true;
    course.set_side_fields();
    EXPECT_EQ(course.Q_FIELD.text, "a");
    EXPECT_EQ(course.A_FIELD.text, "q");
    course.params.invert = false;
    course.set_side_fields();
    EXPECT_EQ(course.Q_FIELD.text, "q");
}

TEST_F(OpenCourse, closes_and_opens_again)
{
    open(CourseBuilder());
    EXPECT_TRUE(course.is_open());
    course.close();
    EXPECT_FALSE(course.is_open());
    EXPECT_FALSE(database.is_open());
    course.close();
    course.apri_db();
    EXPECT_TRUE(course.is_open());
}

TEST_F(OpenCourse, reports_a_missing_file_unchanged)
{
    course.db_path = folder.file("missing.crs");
    try {
        course.apri_db();
        ADD_FAILURE() << "A missing file was opened.";
    } catch (const DatabaseError& error) {
        EXPECT_EQ(error.kind(), DatabaseErrorKind::missing);
    }
    EXPECT_FALSE(course.is_open());
}

TEST_F(OpenCourse, measures_the_time_from_where_it_is_counted_and_never_backwards)
{
    course.start_counting(clock.time);
    clock.advance_seconds(90);
    EXPECT_EQ(course.elapsed_seconds(clock.time), 90);
    clock.advance_seconds(-91);
    EXPECT_EQ(course.elapsed_seconds(clock.time), 0);
}

TEST(StoredNumber, is_zero_when_null)
{
    EXPECT_EQ(nz(Value()), 0);
    EXPECT_EQ(nz(Value(std::int64_t{-3})), -3);
    EXPECT_EQ(nz(Value(2.5)), 2.5);
    EXPECT_THROW((void)nz(Value("2")), DatabaseError);
}

TEST(StoredNumber, fits_16_bits_or_is_refused)
{
    EXPECT_EQ(nz_int16(Value(), "level"), 0);
    EXPECT_EQ(nz_int16(Value(std::int64_t{32767}), "level"), 32767);
    EXPECT_EQ(nz_int16(Value(-32768.0), "level"), -32768);
    EXPECT_THROW((void)nz_int16(Value(std::int64_t{32768}), "level"), common::OverflowError);
    EXPECT_THROW((void)nz_int16(Value(-32769.0), "level"), common::OverflowError);
    EXPECT_THROW((void)nz_int16(Value(std::numeric_limits<double>::infinity()), "level"), common::OverflowError);
}

TEST(StoredDate, is_nothing_when_null)
{
    EXPECT_EQ(stored_date(Value()), std::nullopt);
    const auto instant = common::DateTime::from_seconds(3'999'999'999);
    EXPECT_EQ(stored_date(Value(instant.day_number())), instant);
    EXPECT_THROW((void)stored_date(Value("yesterday")), DatabaseError);
}

TEST(StoredText, is_empty_when_null)
{
    EXPECT_EQ(stored_text(Value()), "");
    EXPECT_EQ(stored_text(Value("x")), "x");
    EXPECT_EQ(stored_text(Value(2.5)), "2.5");
}

TEST_F(OpenCourse, gives_zero_for_a_query_without_rows_or_of_null)
{
    open(CourseBuilder());
    EXPECT_EQ(single_number(database, "Select cnt from qa"), 0);
    EXPECT_EQ(single_number(database, "Select max(cnt) from qa"), 0);
}

} // namespace
} // namespace cuedrill::store
