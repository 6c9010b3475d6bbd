#pragma once

#include <string>

namespace cuedrill::platform::system {

/// The lock that marks a file as being written, so that it is not taken for the leftover of a killed program. It lasts
/// as long as a handle of the open file description that took it, and ends with the process.
class FileLock {
public:
    /// Keeps the lock that was taken with `handle` while this object lives, even after the file is closed.
    /// @param handle a duplicate of the handle, closed by this object; negative for none.
    explicit FileLock(int handle) : handle_(handle) {}
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;
    ~FileLock();

    /// Locks a file that was just created.
    /// @return false if somebody else has locked or removed it meanwhile. True on a file system without locks: nobody
    /// can take the file for a leftover there.
    [[nodiscard]] static bool hold(int handle);

    /// Removes the file unless somebody holds the lock or the lock cannot be checked.
    static void remove_unless_held(const std::string& path);

private:
    int handle_;
};

} // namespace cuedrill::platform::system
