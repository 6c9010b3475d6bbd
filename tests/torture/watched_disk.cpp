#include "torture/watched_disk.h"

#include <array>
#include <cstddef>
#include <cstring>
#include <sqlite3.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace cuedrill::torture {
namespace {

using OpenFolder = int (*)(const char*, int*);

/// The disk being watched. There is one at a time, because the linker wraps the calls of the whole program.
struct Watch {
    DiskWatcher* watcher = nullptr;
    sqlite3_vfs* real_system = nullptr;
    sqlite3_vfs system{};
    OpenFolder open_folder = nullptr;
    bool folder_was_opened = false; ///< the engine opens a folder only to sync it
};

Watch watch;

struct WatchedFile {
    sqlite3_file base;
    const char* path;
};

const char* path_of(sqlite3_file* file)
{
    return reinterpret_cast<WatchedFile*>(file)->path;
}

sqlite3_file* real(sqlite3_file* file)
{
    return reinterpret_cast<sqlite3_file*>(reinterpret_cast<WatchedFile*>(file) + 1);
}

template <typename Made>
int pass(const FileCall& call, Made made)
{
    if (const auto result = watch.watcher->before(call))
        return *result;
    watch.folder_was_opened = false;
    const int code = made();
    const int told = code == SQLITE_OK ? watch.watcher->after(call) : code;
    if (code == SQLITE_OK && watch.folder_was_opened)
        watch.watcher->folder_synced(call.path);
    return told;
}

int write_file(sqlite3_file* file, const void* bytes, int count, sqlite3_int64 place)
{
    return pass({.kind = CallKind::write,
                 .path = path_of(file),
                 .place = place,
                 .bytes = static_cast<const char*>(bytes),
                 .count = count},
                [&] { return real(file)->pMethods->xWrite(real(file), bytes, count, place); });
}

int read_file(sqlite3_file* file, void* bytes, int count, sqlite3_int64 place)
{
    return pass({.kind = CallKind::read, .path = path_of(file), .place = place, .count = count},
                [&] { return real(file)->pMethods->xRead(real(file), bytes, count, place); });
}

int truncate_file(sqlite3_file* file, sqlite3_int64 size)
{
    return pass({.kind = CallKind::truncate, .path = path_of(file), .place = size},
                [&] { return real(file)->pMethods->xTruncate(real(file), size); });
}

int sync_file(sqlite3_file* file, int flags)
{
    return pass({.kind = CallKind::sync, .path = path_of(file)},
                [&] { return real(file)->pMethods->xSync(real(file), flags); });
}

int lock_file(sqlite3_file* file, int level)
{
    return pass({.kind = CallKind::lock, .path = path_of(file)},
                [&] { return real(file)->pMethods->xLock(real(file), level); });
}

int unlock_file(sqlite3_file* file, int level)
{
    return pass({.kind = CallKind::unlock, .path = path_of(file)},
                [&] { return real(file)->pMethods->xUnlock(real(file), level); });
}

constexpr sqlite3_io_methods watched_methods()
{
    sqlite3_io_methods methods{};
    methods.iVersion = 1;
    methods.xClose = [](sqlite3_file* f) { return real(f)->pMethods->xClose(real(f)); };
    methods.xRead = read_file;
    methods.xWrite = write_file;
    methods.xTruncate = truncate_file;
    methods.xSync = sync_file;
    methods.xFileSize = [](sqlite3_file* f, sqlite3_int64* size) {
        return real(f)->pMethods->xFileSize(real(f), size);
    };
    methods.xLock = lock_file;
    methods.xUnlock = unlock_file;
    methods.xCheckReservedLock = [](sqlite3_file* f, int* held) {
        return real(f)->pMethods->xCheckReservedLock(real(f), held);
    };
    methods.xFileControl = [](sqlite3_file* f, int operation, void* argument) {
        return real(f)->pMethods->xFileControl(real(f), operation, argument);
    };
    methods.xSectorSize = [](sqlite3_file* f) { return real(f)->pMethods->xSectorSize(real(f)); };
    methods.xDeviceCharacteristics = [](sqlite3_file* f) { return real(f)->pMethods->xDeviceCharacteristics(real(f)); };
    return methods;
}

constexpr sqlite3_io_methods methods_in_use = watched_methods();

int open_file(sqlite3_vfs*, sqlite3_filename name, sqlite3_file* file, int flags, int* flags_out)
{
    file->pMethods = nullptr;
    const FileCall call{.kind = CallKind::open, .path = name == nullptr ? "" : name};
    sqlite3_file* const inner = real(file);
    return pass(call, [&] {
        std::memset(static_cast<void*>(inner), 0, static_cast<std::size_t>(watch.real_system->szOsFile));
        const int code = watch.real_system->xOpen(watch.real_system, name, inner, flags, flags_out);
        if (code != SQLITE_OK)
            return code;
        reinterpret_cast<WatchedFile*>(file)->path = call.path;
        file->pMethods = &methods_in_use;
        return code;
    });
}

int remove_file(sqlite3_vfs*, const char* name, int sync_folder)
{
    return pass({.kind = CallKind::remove, .path = name},
                [&] { return watch.real_system->xDelete(watch.real_system, name, sync_folder); });
}

int open_folder(const char* path, int* descriptor)
{
    const int code = watch.open_folder(path, descriptor);
    watch.folder_was_opened = watch.folder_was_opened || code == SQLITE_OK;
    return code;
}

} // namespace

