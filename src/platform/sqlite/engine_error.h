#pragma once

#include "platform/database.h"

#include <string>
#include <string_view>

struct sqlite3;

namespace cuedrill::platform::sqlite {

/// The error for a result of the engine, in words for the user and without any path.
/// @param code the extended result code.
/// @param system_error the errno that came with it; 0 for none.
/// @param engine_words the engine's own message.
[[nodiscard]] DatabaseError database_error(int code, int system_error, std::string_view engine_words);

/// Throws the error of the last call on `db`, which gave `code`.
[[noreturn]] void throw_engine_error(sqlite3* db, int code);

/// An error that the engine was not asked about (code 0).
[[nodiscard]] DatabaseError own_error(DatabaseErrorKind kind, const std::string& reason);

/// The error for a failed call of the system on the course file or its folder.
/// @param fallback the words for an errno that has none of its own.
[[nodiscard]] DatabaseError file_error(int system_error, const std::string& fallback);

} // namespace cuedrill::platform::sqlite
