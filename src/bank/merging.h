#pragma once

#include "platform/text_compare.h"
#include "store/course.h"
#include "store/records.h"

#include <cstdint>
#include <vector>

namespace cuedrill::bank {

/// What a merge has done.
struct Merged {
    std::int64_t added = 0;
    std::vector<store::QaRecord> left_out{}; ///< records of the other course that the course has already
};

/// Which records of the other course count as already there.
enum class AlreadyThere {
    both_texts, ///< one with the same question and the same answer
    question    ///< one with the same question
};

/// Adds the records of another course, with their history in both directions, under new numbers and in the order of
/// their numbers there. The records of the course itself stay as they are. Texts are compared without regard to case.
/// Everything is one transaction.
/// @throws common::OverflowError when not all of them fit, or the numbers do not; platform::DatabaseError. Nothing has
/// changed then.
/// @throws store::OutcomeUnknown
[[nodiscard]] Merged merge(store::Course& course, platform::Database& other, AlreadyThere already_there,
                           const platform::TextCompare& text_compare);

/// Gives an empty course all records of another one, with their history, numbered from 1 in the order of their numbers
/// there, and all parameters.
/// @return the number of records.
/// @throws platform::DatabaseError, common::OverflowError; nothing has changed then.
[[nodiscard]] std::int64_t renumber(platform::Database& empty, platform::Database& other);

} // namespace cuedrill::bank
