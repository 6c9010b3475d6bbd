#pragma once

#include <string>

namespace cuedrill::support {

/// The program's web page as configured at build time: a web address or a path.
std::string default_web_page();

/// The web address or path to open.
/// @param setting a web address or an absolute path is used as it is; a relative path starts at `executable_folder`.
std::string web_page_address(const std::string& setting, const std::string& executable_folder);

} // namespace cuedrill::support
