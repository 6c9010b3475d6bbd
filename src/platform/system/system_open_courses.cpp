#include "platform/system/system_open_courses.h"

#include <cerrno>
#include <fcntl.h>
#include <new>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace cuedrill::platform::system {
namespace {

/// Whether the folder belongs to this user alone: the one below /tmp could be made by anybody.
bool is_own_folder(const std::string& path)
{
    struct stat status {};
    return ::lstat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode) && status.st_uid == ::getuid() &&
           (status.st_mode & (S_IWGRP | S_IWOTH)) == 0;
}

/// Takes a shared lock. An exclusive one is held only for as long as it takes to exchange it for a shared one.
void share(int handle)
{
    while (::flock(handle, LOCK_SH) != 0 && errno == EINTR) {
    }
}

} // namespace

bool SystemOpenCourses::open_file_of(const std::string& path)
{
    leave();
    struct stat course {};
    if (folder_.empty() || ::stat(path.c_str(), &course) != 0)
        return false;
    if ((::mkdir(folder_.c_str(), S_IRWXU) != 0 && errno != EEXIST) || !is_own_folder(folder_))
        return false;
    const std::string name =
        folder_ + "/" + std::to_string(course.st_dev) + "-" + std::to_string(course.st_ino) + ".open";
    handle_ = ::open(name.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, S_IRUSR | S_IWUSR);
    return handle_ >= 0;
}

bool SystemOpenCourses::enter(const std::string& path) noexcept
{
    try {
        if (!open_file_of(path))
            return false;
    } catch (const std::bad_alloc&) {
        return false;
    }
    // Of two processes that come at once, both have a shared lock before either tries for an exclusive one, so at least
    // one of them learns of the other.
    share(handle_);
    const bool alone = ::flock(handle_, LOCK_EX | LOCK_NB) == 0;
    const bool others = !alone && errno == EWOULDBLOCK;
    // Either way the shared lock is gone.
    share(handle_);
    return others;
}

void SystemOpenCourses::leave() noexcept
{
    if (handle_ >= 0)
        ::close(handle_);
    handle_ = -1;
}

} // namespace cuedrill::platform::system
