#pragma once

#include "platform/sqlite/connection.h"
#include "platform/sqlite/table_columns.h"

#include <cstdint>
#include <span>

namespace cuedrill::platform::sqlite {

/// The most characters of a text with which a course made elsewhere is opened.
inline constexpr std::int64_t longest_readable_text = 10'000;

/// Whether the file holds the tables and indexes of `tables`, word for word, and nothing else; aid indexes may be
/// missing. Its constraints then bound its texts, so the time to check it is proportional to its size.
[[nodiscard]] bool has_own_definitions(Connection& connection, std::span<const ExpectedTable> tables);

/// Whether a text has more bytes than `longest_readable_text`, in spite of the rules of its column: the engine counts
/// characters up to the first zero only, and takes any number of continuation bytes for a part of one.
[[nodiscard]] bool has_long_texts(Connection& connection, std::span<const ExpectedTable> tables);

/// Requires tables with the columns of `tables`. A long text is measured piece by piece, never held in memory.
/// @throws DatabaseError naming the first row with a text of more than `longest_readable_text` characters, and its
/// length.
void check_text_lengths(Connection& connection, std::span<const ExpectedTable> tables);

} // namespace cuedrill::platform::sqlite
