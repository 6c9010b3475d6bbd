#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace cuedrill::platform {

/// A file that is read sequentially, in pieces.
class FileReading {
public:
    FileReading() = default;
    FileReading(const FileReading&) = delete;
    FileReading& operator=(const FileReading&) = delete;
    virtual ~FileReading() = default;

    /// Size in bytes when the file was opened. Only a hint: the file may grow, and some files report 0.
    [[nodiscard]] virtual std::uint64_t size() const = 0;

    /// The next bytes, at most `most`; empty at the end of the file.
    /// @throws common::Error with the path and the reason when the file cannot be read or exceeds the permitted length.
    [[nodiscard]] virtual std::string read(std::size_t most) = 0;

    /// Goes back to the first byte.
    /// @throws common::Error with the path and the reason.
    virtual void rewind() = 0;

    /// Leaves out bytes: the next `read` starts `place` bytes after the first one. A place behind the end reads as the
    /// end.
    /// @throws common::Error with the path and the reason.
    virtual void go_to(std::uint64_t place) = 0;
};

/// New contents for a file. They are written to a new file next to it, which is renamed over it when complete. Until
/// then the old file is unchanged; if the contents are never completed, the new file stays next to it.
class Replacement {
public:
    Replacement() = default;
    Replacement(const Replacement&) = delete;
    Replacement& operator=(const Replacement&) = delete;
    virtual ~Replacement() = default;

    /// Full path of the file being written.
    [[nodiscard]] virtual const std::string& path() const = 0;

    /// Appends bytes; they may not reach the disk before `finish`.
    /// @throws common::Error with the path and the reason.
    virtual void write(std::string_view bytes) = 0;

    /// Discards what was written so far.
    /// @throws common::Error with the path and the reason.
    virtual void restart() = 0;

    /// Makes the contents durable, then renames the new file to the file's name. Call nothing afterwards.
    /// @throws common::Error with the path and the reason; the old file is unchanged then.
    virtual void finish() = 0;
};

/// An advisory lock on a file. It lasts until this object is destroyed or the process ends, in whatever way.
class FileHold {
public:
    FileHold() = default;
    FileHold(const FileHold&) = delete;
    FileHold& operator=(const FileHold&) = delete;
    virtual ~FileHold() = default;

    /// Whether nobody else can hold the file now. False on a file system without locks.
    [[nodiscard]] virtual bool is_sure() const = 0;
};

/// The files that the program reads, writes or appends to as text. Paths and contents are bytes.
class Files {
public:
    virtual ~Files() = default;

    /// Whether a file, folder or anything else of that name exists. False on any error.
    [[nodiscard]] virtual bool exists(const std::string& path) const = 0;

    /// Whether the name refers to a regular file, directly or through links. False on any error.
    [[nodiscard]] virtual bool is_regular_file(const std::string& path) const = 0;

    /// Whether the name refers to a folder, directly or through links. False on any error.
    [[nodiscard]] virtual bool is_folder(const std::string& path) const = 0;

    /// Whether both names refer to the same file, by device and inode. False on any error.
    [[nodiscard]] virtual bool is_same_file(const std::string& a, const std::string& b) const = 0;

    /// `path` made absolute against the working folder; unchanged if it is absolute or empty.
    [[nodiscard]] virtual std::string absolute(const std::string& path) const = 0;

    /// Opens a file for reading.
    /// @param longest the most bytes that the file may hold.
    /// @throws common::Error with the path and the reason when the file cannot be opened.
    [[nodiscard]] virtual std::unique_ptr<FileReading> begin_reading(const std::string& path,
                                                                     std::uint64_t longest) const = 0;

    /// Appends `bytes` if the file is shorter than `limit` bytes. Creates a missing file.
    /// @return false, with nothing written, if the file already holds `limit` bytes or more.
    /// @throws common::Error with the path and the reason when the file cannot be opened or written.
    virtual bool append_below(const std::string& path, std::uint64_t limit, std::string_view bytes) = 0;

    /// Begins new contents for the file that `path` refers to, directly or through links, or for a new file. An
    /// existing file keeps its permissions.
    /// @throws common::Error with the path and the reason when no file can be created next to it, when this user may
    /// not write the existing file, or when the name belongs to something other than a regular file.
    [[nodiscard]] virtual std::unique_ptr<Replacement> begin_replacement(const std::string& path) = 0;

    /// Makes the folder the process's working folder, against which relative names are resolved.
    /// @throws common::Error with the path and the reason.
    virtual void change_folder(const std::string& path) = 0;

    /// Whether the name refers to a folder in which this user may create files. False on any error.
    [[nodiscard]] virtual bool is_writable_folder(const std::string& path) const = 0;

    /// Creates the folder and its missing parents, accessible to this user only, and waits until their names are on the
    /// disk. An existing folder is left unchanged.
    /// @throws common::Error with the path and the reason when it cannot be created.
    virtual void create_folder(const std::string& path) = 0;

    /// Appends `bytes` and waits until they are on the disk (fsync). Creates a missing file, for this user only. If
    /// this fails, the file has its former size again, as far as the system permits. Two programs that append at the
    /// same time need a `hold`.
    /// @throws common::Error with the path and the reason.
    virtual void append_durably(const std::string& path, std::string_view bytes) = 0;

    /// Appends whole lines in one write, which does not wait for the disk. Creates a missing file, for this user only.
    /// If a crash has cut off the file's last line, the lines begin on a new one; if they cannot all be written, the
    /// next append finds such a line. Two programs that append at the same time need a `hold`.
    /// @param first_line what a new or empty file begins with, with its line end (LF).
    /// @param lines each with its line end (LF).
    /// @throws common::Error with the path and the reason.
    virtual void append_lines(const std::string& path, std::string_view first_line, std::string_view lines) = 0;

    /// Gives a file another name in the same folder, durably. Never replaces a file.
    /// @throws common::Error with the path and the reason, also if `to` exists already; nothing has changed then.
    virtual void rename_to_free_name(const std::string& from, const std::string& to) = 0;

    /// Removes a file. A missing file counts as removed.
    /// @throws common::Error with the path and the reason.
    virtual void remove(const std::string& path) = 0;

    /// The names of everything in the folder, without its path, sorted.
    /// @throws common::Error with the path and the reason.
    [[nodiscard]] virtual std::vector<std::string> names_in(const std::string& folder) const = 0;

    /// Locks a file, which is created if it is missing. The holder may remove the file before releasing the lock.
    /// @param patience how long another holder is waited for.
    /// @return null if somebody else still holds the file then.
    /// @throws common::Error with the path and the reason when the file cannot be created or opened.
    [[nodiscard]] virtual std::unique_ptr<FileHold> hold(const std::string& path,
                                                         std::chrono::milliseconds patience) = 0;
};

} // namespace cuedrill::platform
