#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace cuedrill::platform {

/// Starts other programs of the system for the user, without waiting for them.
class Shell {
public:
    virtual ~Shell() = default;

    /// Opens a file or a web address with the program that the system associates with it.
    /// @param working_folder where that program starts; empty for this process's own working folder.
    /// @return whether a program could be started.
    virtual bool open(const std::string& target, const std::string& working_folder) = 0;

    /// Shows a folder in the file manager.
    /// @return whether a file manager could be started.
    virtual bool open_folder(const std::string& path) = 0;

    /// Opens a file in the text editor, in a window of its own.
    /// @return the editor's process id; std::nullopt if no editor could be started.
    virtual std::optional<std::int64_t> edit_text(const std::string& path) = 0;
};

} // namespace cuedrill::platform
