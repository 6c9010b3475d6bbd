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

/// `name` as a quoted SQL identifier.
[[nodiscard]] std::string quoted_name(std::string_view name);

/// A column of a table, as the engine reports it.
struct TableColumn {
    std::string name;
    std::string type;              ///< as declared
    std::string collation;         ///< compares its texts
    std::int64_t place_in_key = 0; ///< position in the primary key, from 1; 0 if it is not part of it
    bool numbered = false;         ///< AUTOINCREMENT: the engine numbers the rows and never reuses a number
    bool computed = false;         ///< hidden, generated, or with a default

    [[nodiscard]] bool holds_text() const;
};

/// The columns of a table of the open database, in order.
/// @throws DatabaseError
[[nodiscard]] std::vector<TableColumn> columns_of(sqlite3* db, TextRules& rules, const std::string& table);

/// The collation of the first column of a table's primary key; empty if the key is the row id.
/// @throws DatabaseError
[[nodiscard]] std::string collation_of_key(sqlite3* db, TextRules& rules, const std::string& table);

/// A table that a course must have, with the columns that its statement creates.
struct ExpectedTable {
    TableSchema schema;
    std::vector<TableColumn> columns;
    std::string collation_of_key;
};

/// Runs the statements of `schemas` in a database in memory and returns the resulting tables.
/// @throws DatabaseError if a statement fails.
[[nodiscard]] std::vector<ExpectedTable> expected_tables(std::span<const TableSchema> schemas,
                                                         const TextCompare& compare);

} // namespace cuedrill::platform::sqlite
