#include "program/program.h"

#include "adapters/deck_adapters.h"
#include "app/base/program_folder.h"
#include "app/base/sound_courses.h"
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
#include "platform/system/system_directories.h"
#include "platform/system/system_files.h"
#include "platform/system/system_folders.h"
#include "platform/system/system_open_courses.h"
#include "platform/system/system_random.h"
#include "program/logic.h"
#include "support/web_page.h"

#include <QApplication>
#include <QStandardPaths>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>

namespace cuedrill::program {
namespace {

/// How long another program that is writing the course is waited for.
constexpr std::chrono::seconds longest_wait{3};

/// The question text of the sample course, which is installed at a fixed place beside the program.
std::string sample_questions(const std::string& executable_folder)
{
    if (executable_folder.empty())
        return {};
    return (std::filesystem::path(executable_folder) / CUEDRILL_SAMPLE_QUESTIONS).lexically_normal().string();
}

/// As the desktop has it in its list of the user's folders (user-dirs.dirs).
std::string documents_folder()
{
    return QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation).toStdString();
}

} // namespace

/// The adapters.
struct Program::Platform {
    platform::qt::QtGuard guard;
    platform::qt::QtSettingsStore settings{platform::qt::QtSettingsStore::default_folder()};
    platform::qt::QtForm1 form1{guard, platform::qt::QtWindowState(&settings)};
    platform::qt::QtFMsgbox f_msgbox{guard, form1.widget(), form1.key_filter()};
    platform::qt::QtDialogHost form2;
    platform::qt::QtDesktop desktop{guard, form2};
    platform::qt::QtShell shell;
    platform::system::SystemClock clock;
    platform::system::SystemFiles files;
    platform::system::SystemOpenCourses open_courses{platform::system::runtime_folder()};
    platform::system::SystemDirectories folders;
    platform::system::SystemRandom random;
    platform::icu::IcuTextCompare text_compare;
    adapters::DeckAdapters deck_adapters;
    app::SoundCourses sound_courses{settings};
    platform::sqlite::SqliteDatabase database{text_compare, longest_wait, &sound_courses};
    platform::sqlite::SqliteDatabase sample_database{text_compare};

    LogicPlatform for_logic()
    {
        const std::string executable_folder = platform::system::executable_folder();
        const std::string data_home = platform::system::data_home();
        const std::string program_folder = app::program_folder(files, executable_folder, data_home);
        return {.form1 = form1.controls(),
                .f_msgbox = f_msgbox.controls(),
                .form2 = form2,
                .desktop = desktop,
                .settings = settings,
                .shell = shell,
                .clock = clock,
                .files = files,
                .open_courses = open_courses,
                .folders = folders,
                .random = random,
                .text_compare = text_compare,
                .deck_tools = deck_adapters.tools(),
                .database = database,
                .sample_database = sample_database,
                .data_folder = app::data_folder(program_folder, data_home),
                .program_folder = program_folder,
                .sample_questions = sample_questions(executable_folder),
                .documents_folder = documents_folder(),
                .web_page = support::web_page_address(support::default_web_page(), executable_folder)};
    }
};

Program::Program(bool keep_style)
{
    platform::qt::set_up_application(keep_style);
    platform_ = std::make_unique<Platform>();
    logic_ = std::make_unique<Logic>(platform_->for_logic());
    platform_->guard.on_error = [this](const std::exception& error) { logic_->error_report.report(error); };
}

Program::~Program()
{
    // The controls outlive the logic; once the guard has ended, their hooks no longer call it.
    platform_->guard.end();
}

int Program::run(const std::string& command_line, const std::function<void()>& once_running)
{
    platform::qt::QtGuard& guard = platform_->guard;
    std::optional<bool> open;
    guard.run([&] { open = logic_->start.run(command_line); });
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
    return platform_->form1;
}

store::Course& Program::course()
{
    return logic_->course;
}

const drill::ShownRecord& Program::shown() const
{
    return logic_->state.shown;
}

} // namespace cuedrill::program
