#pragma once

#include "platform/text_compare.h"

#include <exception>

struct sqlite3;

namespace cuedrill::platform::sqlite {

/// How the functions of a connection compare texts, and what its statements have met.
struct TextRules {
    const TextCompare& compare;
    /// What a function has thrown, for whoever has called the engine; null for nothing.
    std::exception_ptr failure = nullptr;
    /// Whether a statement of the connection has met a malformed page so far.
    bool damage_met = false;
};

/// Gives `db` the collation CUEDRILL, the function cvdate(text), the day number of "15/Nov/2026 05:47:17", and the
/// rules of LikePattern for "text like pattern", without regard to case.
/// `rules` must outlive the connection.
/// @throws DatabaseError when the engine refuses.
void register_functions(sqlite3* db, TextRules& rules);

} // namespace cuedrill::platform::sqlite
