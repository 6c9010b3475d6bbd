#pragma once

#include "platform/sqlite/new_file.h"

#include <string>

namespace cuedrill::tools {

/// A new course that is built under a temporary name, where nobody looks for it until it is complete. It is removed
/// with the object unless it was finished.
class NewCourse {
public:
    /// Creates a course without records.
    /// @param path absolute path that it will have.
    /// @throws common::Error naming the path, also when something of that name is there already.
    explicit NewCourse(std::string path);

    /// Full path of the file while it is being made.
    [[nodiscard]] const std::string& making() const { return file_.path(); }

    /// Gives it its name. Requires that it is closed.
    /// @throws common::Error
    void finish();

private:
    std::string path_;
    platform::sqlite::TemporaryFile file_;
};

} // namespace cuedrill::tools
