#pragma once

#include "platform/sqlite/connection.h"
#include "platform/sqlite/table_columns.h"

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace cuedrill::platform::sqlite {

/// Marks a file as a course, at its place in the file's header.
inline constexpr std::int64_t application_id = 0x43554544;
/// The number of the present arrangement of the tables.
inline constexpr std::uint32_t schema_number = 1;

/// The number kept in the file beside the application id: the schema number, and a stamp (never 0) of the order in
/// which texts stand in the indexes.
[[nodiscard]] std::int32_t packed_version(std::uint32_t order_version);

/// What the first bytes of a file tell before the engine looks at it.
struct FileHeader {
    bool has_write_ahead_log = false;
};

/// @throws DatabaseError when the file is no course, or of a newer version.
FileHeader check_header(Connection& connection);

/// Checks that the file has the tables of `expected`. The time does not depend on the number of rows.
/// @throws DatabaseError naming the first thing that is not as it must be.
void check_definitions(Connection& connection, std::span<const ExpectedTable> expected);

/// Checks that the file can be written, is held by no other program, and has the tables of `expected`. The time does
/// not depend on the number of rows. Writes nothing.
/// @throws DatabaseError naming the first thing that is not as it must be.
void check_tables(Connection& connection, std::span<const ExpectedTable> expected);

/// Reads the whole file and checks that it is sound and that no text is too long to be read. Requires the tables of
/// `expected`. Writes nothing.
/// @throws DatabaseError naming the first thing that is not as it must be.
void check_contents(Connection& connection, std::span<const ExpectedTable> expected);

/// Reads the whole file and gives all that is not as it must be, a sentence or a report of the engine each; empty for a
/// sound file. Also compares each index with its table, unless the file was written under another order of texts.
/// Requires the tables of `expected`. Writes nothing, and spends a bounded time.
[[nodiscard]] std::vector<std::string>
integrity_findings(Connection& connection, std::span<const ExpectedTable> expected, std::uint32_t order_version);

/// Rebuilds the indexes over texts when they were built by another order than that of `order_version`.
void bring_to_order(Connection& connection, std::uint32_t order_version);

} // namespace cuedrill::platform::sqlite
