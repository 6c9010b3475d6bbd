#pragma once

#include "platform/open_courses.h"

#include <string>

namespace cuedrill::platform::system {

/// One empty file for each course in the user's runtime folder, named by the course's device and inode. Each process
/// that has the course open holds a shared lock on it. The file means nothing without a lock.
class SystemOpenCourses final : public OpenCourses {
public:
    /// @param folder created, for this user only, when it is needed first; "" if there is none. Nothing is known then.
    explicit SystemOpenCourses(std::string folder) : folder_(std::move(folder)) {}
    SystemOpenCourses(const SystemOpenCourses&) = delete;
    SystemOpenCourses& operator=(const SystemOpenCourses&) = delete;
    ~SystemOpenCourses() override { leave(); }

    bool enter(const std::string& path) noexcept override;
    void leave() noexcept override;

private:
    [[nodiscard]] bool open_file_of(const std::string& path);

    std::string folder_;
    int handle_ = -1; ///< of the file whose lock is held; negative for none
};

} // namespace cuedrill::platform::system
