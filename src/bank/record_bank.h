#pragma once

#include "bank/new_records.h"
#include "common/int16.h"
#include "platform/text_compare.h"
#include "store/course.h"
#include "store/records.h"
#include "store/stored_change.h"

#include <functional>
#include <optional>
#include <string>
#include <variant>

namespace cuedrill::bank {

/// A record found by one of its texts.
struct FoundRecord {
    std::int64_t cnt = 0; ///< record number; a course made elsewhere may exceed 16 bits
    std::string answer{}; ///< text on the answer side
};

/// Texts that somebody has typed, the asked side first: a new record, or a change of one.
struct Draft {
    std::string question;
    std::string answer;
    std::optional<common::Int16> changed; ///< key of the record that is changed; nothing for a new one
    std::string question_before;          ///< texts of that record as they were loaded
    std::string answer_before;
};

/// How a course loses the texts of a record.
enum class Loss { deleted, replaced };

/// Whether a text would not be seen: there is nothing in it but blanks and line ends.
[[nodiscard]] bool is_blank(const std::string& text);

/// Inserts, changes and deletes the records of the open course. Displaying them and choosing the current record is the
/// caller's task.
class RecordBank {
public:
    RecordBank(store::Course& course, const platform::TextCompare& text_compare)
        : course_(course), text_compare_(text_compare)
    {
    }

    /// Stores what was typed, unless a text is blank, or another record has the one that no record may share.
    /// @param when_stored_after_all runs when a change turns out to be stored only after an unknown outcome; throws
    ///        nothing.
    /// @return the record's number, or a refusal with nothing stored.
    /// @throws what `insert_record` and `change_record` throw.
    [[nodiscard]] std::variant<common::Int16, Refusal> save(const Draft& draft,
                                                            std::function<void()> when_stored_after_all);

    /// Adds one record as `NewRecords::add` does, and stores it.
    /// @return the record number
    /// @throws common::OverflowError, platform::DatabaseError; nothing is stored then.
    /// @throws store::OutcomeUnknown
    [[nodiscard]] common::Int16 insert_record(const std::string& question, const std::string& answer);

    /// The number of the record inserted or changed last, if the outcome was unknown at first and the record turned out
    /// to be stored; otherwise std::nullopt.
    /// @throws store::OutcomeUnknown while it is still unknown.
    [[nodiscard]] std::optional<common::Int16> stored_after_all();

    /// Replaces the texts of a record. Its counters restart at 0 in both directions; its dates stay.
    /// @param when_stored_after_all called if the change turns out to be stored after an unknown outcome; must not
    /// throw.
    /// @throws platform::DatabaseError, and store::RecordGone when there is no such record; nothing has changed then.
    /// @throws store::OutcomeUnknown
    void change_record(common::Int16 cnt, const std::string& question, const std::string& answer,
                       std::function<void()> when_stored_after_all = {});

    /// Whether the record has these texts and counters at 0, as `change_record` leaves it.
    /// @throws platform::DatabaseError
    [[nodiscard]] bool has_new_texts(common::Int16 cnt, const std::string& question, const std::string& answer);

    /// @param when_stored_after_all as for `change_record`.
    /// @throws platform::DatabaseError, and store::RecordGone when there is no such record; nothing has changed then.
    /// @throws store::OutcomeUnknown
    void delete_record(common::Int16 cnt, std::function<void()> when_stored_after_all = {});

    /// The first record with this text in `column` ("q" or "a"), ignoring case.
    /// @throws platform::DatabaseError
    [[nodiscard]] std::optional<FoundRecord> find(const std::string& column, const std::string& text);

    /// Called with the stored texts of a record, by their columns, before a deletion of it or a change of at least one
    /// of them is committed. It runs within the transaction, so it may neither throw nor show a box nor use the course.
    std::function<void(Loss loss, const store::QaTexts& texts)> before_loss;

private:
    [[nodiscard]] std::optional<store::QaTexts> texts_to_lose(common::Int16 cnt);
    [[nodiscard]] std::optional<Refusal> refusal_of(const Draft& draft);
    [[nodiscard]] bool is_taken(const Draft& draft, const std::string& text, const std::string& before);

    void tell_stored(store::StoredChange::What what, common::Int16 cnt) const;
    [[nodiscard]] bool is_changed_to(common::Int16 cnt, const store::QaTexts& texts);

    store::Course& course_;
    const platform::TextCompare& text_compare_;
    std::optional<common::Int16> stored_after_all_;
};

} // namespace cuedrill::bank
