// The history that the program writes beside a course.
#include "drill/course_opener.h"
#include "drill/drill_fixture.h"
#include "drill/drill_state.h"
#include "drill/end_of_program.h"
#include "drill/question_import.h"
#include "fakes/file_size_limit.h"
#include "keep/history_file.h"
#include "store/course.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace cuedrill::drill {
namespace {

using fakes::Operation;
using keep::HistoryEvent;
using keep::HistoryKind;
using platform::BoxAnswer;

constexpr const char* failed = "The history of the course could not be written. ";

class Reviewed : public DrillFixture {
protected:
    void SetUp() override
    {
        static_cast<void>(folder.write("trace.flg", ""));
        start_with_three_questions();
    }

    void paint()
    {
        user([this] { form1.window.paint_first_picture(); });
    }

    /// Reveals the answer of the question on display.
    void reveal()
    {
        yes();
        if (logic->state.dialog == DialogState::OfferAnswer)
            yes();
    }

    void tick()
    {
        user([this] { form1.timer_250_ms.tick(); });
    }

    void delete_question()
    {
        desktop.expect_box("Are you sure you want to delete question \"" + question() + "\" and its asnwer?",
                           BoxAnswer::yes);
        toolbar(11);
    }

    void open_other()
    {
        fakes::CourseBuilder other;
        other.question("Oslo?", "Norway").level(1).attempts(1).fails(0).tested_ago(1h);
        desktop.expect_file({.path = other.write(folder, "other.crs"), .title = "other.crs"});
        choose("m_open");
    }

    [[nodiscard]] std::string file_of(const std::string& course) const
    {
        return keep::history_path(folders, data_folder, course);
    }
    [[nodiscard]] bool is_written() const { return files.exists(file_of(path)); }

    /// All lines of a course's history; each must be readable.
    [[nodiscard]] std::vector<HistoryEvent> history_of(const std::string& course) const
    {
        keep::History history = keep::read_history(files, file_of(course));
        EXPECT_EQ(history.unreadable, 0);
        return history.events;
    }

    void expect_history(const std::vector<HistoryEvent>& expected) const
    {
        ASSERT_TRUE(is_written());
        const std::vector<HistoryEvent> found = history_of(path);
        ASSERT_EQ(found.size(), expected.size());
        for (std::size_t i = 0; i < found.size(); ++i)
            EXPECT_EQ(keep::to_line(found.at(i)), keep::to_line(expected.at(i)));
    }

    [[nodiscard]] HistoryEvent with_levels(HistoryKind kind) const
    {
        return {.time = clock.time,
                .kind = kind,
                .records = 3,
                .levels = scheduler::LevelsOfBoth{.q = {1, 0, 1}, .a = {}}}; // the third one has no level yet
    }

    /// A verdict on the first question, a day after the test before it.
    [[nodiscard]] HistoryEvent verdict(bool known, bool typed) const
    {
        return {.time = clock.time,
                .kind = HistoryKind::verdict,
                .record = 1,
                .known = known,
                .typed = typed,
                .level_before = 2,
                .level_after = static_cast<common::Int16>(known ? 4 : 0),
                .elapsed = 1,
                .score = static_cast<common::Int16>(known ? 1 : -1)};
    }

