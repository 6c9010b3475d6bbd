#pragma once

#include "platform/files.h"

#include <string>

namespace cuedrill::app {

/// The folder of the program's own files: trace, agenda, and where the first file dialog starts.
///
/// It is `executable_folder` when that is writable or holds the trace's switch file, as in a portable installation;
/// otherwise the folder "cuedrill" in `data_home`, which is created when missing.
/// Never fails: when that folder cannot be created, whoever writes into it says so.
/// @param data_home the user's folder for data; "" when there is none, and the executable's folder is taken.
std::string program_folder(platform::Files& files, const std::string& executable_folder, const std::string& data_home);

} // namespace cuedrill::app
