#pragma once

#include "drill/drill_state.h"
#include "drill/edit_flags.h"
#include "drill/screen.h"
#include "drill/window_layout.h"
#include "platform/form1.h"

#include <string>

namespace cuedrill::drill {

/// Tells assistive technology what the window shows, for users who cannot see it.
class Narrator {
public:
    Narrator(platform::Form1& form1, const DrillState& state, const EditFlags& flags, const MainScreen& screen,
             const WindowLayout& layout)
        : form1_(form1), state_(state), flags_(flags), screen_(screen), layout_(layout)
    {
    }

    /// Command: tells the texts on display, the status line, and what the user can do now.
    void repeat() const;

    /// Command: tells the figures of the question on display and those of the course.
    void tell_figures() const;

    /// Tells the figures of the course.
    void tell_statistics() const;

    /// Tells what the user can do now, because a key did nothing.
    void tell_next_step() const;

private:
    [[nodiscard]] std::string texts() const;
    [[nodiscard]] std::string next_step() const;
    [[nodiscard]] std::string step_of_mode() const;
    [[nodiscard]] std::string step_in_shared_place() const;
    [[nodiscard]] std::string question_figures() const;
    [[nodiscard]] std::string statistics() const;

    platform::Form1& form1_;
    const DrillState& state_;
    const EditFlags& flags_;
    const MainScreen& screen_;
    const WindowLayout& layout_;
};

} // namespace cuedrill::drill
