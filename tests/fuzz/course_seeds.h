#pragma once

#include "platform/text_compare.h"

#include <string>
#include <vector>

namespace cuedrill::fuzz {

/// A course file as it lies in its folder.
struct CourseImage {
    std::string course{};
    std::string journal{}; ///< the file next to it; empty for none
    bool is_log = false;   ///< whether that is a write-ahead log
};

/// Small courses with pages of 512 bytes: an empty one; one with records, some in trees of two floors, and with free
/// pages; one with an index of another program; and the second one with a journal to be rolled back, and with a
/// write-ahead log. Made by the program and the engine in `folder`.
std::vector<CourseImage> make_course_seeds(const std::string& folder, const platform::TextCompare& compare);

[[nodiscard]] std::string bytes_of(const std::string& path);
void write_bytes(const std::string& path, const std::string& bytes);

} // namespace cuedrill::fuzz
