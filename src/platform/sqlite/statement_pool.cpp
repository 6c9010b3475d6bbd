#include "platform/sqlite/statement_pool.h"

#include <algorithm>

namespace cuedrill::platform::sqlite {

Statement& StatementPool::take(std::string_view sql)
{
    const auto idle = std::find_if(entries_.begin(), entries_.end(),
                                   [&](const Entry& entry) { return !entry.taken && entry.statement->sql() == sql; });
    if (idle != entries_.end()) {
        idle->taken = true;
        return *idle->statement;
    }
    entries_.push_back({std::make_unique<Statement>(db_, rules_, sql)});
    return *entries_.back().statement;
}

void StatementPool::give_back(Statement& statement) noexcept
{
    statement.reset();
    const auto entry = std::find_if(entries_.begin(), entries_.end(),
                                    [&](const Entry& one) { return one.statement.get() == &statement; });
    if (entry == entries_.end())
        return;
    entry->taken = false;
    entry->last_use = ++uses_;
    drop_oldest_idle();
}

void StatementPool::drop_oldest_idle() noexcept
{
    const auto is_idle = [](const Entry& entry) { return !entry.taken; };
    if (static_cast<std::size_t>(std::count_if(entries_.begin(), entries_.end(), is_idle)) <= most_idle)
        return;
    // Statements in use sort last, so the smallest entry is an idle one.
    const auto oldest = std::min_element(entries_.begin(), entries_.end(), [](const Entry& a, const Entry& b) {
        return std::pair(a.taken, a.last_use) < std::pair(b.taken, b.last_use);
    });
    entries_.erase(oldest);
}

} // namespace cuedrill::platform::sqlite
