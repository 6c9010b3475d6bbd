#pragma once

#include "drill/drill_commands.h"
#include "drill/drill_state.h"
#include "drill/end_of_program.h"
#include "drill/key_policy.h"
#include "drill/narrator.h"
#include "drill/question_dialog.h"
#include "drill/record_editor.h"
#include "drill/window_layout.h"
#include "platform/desktop.h"
#include "platform/form1.h"
#include "platform/text_compare.h"

#include <optional>

namespace cuedrill::drill {

/// The keys that the main window handles before its controls.
class WindowKeys {
public:
    struct Services {
        QuestionDialog& dialog;
        DrillCommands& commands;
        RecordEditor& editor;
        WindowLayout& layout;
        KeyPolicy& key_policy;
        platform::Desktop& desktop;
        const platform::TextCompare& text_compare;
        EndOfProgram& end_of_program;
        const Narrator& narrator;
    };

    WindowKeys(platform::Form1& form1, DrillState& state, const Services& services)
        : form1_(form1), state_(state), services_(services)
    {
    }

    /// Connects the window: the policy judges key events, and this object handles the presses that count.
    void attach();

    /// @return whether the key is consumed. Auto-repeat never runs a command.
    bool OnWindowKey(const platform::KeyPress& press);

private:
    bool on_enter(const platform::KeyPress& press);
    bool on_escape(const platform::KeyPress& press);
    bool on_sign(const platform::KeyPress& press);
    bool on_letter(const platform::KeyPress& press);
    bool on_combination(const platform::KeyPress& press);
    bool on_control(const platform::KeyPress& press);
    [[nodiscard]] std::optional<Command> command_of_combination(const platform::KeyPress& press) const;
    void leave_boxes();
    void end_program();
    void close_shared_place();
    void tell_sign_is_none() const;
    [[nodiscard]] bool answer_is_shown() const;
    [[nodiscard]] bool awaits_sign() const;
    [[nodiscard]] bool AnswerHasFocus() const { return form1_.Text_a.has_focus(); }
    [[nodiscard]] bool QuestionHasFocus() const { return form1_.Text_q.has_focus(); }
    [[nodiscard]] bool in_text_box() const { return AnswerHasFocus() || QuestionHasFocus(); }

    platform::Form1& form1_;
    DrillState& state_;
    Services services_;
};

} // namespace cuedrill::drill
