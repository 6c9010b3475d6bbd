#pragma once

#include <string>

namespace cuedrill::platform {

/// A copy of an open course in the making. Until `finish` it lies under a name of its own in the folder of the copy,
/// and it is removed with the object. Every function but the destructor and `abandoned` may throw DatabaseError; the
/// copy is of no use then. The functions are called in the order in which they stand here.
class CourseCopy {
public:
    /// For `step`: all pages that are left.
    static constexpr int all_pages = -1;

    CourseCopy() = default;
    CourseCopy(const CourseCopy&) = delete;
    CourseCopy& operator=(const CourseCopy&) = delete;
    virtual ~CourseCopy() = default;

    /// Copies the next pages, at most `most`. What this program writes meanwhile gets into the copy; when another
    /// program writes, the copy starts again from the first page. Copies nothing while another program holds the
    /// course; only with `all_pages` it waits for it first.
    /// @return whether the copy holds all pages.
    [[nodiscard]] virtual bool step(int most) = 0;

    /// The state of the course that the copy holds; see `Database::mark`. Requires that all pages are copied.
    [[nodiscard]] virtual std::string mark() const = 0;

    /// Waits until the copy is on the disk.
    virtual void flush() = 0;

    /// Opens the copy as a course and checks all of it, then gives it its name. Never replaces a file.
    virtual void finish() = 0;

    /// Whether the course was closed meanwhile: no step can be made any more.
    [[nodiscard]] virtual bool abandoned() const noexcept = 0;
};

} // namespace cuedrill::platform
