#pragma once

#include "common/int16.h"
#include "platform/text_compare.h"
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

/// Which of the two texts of a record.
enum class WhichText { question, answer };

/// Why a record was not stored, in words for the user.
struct Refusal {
    std::string words;
    WhichText about = WhichText::question; ///< the text that is to be mended
};

/// Texts that somebody has typed, the asked side first: a new record, or a change of one.
struct Draft {
    std::string question;
    std::string answer;
    std::optional<common::Int16> changed; ///< key of the record that is changed; nothing for a new one
    std::string question_before;          ///< texts of that record as they were loaded
    std::string answer_before;
};

/// Whether a text would not be seen: there is nothing in it but blanks and line ends.
[[nodiscard]] bool is_blank(const std::string& text);

/// The one place where records of the open course come into being, are changed and go. Showing them, and which one is
/// the current one, is up to the caller.
class RecordBank {
public:
    RecordBank(store::Course& course, const platform::TextCompare& text_compare)
        : course_(course), text_compare_(text_compare)
    {
    }

    /// Adds a record of the two texts, `question` on the side that is asked. It never was tested, whatever stands in
    /// the course already.
    /// @return its number; a refusal, with nothing stored, when a text is empty or the course does not take them.
    /// @throws common::OverflowError when the course is full or the record's number does not fit 16 bits
    /// @throws platform::DatabaseError when the course cannot be written at all. Nothing is stored in both cases.
    [[nodiscard]] std::variant<common::Int16, Refusal> Write_QA(const std::string& question, const std::string& answer);

    /// Stores what was typed, unless a text is blank, or another record has the one that no record may share.
    /// @param when_stored_after_all runs when a change turns out to be stored only after an unknown outcome; throws
    ///        nothing.
    /// @return the record's number, or a refusal with nothing stored.
    /// @throws what `insert_record` and `change_record` throw.
    [[nodiscard]] std::variant<common::Int16, Refusal> save(const Draft& draft,
                                                            std::function<void()> when_stored_after_all);

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
    [[nodiscard]] std::optional<Refusal> refusal_of(const Draft& draft);
    [[nodiscard]] bool is_taken(const Draft& draft, const std::string& text, const std::string& before);

    /// A function that tells whether the record has these texts.
    [[nodiscard]] std::function<bool()> texts_are_stored(common::Int16 cnt, const store::QaTexts& texts);

    [[nodiscard]] bool is_changed_to(common::Int16 cnt, const store::QaTexts& texts);

    store::Course& course_;
    const platform::TextCompare& text_compare_;
    std::optional<common::Int16> stored_after_all_;
};

/// Says that a text of `characters` characters is longer than a course can hold; nothing when it fits.
/// @param what "question" or "answer".
std::string too_long_text(std::string_view what, std::size_t characters);

/// Says which of the two texts is longer than a course can hold, and how long it is; nothing when both fit.
std::string too_long(const std::string& question, const std::string& answer);

} // namespace cuedrill::bank
