#include "platform/system/system_files.h"

#include "platform/system/regular_file.h"
#include "platform/system/system_replacement.h"

#include <cerrno>
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
        file_.rewind();
        room_ = longest_;
    }

private:
    RegularFile file_;
    std::uint64_t longest_;
    std::uint64_t room_; ///< how many more bytes are allowed
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
        if (::mkdir(folder.c_str(), S_IRWXU) == 0)
            continue;
        const int code = errno;
        // A parent folder may be unreadable for this user and still contain the next one.
        struct stat status {};
        if (!status_of(folder, status))
            fail("create the folder", folder, code);
        if (!S_ISDIR(status.st_mode))
            fail("create the folder", folder, ENOTDIR);
    }
}

} // namespace cuedrill::platform::system
