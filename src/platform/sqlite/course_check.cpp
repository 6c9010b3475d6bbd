#include "platform/sqlite/course_check.h"

#include "common/text.h"
#include "platform/sqlite/engine_error.h"
#include "platform/sqlite/text_lengths.h"

#include <charconv>
#include <sqlite3.h>
#include <string_view>

namespace cuedrill::platform::sqlite {
namespace {

constexpr std::string_view magic("SQLite format 3\0", 16);
constexpr std::size_t place_of_write_version = 18;
constexpr std::size_t place_of_read_version = 19;
constexpr std::size_t place_of_user_version = 60;
constexpr std::size_t place_of_application_id = 68;
constexpr unsigned char write_ahead_log_version = 2;

/// What a check of the engine reports for a sound file.
constexpr std::string_view sound_report = "ok";

constexpr unsigned stamp_bits = 24;
constexpr std::uint32_t stamp_mask = (1U << stamp_bits) - 1U;
/// Revision of the program's own rules for ordering texts; `order_version` covers the collation data. Increase it
/// whenever these rules change.
constexpr std::uint32_t own_order_revision = 1;

using Header = std::array<unsigned char, Connection::header_size>;

std::uint32_t number_at(const Header& header, std::size_t place)
{
    std::uint32_t number = 0;
    for (std::size_t i = 0; i < 4; ++i)
        number = (number << 8U) | header[place + i];
    return number;
}

DatabaseError no_course(const std::string& details)
{
    return own_error(DatabaseErrorKind::not_a_course, "It is not a course (" + details + ").");
}

/// FNV-1a hash over the bytes of both numbers, folded to the bits of the stamp; never 0.
std::uint32_t order_stamp(std::uint32_t order_version)
{
    std::uint32_t hash = 2166136261U;
    for (const std::uint32_t number : {own_order_revision, order_version}) {
        for (unsigned shift = 0; shift < 32; shift += 8)
            hash = (hash ^ ((number >> shift) & 0xFFU)) * 16777619U;
    }
    const std::uint32_t folded = (hash >> stamp_bits) ^ (hash & stamp_mask);
    return folded == 0 ? 1 : folded;
}

/// Reads the schema table first, because PRAGMA table_list would load the module of a virtual table and compute the
/// columns of a view.
void check_is_ordinary_table(Connection& connection, const std::string& table)
{
    Statement objects = connection.prepare("SELECT type, rootpage FROM main.sqlite_schema "
                                           "WHERE name = ?1 COLLATE NOCASE AND type IN ('table', 'view')");
    const Value name = table;
    objects.bind(1, name);
    if (!objects.step())
        throw no_course("there is no table " + table);
    if (objects.text(0) != "table" || objects.integer(1) <= 0)
        throw no_course("its " + table + " is not an ordinary table");

    Statement triggers =
        connection.prepare("SELECT 1 FROM main.sqlite_schema WHERE tbl_name = ?1 COLLATE NOCASE AND type = 'trigger'");
    triggers.bind(1, name);
    if (triggers.step())
        throw no_course("its table " + table + " has a trigger");

    Statement tables = connection.prepare("PRAGMA main.table_list(" + quoted_name(table) + ")");
    constexpr int type = 2;
    constexpr int without_row_id = 4;
    constexpr int strict = 5;
    if (!tables.step() || tables.text(type) != "table" || tables.integer(without_row_id) != 0 ||
        tables.integer(strict) == 0)
        throw no_course("its " + table + " is not an ordinary table");
}

bool is_of_kind(const TableColumn& column, const TableColumn& expected)
{
    const bool order_fits = !expected.holds_text() || common::equal_ascii(column.collation, expected.collation);
    return common::equal_ascii(column.type, expected.type) && order_fits && column.numbered == expected.numbered;
}

void check_columns(Connection& connection, const ExpectedTable& expected)
{
    const std::string& table = expected.schema.name;
    const std::vector<TableColumn> columns = connection.columns_of(table);
    const DatabaseError other_columns = no_course("its table " + table + " has other columns");
    const DatabaseError another_key = no_course("its table " + table + " has another key");
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (i >= expected.columns.size() || columns[i].computed ||
            !common::equal_ascii(columns[i].name, expected.columns[i].name))
            throw other_columns;
        if (columns[i].place_in_key != expected.columns[i].place_in_key)
            throw another_key;
    }
    if (columns.size() != expected.columns.size())
        throw other_columns;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (!is_of_kind(columns[i], expected.columns[i]))
            throw no_course("the column " + columns[i].name + " of its table " + table + " is of another kind");
    }
    // A key can declare a collation of its own. It must be that of the column, because rows are stored by their key.
    if (!common::equal_ascii(connection.collation_of_key(table), expected.collation_of_key))
        throw another_key;
}