    [[nodiscard]] std::string trace() const { return folder.read("trace.txt"); }
    [[nodiscard]] int times_traced(const std::string& words) const
    {
        int times = 0;
        const std::string text = trace();
        for (std::size_t at = text.find(words); at != std::string::npos; at = text.find(words, at + 1))
            ++times;
        return times;
    }
};

TEST_F(Reviewed, course_has_no_history_before_its_first_picture)
{
    EXPECT_FALSE(is_written());
    paint();
    expect_history({with_levels(HistoryKind::opened)});
    EXPECT_EQ(folder.read("data/history/" + std::filesystem::path(file_of(path)).filename().string()).substr(0, 11),
              "time,event,");
}

TEST_F(Reviewed, course_is_opened_once)
{
    paint();
    paint();
    expect_history({with_levels(HistoryKind::opened)});
}

TEST_F(Reviewed, course_is_opened_when_its_check_is_done)
{
    database.fail_check(platform::DatabaseErrorKind::locked, "Another program is using it.");
    paint();
    EXPECT_FALSE(is_written());
    form1.timer_check.tick();
    expect_history({with_levels(HistoryKind::opened)});
}

TEST_F(Reviewed, course_that_is_damaged_has_no_history)
{
    database.fail_check(platform::DatabaseErrorKind::damaged, "It is damaged.");
    desktop.expect_box("The course " + path + " cannot be opened.\r\n\r\nIt is damaged.");
    desktop.expect_file({});
    paint();
    EXPECT_TRUE(ended);
    EXPECT_FALSE(is_written());
}

TEST_F(Reviewed, course_is_opened_and_closed_without_levels_that_cannot_be_counted)
{
    database.fail_at(Operation::query, 1, platform::DatabaseErrorKind::input_output);
    paint();
    HistoryEvent opened = with_levels(HistoryKind::opened);
    opened.levels.reset();
    opened.records.reset();
    expect_history({opened});
    database.fail_at(Operation::query, 1, platform::DatabaseErrorKind::input_output);
    user([this] { form1.window.close(); });
    HistoryEvent closed = opened;
    closed.kind = HistoryKind::closed;
    EXPECT_TRUE(ended);
    expect_history({opened, closed});
}

TEST_F(Reviewed, course_is_closed_with_the_score_and_the_work_of_the_day)
{
    paint();
    const HistoryEvent opened = with_levels(HistoryKind::opened);
    reveal();
    yes();
    const HistoryEvent known = verdict(true, false);
    clock.advance_seconds(75);
    HistoryEvent closed = with_levels(HistoryKind::closed);
    closed.score = 1;
    closed.work_seconds = 75;
    closed.levels->q = {1, 0, 0, 0, 1};
    user([this] { form1.window.end_session(); });
    EXPECT_TRUE(ended);
    expect_history({opened, known, closed});
}

TEST_F(Reviewed, course_is_closed_when_another_one_is_opened)
{
    paint();
    const std::vector<HistoryEvent> expected{with_levels(HistoryKind::opened), with_levels(HistoryKind::closed)};
    open_other();
    expect_history(expected);
    paint();
    expect_history(expected);
    EXPECT_EQ(history_of(logic->course.db_path).size(), 1U);
    user([this] { form1.window.close(); });
    EXPECT_EQ(history_of(folder.file("other.crs")).back().kind, HistoryKind::closed);
    expect_history(expected);
}

TEST_F(Reviewed, course_is_not_closed_when_it_cannot_be_stored)
{
    paint();
    database.fail_at(Operation::commit);
    desktop.expect_box("The course " + path + " could not be read or written.\r\n\r\nThe disk is full.");
    choose("m_open");
    EXPECT_TRUE(logic->course.is_open());
    expect_history({with_levels(HistoryKind::opened)});
}

TEST_F(Reviewed, course_without_anything_written_is_not_closed)
{
    user([this] { form1.window.close(); });
    EXPECT_FALSE(std::filesystem::exists(data_folder));
}

TEST_F(Reviewed, verdict_of_the_user)
{
    reveal();
    yes();
    expect_history({verdict(true, false)});
}

TEST_F(Reviewed, verdict_of_the_user_as_not_known)
{
    reveal();
    no();
    expect_history({verdict(false, false)});
}

TEST_F(Reviewed, verdict_by_a_command_while_typing_is_the_users)
{
    yes();
    toolbar(5);
    type_answer("Par");
    choose("m_set_success");
    expect_history({verdict(true, false)});
}

TEST_F(Reviewed, verdict_on_a_typed_answer)
{
    yes();
    type_answer("Paris");
    enter_in_answer();
    expect_history({verdict(true, true)});
}

TEST_F(Reviewed, verdict_on_a_wrong_typed_answer)
{
    yes();
    type_answer("Rome");
    desktop.expect_box("Your answer is: \r\n\r\n   Rome\r\n\r\nThe correct answer is: \r\n\r\n   Paris");
    desktop.on_box = [this] { EXPECT_FALSE(is_written()) << "it is not stored yet"; };
    enter_in_answer();
    expect_history({verdict(false, true)});
}

TEST_F(Reviewed, verdict_that_was_given_before_the_answer_was_revealed_is_the_users)
{
    yes();
    press_in_answer("+");
    enter_in_answer();
    expect_history({verdict(true, false)});
}

TEST_F(Reviewed, verdict_in_an_inverted_course)
{
    choose("m_invert");
    logic->display.take_for_record(1);
    choose("m_set_failure");
    HistoryEvent not_known = verdict(false, false);
    not_known.inverted = true;
    not_known.level_before = 0;
    not_known.elapsed = 0.4;
    not_known.score = 0;
    expect_history({not_known});
}

TEST_F(Reviewed, verdict_that_is_not_stored_is_not_written)
{
    reveal();
    database.fail_at(Operation::commit);
    desktop.expect_box("The course " + path + " could not be read or written.\r\n\r\nThe disk is full.");
    yes();
    EXPECT_FALSE(is_written());
    yes();
    expect_history({verdict(true, false)});
}

TEST_F(Reviewed, verdict_that_turns_out_to_be_stored_is_written_then)
{
    reveal();
    const HistoryEvent known = verdict(true, false);
    database.fail_commit(true);
    database.fail_at(Operation::query, 2);
    desktop.expect_box("The course " + path +
                       " could not be read or written.\r\n\r\nThe commit failed. It is not known whether the change is "
                       "stored, because the course cannot be read again.");
    yes();
    EXPECT_FALSE(is_written());
    clock.advance_seconds(20);
    user([this] { form1.timer_1_min.tick(); });
    expect_history({known});
}

TEST_F(Reviewed, undo)
{
    reveal();
    yes();
    const HistoryEvent known = verdict(true, false);
    clock.advance_seconds(3);
    const HistoryEvent undone{.time = clock.time,
                              .kind = HistoryKind::undone,
                              .record = 1,
                              .level_before = 4,
                              .level_after = 2,
                              .score = 1,
                              .work_seconds = 3};
    choose("m_undo");
    expect_history({known, undone});
}

TEST_F(Reviewed, undo_of_nothing_is_not_written)
{
    choose("m_undo");
    EXPECT_FALSE(is_written());
}

TEST_F(Reviewed, undo_that_turns_out_to_be_stored_is_written_then)
{
    reveal();
    yes();
    database.fail_commit(true);
    database.fail_at(Operation::query, 1);
    desktop.expect_box("The commit failed. It is not known whether the change is stored, because the course cannot be "
                       "read again.");
    choose("m_undo");
    EXPECT_EQ(history_of(path).size(), 1U);
    user([this] { form1.timer_1_min.tick(); });
    EXPECT_EQ(history_of(path).back().kind, HistoryKind::undone);
}

TEST_F(Reviewed, reset_of_all_counters)
{
    desktop.expect_box("This will set all question at level 0; do you really want to do this?", BoxAnswer::yes);
    choose("m_reset_all");
    expect_history({{.time = clock.time, .kind = HistoryKind::reset, .records = 3}});
}

TEST_F(Reviewed, added_changed_and_deleted_records)
{
    write_new("Norway?", "Oslo");
    toolbar(10);
    const HistoryEvent added{.time = clock.time, .kind = HistoryKind::added, .record = 4};
    expect_history({added});
    change_to("Norge?", "Oslo");
    toolbar(10);
    const HistoryEvent changed{.time = clock.time, .kind = HistoryKind::changed, .record = 4};
    expect_history({added, changed});
    delete_question();
    expect_history({added, changed, {.time = clock.time, .kind = HistoryKind::deleted, .record = 4}});
}

TEST_F(Reviewed, added_record_that_turns_out_to_be_stored_is_written_then)
{
    write_new("Norway?", "Oslo");
    save_with_unknown_outcome();
    EXPECT_FALSE(is_written());
    toolbar(10);
    expect_history({{.time = clock.time, .kind = HistoryKind::added, .record = 4}});
}

TEST_F(Reviewed, deleted_record_that_turns_out_to_be_stored_is_written_then)
{
    yes();
    database.fail_commit(true);
    database.fail_at(Operation::query, 2);
    desktop.expect_box("Are you sure you want to delete question \"France?\" and its asnwer?", BoxAnswer::yes);
    desktop.expect_box("The course " + path +
                       " could not be read or written.\r\n\r\nThe commit failed. It is not known whether the change is "
                       "stored, because the course cannot be read again.");
    toolbar(11);
    EXPECT_FALSE(is_written());
    user([this] { form1.timer_1_min.tick(); });
    expect_history({{.time = clock.time, .kind = HistoryKind::deleted, .record = 1}});
}

TEST_F(Reviewed, imported_records_in_one_line_for_each_group)
{
    const std::string file = folder.write("questions.txt", "@Q@ Norway? @A@ Oslo @Q@ Sweden? @A@ Stockholm");
    desktop.expect_box("2 questions and answers insterted.");
    user([&] { logic->question_import.import_file(file); });
    expect_history({{.time = clock.time, .kind = HistoryKind::imported, .record = 5, .records = 2}});
}

TEST_F(Reviewed, import_without_records_is_not_written)
{
    const std::string file = folder.write("questions.txt", "nothing");
    desktop.expect_box("0 questions and answers insterted.");
    user([&] { logic->question_import.import_file(file); });
    EXPECT_FALSE(is_written());
}

TEST_F(Reviewed, history_goes_on_behind_a_line_that_a_crash_has_cut_off)
{
    paint();
    const std::string written = folder.read("data/history/" + std::filesystem::path(file_of(path)).filename().string());
    std::filesystem::resize_file(file_of(path), written.size() - 5);
    reveal();
    yes();
    const keep::History history = keep::read_history(files, file_of(path));
    EXPECT_EQ(history.unreadable, 1);
    EXPECT_EQ(history.events, std::vector<HistoryEvent>{verdict(true, false)});
}

TEST_F(Reviewed, course_that_was_moved_begins_another_history)
{
    paint();
    open_other();
    const std::string moved = folder.file("moved.crs");
    std::filesystem::rename(path, moved);
    desktop.expect_file({.path = moved, .title = "moved.crs"});
    choose("m_open");
    paint();
    EXPECT_EQ(history_of(moved).size(), 1U);
    EXPECT_EQ(history_of(path).size(), 2U);
}

TEST_F(Reviewed, line_waits_for_another_program_that_writes)
{
    std::filesystem::create_directories(folder.file("data/history"));
    auto other = files.hold(folder.file("data/history/history.lock"), 0ms);
    reveal();
    yes();
    const HistoryEvent known = verdict(true, false);
    EXPECT_FALSE(is_written());
    tick();
    EXPECT_EQ(times_traced("history not written"), 0);
    other.reset();
    write_new("Norway?", "Oslo");
    toolbar(10);
    expect_history({known, {.time = clock.time, .kind = HistoryKind::added, .record = 4, .score = 1}});
}

/// A file has the name of the folder of the histories.
class Unwritten : public Reviewed {
protected:
    void SetUp() override
    {
        Reviewed::SetUp();
        files.create_folder(folder.file("data"));
        static_cast<void>(folder.write("data/history", ""));
    }

