#pragma once

#include "platform/shell.h"

#include <chrono>
#include <string>
#include <utility>
#include <vector>

namespace cuedrill::platform::qt {

/// Starts the desktop's opener, or else one of the usual programs. They do not share input and output with this
/// process, and keep running when it ends.
class QtShell final : public Shell {
public:
    /// @param search_path folders to search for programs; empty for those of the environment (PATH).
    /// @param patience how long to wait for an opener, which reports soon if it finds no program to start.
    explicit QtShell(std::vector<std::string> search_path = {},
                     std::chrono::milliseconds patience = std::chrono::seconds(1))
        : search_path_(std::move(search_path)), patience_(patience)
    {
    }

    bool open(const std::string& target, const std::string& working_folder) override;
    bool open_folder(const std::string& path) override;
    std::optional<std::int64_t> edit_text(const std::string& path) override;

private:
    std::vector<std::string> search_path_;
    std::chrono::milliseconds patience_;
};

} // namespace cuedrill::platform::qt
