// Stands between a program and the C library (LD_PRELOAD): notes the calls that change what is below one folder,
// whichever library makes them, and kills the program at one of these calls. tests/torture/call_log.h reads the log.
//
// CUEDRILL_TORTURE_FOLDER  the folder: a full path without links and without a "/" at its end
// CUEDRILL_TORTURE_LOG     the file for the log, outside of the folder; without it nothing is noted
// CUEDRILL_TORTURE_CALLS   the number of the call at which the program is killed; 0 or missing for none
// CUEDRILL_TORTURE_BREAK   "lose_removed": writes to removed.txt are reported as done and not done

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <fcntl.h>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/types.h>
#include <sys/uio.h>
#include <unistd.h>

namespace {

std::string variable(const char* name)
{
    const char* const value = std::getenv(name);
    return value == nullptr ? std::string() : std::string(value);
}

std::string target_of_link(const std::string& link)
{
    std::array<char, 4096> target{};
    const ssize_t length = ::readlink(link.c_str(), target.data(), target.size());
    return length < 0 ? std::string() : std::string(target.data(), static_cast<std::size_t>(length));
}

/// Full path of an open file; ends with " (deleted)" if it has lost its name.
std::string path_of(int descriptor)
{
    const int error = errno;
    std::string path = target_of_link("/proc/self/fd/" + std::to_string(descriptor));
    errno = error;
    return path;
}

std::string path_of(int folder, const char* name)
{
    if (name[0] == '/')
        return name;
    return (folder == AT_FDCWD ? target_of_link("/proc/self/cwd") : path_of(folder)) + "/" + name;
}

class Watch {
public:
    Watch()
    {
        const std::string log = variable("CUEDRILL_TORTURE_LOG");
        if (!log.empty())
            log_ = static_cast<int>(::syscall(SYS_openat, AT_FDCWD, log.c_str(),
                                              O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, S_IRUSR | S_IWUSR));
    }

    [[nodiscard]] bool covers(const std::string& path) const
    {
        return !folder_.empty() && path.starts_with(folder_) &&
               (path.size() == folder_.size() || path[folder_.size()] == '/');
    }

    /// Counts a call that changes something.
    /// @return whether the program is to be killed at it.
    [[nodiscard]] bool count() { return calls_left_ != 0 && --calls_left_ == 0; }

    void count_or_die(const std::string& path)
    {
        if (covers(path) && count())
            std::raise(SIGKILL);
    }

    [[nodiscard]] bool swallows(const std::string& path) const
    {
        return loses_removed_ && path.ends_with("/removed.txt");
    }

    void note(char kind, const std::string& path, const std::string& second = {}, std::int64_t place = 0,
              std::string_view bytes = {}) const
    {
        if (log_ < 0)
            return;
        const int error = errno;
        std::string entry{kind};
        for (const std::string& number : {std::to_string(place), std::to_string(path.size()),
                                          std::to_string(second.size()), std::to_string(bytes.size())})
            entry.append(" ").append(number);
        entry.append("\n").append(path).append(second).append(bytes);
        // In one call, so that no other thread's entry comes into this one.
        ::syscall(SYS_write, log_, entry.data(), entry.size());
        errno = error;
    }

