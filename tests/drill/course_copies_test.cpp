// When copies of the course are made, and what the user learns of them.
#include "drill/course_copies.h"
#include "drill/course_opener.h"
#include "drill/drill_state.h"
#include "drill/opener_fixture.h"
#include "drill/question_import.h"
#include "keep/copies.h"
#include "keep/copy_names.h"
#include "store/course.h"

#include <algorithm>
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <vector>

namespace cuedrill::drill {
namespace {

namespace fs = std::filesystem;
using fakes::Operation;
using platform::BoxAnswer;

class CopySchedule : public OpenerFixture {
protected:
    static constexpr const char* failure = "No copy of the course could be made. The disk is full.";

    /// A course with so many pages that its copy takes several steps.
    static fakes::CourseBuilder large()
    {
        fakes::CourseBuilder described;
        for (int i = 0; i < 1200; ++i)
            described.question("question " + std::to_string(i), std::string(150, 'x')).level(0).inverted().level(0);
        return described;
    }

    void open(const fakes::CourseBuilder& described, const std::string& name = "course.crs")
    {
        remember(described.write(courses, name));
        user([this] { opener.apertura_db(); });
        path = course.db_path;
    }

    void open_and_paint(const fakes::CourseBuilder& described = large(), const std::string& name = "course.crs")
    {
        open(described, name);
        user([this] { form1.window.paint_first_picture(); });
    }

    void tick()
    {
        user([this] { form1.timer_idle.tick(); });
    }

    /// Ticks until the timer stops.
    void let_idle()
    {
        for (int i = 0; i < 1000 && form1.timer_idle.running; ++i)
            tick();
        EXPECT_FALSE(form1.timer_idle.running);
    }

    [[nodiscard]] std::string folder_of_copies() const { return data_folder + "/copies"; }

    [[nodiscard]] std::size_t made() const { return logic->copies.of(path).size(); }

    void press_key() { static_cast<void>(form1.window.on_key_event({.scan_code = 38})); }

    [[nodiscard]] std::vector<std::string> traced_copies() const
    {
        const std::string trace = folder.read("trace.txt");
        std::vector<std::string> found;
        for (std::size_t at = trace.find("copies - "); at != std::string::npos; at = trace.find("copies - ", at + 1))
            found.push_back(trace.substr(at, trace.find("\r\n", at) - at));
        return found;
    }

    void reset_all()
    {
        desktop.expect_box("This will set all question at level 0; do you really want to do this?", BoxAnswer::yes);
        choose("m_reset_all");
    }

    void import(const std::string& text = "@Q@ Norway? @A@ Oslo")
    {
        const std::string file = courses.write("questions.txt", text);
        desktop.expect_box("1 questions and answers insterted.");
        user([&] { logic->question_import.import_file(file); });
    }

