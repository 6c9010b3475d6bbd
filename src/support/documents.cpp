#include "support/documents.h"

#include "app/base/paths.h"
#include "common/text.h"

#include <algorithm>
#include <array>
#include <filesystem>

namespace cuedrill::support {

bool is_web_address(std::string_view text)
{
    constexpr std::array<std::string_view, 4> beginnings{"https://", "ftp://", "http://", "www."};
    return std::any_of(beginnings.begin(), beginnings.end(), [text](std::string_view beginning) {
        return common::equal_ascii(text.substr(0, beginning.size()), beginning);
    });
}

void Documents::open_document(const std::string& path)
{
    const std::string first_line = path.substr(0, path.find('\r'));
    if (!app::file_exists(files_, first_line) && !is_web_address(first_line)) {
        desktop_.message_box({.text = "Path not found: " + first_line, .icon = platform::BoxIcon::exclamation});
    } else if (!start_program(first_line)) {
        desktop_.message_box({.text = "No program was found that opens " + first_line +
                                      ".\r\n\r\nInstall one, or choose one in the settings of your desktop.",
                              .icon = platform::BoxIcon::exclamation});
    }
}

bool Documents::start_program(const std::string& path)
{
    // An existing file or folder takes precedence over a web address.
    if (!app::file_exists(files_, path))
        return shell_.open(path, "");
    // The other program may have another working folder.
    const std::string full_path = files_.absolute(path);
    if (files_.is_folder(full_path))
        return shell_.open_folder(full_path);
    return shell_.open(full_path, std::filesystem::path(full_path).parent_path().string());
}

} // namespace cuedrill::support
