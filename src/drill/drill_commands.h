#pragma once

#include "bank/record_editor.h"
#include "bank/record_lists.h"
#include "drill/answer_aids.h"
#include "drill/context_help.h"
#include "drill/main_menu.h"
#include "drill/question_dialog.h"
#include "drill/statistics_view.h"
#include "drill/status_line.h"
#include "drill/toolbar.h"
#include "exchange/question_export.h"
#include "exchange/question_import.h"
#include "platform/desktop.h"
#include "scheduler/end_of_program.h"
#include "scheduler/level_commands.h"
#include "scheduler/scoring.h"
#include "scheduler/selection.h"
#include "store/course.h"
#include "store/course_opener.h"
#include "store/course_params.h"
#include "store/course_title.h"
#include "support/agenda.h"
#include "support/help.h"

namespace cuedrill::drill {

/// What the entries of the menus do.
class DrillCommands {
public:
    /// Everything that commands lead to.
    struct Targets {
        store::Course& course;
        store::CourseParamsStore& params;
        store::CourseOpener& opener;
        store::CourseTitle& title;
        scheduler::Selection& selection;
        scheduler::Scoring& scoring;
        scheduler::LevelCommands& levels;
        scheduler::EndOfProgram& end_of_program;
        bank::RecordEditor& editor;
        bank::RecordLists& lists;
        exchange::QuestionImport& import;
        exchange::QuestionExport& question_export;
        QuestionDialog& dialog;
        AnswerAids& aids;
        Toolbar& toolbar;
        ContextHelp& context_help;
        support::HelpCommands& help;
        support::Agenda& agenda;
        StatisticsView& statistics_view;
        StatusLine& status;
        platform::Desktop& desktop;
    };

    explicit DrillCommands(const Targets& targets) : m_to(targets) {}

    /// Attaches each entry of the menus to its command.
    void attach(MainMenu& menu);

    /// Asks the other side of the course from now on. Offers to save what is being typed first.
    /// @throws platform::DatabaseError. When the option cannot be stored, the direction stays; after any later error no
    ///         question is on display.
    void m_invert();

    /// Tells the number of the record on display.
    void m_display_q_nr();

private:
    void attach_lists(MainMenu& menu);
    void attach_help(MainMenu& menu);
    void tell_next_due_anew();

    Targets m_to;
};

} // namespace cuedrill::drill