    /// The paragraph of a box about the newest copy of the course.
    [[nodiscard]] std::string about_newest() const
    {
        const std::optional<keep::Copy> copy = logic->copies.newest(path);
        return copy ? "\r\n\r\nThe newest copy of this course, of " + keep::words_of_time(copy->time) + ", is " +
                          copy->path + "."
                    : "no copy";
    }
};

TEST_F(CopySchedule, does_nothing_before_the_first_picture)
{
    open(large());
    EXPECT_FALSE(form1.timer_idle.running);
    EXPECT_EQ(folders.listings, 0);
    EXPECT_EQ(database.count(Operation::begin_copy), 0);
    EXPECT_FALSE(fs::exists(folder_of_copies()));
}

TEST_F(CopySchedule, only_starts_the_timer_at_the_first_picture)
{
    open_and_paint();
    EXPECT_TRUE(form1.timer_idle.running);
    EXPECT_EQ(database.count(Operation::begin_copy), 0);
    EXPECT_FALSE(fs::exists(folder_of_copies()));
}

TEST_F(CopySchedule, makes_a_copy_little_by_little)
{
    open_and_paint();
    tick();
    EXPECT_EQ(database.count(Operation::begin_copy), 1);
    EXPECT_EQ(database.count(Operation::copy_step), 0);
    tick();
    EXPECT_EQ(database.count(Operation::copy_step), 1);
    EXPECT_EQ(made(), 0U);
    let_idle();
    EXPECT_GT(database.count(Operation::copy_step), 3);
    EXPECT_EQ(made(), 1U);
    EXPECT_EQ(status(), "");
    EXPECT_EQ(fakes::read_course(logic->copies.newest(path)->path), file());
}

TEST_F(CopySchedule, makes_none_while_the_newest_is_not_older_than_a_day)
{
    open_and_paint();
    let_idle();
    clock.advance_days(1);
    user([this] { form1.window.paint_first_picture(); });
    EXPECT_FALSE(form1.timer_idle.running);
    clock.advance_seconds(1);
    user([this] { form1.window.paint_first_picture(); });
    let_idle();
    EXPECT_EQ(made(), 2U);
}

/// Made before the clock was put back.
TEST_F(CopySchedule, does_not_count_a_copy_of_the_future)
{
    clock.advance_days(30);
    open_and_paint();
    let_idle();
    clock.advance_days(-30);
    user([this] { form1.window.paint_first_picture(); });
    let_idle();
    EXPECT_EQ(made(), 2U);
}

TEST_F(CopySchedule, makes_none_of_a_course_without_records)
{
    expect_notice_of_empty_course();
    open_and_paint(fakes::CourseBuilder());
    EXPECT_FALSE(form1.timer_idle.running);
    import();
    EXPECT_FALSE(fs::exists(folder_of_copies()));
}

TEST_F(CopySchedule, makes_none_of_a_course_that_is_damaged)
{
    open(large());
    database.fail_check(platform::DatabaseErrorKind::damaged, "It is damaged.");
    desktop.expect_box("The course " + path + " cannot be opened.\r\n\r\nIt is damaged.");
    desktop.expect_file({});
    user([this] { form1.window.paint_first_picture(); });
    EXPECT_FALSE(form1.timer_idle.running);
}

TEST_F(CopySchedule, begins_when_another_program_no_longer_prevents_the_check)
{
    open(large());
    database.fail_check(platform::DatabaseErrorKind::locked, "Another program is using it.");
    user([this] { form1.window.paint_first_picture(); });
    EXPECT_FALSE(form1.timer_idle.running);
    database.fail_check(platform::DatabaseErrorKind::locked, "Another program is using it.");
    form1.timer_check.tick();
    EXPECT_FALSE(form1.timer_idle.running);
    form1.timer_check.tick();
    EXPECT_TRUE(form1.timer_idle.running);
}

TEST_F(CopySchedule, pauses_while_the_user_types)
{
    open_and_paint();
    tick();
    tick();
    press_key();
    tick();
    clock.steady_seconds_more += 1.9;
    tick();
    EXPECT_EQ(database.count(Operation::copy_step), 1);
    clock.steady_seconds_more += 0.1;
    tick();
    EXPECT_EQ(database.count(Operation::copy_step), 2);
}

TEST_F(CopySchedule, takes_no_step_in_a_verdict_and_holds_the_verdict)
{
    open_and_paint();
    tick();
    tick();
    yes();
    yes();
    const int steps = database.count(Operation::copy_step);
    const int statements = database.statement_count();
    yes();
    EXPECT_GT(database.statement_count(), statements);
    EXPECT_EQ(database.count(Operation::copy_step), steps);
    let_idle();
    EXPECT_EQ(fakes::read_course(logic->copies.newest(path)->path), file());
}

TEST_F(CopySchedule, drops_the_copy_when_the_course_is_closed)
{
    open_and_paint();
    tick();
    tick();
    const std::string first = path;
    expect_dialog_answer(unpassed_course().write(courses, "second.crs"));
    choose("m_open");
    let_idle();
    EXPECT_TRUE(logic->copies.of(first).empty());
    EXPECT_EQ(traced_copies(), std::vector<std::string>{});
    user([this] { form1.window.paint_first_picture(); });
    let_idle();
    path = course.db_path;
    EXPECT_EQ(made(), 1U);
}

TEST_F(CopySchedule, drops_the_copy_that_was_not_begun_when_the_course_is_closed)
{
    open_and_paint();
    course.close();
    let_idle();
    EXPECT_FALSE(fs::exists(folder_of_copies()));
}

TEST_F(CopySchedule, drops_the_copy_when_the_same_course_is_opened_again)
{
    open_and_paint();
    tick();
    tick();
    course.close();
    course.apri_db();
    let_idle();
    EXPECT_EQ(made(), 0U);
    EXPECT_EQ(status(), "");
}

class FailingSchedule : public CopySchedule, public testing::WithParamInterface<Operation> {};

TEST_P(FailingSchedule, tells_it_and_the_work_goes_on)
{
    open_and_paint();
    database.fail_at(GetParam());
    let_idle();
    form1.timer_250_ms.tick();
    EXPECT_EQ(status(), failure);
    EXPECT_EQ(traced_copies(), std::vector<std::string>{"copies - no copy of " + path + " - The disk is full."});
    EXPECT_EQ(made(), 0U);
    yes();
    EXPECT_EQ(prompt(), "Do you want to see the answer?");
}

INSTANTIATE_TEST_SUITE_P(Steps, FailingSchedule,
                         testing::Values(Operation::begin_copy, Operation::copy_step, Operation::copy_flush,
                                         Operation::copy_finish));

TEST_F(CopySchedule, tells_of_a_failure_once)
{
    folders.room = 0;
    open_and_paint();
    let_idle();
    form1.timer_250_ms.tick();
    EXPECT_EQ(status(), "No copy of the course could be made. There is no room for two copies on the disk.");
    clock.advance_seconds(10);
    form1.timer_250_ms.tick();
    EXPECT_EQ(status(), "");
    reset_all();
    EXPECT_EQ(status(), "");
    EXPECT_EQ(traced_copies().size(), 2U);
    EXPECT_EQ(stored(1).q_side.successes, 0) << "the reset was done";
    EXPECT_EQ(desktop.pointer_depth, 0);
}

TEST_F(CopySchedule, tells_of_a_failure_after_a_request_for_a_verdict)
{
    folders.room = 0;
    open_and_paint();
    logic->status.ask_for_verdict();
    const std::string request = status();
    let_idle();
    form1.timer_250_ms.tick();
    EXPECT_EQ(status(), request);
    logic->status.withdraw_request();
    form1.timer_250_ms.tick();
    EXPECT_EQ(status(), "No copy of the course could be made. There is no room for two copies on the disk.");
}

TEST_F(CopySchedule, makes_a_copy_before_all_counters_are_reset)
{
    fakes::CourseBuilder described;
    described.question("France?").level(4);
    open(described);
    reset_all();
    ASSERT_EQ(made(), 1U);
    EXPECT_EQ(fakes::read_course(logic->copies.newest(path)->path).qa.at(0).q_side.successes, 4);
    EXPECT_EQ(stored(1).q_side.successes, 0);
}

TEST_F(CopySchedule, makes_no_copy_when_the_user_does_not_want_the_reset)
{
    open(large());
    desktop.expect_box("This will set all question at level 0; do you really want to do this?", BoxAnswer::no);
    choose("m_reset_all");
    EXPECT_EQ(made(), 0U);
}

TEST_F(CopySchedule, tells_of_a_failure_before_an_import_when_the_import_is_done)
{
    open(large());
    folders.room = 0;
    import();
    EXPECT_EQ(status(), "") << "the import has the line";
    form1.timer_250_ms.tick();
    EXPECT_EQ(status(), "No copy of the course could be made. There is no room for two copies on the disk.");
}

TEST_F(CopySchedule, makes_a_copy_before_an_import)
{
    open(large());
    import();
    ASSERT_EQ(made(), 1U);
    EXPECT_EQ(fakes::read_course(logic->copies.newest(path)->path).qa.size(), 1200U);
    EXPECT_EQ(file().qa.size(), 1201U);
}

TEST_F(CopySchedule, has_the_pointer_busy_while_it_copies_before_a_change)
{
    open(large());
    int busy = 0;
    database.at_each_call([&](Operation operation) {
        if (operation == Operation::copy_step || operation == Operation::copy_finish)
            busy += desktop.pointer_depth > 0 ? 1 : 0;
    });
    reset_all();
    EXPECT_EQ(busy, 2);
    database.at_each_call(nullptr);
}

TEST_F(CopySchedule, makes_no_second_copy_before_a_change_within_an_hour)
{
    open(large());
    reset_all();
    clock.advance_seconds(3600);
    reset_all();
    EXPECT_EQ(made(), 1U);
    clock.advance_seconds(1);
    reset_all();
    EXPECT_EQ(made(), 2U);
}

TEST_F(CopySchedule, makes_no_second_copy_of_an_unchanged_course_before_a_change)
{
    open_and_paint();
    let_idle();
    clock.advance_days(3);
    reset_all();
    EXPECT_EQ(made(), 1U);
}

/// All pages of the copy may have been copied some time ago, before the user has typed.
TEST_F(CopySchedule, makes_another_copy_than_the_one_under_way_before_a_change)
{
    open_and_paint();
    while (database.count(Operation::copy_flush) == 0)
        tick();
    database.execute("Update qa set q = 'another' where cnt = 1");
    reset_all();
    let_idle();
    ASSERT_EQ(made(), 1U);
    EXPECT_EQ(fakes::read_course(logic->copies.newest(path)->path).qa.at(0).q, "another");
    EXPECT_EQ(database.count(Operation::begin_copy), 2);
}

class NewestCopyInBox : public CopySchedule {
protected:
    void SetUp() override
    {
        open_and_paint();
        let_idle();
        course.close();
        course.db_path.clear();
        form1.window.hide();
    }

