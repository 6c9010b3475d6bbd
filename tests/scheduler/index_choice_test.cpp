// Compares the choice of questions and the counts on random courses with plain statements that use no index.
#include "index_course.h"
#include "scheduler/counts.h"
#include "scheduler/next_due.h"
#include "scheduler/next_question.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace cuedrill::scheduler {
namespace {

class IndexChoice : public IndexCourse {
protected:
    [[nodiscard]] std::string literal(double days_ago) const
    {
        return "cvdate('" + common::format_date_literal(clock.time.plus_days(-days_ago)) + "')";
    }

    [[nodiscard]] std::string not_just_shown() const
    {
        const std::string& shown = course.Q_FIELD.date_last_show;
        return " and (" + shown + " < " + literal(dead_times.unanswered_dead_time()) + " or " + shown + " is null)";
    }

    /// The mature questions of one level, in the order in which they are asked.
    [[nodiscard]] std::string plain_level(int level, bool tested_only) const
    {
        const store::SideFields& asked = course.Q_FIELD;
        std::string sql = "Select * from qa not indexed where (" + asked.successes + "=" + std::to_string(level);
        if (level == 0 && !tested_only)
            sql += " or " + asked.successes + " is null";
        sql += ") and (" + asked.date_last_test + " < " + literal(dead_times.dead_time(level));
        sql += tested_only ? ")" : " or " + asked.date_last_test + " is null)";
        return sql + not_just_shown() + " order by " + asked.successes + " desc, " + asked.date_last_test +
               " asc, cnt asc";
    }

    [[nodiscard]] std::string plain_mature_count() const
    {
        std::string sql = "Select count(0) from qa not indexed where (";
        for (int level = course.params.target_level - 1; level >= 0; --level) {
            sql += level == course.params.target_level - 1 ? "(" : " or (";
            sql += course.Q_FIELD.successes + " = " + std::to_string(level) + " and " + course.Q_FIELD.date_last_test +
                   " < " + literal(dead_times.dead_time(level)) + ")";
        }
        return sql + ")" + not_just_shown();
    }

    /// In random mode, the candidate that the random number selects; otherwise the first one.
    [[nodiscard]] std::optional<std::int64_t> chosen(const std::vector<std::int64_t>& candidates) const
    {
        if (candidates.empty())
            return std::nullopt;
        const double place = course.params.random_mode ? random.constant * static_cast<double>(candidates.size()) : 0;
        return candidates.at(static_cast<std::size_t>(std::floor(place)));
    }

    [[nodiscard]] std::optional<std::int64_t> plain_next(std::int64_t not_this)
    {
        for (int level = course.params.target_level - 1; level >= 0; --level) {
            for (const bool tested_only : {true, false}) {
                if (tested_only && level > 0)
                    continue;
                const auto found = chosen(numbers(plain_level(level, tested_only)));
                if (found && *found != not_this)
                    return found;
            }
        }
        return std::nullopt;
    }

    /// For each question below the target level, the day number after which it can be asked; 0 for one never tested or
    /// shown.
    [[nodiscard]] std::vector<double> plain_moments()
    {
        std::vector<double> moments;
        const store::SideFields& asked = course.Q_FIELD;
        for (const platform::Row row : engine.database.query("Select " + asked.successes + ", " + asked.date_last_test +
                                                             ", " + asked.date_last_show + " from qa not indexed")) {
            const double level = store::nz(row.field(0));
            if (level < 0 || level >= course.params.target_level)
                continue;
            const auto moment = [](const platform::Value& date, double rest) {
                return std::holds_alternative<std::monostate>(date) ? 0 : std::get<double>(date) + rest;
            };
            moments.push_back(std::max(moment(row.field(1), dead_times.dead_time(static_cast<int>(level))),
                                       moment(row.field(2), dead_times.unanswered_dead_time())));
        }
        return moments;
    }

    void expect_same_next_due()
    {
        const std::vector<double> moments = plain_moments();
        const std::optional<NextDue> due = find_next_due(course, dead_times, clock.time);
        ASSERT_EQ(due.has_value(), !moments.empty());
        if (!due)
            return;
        const double first = *std::min_element(moments.begin(), moments.end());
        EXPECT_EQ(due->at.seconds(), common::DateTime::from_day_number(first).seconds() + 1);
        const double end = std::floor(std::max(due->at, clock.time).day_number()) + 1 - 1.5 / 86400;
        EXPECT_EQ(due->by_end_of_day,
                  std::count_if(moments.begin(), moments.end(), [end](double moment) { return moment < end; }));
    }

