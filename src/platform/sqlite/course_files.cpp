#include "platform/sqlite/course_files.h"

#include "platform/sqlite/engine_error.h"

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <fcntl.h>
#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

namespace cuedrill::platform::sqlite {
namespace {

// Our own result codes, outside the range of the engine's extended codes. Because they are I/O errors, the engine stops
// at once, without trying to clean up, and passes them on unchanged.
constexpr int own_result(int number)
{
    return SQLITE_IOERR | (number << 8);
}
constexpr int journal_names_a_file = own_result(240);
constexpr int journal_is_unusable = own_result(241);
constexpr int log_is_unusable = own_result(242);

constexpr const char* journal_ending = "-journal";
constexpr const char* log_ending = "-wal";

struct Neighbour {
    std::string path;
    int unusable; ///< the result code if something else has this name
};

/// State shared by the open files of one course.
struct Common {
    std::string course;
    bool read_failed = false;
    int write_error = 0; ///< errno of the last failed write or failed creation of a journal; 0 if there is none
    bool limits_depth = false;
    int inner_pages = 0; ///< number of interior pages read in a row, without a leaf page between them
};

/// The start of each file object that the engine opens through `CourseFiles`. In memory, the file object of the real
/// VFS follows it.
struct CourseFile {
    sqlite3_file base;
    Common* common;
    int flags; ///< the SQLITE_OPEN flags it was opened with
};

CourseFile& opened(sqlite3_file* file)
{
    return *reinterpret_cast<CourseFile*>(file);
}

sqlite3_file* real(sqlite3_file* file)
{
    return reinterpret_cast<sqlite3_file*>(reinterpret_cast<CourseFile*>(file) + 1);
}

int close_file(sqlite3_file* file)
{
    return real(file)->pMethods == nullptr ? SQLITE_OK : real(file)->pMethods->xClose(real(file));
}

// The page trees of a course are only a few pages deep, and leaf pages that are not cached are read in between. A sound
// file stays far below this number.
constexpr int most_inner_pages = 2000;
constexpr int smallest_page = 512;

/// Counts interior pages that are read in a row. The engine's integrity check recurses into page trees: a long chain of
/// pages, each the parent of the next one, would overflow the stack.
int check_depth(Common& common, const void* page)
{
    constexpr unsigned char inner_page_of_index = 2;
    constexpr unsigned char inner_page_of_table = 5;
    const unsigned char kind = *static_cast<const unsigned char*>(page);
    common.inner_pages = kind == inner_page_of_index || kind == inner_page_of_table ? common.inner_pages + 1 : 0;
    return common.inner_pages > most_inner_pages ? SQLITE_CORRUPT : SQLITE_OK;
}

int read_file(sqlite3_file* file, void* bytes, int count, sqlite3_int64 place)
{
    Common& common = *opened(file).common;
    const int code = real(file)->pMethods->xRead(real(file), bytes, count, place);
    if (code != SQLITE_OK && code != SQLITE_IOERR_SHORT_READ)
        common.read_failed = true;
    if (code == SQLITE_OK && common.limits_depth && count >= smallest_page)
        return check_depth(common, bytes);
    return code;
}

/// Writes, and keeps the errno of a failure for all files of the course: the disk may be full when the journal is
/// written, but the engine's last errno is requested from the course file.
int write_file(sqlite3_file* file, const void* bytes, int count, sqlite3_int64 place)
{
    const int code = real(file)->pMethods->xWrite(real(file), bytes, count, place);
    if (code == SQLITE_IOERR_WRITE)
        real(file)->pMethods->xFileControl(real(file), SQLITE_FCNTL_LAST_ERRNO, &opened(file).common->write_error);
    return code;
}

/// Like the real VFS, except that other failures than a missing path are errors; the real VFS takes any failure of
/// stat() for a moved file.
int tell_whether_moved(const char* course, sqlite3_file* inner, void* moved)
{
    struct stat status {};
    if (::stat(course, &status) != 0) {
        *static_cast<int*>(moved) = 1;
        return errno == ENOENT || errno == ENOTDIR ? SQLITE_OK : SQLITE_IOERR_FSTAT;
    }
    return inner->pMethods->xFileControl(inner, SQLITE_FCNTL_HAS_MOVED, moved);
}

int control_file(sqlite3_file* file, int operation, void* argument)
{
    const Common& common = *opened(file).common;
    if (operation == SQLITE_FCNTL_HAS_MOVED && (opened(file).flags & SQLITE_OPEN_MAIN_DB) != 0)
        return tell_whether_moved(common.course.c_str(), real(file), argument);
    if (operation == SQLITE_FCNTL_LAST_ERRNO && common.write_error != 0) {
        *static_cast<int*>(argument) = common.write_error;
        return SQLITE_OK;
    }
    return real(file)->pMethods->xFileControl(real(file), operation, argument);
}

/// Version 1 of the methods. It has no shared memory, which would be one more file, and no memory mapping, where a
/// failing read is a signal instead of an error code.
constexpr sqlite3_io_methods file_methods()
{
    sqlite3_io_methods methods{};
    methods.iVersion = 1;
    methods.xClose = close_file;
    methods.xRead = read_file;
    methods.xWrite = write_file;
    methods.xTruncate = [](sqlite3_file* f, sqlite3_int64 size) { return real(f)->pMethods->xTruncate(real(f), size); };
    methods.xSync = [](sqlite3_file* f, int flags) { return real(f)->pMethods->xSync(real(f), flags); };
    methods.xFileSize = [](sqlite3_file* f, sqlite3_int64* size) {
        return real(f)->pMethods->xFileSize(real(f), size);
    };
    methods.xLock = [](sqlite3_file* f, int level) { return real(f)->pMethods->xLock(real(f), level); };
    methods.xUnlock = [](sqlite3_file* f, int level) { return real(f)->pMethods->xUnlock(real(f), level); };
    methods.xCheckReservedLock = [](sqlite3_file* f, int* held) {
        return real(f)->pMethods->xCheckReservedLock(real(f), held);
    };
    methods.xFileControl = control_file;
    methods.xSectorSize = [](sqlite3_file* f) { return real(f)->pMethods->xSectorSize(real(f)); };
    methods.xDeviceCharacteristics = [](sqlite3_file* f) { return real(f)->pMethods->xDeviceCharacteristics(real(f)); };
    return methods;
}

constexpr sqlite3_io_methods methods_of_course_file = file_methods();

std::uint32_t number_at(const unsigned char* bytes)
{
    return std::uint32_t{bytes[0]} << 24U | std::uint32_t{bytes[1]} << 16U | std::uint32_t{bytes[2]} << 8U | bytes[3];
}

/// The journal of a transaction over several files ends with the name of the file that lists all their journals: the
/// name, its length, its checksum, and these bytes. After a crash the engine deletes the file of that name once it
/// considers it used up. The checksum is not verified here, because this program's journals never end like this.
constexpr std::array<unsigned char, 8> end_of_name{0xD9, 0xD5, 0x05, 0xF9, 0x20, 0xA1, 0x63, 0xD7};
constexpr std::size_t size_of_record = 16; // bytes, without the name

int check_end_of_journal(sqlite3_file* file, sqlite3_int64 size)
{
    std::array<unsigned char, size_of_record> record{};
    if (size < sqlite3_int64{size_of_record})
        return SQLITE_OK;
    const int code = file->pMethods->xRead(file, record.data(), static_cast<int>(record.size()),
                                           size - sqlite3_int64{size_of_record});
    if (code != SQLITE_OK)
        return code;
    const bool has_name = std::memcmp(&record[8], end_of_name.data(), end_of_name.size()) == 0;
    const sqlite3_int64 length = number_at(record.data());
    return has_name && length > 0 && length <= size - sqlite3_int64{size_of_record} ? journal_names_a_file : SQLITE_OK;
}

/// Refuses a database that has the name of this course's journal. The engine would take it for an invalid journal and
/// delete it.
int check_start_of_journal(sqlite3_file* file)
{
    std::array<char, 16> start{};
    const int code = file->pMethods->xRead(file, start.data(), static_cast<int>(start.size()), 0);
    if (code != SQLITE_OK && code != SQLITE_IOERR_SHORT_READ)
        return code;
    return std::memcmp(start.data(), "SQLite format 3", start.size()) == 0 ? journal_is_unusable : SQLITE_OK;
}

/// Refuses a journal that states a far larger file size. When the engine rolls a journal back, it extends the file to
/// the size that the journal states.
int check_stated_size(sqlite3_file* file, const std::string& course)
{
    constexpr std::array<unsigned char, 8> start_of_journal{0xD9, 0xD5, 0x05, 0xF9, 0x20, 0xA1, 0x63, 0xD7};
    constexpr std::uint64_t most_growth = 1024 * 1024 * 1024;
    constexpr std::size_t place_of_pages = 16;
    constexpr std::size_t place_of_page_size = 24;
    std::array<unsigned char, 28> header{};
    const int code = file->pMethods->xRead(file, header.data(), static_cast<int>(header.size()), 0);
    if (code != SQLITE_OK)
        return code == SQLITE_IOERR_SHORT_READ ? SQLITE_OK : code;
    struct stat status {};
    if (std::memcmp(header.data(), start_of_journal.data(), start_of_journal.size()) != 0 ||
        ::stat(course.c_str(), &status) != 0)
        return SQLITE_OK;
    const std::uint64_t stated =
        std::uint64_t{number_at(&header[place_of_pages])} * number_at(&header[place_of_page_size]);
    return stated > static_cast<std::uint64_t>(status.st_size) + most_growth ? journal_is_unusable : SQLITE_OK;
}

int check_journal(sqlite3_file* file, const std::string& course)
{
    sqlite3_int64 size = 0;
    const int code = file->pMethods->xFileSize(file, &size);
    if (code != SQLITE_OK || size == 0)
        return code;
    const int end = check_end_of_journal(file, size);
    if (end != SQLITE_OK)
        return end;
    const int start = check_start_of_journal(file);
    return start == SQLITE_OK ? check_stated_size(file, course) : start;
}

/// The errno with which creating a journal fails; 0 if it succeeds now. If the real VFS cannot create a file, it tries
/// to open it for reading and only reports why that fails.
int obstacle_to_creating(sqlite3_vfs* real_system, const char* path)
{
    using OpenCall = int (*)(const char*, int, int);
    const auto open_call = reinterpret_cast<OpenCall>(real_system->xGetSystemCall(real_system, "open"));
    const int descriptor = open_call(path, O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR);
    if (descriptor < 0)
        return errno;
    ::close(descriptor);
    ::unlink(path);
    return 0;
}

/// Accepts only a missing file or a regular file with a single hard link. A symbolic link would lead the engine to
/// another file, a second hard link means that the file is not only the course's, and a pipe would block.
/// @param exists set to true if the file exists and is not empty.
int check_kind(const Neighbour& neighbour, bool& exists)
{
    struct stat status {};
    exists = ::lstat(neighbour.path.c_str(), &status) == 0;
    if (!exists)
        return errno == ENOENT ? SQLITE_OK : SQLITE_IOERR_ACCESS;
    if (!S_ISREG(status.st_mode) || status.st_nlink > 1)
        return neighbour.unusable;
    exists = status.st_size > 0; // for the engine, an empty journal or log does not exist
    return SQLITE_OK;
}

} // namespace

struct CourseFiles::System {
    explicit System(const std::string& course_path)
        : journal{course_path + journal_ending, journal_is_unusable}, log{course_path + log_ending, log_is_unusable},
          real_system(sqlite3_vfs_find(nullptr)),
          // Several courses may be open at once, so each one needs a VFS name of its own.
          name("cuedrill-" + std::to_string(reinterpret_cast<std::uintptr_t>(this)))
    {
        common.course = course_path;
    }

