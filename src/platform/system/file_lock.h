#pragma once

#include <string>

namespace cuedrill::platform::system {

/// The lock by which a file that is being written is told from one that a killed program has left behind. It lasts as
/// long as a handle of the open file that took it, and goes with the process.
class FileLock {
public:
    /// Keeps the lock that was taken with `handle` until the object goes, even when the file is closed before.
    /// @param handle a duplicate of the handle, closed by the object; below 0 for none.
    explicit FileLock(int handle) : handle_(handle) {}
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;
    ~FileLock();

    /// Locks a file that was just created.
    /// @return false when somebody else has locked or removed it meanwhile. On a file system without locks it is true:
    /// nobody can take the file for a leftover there.
    [[nodiscard]] static bool hold(int handle);

    /// Removes the file unless somebody holds it, or it cannot be told.
    static void remove_unless_held(const std::string& path);

private:
    int handle_;
};

} // namespace cuedrill::platform::system
