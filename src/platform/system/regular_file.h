#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <sys/stat.h>

namespace cuedrill::platform::system {

/// Throws the common::Error "Cannot <doing> <path>: <reason>."
[[noreturn]] void fail(std::string_view doing, const std::string& path, const std::string& reason);
/// The same, with the system's message for the errno `code`.
[[noreturn]] void fail(std::string_view doing, const std::string& path, int code);

/// Whether the path can be passed to the system, which would cut it at a zero byte.
[[nodiscard]] bool is_name(const std::string& path);

/// Throws like `fail` unless `status` describes a regular file.
void require_regular(std::string_view doing, const std::string& path, const struct stat& status);

/// An open regular file. Every failure throws common::Error with the path and the reason.
class RegularFile {
public:
    /// Opens `path` without blocking, even on a pipe, and rejects anything but a regular file.
    /// @param doing what the file is opened for, for the error text: a string literal.
    /// @param mode permissions of a file that is created, restricted by the umask.
    [[nodiscard]] static RegularFile open(std::string_view doing, const std::string& path, int flags,
                                          mode_t mode = S_IRUSR | S_IWUSR | S_IRGRP | S_IROTH);

    /// Takes over `handle`, which was opened from `path`.
    RegularFile(std::string_view doing, std::string path, int handle);
    RegularFile(const RegularFile&) = delete;
    RegularFile& operator=(const RegularFile&) = delete;
    ~RegularFile();

    [[nodiscard]] const std::string& path() const { return path_; }
    /// Size in bytes when the file was opened.
    [[nodiscard]] std::uint64_t size() const { return size_; }

    /// Sets the permissions if the file system and the file's owner allow it; otherwise does nothing.
    void try_permissions(mode_t permissions) const;
    /// Reads the next bytes into `buffer`. Returns their number, 0 at the end of the file.
    [[nodiscard]] std::size_t read(std::span<char> buffer) const;
    /// Goes to the byte at `place`, counted from 0.
    void go_to(std::uint64_t place) const;
    /// Writes all bytes. After a short write it tries again, and that attempt reports the reason.
    void write(std::string_view bytes) const;
    /// Truncates the file and goes back to the start.
    void empty() const;
    /// Cuts the file to that size if the system permits it; otherwise does nothing.
    void try_size(std::uint64_t size) const;
    /// fsync: waits until everything written is on the disk.
    void sync() const;
    /// A second handle of the open file, to be closed by the caller; negative if no more handles are available.
    [[nodiscard]] int duplicate_handle() const;
    /// Closes the file. Some file systems report only now that written bytes were lost.
    void close();

private:
    template <typename Operation>
    std::size_t checked(Operation operation) const;

    std::string_view doing_;
    std::string path_;
    int handle_;
    std::uint64_t size_ = 0;
};

} // namespace cuedrill::platform::system
