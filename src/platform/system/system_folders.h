#pragma once

#include <string>

namespace cuedrill::platform::system {

/// Full path of the folder of the running executable; "" if the system does not report it.
std::string executable_folder();

/// Full path of the user's data folder: $XDG_DATA_HOME, or else ".local/share" in the home folder. "" for a user
/// without a home folder.
std::string data_home();

/// Full path of the program's folder for what lasts no longer than the session: "cuedrill" in $XDG_RUNTIME_DIR, or else
/// in the user's folder below /run/user, or a folder of this user in /tmp. It may not exist.
std::string runtime_folder();

} // namespace cuedrill::platform::system
