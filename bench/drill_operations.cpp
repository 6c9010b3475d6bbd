#include "bare_sqlite.h"
#include "common/errors.h"
#include "drill/course_copies.h"
#include "engine.h"
#include "keep/history_file.h"
#include "operations.h"
#include "scheduler/counts.h"
#include "scheduler/forecast.h"
#include "scheduler/next_due.h"
#include "scheduler/next_question.h"
#include "scheduler/verdict.h"
#include "store/schema.h"
#include "store/stored_change.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <cmath>
#include <memory>
#include <vector>

namespace cuedrill::bench {
namespace {

constexpr int target_level = 5;

/// Seconds between two verdicts: the shortest time after which a failed question can be asked again.
constexpr std::int64_t pace = 9;

std::shared_ptr<Engine> open_engine(const std::string& path)
{
    auto engine = std::make_shared<Engine>(path);
    engine->open();
    return engine;
}

/// The bare engine on a course, with the dates that its statements need.
struct Floor {
    explicit Floor(const std::string& path) : sqlite(path, text_compare) { dead_times.init_dead_time_array(); }

    /// The day number that is `days` before `now`.
    [[nodiscard]] double before(double days) const { return now.plus_days(-days).day_number(); }

    platform::icu::IcuTextCompare text_compare;
    BareSqlite sqlite;
    scheduler::DeadTimes dead_times;
    common::DateTime now = platform::system::SystemClock().now();
};

/// Gives verdicts one after another. Two of three are "not known", so that the course never runs out of questions.
struct Drill {
    explicit Drill(std::shared_ptr<Engine> opened) : engine(std::move(opened)) { current = next(); }

    common::Int16 next()
    {
        const auto found = scheduler::next_question(engine->course, engine->dead_times, current, now, engine->random);
        if (!found)
            throw common::Error("the course has run out of questions");
        return *found;
    }

    void judge()
    {
        now = common::DateTime::from_seconds(now.seconds() + pace);
        scheduler::judge(engine->course, engine->dead_times, current, ++verdicts % 3 == 0, now);
    }

