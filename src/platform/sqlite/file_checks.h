#pragma once

#include <string>

namespace cuedrill::platform::sqlite {

/// The canonical absolute path of an existing ordinary file that is not empty and can be written, as its folder can.
/// Nothing is opened, so a pipe or a device cannot block.
/// @throws DatabaseError for anything else.
[[nodiscard]] std::string existing_course_file(const std::string& path);

/// The canonical absolute path for a new file, in a folder that exists and can be written.
/// @throws DatabaseError also when something of that name is there already, or a journal or log of it.
[[nodiscard]] std::string new_course_file(const std::string& path);

/// @throws DatabaseError when a journal or log of an earlier course lies beside `file`, an absolute path.
void require_no_files_of_earlier_course(const std::string& file);

/// The folder of an absolute path.
[[nodiscard]] std::string folder_of(const std::string& path);

} // namespace cuedrill::platform::sqlite