    /// Notes a call that has returned `result`, if it has succeeded.
    int done(int result, char kind, const std::string& path, const std::string& second = {},
             std::int64_t place = 0) const
    {
        if (result == 0 && covers(path))
            note(kind, path, second, place);
        return result;
    }

private:
    std::string folder_ = variable("CUEDRILL_TORTURE_FOLDER");
    int log_ = -1;
    std::uint64_t calls_left_ = std::strtoull(variable("CUEDRILL_TORTURE_CALLS").c_str(), nullptr, 10);
    bool loses_removed_ = variable("CUEDRILL_TORTURE_BREAK") == "lose_removed";
};

Watch& watch()
{
    // Never destroyed: other libraries still write while the program ends.
    static Watch* const the_watch = new Watch;
    return *the_watch;
}

int open_at(int folder, const char* name, int flags, mode_t mode)
{
    const std::string path = path_of(folder, name);
    const bool changes = (flags & (O_CREAT | O_TRUNC)) != 0;
    const bool covered = watch().covers(path);
    // A file without a name has no place in the log. Some file systems have none, and the libraries know that.
    if (covered && (flags & O_TMPFILE) == O_TMPFILE) {
        errno = EOPNOTSUPP;
        return -1;
    }
    if (changes)
        watch().count_or_die(path);
    const int descriptor = static_cast<int>(::syscall(SYS_openat, folder, name, flags, mode));
    if (descriptor >= 0 && covered && changes) {
        watch().note('o', path);
        if ((flags & O_TRUNC) != 0)
            watch().note('t', path);
    }
    return descriptor;
}

ssize_t write_to(int descriptor, const char* bytes, std::size_t count, std::int64_t place)
{
    const auto call = [&](std::size_t how_many) {
        return place < 0 ? ::syscall(SYS_write, descriptor, bytes, how_many)
                         : ::syscall(SYS_pwrite64, descriptor, bytes, how_many, place);
    };
    // What the program says to the test that runs it stands in the log between its writes.
    if (descriptor == STDOUT_FILENO) {
        const ssize_t written = call(count);
        if (written > 0)
            watch().note('a', {}, {}, 0, {bytes, static_cast<std::size_t>(written)});
        return written;
    }
    const std::string path = path_of(descriptor);
    if (!watch().covers(path))
        return call(count);
    if (watch().count()) {
        // A kill can come in the middle of a write.
        static_cast<void>(call(count / 2));
        std::raise(SIGKILL);
    }
    if (watch().swallows(path))
        return static_cast<ssize_t>(count);
    const ssize_t written = call(count);
    if (written > 0)
        watch().note('w', path, {}, place < 0 ? ::lseek(descriptor, 0, SEEK_CUR) - written : place,
                     {bytes, static_cast<std::size_t>(written)});
    return written;
}

int sync(long number, int descriptor)
{
    const std::string path = path_of(descriptor);
    watch().count_or_die(path);
    const int result = static_cast<int>(::syscall(number, descriptor));
    struct stat status {};
    const bool is_folder = ::fstat(descriptor, &status) == 0 && S_ISDIR(status.st_mode);
    return watch().done(result, is_folder ? 'd' : 's', path);
}

int rename_at(int from_folder, const char* from, int to_folder, const char* to, unsigned flags)
{
    const std::string old_path = path_of(from_folder, from);
    watch().count_or_die(old_path);
    const int result = static_cast<int>(::syscall(SYS_renameat2, from_folder, from, to_folder, to, flags));
    return watch().done(result, 'r', old_path, path_of(to_folder, to));
}

int link_at(int from_folder, const char* from, int to_folder, const char* to, int flags)
{
    const std::string old_path = path_of(from_folder, from);
    watch().count_or_die(old_path);
    const int result = static_cast<int>(::syscall(SYS_linkat, from_folder, from, to_folder, to, flags));
    return watch().done(result, 'l', old_path, path_of(to_folder, to));
}

int unlink_at(int folder, const char* name, int flags)
{
    const std::string path = path_of(folder, name);
    watch().count_or_die(path);
    const int result = static_cast<int>(::syscall(SYS_unlinkat, folder, name, flags));
    return watch().done(result, (flags & AT_REMOVEDIR) != 0 ? 'x' : 'u', path);
}

int make_folder_at(int folder, const char* name, mode_t mode)
{
    const std::string path = path_of(folder, name);
    watch().count_or_die(path);
    return watch().done(static_cast<int>(::syscall(SYS_mkdirat, folder, name, mode)), 'm', path);
}

int set_size(int descriptor, off_t size)
{
    const std::string path = path_of(descriptor);
    watch().count_or_die(path);
    return watch().done(static_cast<int>(::syscall(SYS_ftruncate, descriptor, size)), 't', path, {}, size);
}

int set_size(const char* name, off_t size)
{
    const std::string path = path_of(AT_FDCWD, name);
    watch().count_or_die(path);
    return watch().done(static_cast<int>(::syscall(SYS_truncate, name, size)), 't', path, {}, size);
}

/// The mode that a call of open has, if it has one.
mode_t mode_of(int flags, std::va_list arguments)
{
    const bool has_mode = (flags & O_CREAT) != 0 || (flags & O_TMPFILE) == O_TMPFILE;
    return has_mode ? va_arg(arguments, mode_t) : 0;
}

} // namespace

