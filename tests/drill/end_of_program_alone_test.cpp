#include "common/errors.h"
#include "drill/end_of_program.h"
#include "drill/scoring_fixture.h"

#include <gtest/gtest.h>
#include <new>

namespace cuedrill::drill {
namespace {

using fakes::CourseBuilder;
using fakes::Operation;

class EndOfTheProgram : public ScoringFixture {
protected:
    [[nodiscard]] std::string traced() const
    {
        const auto found = files.files.find("/program/trace.txt");
        return found == files.files.end() ? "" : found->second;
    }
};

TEST_F(EndOfTheProgram, stores_the_work_counters_and_closes_the_course)
{
    open(CourseBuilder());
    course.params.score_today = 3;
    clock.advance_seconds(90);
    EXPECT_THROW(end_of_program.end_program(), common::ProgramEnded);
    EXPECT_FALSE(course.is_open());
    EXPECT_FALSE(database.is_open());
    const auto contents = file();
    EXPECT_EQ(contents.number("time_ever"), 90);
    EXPECT_EQ(contents.number("time_TODAY"), 90);
    EXPECT_EQ(contents.number("score_TODAY"), 3);
    EXPECT_EQ(contents.param("last_date")->date_value, clock.time);
    EXPECT_EQ(traced(), "");
}

TEST_F(EndOfTheProgram, before_a_course_is_open_does_nothing_more)
{
    EXPECT_THROW(end_of_program.end_program(), common::ProgramEnded);
    EXPECT_EQ(database.count(Operation::begin), 0);
}

TEST_F(EndOfTheProgram, a_second_time_stores_nothing)
{
    open(CourseBuilder());
    EXPECT_THROW(end_of_program.end_program(), common::ProgramEnded);
    const auto before = file();
    clock.advance_seconds(90);
    EXPECT_THROW(end_of_program.end_program(), common::ProgramEnded);
    EXPECT_EQ(file(), before);
}

/// The course is closed before the trace can show a box.
TEST_F(EndOfTheProgram, closes_the_course_before_a_trace_that_is_too_long_says_so)
{
    open(CourseBuilder());
    files.files["/program/trace.txt"] = std::string(100000, 'x');
    database.fail_at(Operation::commit);
    desktop.on_box = [this] {
        EXPECT_FALSE(course.is_open());
        throw common::ProgramEnded{};
    };
    EXPECT_THROW(end_of_program.end_program(), common::ProgramEnded);
    ASSERT_EQ(desktop.boxes.size(), 1U);
    EXPECT_EQ(desktop.boxes[0].text, "Trace file too large. Please delete it (/program/trace.txt)");
    EXPECT_FALSE(database.is_open());
}

/// Counters that cannot be stored do not keep the program from ending and cause no box; the error is traced.
class FailingEnd : public EndOfTheProgram, public testing::WithParamInterface<Operation> {};

TEST_P(FailingEnd, closes_the_course_silently)
{
    open(CourseBuilder());
    const auto before = file();
    database.fail_at(GetParam());
    EXPECT_THROW(end_of_program.end_program(), common::ProgramEnded);
    EXPECT_FALSE(course.is_open());
    EXPECT_FALSE(database.is_open());
    EXPECT_EQ(file(), before);
    EXPECT_NE(traced().find("end_program - work time not stored - The disk is full.\r\n"), std::string::npos);
}

INSTANTIATE_TEST_SUITE_P(AtEveryStep, FailingEnd,
                         testing::Values(Operation::begin, Operation::execute, Operation::commit));

TEST_F(EndOfTheProgram, traces_that_nobody_can_tell_whether_the_work_time_is_stored)
{
    open(CourseBuilder());
    clock.advance_seconds(90);
    database.fail_commit(true);
    database.fail_at(Operation::query);
    EXPECT_THROW(end_of_program.end_program(), common::ProgramEnded);
    EXPECT_FALSE(course.is_open());
    EXPECT_EQ(file().number("time_ever"), 90);
    EXPECT_NE(traced().find("end_program - not known whether the work time is stored - The commit failed. It is not "
                            "known whether the change is stored, because the course cannot be read again.\r\n"),
              std::string::npos);
    EXPECT_EQ(traced().find("not stored"), std::string::npos);
}

/// The same for an error that does not come from the database engine.
TEST_F(EndOfTheProgram, closes_the_course_though_the_memory_is_used_up)
{
    open(CourseBuilder());
    const auto before = file();
    database.at_each_call([](Operation operation) {
        if (operation == Operation::execute)
            throw std::bad_alloc();
    });
    EXPECT_THROW(end_of_program.end_program(), common::ProgramEnded);
    EXPECT_FALSE(course.is_open());
    EXPECT_FALSE(database.is_open());
    EXPECT_EQ(database.transaction_depth(), 0);
    EXPECT_EQ(file(), before);
    EXPECT_NE(traced().find("end_program - work time not stored - There is not enough memory.\r\n"), std::string::npos);
}

} // namespace
} // namespace cuedrill::drill
