#pragma once

#include <string>
#include <string_view>

namespace cuedrill::keep {

/// The file in a folder of copies that tells a person which course they are of.
inline constexpr std::string_view note_name = "course.txt";

/// What it tells.
struct CopyNote {
    std::string course; ///< full path
    std::string newest; ///< file name of the newest copy
    std::string mark;   ///< of the course when that copy was made
};

[[nodiscard]] std::string note_text(const CopyNote& note);

/// Whether the text of a note says that the newest copy has this file name and holds the course with this mark.
[[nodiscard]] bool note_tells(std::string_view text, std::string_view newest, std::string_view mark);

} // namespace cuedrill::keep
