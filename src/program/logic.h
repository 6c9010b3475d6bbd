#pragma once

#include "app/base/settings.h"
#include "app/base/trace_log.h"
#include "app/start/start.h"
#include "bank/record_bank.h"
#include "drill/command_controls.h"
#include "drill/context_help.h"
#include "drill/course_copies.h"
#include "drill/course_opener.h"
#include "drill/course_options.h"
#include "drill/course_title.h"
#include "drill/display.h"
#include "drill/drill_commands.h"
#include "drill/drill_state.h"
#include "drill/due_picture.h"
#include "drill/edit_flags.h"
#include "drill/editor_boxes.h"
#include "drill/end_of_program.h"
#include "drill/error_report.h"
#include "drill/kept_texts.h"
#include "drill/last_list.h"
#include "drill/level_commands.h"
#include "drill/main_window.h"
#include "drill/narrator.h"
#include "drill/question_export.h"
#include "drill/question_import.h"
#include "drill/record_editor.h"
#include "drill/record_lists.h"
#include "drill/review_history.h"
#include "drill/sample_course.h"
#include "drill/scoring.h"
#include "drill/screen.h"
#include "drill/selection.h"
#include "drill/statistics.h"
#include "drill/text_folder.h"
#include "drill/timers.h"
#include "drill/typed_answer.h"
#include "drill/window_keys.h"
#include "exchange/exporter.h"
#include "keep/copies.h"
#include "keep/draft_file.h"
#include "keep/removed_file.h"
#include "platform/clock.h"
#include "platform/database.h"
#include "platform/desktop.h"
#include "platform/f_msgbox.h"
#include "platform/files.h"
#include "platform/folders.h"
#include "platform/form1.h"
#include "platform/open_courses.h"
#include "platform/random_source.h"
#include "platform/settings_store.h"
#include "platform/shell.h"
#include "platform/text_compare.h"
#include "scheduler/dead_time.h"
#include "store/course_params.h"
#include "support/agenda.h"
#include "support/big_box.h"
#include "support/documents.h"
#include "support/help.h"

#include <string>

namespace cuedrill::program {

/// What the logic depends on: the adapters or their fakes. All must outlive the logic.
struct LogicPlatform {
    platform::Form1& form1;
    platform::FMsgbox& f_msgbox;
    platform::DialogHost& form2;
    platform::Desktop& desktop;
    platform::SettingsStore& settings;
    platform::Shell& shell;
    platform::Clock& clock;
    platform::Files& files;
    platform::OpenCourses& open_courses;
    platform::Folders& folders;
    platform::RandomSource& random;
    const platform::TextCompare& text_compare;
    decks::DeckTools deck_tools; ///< for decks of other programs
    platform::Database& database;
    platform::Database& sample_database; ///< another one, in which the sample course is made
    std::string data_folder;             ///< where "removed.txt", and the copies and histories of courses are
    std::string program_folder;     ///< where the trace and the agenda are, and the file dialog if no course is known
    std::string sample_questions{}; ///< full path of the question text of the sample course; "" for none
    std::string documents_folder{}; ///< where the user keeps documents; "" for none
    std::string web_page;           ///< the product's web page: an address or a full path
};

/// All objects of the logic, from the lowest layer to the highest; each member may use those above it.
struct Logic {
    /// Builds all objects and connects them to the controls, whose hooks call into this object from then on.
    explicit Logic(const LogicPlatform& platform);
    Logic(const Logic&) = delete;
    Logic& operator=(const Logic&) = delete;
    ~Logic();

    const LogicPlatform p;
    platform::Form1& form1 = p.form1;
    const common::DateTime start_time = p.clock.now();

    app::TraceLog trace{p.files, p.clock, p.desktop, p.program_folder};
    app::Settings settings{p.settings, trace};

    store::Course course{p.database};
    store::CourseParamsStore params{course, p.clock};

    drill::CommandControls command_controls{form1};
    drill::CourseOptions options{command_controls, course};
    drill::EditFlags edit_flags;
    drill::DrillState state;
    drill::MainScreen screen{form1.screen, course, edit_flags, state};
    drill::StatusLine status{screen, p.clock};
    drill::WindowLayout layout{form1, command_controls, course, edit_flags, state, screen, status};
    drill::Hints hints{form1, course, state, layout, p.random, p.text_compare};
    drill::Display display{form1, course, state, screen, status, layout, hints, p.clock};

    drill::Narrator narrator{form1, state, edit_flags, screen, layout};

