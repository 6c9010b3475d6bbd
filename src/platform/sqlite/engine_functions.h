#pragma once

#include "platform/text_compare.h"

struct sqlite3;

namespace cuedrill::platform::sqlite {

/// The order of texts that the collation CUEDRILL goes by.
struct TextOrder {
    const TextCompare& compare;
    /// Set when a comparison failed and the order of bytes was used in its place.
    bool failed = false;
};

/// Gives `db` the collation CUEDRILL and the function cvdate(text), the day number of "15/Nov/2026 05:47:17".
/// `order` must outlive the connection.
/// @throws DatabaseError when the engine refuses.
void register_functions(sqlite3* db, TextOrder& order);

} // namespace cuedrill::platform::sqlite
