#pragma once

#include "platform/database.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace cuedrill::platform::sqlite {

/// The file system (VFS) that the engine uses for one course. It contains the course, its own journal and its own
/// write-ahead log. No other path is opened, looked for or deleted, whatever the course or a file next to it contains.
/// Temporary files and memory shared with other programs are refused, too.
///
/// A file next to the course that has the name of its journal or log is accepted only if it is a regular file with a
/// single hard link. A journal is also refused if it names another file, is a database itself, or states that the
/// course was far larger.
class CourseFiles {
public:
    /// @param course the course's canonical absolute path.
    /// @throws DatabaseError if it cannot be registered with the engine.
    explicit CourseFiles(const std::string& course);
    CourseFiles(const CourseFiles&) = delete;
    CourseFiles& operator=(const CourseFiles&) = delete;
    /// The connection that uses it must be closed.
    ~CourseFiles();

    /// The name under which it is registered with the engine.
    [[nodiscard]] const char* name() const noexcept;

    /// Whether any read of one of the files has failed. The engine's integrity check does not always report that.
    [[nodiscard]] bool read_failed() const noexcept;

    /// While `limited`, reading a page tree that is deeper than in any sound file fails with SQLITE_CORRUPT. Turn it on
    /// during the engine's integrity check, which is recursive and would overflow the stack.
    void limit_depth(bool limited) noexcept;

private:
    struct System;
    std::unique_ptr<System> system_;
};

/// The error for a result code with which `CourseFiles` refuses a file; std::nullopt for any other code.
/// @param course the path of the course.
[[nodiscard]] std::optional<DatabaseError> error_of_course_files(int code, std::string_view course);

} // namespace cuedrill::platform::sqlite
