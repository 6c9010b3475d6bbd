#include "support/documents.h"

#include "app/base/paths.h"
#include "common/text.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <filesystem>

namespace cuedrill::support {

bool is_web_address(std::string_view text)
{
    constexpr std::array<std::string_view, 4> beginnings{"https://", "ftp://", "http://", "www."};
    return std::any_of(beginnings.begin(), beginnings.end(), [text](std::string_view beginning) {
        return common::equal_ascii(text.substr(0, beginning.size()), beginning);
    });
}

namespace {

/// The address of a file as RFC 3986 has it: bytes that may mean something else in an address are escaped.
std::string file_address(std::string_view full_path)
{
    constexpr std::string_view plain = "/-._~0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string address = "file://";
    for (const char character : full_path) {
        if (plain.find(character) != std::string_view::npos) {
            address += character;
            continue;
        }
        const std::size_t byte = static_cast<unsigned char>(character);
        address += '%';
        address += digits[byte / 16];
        address += digits[byte % 16];
    }
    return address;
}

} // namespace

void Documents::open_document(const std::string& path, std::string_view section)
{
    const std::string first_line = path.substr(0, path.find('\r'));
    if (!app::file_exists(files_, first_line) && !is_web_address(first_line)) {
        desktop_.message_box({.text = "Path not found: " + first_line, .icon = platform::BoxIcon::exclamation});
    } else if (!start_program(first_line, section)) {
        desktop_.message_box({.text = "No program was found that opens " + first_line +
                                      ".\r\n\r\nInstall one, or choose one in the settings of your desktop.",
                              .icon = platform::BoxIcon::exclamation});
    }
}

bool Documents::start_program(const std::string& path, std::string_view section)
{
    // An existing file or folder takes precedence over a web address.
    if (!app::file_exists(files_, path))
        return shell_.open(path, "");
    // The other program may have another working folder.
    const std::string full_path = files_.absolute(path);
    if (files_.is_folder(full_path))
        return shell_.open_folder(full_path);
    const std::string folder = std::filesystem::path(full_path).parent_path().string();
    if (!section.empty() && shell_.open(file_address(full_path).append("#").append(section), folder))
        return true;
    return shell_.open(full_path, folder);
}

} // namespace cuedrill::support
