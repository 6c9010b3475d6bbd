#include "platform/sqlite/sqlite_recordset.h"

#include "common/text.h"
#include "platform/sqlite/engine_error.h"

#include <algorithm>

namespace cuedrill::platform::sqlite {

SqliteRecordset::SqliteRecordset(std::shared_ptr<Connection> connection, std::string_view sql)
    : m_connection(std::move(connection)), m_statement(m_connection, sql)
{
    require_reading(m_statement.get());
    m_names = m_statement.get().column_names();
    move_first();
}

void SqliteRecordset::move_first()
{
    release();
    fetch();
    m_empty = !m_on_row;
}

void SqliteRecordset::move_next()
{
    require_row();
    fetch();
}

void SqliteRecordset::fetch()
{
    bool found = false;
    try {
        found = m_statement.get().step();
    } catch (...) {
        release();
        throw;
    }
    if (!found) {
        release();
    } else if (!m_on_row) {
        m_on_row = true;
        m_connection->recordset_opened();
    }
}

void SqliteRecordset::release() noexcept
{
    if (!m_connection->is_open()) {
        m_on_row = false;
        return;
    }
    m_statement.get().reset();
    if (m_on_row)
        m_connection->recordset_closed();
    m_on_row = false;
}

void SqliteRecordset::require_row() const
{
    static_cast<void>(m_connection->handle());
    if (!m_on_row)
        throw own_error(DatabaseErrorKind::other, "There is no current row.");
}

Value SqliteRecordset::field(std::string_view column) const
{
    const auto found = std::find_if(m_names.begin(), m_names.end(),
                                    [&](const std::string& name) { return common::equal_ascii(name, column); });
    if (found == m_names.end())
        throw own_error(DatabaseErrorKind::other, "The query gives no column " + std::string(column) + ".");
    return field(static_cast<int>(found - m_names.begin()));
}

Value SqliteRecordset::field(int column) const
{
    require_row();
    if (column < 0 || column >= static_cast<int>(m_names.size()))
        throw own_error(DatabaseErrorKind::other, "The query gives no column " + std::to_string(column) + ".");
    return m_statement.get().value(column);
}

} // namespace cuedrill::platform::sqlite
