#pragma once

#include "bank/new_records.h"
#include "platform/text_compare.h"
#include "store/course.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace cuedrill::bank {

/// Other texts for a record; what is absent stays.
struct Correction {
    std::int64_t cnt = 0;
    std::optional<std::string> q{};
    std::optional<std::string> a{};
};

/// Mends the texts of a record without touching its history, as for a slip of the pen.
/// @param before_loss gets the texts that are replaced, within the transaction; may be empty.
/// @return why nothing was changed: a text is blank or too long, or another record has the question; std::nullopt when
/// the correction is stored.
/// @throws store::RecordGone if there is no such record; platform::DatabaseError. Nothing has changed then.
/// @throws store::OutcomeUnknown
[[nodiscard]] std::optional<Refusal>
correct_record(store::Course& course, const Correction& correction, const platform::TextCompare& text_compare,
               const std::function<void(const store::QaTexts& texts)>& before_loss);

} // namespace cuedrill::bank
