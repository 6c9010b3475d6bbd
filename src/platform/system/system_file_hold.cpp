#include "platform/system/system_file_hold.h"

#include "platform/system/regular_file.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

namespace cuedrill::platform::system {
namespace {

constexpr std::chrono::milliseconds pause{5};

/// Whether the name still belongs to the open file. Its last holder may have removed it before the lock was taken.
bool is_named(int handle, const std::string& path)
{
    struct stat status {};
    struct stat named {};
    return ::fstat(handle, &status) == 0 && ::lstat(path.c_str(), &named) == 0 && named.st_dev == status.st_dev &&
           named.st_ino == status.st_ino;
}

} // namespace

SystemFileHold::~SystemFileHold()
{
    ::close(handle_);
}

std::unique_ptr<FileHold> SystemFileHold::take(const std::string& path, std::chrono::milliseconds patience)
{
    if (!is_name(path))
        fail("lock", path, EINVAL);
    const auto end = std::chrono::steady_clock::now() + patience;
    for (;;) {
        // Opened for writing because network file systems refuse an exclusive lock on a read-only handle.
        const int handle =
            ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY, S_IRUSR | S_IWUSR);
        if (handle < 0)
            fail("lock", path, errno);
        const bool locked = ::flock(handle, LOCK_EX | LOCK_NB) == 0;
        const bool is_held = !locked && (errno == EWOULDBLOCK || errno == EINTR);
        auto hold = std::make_unique<SystemFileHold>(handle, locked);
        if (!is_held && (!locked || is_named(handle, path)))
            return hold;
        hold.reset();
        if (is_held && std::chrono::steady_clock::now() >= end)
            return nullptr;
        if (is_held)
            std::this_thread::sleep_for(std::min(pause, patience));
    }
}

} // namespace cuedrill::platform::system
