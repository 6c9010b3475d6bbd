#pragma once

#include "platform/sqlite/statement.h"

#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

namespace cuedrill::platform::sqlite {

/// The prepared statements of one connection, kept by their texts for the next use.
class StatementPool {
public:
    /// The most statements that wait for another use.
    static constexpr std::size_t most_idle = 32;

    StatementPool(sqlite3* db, TextRules& rules) : db_(db), rules_(rules) {}

    /// A statement that nobody else uses until it is given back.
    /// @throws DatabaseError when it cannot be prepared.
    [[nodiscard]] Statement& take(std::string_view sql);
    void give_back(Statement& statement) noexcept;
    /// All statements, those in use included, are gone afterwards.
    void clear() noexcept { entries_.clear(); }
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
