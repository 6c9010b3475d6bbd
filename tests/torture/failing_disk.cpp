#include "torture/failing_disk.h"

#include "torture/effort.h"

#include <sqlite3.h>

namespace cuedrill::torture {

FailingDisk::FailingDisk() : swallows_writes_(is_broken("swallow_writes"))
{
}

void FailingDisk::arm(const Fault& fault, int point, bool from_then_on)
{
    fault_ = fault;
    calls_left_ = point;
    from_then_on_ = from_then_on;
    armed_ = true;
    has_failed_ = false;
}

bool FailingDisk::fails_now(const FileCall& call, bool late)
{
    if (!armed_ || call.kind != fault_.kind || late != fault_.late)
        return false;
    const bool fails = calls_left_ == 0 || (calls_left_ < 0 && from_then_on_);
    if (calls_left_ >= 0)
        --calls_left_;
    has_failed_ = has_failed_ || fails;
    return fails;
}

std::optional<int> FailingDisk::before(const FileCall& call)
{
    if (!fails_now(call, false))
        return std::nullopt;
    return swallows_writes_ && call.kind == CallKind::write ? SQLITE_OK : fault_.code;
}

int FailingDisk::after(const FileCall& call)
{
    return fails_now(call, true) ? fault_.code : SQLITE_OK;
}

const std::array<Fault, 13>& all_faults()
{
    static constexpr std::array<Fault, 13> faults{{{"read", CallKind::read, SQLITE_IOERR_READ, false},
                                                   {"write", CallKind::write, SQLITE_IOERR_WRITE, false},
                                                   {"full", CallKind::write, SQLITE_FULL, false},
                                                   {"late_write", CallKind::write, SQLITE_IOERR_WRITE, true},
                                                   {"truncate", CallKind::truncate, SQLITE_IOERR_TRUNCATE, false},
                                                   {"sync", CallKind::sync, SQLITE_IOERR_FSYNC, false},
                                                   {"late_sync", CallKind::sync, SQLITE_IOERR_FSYNC, true},
                                                   {"open", CallKind::open, SQLITE_CANTOPEN, false},
                                                   {"remove", CallKind::remove, SQLITE_IOERR_DELETE, false},
                                                   {"folder_sync", CallKind::remove, SQLITE_IOERR_DIR_FSYNC, true},
                                                   {"busy", CallKind::lock, SQLITE_BUSY, false},
                                                   {"lock", CallKind::lock, SQLITE_IOERR_LOCK, false},
                                                   {"unlock", CallKind::unlock, SQLITE_IOERR_UNLOCK, true}}};
    return faults;
}

} // namespace cuedrill::torture
