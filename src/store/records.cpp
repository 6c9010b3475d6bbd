#include "store/records.h"

#include "store/course.h"
#include "store/schema.h"

#include <utility>
#include <vector>

namespace cuedrill::store {
namespace {

using platform::Value;

constexpr const char* first_column = "q";

std::int64_t whole_number(const Value& value)
{
    const auto* const number = std::get_if<std::int64_t>(&value);
    return number != nullptr ? *number : static_cast<std::int64_t>(nz(value));
}

std::optional<QaRecord> first_record(const platform::Rows& rows)
{
    if (rows.empty())
        return std::nullopt;
    return record_of(rows[0]);
}

void check_texts(const QaTexts& texts)
{
    check_length("q", texts.q);
    check_length("a", texts.a);
}

} // namespace

RecordSide side_of(const QaRecord& record, const SideFields& fields)
{
    if (fields.text == first_column)
        return {.text = record.q,
                .attempts = record.q_attempts,
                .fails = record.q_fails,
                .successes = record.q_successes,
                .date_last_test = record.q_date_last_test,
                .date_last_show = record.q_date_last_show};
    return {.text = record.a,
            .attempts = record.a_attempts,
            .fails = record.a_fails,
            .successes = record.a_successes,
            .date_last_test = record.a_date_last_test,
            .date_last_show = record.a_date_last_show};
}

QaTexts texts_by_column(const SideFields& asked, std::string question, std::string answer)
{
    if (asked.text == first_column)
        return {.q = std::move(question), .a = std::move(answer)};
    return {.q = std::move(answer), .a = std::move(question)};
}

QaRecord record_of(const platform::Row& row)
{
    // Opening a course checks that its columns are in this order.
    return {.cnt = whole_number(row.field(0)),
            .q = stored_text(row.field(1)),
            .a = stored_text(row.field(2)),
            .q_attempts = whole_number(row.field(3)),
            .a_attempts = whole_number(row.field(4)),
            .q_fails = whole_number(row.field(5)),
            .a_fails = whole_number(row.field(6)),
            .q_successes = whole_number(row.field(7)),
            .a_successes = whole_number(row.field(8)),
            .q_date_last_test = stored_date(row.field(9)),
            .a_date_last_test = stored_date(row.field(10)),
            .q_date_last_show = stored_date(row.field(11)),
            .a_date_last_show = stored_date(row.field(12))};
}

std::optional<QaRecord> find_record(platform::Database& database, std::int64_t cnt)
{
    return first_record(database.query("Select * from qa where cnt=?1", {cnt}));
}

std::optional<QaRecord> first_with_text(platform::Database& database, const std::string& column,
                                        const std::string& text)
{
    // The comparison uses the column's collation, as the column's index does, so this is a look-up in the index. Its
    // entries with equal texts are ordered by cnt.
    return first_record(database.query("Select * from qa where " + column + "=?1 order by cnt limit 1", {text}));
}

std::int64_t next_cnt(platform::Database& database)
{
    // The largest number of the engine has no next one. It stands for itself: it does not fit 16 bits either.
    return whole_number(database
                            .query("Select min(max(ifnull((Select max(cnt) from qa), 0), "
                                   "ifnull((Select cast(seq as integer) from sqlite_sequence where name='qa'), 0)), "
                                   "9223372036854775806) + 1")[0]
                            .field(0));
}

common::Int16 insert_record(platform::Database& database, std::int64_t cnt, const QaTexts& texts)
{
    check_texts(texts);
    const common::Int16 number = common::to_int16(cnt, "record number");
    database.execute("Insert into qa (cnt, q, a, q_attempts, a_attempts, q_fails, a_fails, q_successes, a_successes) "
                     "values (?1, ?2, ?3, 0, 0, 0, 0, 0, 0)",
                     {cnt, texts.q, texts.a});
    return number;
}

common::Int16 insert_with_history(platform::Database& database, std::int64_t cnt, const platform::Row& row)
{
    const common::Int16 number = common::to_int16(cnt, "record number");
    std::vector<Value> values(row.values().begin(), row.values().end());
    values.at(0) = cnt;
    database.execute("Insert into qa values (?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8, ?9, ?10, ?11, ?12, ?13)", values);
    return number;
}

std::int64_t correct_texts(platform::Database& database, std::int64_t cnt, const QaTexts& texts)
{
    check_texts(texts);
    return database.execute("Update qa set q=?2, a=?3 where cnt=?1", {cnt, texts.q, texts.a});
}

std::int64_t change_texts(platform::Database& database, std::int64_t cnt, const QaTexts& texts)
{
    check_texts(texts);
    return database.execute("Update qa set q=?2, a=?3, q_attempts=0, a_attempts=0, q_fails=0, a_fails=0, "
                            "q_successes=0, a_successes=0 where cnt=?1",
                            {cnt, texts.q, texts.a});
}

std::int64_t delete_record(platform::Database& database, std::int64_t cnt)
{
    return database.execute("Delete from qa where cnt=?1", {cnt});
}

std::int64_t store_verdict(platform::Database& database, std::int64_t cnt, const SideFields& asked,
                           const StoredVerdict& verdict)
{
    const Value fails = verdict.fails ? Value(std::int64_t{*verdict.fails}) : Value();
    return database.execute(
        "Update qa set " + asked.successes + "=?2, " + asked.attempts + "=?3, " + asked.fails + "=coalesce(?4, " +
            asked.fails + "), " + asked.date_last_test + "=?5, " + asked.date_last_show + "=?5 where cnt=?1",
        {cnt, std::int64_t{verdict.successes}, std::int64_t{verdict.attempts}, fails, verdict.tested.day_number()});
}

std::int64_t stamp_last_show(platform::Database& database, std::int64_t cnt, const SideFields& asked,
                             common::DateTime shown)
{
    return database.execute("Update qa set " + asked.date_last_show + "=?2 where cnt=?1", {cnt, shown.day_number()});
}

std::int64_t set_level(platform::Database& database, std::int64_t cnt, const SideFields& asked, common::Int16 level)
{
    return database.execute("Update qa set " + asked.successes + "=?2 where cnt=?1", {cnt, std::int64_t{level}});
}

} // namespace cuedrill::store
