#pragma once

#include "platform/files.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace cuedrill::platform {

/// A file within an archive.
struct ArchiveEntry {
    std::string name{};
    std::uint64_t size = 0; ///< in bytes, unpacked, as the archive states it
};

/// An open archive. Entries are unpacked into memory; nothing is written to a folder, so a name is never used as a
/// path.
class Archive {
public:
    Archive() = default;
    Archive(const Archive&) = delete;
    Archive& operator=(const Archive&) = delete;
    virtual ~Archive() = default;

    /// All entries in the order of the archive's directory. No two have the same name.
    [[nodiscard]] virtual const std::vector<ArchiveEntry>& entries() const = 0;

    /// Unpacks an entry.
    /// @param longest the most bytes that it may have.
    /// @throws common::Error when there is no such entry; when it is longer, encrypted, damaged, or has another size
    /// than the archive states; or when the file cannot be read.
    [[nodiscard]] virtual std::string read(std::string_view name, std::size_t longest) = 0;
};

/// Opens archives and unpacks compressed bytes.
class Archives {
public:
    virtual ~Archives() = default;

    /// Opens a zip archive. Only its directory is read.
    /// @throws common::Error when the file is no such archive, is damaged, has too many entries, or cannot be read.
    [[nodiscard]] virtual std::unique_ptr<Archive> open(std::unique_ptr<FileReading> file) const = 0;

    /// Unpacks bytes in the Zstandard format: one frame or several.
    /// @param longest the most bytes that may come out.
    /// @throws common::Error when the bytes are not in this format, are damaged or incomplete, or more would come out.
    [[nodiscard]] virtual std::string unpack_zstandard(std::string_view frames, std::size_t longest) const = 0;
};

} // namespace cuedrill::platform
