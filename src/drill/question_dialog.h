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

#include <string_view>

namespace cuedrill::drill {

/// The three-button dialog that leads through the drill.
///
/// Any function that asks for the next question may throw what `Selection::next_question` throws; one that
/// judges, what `Scoring` throws. The dialog keeps its state then.
class QuestionDialog {
public:
    QuestionDialog(platform::Form1& form1, DrillState& state, MainScreen& screen, Display& display, StatusLine& status,
                   WindowLayout& layout, platform::Desktop& desktop, Selection& selection, Scoring& scoring,
                   RecordEditor& editor, EndOfProgram& end_of_program);

    /// Attaches the buttons of the dialog.
    void attach();

    /// Back to the first question of the dialog: the course is another one.
    void forget();

    /// Repaints prompt and buttons for the present state. The prompt is blanked first, so that every new one flashes.
    void RefreshDialog();

    /// What the buttons say in the present state. A verdict is taken only on an answer that is on display, and "No"
    /// ends the program only while no question is.
    void OnYes();
    void OnNo();
    void OnOther();
    /// The right button on "Yes" means "No".
    void OnYesMouseDown(platform::MouseButton button);

    /// Shows the answer and asks for the verdict with "+" or "-".
    void ShowAnswerCommand();

    /// Leaves the question without a verdict. Where a record is being typed or changed, asks whether to save it first;
    /// a record that the course then refuses stays in the editor, and nothing else happens.
    void NextQuestionCommand();

    /// Judge the question on display and ask the next one; the dialog's state stays.
    void SucceedAndNext();
    void FailAndNext();

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
