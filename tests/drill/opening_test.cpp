// What opening a course loads into memory.
#include "drill/course_opener.h"
#include "drill/opener_fixture.h"
#include "store/course.h"
#include "store/course_params.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace cuedrill::drill {
namespace {

using fakes::CourseBuilder;

class Opening : public OpenerFixture {
protected:
    void open_remembered(const CourseBuilder& described)
    {
        remember(described.write(courses));
        ASSERT_TRUE(opener.apertura_db());
    }
};

TEST_F(Opening, reads_the_parameters_and_fixes_the_asked_side)
{
    open_remembered(unpassed_course().number_param("invert", 1).number_param("target_level", 3));
    EXPECT_TRUE(course.params.invert);
    EXPECT_EQ(course.params.target_level, 3);
    EXPECT_EQ(course.Q_FIELD.successes, "a_successes");
    EXPECT_EQ(course.A_FIELD.text, "q");
}

TEST_F(Opening, counts_the_records_by_one_query)
{
    builder.question("a").level(0);
    builder.question("b").level(0);
    open_remembered(builder);
    EXPECT_EQ(course.record_count, 2);
    const auto& statements = database.statements();
    EXPECT_EQ(std::count(statements.begin(), statements.end(), "Select count(0) from qa"), 1);
    EXPECT_TRUE(std::none_of(statements.begin(), statements.end(), [](const std::string& statement) {
        return statement.find("from qa") != std::string::npos && !statement.starts_with("Select count(0) from qa") &&
               !statement.starts_with("Select (Select count(*) from qa)");
    })) << "nothing but counts is asked about the records";
}

TEST_F(Opening, opens_a_course_with_numbers_beyond_16_bits)
{
    builder.question("far").level(0).number(2147483647);
    open_remembered(builder);
    EXPECT_EQ(course.record_count, 1);
}

TEST_F(Opening, forgets_the_font_of_the_course_before)
{
    course.params.font = "Serif";
    open_remembered(unpassed_course());
    EXPECT_EQ(course.params.font, "");
}

TEST_F(Opening, shows_the_window_when_all_is_known_and_then_forgets_the_notice)
{
    bool ready = false;
    desktop.on_box = [&] {
        ready = course.is_open() && course.params.target_level == 5 && !course.Q_FIELD.text.empty() &&
                course.record_count == 1 && remembered() == course.db_path && form1.window.shown;
        EXPECT_TRUE(course.all_passed_announced);
    };
    desktop.expect_box("You have passed level 5 for all questions.");
    builder.question("a").level(5);
    open_remembered(builder);
    EXPECT_TRUE(ready);
    EXPECT_FALSE(course.all_passed_announced);
    EXPECT_EQ(times_shown(), 1);
    EXPECT_EQ(times_put_away(), 0);
}

TEST_F(Opening, counts_the_work_time_of_the_first_course_from_the_start_of_the_program)
{
    clock.advance_seconds(40);
    open_remembered(unpassed_course());
    EXPECT_EQ(course.elapsed_seconds(clock.time), 40);
}

TEST_F(Opening, tells_when_another_window_has_the_course_open)
{
    const std::string chosen = unpassed_course().write(courses);
    open_courses.elsewhere.insert(chosen);
    remember(chosen);
    EXPECT_TRUE(opener.apertura_db());
    EXPECT_EQ(form1.screen.P_status.text,
              "This course is also open in another window. Records are safe; the work counters of the one closed last "
              "count.");
    EXPECT_EQ(open_courses.entered, chosen);
}

TEST_F(Opening, tells_nothing_when_no_other_window_has_the_course_open)
{
    const std::string chosen = unpassed_course().write(courses);
    open_courses.elsewhere.insert(courses.file("other.crs"));
    remember(chosen);
    EXPECT_TRUE(opener.apertura_db());
    EXPECT_EQ(form1.screen.P_status.text, "");
    EXPECT_EQ(open_courses.entered, chosen);
}

TEST_F(Opening, of_a_course_that_fails_leaves_it_to_other_windows)
{
    const std::string chosen = unpassed_course().write(courses);
    remember(chosen);
    EXPECT_TRUE(opener.apertura_db());
    database.fail_check(platform::DatabaseErrorKind::damaged, "It is damaged (row 2 missing).");
    desktop.on_box = [this] { EXPECT_EQ(open_courses.entered, ""); };
    desktop.expect_box_like(cannot_open(chosen, "It is damaged (row 2 missing)."), platform::BoxAnswer::ok);
    desktop.expect_file({});
    EXPECT_THROW(form1.window.paint_first_picture(), common::ProgramEnded);
}

TEST_F(Opening, ends_the_program_when_the_window_asks_for_it_while_it_loads)
{
    remember(unpassed_course().write(courses));
    desktop.on_pump = [this] {
        if (course.is_open())
            throw common::ProgramEnded{};
    };
    EXPECT_THROW((void)opener.apertura_db(), common::ProgramEnded);
}

} // namespace
} // namespace cuedrill::drill
