#include "platform/sqlite/sqlite_database.h"

#include "platform/sqlite/aid_indexes.h"
#include "platform/sqlite/connection.h"
#include "platform/sqlite/course_check.h"
#include "platform/sqlite/engine_error.h"
#include "platform/sqlite/file_checks.h"
#include "platform/sqlite/new_file.h"
#include "platform/sqlite/sqlite_course_copy.h"
#include "platform/sqlite/sqlite_recordset.h"
#include "platform/sqlite/table_columns.h"
#include "platform/sqlite/text_lengths.h"

#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

namespace cuedrill::platform::sqlite {
namespace {

/// The write-ahead log next to a file. Reading a file in write-ahead log mode creates an empty log. The destructor
/// removes it if there was none before. It must be destroyed after the connection.
class LogFile {
public:
    explicit LogFile(const std::string& file) : path_(file + "-wal"), existed_(size() >= 0) {}
    LogFile(const LogFile&) = delete;
    LogFile& operator=(const LogFile&) = delete;
    ~LogFile()
    {
        if (!existed_ && size() == 0)
            ::unlink(path_.c_str());
    }

    [[nodiscard]] bool existed() const { return existed_; }

private:
    [[nodiscard]] off_t size() const
    {
        struct stat status {};
        return ::lstat(path_.c_str(), &status) == 0 ? status.st_size : -1;
    }

    std::string path_;
    bool existed_;
};

/// Makes sure that reading a file does not change it or its write-ahead log: the log is not copied into the file on
/// closing, and exclusive mode keeps the index of the log in memory instead of in another file.
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
    // The engine releases the exclusive lock only when it next reads the file.
    static_cast<void>(connection.query_integer("PRAGMA main.user_version"));
}

/// Makes statements read these tables without their indexes, because a look-up in an index with another text order
/// misses rows. It creates temporary views (in memory) that have the names of the tables and take precedence over them.
/// @param tables quoted names.
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

/// Prevents writing through the connection while an object of this class exists.
class RowsBeingRead {
public:
    explicit RowsBeingRead(std::shared_ptr<Connection> connection) : connection_(std::move(connection))
    {
        connection_->recordset_opened();
    }
    RowsBeingRead(const RowsBeingRead&) = delete;
    RowsBeingRead& operator=(const RowsBeingRead&) = delete;
    ~RowsBeingRead() { connection_->recordset_closed(); }

private:
    std::shared_ptr<Connection> connection_;
};

} // namespace

SqliteDatabase::SqliteDatabase(const TextCompare& compare, std::chrono::milliseconds busy_timeout,
                               SoundFiles* sound_files)
    : compare_(compare), busy_timeout_(busy_timeout), sound_files_(sound_files)
{
}

SqliteDatabase::~SqliteDatabase()
{
    close();
}

void SqliteDatabase::require_nothing_open() const
{
    if (connection_ != nullptr)
        throw own_error(DatabaseErrorKind::other, "Another course is still open.");
}

Connection& SqliteDatabase::require_course() const
{
    if (!is_open())
        throw own_error(DatabaseErrorKind::other, "No course is open.");
    return *connection_;
}

Connection& SqliteDatabase::require_creation() const
{
    if (new_file_ == nullptr)
        throw own_error(DatabaseErrorKind::other, "No course is being created.");
    return *connection_;
}

