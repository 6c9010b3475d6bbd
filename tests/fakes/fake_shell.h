#pragma once

#include "platform/shell.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace cuedrill::fakes {

/// Records what it was asked to open, as "open <target> in <folder>", "folder <path>" and "edit <path>".
class FakeShell : public platform::Shell {
public:
    bool open(const std::string& target, const std::string& working_folder) override;
    bool open_folder(const std::string& path) override;
    std::optional<std::int64_t> edit_text(const std::string& path) override;

    std::vector<std::string> calls;
    bool has_programs = true; ///< whether there are programs that can be started
};

} // namespace cuedrill::fakes
