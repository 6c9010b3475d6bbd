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

/// A prepared statement. Every function but `reset` may throw DatabaseError.
class Statement {
public:
    /// Prepares the single statement in `sql`; a blank text or anything behind the statement is an error.
    /// `db` and `rules` must outlive the object.
    Statement(sqlite3* db, TextRules& rules, std::string_view sql);
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;
    ~Statement();

    [[nodiscard]] const std::string& sql() const { return sql_; }
    /// Whether it writes nothing to the file.
    [[nodiscard]] bool reads_only() const;

    /// Gives the parameter at `position` (from 1) its value. A text is not copied: it must live until `reset`.
    void bind(int position, const Value& value);
    /// Gives each parameter its value. Texts are not copied.
    /// @throws DatabaseError when there are more values or fewer than parameters, or a number is not finite.
    void bind_all(std::span<const Value> values);
    /// Runs to the next row; false behind the last one.
    bool step();
    /// Runs a statement that gives no rows, and resets it.
    void run();
    /// Back to the start, without any bound value. Ends its hold on the database.
    void reset() noexcept;

    [[nodiscard]] int column_count() const;
    [[nodiscard]] std::vector<std::string> column_names() const;
    /// The column (from 0) of the current row.
    [[nodiscard]] Value value(int column) const;
    /// The same, into a value that is used again.
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

/// @throws DatabaseError when the statement gives no rows, or writes too.
void require_reading(const Statement& statement);

/// Resets a statement at the end of a scope, so that none stays open after an error.
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
