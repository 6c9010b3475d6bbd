#include "bare_sqlite.h"
#include "common/errors.h"
#include "engine.h"
#include "exchange/exporter.h"
#include "exchange/importer.h"
#include "operations.h"
#include "scheduler/verdict.h"
#include "store/schema.h"

#include <benchmark/benchmark.h>
#include <chrono>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <memory>
#include <unistd.h>

namespace cuedrill::bench {
namespace {

std::shared_ptr<Engine> sample_engine(const WorkFolder& folder, int records)
{
    return std::make_shared<Engine>(fresh_sample(folder, records));
}

/// The bare engine on a sample course.
struct Floor {
    explicit Floor(std::string course) : path(std::move(course)), sqlite(path, text_compare) {}

    std::string path;
    platform::icu::IcuTextCompare text_compare;
    BareSqlite sqlite;
};

Work opening(const WorkFolder& folder, int records)
{
    const auto engine = sample_engine(folder, records);
    return {.run = [engine] {
        engine->open();
        engine->course.close();
    }};
}

/// Runs the engine's integrity check and reads what the program reads.
/// @param makes_indexes creates the aid indexes, too.
void open_bare(const std::string& path, const platform::TextCompare& text_compare, bool makes_indexes)
{
    BareSqlite sqlite(path, text_compare);
    sqlite.run("BEGIN IMMEDIATE");
    sqlite.run("pragma quick_check");
    if (makes_indexes) {
        for (const platform::TableSchema& table : store::course_tables()) {
            for (const platform::AidIndex& aid : table.aids)
                sqlite.run(aid.statement);
        }
    }
    sqlite.run(makes_indexes ? "COMMIT" : "ROLLBACK");
    sqlite.run("select * from params");
    sqlite.run("select count(*) from qa");
}

Work opening_floor(const WorkFolder& folder, int records)
{
    const std::string path = fresh_sample(folder, records);
    Engine(path).open(); // stores the parameters, which are then read as in the program's course
    return {.run = [path] { open_bare(path, platform::icu::IcuTextCompare(), false); }};
}

void drop_aids(const std::string& path)
{
    const platform::icu::IcuTextCompare text_compare;
    BareSqlite sqlite(path, text_compare);
    for (const platform::TableSchema& table : store::course_tables()) {
        for (const platform::AidIndex& aid : table.aids)
            sqlite.run("drop index " + aid.name);
    }
}

Work opening_without_indexes(const WorkFolder& folder, int records)
{
    const auto engine = sample_engine(folder, records);
    return {.prepare =
                [engine] {
                    engine->course.close();
                    drop_aids(engine->course.db_path);
                },
            .run = [engine] { engine->open(); }};
}

Work opening_without_indexes_floor(const WorkFolder& folder, int records)
{
    const std::string path = fresh_sample(folder, records);
    Engine(path).open();
    return {.prepare = [path] { drop_aids(path); },
            .run = [path] { open_bare(path, platform::icu::IcuTextCompare(), true); }};
}

/// A new course without records for each run.
struct EmptyCourse {
    explicit EmptyCourse(const WorkFolder& folder) : path(folder.file("empty.crs")) {}

    void make() const
    {
        std::filesystem::remove(path);
        const platform::icu::IcuTextCompare text_compare;
        platform::sqlite::SqliteDatabase database(text_compare);
        store::create_course_db(database, path);
    }