    std::shared_ptr<Engine> engine;
    common::DateTime now = engine->clock.now();
    common::Int16 current = 0;
    int verdicts = 0;
};

Work whole_verdict(const WorkFolder& folder, int records)
{
    const auto drill = std::make_shared<Drill>(open_engine(fresh_sample(folder, records)));
    return {.run = [drill] {
        drill->judge();
        benchmark::DoNotOptimize(scheduler::count(drill->engine->course));
        drill->current = drill->next();
    }};
}

/// The same where the picture of what is due is counted between two verdicts, as the program does.
Work verdict_after_due(const WorkFolder& folder, int records)
{
    const auto drill = std::make_shared<Drill>(open_engine(fresh_sample(folder, records)));
    return {.prepare =
                [drill] {
                    Engine& engine = *drill->engine;
                    benchmark::DoNotOptimize(scheduler::due_soon(engine.course, engine.dead_times, drill->now));
                },
            .run =
                [drill] {
                    drill->judge();
                    benchmark::DoNotOptimize(scheduler::count(drill->engine->course));
                    drill->current = drill->next();
                }};
}

/// The same while a copy of the course is being made, as the program makes it: a step between two verdicts, and the
/// next copy when one has all pages.
Work verdict_beside_copy(const WorkFolder& folder, int records)
{
    struct Copying : Drill {
        Copying(std::shared_ptr<Engine> opened, const WorkFolder& folder)
            : Drill(std::move(opened)), path(folder.file("copy.crs"))
        {
        }

        void step()
        {
            if (copy == nullptr)
                copy = engine->database.begin_copy(path, store::course_tables());
            // The last step would leave nothing for the verdict to write into.
            if (copy->step(drill::CourseCopies::pages_of_step))
                copy = engine->database.begin_copy(path, store::course_tables());
        }

        std::string path;
        std::unique_ptr<platform::CourseCopy> copy;
    };
    const auto copying = std::make_shared<Copying>(open_engine(fresh_sample(folder, records)), folder);
    return {.prepare = [copying] { copying->step(); },
            .run =
                [copying] {
                    copying->judge();
                    benchmark::DoNotOptimize(scheduler::count(copying->engine->course));
                    copying->current = copying->next();
                }};
}

/// The same with what the program writes into the history of the course.
Work verdict_with_history(const WorkFolder& folder, int records)
{
    struct Recorded : Drill {
        Recorded(std::shared_ptr<Engine> opened, const std::string& path)
            : Drill(std::move(opened)), history(engine->files, path)
        {
            engine->course.when_stored = [this](const store::StoredChange& change) {
                const store::StoredJudgement& judgement = *change.judgement;
                history.append({.time = judgement.when,
                                .kind = keep::HistoryKind::verdict,
                                .record = change.cnt,
                                .known = judgement.known,
                                .typed = judgement.typed,
                                .level_before = judgement.level_before,
                                .level_after = judgement.level_after,
                                .elapsed = judgement.elapsed});
            };
        }

        keep::HistoryFile history;
    };
    const auto drill =
        std::make_shared<Recorded>(open_engine(fresh_sample(folder, records)), folder.file("history/course.csv"));
    return {.run = [drill] {
        drill->judge();
        benchmark::DoNotOptimize(scheduler::count(drill->engine->course));
        drill->current = drill->next();
    }};
}

Work random_verdict(const WorkFolder& folder, int records)
{
    const auto engine = open_engine(fresh_sample(folder, records));
    engine->course.params.random_mode = true;
    const auto drill = std::make_shared<Drill>(engine);
    return {.run = [drill] {
        drill->judge();
        benchmark::DoNotOptimize(scheduler::count(drill->engine->course));
        drill->current = drill->next();
    }};
}

Work stored_verdict(const WorkFolder& folder, int records)
{
    const auto drill = std::make_shared<Drill>(open_engine(fresh_sample(folder, records)));
    return {.prepare = [drill] { drill->current = drill->next(); }, .run = [drill] { drill->judge(); }};
}

/// One durable commit that sets the level and the dates of a row. The rows take turns, scattered over the file.
Work bare_commit(const WorkFolder& folder, int records)
{
    struct Commit : Floor {
        using Floor::Floor;
        BareStatement update{sqlite, "update qa set q_successes=?2, q_attempts=q_attempts+1, q_date_last_test=?3, "
                                     "q_date_last_show=?3 where cnt=?1"};
        std::int64_t place = 0;
    };
    const auto floor = std::make_shared<Commit>(fresh_sample(folder, records));
    return {.run = [floor, records] {
        constexpr std::int64_t stride = 7919; // a prime, so that every row gets its turn
        floor->now = common::DateTime::from_seconds(floor->now.seconds() + pace);
        floor->update.bind(1, ++floor->place * stride % records + 1)
            .bind(2, floor->place % 3)
            .bind(3, floor->now.day_number())
            .run();
    }};
}

Work choosing(const WorkFolder& folder, int records)
{
    const auto engine = open_engine(fresh_sample(folder, records));
    return {.run = [engine, now = engine->clock.now()] {
        benchmark::DoNotOptimize(scheduler::next_question(engine->course, engine->dead_times, 0, now, engine->random));
    }};
}

Work choosing_at_random(const WorkFolder& folder, int records)
{
    const auto engine = open_engine(fresh_sample(folder, records));
    engine->course.params.random_mode = true;
    return {.run = [engine, now = engine->clock.now()] {
        benchmark::DoNotOptimize(scheduler::next_question(engine->course, engine->dead_times, 0, now, engine->random));
    }};
}

/// The look-ups of a choice in one level: questions never tested, by number, and tested ones, by date of the last test.
struct Choice : Floor {
    using Floor::Floor;

    /// The first mature question, from the highest level down; 0 if there is none.
    std::int64_t first()
    {
        for (int level = target_level - 1; level >= 0; --level) {
            never.bind(1, std::int64_t{level}).bind(2, before(dead_times.unanswered_dead_time()));
            tested.bind(1, std::int64_t{level}).bind(2, before(dead_times.unanswered_dead_time()));
            tested.bind(3, before(dead_times.dead_time(level)));
            // At level 0 tested questions come first; at higher levels those never tested.
            const std::int64_t found = level == 0 ? tested.first() : never.first();
            const std::int64_t other = found != 0 ? found : level == 0 ? never.first() : tested.first();
            if (other != 0)
                return other;
        }
        return 0;
    }

