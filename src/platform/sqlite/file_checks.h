#pragma once

#include <string>

namespace cuedrill::platform::sqlite {

/// The canonical absolute path of an existing regular file that is not empty, and that can be written, like its folder.
/// Opens nothing, so a pipe or a device cannot block.
/// @throws DatabaseError for anything else, and for a name that leaves no room for the ending of a journal.
[[nodiscard]] std::string existing_course_file(const std::string& path);

/// The canonical absolute path for a new file, in an existing folder that can be written.
/// @throws DatabaseError otherwise, and (exists) if that name, or that of its journal or log, is taken.
[[nodiscard]] std::string new_course_file(const std::string& path);

/// @throws DatabaseError (exists) if a journal or log of an earlier course lies next to `file`, an absolute path.
void require_no_files_of_earlier_course(const std::string& file);

/// The folder of an absolute path.
[[nodiscard]] std::string folder_of(const std::string& path);

} // namespace cuedrill::platform::sqlite
