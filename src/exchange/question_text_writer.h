#pragma once

#include "common/date_time.h"
#include "exchange/return_check.h"
#include "platform/database.h"
#include "platform/files.h"

#include <cstdint>
#include <string>

namespace cuedrill::exchange {

/// How the records of a course are written as a question text.
struct QuestionTextForm {
    std::string course_title; ///< for the first line; its line ends become blanks there
    common::DateTime written; ///< for the first line
    bool numbered = false;    ///< whether a comment with its number, counted from 1, stands before each record
};

/// Writes the columns "q" and "a" of each row as a question text whose lines end with CR LF. Texts stay as they are, a
/// missing one counts as empty. The encoding is Windows-1252 where `decode_text` gets the same text back from it, and
/// UTF-8 with a byte order mark otherwise.
///
/// Requires a new `file` and a recordset at its first row. The file is left unfinished.
/// @param check gets the records.
/// @return the number of records.
/// @throws common::Error when the file cannot be written or a row cannot be read.
std::int64_t write_question_text(platform::Replacement& file, platform::Recordset& rows, const QuestionTextForm& form,
                                 ReturnCheck& check);

} // namespace cuedrill::exchange
