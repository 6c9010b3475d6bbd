#pragma once

#include "platform/files.h"

#include <string>
#include <string_view>

namespace cuedrill::app {

// Course paths may come from another system. A path that contains "/" is split at "/" only, because "\" and ":" are
// then ordinary characters of a name; any other path is split at "\" and ":".

/// Removes one double quote at the start and, independently, one at the end.
void strip_quotes(std::string& path);

/// Everything before the last separator; "" if there is none.
std::string dir_of(std::string_view path);

/// Everything after the last separator; the whole path if there is none.
std::string file_of(std::string_view path);

/// `file_of(path)` up to its last "."; all of it if there is none.
std::string name_of(std::string_view path);

/// `name` inside `folder`, joined by exactly one "/".
std::string join_path(std::string_view folder, std::string_view name);

/// Whether a file, folder or anything else has this name. False for a blank name and on any error.
bool file_exists(const platform::Files& files, const std::string& path);

} // namespace cuedrill::app
