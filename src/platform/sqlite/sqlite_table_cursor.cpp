#include "platform/sqlite/sqlite_table_cursor.h"

#include "platform/sqlite/engine_error.h"

namespace cuedrill::platform::sqlite {

SqliteTableCursor::SqliteTableCursor(std::shared_ptr<Connection> connection, std::shared_ptr<const TableLayout> layout)
    : m_connection(std::move(connection)), m_layout(std::move(layout)), m_key(m_layout->primary_column()),
      m_row(m_layout->columns().size()), m_new_row(m_layout->columns().size()), m_spare(m_layout->columns().size())
{
    move_first();
}

void SqliteTableCursor::set_index(std::string_view name)
{
    static_cast<void>(m_connection->handle());
    m_key = m_layout->index_column(name);
    for (auto& query : m_queries)
        query.reset();
}

bool SqliteTableCursor::load(CursorQuery query, const Value* first, const Value* second)
{
    auto& lease = m_queries[static_cast<std::size_t>(query)];
    if (!lease)
        lease.emplace(m_connection, cursor_query_text(query, *m_layout, m_key));
    Statement& statement = lease->get();
    const ResetAtExit reset_at_exit(statement);
    if (first != nullptr)
        statement.bind(1, *first);
    if (second != nullptr)
        statement.bind(2, *second);
    if (!statement.step())
        return false;
    const int count = static_cast<int>(m_spare.size());
    for (int i = 0; i < count; ++i)
        statement.read(i, m_spare[static_cast<std::size_t>(i)]);
    m_row_id = statement.integer(count);
    std::swap(m_row, m_spare);
    m_place = Place::on_row;
    m_bof = false;
    m_eof = false;
    return true;
}

Value SqliteTableCursor::tie_value() const
{
    return m_layout->primary_column() ? m_row[*m_layout->primary_column()] : Value(m_row_id);
}

// One comparison of (key, tie) would be shorter, but it is never true of a null key; two look-ups in the index are
// just as quick and treat null as what it is, the smallest key.
bool SqliteTableCursor::load_next()
{
    const Value tie = tie_value();
    const Value key = m_key ? m_row[*m_key] : tie;
    if (keys_repeat() && load(CursorQuery::next_among_equal, &key, &tie))
        return true;
    if (std::holds_alternative<std::monostate>(key))
        return load(CursorQuery::first_with_key);
    return load(CursorQuery::first_greater, &key);
}

bool SqliteTableCursor::load_previous()
{
    const Value tie = tie_value();
    const Value key = m_key ? m_row[*m_key] : tie;
    if (keys_repeat() && load(CursorQuery::previous_among_equal, &key, &tie))
        return true;
    if (std::holds_alternative<std::monostate>(key))
        return false;
    return load(CursorQuery::last_less, &key) || (keys_repeat() && load(CursorQuery::last_without_key));
}

void SqliteTableCursor::stand_outside(bool before_first)
{
    const bool empty = !load(CursorQuery::first);
    m_place = Place::nowhere;
    m_bof = before_first || empty;
    m_eof = !before_first || empty;
}

void SqliteTableCursor::seek(const Value& key)
{
    cancel();
    m_no_match = !load(CursorQuery::equal, &key);
    if (!m_no_match)
        return;
    m_place = Place::nowhere;
    m_bof = false;
    m_eof = false;
}

void SqliteTableCursor::move_first()
{
    cancel();
    if (!load(CursorQuery::first))
        stand_outside(true);
}

void SqliteTableCursor::move_last()
{
    cancel();
    if (!load(CursorQuery::last))
        stand_outside(false);
}

void SqliteTableCursor::move_next()
{
    cancel();
    if (m_bof && !m_eof)
        return move_first();
    if (m_place == Place::nowhere)
        require_row();
    if (!load_next())
        stand_outside(false);
}

void SqliteTableCursor::move_previous()
{
    cancel();
    if (m_eof && !m_bof)
        return move_last();
    if (m_place == Place::nowhere)
        require_row();
    if (!load_previous())
        stand_outside(true);
}

void SqliteTableCursor::require_row() const
{
    static_cast<void>(m_connection->handle());
    if (m_place != Place::on_row)
        throw own_error(DatabaseErrorKind::other, "There is no current row.");
}

void SqliteTableCursor::require_progress() const
{
    static_cast<void>(m_connection->handle());
    if (m_progress == Progress::none)
        throw own_error(DatabaseErrorKind::other, "No row is being written.");
}

Value SqliteTableCursor::field(std::string_view column) const
{
    const std::size_t position = m_layout->column(column);
    if (m_progress != Progress::none) {
        require_progress();
        return m_new_row[position];
    }
    require_row();
    return m_row[position];
}

void SqliteTableCursor::add_new()
{
    m_connection->require_ready_to_write();
    for (Value& value : m_new_row)
        value = std::monostate();
    m_set = 0;
    m_progress = Progress::adding;
}

void SqliteTableCursor::edit()
{
    m_connection->require_ready_to_write();
    require_row();
    cancel();
    const Value id = m_row_id;
    if (!load(CursorQuery::by_row_id, &id)) {
        m_place = Place::deleted;
        throw own_error(DatabaseErrorKind::other, "The row is no longer there.");
    }
    m_new_row = m_row;
    m_set = 0;
    m_progress = Progress::editing;
}

void SqliteTableCursor::set(std::string_view column, Value value)
{
    require_progress();
    const std::size_t position = m_layout->column(column);
    m_new_row[position] = m_layout->stored_form(position, std::move(value));
    m_set |= ColumnSet{1} << position;
}

std::string SqliteTableCursor::writing_text() const
{
    const bool adding = m_progress == Progress::adding;
    std::string names;
    std::string marks;
    int parameter = 0;
    for (std::size_t i = 0; i < m_layout->columns().size(); ++i) {
        if (!is_set(i))
            continue;
        const std::string separator = parameter == 0 ? "" : ", ";
        const std::string mark = std::string("?").append(std::to_string(++parameter));
        names += separator + quoted_name(m_layout->columns()[i].name) + (adding ? "" : " = " + mark);
        marks += separator + mark;
    }
    const std::string table = quoted_name(m_layout->name());
    if (!adding)
        return "UPDATE " + table + " SET " + names + " WHERE " + row_id_column + " = ?" + std::to_string(parameter + 1);
    if (parameter == 0)
        return "INSERT INTO " + table + " DEFAULT VALUES";
    return "INSERT INTO " + table + " (" + names + ") VALUES (" + marks + ")";
}

Statement& SqliteTableCursor::writing_statement()
{
    auto& statements = m_progress == Progress::adding ? m_inserts : m_updates;
    auto found = statements.find(m_set);
    if (found == statements.end())
        found = statements.emplace(m_set, StatementLease(m_connection, writing_text())).first;
    return found->second.get();
}

void SqliteTableCursor::write_row()
{
    Statement& statement = writing_statement();
    const ResetAtExit reset_at_exit(statement);
    int parameter = 0;
    for (std::size_t i = 0; i < m_new_row.size(); ++i) {
        if (is_set(i))
            statement.bind(++parameter, m_new_row[i]);
    }
    if (m_progress == Progress::editing)
        statement.bind(parameter + 1, Value(m_row_id));
    statement.step();
}

void SqliteTableCursor::update()
{
    require_progress();
    m_connection->require_ready_to_write();
    if (m_progress == Progress::adding) {
        write_row();
        m_row_id = m_connection->last_row_id();
        if (m_layout->automatic_column())
            m_new_row[*m_layout->automatic_column()] = m_row_id;
    } else if (m_set != 0) {
        write_row();
        if (m_connection->changes() == 0)
            throw own_error(DatabaseErrorKind::other, "The row is no longer there.");
    }
    std::swap(m_row, m_new_row);
    m_progress = Progress::none;
    m_place = Place::on_row;
    m_bof = false;
    m_eof = false;
}

void SqliteTableCursor::cancel()
{
    m_progress = Progress::none;
}

void SqliteTableCursor::delete_row()
{
    m_connection->require_ready_to_write();
    require_row();
    cancel();
    if (!m_delete)
        m_delete.emplace(m_connection,
                         "DELETE FROM " + quoted_name(m_layout->name()) + " WHERE " + row_id_column + " = ?1");
    Statement& statement = m_delete->get();
    const ResetAtExit reset_at_exit(statement);
    const Value id = m_row_id;
    statement.bind(1, id);
    statement.step();
    m_place = Place::deleted;
    if (m_connection->changes() == 0)
        throw own_error(DatabaseErrorKind::other, "The row is no longer there.");
}

} // namespace cuedrill::platform::sqlite