WatchedDisk::WatchedDisk(DiskWatcher& watcher)
{
    watch.watcher = &watcher;
    watch.real_system = sqlite3_vfs_find(nullptr);
    watch.system = *watch.real_system;
    watch.system.zName = "watched";
    watch.system.pNext = nullptr;
    watch.system.szOsFile = watch.real_system->szOsFile + static_cast<int>(sizeof(WatchedFile));
    watch.system.xOpen = open_file;
    watch.system.xDelete = remove_file;
    watch.open_folder =
        reinterpret_cast<OpenFolder>(watch.real_system->xGetSystemCall(watch.real_system, "openDirectory"));
    watch.real_system->xSetSystemCall(watch.real_system, "openDirectory",
                                      reinterpret_cast<sqlite3_syscall_ptr>(open_folder));
    sqlite3_vfs_register(&watch.system, 1);
}

WatchedDisk::~WatchedDisk()
{
    sqlite3_vfs_unregister(&watch.system);
    watch.real_system->xSetSystemCall(watch.real_system, "openDirectory", nullptr);
    sqlite3_vfs_register(watch.real_system, 1);
    watch = {};
}

namespace {

std::string folder_of_descriptor(int descriptor)
{
    std::array<char, 4096> target{};
    const std::string entry = "/proc/self/fd/" + std::to_string(descriptor);
    const ssize_t length = ::readlink(entry.c_str(), target.data(), target.size());
    return length < 0 ? std::string() : std::string(target.data(), static_cast<std::size_t>(length));
}

bool is_folder(int descriptor)
{
    struct stat status {};
    return ::fstat(descriptor, &status) == 0 && S_ISDIR(status.st_mode);
}

} // namespace

DiskWatcher* present_watcher()
{
    return watch.watcher;
}

void tell_of_folder(int descriptor)
{
    if (watch.watcher != nullptr && is_folder(descriptor))
        watch.watcher->folder_synced(folder_of_descriptor(descriptor) + "/");
}

} // namespace cuedrill::torture

// The linker leads the program's calls here (--wrap, see CMakeLists.txt); the engine's own calls do not come this way.
// NOLINTBEGIN(bugprone-reserved-identifier, readability-identifier-naming)
extern "C" {
int __real_link(const char* from, const char* to);
int __real_unlink(const char* path);
int __real_fsync(int descriptor);

int __wrap_link(const char* from, const char* to)
{
    const int result = __real_link(from, to);
    if (result == 0 && cuedrill::torture::present_watcher() != nullptr)
        cuedrill::torture::present_watcher()->linked(from, to);
    return result;
}

int __wrap_unlink(const char* path)
{
    const int result = __real_unlink(path);
    if (result == 0 && cuedrill::torture::present_watcher() != nullptr)
        cuedrill::torture::present_watcher()->unlinked(path);
    return result;
}

int __wrap_fsync(int descriptor)
{
    const int result = __real_fsync(descriptor);
    if (result == 0)
        cuedrill::torture::tell_of_folder(descriptor);
    return result;
}
}
// NOLINTEND(bugprone-reserved-identifier, readability-identifier-naming)
