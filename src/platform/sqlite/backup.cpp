#include "platform/sqlite/backup.h"

#include "platform/sqlite/engine_error.h"

#include <sqlite3.h>
#include <utility>

namespace cuedrill::platform::sqlite {

Backup::Backup(Connection& source, Connection& target)
    : source_(source), target_(target), backup_(sqlite3_backup_init(target.handle(), "main", source.handle(), "main"))
{
    if (backup_ == nullptr)
        throw_engine_error(target.handle(), sqlite3_errcode(target.handle()));
}

bool Backup::step(int most)
{
    if (ended())
        throw own_error(DatabaseErrorKind::other, "The course is closed.");
    const int code = sqlite3_backup_step(backup_, most);
    switch (code & 0xFF) {
    case SQLITE_DONE:
        return true;
    case SQLITE_OK:
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return false;
    default:
        // Which of the two files it was is in the code only. What cannot be written is the copy, with its own errno.
        throw_engine_error(
            (code & 0xFF) == SQLITE_IOERR || (code & 0xFF) == SQLITE_FULL ? target_.handle() : source_.handle(), code);
    }
}

void Backup::end() noexcept
{
    if (!ended())
        sqlite3_backup_finish(std::exchange(backup_, nullptr));
}

} // namespace cuedrill::platform::sqlite
