#pragma once

#include "platform/system/system_directories.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace cuedrill::fakes {

/// The folders of the machine, with failures that a test chooses.
class FakeFolders : public platform::system::SystemDirectories {
public:
    std::optional<std::uint64_t> room; ///< what the disk has left; what it really has if not set
    bool refuse_to_remove = false;
    mutable int listings = 0; ///< how often a folder was listed

    [[nodiscard]] std::vector<platform::FolderEntry> files_in(const std::string& folder) const override
    {
        ++listings;
        return SystemDirectories::files_in(folder);
    }
    [[nodiscard]] std::optional<std::uint64_t> room_in(const std::string& folder) const override
    {
        return room ? room : SystemDirectories::room_in(folder);
    }
    bool remove(const std::string& path) override { return !refuse_to_remove && SystemDirectories::remove(path); }
};

} // namespace cuedrill::fakes
