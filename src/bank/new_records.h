#pragma once

#include "common/int16.h"
#include "store/course.h"
#include "store/course_transaction.h"
#include "store/records.h"
#include "store/stored_change.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace cuedrill::bank {

/// Which of the two texts of a record.
enum class WhichText { question, answer };

/// Why a record was not stored, in words for the user.
struct Refusal {
    std::string words;
    WhichText about = WhichText::question; ///< the text that is to be mended
};

/// Records that are added to the open course in one transaction. They are rolled back unless `commit` stores them, and
/// `Course::record_count` counts them from then on.
class NewRecords {
public:
    /// Begins the transaction.
    /// @throws platform::DatabaseError
    /// @param told_as what the course tells when they are stored: `added` or `imported`.
    explicit NewRecords(store::Course& course, store::StoredChange::What told_as = store::StoredChange::What::added)
        : course_(course), told_as_(told_as), transaction_(course)
    {
    }

    /// Adds a record with these texts, `question` on the asked side. It starts as never tested, even if the course
    /// already has the same texts.
    /// @return the record number; or a refusal when a text is empty or the course rejects the texts.
    /// @throws what `add` throws.
    [[nodiscard]] std::variant<common::Int16, Refusal> Write_QA(const std::string& question, const std::string& answer);

    /// Adds a record as `Write_QA` does, without checking its texts. After an error the records before it can still be
    /// committed, unless the engine has undone them; then `commit` throws.
    /// @return the record number
    /// @throws common::OverflowError when the course is full or the record number does not fit 16 bits
    /// @throws platform::DatabaseError. The record is not added in either case.
    common::Int16 add(const std::string& question, const std::string& answer);

    /// Stores the records.
    /// @param when_stored_after_all called if they turn out to be stored after an unknown outcome; must not throw.
    /// @throws platform::DatabaseError when none of them is stored
    /// @throws store::OutcomeUnknown
    void commit(std::function<void()> when_stored_after_all = {});

    /// How many there are.
    [[nodiscard]] std::int64_t count() const { return count_; }
    /// Number of the last one; 0 if there is none.
    [[nodiscard]] common::Int16 last_cnt() const { return last_cnt_; }

private:
    store::Course& course_;
    store::StoredChange::What told_as_;
    store::CourseTransaction transaction_;
    std::optional<std::int64_t> next_cnt_; ///< number of the next one; read from the course for the first one
    std::int64_t count_ = 0;
    common::Int16 last_cnt_ = 0;
    store::QaTexts last_texts_;
};

/// A message if a text of `characters` characters is longer than a course can hold; otherwise empty.
/// @param what "question" or "answer".
std::string too_long_text(std::string_view what, std::size_t characters);

/// A message saying which of the two texts is longer than a course can hold, and its length; empty if both fit.
std::string too_long(const std::string& question, const std::string& answer);

} // namespace cuedrill::bank
