#pragma once

#include "common/date_time.h"
#include "platform/course_copy.h"
#include "platform/files.h"
#include "platform/folders.h"

#include <memory>
#include <string>
#include <utility>

namespace cuedrill::keep {

/// Where a copy lies, and what it is a copy of.
struct CopyPlace {
    std::string course; ///< full path of the course
    std::string folder; ///< of all copies of the course
    common::DateTime time;
};

/// A copy that is being made, in steps. It is removed with the object unless its last step has been made.
class CopyInMaking {
public:
    CopyInMaking(platform::Files& files, platform::Folders& folders, CopyPlace place,
                 std::unique_ptr<platform::CourseCopy> copy)
        : files_(files), folders_(folders), place_(std::move(place)), copy_(std::move(copy))
    {
    }

    /// Makes the next step: copies up to `pages` pages, or brings the copy to the disk, or checks and names it, or
    /// notes it in the folder and removes the copies that are no longer needed.
    /// @return whether it was the last step.
    /// @throws common::Error when there will be no copy.
    [[nodiscard]] bool step(int pages);

    /// Makes all steps that are left.
    /// @throws common::Error when there is no copy.
    void make_at_once();

    /// Whether the course was closed meanwhile: no step can be made any more.
    [[nodiscard]] bool abandoned() const noexcept { return copy_ != nullptr && copy_->abandoned(); }

private:
    enum class Next { pages, flush, check, tidy };

    void write_note() const;
    void thin_out() const;

    platform::Files& files_;
    platform::Folders& folders_;
    CopyPlace place_;
    std::unique_ptr<platform::CourseCopy> copy_; ///< null once it has its name
    std::string mark_;
    Next next_ = Next::pages;
};

} // namespace cuedrill::keep
