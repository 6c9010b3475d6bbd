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
/// The same with the system's words for an errno.
[[noreturn]] void fail(std::string_view doing, const std::string& path, int code);

/// Whether the path can be given to the system, which would take one with a zero byte for the shorter one before it.
[[nodiscard]] bool is_name(const std::string& path);

/// Throws, as `fail` does, unless `status` is that of a regular file.
void require_regular(std::string_view doing, const std::string& path, const struct stat& status);

/// An open regular file. Whatever fails throws common::Error with the path and the reason.
class RegularFile {
public:
    /// Opens `path`, also where that is a pipe whose other end nobody holds, and refuses what is no regular file.
    /// @param doing what the file is opened for, for the error text: a literal.
    [[nodiscard]] static RegularFile open(std::string_view doing, const std::string& path, int flags);

    /// Takes over `handle`, which was opened from `path`.
    RegularFile(std::string_view doing, std::string path, int handle);
    RegularFile(const RegularFile&) = delete;
    RegularFile& operator=(const RegularFile&) = delete;
    ~RegularFile();

    [[nodiscard]] const std::string& path() const { return path_; }
    /// Size in bytes when the file was opened.
    [[nodiscard]] std::uint64_t size() const { return size_; }

    /// Gives the file these permissions where its file system and its owner allow it.
    void try_permissions(mode_t permissions) const;
    /// Reads on into `buffer`. The number of bytes, 0 at the end of the file.
    [[nodiscard]] std::size_t read(std::span<char> buffer) const;
    /// Goes back to the first byte.
    void rewind() const;
    /// In one piece where the system takes it so; the next try after a shortened one tells the reason.
    void write(std::string_view bytes) const;
    /// Drops the contents and goes back to the start.
    void empty() const;
    /// Waits until all that was written is on the disk.
    void sync() const;
    /// A second handle of the open file, for the caller to close; below 0 where there can be no more.
    [[nodiscard]] int duplicate_handle() const;
    /// Some file systems tell only now that written bytes were lost.
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
