#include "drill/course_copies.h"

#include "common/errors.h"
#include "keep/copy_names.h"

#include <algorithm>
#include <chrono>
#include <new>
#include <optional>
#include <utility>
#include <vector>

namespace cuedrill::drill {
namespace {

using namespace std::chrono_literals;

constexpr std::int64_t hour = 60 * 60;
constexpr std::int64_t day = 24 * hour;

constexpr std::chrono::milliseconds between_steps = 25ms;

/// How long the keyboard must have rested, in seconds.
constexpr double pause_in_typing = 2;

} // namespace

void CourseCopies::attach()
{
    services_.timer.on_tick = [this] { tick(); };
}

bool CourseCopies::may_copy() const
{
    return copies_.have_place() && course_.is_open() && course_.record_count > 0;
}

/// A copy of a later time than now, made before the clock was put back, does not count.
bool CourseCopies::has_copy_of_last(std::int64_t seconds) const
{
    const common::DateTime now = services_.clock.now();
    const std::vector<keep::Copy> all = copies_.of(course_.db_path);
    return std::any_of(all.begin(), all.end(), [&](const keep::Copy& copy) {
        const std::int64_t age = common::seconds_between(copy.time, now);
        return age >= 0 && age <= seconds;
    });
}

void CourseCopies::course_opened()
{
    stop();
    due_ = may_copy() && !has_copy_of_last(day);
    if (due_)
        services_.timer.start(between_steps);
}

void CourseCopies::before_change()
{
    if (!may_copy())
        return;
    try {
        if (has_copy_of_last(hour) || copies_.newest_holds(course_.db_path, course_.database().mark()))
            return;
        const platform::BusyPointer busy(services_.desktop);
        // A copy under way may hold the course as it was before the user has typed for a while.
        stop();
        copies_.begin(course_, services_.clock.now())->make_at_once();
    } catch (const common::Error& error) {
        note_failure(error);
    } catch (const std::bad_alloc& error) {
        note_failure(error);
    }
}

void CourseCopies::tick()
{
    if (due_ || making_ != nullptr)
        work();
    if (!due_ && making_ == nullptr)
        services_.timer.stop();
}

void CourseCopies::work()
{
    if (keys_.pressed_within(pause_in_typing))
        return;
    try {
        take_step();
    } catch (const common::Error& error) {
        note_failure(error);
    } catch (const std::bad_alloc& error) {
        note_failure(error);
    }
}

void CourseCopies::take_step()
{
    if (making_ == nullptr) {
        due_ = false;
        // The last record may have been deleted meanwhile, or the course may be closed.
        if (may_copy())
            making_ = copies_.begin(course_, services_.clock.now());
    } else if (making_->abandoned() || making_->step(pages_of_step)) {
        making_.reset();
    }
}

void CourseCopies::stop()
{
    due_ = false;
    making_.reset();
}

void CourseCopies::note_failure(const std::exception& error)
{
    stop();
    const std::string reason = common::words_of(error);
    services_.trace.write_trace("copies - no copy of " + course_.db_path + " - " + reason);
    if (!std::exchange(told_, true))
        status_.show_when_free("No copy of the course could be made. " + reason, StatusLine::Waiting::stays);
}

std::string CourseCopies::words_about_newest(const std::string& course_path) const
{
    const std::optional<keep::Copy> copy = copies_.newest(course_path);
    if (!copy)
        return {};
    return "\r\n\r\nThe newest copy of this course, of " + keep::words_of_time(copy->time) + ", is " + copy->path + ".";
}

} // namespace cuedrill::drill
