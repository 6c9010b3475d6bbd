#pragma once

#include "bank/list_lines.h"
#include "platform/clock.h"
#include "platform/text_compare.h"
#include "store/course.h"
#include "store/side_fields.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace cuedrill::bank {

/// The records whose text on one side matches a search.
struct FoundRecords {
    ListLines list;
    bool complete = true; ///< false if records were left out because their texts are too long for one list
};

/// The records whose text on `side` contains `text`, ordered by that side's text. "*", "?", "#" and "[" in `text` act
/// as wildcards.
/// @throws platform::DatabaseError of kind `other` when the pattern is malformed
/// @throws common::OutOfRangeError when more records match than a list can hold
/// @throws common::OverflowError when a level does not fit 16 bits
[[nodiscard]] FoundRecords search(store::Course& course, const store::SideFields& side, std::string_view text);

/// The questions that share a word with another question.
struct SimilarQuestions {
    /// The word at which the search stopped, and the reason, in words for the user.
    struct Stop {
        std::string word;
        std::string reason;
    };

    ListLines list;             ///< a question appears once for each shared word, with "*" after that word
    bool complete = true;       ///< false also if the search stopped early
    std::optional<Stop> stop{}; ///< set if the search stopped before the last word was done
};

/// Searches for other questions that share a word with `question`, word by word. Stops at a word that cannot be
/// searched for and after two seconds; what was found until then is kept.
[[nodiscard]] SimilarQuestions similar_questions(store::Course& course, std::string_view question,
                                                 const platform::TextCompare& text_compare, platform::Clock& clock);

/// Whether the word has an apostrophe, which cannot stand unescaped in a pattern.
[[nodiscard]] bool has_apostrophe(std::string_view word);

/// The number of the record that a line leads to: the first record whose text on `side` is that of the line. In a
/// course made elsewhere the number may exceed 16 bits.
/// @throws platform::DatabaseError
[[nodiscard]] std::optional<std::int64_t> record_of_line(store::Course& course, const store::SideFields& side,
                                                         std::string_view line);

} // namespace cuedrill::bank
