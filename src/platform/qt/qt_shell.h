#pragma once

#include "platform/shell.h"

#include <chrono>
#include <string>
#include <utility>
#include <vector>

namespace cuedrill::platform::qt {

/// Starts the desktop's own opener, or else one of the usual programs. They share neither input nor output with this
/// process, and go on when it ends.
class QtShell final : public Shell {
public:
    /// @param search_path the folders in which programs are searched for; empty for those of the environment (PATH).
    /// @param patience how long an opener is waited for, which soon tells when there is nothing that it could start.
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
