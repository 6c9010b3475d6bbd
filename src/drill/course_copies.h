#pragma once

#include "app/base/trace_log.h"
#include "drill/key_policy.h"
#include "drill/status_line.h"
#include "keep/copies.h"
#include "platform/clock.h"
#include "platform/controls.h"
#include "platform/desktop.h"
#include "store/course.h"

#include <cstdint>
#include <exception>
#include <memory>
#include <string>

namespace cuedrill::drill {

/// Has copies of the open course made: one a day, little by little while the user does nothing, and one before a change
/// that cannot be undone. The status line reports the first copy that fails; the work goes on in any case.
class CourseCopies {
public:
    struct Services {
        platform::Timer& timer; ///< ticks while no action of the user is running
        platform::Clock& clock;
        platform::Desktop& desktop;
        app::TraceLog& trace;
    };

    /// Pages of the course that are copied at once. A full course has two thousand. 32 of them take less than a
    /// millisecond, so that a verdict between two steps is not felt, and a full course is copied within two seconds.
    static constexpr int pages_of_step = 32;

    CourseCopies(store::Course& course, keep::Copies& copies, const KeyPolicy& keys, StatusLine& status,
                 const Services& services)
        : course_(course), copies_(copies), keys_(keys), status_(status), services_(services)
    {
    }

    void attach();

    /// Has a copy made by and by if the newest one is older than a day. Call it when the course that has been opened is
    /// known to be sound.
    void course_opened();

    /// Makes a copy at once if the newest one is older than an hour and holds another state of the course. Call it
    /// before a change of many records.
    void before_change();

    /// A paragraph that names the newest copy of the course at this path, to be put behind the text of a box; "" if
    /// there is none.
    [[nodiscard]] std::string words_about_newest(const std::string& course_path) const;

private:
    [[nodiscard]] bool may_copy() const;
    [[nodiscard]] bool has_copy_of_last(std::int64_t seconds) const;
    void tick();
    void work();
    void take_step();
    void stop();
    void note_failure(const std::exception& error);

    store::Course& course_;
    keep::Copies& copies_;
    const KeyPolicy& keys_;
    StatusLine& status_;
    Services services_;

    bool due_ = false;                           ///< a copy is to be begun
    std::unique_ptr<keep::CopyInMaking> making_; ///< null for none
    bool told_ = false;                          ///< a failure was reported, or will be, since the program started
};

} // namespace cuedrill::drill
