#pragma once

#include "common/date_time.h"
#include "common/int16.h"
#include "platform/database.h"
#include "store/side_fields.h"

#include <cstdint>
#include <optional>
#include <string>

namespace cuedrill::store {

/// One row of `qa`. A counter that is null reads as 0, a text that is null as empty; a date that is null is absent.
///
/// The numbers are as wide as the file can hold them: a course made elsewhere may have numbers beyond 16 bits, which
/// can be shown, though not drilled.
struct QaRecord {
    std::int64_t cnt = 0;
    std::string q{};
    std::string a{};
    std::int64_t q_attempts = 0;
    std::int64_t a_attempts = 0;
    std::int64_t q_fails = 0;
    std::int64_t a_fails = 0;
    std::int64_t q_successes = 0;
    std::int64_t a_successes = 0;
    std::optional<common::DateTime> q_date_last_test{};
    std::optional<common::DateTime> a_date_last_test{};
    std::optional<common::DateTime> q_date_last_show{};
    std::optional<common::DateTime> a_date_last_show{};

    friend bool operator==(const QaRecord&, const QaRecord&) = default;
};

/// One side of a record.
struct RecordSide {
    std::string text{};
    std::int64_t attempts = 0;
    std::int64_t fails = 0;
    std::int64_t successes = 0; ///< the level
    std::optional<common::DateTime> date_last_test{};
    std::optional<common::DateTime> date_last_show{};
};

/// The side of `record` that the columns of `fields` belong to.
RecordSide side_of(const QaRecord& record, const SideFields& fields);

/// The texts of a record by their columns.
struct QaTexts {
    std::string q{};
    std::string a{};
};

/// The texts of the asked side and of the answer side, by their columns.
QaTexts texts_by_column(const SideFields& asked, std::string question, std::string answer);

/// Values that a verdict stores on the asked side.
struct StoredVerdict {
    common::Int16 successes = 0;
    common::Int16 attempts = 0;
    std::optional<common::Int16> fails; ///< absent: the column stays as it is, be it null
    common::DateTime tested;            ///< date of the last test and of the last show
};

/// A row of "Select * from qa …".
/// @throws platform::DatabaseError
QaRecord record_of(const platform::Row& row);

// Every function below may throw platform::DatabaseError. After any error nothing is written. Those that change a
// record give the number of rows that they have changed: 0 when the record is not there, as after another program's
// deletion.

/// The record of that number.
[[nodiscard]] std::optional<QaRecord> find_record(platform::Database& database, std::int64_t cnt);

/// The record with the lowest number among those whose `column` (`q` or `a`) holds `text`, without regard to case.
[[nodiscard]] std::optional<QaRecord> first_with_text(platform::Database& database, const std::string& column,
                                                      const std::string& text);

/// The number for a new record: one above the largest that a record of the course has or has ever had. It may exceed 16
/// bits. Read it in the transaction that adds the record; until that ends, the numbers after it are free, too.
[[nodiscard]] std::int64_t next_cnt(platform::Database& database);

/// Adds a record of that number whose counters are 0 and whose dates are null.
/// @return `cnt`
/// @throws common::OverflowError when the number does not fit 16 bits
common::Int16 insert_record(platform::Database& database, std::int64_t cnt, const QaTexts& texts);

/// Adds a record with its history, as another course holds it.
/// @param row a row of "Select * from qa …"; its number is replaced by `cnt`.
/// @return `cnt`
/// @throws common::OverflowError when the number does not fit 16 bits
common::Int16 insert_with_history(platform::Database& database, std::int64_t cnt, const platform::Row& row);

/// Gives a record other texts and leaves its history as it is.
[[nodiscard]] std::int64_t correct_texts(platform::Database& database, std::int64_t cnt, const QaTexts& texts);

/// Gives a record other texts. Its six counters become 0; its dates stay.
[[nodiscard]] std::int64_t change_texts(platform::Database& database, std::int64_t cnt, const QaTexts& texts);

[[nodiscard]] std::int64_t delete_record(platform::Database& database, std::int64_t cnt);

[[nodiscard]] std::int64_t store_verdict(platform::Database& database, std::int64_t cnt, const SideFields& asked,
                                         const StoredVerdict& verdict);

[[nodiscard]] std::int64_t stamp_last_show(platform::Database& database, std::int64_t cnt, const SideFields& asked,
                                           common::DateTime shown);

[[nodiscard]] std::int64_t set_level(platform::Database& database, std::int64_t cnt, const SideFields& asked,
                                     common::Int16 level);

} // namespace cuedrill::store
