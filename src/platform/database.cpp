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
    if (column < 0 || static_cast<std::size_t>(column) >= m_values.size())
        throw no_column(std::to_string(column));
    return m_values[static_cast<std::size_t>(column)];
}

const Value& Row::field(std::string_view column) const
{
    for (std::size_t i = 0; i < m_columns.size(); ++i) {
        if (common::equal_ascii(m_columns[i], column))
            return m_values[i];
    }
    throw no_column(std::string(column));
}

Row Rows::Iterator::operator*() const
{
    return (*m_rows)[m_place];
}

void Rows::add(const Row& row)
{
    if (m_size++ == 0)
        m_columns.assign(row.columns().begin(), row.columns().end());
    m_values.insert(m_values.end(), row.values().begin(), row.values().end());
}

Row Rows::operator[](std::size_t place) const
{
    if (place >= m_size)
        throw DatabaseError(DatabaseErrorKind::other, 0, "There is no current row.");
    return {m_columns, std::span(m_values).subspan(place * m_columns.size(), m_columns.size())};
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