    [[nodiscard]] std::string reason() const
    {
        return "Cannot create the folder " + folder.file("data/history") + ": Not a directory.";
    }
};

TEST_F(Unwritten, history_stops_nothing_and_is_told_once)
{
    paint();
    reveal();
    yes();
    EXPECT_EQ(stored(1).q_side.successes, 4);
    EXPECT_EQ(status(), "score of previous question increased from 2 to 4 (elapsed 1.00 days)");
    tick();
    EXPECT_EQ(times_traced("history not written - " + reason() + " - " + reason()), 1) << "of two lines";
    clock.steady_seconds_more += 60;
    tick();
    EXPECT_EQ(status(), failed + reason());
    clock.steady_seconds_more += 5;
    tick();
    EXPECT_EQ(status(), "");
    reveal();
    no();
    tick();
    clock.steady_seconds_more += 60;
    tick();
    EXPECT_EQ(status(), "");
    EXPECT_EQ(times_traced("history not written"), 2) << "each one is in the trace";
}

TEST_F(Unwritten, history_is_in_the_trace_when_the_program_ends)
{
    paint();
    tick();
    user([this] { form1.window.end_session(); });
    EXPECT_TRUE(ended);
    EXPECT_FALSE(logic->course.is_in_use());
    EXPECT_EQ(times_traced("end_program - history not written - " + reason()), 1);
}

TEST_F(Unwritten, history_is_told_when_another_course_is_opened)
{
    paint();
    open_other();
    tick();
    EXPECT_EQ(times_traced("history not written - " + reason() + " - " + reason()), 1) << "opened and closed";
}

TEST_F(Reviewed, verdict_on_a_full_disk_is_stored_without_its_line)
{
    paint();
    reveal();
    {
        // The history has reached the limit. The course is not written here: the change is told by hand.
        const fakes::FileSizeLimit limit(std::filesystem::file_size(file_of(path)));
        logic->course.tell_stored({.what = store::StoredChange::What::deleted, .cnt = 1});
    }
    tick();
    EXPECT_EQ(times_traced("history not written - Cannot write " + file_of(path) + ": File too large."), 1);
    yes();
    EXPECT_EQ(history_of(path).back().kind, HistoryKind::verdict);
}

/// A user without a data folder.
class WithoutFolder : public Reviewed {
protected:
    void SetUp() override
    {
        data_folder.clear();
        Reviewed::SetUp();
    }
};

TEST_F(WithoutFolder, everything_works_without_a_history)
{
    paint();
    reveal();
    yes();
    tick();
    EXPECT_EQ(stored(1).q_side.successes, 4);
    EXPECT_EQ(times_traced("history"), 0);
    user([this] { form1.window.close(); });
    EXPECT_TRUE(ended);
    EXPECT_EQ(times_traced("history"), 0);
}

} // namespace
} // namespace cuedrill::drill
