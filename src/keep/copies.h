#pragma once

#include "common/date_time.h"
#include "keep/copy_in_making.h"
#include "platform/files.h"
#include "platform/folders.h"
#include "store/course.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace cuedrill::keep {

/// A finished copy of a course.
struct Copy {
    common::DateTime time; ///< when it was begun
    std::string path;
    std::uint64_t bytes = 0;
};

/// The copies of all courses. Each course has a folder of its own for them, known by the course's full path, so that
/// they are found also when the course is gone.
class Copies {
public:
    /// @param data_folder the program's folder for the user's data, in which "copies" lies; "" if there is none. No
    /// copies are made then.
    Copies(platform::Files& files, platform::Folders& folders, const std::string& data_folder);

    /// Whether there is a place for copies.
    [[nodiscard]] bool have_place() const { return !root_.empty(); }

    /// Full path of the folder for the copies of this course; it need not exist. Requires a place.
    [[nodiscard]] std::string folder_of(const std::string& course_path) const;

    /// The copies of the course at this path, oldest first. The course itself need not exist.
    [[nodiscard]] std::vector<Copy> of(const std::string& course_path) const;
    [[nodiscard]] std::optional<Copy> newest(const std::string& course_path) const;

    /// Whether the newest copy holds the course in the state with this mark.
    [[nodiscard]] bool newest_holds(const std::string& course_path, const std::string& mark) const;

    /// Begins a copy of the open course.
    /// @throws common::Error when there is no room for two of them, or when the folder or the copy cannot be created.
    [[nodiscard]] std::unique_ptr<CopyInMaking> begin(store::Course& course, common::DateTime now);

private:
    platform::Files& files_;
    platform::Folders& folders_;
    std::string root_; ///< "" for none
};

} // namespace cuedrill::keep
