#pragma once

struct sqlite3;

namespace cuedrill::platform::sqlite {

/// Turns a switch of the connection (SQLITE_DBCONFIG_...) on or off.
/// @throws DatabaseError.
void set_switch(sqlite3* db, int option, bool on);

/// Turns on all of the engine's defences against malicious files, and limits what a statement may use. Also limits the
/// engine's memory in the whole process.
/// @param longest_text the most bytes of a text, a blob or a row.
/// @throws DatabaseError.
void set_up_defences(sqlite3* db, int longest_text);

} // namespace cuedrill::platform::sqlite
