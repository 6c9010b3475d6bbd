#include "store/course.h"

#include "common/number_format.h"
#include "common/text.h"
#include "store/schema.h"

#include <algorithm>
#include <utility>

namespace cuedrill::store {

using platform::DatabaseError;
using platform::DatabaseErrorKind;
using platform::Value;

void Course::apri_db()
{
    database_.open(db_path, course_tables());
    open_ = true;
}

void Course::close() noexcept
{
    in_use_ = false;
    unsettled.reset();
    last_verdict.reset();
    open_ = false;
    database_.close();
}

void Course::forget_last_verdict_on(common::Int16 cnt)
{
    if (last_verdict && last_verdict->cnt == cnt)
        last_verdict.reset();
}

void Course::tell_stored(const StoredChange& change) const
{
    if (when_stored)
        when_stored(change);
}

void Course::start_counting(common::DateTime from)
{
    counted_from_ = from;
    in_use_ = true;
}

void Course::set_side_fields()
{
    SideMapping mapping = store::set_side_fields(params.invert);
    Q_FIELD = std::move(mapping.Q_FIELD);
    A_FIELD = std::move(mapping.A_FIELD);
}

std::int64_t Course::count_records()
{
    return single_number(database_, "Select count(0) from qa");
}

double Course::elapsed_seconds(common::DateTime now) const
{
    return static_cast<double>(std::max<std::int64_t>(common::seconds_between(counted_from_, now), 0));
}

std::string words_about(const common::Error& error, const Course& course)
{
    const auto* const failure = dynamic_cast<const DatabaseError*>(&error);
    if (failure == nullptr || failure->kind() == DatabaseErrorKind::other ||
        failure->kind() == DatabaseErrorKind::constraint)
        return error.what();
    return "The course " + course.db_path + " could not be read or written.\r\n\r\n" + error.what();
}

std::int64_t single_number(platform::Database& database, const std::string& sql)
{
    const auto recordset = database.open_recordset(sql);
    if (recordset->eof())
        return 0;
    const Value value = recordset->field(0);
    const auto* const number = std::get_if<std::int64_t>(&value);
    return number != nullptr ? *number : 0;
}

double nz(const Value& value)
{
    if (const auto* const whole = std::get_if<std::int64_t>(&value))
        return static_cast<double>(*whole);
    if (const auto* const number = std::get_if<double>(&value))
        return *number;
    if (std::holds_alternative<std::string>(value))
        throw DatabaseError(DatabaseErrorKind::damaged, 0, "It is damaged (a text stands where a number must stand).");
    return 0;
}

common::Int16 nz_int16(const Value& value, std::string_view what)
{
    if (const auto* const whole = std::get_if<std::int64_t>(&value))
        return common::to_int16(*whole, what);
    return common::to_int16(nz(value), what);
}

std::optional<common::DateTime> stored_date(const Value& value)
{
    if (std::holds_alternative<std::monostate>(value))
        return std::nullopt;
    return common::DateTime::from_day_number(nz(value));
}

std::string stored_text(const Value& value)
{
    if (const auto* const text = std::get_if<std::string>(&value))
        return *text;
    return std::holds_alternative<std::monostate>(value) ? std::string() : common::format_general(nz(value));
}

std::string stored_text(Value&& value)
{
    if (auto* const text = std::get_if<std::string>(&value))
        return std::move(*text);
    return stored_text(std::as_const(value));
}

std::string shown_answer(std::string answer)
{
    if (answer.ends_with(common::cr_lf))
        answer.resize(answer.size() - common::cr_lf.size());
    return answer;
}

} // namespace cuedrill::store