/// The engine's error code that a report of its integrity check names; 0 if it names none. The check continues after a
/// page that cannot be read, but a failing disk does not mean that the file is damaged.
int code_in(std::string_view report)
{
    constexpr std::string_view mark = "error code=";
    const std::size_t place = report.find(mark);
    int code = 0;
    if (place != std::string_view::npos)
        std::from_chars(report.data() + place + mark.size(), report.data() + report.size(), code);
    return code;
}

/// The first report of the engine's check of the structure; "ok" for a sound file.
std::string quick_report(Connection& connection)
{
    Statement check = connection.prepare("PRAGMA main.quick_check(1)");
    connection.limit_depth(true);
    std::string report = check.step() ? check.text(0) : std::string("no result");
    connection.limit_depth(false);
    return report;
}

void check_soundness(Connection& connection)
{
    const std::string report = quick_report(connection);
    if (report == sound_report)
        return;
    // The first line of a finding only names the database.
    const std::string finding = report.substr(report.find('\n') + 1);
    const int code = code_in(report);
    if ((code & 0xFF) == SQLITE_IOERR || (code & 0xFF) == SQLITE_NOMEM)
        throw database_error(code, 0, finding);
    // For some pages that cannot be read, the report names no error code.
    if (connection.read_failed())
        throw database_error(SQLITE_IOERR_READ, 0, finding);
    throw own_error(DatabaseErrorKind::damaged, "It is damaged (" + finding + ").");
}

/// Whether no statement on the file can be endless, because all of it is the program's own and its structure is sound.
/// Lifts the limit on processor time.
bool needs_no_limit(Connection& connection, std::span<const ExpectedTable> expected)
{
    try {
        if (!has_own_definitions(connection, expected))
            return false;
        // This check visits each page once.
        connection.allow_any_time();
        return quick_report(connection) == sound_report;
    } catch (const DatabaseError&) {
        connection.limit_depth(false);
        return false;
    }
}

/// A report of the engine's full check as a sentence.
std::string sentence_of(const std::string& report)
{
    // With more than one line, the first only says which database is meant.
    const std::string words = report.starts_with("***") ? report.substr(report.find('\n') + 1) : report;
    const std::size_t reason = words.find(": btreeInitPage() returns error code");
    if (reason != std::string::npos)
        return words.substr(0, reason) + " holds something else than a page of a course.";
    const std::size_t missing = words.find(" missing from index ");
    if (missing != std::string::npos && words.starts_with("row "))
        return "R" + words.substr(1, missing - 1) + " is" + words.substr(missing) + ".";
    return words + ".";
}

/// A transaction of `connection`, which prevents changes of the file by other programs; rolled back unless committed.
class LockedFile {
public:
    explicit LockedFile(Connection& connection) : connection_(connection) { connection_.begin(); }
    LockedFile(const LockedFile&) = delete;
    LockedFile& operator=(const LockedFile&) = delete;
    ~LockedFile()
    {
        if (!committed_)
            connection_.rollback();
    }

    void commit()
    {
        connection_.commit();
        committed_ = true;
    }

private:
    Connection& connection_;
    bool committed_ = false;
};

} // namespace

