#include "platform/sqlite/file_checks.h"

#include "platform/sqlite/engine_error.h"

#include <cerrno>
#include <cstdlib>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

namespace cuedrill::platform::sqlite {
namespace {

constexpr mode_t any_write_bit = S_IWUSR | S_IWGRP | S_IWOTH;

void require_name(const std::string& path)
{
    if (path.empty() || path.find('\0') != std::string::npos)
        throw own_error(DatabaseErrorKind::missing, "This is no name of a file.");
}

std::string canonical(const std::string& path)
{
    const std::unique_ptr<char, decltype(&std::free)> resolved(::realpath(path.c_str(), nullptr), &std::free);
    if (resolved == nullptr)
        throw errno == EACCES ? own_error(DatabaseErrorKind::other, "It is in a folder that you may not enter.")
                              : file_error(errno, "It cannot be found.");
    return resolved.get();
}

struct stat status_of(const std::string& path)
{
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0)
        throw file_error(errno, "It cannot be found.");
    return status;
}

/// access() grants everything to the superuser, so a path without any write permission is recognised by its mode.
bool nobody_may_write(const std::string& path, mode_t mode)
{
    return (mode & any_write_bit) == 0 || ::access(path.c_str(), W_OK) != 0;
}

void require_writable_folder(const std::string& folder)
{
    const struct stat status = status_of(folder);
    if (!S_ISDIR(status.st_mode))
        throw file_error(ENOTDIR, "");
    // The engine creates its journal in this folder.
    if (nobody_may_write(folder, status.st_mode))
        throw own_error(DatabaseErrorKind::read_only, "Its folder cannot be written.");
}

/// Whether anything has this name.
/// @throws DatabaseError (other) if the name is too long for the file system.
bool has_neighbour(const std::string& path)
{
    struct stat status {};
    const bool found = ::lstat(path.c_str(), &status) == 0;
    if (!found && errno == ENAMETOOLONG)
        throw file_error(errno, "");
    return found;
}

} // namespace

std::string folder_of(const std::string& path)
{
    const std::size_t slash = path.rfind('/');
    return slash == 0 ? "/" : path.substr(0, slash);
}

void require_no_files_of_earlier_course(const std::string& file)
{
    for (const char* const ending : {"-journal", "-wal"}) {
        if (has_neighbour(file + ending))
            throw own_error(DatabaseErrorKind::exists, "A file of an earlier course of that name is still there: " +
                                                           file.substr(file.rfind('/') + 1) + ending + ".");
    }
}

std::string existing_course_file(const std::string& path)
{
    require_name(path);
    std::string file = canonical(path);
    const struct stat status = status_of(file);
    if (S_ISDIR(status.st_mode))
        throw own_error(DatabaseErrorKind::not_a_course, "It is a folder.");
    if (!S_ISREG(status.st_mode))
        throw own_error(DatabaseErrorKind::not_a_course, "It is not an ordinary file.");
    if (status.st_size == 0)
        throw own_error(DatabaseErrorKind::not_a_course, "It is empty.");
    if (::access(file.c_str(), R_OK) != 0)
        throw own_error(DatabaseErrorKind::other, "You may not read it.");
    if (nobody_may_write(file, status.st_mode))
        throw own_error(DatabaseErrorKind::read_only, "It cannot be written.");
    require_writable_folder(folder_of(file));
    static_cast<void>(has_neighbour(file + "-journal")); // throws if the longest name that the engine needs is too long
    return file;
}

std::string new_course_file(const std::string& path)
{
    require_name(path);
    const std::size_t slash = path.rfind('/');
    const std::string name = slash == std::string::npos ? path : path.substr(slash + 1);
    if (name.empty() || name == "." || name == "..")
        throw own_error(DatabaseErrorKind::missing, "This is no name of a file.");
    const std::string folder = canonical(slash == std::string::npos ? "." : path.substr(0, slash + 1));
    require_writable_folder(folder);
    std::string file = (folder == "/" ? "" : folder) + "/" + name;
    struct stat status {};
    if (::lstat(file.c_str(), &status) == 0)
        throw file_error(EEXIST, "");
    if (errno != ENOENT)
        throw file_error(errno, "It cannot be created.");
    require_no_files_of_earlier_course(file);
    return file;
}

} // namespace cuedrill::platform::sqlite
