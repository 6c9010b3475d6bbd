#include "program/program.h"

#include "app/base/program_folder.h"
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
#include "platform/icu/icu_text_compare.h"
#include "platform/qt/qt_desktop.h"
#include "platform/qt/qt_dialog_host.h"
#include "platform/qt/qt_f_msgbox.h"
#include "platform/qt/qt_guard.h"
#include "platform/qt/qt_look.h"
#include "platform/qt/qt_settings_store.h"
#include "platform/qt/qt_shell.h"
#include "platform/sqlite/sqlite_database.h"
#include "platform/system/system_clock.h"
#include "platform/system/system_files.h"
#include "platform/system/system_folders.h"
#include "platform/system/system_random.h"
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
#include "support/web_page.h"

#include <QApplication>
#include <cstdlib>
#include <optional>

namespace cuedrill::program {

/// The adapters.
struct Program::Platform {
    platform::qt::QtGuard guard;
    platform::qt::QtForm1 form1{
        guard, platform::qt::QtWindowState(platform::qt::QtSettingsStore::default_folder() + "/CUEDRILL/window.ini")};
    platform::qt::QtFMsgbox f_msgbox{guard, form1.widget()};
    platform::qt::QtDialogHost form2;
    platform::qt::QtDesktop desktop{guard, form2};
    platform::qt::QtSettingsStore settings{platform::qt::QtSettingsStore::default_folder()};
    platform::qt::QtShell shell;
    platform::system::SystemClock clock;
    platform::system::SystemFiles files;
    platform::system::SystemRandom random;
    platform::icu::IcuTextCompare text_compare;
    platform::sqlite::SqliteDatabase database{text_compare};
};

/// The logic, from the lowest floor to the highest; each member may use those above it.
struct Program::Logic {
    explicit Logic(Platform& platform) : p(platform) {}

    Platform& p;
    platform::Form1& form1 = p.form1.controls();
    const common::DateTime start_time = p.clock.now();

    const std::string program_folder =
        app::program_folder(p.files, platform::system::executable_folder(), platform::system::data_home());
    app::TraceLog trace{p.files, p.clock, p.desktop, program_folder};
    app::Settings settings{p.settings, trace};

    drill::MainWindowPorts window_ports{form1.window};
    store::Course course{p.database};
    store::CourseParamsStore params{course, p.clock};
    store::CourseTitle title{course, params, window_ports, p.desktop, p.text_compare};
    store::CourseOpener opener{course,         params,
                               window_ports,   {p.files, p.clock, p.desktop, p.form2, settings, trace},
                               program_folder, start_time};

    drill::MainMenu menu{form1.menu_bar};
    bank::EditFlags edit_flags;
    drill::DrillState state;
    drill::StatusLine status{form1.P_status, p.clock};
    drill::ListStatus list_status{status};
    drill::WindowLayout layout{form1, menu, course, edit_flags, state, status};
    drill::Hints hints{form1, course, state, layout, p.random, p.text_compare};
    drill::QuestionView question_view{form1, course, state, status, layout, hints, p.clock};
    drill::StatisticsView statistics_view{form1, menu, course};

    scheduler::DeadTimes dead_times;
    scheduler::EndOfProgram end_of_program{course, params, p.clock, trace};
    scheduler::Statistics statistics{course, params, statistics_view, p.clock, p.desktop, start_time};
    scheduler::Selection selection{course,        params,          dead_times,
                                   question_view, statistics_view, {p.clock, p.random, p.desktop}};
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
        course, bank, window_ports, {p.desktop, p.text_compare, list_status, editor, end_of_program}};

    support::BigBox big_box{p.f_msgbox.controls()};
    support::Documents documents{p.files, p.shell, p.desktop};
    support::Agenda agenda{p.files, p.shell, p.desktop, program_folder};
    support::HelpCommands help{
        big_box, documents, p.desktop,
        support::web_page_address(support::default_web_page(), platform::system::executable_folder())};

    exchange::QuestionImport question_import{course,       bank,   edit_flags,
                                             window_ports, status, {p.files, p.clock, p.desktop, p.text_compare}};
    exchange::QuestionExport question_export{
        course, {p.files, p.clock, p.desktop, [this](const std::string& path) { documents.open_document(path); }}};

    drill::KeyEcho echo{p.clock};
    drill::QuestionDialog dialog{form1,     state,     question_view, status, layout,
                                 p.desktop, selection, scoring,       editor, end_of_program};
    drill::TypedAnswer typed_answer{
        form1, state, edit_flags, {question_view, dialog, status, hints, layout, echo, p.desktop, p.text_compare}};
    drill::AnswerAids aids{form1,
                           course,
                           state,
                           {params, statistics, statistics_view, question_view, status, hints, layout, p.text_compare}};
    drill::Toolbar toolbar{form1, dialog, editor, aids};
    drill::ContextHelp context_help{form1, p.desktop};
    drill::WindowKeys keys{
        form1, state, {dialog, toolbar, editor, status, layout, echo, p.desktop, p.text_compare, end_of_program}};
    drill::MainWindow main_window{{form1,          p.desktop,    p.clock, trace,           course,        params,
                                   title,          edit_flags,   editor,  lists,           statistics,    scoring,
                                   end_of_program, state,        status,  statistics_view, question_view, layout,
                                   dialog,         typed_answer, toolbar, context_help,    keys}};
    drill::DrillCommands commands{
        {course,         params,       opener, title,           selection,       scoring,  levels,
         end_of_program, editor,       lists,  question_import, question_export, dialog,   aids,
         toolbar,        context_help, help,   agenda,          statistics_view, p.desktop}};
    drill::ErrorReport error_report{course, p.desktop, trace};
    app::StartRoutine start{course, opener, dead_times, p.form2, p.files, trace};
};

Program::Program()
{
    platform::qt::set_up_application();
    m_platform = std::make_unique<Platform>();
    m_logic = std::make_unique<Logic>(*m_platform);
    m_logic->window_ports.connect(m_logic->main_window);
    m_logic->main_window.attach();
    m_logic->big_box.attach();
    m_logic->commands.attach(m_logic->menu);
    m_platform->guard.on_error = [this](const std::exception& error) { m_logic->error_report.report(error); };
}

Program::~Program()
{
    // The controls outlive the logic that their hooks lead to.
    m_platform->guard.end();
}

int Program::run(const std::string& command_line, const std::function<void()>& once_running)
{
    platform::qt::QtGuard& guard = m_platform->guard;
    std::optional<bool> open;
    guard.run([&] { open = m_logic->start.run(command_line); });
    if (guard.ending() || open == false)
        return EXIT_SUCCESS;
    if (!open)
        return EXIT_FAILURE;
    if (once_running)
        once_running();
    return guard.ending() ? EXIT_SUCCESS : QApplication::exec();
}

platform::qt::QtForm1& Program::form1()
{
    return m_platform->form1;
}

store::Course& Program::course()
{
    return m_logic->course;
}

} // namespace cuedrill::program