    void open_again()
    {
        remember(path);
        user([this] { opener.apertura_db(); });
    }
};

TEST_F(NewestCopyInBox, is_named_when_the_course_is_refused)
{
    courses.write("course.crs", "not a course");
    desktop.expect_box("The course " + path + " cannot be opened.\r\n\r\nIt is not a course." + about_newest());
    desktop.expect_file({});
    open_again();
}

TEST_F(NewestCopyInBox, is_named_when_the_course_turns_out_to_be_damaged)
{
    open_again();
    database.fail_check(platform::DatabaseErrorKind::damaged, "It is damaged.");
    desktop.expect_box("The course " + path + " cannot be opened.\r\n\r\nIt is damaged." + about_newest());
    desktop.expect_file({});
    user([this] { form1.window.paint_first_picture(); });
}

TEST_F(NewestCopyInBox, is_named_when_the_course_is_missing)
{
    fs::remove(path);
    course.db_path = path;
    desktop.expect_box("File " + path + " does not exist." + about_newest());
    desktop.expect_file({});
    user([this] { opener.apertura_db(); });
}

TEST_F(NewestCopyInBox, is_named_when_a_missing_course_could_be_created)
{
    fs::remove(path);
    expect_dialog_answer(path);
    desktop.expect_box("File " + path + " does not exist. Do you want to create it?" + about_newest(), BoxAnswer::no);
    user([this] { opener.apertura_db(); });
}

TEST_F(NewestCopyInBox, is_named_when_damage_is_met_during_the_work)
{
    course.db_path = path;
    desktop.expect_box("The course " + path + " could not be read or written.\r\n\r\nIt is damaged." + about_newest());
    report(platform::DatabaseError(platform::DatabaseErrorKind::damaged, 11, "It is damaged."));
    desktop.expect_box("The course " + path + " could not be read or written.\r\n\r\nThe disk is full.");
    report(platform::DatabaseError(platform::DatabaseErrorKind::full, 13, "The disk is full."));
}

TEST_F(NewestCopyInBox, is_told_with_its_time)
{
    EXPECT_NE(about_newest().find("The newest copy of this course, of 15 Nov 2026 05:47, is " + data_folder +
                                  "/copies/course-"),
              std::string::npos)
        << about_newest();
}

} // namespace
} // namespace cuedrill::drill
