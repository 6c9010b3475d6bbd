#include "drill/scheduler_model.h"
#include "drill/scoring_fixture.h"
#include "scheduler/maturity.h"
#include "scheduler/next_due.h"
#include "scheduler/next_question.h"

#include <algorithm>
#include <cstdint>
#include <gtest/gtest.h>
#include <optional>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace cuedrill::drill {
namespace {

using Seconds = SchedulerModel::Seconds;

/// Runs the scheduler with the real database engine next to the model. After each step they agree in every row, figure,
/// box and text. The steps are random with a fixed seed; the parameter is the initial target level.
class BesideTheModel : public ScoringFixture, public testing::WithParamInterface<int> {
protected:
    static constexpr int steps = 300;
    static constexpr int most_records = 14;

    BesideTheModel() : chance_(static_cast<unsigned>(GetParam())) {}

    void SetUp() override
    {
        open(fakes::CourseBuilder().number_param("target_level", GetParam()));
        // Durability is not tested here, and waiting for the disk would take most of the time.
        database.execute("PRAGMA synchronous = OFF");
        model.target = GetParam();
        for (int i = 0; i < most_records / 2; ++i)
            insert_record();
        statistics.refresh_counts();
    }

    /// A number from 0 to below `end`.
    int any(int end) { return std::uniform_int_distribution<int>(0, end - 1)(chance_); }
    bool once_in(int times) { return any(times) == 0; }

    [[nodiscard]] Seconds now() const { return clock.time.seconds(); }

    /// A dead time in seconds, or one second more or less.
    Seconds critical_time() { return SchedulerModel::dead_times.at(static_cast<std::size_t>(any(10))) + any(3) - 1; }

    std::optional<int> any_number(int end) { return once_in(4) ? std::nullopt : std::optional(any(end)); }

    /// A date at which some rule changes its result now. Some dates are equal, some are in the future, some are
    /// missing.
    std::optional<Seconds> any_moment()
    {
        if (once_in(4))
            return std::nullopt;
        return now() - (once_in(10) ? -any(20) : once_in(3) ? any(12) : critical_time());
    }

