#pragma once

#include "common/date_time.h"
#include "common/int16.h"
#include "drill/drill_state.h"
#include "drill/edit_flags.h"
#include "drill/mode.h"
#include "platform/screen.h"
#include "scheduler/counts.h"
#include "scheduler/forecast.h"
#include "store/course.h"

#include <cstdint>
#include <optional>
#include <string>

namespace cuedrill::drill {

/// The figures of the question on display.
struct QuestionFigures {
    std::int64_t level = 0;
    std::int64_t attempts = 0;
    std::int64_t fails = 0;
    std::optional<std::int64_t> elapsed; ///< seconds since the last test; std::nullopt if never tested
};

/// What is due, and when that was counted.
struct DueFigures {
    common::DateTime counted_at;
    scheduler::DueSoon questions;
};

/// What is due now, later today and on each of the next days, and how many questions are new, as two sentences.
std::string in_words(const DueFigures& due);

/// The figures of the course, as last counted.
struct CourseFigures {
    std::int64_t records = 0;
    scheduler::Counts counts;
    std::optional<DueFigures> due; ///< std::nullopt until it is counted, or if it cannot be
    common::Int16 score = 0;
    std::optional<int> marked_level; ///< the level panel, 0 to 5, of the last verdict
    std::string open_time;
    std::string time_today;
    std::string time_ever;
    std::string time_now;
};

/// What the window shows besides the texts of the record.
struct Told {
    platform::Line prompt{.description = "Prompt"};
    platform::Line status{.description = "Status"};
    std::optional<QuestionFigures> question;
    CourseFigures course;
};

/// Everything in the window that is display only.
[[nodiscard]] platform::Screen render(const Told& told, const DrillState& state, Mode mode, common::Int16 target_level);

/// The data to be shown, and the one way to draw it: after changing `told` or the state, call `repaint`.
class MainScreen {
public:
    MainScreen(platform::ScreenView& view, const store::Course& course, const EditFlags& flags, const DrillState& state)
        : view_(view), course_(course), flags_(flags), state_(state)
    {
    }

    Told told;

    void repaint();

private:
    platform::ScreenView& view_;
    const store::Course& course_;
    const EditFlags& flags_;
    const DrillState& state_;
};

} // namespace cuedrill::drill