    BareStatement never{sqlite, "select cnt from qa where q_successes=?1 and q_date_last_test is null and "
                                "(q_date_last_show<?2 or q_date_last_show is null) order by cnt"};
    BareStatement tested{sqlite, "select cnt from qa where q_successes=?1 and q_date_last_test<?3 and "
                                 "(q_date_last_show<?2 or q_date_last_show is null) order by q_date_last_test, cnt"};
};

Work choosing_floor(const WorkFolder& folder, int records)
{
    const auto floor = std::make_shared<Choice>(fresh_sample(folder, records));
    return {.run = [floor] { benchmark::DoNotOptimize(floor->first()); }};
}

/// Reads all candidates of the highest level that has any, and picks one.
Work choosing_at_random_floor(const WorkFolder& folder, int records)
{
    const auto floor = std::make_shared<Choice>(fresh_sample(folder, records));
    return {.run = [floor] {
        for (int level = target_level - 1; level >= 0; --level) {
            std::vector<std::int64_t> candidates;
            for (BareStatement* const one : {&floor->never, &floor->tested}) {
                one->bind(1, std::int64_t{level}).bind(2, floor->before(floor->dead_times.unanswered_dead_time()));
                if (one == &floor->tested)
                    one->bind(3, floor->before(floor->dead_times.dead_time(level)));
                while (one->step())
                    candidates.push_back(one->integer(0));
            }
            if (!candidates.empty()) {
                benchmark::DoNotOptimize(candidates[candidates.size() / 2]);
                return;
            }
        }
    }};
}

Work counting(const WorkFolder& folder, int records)
{
    const auto engine = open_engine(fresh_sample(folder, records));
    return {.run = [engine] { benchmark::DoNotOptimize(scheduler::count(engine->course)); }};
}

/// Reads each entry of the index once.
Work counting_floor(const WorkFolder& folder, int records)
{
    struct Count : Floor {
        using Floor::Floor;
        BareStatement one{sqlite, "select count(*) from qa where q_successes=?1"};
        BareStatement from{sqlite, "select count(*) from qa where q_successes>=5"};
    };
    const auto floor = std::make_shared<Count>(fresh_sample(folder, records));
    return {.run = [floor] {
        for (std::int64_t level = 0; level < 5; ++level)
            benchmark::DoNotOptimize(floor->one.bind(1, level).run());
        benchmark::DoNotOptimize(floor->from.run());
    }};
}

Work counting_mature(const WorkFolder& folder, int records)
{
    const auto engine = open_engine(fresh_sample(folder, records));
    return {.run = [engine, now = engine->clock.now()] {
        benchmark::DoNotOptimize(scheduler::count_mature(engine->course, engine->dead_times, now));
    }};
}

Work counting_mature_floor(const WorkFolder& folder, int records)
{
    struct Count : Floor {
        using Floor::Floor;
        BareStatement mature{sqlite, "select count(*) from qa where q_successes=?1 and q_date_last_test<?2 and "
                                     "(q_date_last_show<?3 or q_date_last_show is null)"};
    };
    const auto floor = std::make_shared<Count>(fresh_sample(folder, records));
    return {.run = [floor] {
        std::int64_t sum = 0;
        for (int level = 0; level < target_level; ++level) {
            floor->mature.bind(1, std::int64_t{level}).bind(2, floor->before(floor->dead_times.dead_time(level)));
            sum += floor->mature.bind(3, floor->before(floor->dead_times.unanswered_dead_time())).run();
        }
        benchmark::DoNotOptimize(sum);
    }};
}

/// A course in which no question is mature: the dates of the last tests begin now and are one second apart, so all of
/// them are in the future.
std::string freshly_tested(const WorkFolder& folder, int records)
{
    std::string path = fresh_sample(folder, records);
    const platform::icu::IcuTextCompare text_compare;
    BareSqlite sqlite(path, text_compare);
    BareStatement(sqlite, "update qa set q_date_last_test=?1+cnt/86400.0, q_date_last_show=?1+cnt/86400.0")
        .bind(1, platform::system::SystemClock().now().day_number())
        .run();
    return path;
}

Work looking_ahead(const WorkFolder& folder, int records)
{
    const auto engine = open_engine(freshly_tested(folder, records));
    return {.run = [engine, now = engine->clock.now()] {
        if (!scheduler::find_next_due(engine->course, engine->dead_times, now))
            throw common::Error("no question is ever due");
    }};
}

/// Finds the moment at which the first question becomes mature, by the oldest test of each level, and then counts the
/// questions that become mature by the end of that day.
Work looking_ahead_floor(const WorkFolder& folder, int records)
{
    struct Ahead : Floor {
        using Floor::Floor;
        BareStatement first{sqlite, "select q_date_last_test from qa where q_successes=?1 and q_date_last_test>=0 "
                                    "order by q_date_last_test limit 1"};
        BareStatement due{sqlite, "select count(*) from qa where q_successes=?1 and q_date_last_test<?2 and "
                                  "(q_date_last_show<?3 or q_date_last_show is null)"};
    };
    const auto floor = std::make_shared<Ahead>(freshly_tested(folder, records));
    return {.run = [floor] {
        double at = 1e9;
        for (int level = 0; level < target_level; ++level) {
            if (floor->first.bind(1, std::int64_t{level}).step())
                at = std::min(at, floor->first.number(0) + floor->dead_times.dead_time(level));
            floor->first.reset();
        }
        const double end = std::floor(at) + 1;
        std::int64_t sum = 0;
        for (int level = 0; level < target_level; ++level) {
            floor->due.bind(1, std::int64_t{level}).bind(2, end - floor->dead_times.dead_time(level));
            sum += floor->due.bind(3, end - floor->dead_times.unanswered_dead_time()).run();
        }
        benchmark::DoNotOptimize(sum);
    }};
}

Work picturing_due(const WorkFolder& folder, int records)
{
    const auto engine = open_engine(fresh_sample(folder, records));
    return {.run = [engine, now = engine->clock.now()] {
        benchmark::DoNotOptimize(scheduler::due_soon(engine->course, engine->dead_times, now));
    }};
}

/// Counts, in each level, the questions never tested, the mature ones, and those that get mature on seven days.
Work picturing_due_floor(const WorkFolder& folder, int records)
{
    struct Due : Floor {
        using Floor::Floor;
        BareStatement now_due{sqlite, "select count(*) from qa where q_successes=?1 and q_date_last_test<?2"};
        BareStatement later{sqlite, "select count(*) from qa where q_successes=?1 and q_date_last_test>=?2 and "
                                    "q_date_last_test<?3"};
        BareStatement never{sqlite, "select count(*) from qa where q_successes=?1 and q_date_last_test is null"};
    };
    constexpr int week = 7; // today and six days
    const auto floor = std::make_shared<Due>(fresh_sample(folder, records));
    return {.run = [floor] {
        std::int64_t sum = 0;
        floor->sqlite.run("begin"); // one lock for all
        for (int level = 0; level < target_level; ++level) {
            double from = floor->before(floor->dead_times.dead_time(level));
            sum += floor->never.bind(1, std::int64_t{level}).run();
            sum += floor->now_due.bind(1, std::int64_t{level}).bind(2, from).run();
            for (int day = 0; day < week; ++day) {
                sum += floor->later.bind(1, std::int64_t{level}).bind(2, from).bind(3, from + 1).run();
                from += 1;
            }
        }
        floor->sqlite.run("commit");
        benchmark::DoNotOptimize(sum);
    }};
}

} // namespace

std::vector<Operation> drill_operations()
{
    return {
        {.name = "verdict, counts and next question", .program = whole_verdict, .floor = bare_commit},
        {.name = "the same while a copy is made", .program = verdict_beside_copy, .floor = whole_verdict},
        {.name = "the same with its line in the history", .program = verdict_with_history, .floor = whole_verdict},
        {.name = "the same after what is due was counted", .program = verdict_after_due, .floor = whole_verdict},
        {.name = "the same, drawn at random", .program = random_verdict, .floor = bare_commit},
        {.name = "a verdict alone", .program = stored_verdict, .floor = bare_commit},
        {.name = "next question", .program = choosing, .floor = choosing_floor},
        {.name = "next question, drawn at random", .program = choosing_at_random, .floor = choosing_at_random_floor},
        {.name = "counting the levels", .program = counting, .floor = counting_floor},
        {.name = "counting the mature questions", .program = counting_mature, .floor = counting_mature_floor},
        {.name = "what is due now and in the next days", .program = picturing_due, .floor = picturing_due_floor},
        {.name = "when the next one is due", .program = looking_ahead, .floor = looking_ahead_floor}};
}

} // namespace cuedrill::bench
