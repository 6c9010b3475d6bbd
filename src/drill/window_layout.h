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
        : form1_(form1), commands_(commands), course_(course), flags_(flags), state_(state), status_(status)
    {
    }

    /// Shows, hides, locks, enables and disables everything for what is going on now. Called last by every command that
    /// changes what is shown.
    void RelayoutWindow();

    /// Places the two or three buttons of the dialog strip side by side.
    void lay_out_buttons();

    [[nodiscard]] Mode mode() const;

    /// Whether a question is on display; without one, nothing can be revealed or judged.
    [[nodiscard]] bool question_on_display() const { return course_.current_cnt != 0; }

    /// Whether its answer is on display too.
    [[nodiscard]] bool answer_on_display() const { return mode() == Mode::answer; }

    /// Whether the answer box waits for an answer.
    [[nodiscard]] bool can_type() const { return mode() == Mode::question; }

    /// While held, the buttons of the dialog stay as they are. Whoever lets go lays the window out again.
    void hold_dialog(bool held) { dialog_held_ = held; }

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

    platform::Form1& form1_;
    CommandControls& commands_;
    const store::Course& course_;
    const EditFlags& flags_;
    const DrillState& state_;
    StatusLine& status_;
    bool dialog_held_ = false;
    platform::Button* displaced_ = nullptr; ///< lost the focus because it could not be used
    platform::Button* stand_in_ = nullptr;  ///< got it instead
};

} // namespace cuedrill::drill
