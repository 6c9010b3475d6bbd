#include "platform/sqlite/text_lengths.h"

#include "common/text.h"
#include "platform/sqlite/engine_error.h"

#include <algorithm>
#include <array>
#include <set>
#include <sqlite3.h>
#include <string>

namespace cuedrill::platform::sqlite {
namespace {

using Piece = std::array<char, 65536>;

/// The number of bytes of a full piece without its last character, which may continue in the next piece.
std::size_t whole_characters(const Piece& piece)
{
    constexpr std::size_t longest_character = 4;
    std::size_t end = piece.size() - 1;
    while (piece.size() - end < longest_character && (static_cast<unsigned char>(piece[end]) & 0xC0U) == 0x80U)
        --end;
    return end;
}

/// Reads one stored text at a time, piece by piece, without loading its row.
class StoredTexts {
public:
    StoredTexts(Connection& connection, const std::string& table, const std::string& column)
        : db_(connection.handle()), table_(table), column_(column)
    {
    }
    StoredTexts(const StoredTexts&) = delete;
    StoredTexts& operator=(const StoredTexts&) = delete;
    ~StoredTexts() { sqlite3_blob_close(text_); }

    void go_to(std::int64_t row)
    {
        const int code = text_ == nullptr
                             ? sqlite3_blob_open(db_, "main", table_.c_str(), column_.c_str(), row, 0, &text_)
                             : sqlite3_blob_reopen(text_, row);
        // The row is there, for a statement has just given it.
        if (code == SQLITE_ERROR)
            throw DatabaseError(DatabaseErrorKind::damaged, code,
                                "It is damaged (" + std::string(sqlite3_errmsg(db_)) + ").");
        if (code != SQLITE_OK)
            throw_engine_error(db_, code);
    }

    [[nodiscard]] std::int64_t bytes() const { return sqlite3_blob_bytes(text_); }

    [[nodiscard]] std::int64_t characters() const
    {
        Piece piece{};
        std::size_t count = 0;
        const int size = sqlite3_blob_bytes(text_);
        for (int place = 0; place < size;) {
            const int part = std::min(size - place, static_cast<int>(piece.size()));
            const int code = sqlite3_blob_read(text_, piece.data(), part, place);
            if (code != SQLITE_OK)
                throw_engine_error(db_, code);
            const std::size_t used = place + part < size ? whole_characters(piece) : static_cast<std::size_t>(part);
            count += common::code_points({piece.data(), used});
            place += static_cast<int>(used);
        }
        return static_cast<std::int64_t>(count);
    }

private:
    sqlite3* db_;
    std::string table_;
    std::string column_;
    sqlite3_blob* text_ = nullptr;
};

void check_column(Connection& connection, const std::string& table, const std::string& column)
{
    // typeof() does not load the text.
    Statement rows = connection.prepare("SELECT rowid FROM main." + quoted_name(table) + " WHERE typeof(" +
                                        quoted_name(column) + ") = 'text'");
    StoredTexts texts(connection, table, column);
    while (rows.step()) {
        const std::int64_t row = rows.integer(0);
        texts.go_to(row);
        if (texts.bytes() <= longest_readable_text)
            continue; // a text never has more characters than bytes
        const std::int64_t characters = texts.characters();
        if (characters > longest_readable_text)
            throw own_error(DatabaseErrorKind::damaged, "The text in column " + column + " of record " +
                                                            std::to_string(row) + " of its table " + table + " has " +
                                                            std::to_string(characters) + " characters; more than " +
                                                            std::to_string(longest_readable_text) + " cannot be read.");
    }
}

} // namespace

bool has_own_definitions(Connection& connection, std::span<const ExpectedTable> tables)
{
    std::set<std::string> expected{"CREATE TABLE sqlite_sequence(name,seq)"};
    for (const ExpectedTable& table : tables) {
        expected.insert(table.schema.table);
        expected.insert(table.schema.indexes.begin(), table.schema.indexes.end());
        for (const AidIndex& aid : table.schema.aids)
            expected.insert(aid.statement);
    }
    // Objects without an SQL text are indexes that the engine creates for keys.
    Statement found = connection.prepare("SELECT sql FROM main.sqlite_schema WHERE sql IS NOT NULL");
    while (found.step()) {
        if (!expected.contains(found.text(0)))
            return false;
    }
    return true;
}

bool has_long_texts(Connection& connection, std::span<const ExpectedTable> tables)
{
    for (const ExpectedTable& table : tables) {
        std::string beyond;
        for (const TableColumn& column : table.columns) {
            if (column.holds_text())
                beyond += (beyond.empty() ? "" : " OR ") + ("length(CAST(" + quoted_name(column.name)) +
                          " AS BLOB)) > " + std::to_string(longest_readable_text);
        }
        if (!beyond.empty() &&
            connection.prepare("SELECT 1 FROM main." + quoted_name(table.schema.name) + " WHERE " + beyond).step())
            return true;
    }
    return false;
}

void check_text_lengths(Connection& connection, std::span<const ExpectedTable> tables)
{
    for (const ExpectedTable& table : tables) {
        for (const TableColumn& column : table.columns) {
            if (column.holds_text())
                check_column(connection, table.schema.name, column.name);
        }
    }
}

} // namespace cuedrill::platform::sqlite