    /// Calls `compare` for that many random courses, in both directions.
    template <typename Compare>
    void on_random_courses(int courses, Compare compare)
    {
        for (int i = 0; i < courses; ++i) {
            // From 1 to 120 questions: some small courses have nothing mature, large ones many equal histories.
            fill(1 + i * i % 120, static_cast<unsigned>(i));
            for (const bool inverted : {false, true}) {
                SCOPED_TRACE("course " + std::to_string(i) + (inverted ? ", inverted" : ""));
                ask(inverted);
                compare();
            }
        }
    }
};

TEST_F(IndexChoice, of_one_level_is_that_of_the_plain_statement)
{
    on_random_courses(24, [this] {
        for (int level = 0; level < DeadTimes::count; ++level) {
            for (const bool tested_only : {true, false}) {
                for (const double drawn : {-1.0, 0.0, 0.5, 0.999}) {
                    course.params.random_mode = drawn >= 0;
                    random.constant = std::max(drawn, 0.0);
                    EXPECT_EQ(select_mature(course, dead_times, static_cast<common::Int16>(level), tested_only,
                                            clock.time, random),
                              chosen(numbers(plain_level(level, tested_only))))
                        << level << tested_only << drawn;
                }
            }
        }
    });
}

TEST_F(IndexChoice, of_the_next_question_is_that_of_the_plain_statements_for_every_target)
{
    on_random_courses(24, [this] {
        for (common::Int16 target = store::lowest_target_level; target <= store::highest_target_level; ++target) {
            course.params.target_level = target;
            course.params.random_mode = any(2) == 0;
            random.constant = any(100) / 100.0;
            const auto first = plain_next(0);
            for (const std::int64_t not_this : {std::int64_t{0}, first.value_or(0)})
                EXPECT_EQ(next_question(course, dead_times, static_cast<common::Int16>(not_this), clock.time, random),
                          plain_next(not_this))
                    << target;
        }
    });
}

TEST_F(IndexChoice, counts_what_the_plain_statements_count_for_every_target)
{
    on_random_courses(24, [this] {
        for (common::Int16 target = store::lowest_target_level; target <= store::highest_target_level; ++target) {
            course.params.target_level = target;
            EXPECT_EQ(count_mature(course, dead_times, clock.time), numbers(plain_mature_count()).at(0)) << target;
            const Counts counts = count(course);
            std::int64_t unpassed = 0;
            for (int level = 0; level <= last_counted_level; ++level) {
                const std::string plain = "Select count(0) from qa not indexed WHERE " + course.Q_FIELD.successes +
                                          (level < last_counted_level ? " = " : " >= ") + std::to_string(level);
                const std::int64_t questions = numbers(plain).at(0);
                EXPECT_EQ(counts.level.at(static_cast<std::size_t>(level)), questions) << level;
                unpassed += level < target ? questions : 0;
            }
            EXPECT_EQ(counts.unpassed, unpassed) << target;
        }
    });
}

TEST_F(IndexChoice, looks_ahead_to_the_moment_that_comes_first_for_every_target)
{
    on_random_courses(24, [this] {
        for (common::Int16 target = store::lowest_target_level; target <= store::highest_target_level; ++target) {
            SCOPED_TRACE(target);
            course.params.target_level = target;
            expect_same_next_due();
        }
    });
}

// In these courses the last show delays questions, too, and some of them for longer than the last test does.
TEST_F(IndexChoice, looks_ahead_among_questions_that_were_only_shown)
{
    for (const char* const history :
         {"Update qa set q_date_last_show=?1", "Update qa set q_date_last_test=null, q_date_last_show=?1+cnt",
          "Update qa set q_successes=cnt%3, q_date_last_test=?1-cnt, q_date_last_show=?1+50-cnt",
          "Update qa set q_successes=2, q_date_last_test=?1-cnt, q_date_last_show=?1+cnt",
          "Update qa set q_successes=2, q_date_last_test=?1-30+cnt, q_date_last_show=?1+50-3*cnt"}) {
        SCOPED_TRACE(history);
        fill(40, 7);
        database.execute(history, {clock.time.day_number()});
        course.params.target_level = 3;
        expect_same_next_due();
    }
}

TEST_F(IndexChoice, of_an_empty_course_is_none)
{
    course.params.target_level = 10;
    EXPECT_EQ(next_question(course, dead_times, 0, clock.time, random), std::nullopt);
    EXPECT_EQ(count_mature(course, dead_times, clock.time), 0);
    EXPECT_FALSE(find_next_due(course, dead_times, clock.time));
    EXPECT_EQ(count(course).level, (std::array<std::int64_t, 6>{}));
}

} // namespace
} // namespace cuedrill::scheduler