    static System& of(sqlite3_vfs* vfs) { return *static_cast<System*>(vfs->pAppData); }

    [[nodiscard]] const Neighbour* neighbour(const char* path) const
    {
        if (path == nullptr)
            return nullptr;
        if (journal.path == path)
            return &journal;
        return log.path == path ? &log : nullptr;
    }

    int open(const char* path, sqlite3_file* file, int flags, int* flags_out);
    [[nodiscard]] int check_name(const char* path, int flags) const;
    void make_interface();

    Common common;
    Neighbour journal;
    Neighbour log;
    sqlite3_vfs* real_system;
    std::string name;
    sqlite3_vfs interface {
    };
};

int CourseFiles::System::check_name(const char* path, int flags) const
{
    if ((flags & SQLITE_OPEN_SUPER_JOURNAL) != 0)
        return journal_names_a_file;
    if ((flags & SQLITE_OPEN_MAIN_DB) != 0)
        return path != nullptr && common.course == path ? SQLITE_OK : SQLITE_CANTOPEN;
    const Neighbour* const found = neighbour(path);
    const int kinds = flags & (SQLITE_OPEN_MAIN_JOURNAL | SQLITE_OPEN_WAL);
    if (found == nullptr || kinds != (found == &journal ? SQLITE_OPEN_MAIN_JOURNAL : SQLITE_OPEN_WAL))
        return SQLITE_CANTOPEN;
    bool exists = false;
    return check_kind(*found, exists);
}

int CourseFiles::System::open(const char* path, sqlite3_file* file, int flags, int* flags_out)
{
    file->pMethods = nullptr;
    int code = check_name(path, flags);
    if (code != SQLITE_OK)
        return code;
    sqlite3_file* const inner = real(file);
    std::memset(static_cast<void*>(inner), 0, static_cast<std::size_t>(real_system->szOsFile));
    code = real_system->xOpen(real_system, path, inner, flags, flags_out);
    if (code == SQLITE_CANTOPEN && (flags & SQLITE_OPEN_MAIN_JOURNAL) != 0)
        common.write_error = obstacle_to_creating(real_system, path);
    if (code == SQLITE_OK && (flags & SQLITE_OPEN_MAIN_JOURNAL) != 0) {
        code = check_journal(inner, common.course);
        if (code != SQLITE_OK)
            inner->pMethods->xClose(inner);
    }
    if (code != SQLITE_OK)
        return code;
    opened(file).common = &common;
    opened(file).flags = flags;
    file->pMethods = &methods_of_course_file;
    return SQLITE_OK;
}

void CourseFiles::System::make_interface()
{
    interface = *real_system;
    interface.iVersion = 2; // version 3 would let callers replace system calls
    interface.zName = name.c_str();
    interface.pNext = nullptr;
    interface.pAppData = this;
    interface.szOsFile = static_cast<int>(sizeof(CourseFile)) + real_system->szOsFile;
    interface.xOpen = [](sqlite3_vfs* vfs, sqlite3_filename path, sqlite3_file* file, int flags, int* flags_out) {
        return of(vfs).open(path, file, flags, flags_out);
    };
    interface.xDelete = [](sqlite3_vfs* vfs, const char* path, int sync_folder) {
        const System& system = of(vfs);
        return system.neighbour(path) == nullptr ? journal_names_a_file
                                                 : system.real_system->xDelete(system.real_system, path, sync_folder);
    };
    interface.xAccess = [](sqlite3_vfs* vfs, const char* path, int, int* found) {
        *found = 0;
        const Neighbour* const neighbour = of(vfs).neighbour(path);
        if (neighbour == nullptr)
            return journal_names_a_file;
        bool exists = false;
        const int code = check_kind(*neighbour, exists);
        *found = exists ? 1 : 0;
        return code;
    };
    interface.xFullPathname = [](sqlite3_vfs* vfs, const char* path, int size, char* full) {
        const System& system = of(vfs);
        return system.common.course == path ? system.real_system->xFullPathname(system.real_system, path, size, full)
                                            : SQLITE_CANTOPEN;
    };
    interface.xDlOpen = [](sqlite3_vfs*, const char*) { return static_cast<void*>(nullptr); };
}

CourseFiles::CourseFiles(const std::string& course) : system_(std::make_unique<System>(course))
{
    if (system_->real_system == nullptr)
        throw own_error(DatabaseErrorKind::other, "The database engine has no file system.");
    system_->make_interface();
    const int code = sqlite3_vfs_register(&system_->interface, 0);
    if (code != SQLITE_OK)
        throw database_error(code, 0, sqlite3_errstr(code));
}

CourseFiles::~CourseFiles()
{
    sqlite3_vfs_unregister(&system_->interface);
}

const char* CourseFiles::name() const noexcept
{
    return system_->name.c_str();
}

bool CourseFiles::read_failed() const noexcept
{
    return system_->common.read_failed;
}

void CourseFiles::limit_depth(bool limited) noexcept
{
    system_->common.limits_depth = limited;
    system_->common.inner_pages = 0;
}

std::optional<DatabaseError> error_of_course_files(int code, std::string_view course)
{
    if (code != journal_names_a_file && code != journal_is_unusable && code != log_is_unusable)
        return std::nullopt;
    const std::string file =
        std::string(course.substr(course.rfind('/') + 1)) + (code == log_is_unusable ? log_ending : journal_ending);
    if (code == journal_names_a_file)
        return DatabaseError(DatabaseErrorKind::damaged, code,
                             "The file beside it, " + file +
                                 ", names another file that would be deleted. Nothing was changed or deleted. No "
                                 "course of this program has such a file: get the course once more from where it came "
                                 "from.");
    return DatabaseError(DatabaseErrorKind::damaged, code,
                         "Beside it lies " + file +
                             ", which is no file of the course: it is a link, a folder, a pipe, another course, the "
                             "journal of a far larger file, or has a second name. Nothing was changed. Give it another "
                             "name or place, then open the course "
                             "again.");
}

} // namespace cuedrill::platform::sqlite
