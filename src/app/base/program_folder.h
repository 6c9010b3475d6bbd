#pragma once

#include "platform/files.h"

#include <string>

namespace cuedrill::app {

/// The folder for the program's own files: trace and agenda; a file dialog starts there where no
/// course says where.
///
/// It is `executable_folder` if that is writable or contains the trace's switch file, as in a portable installation;
/// otherwise the folder "cuedrill" in `data_home`, created if missing. Never fails: if that folder cannot be created,
/// writing into it reports the error later.
/// @param data_home the user's data folder; if "", the executable's folder is used.
std::string program_folder(platform::Files& files, const std::string& executable_folder, const std::string& data_home);

/// The folder for texts that the user may want back: "cuedrill" in `data_home`, also in a portable installation. Does
/// not create it.
/// @param data_home the user's data folder; if "", `program_folder` is used.
std::string data_folder(const std::string& program_folder, const std::string& data_home);

} // namespace cuedrill::app
