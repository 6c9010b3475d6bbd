#include "platform/sqlite/engine_error.h"

#include "platform/sqlite/course_files.h"

#include <array>
#include <cerrno>
#include <sqlite3.h>

namespace cuedrill::platform::sqlite {
namespace {

constexpr std::string_view no_room = "There is no room left on the disk.";
constexpr std::string_view not_readable_or_writable = "The disk could not be read or written.";
constexpr std::string_view no_memory = "There is not enough memory.";
constexpr std::string_view too_large = "A file would become larger than the system allows.";
constexpr std::string_view too_many_files = "Too many files are open.";
constexpr std::string_view closed_folder = "It is in a folder that you may not enter.";

struct Meaning {
    DatabaseErrorKind kind;
    std::string reason;
};

/// The part of `text` between the first pair of double quotes; the whole text if there is no pair.
std::string quoted_part(std::string_view text)
{
    const std::size_t first = text.find('"');
    const std::size_t second = first == std::string_view::npos ? first : text.find('"', first + 1);
    if (second == std::string_view::npos)
        return std::string(text);
    return std::string(text.substr(first + 1, second - first - 1));
}

std::string behind_last(std::string_view text, char separator)
{
    const std::size_t place = text.rfind(separator);
    return std::string(place == std::string_view::npos ? text : text.substr(place + 1));
}

/// The text for a failed CHECK of the course's own tables. The engine's message gives the expression of the CHECK, such
/// as `length("q") <= 200`. If it begins with a quoted name, as those of numbers do, the message gives only that name.
std::string check_words(std::string_view engine_words)
{
    const std::size_t colon = engine_words.find(": ");
    const std::string_view rule = colon == std::string_view::npos ? engine_words : engine_words.substr(colon + 2);
    if (rule.starts_with("length("))
        return "The text in column " + quoted_part(rule) + " is too long; " + behind_last(rule, ' ') +
               " characters fit.";
    if (rule.find(' ') == std::string_view::npos)
        return "The number in column " + std::string(rule) + " does not fit.";
    return "The row breaks a rule of its table (" + std::string(rule) + ").";
}

std::string constraint_words(int code, std::string_view engine_words)
{
    switch (code) {
    case SQLITE_CONSTRAINT_CHECK:
        return check_words(engine_words);
    case SQLITE_CONSTRAINT_UNIQUE:
    case SQLITE_CONSTRAINT_PRIMARYKEY:
    case SQLITE_CONSTRAINT_ROWID:
        return "There is already a row with this value in column " + behind_last(engine_words, '.') + ".";
    case SQLITE_CONSTRAINT_NOTNULL:
        return "The column " + behind_last(engine_words, '.') + " must have a value.";
    default:
        return "The row breaks a rule of its table (" + std::string(engine_words) + ").";
    }
}

Meaning input_output_meaning(int code, int system_error)
{
    // SQLITE_IOERR_CORRUPTFS is treated as a failing disk, too, not as a damaged course: it comes from EIO and similar
    // errors of the system.
    if (code == SQLITE_IOERR_NOMEM)
        return {DatabaseErrorKind::other, std::string(no_memory)};
    // To the user, an exceeded quota is the same as a full disk.
    if (system_error == ENOSPC || system_error == EDQUOT)
        return {DatabaseErrorKind::full, std::string(no_room)};
    if (system_error == EFBIG)
        return {DatabaseErrorKind::full, std::string(too_large)};
    if (code == SQLITE_IOERR_FSTAT && system_error == EACCES)
        return {DatabaseErrorKind::other, std::string(closed_folder)};
    return {DatabaseErrorKind::input_output, std::string(not_readable_or_writable)};
}

Meaning opening_meaning(int system_error)
{
    switch (system_error) {
    case ENOSPC:
    case EDQUOT:
        return {DatabaseErrorKind::full, std::string(no_room)};
    case EMFILE:
    case ENFILE:
        return {DatabaseErrorKind::other, std::string(too_many_files)};
    case ENOMEM:
        return {DatabaseErrorKind::other, std::string(no_memory)};
    default:
        return {DatabaseErrorKind::other, "It cannot be opened."};
    }
}

Meaning meaning_of(int code, int system_error, std::string_view engine_words)
{
    if (code == SQLITE_READONLY_DBMOVED)
        return {DatabaseErrorKind::moved, "It was moved or deleted while it was open."};
    switch (code & 0xFF) {
    case SQLITE_FULL:
        return {DatabaseErrorKind::full, std::string(no_room)};
    case SQLITE_IOERR:
        return input_output_meaning(code, system_error);
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
    case SQLITE_PROTOCOL:
        return {DatabaseErrorKind::locked, "Another program is using it."};
    case SQLITE_READONLY:
    case SQLITE_PERM:
        return {DatabaseErrorKind::read_only, "It cannot be written."};
    case SQLITE_CORRUPT:
        return {DatabaseErrorKind::damaged, "It is damaged (" + std::string(engine_words) + ")."};
    case SQLITE_NOTADB:
        return {DatabaseErrorKind::not_a_course, "It is not a course."};
    case SQLITE_CANTOPEN:
        return opening_meaning(system_error);
    case SQLITE_INTERRUPT:
        return {DatabaseErrorKind::not_a_course, "It would take too long to be looked through."};
    case SQLITE_TOOBIG:
        return {DatabaseErrorKind::damaged, "It holds a text that is too long to be read."};
    case SQLITE_CONSTRAINT:
        return {DatabaseErrorKind::constraint, constraint_words(code, engine_words)};
    case SQLITE_MISMATCH:
        return {DatabaseErrorKind::constraint, "A value is of a type that its column does not take."};
    case SQLITE_NOMEM:
        return {DatabaseErrorKind::other, std::string(no_memory)};
    default:
        return {DatabaseErrorKind::other, "The database engine reports: " + std::string(engine_words) + "."};
    }
}

/// Whether another program has switched the file to write-ahead log mode. That mode needs shared memory, which
/// `CourseFiles` does not provide, and the engine then only reports that it cannot open something.
bool was_put_into_log_mode(sqlite3* db)
{
    constexpr sqlite3_int64 place_of_versions = 18;
    constexpr unsigned char log_version = 2;
    std::array<unsigned char, 2> versions{};
    sqlite3_file* file = nullptr;
    return sqlite3_file_control(db, "main", SQLITE_FCNTL_FILE_POINTER, static_cast<void*>(&file)) == SQLITE_OK &&
           file != nullptr && file->pMethods != nullptr &&
           file->pMethods->xRead(file, versions.data(), static_cast<int>(versions.size()), place_of_versions) ==
               SQLITE_OK &&
           (versions[0] == log_version || versions[1] == log_version);
}

} // namespace

DatabaseError database_error(int code, int system_error, std::string_view engine_words)
{
    const Meaning meaning = meaning_of(code, system_error, engine_words);
    return {meaning.kind, code, meaning.reason};
}

void throw_engine_error(sqlite3* db, int code)
{
    // The connection has the extended code of its last error. If that is another error, only the given code is known.
    const int last = sqlite3_extended_errcode(db);
    const bool same = (last & 0xFF) == (code & 0xFF);
    const int extended = same ? last : code;
    const char* const file = sqlite3_db_filename(db, "main");
    if (const auto refusal = error_of_course_files(extended, file == nullptr ? "" : file))
        throw DatabaseError(*refusal);
    if (extended == SQLITE_CANTOPEN && was_put_into_log_mode(db))
        throw database_error(SQLITE_BUSY, 0, "");
    const std::string words = same ? sqlite3_errmsg(db) : sqlite3_errstr(code);
    // `CourseFiles` keeps the errno of the failed call; that of the connection may come from the cleanup afterwards.
    int system_error = sqlite3_system_errno(db);
    if (extended == SQLITE_IOERR_WRITE || extended == SQLITE_CANTOPEN)
        sqlite3_file_control(db, "main", SQLITE_FCNTL_LAST_ERRNO, &system_error);
    throw database_error(extended, system_error, words);
}

DatabaseError own_error(DatabaseErrorKind kind, const std::string& reason)
{
    return {kind, 0, reason};
}

DatabaseError file_error(int system_error, const std::string& fallback)
{
    switch (system_error) {
    case ENOENT:
    case ENOTDIR:
        return own_error(DatabaseErrorKind::missing, "There is no such file or folder.");
    case EEXIST:
        return own_error(DatabaseErrorKind::exists, "There is already a file of that name.");
    case EACCES:
    case EPERM:
    case EROFS:
        return own_error(DatabaseErrorKind::read_only, "Its folder cannot be written.");
    case ENOSPC:
    case EDQUOT:
        return own_error(DatabaseErrorKind::full, std::string(no_room));
    case EFBIG:
        return own_error(DatabaseErrorKind::full, std::string(too_large));
    case ENOMEM:
        return own_error(DatabaseErrorKind::other, std::string(no_memory));
    case EIO:
        return own_error(DatabaseErrorKind::input_output, std::string(not_readable_or_writable));
    case ENAMETOOLONG:
        return own_error(DatabaseErrorKind::other, "The name is too long.");
    default:
        return own_error(DatabaseErrorKind::other, fallback);
    }
}

} // namespace cuedrill::platform::sqlite
