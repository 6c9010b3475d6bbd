#pragma once

#include "torture/disk_image.h"

#include <functional>
#include <string>
#include <vector>

namespace cuedrill::torture {

/// A course file that no program of good will has written.
struct HostileCourse {
    std::string name;
    /// Makes the files of the folder from those with a sound course of many pages.
    std::function<DiskImage(const DiskImage& sound)> make;
    /// What must happen: "opens", "refused:" and the kind of error, or "anything" for opened or refused.
    std::string expected;
};

/// Files written by hand, and courses changed with SQL.
[[nodiscard]] const std::vector<HostileCourse>& hostile_courses();

/// A sound course with trees of several levels.
[[nodiscard]] DiskImage sound_course();

/// The course changed by statements, as another program could.
[[nodiscard]] DiskImage changed_by(const DiskImage& image, const std::string& sql);

/// Number of bytes of a page of the course, and the number of pages.
inline constexpr std::size_t page_size = 4096;
[[nodiscard]] std::size_t pages_of(const DiskImage& image);

} // namespace cuedrill::torture
