#include "platform/system/system_files.h"

#include "common/errors.h"
#include "platform/system/open_folder.h"
#include "platform/system/regular_file.h"
#include "platform/system/system_file_hold.h"
#include "platform/system/system_replacement.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace cuedrill::platform::system {
namespace {

bool status_of(const std::string& path, struct stat& status)
{
    return is_name(path) && ::stat(path.c_str(), &status) == 0;
}

class SystemFileReading : public FileReading {
public:
    SystemFileReading(const std::string& path, std::uint64_t longest)
        : file_(RegularFile::open("read", path, O_RDONLY)), longest_(longest), room_(longest)
    {
    }

    [[nodiscard]] std::uint64_t size() const override { return file_.size(); }

    [[nodiscard]] std::string read(std::size_t most) override
    {
        std::string piece(most, '\0');
        piece.resize(file_.read(piece));
        if (piece.size() > room_)
            fail("read", file_.path(), "it is longer than " + std::to_string(longest_) + " bytes");
        room_ -= piece.size();
        return piece;
    }

    void rewind() override
    {
        go_to(0);
        room_ = longest_;
    }

    void go_to(std::uint64_t place) override { file_.go_to(place); }

private:
    RegularFile file_;
    std::uint64_t longest_;
    std::uint64_t room_; ///< how many more bytes are allowed
};

/// The folder of a path, for opening it.
std::string folder_of(const std::string& path)
{
    const std::string folder = std::filesystem::path(path).parent_path().string();
    return folder.empty() ? "." : folder;
}

/// rename(2) that fails if the new name is taken. Where the file system cannot do this in one step, the name is checked
/// before.
int rename_without_replacing(const std::string& from, const std::string& to)
{
    if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0)
        return 0;
    if (errno != EINVAL && errno != ENOSYS)
        return -1;
    struct stat status {};
    if (::lstat(to.c_str(), &status) == 0) {
        errno = EEXIST;
        return -1;
    }
    return ::rename(from.c_str(), to.c_str());
}

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

bool SystemFiles::is_folder(const std::string& path) const
{
    struct stat status {};
    return status_of(path, status) && S_ISDIR(status.st_mode);
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

std::unique_ptr<FileReading> SystemFiles::begin_reading(const std::string& path, std::uint64_t longest) const
{
    return std::make_unique<SystemFileReading>(path, longest);
}

bool SystemFiles::append_below(const std::string& path, std::uint64_t limit, std::string_view bytes)
{
    RegularFile file = RegularFile::open("write", path, O_WRONLY | O_APPEND | O_CREAT);
    const bool below = file.size() < limit;
    if (below)
        file.write(bytes);
    file.close();
    return below;
}

std::unique_ptr<Replacement> SystemFiles::begin_replacement(const std::string& path)
{
    return std::make_unique<SystemReplacement>(path);
}

void SystemFiles::change_folder(const std::string& path)
{
    if (!is_name(path))
        fail("change to the folder", path, EINVAL);
    if (::chdir(path.c_str()) != 0)
        fail("change to the folder", path, errno);
}

bool SystemFiles::is_writable_folder(const std::string& path) const
{
    return is_folder(path) && ::faccessat(AT_FDCWD, path.c_str(), W_OK | X_OK, AT_EACCESS) == 0;
}

void SystemFiles::create_folder(const std::string& path)
{
    if (!is_name(path))
        fail("create the folder", path, EINVAL);
    for (std::size_t end = 0; end != std::string::npos;) {
        end = path.find('/', end + 1);
        const std::string folder = path.substr(0, end);
        if (::mkdir(folder.c_str(), S_IRWXU) == 0) {
            // A power cut that takes the name of the folder takes everything that is written into it.
            OpenFolder(folder_of(folder)).sync();
            continue;
        }
        const int code = errno;
        // A parent folder may be unreadable for this user and still contain the next one.
        struct stat status {};
        if (!status_of(folder, status))
            fail("create the folder", folder, code);
        if (!S_ISDIR(status.st_mode))
            fail("create the folder", folder, ENOTDIR);
    }
}

void SystemFiles::append_durably(const std::string& path, std::string_view bytes)
{
    RegularFile file = RegularFile::open("write", path, O_WRONLY | O_APPEND | O_CREAT, S_IRUSR | S_IWUSR);
    try {
        file.write(bytes);
        file.sync();
    } catch (const common::Error&) {
        file.try_size(file.size());
        throw;
    }
    file.close();
    if (file.size() == 0)
        OpenFolder(folder_of(path)).sync(); // the name may be new
}

void SystemFiles::append_lines(const std::string& path, std::string_view first_line, std::string_view lines)
{
    RegularFile file = RegularFile::open("write", path, O_RDWR | O_APPEND | O_CREAT, S_IRUSR | S_IWUSR);
    std::string bytes;
    if (file.size() == 0) {
        bytes = first_line;
    } else {
        char last = '\n';
        file.go_to(file.size() - 1);
        if (file.read({&last, 1}) == 1 && last != '\n')
            bytes = '\n';
    }
    file.write(bytes.append(lines));
    file.close();
}

void SystemFiles::rename_to_free_name(const std::string& from, const std::string& to)
{
    if (!is_name(from) || !is_name(to))
        fail("rename", from, EINVAL);
    const OpenFolder folder(folder_of(to));
    if (rename_without_replacing(from, to) != 0)
        fail("rename", from, errno);
    folder.sync();
}

void SystemFiles::remove(const std::string& path)
{
    if (!is_name(path))
        fail("remove", path, EINVAL);
    if (::unlink(path.c_str()) != 0 && errno != ENOENT)
        fail("remove", path, errno);
}

std::vector<std::string> SystemFiles::names_in(const std::string& folder) const
{
    std::vector<std::string> names;
    std::error_code error;
    for (std::filesystem::directory_iterator entry(folder, error);
         !error && entry != std::filesystem::directory_iterator(); entry.increment(error))
        names.push_back(entry->path().filename().string());
    if (error)
        fail("read the folder", folder, error.value());
    std::sort(names.begin(), names.end());
    return names;
}

std::unique_ptr<FileHold> SystemFiles::hold(const std::string& path, std::chrono::milliseconds patience)
{
    return SystemFileHold::take(path, patience);
}

} // namespace cuedrill::platform::system
