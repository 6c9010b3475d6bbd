#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace cuedrill::platform {

/// A file that is read piece by piece, first to last.
class FileReading {
public:
    FileReading() = default;
    FileReading(const FileReading&) = delete;
    FileReading& operator=(const FileReading&) = delete;
    virtual ~FileReading() = default;

    /// Size in bytes as the system told it at the beginning. It is no promise: the file may grow, and some tell 0.
    [[nodiscard]] virtual std::uint64_t size() const = 0;

    /// The next bytes, at most `most`; none at the end of the file.
    /// @throws common::Error with the path and the reason when the file cannot be read, or is longer than was allowed.
    [[nodiscard]] virtual std::string read(std::size_t most) = 0;

    /// Goes back to the first byte.
    /// @throws common::Error with the path and the reason.
    virtual void rewind() = 0;
};

/// New contents for a file. They are written to a new file beside it, which takes its name when they are complete.
/// Until then the file is as it was; where the contents are never completed, what was written stays beside it.
class Replacement {
public:
    Replacement() = default;
    Replacement(const Replacement&) = delete;
    Replacement& operator=(const Replacement&) = delete;
    virtual ~Replacement() = default;

    /// Full path of the file that is being written.
    [[nodiscard]] virtual const std::string& path() const = 0;

    /// Adds bytes at the end; they may reach the disk only at `finish`.
    /// @throws common::Error with the path and the reason.
    virtual void write(std::string_view bytes) = 0;

    /// Drops what was written so far.
    /// @throws common::Error with the path and the reason.
    virtual void restart() = 0;

    /// Makes the contents durable, then has them take the file's name. Nothing may be called afterwards.
    /// @throws common::Error with the path and the reason; the file is as it was then.
    virtual void finish() = 0;
};

/// The files that the program reads, writes or appends to as text. Paths and contents are bytes.
class Files {
public:
    virtual ~Files() = default;

    /// Whether a file, folder or anything else of that name exists. Every error means false.
    [[nodiscard]] virtual bool exists(const std::string& path) const = 0;

    /// Whether the name leads (through links too) to a regular file. Every error means false.
    [[nodiscard]] virtual bool is_regular_file(const std::string& path) const = 0;

    /// Whether the name leads (through links too) to a folder. Every error means false.
    [[nodiscard]] virtual bool is_folder(const std::string& path) const = 0;

    /// Whether both names lead to the same file, by device and inode. Every error means false.
    [[nodiscard]] virtual bool is_same_file(const std::string& a, const std::string& b) const = 0;

    /// `path` made absolute against the working folder; unchanged when it is absolute or empty.
    [[nodiscard]] virtual std::string absolute(const std::string& path) const = 0;

    /// Begins to read a file.
    /// @param longest the most bytes that the file may hold.
    /// @throws common::Error with the path and the reason when the file cannot be opened.
    [[nodiscard]] virtual std::unique_ptr<FileReading> begin_reading(const std::string& path,
                                                                     std::uint64_t longest) const = 0;

    /// Appends `bytes` when the file (created when missing) is shorter than `limit` bytes.
    /// @return false, with nothing written, when the file holds `limit` bytes or more.
    /// @throws common::Error with the path and the reason when the file cannot be opened or written.
    virtual bool append_below(const std::string& path, std::uint64_t limit, std::string_view bytes) = 0;

    /// Begins new contents for the file that `path` leads to (through links too), or for a new file. An existing file
    /// keeps its permissions.
    /// @throws common::Error with the path and the reason when no file can be created beside it, when this user may not
    /// write the existing file, or when something else than a regular file has the name.
    [[nodiscard]] virtual std::unique_ptr<Replacement> begin_replacement(const std::string& path) = 0;

    /// Makes the folder the process's working folder, against which relative names are taken.
    /// @throws common::Error with the path and the reason.
    virtual void change_folder(const std::string& path) = 0;

    /// Whether the name leads to a folder in which this user may create files. Every error means false.
    [[nodiscard]] virtual bool is_writable_folder(const std::string& path) const = 0;

    /// Creates the folder and those above it that are missing, for this user only. An existing folder is left as it is.
    /// @throws common::Error with the path and the reason when it cannot be created.
    virtual void create_folder(const std::string& path) = 0;
};

} // namespace cuedrill::platform
