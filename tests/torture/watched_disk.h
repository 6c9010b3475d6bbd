#pragma once

#include "torture/disk_watcher.h"

namespace cuedrill::torture {

/// Puts `watcher` between the program and its disk while an object of this class exists: a VFS that passes all calls on
/// is the engine's default, and the program's own calls of link, unlink and fsync are seen, too (the linker wraps
/// them). One at a time.
class WatchedDisk {
public:
    explicit WatchedDisk(DiskWatcher& watcher);
    WatchedDisk(const WatchedDisk&) = delete;
    WatchedDisk& operator=(const WatchedDisk&) = delete;
    /// All files opened meanwhile must be closed.
    ~WatchedDisk();
};

} // namespace cuedrill::torture
