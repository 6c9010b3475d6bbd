#pragma once

#include "common/date_time.h"
#include "platform/database.h"
#include "platform/files.h"

#include <cstdint>
#include <string>

namespace cuedrill::decks {

/// How to write the records of a course as a vocabulary. Each direction of a course is a language.
struct VocabularyForm {
    std::string course_title{};
    common::DateTime written{};
    std::string question_language = "Question"; ///< its name
    std::string answer_language = "Answer";     ///< its name
};

/// The result of writing a vocabulary.
struct WrittenVocabulary {
    std::int64_t count = 0;   ///< number of records
    std::int64_t changed = 0; ///< number of records with characters that XML cannot hold; U+FFFD stands for them
    std::string lines{};      ///< one line for each of these records
};

/// Writes the columns "q" and "a" of each row as an entry of a vocabulary in the format KVTML 2, in UTF-8. A
/// VocabularyDeck gives back the same texts, byte for byte. Null counts as empty.
///
/// Requires a new `file` and a recordset at its first row. Does not finish the file.
/// @throws common::Error when the file cannot be written or a row cannot be read.
WrittenVocabulary write_vocabulary(platform::Replacement& file, platform::Recordset& rows, const VocabularyForm& form);

} // namespace cuedrill::decks
