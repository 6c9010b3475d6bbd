#include "platform/archive/packing.h"
#include "platform/database.h"
#include "platform/sqlite/sqlite_foreign_databases.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

// Databases of other programs, read from memory. None of them may do any harm.
namespace cuedrill::platform::sqlite {
namespace {

using packing::database_of;

std::unique_ptr<ForeignTables> opened(std::string bytes)
{
    return SqliteForeignDatabases().open(std::move(bytes));
}

/// The text of the error that `action` throws; "" if it throws none.
std::string error_of(const std::function<void()>& action)
{
    try {
        action();
        return "";
    } catch (const DatabaseError& error) {
        return error.what();
    }
}

std::string opening_error(std::string bytes)
{
    return error_of([&] { static_cast<void>(opened(std::move(bytes))); });
}

/// The first column of all rows.
std::vector<std::string> texts(ForeignTables& tables, std::string_view sql)
{
    std::vector<std::string> result;
    const auto rows = tables.query(sql);
    while (rows->next())
        result.push_back(rows->text(0));
    return result;
}

std::string query_error(ForeignTables& tables, std::string_view sql)
{
    return error_of([&] { static_cast<void>(texts(tables, sql)); });
}

using Texts = std::vector<std::string>;

TEST(ForeignDatabases, give_rows_of_texts_blobs_and_numbers)
{
    const auto tables = opened(database_of("CREATE TABLE notes (id INTEGER PRIMARY KEY, text); "
                                           "INSERT INTO notes VALUES (7, 'Oslo'), (8, x'00FF41'), (9, NULL), "
                                           "(9000000000000, 2.5), (10, ''), (11, '12x')"));
    const auto rows = tables->query("SELECT id, text FROM notes ORDER BY id");
    ASSERT_TRUE(rows->next());
    EXPECT_EQ(rows->integer(0), 7);
    EXPECT_EQ(rows->text(1), "Oslo");
    EXPECT_EQ(rows->integer(1), 0);
    ASSERT_TRUE(rows->next());
    EXPECT_EQ(rows->text(1), std::string("\0\xFF"
                                         "A",
                                         3));
    ASSERT_TRUE(rows->next());
    EXPECT_EQ(rows->text(1), "");
    EXPECT_EQ(rows->integer(1), 0);
    ASSERT_TRUE(rows->next());
    EXPECT_EQ(rows->text(1), "");
    ASSERT_TRUE(rows->next());
    EXPECT_EQ(rows->integer(1), 12);
    ASSERT_TRUE(rows->next());
    EXPECT_EQ(rows->text(0), "9000000000000");
    EXPECT_EQ(rows->text(1), "2.5");
    EXPECT_FALSE(rows->next());
}

TEST(ForeignDatabases, know_their_tables)
{
    const auto tables = opened(database_of("CREATE TABLE Notes (id); CREATE INDEX places ON notes (id)"));
    EXPECT_TRUE(tables->has_table("notes"));
    EXPECT_FALSE(tables->has_table("places"));
    EXPECT_FALSE(tables->has_table("cards"));
}

TEST(ForeignDatabases, read_texts_in_utf_16)
{
    const auto tables = opened(
        database_of("PRAGMA encoding = 'UTF-16le'; CREATE TABLE notes (text); INSERT INTO notes VALUES ('Zürich')"));
    EXPECT_EQ(texts(*tables, "SELECT text FROM notes"), Texts{"Zürich"});
}

TEST(ForeignDatabases, take_texts_apart_that_are_in_json)
{
    const auto tables = opened(database_of(R"(CREATE TABLE col (models); INSERT INTO col VALUES ('{"b":2,"a":[1]}'))"));
    EXPECT_EQ(texts(*tables, "SELECT model.key FROM col, json_each(col.models) AS model"), (Texts{"b", "a"}));
}

TEST(ForeignDatabases, compare_bytes_for_a_collation_that_is_not_known)
{
    const auto tables =
        opened(database_of("CREATE TABLE kinds (name TEXT NOT NULL COLLATE unicase PRIMARY KEY) WITHOUT ROWID; "
                           "INSERT INTO kinds VALUES ('b'), ('A'), ('c')"));
    EXPECT_EQ(texts(*tables, "SELECT name FROM kinds WHERE name >= 'b'"), (Texts{"b", "c"}));
}

TEST(ForeignDatabases, are_read_although_they_were_in_log_mode)
{
    std::string bytes = database_of("CREATE TABLE notes (text); INSERT INTO notes VALUES ('Oslo')");
    bytes[18] = bytes[19] = 2;
    EXPECT_EQ(texts(*opened(bytes), "SELECT text FROM notes"), Texts{"Oslo"});
}

TEST(ForeignDatabases, refuse_what_is_no_database)
{
    EXPECT_EQ(opening_error(""), "It is not a database.");
    EXPECT_EQ(opening_error("SQLite format 3"), "It is not a database.");
    EXPECT_EQ(opening_error(std::string(8192, 'x')), "It is not a database.");
}

TEST(ForeignDatabases, that_are_cut_off_are_damaged)
{
    const std::string bytes = database_of("CREATE TABLE notes (text); INSERT INTO notes VALUES ('Oslo')");
    for (std::size_t length = 100; length < bytes.size(); length += 500)
        EXPECT_EQ(opening_error(bytes.substr(0, length)), "It is damaged (its end is missing).") << length;
    // Without its last page.
    EXPECT_NE(error_of([&] {
                  static_cast<void>(texts(*opened(bytes.substr(0, bytes.size() / 2)), "SELECT text FROM notes"));
              }),
              "");
}

TEST(ForeignDatabases, are_never_written)
{
    const auto tables = opened(database_of("CREATE TABLE notes (text); INSERT INTO notes VALUES ('Oslo')"));
    for (const char* const sql : {"DELETE FROM notes", "DELETE FROM notes RETURNING text", "CREATE TABLE more (x)",
                                  "ATTACH 'other.db' AS other", "VACUUM INTO 'other.db'"})
        EXPECT_NE(query_error(*tables, sql), "") << sql;
    EXPECT_EQ(texts(*tables, "SELECT text FROM notes"), Texts{"Oslo"});
}

TEST(ForeignDatabases, load_no_extension)
{
    const auto tables = opened(database_of("CREATE TABLE notes (text)"));
    EXPECT_NE(query_error(*tables, "SELECT load_extension('other.so')"), "");
}

TEST(ForeignDatabases, with_a_virtual_table_are_refused)
{
    EXPECT_EQ(opening_error(database_of("CREATE VIRTUAL TABLE notes USING fts5(text)")),
              "It has a table that is not an ordinary one.");
}

TEST(ForeignDatabases, have_no_views_for_tables)
{
    const auto tables = opened(database_of("CREATE TABLE hidden (text); CREATE VIEW notes AS SELECT text FROM hidden"));
    EXPECT_FALSE(tables->has_table("notes"));
    EXPECT_NE(query_error(*tables, "SELECT text FROM notes"), "");
}

TEST(ForeignDatabases, stop_a_statement_that_does_not_end)
{
    const auto tables =
        SqliteForeignDatabases(std::chrono::milliseconds(50)).open(database_of("CREATE TABLE notes (text)"));
    EXPECT_EQ(query_error(*tables, "WITH RECURSIVE n(x) AS (SELECT 1 UNION ALL SELECT x + 1 FROM n) "
                                   "SELECT count(*) FROM n"),
              "It would take too long to be looked through.");
    EXPECT_EQ(query_error(*tables, "SELECT text FROM notes"), "") << "the next statement has its own time";
}

TEST(ForeignDatabases, refuse_a_text_that_is_too_long)
{
    const std::string length = std::to_string(SqliteForeignDatabases::longest_text - 100);
    const auto tables = opened(database_of("CREATE TABLE notes (text); INSERT INTO notes VALUES (zeroblob(" + length +
                                           ")), (zeroblob(" + length + " + 200))"));
    EXPECT_EQ(query_error(*tables, "SELECT text FROM notes WHERE rowid = 1"), "");
    EXPECT_EQ(query_error(*tables, "SELECT text FROM notes WHERE rowid = 2"),
              "It holds a text that is too long to be read.");
}

TEST(ForeignDatabases, refuse_other_than_one_reading_statement)
{
    const auto tables = opened(database_of("CREATE TABLE notes (text)"));
    EXPECT_EQ(query_error(*tables, ""), "The statement does not read rows.");
    EXPECT_EQ(query_error(*tables, "SELECT places FROM notes"), "The database engine reports: no such column: places.");
}

TEST(ForeignDatabases, survive_any_changed_byte)
{
    const std::string bytes = database_of("PRAGMA page_size = 512; CREATE TABLE notes (id INTEGER PRIMARY KEY, text); "
                                          "INSERT INTO notes VALUES (1, 'Norway'), (2, hex(zeroblob(2000)))");
    std::size_t read = 0;
    for (std::size_t place = 0; place < bytes.size(); place += place < 1100 ? 1 : 61) {
        std::string changed = bytes;
        changed[place] = static_cast<char>(static_cast<unsigned char>(changed[place]) ^ 0xFFU);
        const std::string error =
            error_of([&] { static_cast<void>(texts(*opened(changed), "SELECT text FROM notes ORDER BY id")); });
        read += error.empty() ? 1U : 0U;
    }
    EXPECT_GT(read, 0U);
}

} // namespace
} // namespace cuedrill::platform::sqlite
