#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

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

    /// Creates the folder and its missing parents, accessible to this user only. An existing folder is left unchanged.
    /// @throws common::Error with the path and the reason when it cannot be created.
    virtual void create_folder(const std::string& path) = 0;
};

} // namespace cuedrill::platform
