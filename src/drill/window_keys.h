#pragma once

#include "drill/drill_state.h"
#include "drill/question_dialog.h"
#include "platform/desktop.h"
#include "platform/form1.h"
#include "platform/text_compare.h"
#include "scheduler/end_of_program.h"

#include <string>

namespace cuedrill::drill {

/// The keys that the main window takes before its controls see them.
class WindowKeys {
public:
    WindowKeys(platform::Form1& form1, DrillState& state, QuestionDialog& dialog, platform::Desktop& desktop,
               const platform::TextCompare& text_compare, scheduler::EndOfProgram& end_of_program)
        : m_form1(form1), m_state(state), m_dialog(dialog), m_desktop(desktop), m_text_compare(text_compare),
          m_end_of_program(end_of_program)
    {
    }

    /// @return whether the key is swallowed. A key that is held down never does anything.
    bool OnWindowKey(const platform::KeyPress& press);

private:
    [[nodiscard]] std::string command_letter(const platform::KeyPress& press) const;
    bool on_enter();
    bool on_escape();
    bool on_verdict(bool success);
    [[nodiscard]] bool answer_is_shown() const;

    platform::Form1& m_form1;
    DrillState& m_state;
    QuestionDialog& m_dialog;
    platform::Desktop& m_desktop;
    const platform::TextCompare& m_text_compare;
    scheduler::EndOfProgram& m_end_of_program;
};

} // namespace cuedrill::drill
