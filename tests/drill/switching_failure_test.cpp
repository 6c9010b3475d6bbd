// A course that cannot be stored stays open with all its data; one that cannot be opened leaves nothing open.
#include "drill/course_opener.h"
#include "drill/opener_fixture.h"
#include "store/course.h"

#include <gtest/gtest.h>

namespace cuedrill::drill {
namespace {

using fakes::Operation;
using platform::BoxAnswer;
using platform::DatabaseError;

class SwitchingFailure : public OpenerFixture {
protected:
    std::string first = unpassed_course().number_param("target_level", 5).write(courses, "first.crs");

    SwitchingFailure()
    {
        remember(first);
        if (!opener.apertura_db())
            throw std::runtime_error("the first course does not open");
        logic->display.take_for_record(3);
    }

    void expect_first_still_open() const
    {
        expect_open(first);
        EXPECT_EQ(course.course_name, "first");
        EXPECT_EQ(logic->state.shown.current_cnt(), 3);
        EXPECT_EQ(times_put_away(), 0);
        EXPECT_TRUE(desktop.file_dialogs.empty());
    }
};

/// The course stays open if its settings (first commit) or its counters (second commit) cannot be stored.
TEST_F(SwitchingFailure, to_store_keeps_the_present_course_open)
{
    for (const int commit : {1, 2}) {
        SCOPED_TRACE(commit);
        database.fail_at(Operation::commit, commit);
        EXPECT_THROW(opener.m_open(), DatabaseError);
        expect_first_still_open();
        EXPECT_EQ(file().number("time_ever"), std::nullopt);
    }
}

TEST_F(SwitchingFailure, to_store_before_a_new_course_does_not_make_later_creations_silent)
{
    database.fail_at(Operation::commit);
    EXPECT_THROW(opener.m_new(), DatabaseError);
    expect_first_still_open();

    const std::string chosen = courses.file("new.crs");
    expect_dialog_answer(chosen);
    desktop.expect_box("File " + chosen + " does not exist. Do you want to create it?", BoxAnswer::yes);
    expect_notice_of_empty_course();
    opener.m_open();
    expect_open(chosen);
}

TEST_F(SwitchingFailure, to_open_leads_to_the_dialog_again)
{
    const std::string broken = courses.write("broken.crs", "x");
    expect_dialog_answer(broken);
    desktop.expect_box_like(cannot_open(broken, "It is not a course."), BoxAnswer::ok);
    expect_dialog_answer(first);
    opener.m_open();
    expect_open(first);
}

TEST_F(SwitchingFailure, to_open_and_a_cancelled_dialog_end_the_program)
{
    const std::string broken = courses.write("broken.crs", "x");
    expect_dialog_answer(broken);
    desktop.expect_box_like(cannot_open(broken, "It is not a course."), BoxAnswer::ok);
    desktop.expect_file({});
    EXPECT_THROW(opener.m_open(), common::ProgramEnded);
    expect_nothing_open();
    EXPECT_EQ(remembered(), first);
}

TEST_F(SwitchingFailure, counts_the_course_opened_after_it_from_that_opening)
{
    expect_dialog_answer(first);
    database.fail_at(Operation::open);
    desktop.expect_box_like(cannot_open(first, fakes::RecordingDatabase::failure_words), BoxAnswer::ok);
    expect_dialog_answer(first);
    clock.advance_seconds(70);
    opener.m_open();
    EXPECT_EQ(course.elapsed_seconds(clock.time), 0);
    clock.advance_seconds(5);
    EXPECT_EQ(course.elapsed_seconds(clock.time), 5);
}

} // namespace
} // namespace cuedrill::drill
