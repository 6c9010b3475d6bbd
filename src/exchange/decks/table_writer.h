#pragma once

#include "platform/database.h"
#include "platform/files.h"

#include <cstdint>

namespace cuedrill::decks {

/// How to write the records of a course as a table.
struct TableForm {
    char separator = ',';
    bool numbered = false;   ///< whether the number of each record comes first
    bool statistics = false; ///< whether the attempts, fails, level and dates of both directions come last
};

/// Writes each row of `qa` as a row of a table: RFC 4180 with CR LF as line ends, in UTF-8 without mark, behind a
/// header with the names of the columns ("question", "answer" and so on).
///
/// A text is written unchanged, in quotation marks if it needs some. A null is an empty field. A date is "2026-11-15
/// 05:47:17" in local time.
///
/// Requires a new `file` and a recordset "Select * from qa …" at its first row. Does not finish the file.
/// @return the number of records.
/// @throws common::Error when the file cannot be written or a row cannot be read.
std::int64_t write_table(platform::Replacement& file, platform::Recordset& rows, const TableForm& form);

} // namespace cuedrill::decks
