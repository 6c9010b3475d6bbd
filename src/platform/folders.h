#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace cuedrill::platform {

/// An ordinary file in a folder.
struct FolderEntry {
    std::string name;
    std::uint64_t bytes = 0;
};

/// Folders and their files as a whole. Paths are bytes.
class Folders {
public:
    virtual ~Folders() = default;

    /// The full path without links, "." and "..". Where the file or a part of its path is missing, that part stays as
    /// it was given.
    [[nodiscard]] virtual std::string canonical(const std::string& path) const = 0;

    /// The ordinary files in the folder, in no order; links are left out. Empty if the folder cannot be read.
    [[nodiscard]] virtual std::vector<FolderEntry> files_in(const std::string& folder) const = 0;

    /// Size of the file in bytes; std::nullopt if there is none.
    [[nodiscard]] virtual std::optional<std::uint64_t> size_of(const std::string& path) const = 0;

    /// How many bytes this user may still write to the file system of the folder; std::nullopt if it does not tell.
    [[nodiscard]] virtual std::optional<std::uint64_t> room_in(const std::string& folder) const = 0;

    /// Makes a file accessible to this user only, if the file system and the file's owner allow it.
    virtual void make_private(const std::string& path) = 0;

    /// Removes a file.
    /// @return false if it is still there.
    virtual bool remove(const std::string& path) = 0;
};

} // namespace cuedrill::platform
