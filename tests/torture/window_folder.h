#pragma once

#include <string>

namespace cuedrill::torture {

// Where things are in the folder that the program with its window uses, as in a disk image.

inline constexpr const char* window_course = "course.crs";
inline constexpr const char* window_export = "export.txt";
inline constexpr const char* window_config = "config"; ///< $XDG_CONFIG_HOME
inline constexpr const char* window_data = "data";     ///< $XDG_DATA_HOME
inline constexpr const char* settings_folder = "config/CUEDRILL/";
inline constexpr const char* kept_folder = "data/cuedrill/";

} // namespace cuedrill::torture
