#pragma once

#include "platform/database.h"
#include "platform/sqlite/engine_functions.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

namespace cuedrill::platform::sqlite {

/// A prepared statement. Functions that are not noexcept may throw DatabaseError.
class Statement {
public:
    /// Prepares the single statement in `sql`. A blank text is an error, and so is anything but blanks and semicolons
    /// after the statement.
    /// `db` and `rules` must outlive the object.
    Statement(sqlite3* db, TextRules& rules, std::string_view sql);
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;
    ~Statement();

    [[nodiscard]] const std::string& sql() const { return sql_; }
    /// Whether it writes nothing to the file.
    [[nodiscard]] bool reads_only() const;

    /// Binds the parameter at `position` (from 1). A text is not copied: it must live until `reset`.
    void bind(int position, const Value& value);
    /// Binds all parameters in order. Texts are not copied.
    /// @throws DatabaseError if the number of values is not that of the parameters, or a number is not finite.
    void bind_all(std::span<const Value> values);
    /// Goes to the next row; false after the last one.
    bool step();
    /// Runs the statement to its end, ignoring rows, and resets it.
    void run();
    /// Goes back to the start, clears the bound values and releases the statement's locks.
    void reset() noexcept;

    [[nodiscard]] int column_count() const;
    [[nodiscard]] std::vector<std::string> column_names() const;
    /// The column (from 0) of the current row.
    [[nodiscard]] Value value(int column) const;
    /// The same, into an existing value, whose memory is reused.
    void read(int column, Value& into) const;
    [[nodiscard]] std::int64_t integer(int column) const;
    [[nodiscard]] std::string text(int column) const;

private:
    [[noreturn]] void fail(int code) const;

    sqlite3* db_;
    TextRules& rules_;
    std::string sql_;
    sqlite3_stmt* statement_ = nullptr;
};

/// @throws DatabaseError if the statement returns no rows, or if it writes.
void require_reading(const Statement& statement);

/// Resets a statement at the end of a scope, also after an error.
class ResetAtExit {
public:
    explicit ResetAtExit(Statement& statement) : statement_(statement) {}
    ResetAtExit(const ResetAtExit&) = delete;
    ResetAtExit& operator=(const ResetAtExit&) = delete;
    ~ResetAtExit() { statement_.reset(); }

private:
    Statement& statement_;
};

} // namespace cuedrill::platform::sqlite
