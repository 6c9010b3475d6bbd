#include "platform/sqlite/sqlite_database.h"

#include "platform/sqlite/connection.h"
#include "platform/sqlite/course_check.h"
#include "platform/sqlite/engine_error.h"
#include "platform/sqlite/file_checks.h"
#include "platform/sqlite/new_file.h"
#include "platform/sqlite/sqlite_recordset.h"
#include "platform/sqlite/table_columns.h"

#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

namespace cuedrill::platform::sqlite {
namespace {

/// A look into a file with a write-ahead log makes the log's own file beside it. This one takes it away again when the
/// file is refused and had none before. It must be destroyed after the connection.
class LogFile {
public:
    explicit LogFile(const std::string& file) : m_path(file + "-wal"), m_existed(size() >= 0) {}
    LogFile(const LogFile&) = delete;
    LogFile& operator=(const LogFile&) = delete;
    ~LogFile()
    {
        if (!m_existed && size() == 0)
            ::unlink(m_path.c_str());
    }

    [[nodiscard]] bool existed() const { return m_existed; }

private:
    [[nodiscard]] off_t size() const
    {
        struct stat status {};
        return ::lstat(m_path.c_str(), &status) == 0 ? status.st_size : -1;
    }

    std::string m_path;
    bool m_existed;
};

/// What opens a file that may have a write-ahead log without changing it: no carrying over when the file is closed
/// again, and no index of the log shared with other programs, which would be one more file.
void keep_log_untouched(Connection& connection)
{
    connection.set_checkpoint_at_close(false);
    connection.run("PRAGMA main.locking_mode = EXCLUSIVE");
}

void accept_log(Connection& connection)
{
    connection.set_checkpoint_at_close(true);
    connection.set_up_for_work();
    connection.run("PRAGMA main.locking_mode = NORMAL");
    // The engine gives the lock back at the next look into the file.
    static_cast<void>(connection.query_integer("PRAGMA main.user_version"));
}

/// From now on statements that read these tables do so without their indexes: a look-up in an index of another order
/// misses rows. Temporary views of the same names, which the engine keeps in memory, stand before the tables.
/// @param tables as SQL names them.
void hide_indexes(Connection& connection, const std::vector<std::string>& tables)
{
    for (const std::string& table : tables)
        connection.run("CREATE TEMP VIEW " + table + " AS SELECT * FROM main." + table + " NOT INDEXED");
}

void show_indexes(Connection& connection, const std::vector<std::string>& tables)
{
    for (const std::string& table : tables)
        connection.run("DROP VIEW IF EXISTS temp." + table);
}

/// While it lives, nothing can be written on the connection.
class RowsBeingRead {
public:
    explicit RowsBeingRead(std::shared_ptr<Connection> connection) : m_connection(std::move(connection))
    {
        m_connection->recordset_opened();
    }
    RowsBeingRead(const RowsBeingRead&) = delete;
    RowsBeingRead& operator=(const RowsBeingRead&) = delete;
    ~RowsBeingRead() { m_connection->recordset_closed(); }

private:
    std::shared_ptr<Connection> m_connection;
};

} // namespace

SqliteDatabase::SqliteDatabase(const TextCompare& compare, std::chrono::milliseconds busy_timeout)
    : m_compare(compare), m_busy_timeout(busy_timeout)
{
}

SqliteDatabase::~SqliteDatabase()
{
    close();
}

void SqliteDatabase::require_nothing_open() const
{
    if (m_connection != nullptr)
        throw own_error(DatabaseErrorKind::other, "Another course is still open.");
}

Connection& SqliteDatabase::require_course() const
{
    if (!is_open())
        throw own_error(DatabaseErrorKind::other, "No course is open.");
    return *m_connection;
}

Connection& SqliteDatabase::require_creation() const
{
    if (m_new_file == nullptr)
        throw own_error(DatabaseErrorKind::other, "No course is being created.");
    return *m_connection;
}

void SqliteDatabase::create(const std::string& path)
{
    require_nothing_open();
    m_new_path = new_course_file(path);
    try {
        m_new_file = std::make_unique<TemporaryFile>(folder_of(m_new_path));
        m_connection = std::make_shared<Connection>(m_new_file->path(), m_compare, m_busy_timeout);
        m_connection->allow_any_time();
        m_connection->set_up_for_work();
        m_connection->begin();
    } catch (...) {
        close();
        throw;
    }
}

void SqliteDatabase::append_table(const TableSchema& table)
{
    Connection& connection = require_creation();
    try {
        connection.run(table.table);
        for (const std::string& index : table.indexes)
            connection.run(index);
        m_new_tables.push_back(table);
    } catch (...) {
        close();
        throw;
    }
}

void SqliteDatabase::finish_creation()
{
    Connection& connection = require_creation();
    try {
        connection.run("PRAGMA application_id = " + std::to_string(application_id));
        connection.run("PRAGMA user_version = " + std::to_string(packed_version(m_compare.order_version())));
        connection.commit();
        connection.close();
        // Whatever has come there since the creation began: the engine would take it for changes of the new course.
        require_no_files_of_earlier_course(m_new_path);
        give_name(m_new_file->path(), m_new_path);
        const std::vector<ExpectedTable> expected = expected_tables(m_new_tables, m_compare);
        const std::string file = m_new_path;
        GivenName name(file);
        close();
        open_checked(file, expected);
        name.keep();
    } catch (...) {
        close();
        throw;
    }
}

void SqliteDatabase::open(const std::string& path, std::span<const TableSchema> expected)
{
    require_nothing_open();
    const std::vector<ExpectedTable> tables = expected_tables(expected, m_compare);
    open_checked(existing_course_file(path), tables);
}

void SqliteDatabase::open_checked(const std::string& file, std::span<const ExpectedTable> expected)
{
    try {
        open_within_bounds(file, expected);
    } catch (const DatabaseError& error) {
        // The engine has a share of the memory only, and needs little of it for a course.
        if ((error.code() & 0xFF) != SQLITE_NOMEM && error.code() != SQLITE_IOERR_NOMEM)
            throw;
        throw DatabaseError(DatabaseErrorKind::not_a_course, error.code(),
                            "It would take too much memory to be looked through.");
    }
}

void SqliteDatabase::open_within_bounds(const std::string& file, std::span<const ExpectedTable> expected)
{
    const LogFile log(file);
    const auto connection = std::make_shared<Connection>(file, m_compare, m_busy_timeout);
    const FileHeader header = check_header(*connection);
    const bool with_log = header.has_write_ahead_log || log.existed();
    if (with_log)
        keep_log_untouched(*connection);
    check_contents(*connection, expected);
    if (with_log)
        accept_log(*connection);
    connection->set_up_for_work();
    order_now_or_later(*connection, expected);
    connection->allow_any_time();
    m_connection = connection;
}

/// Without room on the disk a course can still be looked at. Its indexes then keep the order in which they are, and
/// nothing is read or written by them before they are rebuilt.
void SqliteDatabase::order_now_or_later(Connection& connection, std::span<const ExpectedTable> tables)
{
    const std::uint32_t version = m_compare.order_version();
    try {
        bring_to_order(connection, version);
        return;
    } catch (const DatabaseError& error) {
        if (error.kind() != DatabaseErrorKind::full)
            throw;
        m_unstored = error.what();
    }
    std::vector<std::string> names;
    for (const ExpectedTable& table : tables)
        names.push_back(quoted_name(table.schema.name));
    hide_indexes(connection, names);
    connection.put_off([this, &connection, names, version] {
        bring_to_order(connection, version);
        show_indexes(connection, names);
        m_unstored.clear();
    });
}

void SqliteDatabase::close() noexcept
{
    // Cursors and recordsets may still share the connection, so it is closed and not only let go.
    if (m_connection != nullptr)
        m_connection->close();
    m_connection.reset();
    m_new_file.reset();
    m_new_path.clear();
    m_new_tables.clear();
    m_unstored.clear();
}

std::unique_ptr<Recordset> SqliteDatabase::open_recordset(std::string_view sql)
{
    static_cast<void>(require_course());
    return std::make_unique<SqliteRecordset>(m_connection, sql);
}

void SqliteDatabase::read(std::string_view sql, std::span<const Value> values, const RowVisitor& visit)
{
    static_cast<void>(require_course());
    const StatementLease lease(m_connection, sql);
    require_reading(lease.get());
    lease.get().bind_all(values);
    const RowsBeingRead rows(m_connection);
    const std::vector<std::string> columns = lease.get().column_names();
    std::vector<Value> fields(columns.size());
    // The lease is asked each time: a visitor may end the program, which closes the course.
    while (lease.get().step()) {
        for (std::size_t i = 0; i < fields.size(); ++i)
            lease.get().read(static_cast<int>(i), fields[i]);
        if (!visit(Row(columns, fields)))
            return;
    }
}

std::int64_t SqliteDatabase::write(std::string_view sql, std::span<const Value> values)
{
    Connection& connection = require_course();
    connection.require_ready_to_write();
    const StatementLease lease(m_connection, sql);
    Statement& statement = lease.get();
    if (statement.column_count() != 0)
        throw own_error(DatabaseErrorKind::other, "The statement gives rows.");
    statement.bind_all(values);
    const std::int64_t before = connection.total_changes();
    statement.run();
    return connection.total_changes() - before;
}

void SqliteDatabase::begin()
{
    require_course().begin();
}

void SqliteDatabase::commit()
{
    require_course().commit();
}

void SqliteDatabase::rollback() noexcept
{
    if (m_connection != nullptr)
        m_connection->rollback();
}

} // namespace cuedrill::platform::sqlite
