#include "platform/system/system_replacement.h"

#include "common/errors.h"
#include "common/text.h"
#include "platform/system/open_folder.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <optional>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace cuedrill::platform::system {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view doing = "write";
constexpr std::size_t buffer_size = 65536;
constexpr std::string_view part_ending = ".cuedrill-part";
constexpr int most_names = 100;
constexpr mode_t usual_mode = 0666; // before the user's umask
constexpr mode_t private_mode = 0600;
constexpr mode_t permission_bits = 0777;
constexpr mode_t any_write_bit = S_IWUSR | S_IWGRP | S_IWOTH;

/// The system grants the superuser every access, so a file that nobody has permission to write is detected by its mode.
void require_writable(const std::string& path, mode_t mode)
{
    if ((mode & any_write_bit) == 0)
        fail(doing, path, EACCES);
    if (::faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) != 0)
        fail(doing, path, errno);
}

bool is_name_of_part(std::string_view name)
{
    const std::size_t at = name.rfind(part_ending);
    return at != std::string_view::npos && at > 0 &&
           name.find_first_not_of("0123456789", at + part_ending.size()) == std::string_view::npos;
}

fs::path canonical(const std::string& path, const fs::path& what)
{
    std::error_code error;
    fs::path full = fs::canonical(what, error);
    if (error)
        fail(doing, path, error.value());
    return full;
}

} // namespace

/// The file to be replaced, with links resolved; it need not exist.
struct SystemReplacement::Target {
    std::string folder; ///< full path
    std::string name;
    std::optional<mode_t> permissions; ///< of the existing file, if any

    [[nodiscard]] static Target of(const std::string& path);
    [[nodiscard]] std::string in_folder(std::string_view other_name) const
    {
        return (fs::path(folder) / other_name).string();
    }
    /// Removes the part files in the folder that nobody is writing.
    void remove_leftovers() const;
    /// Creates and locks the part file, which gets the new contents.
    [[nodiscard]] RegularFile create_part() const;
};

SystemReplacement::Target SystemReplacement::Target::of(const std::string& path)
{
    if (!is_name(path))
        fail(doing, path, EINVAL);
    struct stat status {};
    if (::lstat(path.c_str(), &status) != 0) {
        if (errno != ENOENT)
            fail(doing, path, errno);
        const fs::path name = fs::path(path).filename();
        if (name.empty())
            fail(doing, path, EISDIR);
        const fs::path folder = fs::path(path).parent_path();
        return {canonical(path, folder.empty() ? fs::path(".") : folder).string(), name.string(), std::nullopt};
    }
    const bool is_link = S_ISLNK(status.st_mode);
    if (is_link && ::stat(path.c_str(), &status) != 0) {
        if (errno == ENOENT)
            fail(doing, path, std::string("it is a link to a file that does not exist"));
        fail(doing, path, errno);
    }
    require_regular(doing, path, status);
    require_writable(path, status.st_mode);
    const fs::path file = canonical(path, path);
    return {file.parent_path().string(), file.filename().string(), status.st_mode & permission_bits};
}

void SystemReplacement::Target::remove_leftovers() const
{
    std::error_code error; // set if the folder cannot be listed
    for (fs::directory_iterator entry(folder, error); !error && entry != fs::directory_iterator();
         entry.increment(error)) {
        if (is_name_of_part(entry->path().filename().string()))
            FileLock::remove_unless_held(entry->path().string());
    }
}

RegularFile SystemReplacement::Target::create_part() const
{
    remove_leftovers();
    std::string_view base = name;
    for (int number = 1; number <= most_names;) {
        const std::string ending = std::string(part_ending) + (number == 1 ? "" : std::to_string(number));
        const std::string path = in_folder(std::string(base) + ending);
        // Private until it gets its final permissions, so that nobody else can read what is written to it.
        const int handle =
            ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, permissions ? private_mode : usual_mode);
        if (handle >= 0 && FileLock::hold(handle))
            return {doing, path, handle};
        if (handle >= 0)
            ::close(handle); // somebody removed it as a leftover before it was locked
        else if (errno == EEXIST)
            ++number;
        else if (errno == ENAMETOOLONG && common::code_points(base) > 1)
            base = common::first_code_points(base, common::code_points(base) - 1);
        else if (errno != EINTR)
            fail(doing, path, errno);
    }
    fail(doing, in_folder(name + std::string(part_ending)), EEXIST);
}

SystemReplacement::SystemReplacement(const std::string& path) : SystemReplacement(Target::of(path))
{
}

SystemReplacement::SystemReplacement(const Target& target)
    : folder_(target.folder), target_(target.in_folder(target.name)), file_(target.create_part()),
      lock_(file_.duplicate_handle())
{
    buffer_.reserve(buffer_size);
    // A file system without permissions refuses this; there is nothing to keep then.
    if (target.permissions)
        file_.try_permissions(*target.permissions);
}

SystemReplacement::~SystemReplacement()
{
    try {
        if (failure_.empty())
            flush();
    } catch (...) {
        // The contents are incomplete anyway, and nobody waits for them.
    }
}

void SystemReplacement::require_no_failure() const
{
    if (!failure_.empty())
        throw common::Error(failure_);
}

void SystemReplacement::flush()
{
    try {
        file_.write(buffer_);
    } catch (const common::Error& error) {
        failure_ = error.what();
        throw;
    }
    buffer_.clear();
}

void SystemReplacement::write(std::string_view bytes)
{
    require_no_failure();
    while (!bytes.empty()) {
        const std::string_view piece = bytes.substr(0, buffer_size - buffer_.size());
        buffer_.append(piece);
        bytes.remove_prefix(piece.size());
        if (buffer_.size() == buffer_size)
            flush();
    }
}

void SystemReplacement::restart()
{
    file_.empty();
    buffer_.clear();
    failure_.clear();
}

void SystemReplacement::finish()
{
    require_no_failure();
    flush();
    file_.sync();
    file_.close();
    const OpenFolder folder(folder_);
    if (::rename(file_.path().c_str(), target_.c_str()) != 0)
        fail(doing, target_, errno);
    folder.sync();
}

} // namespace cuedrill::platform::system
