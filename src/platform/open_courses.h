#pragma once

#include <string>

namespace cuedrill::platform {

/// Which courses are open in the processes of this user. What a process has made known ends with the process, however
/// it ends.
class OpenCourses {
public:
    virtual ~OpenCourses() = default;

    /// Makes known that this process has the course at `path` open, and no other one any more.
    /// @return whether another process has it open as well; false, too, if that cannot be found out.
    virtual bool enter(const std::string& path) noexcept = 0;

    /// Makes known that this process has no course open.
    virtual void leave() noexcept = 0;
};

} // namespace cuedrill::platform
