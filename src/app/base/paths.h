#pragma once

#include "platform/files.h"

#include <string>
#include <string_view>

namespace cuedrill::app {

// Course paths may come from another system. A path that holds "/" is split at "/" only, because "\" and ":" are then
// ordinary characters of a name; any other path is split at "\" and ":".

/// Takes away one double quote at the start and, independently, one at the end.
void strip_quotes(std::string& path);

/// Everything before the last separator; "" without one.
std::string dir_of(std::string_view path);

/// Everything behind the last separator; the whole path without one.
std::string file_of(std::string_view path);

/// `file_of(path)` up to its last "."; all of it without one.
std::string name_of(std::string_view path);

/// `name` inside `folder`, with exactly one "/" between them.
std::string join_path(std::string_view folder, std::string_view name);

/// Whether anything, a folder included, has this name. False for blanks only, and on every error.
bool file_exists(const platform::Files& files, const std::string& path);

} // namespace cuedrill::app
