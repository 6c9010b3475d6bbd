#include "platform/system/system_directories.h"

#include <filesystem>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <system_error>

namespace cuedrill::platform::system {

namespace fs = std::filesystem;

std::string SystemDirectories::canonical(const std::string& path) const
{
    std::error_code error;
    const fs::path absolute = fs::absolute(path, error);
    if (error)
        return path;
    const fs::path result = fs::weakly_canonical(absolute, error);
    return error ? absolute.lexically_normal().string() : result.string();
}

std::vector<FolderEntry> SystemDirectories::files_in(const std::string& folder) const
{
    std::vector<FolderEntry> found;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error); !error && entry != fs::directory_iterator();
         entry.increment(error)) {
        struct stat status {};
        if (::lstat(entry->path().c_str(), &status) == 0 && S_ISREG(status.st_mode))
            found.push_back({entry->path().filename().string(), static_cast<std::uint64_t>(status.st_size)});
    }
    return found;
}

std::optional<std::uint64_t> SystemDirectories::size_of(const std::string& path) const
{
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0)
        return std::nullopt;
    return static_cast<std::uint64_t>(status.st_size);
}

std::optional<std::uint64_t> SystemDirectories::room_in(const std::string& folder) const
{
    struct statvfs status {};
    if (::statvfs(folder.c_str(), &status) != 0)
        return std::nullopt;
    return std::uint64_t{status.f_bavail} * status.f_frsize;
}

void SystemDirectories::make_private(const std::string& path)
{
    std::error_code error;
    fs::permissions(path, fs::perms::owner_read | fs::perms::owner_write, error);
}

bool SystemDirectories::remove(const std::string& path)
{
    std::error_code error;
    fs::remove(path, error);
    return !error;
}

} // namespace cuedrill::platform::system
