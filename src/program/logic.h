#pragma once

#include "app/base/settings.h"
#include "app/base/trace_log.h"
#include "app/start/start.h"
#include "bank/edit_flags.h"
#include "bank/record_bank.h"
#include "bank/record_lists.h"
#include "drill/drill_commands.h"
#include "drill/drill_state.h"
#include "drill/error_report.h"
#include "drill/main_menu.h"
#include "drill/main_window.h"
#include "exchange/question_export.h"
#include "exchange/question_import.h"
#include "platform/clock.h"
#include "platform/database.h"
#include "platform/desktop.h"
#include "platform/f_msgbox.h"
#include "platform/files.h"
#include "platform/form1.h"
#include "platform/random_source.h"
#include "platform/settings_store.h"
#include "platform/shell.h"
#include "platform/text_compare.h"
#include "scheduler/dead_time.h"
#include "scheduler/end_of_program.h"
#include "scheduler/level_commands.h"
#include "scheduler/scoring.h"
#include "scheduler/selection.h"
#include "scheduler/statistics.h"
#include "store/course_opener.h"
#include "store/course_params.h"
#include "store/course_title.h"
#include "support/agenda.h"
#include "support/big_box.h"
#include "support/documents.h"
#include "support/help.h"

#include <string>

namespace cuedrill::program {

/// What the logic runs on: the adapters, or fakes of them. All of it outlives the logic.
struct LogicPlatform {
    platform::Form1& form1;
    platform::FMsgbox& f_msgbox;
    platform::DialogHost& form2;
    platform::Desktop& desktop;
    platform::SettingsStore& settings;
    platform::Shell& shell;
    platform::Clock& clock;
    platform::Files& files;
    platform::RandomSource& random;
    const platform::TextCompare& text_compare;
    platform::Database& database;
    std::string program_folder; ///< where the trace, the agenda and the first file dialog are
    std::string web_page;       ///< the product's web page: an address or a full path
};

/// The logic, from the lowest floor to the highest; each member may use those above it.
struct Logic {
    /// Builds everything and attaches it to the controls, whose hooks lead into this object from then on.
    explicit Logic(const LogicPlatform& platform);
    Logic(const Logic&) = delete;
    Logic& operator=(const Logic&) = delete;
    ~Logic();

    const LogicPlatform p;
    platform::Form1& form1 = p.form1;
    const common::DateTime start_time = p.clock.now();

    app::TraceLog trace{p.files, p.clock, p.desktop, p.program_folder};
    app::Settings settings{p.settings, trace};

    drill::MainWindowPorts window_ports{form1.window};
    store::Course course{p.database};
    store::CourseParamsStore params{course, p.clock};
    store::CourseTitle title{course, params, window_ports, p.desktop, p.text_compare};
    store::CourseOpener opener{course,           params,
                               window_ports,     {p.files, p.clock, p.desktop, p.form2, settings, trace},
                               p.program_folder, start_time};

    drill::MainMenu menu{form1.menu_bar};
    bank::EditFlags edit_flags;
    drill::DrillState state;
    drill::StatusLine status{form1.P_status, p.clock};
    drill::ListStatus list_status{status};
    drill::DueStatus due_status{status};
    drill::WindowLayout layout{form1, menu, course, edit_flags, state, status};
    drill::Hints hints{form1, course, state, layout, p.random, p.text_compare};
    drill::QuestionView question_view{form1, course, state, status, layout, hints, p.clock};
    drill::StatisticsView statistics_view{form1, menu, course};

    scheduler::DeadTimes dead_times;
    scheduler::EndOfProgram end_of_program{course, params, p.clock, trace};
    scheduler::Statistics statistics{course, params, statistics_view, p.clock, p.desktop, start_time};
    scheduler::Selection selection{course,        params,          dead_times,
                                   question_view, statistics_view, {p.clock, p.random, p.desktop, due_status}};
    scheduler::Scoring scoring{course,  params,    dead_times,    statistics, {question_view, status, statistics_view},
                               p.clock, p.desktop, end_of_program};
    scheduler::LevelCommands levels{course, params, dead_times, statistics, statistics_view, p.desktop};

    bank::RecordBank bank{course, edit_flags, p.desktop};
    bank::RecordEditor editor{course,
                              edit_flags,
                              bank,
                              window_ports,
                              {p.desktop, p.text_compare, question_view, statistics, scoring, selection}};
    bank::RecordLists lists{
        course, bank, window_ports, {p.desktop, p.text_compare, list_status, editor, end_of_program, p.clock}};

    support::BigBox big_box{p.f_msgbox};
    support::Documents documents{p.files, p.shell, p.desktop};
    support::Agenda agenda{p.files, p.shell, p.desktop, p.program_folder};
    support::HelpCommands help{big_box, documents, p.desktop, p.web_page};

    exchange::QuestionImport question_import{course,       bank,   edit_flags,
                                             window_ports, status, {p.files, p.clock, p.desktop, p.text_compare}};
    exchange::QuestionExport question_export{course,
                                             {p.files, p.clock, p.desktop,
                                              [this](const std::string& path) { documents.open_document(path); },
                                              p.text_compare}};

    drill::KeyEcho echo{p.clock};
    drill::KeyPause key_pause{p.clock};
    drill::QuestionDialog dialog{form1,     state,   question_view, status,         layout, p.desktop,
                                 selection, scoring, editor,        end_of_program, course};
    drill::TypedAnswer typed_answer{
        form1, state, edit_flags, {question_view, dialog, status, hints, layout, echo, p.desktop, p.text_compare}};
    drill::AnswerAids aids{form1,
                           course,
                           state,
                           {params, statistics, statistics_view, question_view, status, hints, layout, p.text_compare}};
    drill::Toolbar toolbar{form1, dialog, editor, aids};
    drill::ContextHelp context_help{form1, p.desktop};
    drill::WindowKeys keys{
        form1, state, {dialog, toolbar, editor, layout, echo, key_pause, p.desktop, p.text_compare, end_of_program}};
    drill::MainWindow main_window{{form1,          p.desktop,    p.clock, trace,           course,        params,
                                   title,          edit_flags,   editor,  lists,           statistics,    scoring,
                                   end_of_program, state,        status,  statistics_view, question_view, layout,
                                   dialog,         typed_answer, toolbar, context_help,    keys,          key_pause}};
    drill::DrillCommands commands{
        {course,         params,       opener, title,           selection,       scoring, levels,
         end_of_program, editor,       lists,  question_import, question_export, dialog,  aids,
         toolbar,        context_help, help,   agenda,          statistics_view, status,  p.desktop}};
    drill::ErrorReport error_report{course, p.desktop, trace};
    app::StartRoutine start{course, opener, dead_times, p.form2, p.files, trace};
};

} // namespace cuedrill::program
