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

/// The records whose text on one side matches what was looked for.
struct FoundRecords {
    ListLines list;
    bool complete = true; ///< false when records were left out because their texts are too long for one list
};

/// The records whose text on `side` holds `text`, in the order of these texts. "*", "?", "#" and "[" in `text` have
/// their meaning in a pattern.
/// @throws platform::DatabaseError of kind `other` when the pattern is malformed
/// @throws common::OutOfRangeError when more records are found than a list can hold
/// @throws common::OverflowError when a level does not fit 16 bits
[[nodiscard]] FoundRecords search(store::Course& course, const store::SideFields& side, std::string_view text);

/// The questions that have a word of another one.
struct SimilarQuestions {
    /// The word that the search has ended at, and why, in words for the user.
    struct Stop {
        std::string word;
        std::string reason;
    };

    ListLines list;             ///< a question stands here once for each such word, marked by "*" behind it
    bool complete = true;       ///< false also when the search has ended at a word
    std::optional<Stop> stop{}; ///< before the last word was looked for
};

/// Looks for the other questions with a word of `question`, word by word. It ends at a word that cannot be looked for
/// and after two seconds; what was found until then is kept.
[[nodiscard]] SimilarQuestions similar_questions(store::Course& course, std::string_view question,
                                                 const platform::TextCompare& text_compare, platform::Clock& clock);

/// Whether the word cannot stand in a pattern as it is.
[[nodiscard]] bool has_apostrophe(std::string_view word);

/// The number of the record that a line leads to: the first one with its text on `side`. In a course made elsewhere it
/// may need more than 16 bits.
/// @throws platform::DatabaseError
[[nodiscard]] std::optional<std::int64_t> record_of_line(store::Course& course, const store::SideFields& side,
                                                         std::string_view line);

} // namespace cuedrill::bank
