#pragma once

#include "platform/desktop.h"
#include "platform/files.h"
#include "platform/shell.h"

#include <string>
#include <string_view>

namespace cuedrill::support {

/// Whether `text` starts like a web address: with "https://", "ftp://", "http://" or "www.", ignoring case.
bool is_web_address(std::string_view text);

/// Opens documents with the programs that the system associates with them.
class Documents {
public:
    Documents(platform::Files& files, platform::Shell& shell, platform::Desktop& desktop)
        : files_(files), shell_(shell), desktop_(desktop)
    {
    }

    /// Opens a file (with its folder as the working folder), a folder, or a web address. Of several lines only the
    /// first one counts. Reports in a box what does not exist or has no program.
    /// @throws common::ProgramEnded when the program is ended while the box is open.
    /// @param section anchor in the file at which a web page opens. Without effect on folders and web addresses, and
    /// where no program opens the file's address with the anchor.
    void open_document(const std::string& path, std::string_view section = {});

private:
    [[nodiscard]] bool start_program(const std::string& path, std::string_view section);

    platform::Files& files_;
    platform::Shell& shell_;
    platform::Desktop& desktop_;
};

} // namespace cuedrill::support
