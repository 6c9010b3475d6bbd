#pragma once

#include "drill/command_controls.h"
#include "drill/drill_state.h"
#include "drill/edit_flags.h"
#include "drill/enabling.h"
#include "drill/status_line.h"
#include "platform/form1.h"
#include "store/course.h"

namespace cuedrill::drill {

/// Applies the mode of the window to its controls.
class WindowLayout {
public:
    WindowLayout(platform::Form1& form1, CommandControls& commands, const store::Course& course, const EditFlags& flags,
                 const DrillState& state, StatusLine& status)
        : m_form1(form1), m_commands(commands), m_course(course), m_flags(flags), m_state(state), m_status(status)
    {
    }

    /// Shows, hides, locks, enables and disables everything for what is going on now. Called last by every command that
    /// changes what is shown.
    void RelayoutWindow();

    /// Places the two or three buttons of the dialog strip side by side.
    void lay_out_buttons();

    [[nodiscard]] Mode mode() const;

    /// Whether a question is on display; without one, nothing can be revealed or judged.
    [[nodiscard]] bool question_on_display() const { return m_course.current_cnt != 0; }

    /// Whether its answer is on display too.
    [[nodiscard]] bool answer_on_display() const { return mode() == Mode::answer; }

    /// Whether the answer box waits for an answer.
    [[nodiscard]] bool can_type() const { return mode() == Mode::question; }

    /// While held, the buttons of the dialog stay as they are. Whoever lets go lays the window out again.
    void hold_dialog(bool held) { m_dialog_held = held; }

private:
    void relayout_boxes();
    [[nodiscard]] const char* answer_heading() const;
    void relayout_shared_place();
    void relayout_dialog();
    void relayout_commands();
    [[nodiscard]] bool is_enabled(Input input) const;
    [[nodiscard]] bool is_enabled(const CommandRow& row) const;
    [[nodiscard]] bool further_condition(Command command) const;
    [[nodiscard]] bool dialog_takes_yes() const;
    [[nodiscard]] bool dialog_takes_no() const;
    [[nodiscard]] platform::Button* focused_button() const;
    void keep_focus(platform::Button* focused);

    platform::Form1& m_form1;
    CommandControls& m_commands;
    const store::Course& m_course;
    const EditFlags& m_flags;
    const DrillState& m_state;
    StatusLine& m_status;
    bool m_dialog_held = false;
    platform::Button* m_displaced = nullptr; ///< lost the focus because it could not be used
    platform::Button* m_stand_in = nullptr;  ///< got it instead
};

} // namespace cuedrill::drill
