#include "platform/system/system_files.h"

#include "common/errors.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace cuedrill::platform::system {
namespace {

[[noreturn]] void fail(std::string_view doing, const std::string& path, const std::string& reason)
{
    throw common::Error("Cannot " + std::string(doing) + " " + path + ": " + reason + ".");
}

[[noreturn]] void fail(std::string_view doing, const std::string& path, int code)
{
    fail(doing, path, std::generic_category().message(code));
}

/// The system would take a name with a zero byte for the shorter name before it.
bool is_name(const std::string& path)
{
    return !path.empty() && path.find('\0') == std::string::npos;
}

bool status_of(const std::string& path, struct stat& status)
{
    return is_name(path) && ::stat(path.c_str(), &status) == 0;
}

/// An open regular file.
class RegularFile {
public:
    /// @param doing what the file is opened for, for the error text.
    RegularFile(std::string_view doing, const std::string& path, int flags) : m_doing(doing), m_path(path)
    {
        if (!is_name(path))
            fail(EINVAL);
        // Without O_NONBLOCK, opening a pipe waits for its other end.
        m_handle =
            ::open(path.c_str(), flags | O_CLOEXEC | O_NONBLOCK | O_NOCTTY, S_IRUSR | S_IWUSR | S_IRGRP | S_IROTH);
        if (m_handle < 0)
            fail(errno);
        struct stat status {};
        const int failure = ::fstat(m_handle, &status) != 0 ? errno : 0;
        if (failure == 0 && S_ISREG(status.st_mode)) {
            m_size = static_cast<std::uint64_t>(std::max<off_t>(status.st_size, 0));
            return;
        }
        ::close(m_handle);
        if (failure != 0 || S_ISDIR(status.st_mode))
            fail(failure != 0 ? failure : EISDIR);
        system::fail(m_doing, m_path, std::string("it is not a regular file"));
    }

    RegularFile(const RegularFile&) = delete;
    RegularFile& operator=(const RegularFile&) = delete;

    ~RegularFile()
    {
        if (m_handle >= 0)
            ::close(m_handle);
    }

    /// Size in bytes when the file was opened.
    [[nodiscard]] std::uint64_t size() const { return m_size; }

    /// Reads on into `buffer`. The number of bytes, 0 at the end of the file.
    template <std::size_t size>
    std::size_t read(std::array<char, size>& buffer) const
    {
        return checked([&] { return ::read(m_handle, buffer.data(), buffer.size()); });
    }

    /// In one piece where the system takes it so; the next try after a shortened one tells the reason.
    void write(std::string_view bytes) const
    {
        while (!bytes.empty())
            bytes.remove_prefix(checked([&] { return ::write(m_handle, bytes.data(), bytes.size()); }));
    }

    /// Some file systems tell only now that written bytes were lost.
    void close()
    {
        if (::close(std::exchange(m_handle, -1)) != 0)
            fail(errno);
    }

private:
    [[noreturn]] void fail(int code) const { system::fail(m_doing, m_path, code); }

    template <typename Operation>
    std::size_t checked(Operation operation) const
    {
        ssize_t count = 0;
        do {
            count = operation();
        } while (count < 0 && errno == EINTR);
        if (count < 0)
            fail(errno);
        return static_cast<std::size_t>(count);
    }

    std::string_view m_doing;
    const std::string& m_path;
    int m_handle = -1;
    std::uint64_t m_size = 0;
};

} // namespace

bool SystemFiles::exists(const std::string& path) const
{
    struct stat status {};
    return status_of(path, status);
}

bool SystemFiles::is_regular_file(const std::string& path) const
{
    struct stat status {};
    return status_of(path, status) && S_ISREG(status.st_mode);
}

bool SystemFiles::is_same_file(const std::string& a, const std::string& b) const
{
    struct stat first {};
    struct stat second {};
    return status_of(a, first) && status_of(b, second) && first.st_dev == second.st_dev &&
           first.st_ino == second.st_ino;
}

std::string SystemFiles::absolute(const std::string& path) const
{
    if (path.empty())
        return path;
    std::error_code error;
    const std::filesystem::path full = std::filesystem::absolute(path, error);
    return error ? path : full.string();
}

std::string SystemFiles::read(const std::string& path, std::uint64_t longest) const
{
    const RegularFile file("read", path, O_RDONLY);
    std::string contents;
    std::array<char, 65536> block{};
    // The size told beforehand is not relied on: the file may grow, and some tell 0.
    while (const std::size_t count = file.read(block)) {
        if (count > longest - contents.size())
            fail("read", path, "it is longer than " + std::to_string(longest) + " bytes");
        contents.append(block.data(), count);
    }
    return contents;
}

bool SystemFiles::append_below(const std::string& path, std::uint64_t limit, std::string_view bytes)
{
    RegularFile file("write", path, O_WRONLY | O_APPEND | O_CREAT);
    const bool below = file.size() < limit;
    if (below)
        file.write(bytes);
    file.close();
    return below;
}

bool SystemFiles::is_writable_folder(const std::string& path) const
{
    struct stat status {};
    return status_of(path, status) && S_ISDIR(status.st_mode) &&
           ::faccessat(AT_FDCWD, path.c_str(), W_OK | X_OK, AT_EACCESS) == 0;
}

void SystemFiles::create_folder(const std::string& path)
{
    if (!is_name(path))
        fail("create the folder", path, EINVAL);
    for (std::size_t end = 0; end != std::string::npos;) {
        end = path.find('/', end + 1);
        const std::string folder = path.substr(0, end);
        if (::mkdir(folder.c_str(), S_IRWXU) == 0)
            continue;
        const int code = errno;
        // A folder above may be closed to this user and yet hold the next one.
        struct stat status {};
        if (!status_of(folder, status))
            fail("create the folder", folder, code);
        if (!S_ISDIR(status.st_mode))
            fail("create the folder", folder, ENOTDIR);
    }
}

} // namespace cuedrill::platform::system
