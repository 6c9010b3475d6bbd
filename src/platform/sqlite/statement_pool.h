#pragma once

#include "platform/sqlite/statement.h"

#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

namespace cuedrill::platform::sqlite {

/// Caches the prepared statements of one connection by their SQL texts.
class StatementPool {
public:
    /// The most statements that are kept while nobody uses them.
    static constexpr std::size_t most_idle = 32;

    StatementPool(sqlite3* db, TextRules& rules) : db_(db), rules_(rules) {}

    /// A statement for this SQL text that nobody else gets until it is given back.
    /// @throws DatabaseError if it cannot be prepared.
    [[nodiscard]] Statement& take(std::string_view sql);
    void give_back(Statement& statement) noexcept;
    [[nodiscard]] std::size_t size() const { return entries_.size(); }

private:
    struct Entry {
        std::unique_ptr<Statement> statement;
        bool taken = true;
        std::uint64_t last_use = 0;
    };

    void drop_oldest_idle() noexcept;

    sqlite3* db_;
    TextRules& rules_;
    std::vector<Entry> entries_;
    std::uint64_t uses_ = 0;
};

} // namespace cuedrill::platform::sqlite
