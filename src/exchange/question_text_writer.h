#pragma once

#include "common/date_time.h"
#include "exchange/return_check.h"
#include "platform/database.h"
#include "platform/files.h"

#include <cstdint>
#include <string>

namespace cuedrill::exchange {

/// How to write the records of a course as a question text.
struct QuestionTextForm {
    std::string course_title; ///< for the first line; line ends become blanks there
    common::DateTime written; ///< for the first line
    bool numbered = false;    ///< whether a comment with its number, counted from 1, precedes each record
};

/// Writes the columns "q" and "a" of each row as a question text with CR LF line ends. Texts are written unchanged;
/// null counts as empty. The encoding is Windows-1252 if the text survives decoding from it, otherwise UTF-8 with a
/// byte order mark.
///
/// Requires a new `file` and a recordset at its first row. Does not finish the file.
/// @param check receives the records.
/// @return the number of records.
/// @throws common::Error when the file cannot be written or a row cannot be read.
std::int64_t write_question_text(platform::Replacement& file, platform::Recordset& rows, const QuestionTextForm& form,
                                 ReturnCheck& check);

} // namespace cuedrill::exchange
