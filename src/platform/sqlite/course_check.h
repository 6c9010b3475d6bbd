#pragma once

#include "platform/sqlite/connection.h"
#include "platform/sqlite/table_columns.h"

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace cuedrill::platform::sqlite {

/// The application id in the file header that marks a file as a course ("CUED" in ASCII).
inline constexpr std::int64_t application_id = 0x43554544;
/// Version of the table layout.
inline constexpr std::uint32_t schema_number = 1;

/// The user_version of a file: the schema number in the upper 8 bits; in the lower 24 bits a stamp (never 0) of the
/// text order in which the indexes are built.
/// @param order_version `TextCompare::order_version` of that order.
[[nodiscard]] std::int32_t packed_version(std::uint32_t order_version);

/// Facts from the first bytes of a file, read before the engine interprets the file.
struct FileHeader {
    bool has_write_ahead_log = false;
};

/// Checks the signature, the application id and the schema number in the file's header.
/// @throws DatabaseError (not_a_course) if the file is no course or was made by a newer version; DatabaseError also if
/// the header cannot be read.
FileHeader check_header(Connection& connection);

/// Checks that the file has the tables of `expected`. The time does not depend on the number of rows.
/// @throws DatabaseError that names the first fault.
void check_definitions(Connection& connection, std::span<const ExpectedTable> expected);

/// Checks that the file can be written, is not locked by another program, and has the tables of `expected`. The time
/// does not depend on the number of rows. Writes nothing.
/// @throws DatabaseError that names the first fault.
void check_tables(Connection& connection, std::span<const ExpectedTable> expected);

/// Reads the whole file and checks that it is sound and that no text is too long to be read. Requires the tables of
/// `expected`. Writes nothing. If all definitions in the file are the program's own, lifts the limit on processor time.
/// @throws DatabaseError that names the first fault.
void check_contents(Connection& connection, std::span<const ExpectedTable> expected);

/// Reads the whole file and returns each fault as a sentence or as a report of the engine; nothing for a sound file.
/// Also compares each index with its table, unless the file was written under another order of texts. Requires the
/// tables of `expected`. Writes nothing. Its processor time is limited, unless all definitions in the file are the
/// program's own and its structure is sound.
[[nodiscard]] std::vector<std::string>
integrity_findings(Connection& connection, std::span<const ExpectedTable> expected, std::uint32_t order_version);

/// Rebuilds the indexes over texts if they were built for another order than that of `order_version`.
/// @throws DatabaseError; the file is unchanged then. (damaged) if two rows have the same key in the new order.
void bring_to_order(Connection& connection, std::uint32_t order_version);

} // namespace cuedrill::platform::sqlite
