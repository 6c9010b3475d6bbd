#include "index_course.h"
#include "scheduler/forecast.h"
#include "scheduler/maturity.h"

#include <chrono>
#include <numeric>

namespace cuedrill::scheduler {
namespace {

using namespace std::chrono_literals;

constexpr int week = 7;

/// On random courses, against the statements by which questions are chosen.
class ForecastOfRandomCourses : public IndexCourse {
protected:
    [[nodiscard]] Forecast made(int days = week)
    {
        return forecast(database, course.Q_FIELD, dead_times, course.params.target_level, clock.time, days);
    }

    [[nodiscard]] std::int64_t count_mature(common::DateTime at)
    {
        return numbers(
                   all_mature_query(course.Q_FIELD, dead_times, course.params.target_level, MatureResult::count, at))
            .front();
    }
};

TEST_F(ForecastOfRandomCourses, counts_as_due_what_can_be_asked)
{
    for (unsigned seed = 1; seed <= 20; ++seed) {
        for (const bool inverted : {false, true}) {
            ask(inverted);
            course.params.target_level = static_cast<common::Int16>(1 + seed % 10);
            fill(60, seed);
            // A level that is null counts as 0 here; the statement leaves it out.
            engine.database.execute("Update qa set q_successes=ifnull(q_successes, 0), "
                                    "a_successes=ifnull(a_successes, 0)");
            EXPECT_EQ(made().due_now(), count_mature(clock.time)) << "seed " << seed;
        }
    }
}

TEST_F(ForecastOfRandomCourses, counts_each_record_once)
{
    for (unsigned seed = 1; seed <= 20; ++seed) {
        fill(60, seed);
        // Levels below 0 are in no group.
        engine.database.execute("Update qa set q_successes=0 where q_successes < 0");
        for (const int days : {0, 1, 30}) {
            const Forecast found = made(days);
            EXPECT_EQ(found.days.size(), static_cast<std::size_t>(days));
            EXPECT_EQ(
                std::accumulate(found.days.begin(), found.days.end(),
                                found.due_now() + found.later + found.afterwards + found.never_tested + found.passed),
                60);
        }
    }
}

/// One question of level 1, which rests five minutes, or of another level; the present is 12:00.
class ForecastOfOneQuestion : public testing::Test {
protected:
    [[nodiscard]] Forecast of(std::int64_t level, std::chrono::seconds tested_ago, std::chrono::seconds shown_ago)
    {
        fakes::CourseBuilder builder(noon);
        builder.question("q").level(level).tested_ago(tested_ago).shown_ago(shown_ago);
        return made(builder);
    }

    [[nodiscard]] Forecast made(const fakes::CourseBuilder& builder)
    {
        const fakes::TempFolder folder;
        fakes::RealEngine engine;
        store::Course course(engine.database);
        course.db_path = builder.write(folder);
        course.apri_db();
        DeadTimes dead_times;
        dead_times.init_dead_time_array();
        return forecast(engine.database, store::set_side_fields(false).Q_FIELD, dead_times, 5, noon, week);
    }

