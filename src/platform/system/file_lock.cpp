#include "platform/system/file_lock.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace cuedrill::platform::system {

FileLock::~FileLock()
{
    if (handle_ >= 0)
        ::close(handle_);
}

bool FileLock::hold(int handle)
{
    struct stat status {};
    if (::flock(handle, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK)
        return false;
    return ::fstat(handle, &status) == 0 && status.st_nlink > 0;
}

void FileLock::remove_unless_held(const std::string& path)
{
    // Opened for writing because network file systems refuse an exclusive lock on a read-only handle.
    const int handle = ::open(path.c_str(), O_RDWR | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY);
    if (handle < 0)
        return;
    struct stat status {};
    struct stat named {};
    // Before the lock was taken, the name may have passed to another file, or the file may have been renamed.
    if (::fstat(handle, &status) == 0 && S_ISREG(status.st_mode) && ::flock(handle, LOCK_EX | LOCK_NB) == 0 &&
        ::lstat(path.c_str(), &named) == 0 && named.st_dev == status.st_dev && named.st_ino == status.st_ino)
        ::unlink(path.c_str());
    ::close(handle);
}

} // namespace cuedrill::platform::system
