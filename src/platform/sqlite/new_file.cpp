#include "platform/sqlite/new_file.h"

#include "platform/sqlite/engine_error.h"
#include "platform/sqlite/file_checks.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <random>
#include <unistd.h>

namespace cuedrill::platform::sqlite {
namespace {

constexpr int most_attempts = 100;
constexpr mode_t usual_mode = 0666; // less what the user's mask takes away

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
    // A file system that knows no such call has nothing to bring to the disk.
    return result != 0 && error == EINVAL ? 0 : result;
}

bool has_no_hard_links(int error)
{
    return error == EPERM || error == EOPNOTSUPP || error == ENOSYS || error == EMLINK;
}

} // namespace

TemporaryFile::TemporaryFile(const std::string& folder)
{
    std::random_device random;
    const std::string start = (folder == "/" ? "" : folder) + "/.cuedrill-new-";
    for (int attempt = 0; attempt < most_attempts; ++attempt) {
        std::string path = start + std::to_string(random());
        const int descriptor = ::open(path.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, usual_mode);
        if (descriptor >= 0) {
            ::close(descriptor);
            m_path = std::move(path);
            return;
        }
        if (errno != EEXIST)
            throw file_error(errno, "It cannot be created.");
    }
    throw own_error(DatabaseErrorKind::other, "It cannot be created.");
}

TemporaryFile::~TemporaryFile()
{
    ::unlink((m_path + "-journal").c_str());
    ::unlink(m_path.c_str());
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
    if (calls.sync_folder(folder_of(to).c_str()) != 0)
        throw file_error(errno, "Its name could not be brought to the disk.");
}

} // namespace cuedrill::platform::sqlite
