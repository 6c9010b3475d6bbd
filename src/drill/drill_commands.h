#pragma once

#include "drill/answer_aids.h"
#include "drill/command_controls.h"
#include "drill/context_help.h"
#include "drill/course_opener.h"
#include "drill/course_options.h"
#include "drill/course_title.h"
#include "drill/display.h"
#include "drill/end_of_program.h"
#include "drill/last_list.h"
#include "drill/level_commands.h"
#include "drill/narrator.h"
#include "drill/question_dialog.h"
#include "drill/question_export.h"
#include "drill/question_import.h"
#include "drill/record_editor.h"
#include "drill/record_lists.h"
#include "drill/scoring.h"
#include "drill/selection.h"
#include "drill/status_line.h"
#include "drill/window_layout.h"
#include "platform/desktop.h"
#include "platform/form1.h"
#include "store/course.h"
#include "store/course_params.h"
#include "support/agenda.h"
#include "support/help.h"

namespace cuedrill::drill {

/// Runs the commands of the menus, the toolbar buttons and the single keys.
class DrillCommands {
public:
    /// The objects that carry out the commands.
    struct Targets {
        store::Course& course;
        store::CourseParamsStore& params;
        CourseOpener& opener;
        CourseTitle& title;
        Selection& selection;
        Scoring& scoring;
        LevelCommands& levels;
        EndOfProgram& end_of_program;
        RecordEditor& editor;
        LastList& last_list;
        RecordLists& lists;
        QuestionImport& import;
        QuestionExport& question_export;
        QuestionDialog& dialog;
        AnswerAids& aids;
        ContextHelp& context_help;
        support::HelpCommands& help;
        support::Agenda& agenda;
        CourseOptions& options;
        Display& display;
        const DrillState& state;
        StatusLine& status;
        const WindowLayout& layout;
        const Narrator& narrator;
        platform::Desktop& desktop;
    };

    DrillCommands(platform::Form1& form1, CommandControls& controls, const Targets& targets)
        : form1_(form1), controls_(controls), to_(targets)
    {
    }

    /// Attaches each entry and each button to its command.
    void attach();

    /// @throws whatever the command throws.
    void run(Command command);

    /// Does what a click on the command's button, or its key, does. While the command is disabled, this only tells
    /// assistive technology so. Takes the focus out of the text boxes, unless the command puts it there.
    /// @throws whatever the command throws.
    void RunToolbarCommand(Command command);

    /// Swaps questions and answers of the course. First offers to save unsaved texts.
    /// @throws platform::DatabaseError. If the option cannot be stored, the direction does not change; if that is not
    /// known, and after any later error, no question is on display.
    void m_invert();

    /// Shows the number of the current record in a box.
    void m_display_q_nr();

private:
    void open_course();
    void create_course();
    void exit();
    void change_target();
    void reset_all();
    void save();
    void tell_disabled(Command command) const;
    [[nodiscard]] platform::TextBox* box_with_focus() const;
    template <class Work>
    void keep_due_true(Work work);

    platform::Form1& form1_;
    CommandControls& controls_;
    Targets to_;
};

} // namespace cuedrill::drill
