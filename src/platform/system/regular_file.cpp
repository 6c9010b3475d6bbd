#include "platform/system/regular_file.h"

#include "common/errors.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace cuedrill::platform::system {

void fail(std::string_view doing, const std::string& path, const std::string& reason)
{
    throw common::Error("Cannot " + std::string(doing) + " " + path + ": " + reason + ".");
}

void fail(std::string_view doing, const std::string& path, int code)
{
    fail(doing, path, std::generic_category().message(code));
}

bool is_name(const std::string& path)
{
    return !path.empty() && path.find('\0') == std::string::npos;
}

void require_regular(std::string_view doing, const std::string& path, const struct stat& status)
{
    if (S_ISDIR(status.st_mode))
        fail(doing, path, EISDIR);
    if (!S_ISREG(status.st_mode))
        fail(doing, path, std::string("it is not a regular file"));
}

RegularFile RegularFile::open(std::string_view doing, const std::string& path, int flags, mode_t mode)
{
    if (!is_name(path))
        fail(doing, path, EINVAL);
    // Without O_NONBLOCK, opening a pipe blocks until its other end is opened.
    const int handle = ::open(path.c_str(), flags | O_CLOEXEC | O_NONBLOCK | O_NOCTTY, mode);
    if (handle < 0)
        fail(doing, path, errno);
    return {doing, path, handle};
}

RegularFile::RegularFile(std::string_view doing, std::string path, int handle)
    : doing_(doing), path_(std::move(path)), handle_(handle)
{
    try {
        struct stat status {};
        checked([&] { return ::fstat(handle_, &status); });
        require_regular(doing_, path_, status);
        size_ = static_cast<std::uint64_t>(std::max<off_t>(status.st_size, 0));
    } catch (...) {
        ::close(handle_);
        throw;
    }
}

RegularFile::~RegularFile()
{
    if (handle_ >= 0)
        ::close(handle_);
}

template <typename Operation>
std::size_t RegularFile::checked(Operation operation) const
{
    ssize_t count = 0;
    do {
        count = operation();
    } while (count < 0 && errno == EINTR);
    if (count < 0)
        fail(doing_, path_, errno);
    return static_cast<std::size_t>(count);
}

void RegularFile::try_permissions(mode_t permissions) const
{
    static_cast<void>(::fchmod(handle_, permissions));
}

std::size_t RegularFile::read(std::span<char> buffer) const
{
    return checked([&] { return ::read(handle_, buffer.data(), buffer.size()); });
}

void RegularFile::go_to(std::uint64_t place) const
{
    checked([&] { return ::lseek(handle_, static_cast<off_t>(place), SEEK_SET); });
}

void RegularFile::write(std::string_view bytes) const
{
    while (!bytes.empty())
        bytes.remove_prefix(checked([&] { return ::write(handle_, bytes.data(), bytes.size()); }));
}

void RegularFile::empty() const
{
    checked([&] { return ::ftruncate(handle_, 0); });
    go_to(0);
}

void RegularFile::try_size(std::uint64_t size) const
{
    static_cast<void>(::ftruncate(handle_, static_cast<off_t>(size)));
}

void RegularFile::sync() const
{
    checked([&] { return ::fsync(handle_); });
}

int RegularFile::duplicate_handle() const
{
    return ::fcntl(handle_, F_DUPFD_CLOEXEC, 0);
}

void RegularFile::close()
{
    if (::close(std::exchange(handle_, -1)) != 0)
        fail(doing_, path_, errno);
}

} // namespace cuedrill::platform::system
