#include "bare_sqlite.h"
#include "bench_names.h"
#include "common/number_format.h"
#include "engine.h"
#include "exchange/importer.h"
#include "platform/icu/icu_text_compare.h"
#include "platform/sqlite/sqlite_database.h"
#include "platform/system/system_clock.h"
#include "sample_course.h"
#include "scheduler/counts.h"
#include "scheduler/dead_time.h"
#include "scheduler/next_question.h"
#include "scheduler/verdict.h"
#include "store/schema.h"

#include <benchmark/benchmark.h>
#include <chrono>
#include <filesystem>

namespace cuedrill::bench {
namespace {

std::string fresh_empty(const WorkFolder& folder, int number)
{
    std::string path = folder.file("empty" + std::to_string(number) + ".crs");
    const platform::icu::IcuTextCompare text_compare;
    platform::sqlite::SqliteDatabase database(text_compare);
    store::create_course_db(database, path);
    return path;
}

void verdict(benchmark::State& state)
{
    const WorkFolder folder;
    Engine engine(fresh_sample(folder));
    engine.open();
    const auto next_after = [&](common::Int16 last) {
        return scheduler::next_question(engine.course, engine.dead_times, last, engine.clock.now(), engine.random)
            .value_or(0);
    };
    common::Int16 current = next_after(0);
    for ([[maybe_unused]] auto iteration : state) {
        scheduler::judge(engine.course, engine.dead_times, current, true, engine.clock.now());
        benchmark::DoNotOptimize(scheduler::count(engine.course));
        current = next_after(current);
        if (current == 0)
            state.SkipWithError("the course has run out of questions");
    }
}

/// The counters of the day, which are stored with every verdict.
void save_counters(BareSqlite& sqlite, const std::string& date)
{
    for (const char* const counter : {"time_ever", "time_TODAY", "score_TODAY"})
        sqlite.run(std::string("update params set number_value=number_value+1 where param='") + counter + "'");
    sqlite.run("update params set date_value=" + date + " where param='last_date'");
}

void count_levels(BareSqlite& sqlite)
{
    for (int level = 0; level < 5; ++level)
        sqlite.run("Select count(0) from qa WHERE q_successes = " + std::to_string(level));
    sqlite.run("Select count(0) from qa WHERE q_successes >= 5");
}

/// The selection as the program asks it, the dates as numbers.
sqlite3_int64 select_next(BareSqlite& sqlite, const scheduler::DeadTimes& dead_times, common::DateTime now,
                          sqlite3_int64 previous)
{
    const auto before = [&](double days) { return common::format_general(now.plus_days(-days).day_number()); };
    const std::string shown = " and (q_date_last_show < " + before(dead_times.unanswered_dead_time()) +
                              " or q_date_last_show is null) order by q_successes desc, q_date_last_test asc, cnt asc";
    for (int level = 4; level >= 0; --level) {
        const std::string tested = "q_date_last_test < " + before(dead_times.dead_time(level));
        const std::string of_level = "Select * from qa where (q_successes=" + std::to_string(level);
        if (level == 0) {
            const sqlite3_int64 failed = sqlite.first(of_level + ") and (" + tested + ")" + shown);
            if (failed != 0 && failed != previous)
                return failed;
        }
        const std::string untested = level == 0 ? " or q_successes is null" : "";
        const sqlite3_int64 found =
            sqlite.first(of_level + untested + ") and (" + tested + " or q_date_last_test is null)" + shown);
        if (found != 0 && found != previous)
            return found;
    }
    return 0;
}

void verdict_floor(benchmark::State& state)
{
    const WorkFolder folder;
    const platform::icu::IcuTextCompare text_compare;
    const std::string path = fresh_sample(folder);
    const platform::system::SystemClock clock;
    {
        Engine engine(path);
        engine.open();
        engine.params.save_work_time(clock.now());
    }
    BareSqlite sqlite(path, text_compare);
    scheduler::DeadTimes dead_times;
    dead_times.init_dead_time_array();
    sqlite3_int64 current = select_next(sqlite, dead_times, clock.now(), 0);
    for ([[maybe_unused]] auto iteration : state) {
        const common::DateTime now = clock.now();
        const std::string cnt = std::to_string(current);
        const std::string date = common::format_general(now.day_number());
        sqlite.run("BEGIN IMMEDIATE");
        const sqlite3_int64 level =
            sqlite.run("select q_successes, q_attempts, q_date_last_test from qa where cnt=" + cnt);
        sqlite.run("update qa set q_successes=" + std::to_string(level + 1) +
                   ", q_attempts=q_attempts+1, q_date_last_test=" + date + ", q_date_last_show=" + date +
                   " where cnt=" + cnt);
        save_counters(sqlite, date);
        sqlite.run("COMMIT");
        count_levels(sqlite);
        current = select_next(sqlite, dead_times, now, current);
        if (current == 0)
            state.SkipWithError("the course has run out of questions");
    }
}

void counts(benchmark::State& state)
{
    const WorkFolder folder;
    Engine engine(fresh_sample(folder));
    engine.open();
    for ([[maybe_unused]] auto iteration : state)
        benchmark::DoNotOptimize(scheduler::count(engine.course));
}

void counts_floor(benchmark::State& state)
{
    const WorkFolder folder;
    const platform::icu::IcuTextCompare text_compare;
    BareSqlite sqlite(fresh_sample(folder), text_compare);
    for ([[maybe_unused]] auto iteration : state)
        count_levels(sqlite);
}

void opening(benchmark::State& state)
{
    const WorkFolder folder;
    Engine engine(fresh_sample(folder));
    for ([[maybe_unused]] auto iteration : state) {
        engine.open();
        engine.course.close();
    }
}

void opening_floor(benchmark::State& state)
{
    const WorkFolder folder;
    const std::string path = fresh_sample(folder);
    const platform::icu::IcuTextCompare text_compare;
    Engine(path).open(); // the parameters are there, as they are in the course of the program
    for ([[maybe_unused]] auto iteration : state) {
        BareSqlite sqlite(path, text_compare);
        sqlite.run("pragma quick_check");
        sqlite.run("BEGIN IMMEDIATE");
        sqlite.run("ROLLBACK");
        sqlite.run("select * from params");
        sqlite.run("Select count(0) from qa");
    }
}

void importing(benchmark::State& state)
{
    const WorkFolder folder;
    const std::string text = folder.file("questions.txt");
    write_question_text(text);
    int number = 0;
    for ([[maybe_unused]] auto iteration : state) {
        state.PauseTiming();
        Engine engine(fresh_empty(folder, ++number));
        engine.open();
        state.ResumeTiming();
        exchange::Importer importer(engine.course, engine.bank, engine.files, engine.clock, engine.text_compare, text);
        exchange::Progress progress;
        while (!progress.finished)
            progress = importer.step(exchange::Importer::usual_step);
        if (engine.course.record_count != records)
            state.SkipWithError("not everything was imported");
    }
}

/// Inserts the same texts, committed as often as the program commits.
void insert_records(BareSqlite& sqlite)
{
    constexpr std::chrono::milliseconds group(250);
    sqlite3_stmt* const insert =
        sqlite.prepare("insert into qa (q, a, q_attempts, a_attempts, q_fails, a_fails, q_successes, a_successes) "
                       "values (?, ?, 0, 0, 0, 0, 0, 0)");
    sqlite.run("BEGIN IMMEDIATE");
    auto started = std::chrono::steady_clock::now();
    for (int number = 1; number <= records; ++number) {
        const std::string question = question_of(number);
        const std::string answer = answer_of(number);
        sqlite3_bind_text(insert, 1, question.data(), static_cast<int>(question.size()), SQLITE_STATIC);
        sqlite3_bind_text(insert, 2, answer.data(), static_cast<int>(answer.size()), SQLITE_STATIC);
        sqlite.check(sqlite3_step(insert));
        sqlite3_reset(insert);
        if (std::chrono::steady_clock::now() - started >= group) {
            sqlite.run("COMMIT");
            count_levels(sqlite);
            sqlite.run("BEGIN IMMEDIATE");
            started = std::chrono::steady_clock::now();
        }
    }
    sqlite.run("COMMIT");
    sqlite3_finalize(insert);
}

void importing_floor(benchmark::State& state)
{
    const WorkFolder folder;
    const platform::icu::IcuTextCompare text_compare;
    int number = 0;
    for ([[maybe_unused]] auto iteration : state) {
        state.PauseTiming();
        BareSqlite sqlite(fresh_empty(folder, ++number), text_compare);
        state.ResumeTiming();
        insert_records(sqlite);
    }
}

} // namespace

void register_course_benchmarks()
{
    const auto add = [](const char* name, auto program, auto floor, benchmark::TimeUnit unit) {
        benchmark::RegisterBenchmark(program_name(name).c_str(), program)->Unit(unit)->UseRealTime();
        benchmark::RegisterBenchmark(floor_name(name).c_str(), floor)->Unit(unit)->UseRealTime();
    };
    add("verdict, next question and counts", verdict, verdict_floor, benchmark::kMillisecond);
    add("opening a course", opening, opening_floor, benchmark::kMillisecond);
    add("importing 30000 records", importing, importing_floor, benchmark::kMillisecond);
    add("counting the levels", counts, counts_floor, benchmark::kMillisecond);
}

} // namespace cuedrill::bench
