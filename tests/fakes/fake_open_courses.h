#pragma once

#include "platform/open_courses.h"

#include <set>
#include <string>

namespace cuedrill::fakes {

/// The courses that this program and others have open, by their paths.
class FakeOpenCourses : public platform::OpenCourses {
public:
    bool enter(const std::string& path) noexcept override
    {
        entered = path;
        return elsewhere.contains(path);
    }
    void leave() noexcept override { entered.clear(); }

    std::set<std::string> elsewhere; ///< open in other processes
    std::string entered;             ///< "" for none
};

} // namespace cuedrill::fakes