    std::string path;
};

Work importing(const WorkFolder& folder, int records)
{
    struct Import : EmptyCourse {
        using EmptyCourse::EmptyCourse;
        std::unique_ptr<Engine> engine;
    };
    const auto import = std::make_shared<Import>(folder);
    const std::string text = folder.file("questions.txt");
    write_question_text(text, records);
    const auto prepare = [import] {
        import->engine.reset();
        import->make();
        import->engine = std::make_unique<Engine>(import->path);
        import->engine->open();
    };
    return {.prepare = prepare, .run = [import, text, records] {
                Engine& engine = *import->engine;
                exchange::Importer importer(engine.course, engine.files, engine.clock, engine.text_compare, text);
                exchange::Progress progress;
                while (!progress.finished)
                    progress = importer.step(exchange::Importer::usual_step);
                if (progress.stored != records)
                    throw common::Error("not everything was imported");
            }};
}

/// Inserts texts that are in memory already. It commits as often as the program, which reports only what is durable and
/// keeps no transaction open while the window processes events.
Work importing_floor(const WorkFolder& folder, int records)
{
    struct Import : EmptyCourse {
        using EmptyCourse::EmptyCourse;
        platform::icu::IcuTextCompare text_compare;
        std::unique_ptr<BareSqlite> sqlite;
    };
    const auto import = std::make_shared<Import>(folder);
    const auto texts = std::make_shared<std::vector<std::pair<std::string, std::string>>>();
    for (int number = 1; number <= records; ++number)
        texts->emplace_back(question_of(number), answer_of(number));
    const auto prepare = [import] {
        import->sqlite.reset();
        import->make();
        import->sqlite = std::make_unique<BareSqlite>(import->path, import->text_compare);
    };
    return {.prepare = prepare, .run = [import, texts] {
                import->sqlite->run("BEGIN IMMEDIATE");
                BareStatement insert(*import->sqlite,
                                     "insert into qa (q, a, q_attempts, a_attempts, q_fails, a_fails, q_successes, "
                                     "a_successes) values (?1, ?2, 0, 0, 0, 0, 0, 0)");
                auto begun = std::chrono::steady_clock::now();
                for (const auto& [question, answer] : *texts) {
                    insert.bind(1, question).bind(2, answer).run();
                    if (std::chrono::steady_clock::now() - begun < exchange::Importer::usual_step)
                        continue;
                    import->sqlite->run("COMMIT");
                    import->sqlite->run("BEGIN IMMEDIATE");
                    begun = std::chrono::steady_clock::now();
                }
                import->sqlite->run("COMMIT");
            }};
}

Work exporting(const WorkFolder& folder, int records)
{
    const auto engine = sample_engine(folder, records);
    engine->open();
    return {.run = [engine, text = folder.file("export.txt"), records] {
        exchange::Exporter exporter(engine->course, engine->files, engine->clock, engine->text_compare);
        if (exporter.export_file(text, false).count != records)
            throw common::Error("not everything was exported");
    }};
}

/// Writes the same texts with their markers, durably.
Work exporting_floor(const WorkFolder& folder, int records)
{
    struct Export : Floor {
        using Floor::Floor;
        BareStatement rows{sqlite, "select q, a from qa order by cnt"};
    };
    const auto floor = std::make_shared<Export>(fresh_sample(folder, records));
    return {.run = [floor, text = folder.file("export.txt")] {
        std::FILE* const file = std::fopen(text.c_str(), "wb");
        if (file == nullptr)
            throw common::Error("the export cannot be written");
        const auto write = [file](std::string_view piece) { std::fwrite(piece.data(), 1, piece.size(), file); };
        while (floor->rows.step()) {
            write("@Q@ ");
            write(floor->rows.text(0));
            write("\r\n@A@ ");
            write(floor->rows.text(1));
            write("\r\n\r\n");
        }
        const bool stored = std::fflush(file) == 0 && fsync(fileno(file)) == 0;
        if (std::fclose(file) != 0 || !stored)
            throw common::Error("the export cannot be written");
    }};
}

/// Gives all records counters and dates that a reset clears.
void mark_as_tested(BareSqlite& sqlite)
{
    sqlite.run("update qa set q_successes=cnt%11, q_attempts=1, q_date_last_test=46000+cnt/1000.0, "
               "q_date_last_show=46000+cnt/1000.0");
}

Work resetting(const WorkFolder& folder, int records)
{
    const auto engine = sample_engine(folder, records);
    engine->open();
    return {.prepare =
                [engine] {
                    BareSqlite sqlite(engine->course.db_path, engine->text_compare);
                    mark_as_tested(sqlite);
                },
            .run = [engine] { scheduler::reset_all(engine->course, engine->clock.now()); }};
}

Work resetting_floor(const WorkFolder& folder, int records)
{
    const auto floor = std::make_shared<Floor>(fresh_sample(folder, records));
    return {.prepare = [floor] { mark_as_tested(floor->sqlite); },
            .run =
                [floor] {
                    floor->sqlite.run("update qa set q_attempts=0, a_attempts=0, q_fails=0, a_fails=0, q_successes=0, "
                                      "a_successes=0, q_date_last_test=null, a_date_last_test=null, "
                                      "q_date_last_show=null, a_date_last_show=null");
                }};
}

} // namespace

std::vector<Operation> course_operations()
{
    return {{.name = "opening a course", .program = opening, .floor = opening_floor},
            {.name = "opening one without the indexes",
             .program = opening_without_indexes,
             .floor = opening_without_indexes_floor},
            {.name = "import", .program = importing, .floor = importing_floor},
            {.name = "export", .program = exporting, .floor = exporting_floor},
            {.name = "resetting all counters", .program = resetting, .floor = resetting_floor}};
}

} // namespace cuedrill::bench
