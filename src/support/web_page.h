#pragma once

#include <string>

namespace cuedrill::support {

/// The web page of the program that it was built with: a web address or a path.
std::string default_web_page();

/// The web address or the path by which the page can be opened.
/// @param setting a web address or an absolute path is taken as it is; a relative path starts at `executable_folder`.
std::string web_page_address(const std::string& setting, const std::string& executable_folder);

} // namespace cuedrill::support
