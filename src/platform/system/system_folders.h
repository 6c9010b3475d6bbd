#pragma once

#include <string>

namespace cuedrill::platform::system {

/// Full path of the folder that holds the running executable; "" when the system does not tell.
std::string executable_folder();

/// Full path of the user's folder for data: $XDG_DATA_HOME, or else ".local/share" in the home folder.
/// "" for a user without a home folder.
std::string data_home();

} // namespace cuedrill::platform::system
