#include "fuzz/course_seeds.h"

#include "fuzz/fuzzing.h"
#include "platform/sqlite/engine_functions.h"
#include "platform/sqlite/sqlite_database.h"
#include "store/schema.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <sqlite3.h>

namespace cuedrill::fuzz {
namespace {

/// The engine itself on a course file, with the program's functions.
class Engine {
public:
    Engine(const std::string& path, const platform::TextCompare& compare) : rules_{compare}
    {
        require(sqlite3_open(path.c_str(), &db_) == SQLITE_OK, "a seed is opened");
        platform::sqlite::register_functions(db_, rules_);
    }
    Engine(const Engine&) = delete;
    Engine& operator=(const Engine&) = delete;
    ~Engine() { sqlite3_close(db_); }

    void run(const std::string& sql)
    {
        require(sqlite3_exec(db_, sql.c_str(), nullptr, nullptr, nullptr) == SQLITE_OK, "a statement of a seed runs");
    }

private:
    platform::sqlite::TextRules rules_;
    sqlite3* db_ = nullptr;
};

/// Adds records: short and long texts, and numbers of every kind.
std::string records(int first, int count)
{
    std::string sql = "BEGIN;";
    for (int i = first; i < first + count; ++i) {
        const std::string number = std::to_string(i);
        sql += "INSERT INTO qa VALUES (" + number + ", 'question " + number + " " +
               std::string(static_cast<std::size_t>(i * 13 % 90), 'x') + "', 'answer " + number + "', " + number +
               ", NULL, 1, 0, " + std::to_string(i % 7) + ", 0, " + std::to_string(46000 + i) +
               ".25, NULL, 46001, NULL);";
    }
    return sql + "COMMIT;";
}

void remove_course(const std::string& path)
{
    for (const char* const ending : {"", "-journal", "-wal", "-shm"})
        std::filesystem::remove(path + ending);
}

} // namespace

std::string bytes_of(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

void write_bytes(const std::string& path, const std::string& bytes)
{
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.close();
    require(!file.fail(), "a file is written");
}

std::vector<CourseImage> make_course_seeds(const std::string& folder, const platform::TextCompare& compare)
{
    const std::string path = folder + "/seed.crs";
    std::vector<CourseImage> seeds;
    remove_course(path);
    {
        platform::sqlite::SqliteDatabase database(compare);
        store::create_course_db(database, path);
    }
    {
        Engine(path, compare).run("PRAGMA page_size = 512; VACUUM");
    }
    seeds.push_back({.course = bytes_of(path)});
    {
        Engine engine(path, compare);
        engine.run(records(1, 24));
        engine.run("INSERT INTO params VALUES ('target_level', NULL, NULL, 5), ('course_title', NULL, 'seed', NULL), "
                   "('last_date', 46001.5, NULL, NULL), ('random_mode', NULL, NULL, 1)");
        engine.run("DELETE FROM qa WHERE cnt BETWEEN 8 AND 16");
    }
    seeds.push_back({.course = bytes_of(path)});
    {
        Engine engine(path, compare);
        // A small cache makes the engine write pages, and so the journal, before the commit.
        engine.run("PRAGMA cache_size = 1; PRAGMA cache_spill = 1; BEGIN; UPDATE qa SET q = 'changed', a_fails = 3; "
                   "DELETE FROM qa WHERE cnt = 20; UPDATE params SET number_value = 7");
        seeds.push_back({.course = bytes_of(path), .journal = bytes_of(path + "-journal")});
    }
    {
        Engine engine(path, compare);
        engine.run(
            "PRAGMA journal_mode = WAL; UPDATE qa SET q = 'changed' WHERE cnt < 20; DELETE FROM qa WHERE cnt = 20");
        seeds.push_back({.course = bytes_of(path), .journal = bytes_of(path + "-wal"), .is_log = true});
    }
    {
        Engine(path, compare).run("PRAGMA journal_mode = DELETE; CREATE INDEX other ON qa (a_fails, q) WHERE a > 'b'");
    }
    seeds.push_back({.course = bytes_of(path)});
    remove_course(path);
    for (const CourseImage& seed : seeds)
        require(!seed.course.empty(), "a seed has bytes");
    require(seeds[2].course != seeds[1].course && seeds[2].journal.starts_with("\xD9\xD5\x05\xF9"),
            "a journal has what was in pages that are already changed");
    require(seeds[3].course != seeds[1].course && !seeds[3].journal.empty(), "a write-ahead log has pages");
    return seeds;
}

} // namespace cuedrill::fuzz
