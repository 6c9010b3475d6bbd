#pragma once

#include "platform/database.h"

#include <string>
#include <string_view>

struct sqlite3;

namespace cuedrill::platform::sqlite {

/// The error for a result code of the engine, with a text for the user that contains no path.
/// @param code the extended result code.
/// @param system_error the errno that belongs to it; 0 if there is none.
/// @param engine_words the engine's own message.
[[nodiscard]] DatabaseError database_error(int code, int system_error, std::string_view engine_words);

/// Throws the error of the last call on `db`, which returned `code`.
[[noreturn]] void throw_engine_error(sqlite3* db, int code);

/// An error that the adapter itself has found; its engine code is 0.
[[nodiscard]] DatabaseError own_error(DatabaseErrorKind kind, const std::string& reason);

/// The error for a failed system call on the course file or its folder.
/// @param fallback the text for an errno that has no text of its own.
[[nodiscard]] DatabaseError file_error(int system_error, const std::string& fallback);

} // namespace cuedrill::platform::sqlite
