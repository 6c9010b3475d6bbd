#include "platform/sqlite/statement.h"

#include "common/errors.h"
#include "platform/sqlite/engine_error.h"

#include <cmath>
#include <limits>
#include <new>
#include <sqlite3.h>

namespace cuedrill::platform::sqlite {
namespace {

int checked_length(std::size_t length)
{
    if (length > static_cast<std::size_t>(std::numeric_limits<int>::max()))
        throw own_error(DatabaseErrorKind::other, "The text is too long for the database.");
    return static_cast<int>(length);
}

/// Rethrows the exception of one of the connection's functions as a DatabaseError with a text for the user.
[[noreturn]] void throw_function_error(const std::exception_ptr& failure)
{
    try {
        std::rethrow_exception(failure);
    } catch (const DatabaseError&) {
        throw;
    } catch (const std::bad_alloc& error) {
        throw own_error(DatabaseErrorKind::other, common::words_of(error));
    } catch (...) {
        throw own_error(DatabaseErrorKind::other, "Texts could not be compared.");
    }
}

} // namespace

Statement::Statement(sqlite3* db, TextRules& rules, std::string_view sql) : db_(db), rules_(rules), sql_(sql)
{
    const char* tail = nullptr;
    const int code = sqlite3_prepare_v3(db, sql_.c_str(), checked_length(sql_.size()), SQLITE_PREPARE_PERSISTENT,
                                        &statement_, &tail);
    if (code != SQLITE_OK)
        fail(code);
    if (statement_ == nullptr)
        throw own_error(DatabaseErrorKind::other, "There is no statement to run.");
    const auto used = static_cast<std::size_t>(tail - sql_.c_str());
    if (sql_.find_first_not_of(" \t\r\n;", used) != std::string::npos) {
        sqlite3_finalize(statement_);
        throw own_error(DatabaseErrorKind::other, "Only one statement can be run at a time.");
    }
}

Statement::~Statement()
{
    sqlite3_finalize(statement_);
}

void Statement::fail(int code) const
{
    constexpr int primary = 0xFF;
    if ((code & primary) == SQLITE_CORRUPT)
        rules_.damage_met = true;
    throw_engine_error(db_, code);
}

bool Statement::reads_only() const
{
    return sqlite3_stmt_readonly(statement_) != 0;
}

void Statement::bind(int position, const Value& value)
{
    int code = SQLITE_OK;
    if (const auto* text = std::get_if<std::string>(&value))
        code = sqlite3_bind_text(statement_, position, text->data(), checked_length(text->size()), SQLITE_STATIC);
    else if (const auto* number = std::get_if<double>(&value))
        code = sqlite3_bind_double(statement_, position, *number);
    else if (const auto* integer = std::get_if<std::int64_t>(&value))
        code = sqlite3_bind_int64(statement_, position, *integer);
    else
        code = sqlite3_bind_null(statement_, position);
    if (code != SQLITE_OK)
        throw_engine_error(db_, code);
}

void Statement::bind_all(std::span<const Value> values)
{
    const auto parameters = static_cast<std::size_t>(sqlite3_bind_parameter_count(statement_));
    if (values.size() != parameters)
        throw own_error(DatabaseErrorKind::other, "The statement takes " + std::to_string(parameters) +
                                                      " values; it was given " + std::to_string(values.size()) + ".");
    int position = 0;
    for (const Value& value : values) {
        // The engine would silently store NaN as null. Infinity is refused with it.
        const auto* const number = std::get_if<double>(&value);
        if (number != nullptr && !std::isfinite(*number))
            throw own_error(DatabaseErrorKind::constraint, "Only finite numbers can be stored.");
        bind(++position, value);
    }
}

bool Statement::step()
{
    rules_.failure = nullptr;
    const int code = sqlite3_step(statement_);
    if (rules_.failure != nullptr) {
        // The engine knows nothing of it, and its row may stand at a wrong place in an index. As after a full disk, the
        // whole transaction is undone.
        if (code == SQLITE_DONE && !reads_only())
            sqlite3_exec(db_, "ROLLBACK", nullptr, nullptr, nullptr);
        throw_function_error(rules_.failure);
    }
    if (code != SQLITE_ROW && code != SQLITE_DONE)
        fail(code);
    return code == SQLITE_ROW;
}

void Statement::run()
{
    const ResetAtExit reset_at_exit(*this);
    while (step()) {
    }
}

void Statement::reset() noexcept
{
    // The result is ignored: it repeats the error of the last step, which has thrown it.
    sqlite3_reset(statement_);
    sqlite3_clear_bindings(statement_);
}

int Statement::column_count() const
{
    return sqlite3_column_count(statement_);
}

std::vector<std::string> Statement::column_names() const
{
    std::vector<std::string> names;
    for (int column = 0; column < column_count(); ++column) {
        const char* const name = sqlite3_column_name(statement_, column);
        names.emplace_back(name == nullptr ? "" : name);
    }
    return names;
}

Value Statement::value(int column) const
{
    Value value;
    read(column, value);
    return value;
}

void Statement::read(int column, Value& into) const
{
    switch (sqlite3_column_type(statement_, column)) {
    case SQLITE_NULL:
        into = std::monostate();
        return;
    case SQLITE_INTEGER:
        into = static_cast<std::int64_t>(sqlite3_column_int64(statement_, column));
        return;
    case SQLITE_FLOAT:
        into = sqlite3_column_double(statement_, column);
        return;
    case SQLITE_TEXT: {
        const void* bytes = sqlite3_column_text(statement_, column);
        const auto length = static_cast<std::size_t>(sqlite3_column_bytes(statement_, column));
        if (bytes == nullptr)
            throw_engine_error(db_, SQLITE_NOMEM);
        if (!std::holds_alternative<std::string>(into))
            into.emplace<std::string>();
        std::get<std::string>(into).assign(static_cast<const char*>(bytes), length);
        return;
    }
    default:
        throw own_error(DatabaseErrorKind::damaged, "It is damaged (a value is neither text nor number).");
    }
}

std::int64_t Statement::integer(int column) const
{
    return sqlite3_column_int64(statement_, column);
}

std::string Statement::text(int column) const
{
    const Value read_value = value(column);
    const auto* text = std::get_if<std::string>(&read_value);
    return text == nullptr ? std::string() : *text;
}

void require_reading(const Statement& statement)
{
    if (!statement.reads_only() || statement.column_count() == 0)
        throw own_error(DatabaseErrorKind::other, "The statement does not read rows.");
}

} // namespace cuedrill::platform::sqlite
