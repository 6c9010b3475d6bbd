#pragma once

#include "drill/display.h"
#include "drill/drill_state.h"
#include "drill/end_of_program.h"
#include "drill/record_editor.h"
#include "drill/scoring.h"
#include "drill/screen.h"
#include "drill/selection.h"
#include "drill/status_line.h"
#include "drill/window_layout.h"
#include "platform/desktop.h"
#include "platform/form1.h"
#include "scheduler/verdict.h"

#include <string_view>

namespace cuedrill::drill {

/// The three-button dialog that guides the user through the drill.
///
/// Every function that asks for the next question may throw what `Selection::next_question` throws; every function that
/// judges, what `Scoring` throws. The state of the dialog is unchanged then.
class QuestionDialog {
public:
    QuestionDialog(platform::Form1& form1, DrillState& state, MainScreen& screen, Display& display, StatusLine& status,
                   WindowLayout& layout, platform::Desktop& desktop, Selection& selection, Scoring& scoring,
                   RecordEditor& editor, EndOfProgram& end_of_program);

    /// Attaches the buttons of the dialog.
    void attach();

    /// Resets the dialog to its first question, for another course.
    void forget();

    /// Repaints the prompt and the buttons for the current state. The prompt is blanked first, so that the user notices
    /// a new one.
    void RefreshDialog();

    /// Click on a button; the effect depends on the state. A verdict counts only while the answer is on display, and
    /// "No" ends the program only while no question is on display.
    void OnYes();
    void OnNo();
    void OnOther();
    /// The right button on "Yes" means "No".
    void OnYesMouseDown(platform::MouseButton button);

    /// Shows the answer and asks for a verdict with "+" or "-".
    void ShowAnswerCommand();

    /// Leaves the question without a verdict and asks the next one. While a record is being edited, first asks whether
    /// to save it; if the course refuses the record, the editor stays open and nothing else happens.
    void NextQuestionCommand();

    /// Judges the question on display and asks the next one. The state of the dialog does not change.
    void SucceedAndNext(scheduler::JudgedBy by = scheduler::JudgedBy::user);
    void FailAndNext(scheduler::JudgedBy by = scheduler::JudgedBy::user);

private:
    template <class Step>
    void go_on(Step step);
    void leave_question();
    void show_prompt(const char* text);
    void enter(DialogState state);
    [[nodiscard]] bool can_judge() const { return layout_.question_on_display(); }

    platform::Form1& form1_;
    DrillState& state_;
    MainScreen& screen_;
    Display& display_;
    StatusLine& status_;
    WindowLayout& layout_;
    platform::Desktop& desktop_;
    Selection& selection_;
    Scoring& scoring_;
    RecordEditor& editor_;
    EndOfProgram& end_of_program_;
};

} // namespace cuedrill::drill
