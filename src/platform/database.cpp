#include "platform/database.h"

#include "common/text.h"

namespace cuedrill::platform {

namespace {

DatabaseError no_column(const std::string& column)
{
    return {DatabaseErrorKind::other, 0, "The query gives no column " + column + "."};
}

} // namespace

const Value& Row::field(int column) const
{
    if (column < 0 || static_cast<std::size_t>(column) >= values_.size())
        throw no_column(std::to_string(column));
    return values_[static_cast<std::size_t>(column)];
}

const Value& Row::field(std::string_view column) const
{
    for (std::size_t i = 0; i < columns_.size(); ++i) {
        if (common::equal_ascii(columns_[i], column))
            return values_[i];
    }
    throw no_column(std::string(column));
}

Row Rows::Iterator::operator*() const
{
    return (*rows_)[place_];
}

void Rows::add(const Row& row)
{
    if (size_++ == 0)
        columns_.assign(row.columns().begin(), row.columns().end());
    values_.insert(values_.end(), row.values().begin(), row.values().end());
}

Row Rows::operator[](std::size_t place) const
{
    if (place >= size_)
        throw DatabaseError(DatabaseErrorKind::other, 0, "There is no current row.");
    return {columns_, std::span(values_).subspan(place * columns_.size(), columns_.size())};
}

Rows Database::query(std::string_view sql, std::span<const Value> values)
{
    Rows rows;
    read(sql, values, [&](const Row& row) {
        rows.add(row);
        return true;
    });
    return rows;
}

Rows Database::query(std::string_view sql, std::initializer_list<Value> values)
{
    return query(sql, std::span(values.begin(), values.size()));
}

void Database::query(std::string_view sql, std::span<const Value> values, const RowVisitor& visit)
{
    read(sql, values, visit);
}

std::int64_t Database::execute(std::string_view sql, std::span<const Value> values)
{
    return write(sql, values);
}

std::int64_t Database::execute(std::string_view sql, std::initializer_list<Value> values)
{
    return write(sql, std::span(values.begin(), values.size()));
}

} // namespace cuedrill::platform