std::int32_t packed_version(std::uint32_t order_version)
{
    return static_cast<std::int32_t>((schema_number << stamp_bits) | order_stamp(order_version));
}

FileHeader check_header(Connection& connection)
{
    const Header header = connection.header();
    for (std::size_t i = 0; i < magic.size(); ++i) {
        if (header[i] != static_cast<unsigned char>(magic[i]))
            throw own_error(DatabaseErrorKind::not_a_course, "It is not a course.");
    }
    const std::uint32_t application = number_at(header, place_of_application_id);
    if (application != application_id && application != 0)
        throw no_course("it belongs to another program");
    if (number_at(header, place_of_user_version) >> stamp_bits > schema_number)
        throw own_error(DatabaseErrorKind::not_a_course, "It was made by a newer version of the program.");
    return {header[place_of_write_version] == write_ahead_log_version ||
            header[place_of_read_version] == write_ahead_log_version};
}

void check_definitions(Connection& connection, std::span<const ExpectedTable> expected)
{
    for (const ExpectedTable& table : expected) {
        check_is_ordinary_table(connection, table.schema.name);
        check_columns(connection, table);
    }
}

void check_tables(Connection& connection, std::span<const ExpectedTable> expected)
{
    // Taking the write lock shows whether the file can be written and is not locked by another program.
    const LockedFile locked(connection);
    check_definitions(connection, expected);
}

void check_contents(Connection& connection, std::span<const ExpectedTable> expected)
{
    const LockedFile locked(connection);
    if (!has_own_definitions(connection, expected)) {
        check_text_lengths(connection, expected);
        check_soundness(connection);
        return;
    }
    // The CHECK constraints of the program's own tables limit the length of texts, and the check for soundness includes
    // them. It visits each page once, however the pages refer to each other, and it comes first: a statement that
    // follows the references of a malformed file may never end. The texts are measured only if one has got round the
    // constraints.
    connection.allow_any_time();
    check_soundness(connection);
    if (has_long_texts(connection, expected))
        check_text_lengths(connection, expected);
}

std::vector<std::string> integrity_findings(Connection& connection, std::span<const ExpectedTable> expected,
                                            std::uint32_t order_version)
{
    std::vector<std::string> findings;
    const auto note = [&](const auto& look) {
        try {
            connection.restart_time();
            look();
        } catch (const DatabaseError& error) {
            if (findings.empty())
                findings.emplace_back(error.what());
        }
        connection.limit_depth(false);
    };
    if (!needs_no_limit(connection, expected))
        connection.limit_time();
    note([&] {
        // Indexes in another order than the present one are no damage: the next opening rebuilds them.
        const bool same_order = connection.query_integer("PRAGMA main.user_version") == packed_version(order_version);
        Statement check =
            connection.prepare(same_order ? "PRAGMA main.integrity_check(100)" : "PRAGMA main.quick_check(100)");
        connection.limit_depth(true);
        while (check.step()) {
            const std::string report = check.text(0);
            if (report != sound_report)
                findings.push_back(sentence_of(report));
        }
    });
    note([&] {
        if (!has_own_definitions(connection, expected) || has_long_texts(connection, expected))
            check_text_lengths(connection, expected);
    });
    return findings;
}

void bring_to_order(Connection& connection, std::uint32_t order_version)
{
    const std::int32_t version = packed_version(order_version);
    if (connection.query_integer("PRAGMA main.user_version") == version)
        return;
    try {
        LockedFile locked(connection);
        connection.run("REINDEX CUEDRILL");
        connection.run("PRAGMA main.user_version = " + std::to_string(version));
        locked.commit();
    } catch (const DatabaseError& error) {
        if (error.kind() != DatabaseErrorKind::constraint)
            throw;
        throw own_error(DatabaseErrorKind::damaged, "It is damaged (two rows have the same key).");
    }
}

} // namespace cuedrill::platform::sqlite
