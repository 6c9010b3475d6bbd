#pragma once

#include "fakes/temp_folder.h"
#include "torture/disk_image.h"
#include "torture/session.h"

#include <set>
#include <string>
#include <utility>
#include <vector>

namespace cuedrill::torture {

inline constexpr const char* course_name = "course.crs";

/// Stands for the dump of a course that does not exist.
inline constexpr const char* no_course = "no course";

/// Opens disk images with the program's own database adapter, as the user would after the crash.
class CourseCheck {
public:
    /// Whether the image holds a sound course in one of these states.
    /// @param allowed dumps, or `no_course`.
    /// @param turned opens it under the other order of texts.
    /// @return what is wrong; empty if nothing is.
    [[nodiscard]] std::string complaint(const DiskImage& image, const std::vector<std::string>& allowed, bool turned);

    /// The dump of the course in the image.
    /// @throws common::Error when it cannot be opened.
    [[nodiscard]] std::string dump(const DiskImage& image);

    /// The texts of all records of the course in the image.
    /// @throws common::Error when it cannot be opened.
    [[nodiscard]] std::set<std::pair<std::string, std::string>> texts(const DiskImage& image);

    /// The folder in which images are opened.
    [[nodiscard]] std::string folder() const { return folder_.path().string(); }

private:
    [[nodiscard]] std::string open_and_dump();
    [[nodiscard]] std::string complaint_about_creation();

    fakes::TempFolder folder_;
    TwoOrders order_;
};

} // namespace cuedrill::torture
