#pragma once

#include "drill/command_controls.h"
#include "drill/drill_state.h"
#include "drill/edit_flags.h"
#include "drill/enabling.h"
#include "drill/screen.h"
#include "drill/status_line.h"
#include "platform/form1.h"
#include "store/course.h"

namespace cuedrill::drill {

/// Applies the mode of the window to its controls.
class WindowLayout {
public:
    WindowLayout(platform::Form1& form1, CommandControls& commands, const store::Course& course, const EditFlags& flags,
                 const DrillState& state, MainScreen& screen, StatusLine& status)
        : form1_(form1), commands_(commands), course_(course), flags_(flags), state_(state), screen_(screen),
          status_(status)
    {
    }

    /// Shows, hides, locks, enables and disables all controls for the current state. Every command that changes what is
    /// shown calls it last.
    void RelayoutWindow();

    /// Places the two or three buttons of the dialog strip side by side.
    void lay_out_buttons();

    [[nodiscard]] Mode mode() const { return mode_of(course_.record_count, flags_, state_); }

    /// Whether a question is on display. Without one, nothing can be revealed or judged.
    [[nodiscard]] bool question_on_display() const { return state_.shown.is_question(); }

    /// Whether the answer is on display, too.
    [[nodiscard]] bool answer_on_display() const { return mode() == Mode::answer; }

    /// Whether the user can type an answer.
    [[nodiscard]] bool can_type() const { return mode() == Mode::question; }

    /// Scope guard that keeps the dialog buttons as they are. Unless `release` is called, the destructor lays out the
    /// window again.
    class DialogHold {
    public:
        explicit DialogHold(WindowLayout& layout) : layout_(layout) { layout_.dialog_held_ = true; }
        DialogHold(const DialogHold&) = delete;
        DialogHold& operator=(const DialogHold&) = delete;
        ~DialogHold();

        void release() { layout_.dialog_held_ = false; }

    private:
        WindowLayout& layout_;
    };

private:
    void relayout_boxes();
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
    MainScreen& screen_;
    StatusLine& status_;
    bool dialog_held_ = false;
    platform::Button* displaced_ = nullptr; ///< button that lost the focus because it became unusable
    platform::Button* stand_in_ = nullptr;  ///< button that has the focus in its place
};

} // namespace cuedrill::drill
