#pragma once

#include "common/date_time.h"
#include "platform/text_compare.h"
#include "store/records.h"

#include <string>
#include <string_view>

namespace cuedrill::keep {

/// Why texts are kept.
enum class Reason {
    deleted,
    replaced,
    unsaved,
    perhaps_unsaved ///< it is not known whether they are saved
};

/// Texts that leave a course or never reached it.
struct RemovedTexts {
    common::DateTime when;
    std::string course; ///< full path of the course file
    Reason reason = Reason::unsaved;
    store::QaTexts texts; ///< by their columns, as in an exported file; one of them may be empty
};

/// The last line of each entry, a comment. A file that does not end with it was cut off, or changed by somebody else.
inline constexpr std::string_view entry_end = "/*/ ------------------------\r\n";

/// The texts as an entry of "removed.txt": a question text (see docs/question-text.md) in UTF-8 without a mark.
/// Comments before the record say when, why and from which course, and what an import would change about it, if
/// anything. Whatever the texts contain, the entries before and after this one are read as they are.
[[nodiscard]] std::string entry_of(const RemovedTexts& removed, const platform::TextCompare& text_compare);

} // namespace cuedrill::keep