void SqliteDatabase::create(const std::string& path)
{
    require_nothing_open();
    new_path_ = new_course_file(path);
    try {
        new_file_ = std::make_unique<TemporaryFile>(folder_of(new_path_));
        connection_ = std::make_shared<Connection>(new_file_->path(), compare_, busy_timeout_);
        connection_->allow_any_time();
        connection_->set_up_for_work();
        connection_->begin();
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
        for (const AidIndex& aid : table.aids)
            connection.run(aid.statement);
        new_tables_.push_back(table);
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
        connection.run("PRAGMA user_version = " + std::to_string(packed_version(compare_.order_version())));
        connection.commit();
        connection.close();
        // Check again for files that have appeared since the creation began: the engine would apply them to the course.
        require_no_files_of_earlier_course(new_path_);
        const std::vector<ExpectedTable> expected = expected_tables(new_tables_, compare_);
        const std::string file = new_path_;
        give_name(new_file_->path(), file);
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
    const std::vector<ExpectedTable> tables = expected_tables(expected, compare_);
    open_checked(existing_course_file(path), tables);
}

void SqliteDatabase::open_for_reading(const std::string& path, std::span<const TableSchema> expected)
{
    require_nothing_open();
    const std::string file = existing_course_file(path);
    const LogFile log(file);
    const auto connection = std::make_shared<Connection>(file, compare_, busy_timeout_);
    if (check_header(*connection).has_write_ahead_log || log.existed())
        throw own_error(
            DatabaseErrorKind::other,
            "Another program keeps changes of it in a second file. Open it once, so that they are carried over.");
    connection->tolerate_damage();
    check_definitions(*connection, expected_tables(expected, compare_));
    connection->run("PRAGMA main.query_only = ON");
    checked_ = false;
    path_ = file;
    connection_ = connection;
}

std::vector<std::string> SqliteDatabase::findings(std::span<const TableSchema> expected)
{
    return integrity_findings(require_course(), expected_tables(expected, compare_), compare_.order_version());
}

void SqliteDatabase::open_checked(const std::string& file, std::span<const ExpectedTable> expected)
{
    try {
        open_within_bounds(file, expected);
    } catch (const DatabaseError& error) {
        // The engine's heap is limited (see connection.cpp), and a course needs only a small part of it.
        if ((error.code() & 0xFF) != SQLITE_NOMEM && error.code() != SQLITE_IOERR_NOMEM)
            throw;
        throw DatabaseError(DatabaseErrorKind::not_a_course, error.code(),
                            "It would take too much memory to be looked through.");
    }
}

void SqliteDatabase::open_within_bounds(const std::string& file, std::span<const ExpectedTable> expected)
{
    checked_ = false;
    unstored_.clear();
    const LogFile log(file);
    const auto connection = std::make_shared<Connection>(file, compare_, busy_timeout_);
    const FileHeader header = check_header(*connection);
    const bool with_log = header.has_write_ahead_log || log.existed();
    if (with_log)
        keep_log_untouched(*connection);
    check_tables(*connection, expected);
    path_ = file;
    check_now_or_later(*connection, expected, with_log);
    if (with_log)
        accept_log(*connection);
    connection->set_up_for_work();
    order_now_or_later(*connection, expected);
    // If the disk was too full to rebuild the indexes, create no others; the next opening does that.
    if (unstored_.empty())
        make_aid_indexes(*connection, expected);
    connection_ = connection;
}

void SqliteDatabase::check_now_or_later(Connection& connection, std::span<const ExpectedTable> tables, bool with_log)
{
    const bool may_be_later = sound_files_ != nullptr && !with_log;
    // Read before the mark and before the check: a later commit of another program is one that they have not seen.
    checked_version_ = connection.data_version();
    checked_ = may_be_later && sound_files_->is_noted(path_, connection.mark());
    if (checked_) {
        connection.allow_any_time();
        return;
    }
    const auto check = [this, &connection, tables = std::vector(tables.begin(), tables.end())] {
        checked_version_ = connection.data_version();
        check_contents(connection, tables);
        connection.allow_any_time();
        checked_ = true;
    };
    // With definitions made elsewhere, even a small file may take long to read, and its texts may have any length.
    if (may_be_later && has_own_definitions(connection, tables))
        connection.put_off(check);
    else
        check();
}

/// A malformed file can make any statement endless, so each reading statement has its own limit of processor time until
/// the file has been checked.
void SqliteDatabase::bound_time(Connection& connection) const
{
    if (!checked_)
        connection.restart_time();
}

void SqliteDatabase::finish_check()
{
    Connection& connection = require_course();
    if (!checked_)
        connection.require_ready_to_write();
}

/// Notes the file only if it is as it was when it was checked, except for this connection's own changes, and no
/// statement has met damage since.
void SqliteDatabase::note_if_sound() noexcept
{
    if (sound_files_ == nullptr || !checked_ || connection_->damage_met())
        return;
    try {
        const std::string mark = connection_->mark();
        if (connection_->data_version() == checked_version_)
            sound_files_->note(path_, mark);
    } catch (const std::exception&) {
        return;
    }
}

/// Rebuilds the indexes if the text order has changed. With a full disk the course can still be read: the rebuild is
/// then deferred until the next write, and no statement uses the indexes before it.
void SqliteDatabase::order_now_or_later(Connection& connection, std::span<const ExpectedTable> tables)
{
    const std::uint32_t version = compare_.order_version();
    try {
        bring_to_order(connection, version);
        return;
    } catch (const DatabaseError& error) {
        // Nothing may be put off in place of the check.
        if (error.kind() != DatabaseErrorKind::full || !checked_)
            throw;
        unstored_ = error.what();
    }
    std::vector<std::string> names;
    for (const ExpectedTable& table : tables)
        names.push_back(quoted_name(table.schema.name));
    hide_indexes(connection, names);
    connection.put_off([this, &connection, names, version] {
        bring_to_order(connection, version);
        show_indexes(connection, names);
        unstored_.clear();
    });
}

std::string SqliteDatabase::mark()
{
    return require_course().mark();
}

std::unique_ptr<CourseCopy> SqliteDatabase::begin_copy(const std::string& path, std::span<const TableSchema> expected)
{
    return begin_copy(path, expected, TemporaryFile::private_mode);
}

std::unique_ptr<CourseCopy> SqliteDatabase::begin_copy(const std::string& path, std::span<const TableSchema> expected,
                                                       mode_t mode)
{
    static_cast<void>(require_course());
    return std::make_unique<SqliteCourseCopy>(connection_, path, compare_, expected, mode);
}

void SqliteDatabase::close() noexcept
{
    // Recordsets may still share ownership of the connection, so close it explicitly.
    if (connection_ != nullptr) {
        note_if_sound();
        connection_->close();
    }
    connection_.reset();
    path_.clear();
    checked_ = false;
    new_file_.reset();
    new_path_.clear();
    new_tables_.clear();
    unstored_.clear();
}

std::unique_ptr<Recordset> SqliteDatabase::open_recordset(std::string_view sql)
{
    bound_time(require_course());
    return std::make_unique<SqliteRecordset>(connection_, sql);
}

void SqliteDatabase::read(std::string_view sql, std::span<const Value> values, const RowVisitor& visit)
{
    bound_time(require_course());
    const StatementLease lease(connection_, sql);
    require_reading(lease.get());
    lease.get().bind_all(values);
    const RowsBeingRead rows(connection_);
    const std::vector<std::string> columns = lease.get().column_names();
    std::vector<Value> fields(columns.size());
    // Calls lease.get() each time, which throws if the visitor has closed the course.
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
    const StatementLease lease(connection_, sql);
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
    if (connection_ != nullptr)
        connection_->rollback();
}

} // namespace cuedrill::platform::sqlite
