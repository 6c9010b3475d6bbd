#pragma once

#include "platform/folders.h"

namespace cuedrill::platform::system {

/// The folders of the machine.
class SystemDirectories : public Folders {
public:
    [[nodiscard]] std::string canonical(const std::string& path) const override;
    [[nodiscard]] std::vector<FolderEntry> files_in(const std::string& folder) const override;
    [[nodiscard]] std::optional<std::uint64_t> size_of(const std::string& path) const override;
    [[nodiscard]] std::optional<std::uint64_t> room_in(const std::string& folder) const override;
    void make_private(const std::string& path) override;
    bool remove(const std::string& path) override;
};

} // namespace cuedrill::platform::system
