#include "drill/due_picture.h"

#include "common/errors.h"
#include "scheduler/forecast.h"

#include <chrono>
#include <optional>
#include <string>

namespace cuedrill::drill {
namespace {

using namespace std::chrono_literals;

/// Long enough for the next question to be painted first.
constexpr std::chrono::milliseconds after_a_change = 50ms;
constexpr std::chrono::milliseconds between_counts = 1min;

} // namespace

void DuePicture::attach()
{
    timer_.on_tick = [this] { tick(); };
}

void DuePicture::ask()
{
    timer_.start(after_a_change);
}

void DuePicture::tick()
{
    if (!course_.is_open()) {
        timer_.stop();
        return;
    }
    timer_.start(between_counts);
    count();
    screen_.repaint();
}

/// The user has not asked for the figures, so a failure only takes them away; the count is repeated in a minute.
void DuePicture::count()
{
    std::optional<DueFigures>& due = screen_.told.course.due;
    due.reset();
    try {
        const common::DateTime now = clock_.now();
        due = DueFigures{.counted_at = now, .questions = scheduler::due_soon(course_, dead_times_, now)};
    } catch (const common::Error& error) {
        trace_.write_trace(std::string("due - not counted - ") + error.what());
    }
}

} // namespace cuedrill::drill
