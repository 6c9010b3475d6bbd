#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace cuedrill::platform {

/// Other programs of the system, started for the user. None is waited for.
class Shell {
public:
    virtual ~Shell() = default;

    /// Opens a file or a web address with the program that the system associates with it.
    /// @param working_folder where that program starts; empty for this process's own.
    /// @return whether there is a program that could be started.
    virtual bool open(const std::string& target, const std::string& working_folder) = 0;

    /// Shows a folder in the file manager.
    /// @return whether there is one that could be started.
    virtual bool open_folder(const std::string& path) = 0;

    /// Opens a file in the text editor, in a window of its own.
    /// @return the number of its process; nothing when there is no editor that could be started.
    virtual std::optional<std::int64_t> edit_text(const std::string& path) = 0;
};

} // namespace cuedrill::platform