    void move_clock()
    {
        const auto due = model.next_due(now());
        if (due && due->at > now() && once_in(2)) {
            // The last second in which no question is due, or the first in which one is.
            clock.advance_seconds(due->at - now() - any(2));
            return;
        }
        const int kind = any(20);
        clock.advance_seconds(kind < 8     ? any(12)
                              : kind < 18  ? critical_time()
                              : kind == 18 ? -any(100)
                                           : -any(300'000));
    }

    static std::string value_of(const std::optional<int>& number) { return number ? std::to_string(*number) : "null"; }
    static std::string value_of(const std::optional<Seconds>& moment)
    {
        return moment ? "cvdate('" + common::format_date_literal(common::DateTime::from_seconds(*moment)) + "')"
                      : "null";
    }

    void insert_record()
    {
        SchedulerModel::Record record{.cnt = ++last_cnt_};
        std::string values = std::to_string(record.cnt) + ", 'q', 'a'";
        for (SchedulerModel::Side& side : record.sides) {
            side = {.attempts = any_number(9),
                    .fails = any_number(9),
                    .level = any_number(11),
                    .tested = any_moment(),
                    .shown = any_moment()};
            for (const auto& number : {side.attempts, side.fails, side.level})
                values += ", " + value_of(number);
            for (const auto& moment : {side.tested, side.shown})
                values += ", " + value_of(moment);
        }
        database.execute("Insert into qa (cnt, q, a, q_attempts, q_fails, q_successes, q_date_last_test, "
                         "q_date_last_show, a_attempts, a_fails, a_successes, a_date_last_test, a_date_last_show) "
                         "values (" +
                         values + ")");
        course.record_count = course.count_records();
        model.records.push_back(record);
        statistics.refresh_counts();
    }

    void remove_record()
    {
        if (model.records.empty())
            return;
        const int cnt = model.records.at(static_cast<std::size_t>(any(static_cast<int>(model.records.size())))).cnt;
        database.execute("Delete from qa where cnt = " + std::to_string(cnt));
        course.record_count = course.count_records();
        course.forget_last_verdict_on(static_cast<common::Int16>(cnt));
        if (current_cnt() == cnt)
            display.withdraw_question();
        model.remove(cnt);
        statistics.refresh_counts();
    }

    /// Expects the boxes that the model has shown.
    void expect_boxes()
    {
        for (const std::string& text : std::exchange(model.boxes, {}))
            desktop.expect_box(text);
    }

    void ask_next()
    {
        random.constant = std::uniform_real_distribution<double>(0, 1)(chance_);
        model.next_question(now(), random.constant);
        expect_boxes();
        selection.next_question();
    }

    void succeed()
    {
        if (model.current == 0)
            return;
        model.succeed(now());
        expect_boxes();
        scoring.set_success();
        EXPECT_EQ(status_texts().back(), model.status);
    }

    void fail()
    {
        if (model.current == 0)
            return;
        model.fail(now());
        scoring.set_failure();
        EXPECT_EQ(status_texts().back(), model.status);
    }

    void leave_question()
    {
        model.stamp(now());
        scoring.StampLastShow();
        ask_next();
    }

    void undo()
    {
        model.undo();
        scoring.m_undo();
    }

    void reset_all()
    {
        desktop.expect_box("This will set all question at level 0; do you really want to do this?",
                           platform::BoxAnswer::yes);
        model.reset_all();
        scoring.m_reset_all();
    }

    void change_target()
    {
        const int level = 1 + any(10);
        model.change_target(level);
        desktop.expect_input("New target level (1 to 10)?", std::to_string(level));
        level_commands.m_change_target_level();
    }

    void switch_random_mode()
    {
        model.random_mode = !model.random_mode;
        desktop.expect_box(model.random_mode
                               ? "Mature questions of a given level will be extracted randomly"
                               : "Mature questions of a given level will be extracted ordered by date of last test");
        selection.m_random_extraction();
    }

    void invert()
    {
        model.invert();
        params.change_params([](store::CourseParams& changed) { changed.invert = !changed.invert; });
        statistics.refresh_counts();
    }

    void any_step()
    {
        const int kind = any(100);
        if (kind < 22)
            ask_next();
        else if (kind < 50)
            succeed();
        else if (kind < 64)
            fail();
        else if (kind < 76)
            leave_question();
        else if (kind < 82)
            undo();
        else if (kind < 86)
            change_target();
        else if (kind < 90)
            switch_random_mode();
        else if (kind < 94)
            invert();
        else if (kind < 97 && model.records.size() < most_records)
            insert_record();
        else if (kind < 99)
            remove_record();
        else if (once_in(3))
            reset_all();
    }

    static fakes::SideRow row_of(const SchedulerModel::Side& side)
    {
        const auto date = [](const std::optional<Seconds>& moment) {
            return moment ? std::optional(common::DateTime::from_seconds(*moment)) : std::nullopt;
        };
        return {.attempts = side.attempts,
                .fails = side.fails,
                .successes = side.level,
                .date_last_test = date(side.tested),
                .date_last_show = date(side.shown)};
    }

    void expect_same_rows()
    {
        std::vector<fakes::QaRow> rows;
        for (const SchedulerModel::Record& record : model.records)
            rows.push_back({.cnt = record.cnt,
                            .q = "q",
                            .a = "a",
                            .q_side = row_of(record.sides.at(0)),
                            .a_side = row_of(record.sides.at(1))});
        const fakes::CourseContents contents = fakes::contents_of(engine.database);
        EXPECT_EQ(contents.qa, rows);
        EXPECT_EQ(contents.number("score_TODAY").value_or(0), model.score_today);
        EXPECT_EQ(contents.number("target_level").value_or(GetParam()), model.target);
    }

    void expect_same_figures()
    {
        EXPECT_EQ(current_cnt(), model.current);
        EXPECT_EQ(previous_cnt(), model.previous);
        EXPECT_EQ(state.shown.is_question(), model.current != 0);
        EXPECT_EQ(course.params.score_today, model.score_today);
        EXPECT_EQ(course.all_passed_announced, model.all_passed_announced);
        EXPECT_EQ(panels().total, static_cast<std::int64_t>(model.records.size()));
        EXPECT_EQ(panels().counts, model.counts());
        EXPECT_EQ(panels().unpassed, model.unpassed());
        EXPECT_EQ(panels().marked, model.marked);
        for (int level = 0; level <= 5; ++level)
            EXPECT_EQ(is_target(level), level == model.target);
    }

    /// Compares the mature questions of each level, in order, their number, and when the next question is due.
    void expect_same_maturity()
    {
        const int level = any(10);
        const bool tested_only = once_in(2);
        std::vector<int> numbers;
        const auto rows =
            engine.database.open_recordset(mature_query(course.Q_FIELD, dead_times, level, tested_only, clock.time));
        for (; !rows->eof(); rows->move_next())
            numbers.push_back(store::nz_int16(rows->field("cnt"), "record number"));
        EXPECT_EQ(numbers, model.mature(level, tested_only, now()));
        EXPECT_EQ(count_mature(course, dead_times, clock.now()), model.mature_count(now()));
        const std::optional<NextDue> due = find_next_due(course, dead_times, clock.time);
        const auto expected = model.next_due(now());
        ASSERT_EQ(due.has_value(), expected.has_value());
        if (due.has_value()) {
            EXPECT_EQ(std::max(due->at.seconds(), now()), expected->at);
            EXPECT_EQ(due->by_end_of_day, expected->by_end_of_day);
        }
    }

    SchedulerModel model;

private:
    std::mt19937 chance_;
    int last_cnt_ = 0;
};

INSTANTIATE_TEST_SUITE_P(Targets, BesideTheModel, testing::Range(1, 11), testing::PrintToStringParamName());

TEST_P(BesideTheModel, each_of_many_steps_leads_to_the_same)
{
    for (int step = 0; step < steps && !HasFailure(); ++step) {
        SCOPED_TRACE("step " + std::to_string(step));
        move_clock();
        any_step();
        expect_same_rows();
        expect_same_figures();
        expect_same_maturity();
        desktop.check_all_shown();
    }
}

} // namespace
} // namespace cuedrill::drill
