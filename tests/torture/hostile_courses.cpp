#include "torture/hostile_courses.h"

#include "fakes/course_builder.h"
#include "fakes/temp_folder.h"
#include "torture/course_check.h"

#include <sqlite3.h>
#include <stdexcept>

namespace cuedrill::torture {
namespace {

constexpr const char* not_a_course = "refused:not_a_course";
constexpr const char* damaged = "refused:damaged";
constexpr const char* opens = "opens";
constexpr const char* anything = "anything";

int compare_texts(void* order, int length_a, const void* a, int length_b, const void* b)
{
    return static_cast<TwoOrders*>(order)->compare({static_cast<const char*>(a), static_cast<std::size_t>(length_a)},
                                                   {static_cast<const char*>(b), static_cast<std::size_t>(length_b)});
}

HostileCourse bytes(const std::string& name, const std::string& contents, const std::string& expected)
{
    return {name, [contents](const DiskImage&) { return DiskImage{{course_name, contents}}; }, expected};
}

HostileCourse sql(const std::string& name, const std::string& statements, const std::string& expected)
{
    return {name, [statements](const DiskImage& sound) { return changed_by(sound, statements); }, expected};
}

/// With this file beside it.
HostileCourse beside(const std::string& name, const std::string& ending, const std::string& contents,
                     const std::string& expected)
{
    return {name,
            [=](const DiskImage& sound) {
                DiskImage image = sound;
                image[course_name + ending] = contents;
                image["precious.txt"] = "precious";
                return image;
            },
            expected};
}

/// A journal that ends with the name of another file, which the engine would delete.
std::string journal_naming(const std::string& name)
{
    const std::string start("\xD9\xD5\x05\xF9\x20\xA1\x63\xD7", 8);
    unsigned char sum = 0;
    for (const char c : name)
        sum = static_cast<unsigned char>(sum + static_cast<unsigned char>(c));
    return start + std::string(504, '\0') + name + std::string(3, '\0') + static_cast<char>(name.size()) +
           std::string(3, '\0') + static_cast<char>(sum) + start;
}

/// `qa` without its checks, filled with the rows that it had.
std::string without_checks(const std::string& then)
{
    return "PRAGMA writable_schema=1; UPDATE sqlite_schema SET sql=replace(replace(sql, "
           "'CHECK (length(\"q\") <= 200)', ''), 'BETWEEN -32768 AND 32767', 'IS NOT 0.5') WHERE name='qa'; "
           "PRAGMA writable_schema=RESET; " +
           then;
}

/// A value of a type that the columns of a strict table do not take.
std::string with_types_mixed(const std::string& then)
{
    return "PRAGMA writable_schema=1; UPDATE sqlite_schema SET sql=replace(sql, ') STRICT', ')'); PRAGMA "
           "writable_schema=RESET; PRAGMA ignore_check_constraints=1; " +
           then +
           "; PRAGMA writable_schema=1; UPDATE sqlite_schema SET sql=sql || ' STRICT' WHERE type='table' AND name IN "
           "('qa', 'params'); PRAGMA writable_schema=RESET";
}

std::vector<HostileCourse> with_other_contents()
{
    return {bytes("empty", "", not_a_course),
            bytes("one_byte", "S", not_a_course),
            bytes("text", "Question;Answer\n", not_a_course),
            bytes("long_text", std::string(100000, 'x'), not_a_course),
            bytes("zeros", std::string(100000, '\0'), not_a_course),
            bytes("start_of_a_header", "SQLite format 3", not_a_course),
            bytes("header_mark_only", std::string("SQLite format 3\0", 16) + std::string(84, '\0'), anything),
            sql("another_program", "PRAGMA application_id=1", not_a_course),
            sql("newer_version", "PRAGMA user_version=33554432", not_a_course),
            sql("greatest_version", "PRAGMA user_version=-1", not_a_course),
            sql("no_qa", "DROP TABLE qa", not_a_course),
            sql("no_params", "DROP TABLE params", not_a_course),
            sql("other_tables", "DROP TABLE params; DROP TABLE qa; CREATE TABLE t (a)", not_a_course),
            sql("view", "ALTER TABLE qa RENAME TO x; CREATE VIEW qa AS SELECT * FROM x", not_a_course),
            sql("endless_view",
                "DROP TABLE qa; CREATE VIEW qa AS WITH RECURSIVE c(cnt) AS (SELECT 1 UNION ALL SELECT cnt+1 FROM c) "
                "SELECT cnt FROM c",
                not_a_course),
            sql("virtual_table", "DROP TABLE qa; CREATE VIRTUAL TABLE qa USING fts5(q, a)", not_a_course),
            sql("trigger", "CREATE TRIGGER t AFTER UPDATE ON qa BEGIN DELETE FROM params; END", not_a_course),
            sql("generated_column", "ALTER TABLE qa ADD COLUMN g INTEGER AS (cnt+1)", not_a_course),
            sql("another_column", "ALTER TABLE qa ADD COLUMN g INTEGER", not_a_course),
            sql("endless_index", "CREATE INDEX slow ON qa (q) WHERE q LIKE '%x%y%z%x%y%z%x%y%z%x%y%z%x%y%z%x%y%z'",
                anything)};
}

std::vector<HostileCourse> with_other_values()
{
    return {
        sql("huge_text", "PRAGMA ignore_check_constraints=1; UPDATE qa SET q=printf('%.*c', 900000, 'x') WHERE cnt=1",
            damaged),
        sql("huge_text_without_checks", without_checks("UPDATE qa SET q=printf('%.*c', 900000, 'x') WHERE cnt=1"),
            damaged),
        sql("huge_level", "PRAGMA ignore_check_constraints=1; UPDATE qa SET q_successes=99999", damaged),
        sql("greatest_level", without_checks("UPDATE qa SET q_successes=9223372036854775807"), opens),
        sql("lowest_counters", without_checks("UPDATE qa SET q_attempts=-9223372036854775807-1, q_fails=-1"), opens),
        sql("level_below_zero", "UPDATE qa SET q_successes=-32768, a_successes=-1", opens),
        sql("greatest_number", "INSERT INTO qa (cnt, q, a) VALUES (9223372036854775807, 'q', 'a')", opens),
        sql("lowest_number", "INSERT INTO qa (cnt, q, a) VALUES (-9223372036854775807, 'q', 'a')", opens),
        sql("all_null", "UPDATE qa SET q=null, a=null, q_successes=null, a_successes=null, q_attempts=null", opens),
        sql("endless_dates", "UPDATE qa SET q_date_last_test=9e999, a_date_last_test=-9e999", opens),
        sql("far_dates", "UPDATE qa SET q_date_last_test=1e300, q_date_last_show=-1e300", opens),
        sql("far_parameters", "UPDATE params SET number_value=1e300, date_value=-1e300", anything),
        sql("endless_parameters", "UPDATE params SET number_value=9e999, date_value=9e999", anything),
        sql("null_parameters", "UPDATE params SET number_value=null, date_value=null, string_value=null", opens),
        sql("text_in_a_number", with_types_mixed("UPDATE qa SET q_successes='high' WHERE cnt=7"), damaged),
        sql("blob_in_a_number", with_types_mixed("UPDATE qa SET q_successes=x'00ff' WHERE cnt=7"), damaged),
        sql("blob_in_a_text", with_types_mixed("UPDATE qa SET q=x'00ff' WHERE cnt=7"), damaged),
        sql("text_in_a_date", with_types_mixed("UPDATE qa SET q_date_last_test='today' WHERE cnt=7"), damaged),
        sql("text_in_a_parameter", with_types_mixed("UPDATE params SET number_value='many'"), damaged),
        sql("bytes_that_are_no_text", "UPDATE qa SET q=cast(x'fffe00c0' as text) WHERE cnt=7", opens)};
}

std::vector<HostileCourse> with_neighbours()
{
    return {sql("log_mode", "PRAGMA journal_mode=WAL", opens),
            beside("journal_of_zeros", "-journal", std::string(5000, '\0'), opens),
            beside("journal_of_text", "-journal", "dear diary", opens),
            beside("journal_naming_a_file", "-journal", journal_naming("precious.txt"), damaged),
            beside("log_of_text", "-wal", "dear diary", anything),
            {"journal_that_is_a_course",
             [](const DiskImage& sound) {
                 DiskImage image = sound;
                 image[std::string(course_name) + "-journal"] = sound.at(course_name);
                 return image;
             },
             damaged}};
}

} // namespace

const std::vector<HostileCourse>& hostile_courses()
{
    static const std::vector<HostileCourse> all = [] {
        std::vector<HostileCourse> cases;
        for (const auto& some : {with_other_contents(), with_other_values(), with_neighbours()})
            cases.insert(cases.end(), some.begin(), some.end());
        return cases;
    }();
    return all;
}

DiskImage sound_course()
{
    const fakes::TempFolder folder;
    fakes::CourseBuilder builder;
    for (int i = 0; i < 400; ++i)
        builder
            .question("question " + std::to_string(i) + std::string(static_cast<std::size_t>(i % 150), 'q'),
                      "answer " + std::to_string(i / 3) + std::string(static_cast<std::size_t>(i % 90), 'a'))
            .level(i % 7)
            .tested_ago(std::chrono::hours(i));
    builder.number_param("target_level", 5);
    builder.number_param("time_ever", 100);
    static_cast<void>(builder.write(folder, course_name));
    return read_image(folder.path().string());
}

DiskImage changed_by(const DiskImage& image, const std::string& statements)
{
    const fakes::TempFolder folder;
    write_image(image, folder.path().string());
    TwoOrders order;
    sqlite3* db = nullptr;
    sqlite3_open(folder.file(course_name).c_str(), &db);
    sqlite3_create_collation(db, "CUEDRILL", SQLITE_UTF8, &order, compare_texts);
    sqlite3_db_config(db, SQLITE_DBCONFIG_DEFENSIVE, 0, nullptr);
    const int code = sqlite3_exec(db, statements.c_str(), nullptr, nullptr, nullptr);
    const std::string words = sqlite3_errmsg(db);
    sqlite3_close(db);
    if (code != SQLITE_OK)
        throw std::runtime_error(words + " in: " + statements);
    return read_image(folder.path().string());
}

std::size_t pages_of(const DiskImage& image)
{
    return image.at(course_name).size() / page_size;
}

} // namespace cuedrill::torture
