#pragma once

#include "platform/sqlite/connection.h"

struct sqlite3_backup;

namespace cuedrill::platform::sqlite {

/// The engine's copying of one file into another, page by page.
class Backup {
public:
    /// @throws DatabaseError
    Backup(Connection& source, Connection& target);
    Backup(const Backup&) = delete;
    Backup& operator=(const Backup&) = delete;
    ~Backup() { end(); }

    /// Copies at most `most` pages, all that are left for a negative number. Copies nothing while another program holds
    /// the source.
    /// @return whether all pages are copied.
    /// @throws DatabaseError
    [[nodiscard]] bool step(int most);

    /// Ends it, complete or not.
    void end() noexcept;
    [[nodiscard]] bool ended() const noexcept { return backup_ == nullptr; }

private:
    Connection& source_;
    Connection& target_;
    sqlite3_backup* backup_ = nullptr;
};

} // namespace cuedrill::platform::sqlite