    const common::DateTime noon =
        common::DateTime::from_fields({.year = 2026, .month = 11, .day = 22, .hour = 12, .minute = 0, .second = 0});
};

TEST_F(ForecastOfOneQuestion, is_due_the_second_after_its_dead_time)
{
    EXPECT_EQ(of(1, 301s, 301s).today, 1);
    EXPECT_EQ(of(1, 300s, 300s).later, 1);
}

TEST_F(ForecastOfOneQuestion, waits_after_it_was_shown)
{
    EXPECT_EQ(of(1, 24h, 9s).today, 1);
    EXPECT_EQ(of(1, 24h, 8s).later, 1);
}

TEST_F(ForecastOfOneQuestion, is_overdue_from_the_day_after)
{
    EXPECT_EQ(of(1, 12h + 5min, 13h).today, 1) << "due at 00:00:01";
    EXPECT_EQ(of(1, 12h + 5min + 1s, 13h).today, 1) << "due at 00:00:00";
    EXPECT_EQ(of(1, 12h + 5min + 2s, 13h).overdue, 1);
}

TEST_F(ForecastOfOneQuestion, is_due_on_a_later_day)
{
    EXPECT_EQ(of(3, 2s, 2s).later, 1) << "today at 23:59:59";
    EXPECT_EQ(of(3, 1s, 1s).days.front(), 1) << "tomorrow at 00:00:00";
    EXPECT_EQ(of(4, 0s, 0s).days.at(1), 1);
    EXPECT_EQ(of(4, -5 * 24h, 0s).days.at(6), 1);
    EXPECT_EQ(of(4, -6 * 24h, 0s).afterwards, 1);
}

TEST_F(ForecastOfOneQuestion, has_passed_at_the_target_level)
{
    EXPECT_EQ(of(5, 9000h, 9000h).passed, 1);
}

TEST_F(ForecastOfOneQuestion, is_new_when_it_was_never_tested)
{
    fakes::CourseBuilder builder(noon);
    builder.question("q");
    EXPECT_EQ(made(builder).never_tested, 1);
}

TEST_F(ForecastOfOneQuestion, of_a_level_below_all_is_in_no_group)
{
    const Forecast found = of(-1, 24h, 24h);
    EXPECT_EQ(found.due_now() + found.later + found.afterwards + found.never_tested + found.passed, 0);
}

TEST_F(ForecastOfRandomCourses, agrees_with_what_is_due_soon_except_for_what_was_just_shown)
{
    for (unsigned seed = 1; seed <= 40; ++seed) {
        ask(seed % 2 == 0);
        course.params.target_level = static_cast<common::Int16>(1 + seed % 10);
        fill(60, seed);
        engine.database.execute("Update qa set q_date_last_show=null, a_date_last_show=null, "
                                "q_successes=max(q_successes, 0), a_successes=max(a_successes, 0)");
        const Forecast whole = made(6);
        const DueSoon soon = due_soon(course, dead_times, clock.time);
        EXPECT_EQ(soon.now, whole.due_now()) << "seed " << seed;
        EXPECT_EQ(soon.later_today, whole.later) << "seed " << seed;
        EXPECT_EQ(std::vector<std::int64_t>(soon.days.begin(), soon.days.end()), whole.days) << "seed " << seed;
        EXPECT_EQ(soon.never_tested, whole.never_tested) << "seed " << seed;
    }
}

/// A course of one question of level 4, which rests two days; the present is 12:00.
class DueSoonOfOneQuestion : public IndexCourse {
protected:
    DueSoonOfOneQuestion() { course.params.target_level = 5; }

    /// @param tested_ago seconds since the last test
    [[nodiscard]] DueSoon of(std::int64_t level, std::int64_t tested_ago)
    {
        const auto moment = [&](std::int64_t ago) {
            return common::DateTime::from_seconds(noon.seconds() - ago).day_number();
        };
        engine.database.execute("Delete from qa");
        engine.database.execute("Insert into qa (q, a, q_successes, q_date_last_test, q_date_last_show) values "
                                "('q', 'a', ?1, ?2, ?3)",
                                {level, moment(tested_ago), moment(0)});
        return due_soon(course, dead_times, noon);
    }

    static constexpr std::int64_t hours = 3600;
    static constexpr std::int64_t days = 24 * hours;

    const common::DateTime noon =
        common::DateTime::from_fields({.year = 2026, .month = 11, .day = 22, .hour = 12, .minute = 0, .second = 0});
};

TEST_F(DueSoonOfOneQuestion, is_due_the_second_after_its_dead_time_also_when_it_was_just_shown)
{
    EXPECT_EQ(of(4, 2 * days + 1).now, 1);
    EXPECT_EQ(of(4, 2 * days).now, 0);
    EXPECT_EQ(of(4, 2 * days).later_today, 1);
}

TEST_F(DueSoonOfOneQuestion, is_on_the_day_on_which_it_is_due)
{
    EXPECT_EQ(of(4, 36 * hours + 2).later_today, 1) << "today at 23:59:59";
    EXPECT_EQ(of(4, 36 * hours + 1).days.front(), 1) << "tomorrow at 00:00:00";
    EXPECT_EQ(of(4, 12 * hours + 2).days.front(), 1) << "tomorrow at 23:59:59";
    EXPECT_EQ(of(4, 12 * hours + 1).days[1], 1) << "the day after, at 00:00:00";
    EXPECT_EQ(of(4, 2 - 5 * days + 12 * hours).days.back(), 1) << "in six days at 23:59:59";
    EXPECT_EQ(of(4, 1 - 5 * days + 12 * hours), DueSoon{}) << "later";
}

TEST_F(DueSoonOfOneQuestion, counts_nowhere_at_the_target_level_and_below_all_levels)
{
    EXPECT_EQ(of(5, 9000 * hours), DueSoon{});
    EXPECT_EQ(of(-1, 9000 * hours), DueSoon{});
}

} // namespace
} // namespace cuedrill::scheduler
