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
    // An exclusive lock shows that nobody else has one; it then becomes a shared one, beside which others are possible.
    const bool alone = ::flock(handle_, LOCK_EX | LOCK_NB) == 0;
    const bool others = !alone && errno == EWOULDBLOCK;
    ::flock(handle_, LOCK_SH | LOCK_NB);
    return others;
}

void SystemOpenCourses::leave() noexcept
{
    if (handle_ >= 0)
        ::close(handle_);
    handle_ = -1;
}

} // namespace cuedrill::platform::system
