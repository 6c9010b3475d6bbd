// Checks by their query plans that the statements of the drill read only the index of the direction.
#include "index_course.h"
#include "scheduler/counts.h"
#include "scheduler/forecast.h"
#include "scheduler/maturity.h"
#include "scheduler/next_due.h"
#include "scheduler/next_question.h"

namespace cuedrill::scheduler {
namespace {

class IndexPlan : public IndexCourse, public testing::WithParamInterface<bool> {
protected:
    IndexPlan()
    {
        ask(GetParam());
        fill(20, 1);
    }

    [[nodiscard]] std::vector<std::string> plan(const std::string& sql)
    {
        std::vector<std::string> steps;
        for (const platform::Row row : engine.database.query("explain query plan " + sql))
            steps.push_back(std::get<std::string>(row.field("detail")));
        return steps;
    }

    [[nodiscard]] std::string index() const { return "qa_" + course.Q_FIELD.text + "_due"; }

    /// Expects that the statement searches the index, reads no rows of the table and sorts nothing.
    void expect_look_ups(const std::string& sql)
    {
        int look_ups = 0;
        for (const std::string& step : plan(sql)) {
            EXPECT_EQ(step.find("TEMP B-TREE"), std::string::npos) << step << "\n" << sql;
            EXPECT_FALSE(step.starts_with("SCAN qa")) << step << "\n" << sql;
            if (!step.starts_with("SEARCH qa"))
                continue;
            EXPECT_TRUE(step.starts_with("SEARCH qa USING COVERING INDEX " + index() + " (")) << step << "\n" << sql;
            ++look_ups;
        }
        EXPECT_GT(look_ups, 0) << sql;
    }

    /// Expects the same of all statements since the last call, and that there are `statements` of them.
    void expect_all_look_ups(std::size_t statements)
    {
        EXPECT_EQ(database.statements().size(), statements);
        for (const std::string& sql : database.statements())
            expect_look_ups(sql);
        database.forget();
    }
};

TEST_P(IndexPlan, of_the_choice_at_each_level_is_a_look_up)
{
    for (const bool random_mode : {false, true}) {
        course.params.random_mode = random_mode;
        for (common::Int16 level = 0; level < DeadTimes::count; ++level) {
            for (const bool tested_only : {false, true}) {
                static_cast<void>(select_mature(course, dead_times, level, tested_only, clock.time, random));
                expect_all_look_ups(1);
            }
        }
    }
}

// The search must include the date: otherwise a level without mature questions would be scanned to its end.
TEST_P(IndexPlan, of_the_choice_enters_the_index_by_level_and_date)
{
    for (int level = 0; level < DeadTimes::count; ++level) {
        for (const std::string& step : plan(mature_query(course.Q_FIELD, dead_times, level, false, clock.time))) {
            const bool is_entered =
                step.find(course.Q_FIELD.successes + "=? AND " + course.Q_FIELD.date_last_test) != std::string::npos;
            EXPECT_TRUE(is_entered || !step.starts_with("SEARCH")) << step;
        }
    }
}

TEST_P(IndexPlan, of_the_mature_questions_is_look_ups_for_every_target)
{
    for (common::Int16 target = store::lowest_target_level; target <= store::highest_target_level; ++target) {
        course.params.target_level = target;
        static_cast<void>(count_mature(course, dead_times, clock.time));
        expect_all_look_ups(1);
        for (const std::string& step :
             plan(all_mature_query(course.Q_FIELD, dead_times, target, MatureResult::rows, clock.time))) {
            EXPECT_EQ(step.find("TEMP B-TREE"), std::string::npos) << step;
            EXPECT_FALSE(step.starts_with("SCAN qa")) << step;
        }
    }
}

TEST_P(IndexPlan, of_the_look_ahead_is_look_ups_for_every_target)
{
    for (common::Int16 target = store::lowest_target_level; target <= store::highest_target_level; ++target) {
        course.params.target_level = target;
        static_cast<void>(find_next_due(course, dead_times, clock.time));
        expect_all_look_ups(database.statements().size());
    }
}

TEST_P(IndexPlan, of_what_is_due_soon_is_look_ups_by_level_and_date_for_every_target)
{
    for (common::Int16 target = store::lowest_target_level; target <= store::highest_target_level; ++target) {
        course.params.target_level = target;
        static_cast<void>(due_soon(course, dead_times, clock.time));
        ASSERT_EQ(database.statements().size(), 1U);
        for (const std::string& step : plan(database.statements().front())) {
            EXPECT_TRUE(!step.starts_with("SEARCH") || step.find(course.Q_FIELD.date_last_test) != std::string::npos)
                << step;
        }
        expect_all_look_ups(1);
    }
}

// The count of all records adds up the entries of an index page by page; everything else is a search.
TEST_P(IndexPlan, of_the_counts_reads_the_index_of_the_direction)
{
    static_cast<void>(count(course));
    ASSERT_EQ(database.statements().size(), 1U);
    int counts_of_all = 0;
    int look_ups = 0;
    for (const std::string& step : plan(database.statements().at(0))) {
        EXPECT_EQ(step.find("TEMP B-TREE"), std::string::npos) << step;
        counts_of_all += step.starts_with("SCAN qa USING COVERING INDEX ") ? 1 : 0;
        look_ups += step.starts_with("SEARCH qa USING COVERING INDEX " + index() + " (") ? 1 : 0;
        EXPECT_NE(step, "SCAN qa");
    }
    EXPECT_EQ(counts_of_all, 1);
    EXPECT_EQ(look_ups, 7) << "no level, below the levels, and five groups";
}

TEST_P(IndexPlan, of_the_levels_reads_both_indexes)
{
    static_cast<void>(count_levels(course));
    ASSERT_EQ(database.statements().size(), 1U);
    std::vector<std::string> searches;
    for (const std::string& step : plan(database.statements().at(0))) {
        EXPECT_EQ(step.find("TEMP B-TREE"), std::string::npos) << step;
        EXPECT_FALSE(step.starts_with("SCAN")) << step;
        if (step.starts_with("SEARCH"))
            searches.push_back(step);
    }
    EXPECT_EQ(searches,
              (std::vector<std::string>{"SEARCH qa USING COVERING INDEX qa_q_due (q_successes>? AND q_successes<?)",
                                        "SEARCH qa USING COVERING INDEX qa_a_due (a_successes>? AND a_successes<?)"}));
}

TEST_P(IndexPlan, of_a_list_by_level_follows_the_index)
{
    EXPECT_EQ(plan("Select * from qa order by " + course.Q_FIELD.successes),
              std::vector<std::string>{"SCAN qa USING INDEX " + index()});
}

// Proves that the checks above can fail.
TEST_P(IndexPlan, of_a_course_without_the_index_reads_all_records)
{
    engine.database.execute("Drop index " + index());
    const std::vector<std::string> steps = plan(mature_query(course.Q_FIELD, dead_times, 0, true, clock.time));
    EXPECT_EQ(steps, (std::vector<std::string>{"SCAN qa", "USE TEMP B-TREE FOR RIGHT PART OF ORDER BY"}));
}

INSTANTIATE_TEST_SUITE_P(BothDirections, IndexPlan, testing::Bool());

} // namespace
} // namespace cuedrill::scheduler
