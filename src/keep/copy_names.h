#pragma once

#include "common/date_time.h"

#include <optional>
#include <string>
#include <string_view>

namespace cuedrill::keep {

/// The name of the folder for the copies of a course: the course's name, cut if it is very long, "-", and 16
/// hexadecimal digits that depend on the full path.
[[nodiscard]] std::string folder_name(std::string_view course_path);

/// "2026-11-21_16-05-00", the name of a copy of that time without its extension.
[[nodiscard]] std::string time_name(common::DateTime time);

/// The time with this name; std::nullopt for any other text.
[[nodiscard]] std::optional<common::DateTime> time_of_name(std::string_view name);

/// "2026-11-21_16-05-00.crs"
[[nodiscard]] std::string copy_name(common::DateTime time);

/// The time of the copy with this file name; std::nullopt for the name of anything else.
[[nodiscard]] std::optional<common::DateTime> time_of_copy(std::string_view file_name);

/// "21 Nov 2026 16:05"
[[nodiscard]] std::string words_of_time(common::DateTime time);

} // namespace cuedrill::keep
