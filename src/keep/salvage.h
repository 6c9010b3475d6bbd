#pragma once

#include "platform/database.h"

#include <cstdint>
#include <vector>

namespace cuedrill::keep {

/// Numbers of records, both ends included.
struct NumberRange {
    std::int64_t first = 0;
    std::int64_t last = 0;

    friend bool operator==(const NumberRange&, const NumberRange&) = default;
};

/// What a salvage has brought over.
struct Salvaged {
    std::int64_t whole = 0;        ///< records with all of their history
    std::int64_t from_indexes = 0; ///< records that were put together from the indexes: without attempts and failures
    std::vector<NumberRange> refused; ///< read, but not as a course may hold them
    std::vector<NumberRange> lost;    ///< not readable; not every number need have had a record
    bool all_parameters = true;

    [[nodiscard]] std::int64_t records() const { return whole + from_indexes; }
    [[nodiscard]] bool complete() const
    {
        return from_indexes == 0 && refused.empty() && lost.empty() && all_parameters;
    }
};

/// Copies what can be read of a damaged course into an empty one: the records with their numbers and statistics, and
/// the parameters. Around pages that cannot be read it goes by the numbers of the records; what is on such a page is
/// put together from the indexes as far as they go.
/// @throws platform::DatabaseError when the new course cannot be written, or when the damaged one cannot be read for
/// another reason than damage.
[[nodiscard]] Salvaged salvage(platform::Database& damaged, platform::Database& fresh);

} // namespace cuedrill::keep
