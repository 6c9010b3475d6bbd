#include "platform/sqlite/new_file.h"

#include "platform/sqlite/engine_error.h"
#include "platform/sqlite/file_checks.h"

#include <cerrno>
#include <cstdio>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <random>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace cuedrill::platform::sqlite {
namespace {

constexpr std::string_view name_start = ".cuedrill-new-";
constexpr int most_attempts = 100;

int rename_without_replacing(const char* from, const char* to)
{
    return ::renameat2(AT_FDCWD, from, AT_FDCWD, to, RENAME_NOREPLACE);
}

int bring_folder_to_disk(const char* folder)
{
    const int descriptor = ::open(folder, O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0)
        return -1;
    const int result = ::fsync(descriptor);
    const int error = errno;
    ::close(descriptor);
    errno = error;
    // EINVAL: the file system does not support fsync on folders.
    return result != 0 && error == EINVAL ? 0 : result;
}

enum class Lock { taken, held_by_another, not_supported };

/// Locks the first byte for this descriptor. The engine's locks belong to the process and are at far higher offsets;
/// they would conflict with a lock on the whole file.
Lock lock(int descriptor)
{
    struct flock range {};
    range.l_type = F_WRLCK;
    range.l_whence = SEEK_SET;
    range.l_len = 1;
    if (::fcntl(descriptor, F_OFD_SETLK, &range) == 0)
        return Lock::taken;
    return errno == EAGAIN || errno == EACCES ? Lock::held_by_another : Lock::not_supported;
}

bool is_temporary_name(std::string_view name)
{
    return name.size() > name_start.size() && name.starts_with(name_start) &&
           name.find_first_not_of("0123456789", name_start.size()) == std::string_view::npos;
}

/// Keeps a file that cannot be opened or locked, because it may be in use.
void remove_unless_held(const std::string& path)
{
    const int descriptor = ::open(path.c_str(), O_RDWR | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY);
    if (descriptor < 0)
        return;
    struct stat status {};
    if (::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode) && lock(descriptor) == Lock::taken) {
        ::unlink((path + "-journal").c_str());
        ::unlink(path.c_str());
    }
    ::close(descriptor);
}

/// @param start the folder with a "/" at its end.
void remove_leftovers(const std::string& folder, const std::string& start)
{
    const std::unique_ptr<DIR, int (*)(DIR*)> entries(::opendir(folder.c_str()), ::closedir);
    if (entries == nullptr)
        return; // the folder can be written but not listed
    while (const dirent* const entry = ::readdir(entries.get())) {
        if (is_temporary_name(entry->d_name))
            remove_unless_held(start + entry->d_name);
    }
}

bool is_free(const std::string& path)
{
    struct stat status {};
    return ::lstat(path.c_str(), &status) != 0 && errno == ENOENT;
}

bool has_no_hard_links(int error)
{
    return error == EPERM || error == EOPNOTSUPP || error == ENOSYS || error == EMLINK;
}

} // namespace

TemporaryFile::TemporaryFile(const std::string& folder, Start start, mode_t mode)
{
    const std::string before_name = (folder == "/" ? "" : folder) + "/";
    remove_leftovers(folder, before_name);
    std::random_device random;
    for (int attempt = 0; attempt < most_attempts; ++attempt) {
        const std::string path = before_name + std::string(name_start) + std::to_string(random());
        if (start == Start::only_a_name ? is_free(path) : create(path, mode)) {
            path_ = path;
            return;
        }
    }
    throw own_error(DatabaseErrorKind::other, "It cannot be created.");
}

/// Returns false if the name is taken, or if another program found the file before it was locked and removes it.
bool TemporaryFile::create(const std::string& path, mode_t mode)
{
    descriptor_ = ::open(path.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, mode);
    if (descriptor_ < 0) {
        if (errno != EEXIST)
            throw file_error(errno, "It cannot be created.");
        return false;
    }
    return hold_opened();
}

void TemporaryFile::hold()
{
    descriptor_ = ::open(path_.c_str(), O_RDWR | O_CLOEXEC | O_NOFOLLOW);
    if (descriptor_ < 0)
        throw file_error(errno, "It cannot be created.");
    if (!hold_opened())
        throw own_error(DatabaseErrorKind::other, "It cannot be created.");
}

/// Returns false, with the file closed, if another program found it before it was locked. On a file system without
/// locks no program removes leftovers, so the file counts as held.
bool TemporaryFile::hold_opened()
{
    struct stat status {};
    const bool held_by_another = lock(descriptor_) == Lock::held_by_another;
    if (!held_by_another && ::fstat(descriptor_, &status) == 0 && status.st_nlink > 0)
        return true;
    ::close(std::exchange(descriptor_, -1));
    return false;
}

void TemporaryFile::sync() const
{
    int result = 0;
    do {
        result = ::fsync(descriptor_);
    } while (result != 0 && errno == EINTR);
    if (result != 0)
        throw file_error(errno, "It cannot be brought to the disk.");
}

TemporaryFile::~TemporaryFile()
{
    ::unlink((path_ + "-journal").c_str());
    ::unlink(path_.c_str());
    // Closed last, because that releases the lock. Closing any descriptor also releases the engine's locks on the file.
    if (descriptor_ >= 0)
        ::close(descriptor_);
}

NamingCalls NamingCalls::of_system()
{
    return {::link, rename_without_replacing, bring_folder_to_disk};
}

void give_name(const std::string& from, const std::string& to, const NamingCalls& calls)
{
    if (calls.link(from.c_str(), to.c_str()) == 0) {
        ::unlink(from.c_str());
    } else {
        const int error = errno;
        if (!has_no_hard_links(error))
            throw file_error(error, "It cannot be created.");
        if (calls.rename_no_replace(from.c_str(), to.c_str()) != 0)
            throw file_error(errno, "It cannot be created.");
    }
    // The result is ignored: the file already has its name.
    calls.sync_folder(folder_of(to).c_str());
}

GivenName::GivenName(std::string path) : path_(std::move(path)), removes_(::stat(path_.c_str(), &given_) == 0)
{
}

GivenName::~GivenName()
{
    struct stat now {};
    if (removes_ && ::lstat(path_.c_str(), &now) == 0 && now.st_dev == given_.st_dev && now.st_ino == given_.st_ino &&
        now.st_size == given_.st_size && now.st_mtim.tv_sec == given_.st_mtim.tv_sec &&
        now.st_mtim.tv_nsec == given_.st_mtim.tv_nsec)
        ::unlink(path_.c_str());
}

} // namespace cuedrill::platform::sqlite
