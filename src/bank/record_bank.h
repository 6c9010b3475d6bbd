#pragma once

#include "common/int16.h"
#include "store/course.h"
#include "store/records.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace cuedrill::bank {

/// A record that was looked for by one of its texts.
struct FoundRecord {
    std::int64_t cnt = 0; ///< its number; in a course made elsewhere it may need more than 16 bits
    std::string answer{}; ///< text on the answer side
};

/// Why a record was not stored, in words for the user.
struct Refusal {
    std::string words;
};

/// The one place where records of the open course come into being, are changed and go. Showing them, and which one is
/// the current one, is up to the caller.
class RecordBank {
public:
    explicit RecordBank(store::Course& course) : course_(course) {}

    /// Adds a record of the two texts, `question` on the side that is asked. It never was tested, whatever stands in
    /// the course already.
    /// @return its number; a refusal, with nothing stored, when a text is empty or the course does not take them.
    /// @throws common::OverflowError when the course is full or the record's number does not fit 16 bits
    /// @throws platform::DatabaseError when the course cannot be written at all. Nothing is stored in both cases.
    [[nodiscard]] std::variant<common::Int16, Refusal> Write_QA(const std::string& question, const std::string& answer);

    /// Adds a record as `Write_QA` does, and asks nothing about its texts.
    /// @return its number
    /// @throws common::OverflowError, platform::DatabaseError; nothing is stored then.
    /// @throws store::OutcomeUnknown
    [[nodiscard]] common::Int16 insert_record(const std::string& question, const std::string& answer);

    /// The number of the record that was inserted or changed last, where the outcome was unknown at first and it has
    /// turned out to be stored.
    /// @throws store::OutcomeUnknown when that is still unknown.
    [[nodiscard]] std::optional<common::Int16> stored_after_all();

    /// Gives the record other texts. Its counters start at 0 again in both directions; its dates stay.
    /// @param when_stored_after_all runs when that turns out only after an unknown outcome; throws nothing.
    /// @throws platform::DatabaseError, and store::RecordGone when there is no such record; nothing has changed then.
    /// @throws store::OutcomeUnknown
    void change_record(common::Int16 cnt, const std::string& question, const std::string& answer,
                       std::function<void()> when_stored_after_all = {});

    /// Whether the record has these texts and its counters stand at 0, as `change_record` leaves it.
    /// @throws platform::DatabaseError
    [[nodiscard]] bool has_new_texts(common::Int16 cnt, const std::string& question, const std::string& answer);

    /// @param when_stored_after_all as for `change_record`.
    /// @throws platform::DatabaseError, and store::RecordGone when there is no such record; nothing has changed then.
    /// @throws store::OutcomeUnknown
    void delete_record(common::Int16 cnt, std::function<void()> when_stored_after_all = {});

    /// The record that has this text in `column`, "q" or "a", without regard to case; the first where several have it.
    /// @throws platform::DatabaseError
    [[nodiscard]] std::optional<FoundRecord> find(const std::string& column, const std::string& text);

private:
    /// A function that tells whether the record has these texts.
    [[nodiscard]] std::function<bool()> texts_are_stored(common::Int16 cnt, const store::QaTexts& texts);

    [[nodiscard]] bool is_changed_to(common::Int16 cnt, const store::QaTexts& texts);

    store::Course& course_;
    std::optional<common::Int16> stored_after_all_;
};

/// Says that a text of `characters` characters is longer than a course can hold; nothing when it fits.
/// @param what "question" or "answer".
std::string too_long_text(std::string_view what, std::size_t characters);

/// Says which of the two texts is longer than a course can hold, and how long it is; nothing when both fit.
std::string too_long(const std::string& question, const std::string& answer);

} // namespace cuedrill::bank
