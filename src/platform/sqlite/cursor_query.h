#pragma once

#include "platform/sqlite/table_layout.h"

#include <cstddef>
#include <optional>
#include <string>

namespace cuedrill::platform::sqlite {

/// The questions that a cursor asks its table. "Equal", "greater" and "less" are about the key of the current index;
/// rows of equal key stand in the order of the primary key, and rows without a key come first.
enum class CursorQuery {
    by_row_id, ///< ?1 row id
    first,
    last,
    equal,                ///< ?1 key
    next_among_equal,     ///< ?1 key, ?2 primary key
    previous_among_equal, ///< ?1 key, ?2 primary key
    first_greater,        ///< ?1 key
    last_less,            ///< ?1 key
    first_with_key,
    last_without_key
};

inline constexpr std::size_t cursor_queries = 10;

/// The name under which every table gives its row ids.
inline constexpr const char* row_id_column = "_rowid_";

/// The text of `query`: all columns and then the row id, of one row at most.
/// @param key the column of the current index; nothing for the row id itself.
[[nodiscard]] std::string cursor_query_text(CursorQuery query, const TableLayout& layout,
                                            std::optional<std::size_t> key);

} // namespace cuedrill::platform::sqlite