extern "C" {

int open(const char* name, int flags, ...)
{
    std::va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = mode_of(flags, arguments);
    va_end(arguments);
    return open_at(AT_FDCWD, name, flags, mode);
}

int open64(const char* name, int flags, ...)
{
    std::va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = mode_of(flags, arguments);
    va_end(arguments);
    return open_at(AT_FDCWD, name, flags, mode);
}

int openat(int folder, const char* name, int flags, ...)
{
    std::va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = mode_of(flags, arguments);
    va_end(arguments);
    return open_at(folder, name, flags, mode);
}

int openat64(int folder, const char* name, int flags, ...)
{
    std::va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = mode_of(flags, arguments);
    va_end(arguments);
    return open_at(folder, name, flags, mode);
}

int creat(const char* name, mode_t mode)
{
    return open_at(AT_FDCWD, name, O_WRONLY | O_CREAT | O_TRUNC, mode);
}

int creat64(const char* name, mode_t mode)
{
    return open_at(AT_FDCWD, name, O_WRONLY | O_CREAT | O_TRUNC, mode);
}

ssize_t write(int descriptor, const void* bytes, std::size_t count)
{
    return write_to(descriptor, static_cast<const char*>(bytes), count, -1);
}

ssize_t pwrite(int descriptor, const void* bytes, std::size_t count, off_t place)
{
    return write_to(descriptor, static_cast<const char*>(bytes), count, place);
}

ssize_t pwrite64(int descriptor, const void* bytes, std::size_t count, off64_t place)
{
    return write_to(descriptor, static_cast<const char*>(bytes), count, place);
}

ssize_t writev(int descriptor, const iovec* pieces, int count)
{
    std::string bytes;
    for (int i = 0; i < count; ++i)
        bytes.append(static_cast<const char*>(pieces[i].iov_base), pieces[i].iov_len);
    return write_to(descriptor, bytes.data(), bytes.size(), -1);
}

int ftruncate(int descriptor, off_t size) noexcept
{
    return set_size(descriptor, size);
}

int ftruncate64(int descriptor, off64_t size) noexcept
{
    return set_size(descriptor, size);
}

int truncate(const char* name, off_t size) noexcept
{
    return set_size(name, size);
}

int truncate64(const char* name, off64_t size) noexcept
{
    return set_size(name, size);
}

int fsync(int descriptor)
{
    return sync(SYS_fsync, descriptor);
}

int fdatasync(int descriptor)
{
    return sync(SYS_fdatasync, descriptor);
}

int rename(const char* from, const char* to) noexcept
{
    return rename_at(AT_FDCWD, from, AT_FDCWD, to, 0);
}

int renameat(int from_folder, const char* from, int to_folder, const char* to) noexcept
{
    return rename_at(from_folder, from, to_folder, to, 0);
}

int renameat2(int from_folder, const char* from, int to_folder, const char* to, unsigned flags) noexcept
{
    return rename_at(from_folder, from, to_folder, to, flags);
}

int link(const char* from, const char* to) noexcept
{
    return link_at(AT_FDCWD, from, AT_FDCWD, to, 0);
}

int linkat(int from_folder, const char* from, int to_folder, const char* to, int flags) noexcept
{
    return link_at(from_folder, from, to_folder, to, flags);
}

int unlink(const char* name) noexcept
{
    return unlink_at(AT_FDCWD, name, 0);
}

int unlinkat(int folder, const char* name, int flags) noexcept
{
    return unlink_at(folder, name, flags);
}

int rmdir(const char* name) noexcept
{
    return unlink_at(AT_FDCWD, name, AT_REMOVEDIR);
}

int remove(const char* name) noexcept
{
    const int result = unlink_at(AT_FDCWD, name, 0);
    return result != 0 && errno == EISDIR ? unlink_at(AT_FDCWD, name, AT_REMOVEDIR) : result;
}

int mkdir(const char* name, mode_t mode) noexcept
{
    return make_folder_at(AT_FDCWD, name, mode);
}

int mkdirat(int folder, const char* name, mode_t mode) noexcept
{
    return make_folder_at(folder, name, mode);
}
}
