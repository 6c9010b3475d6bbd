#pragma once

#include "platform/database.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace cuedrill::platform::sqlite {

/// The view of the file system that the engine gets while it works on one course: the course, its own journal and its
/// own write-ahead log. Any other path is neither opened nor looked for nor deleted, whatever the course or a file
/// beside it says. Temporary files and memory shared with other programs are refused too.
///
/// What stands beside the course under the name of its journal or its log is taken for it only when it is an ordinary
/// file with no other name. A journal that names another file is refused.
class CourseFiles {
public:
    /// @param course the course's canonical absolute path.
    /// @throws DatabaseError when the engine does not take it.
    explicit CourseFiles(const std::string& course);
    CourseFiles(const CourseFiles&) = delete;
    CourseFiles& operator=(const CourseFiles&) = delete;
    /// Requires that the connection that uses it is closed.
    ~CourseFiles();

    /// What the engine knows it by.
    [[nodiscard]] const char* name() const noexcept;

    /// Whether a read of one of the files has failed so far. The engine's check does not always say so.
    [[nodiscard]] bool read_failed() const noexcept;

    /// Whether a tree of pages that goes deeper than any sound one is damage. For the engine's check, which would
    /// follow it to the end of the stack.
    void limit_depth(bool limited) noexcept;

private:
    struct System;
    std::unique_ptr<System> system_;
};

/// The error for a result of the engine by which `CourseFiles` refused a file; nothing for another result.
/// @param course the path of the course.
[[nodiscard]] std::optional<DatabaseError> error_of_course_files(int code, std::string_view course);

} // namespace cuedrill::platform::sqlite
