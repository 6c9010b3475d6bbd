#pragma once

#include "platform/database.h"
#include "platform/text_compare.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

struct sqlite3;

namespace cuedrill::platform::sqlite {

struct TextRules;

/// `name` as an identifier of SQL.
[[nodiscard]] std::string quoted_name(std::string_view name);

/// A column of a table as the engine knows it.
struct TableColumn {
    std::string name;
    std::string type;              ///< as declared
    std::string collation;         ///< by which texts are compared
    std::int64_t place_in_key = 0; ///< from 1; 0 outside of the primary key
    bool numbered = false;         ///< by the engine, and numbers never come back
    bool computed = false;         ///< hidden, generated, or with a default

    [[nodiscard]] bool holds_text() const;
};

/// The columns of a table of the open database, in their order.
/// @throws DatabaseError
[[nodiscard]] std::vector<TableColumn> columns_of(sqlite3* db, TextRules& rules, const std::string& table);

/// The collation by which the primary key of a table tells texts apart; empty where the key is the row id.
/// @throws DatabaseError
[[nodiscard]] std::string collation_of_key(sqlite3* db, TextRules& rules, const std::string& table);

/// A table that a course must have, with the columns that its statement makes.
struct ExpectedTable {
    TableSchema schema;
    std::vector<TableColumn> columns;
    std::string collation_of_key;
};

/// What the engine makes of the statements; it runs them in memory.
/// @throws DatabaseError when they are not sound.
[[nodiscard]] std::vector<ExpectedTable> expected_tables(std::span<const TableSchema> schemas,
                                                         const TextCompare& compare);

} // namespace cuedrill::platform::sqlite
