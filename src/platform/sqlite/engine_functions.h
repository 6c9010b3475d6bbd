#pragma once

#include "platform/text_compare.h"

#include <exception>

struct sqlite3;

namespace cuedrill::platform::sqlite {

/// How the functions of a connection compare texts, and what has gone wrong in its statements.
struct TextRules {
    const TextCompare& compare;
    /// The exception that a function has caught, for the caller of the engine; null if there is none.
    std::exception_ptr failure = nullptr;
    /// Whether any statement of the connection has failed because of a malformed page.
    bool damage_met = false;
};

/// Registers the collation CUEDRILL, the function cvdate(text), which returns the day number of a date such as
/// "15/Nov/2026 05:47:17", and the operator "text like pattern", which follows LikePattern and ignores case.
/// `rules` must outlive the connection.
/// @throws DatabaseError if the engine refuses one of them.
void register_functions(sqlite3* db, TextRules& rules);

} // namespace cuedrill::platform::sqlite
