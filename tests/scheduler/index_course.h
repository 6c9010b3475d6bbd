#pragma once

#include "fakes/course_builder.h"
#include "fakes/fake_clock.h"
#include "fakes/fake_random.h"
#include "fakes/recording_database.h"
#include "fakes/temp_folder.h"
#include "scheduler/dead_time.h"
#include "store/course.h"

#include <gtest/gtest.h>
#include <random>
#include <string>
#include <vector>

namespace cuedrill::scheduler {

/// Courses of random records with all kinds of histories: nulls, equal dates, levels that the program never stores, and
/// dates one second before, at and one second after the limit at which a question becomes mature.
class IndexCourse : public testing::Test {
protected:
    IndexCourse()
    {
        dead_times.init_dead_time_array();
        course.db_path = fakes::CourseBuilder().write(folder);
        course.apri_db();
        ask(false);
    }

    /// Sets the direction in which questions are asked.
    void ask(bool inverted)
    {
        course.params.invert = inverted;
        course.set_side_fields();
    }

    /// Replaces all records by `records` random ones.
    void fill(int records, unsigned seed)
    {
        chance_.seed(seed);
        platform::Transaction transaction(engine.database);
        engine.database.execute("Delete from qa");
        for (int i = 0; i < records; ++i) {
            engine.database.execute("Insert into qa (q, a, q_successes, a_successes, q_date_last_test, "
                                    "a_date_last_test, q_date_last_show, a_date_last_show) values ('q', 'a', ?1, ?2, "
                                    "?3, ?4, ?5, ?6)",
                                    {level(), level(), date(), date(), date(), date()});
        }
        transaction.commit();
        database.forget();
    }

    /// The first column of all rows of the statement, with 0 for null.
    [[nodiscard]] std::vector<std::int64_t> numbers(const std::string& sql)
    {
        std::vector<std::int64_t> found;
        for (const platform::Row row : engine.database.query(sql)) {
            const auto* const number = std::get_if<std::int64_t>(&row.field(0));
            found.push_back(number != nullptr ? *number : 0);
        }
        return found;
    }

    int any(int below) { return std::uniform_int_distribution<int>(0, below - 1)(chance_); }

    fakes::TempFolder folder;
    fakes::FakeClock clock;
    fakes::FakeRandom random;
    fakes::RealEngine engine;
    fakes::RecordingDatabase database{engine.database};
    store::Course course{database};
    DeadTimes dead_times;

private:
    platform::Value level()
    {
        const int one = any(15);
        return one > 11 ? platform::Value() : platform::Value(std::int64_t{one - 1});
    }

    /// Null, a date tomorrow, or a date within a second of the limit at which a question becomes mature.
    platform::Value date()
    {
        const int kind = any(13);
        if (kind == 12)
            return {};
        if (kind == 11)
            return clock.time.plus_days(1).day_number();
        const double rest = kind == 10 ? dead_times.unanswered_dead_time() : dead_times.dead_time(kind);
        const common::DateTime border = clock.time.plus_days(-rest);
        return common::DateTime::from_seconds(border.seconds() + any(3) - 1).day_number();
    }

    std::mt19937 chance_;
};

} // namespace cuedrill::scheduler