    scheduler::DeadTimes dead_times;
    drill::DuePicture due_picture{course, dead_times, screen, form1.timer_due, p.clock, trace};
    keep::Copies copies{p.files, p.folders, p.data_folder};
    drill::KeyPolicy key_policy{p.clock};
    drill::CourseCopies course_copies{
        course, copies, key_policy, status, {form1.timer_idle, p.clock, p.desktop, trace}};

    drill::ReviewHistory history{course, params, p.data_folder, {p.files, p.folders, p.clock, status, trace}};

    drill::EndOfProgram end_of_program{course, params, p.clock, trace};
    drill::Statistics statistics{course, params, screen, p.clock, p.desktop, start_time};
    drill::Selection selection{
        course, params, dead_times, state, display, options, {p.clock, p.random, p.desktop, status}};
    drill::Scoring scoring{course, dead_times, state,     display,        statistics,
                           status, p.clock,    p.desktop, end_of_program, course_copies};
    drill::LevelCommands levels{course, params, dead_times, statistics, options, p.desktop};

    bank::RecordBank bank{course, p.text_compare};
    drill::LastList last_list{course, form1.listav, state, edit_flags, layout, status, p.desktop, p.text_compare};
    keep::RemovedFile removed_file{p.files, p.data_folder};
    keep::DraftFile draft_file{p.files, p.data_folder};
    drill::KeptTexts kept{course, removed_file, draft_file, {status, p.clock, p.text_compare, trace}};
    drill::EditorBoxes editor_boxes{form1,  state,      edit_flags, display,   layout,
                                    status, statistics, last_list,  key_policy};
    drill::RecordEditor editor{
        course, state,        edit_flags,
        bank,   editor_boxes, {p.desktop, p.text_compare, display, statistics, scoring, selection, kept}};
    drill::RecordLists lists{course, state,          last_list, display,        status,
                             editor, end_of_program, p.desktop, p.text_compare, p.clock};

    exchange::Exporter exporter{course, p.files, p.clock, p.text_compare};

    support::BigBox big_box{p.f_msgbox};
    support::Documents documents{p.files, p.shell, p.desktop};
    support::Agenda agenda{p.files, p.shell, p.desktop, p.program_folder};
    support::HelpCommands help{big_box, documents, p.desktop, p.web_page};

    drill::QuestionDialog dialog{form1,     state,     screen,  display, status,        layout,
                                 p.desktop, selection, scoring, editor,  end_of_program};
    drill::TypedAnswer typed_answer{
        form1,
        state,
        edit_flags,
        {display, dialog, status, hints, layout, key_policy, p.desktop, p.text_compare, narrator}};
    drill::AnswerAids aids{
        form1, course, state, {params, statistics, options, display, status, hints, layout, p.text_compare}};
    drill::ContextHelp context_help{form1, p.desktop};
    drill::CourseTitle title{course, params, form1.window, p.desktop, p.text_compare};
    drill::Timers timers{form1, params, statistics, screen, status, editor, kept, history, state, p.clock, trace};
    drill::MainWindow main_window{form1,     p.desktop, title,  options, statistics, display,
                                  last_list, status,    dialog, editor,  timers,     end_of_program};
    drill::SampleCourse sample{
        p.sample_database, {p.files, p.clock, p.text_compare, settings, trace}, p.sample_questions, p.data_folder};
    drill::CourseOpener opener{course,
                               params,
                               main_window,
                               {p.files, p.open_courses, p.clock, form1.window, form1.timer_check, p.desktop, p.form2,
                                status, settings, trace, course_copies, history, sample},
                               p.program_folder,
                               start_time};
    drill::TextFolder import_folder{settings, p.files, "last_import_folder", p.documents_folder};
    drill::TextFolder export_folder{settings, p.files, "last_export_folder", p.documents_folder};
    drill::QuestionImport question_import{
        course,
        edit_flags,
        display,
        statistics,
        last_list,
        status,
        {p.files, p.clock, p.desktop, p.text_compare, p.deck_tools, course_copies, import_folder}};
    drill::QuestionExport question_export{course, exporter, documents, p.files, p.desktop, export_folder};
    drill::DrillCommands commands{
        form1, command_controls, {course,          params,         opener, title,        selection, scoring,
                                  levels,          end_of_program, editor, last_list,    lists,     question_import,
                                  question_export, dialog,         aids,   context_help, help,      agenda,
                                  options,         display,        state,  status,       layout,    narrator,
                                  p.desktop}};
    drill::WindowKeys keys{
        form1,
        state,
        {dialog, commands, editor, layout, key_policy, p.desktop, p.text_compare, end_of_program, narrator}};
    drill::ErrorReport error_report{course, course_copies, p.desktop, trace};
    app::StartRoutine start{course, opener, dead_times, kept, p.form2, p.files, trace};
};

} // namespace cuedrill::program
