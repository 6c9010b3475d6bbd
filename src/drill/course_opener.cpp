#include "drill/course_opener.h"

#include "app/base/paths.h"
#include "common/text.h"
#include "store/schema.h"

#include <utility>

namespace cuedrill::drill {
namespace {

constexpr const char* last_course_key = "last_db_path";

std::string missing_file(const std::string& path)
{
    return "File " + path + " does not exist.";
}

/// Some file dialogs give the pattern itself back when no name was typed.
constexpr const char* bare_pattern = "*.crs";

} // namespace

CourseOpener::CourseOpener(store::Course& course, store::CourseParamsStore& params, MainWindow& main_window,
                           const Services& services, std::string program_folder, common::DateTime start_time)
    : m_course(course), m_params(params), m_main_window(main_window), m_services(services),
      m_program_folder(std::move(program_folder)), m_start_time(start_time)
{
}

bool CourseOpener::apertura_db()
{
    m_services.trace.write_trace("apertura_db -  begin - db_path$ = " + m_course.db_path);
    // A course inherits from the one that was open before, not from one that was refused.
    const store::CourseParams earlier = m_course.params;
    bool course_determined = take_command_line_course();
    bool last_attempt_failed = false;
    while (true) {
        try {
            if (!course_determined) {
                // After a failure the remembered course may be the very one that failed: the user chooses.
                if (!choose_course(m_choose_file_on_open || last_attempt_failed))
                    return false;
                prepare_chosen_course();
            }
            open_course();
            return true;
        } catch (const common::Error& error) {
            m_course.params = earlier;
            report_failure(error.what());
            course_determined = false;
            last_attempt_failed = true;
        }
    }
}

bool CourseOpener::take_command_line_course()
{
    if (m_course.db_path.empty())
        return false;
    if (!app::file_exists(m_services.files, m_course.db_path)) {
        m_services.desktop.message_box({.text = missing_file(m_course.db_path)});
        return false;
    }
    m_course.course_name = app::name_of(m_course.db_path);
    return true;
}

bool CourseOpener::choose_course(bool ask_user)
{
    m_services.form2.load();
    m_services.desktop.pump();

    const std::string last = m_services.settings.get_setting(last_course_key);
    const bool last_exists = app::file_exists(m_services.files, last);
    if (ask_user || !last_exists)
        return show_file_dialog(last, last_exists);
    m_course.db_path = last;
    m_course.course_name = app::name_of(last);
    return true;
}

bool CourseOpener::show_file_dialog(const std::string& last, bool last_exists)
{
    const platform::ChosenFile chosen =
        m_services.desktop.open_file_dialog({.title = "Specify name of Cuedrill file to open or create",
                                             .initial_folder = last_exists ? app::dir_of(last) : m_program_folder,
                                             .initial_file = last_exists ? app::file_of(last) : std::string(),
                                             .default_extension = "crs",
                                             .filter = "Cuedrill database file (*.crs)|*.crs"});
    if (chosen.path.empty() || common::equal_ascii(chosen.path, bare_pattern) ||
        common::equal_ascii(chosen.title, bare_pattern)) {
        m_create_without_asking = false;
        return false;
    }
    m_course.db_path = chosen.path;
    // A title is a name without its folder; behind "/", ":" and "\\" are ordinary characters of it.
    m_course.course_name = app::name_of("/" + chosen.title);
    return true;
}

void CourseOpener::prepare_chosen_course()
{
    m_services.trace.write_trace("apertura_db -  db_determined ");
    m_course.close();
    m_services.form2.unload();
    if (app::file_exists(m_services.files, m_course.db_path))
        return;
    if (!m_create_without_asking) {
        const auto answer =
            m_services.desktop.message_box({.text = missing_file(m_course.db_path) + " Do you want to create it?",
                                            .buttons = platform::BoxButtons::yes_no,
                                            .icon = platform::BoxIcon::question});
        if (answer != platform::BoxAnswer::yes)
            throw common::ProgramEnded{};
    }
    create_course();
}

void CourseOpener::create_course()
{
    m_creating = true;
    store::create_course_db(m_course.database(), m_course.db_path);
    m_creating = false;
    m_course.close();
}

void CourseOpener::open_course()
{
    m_create_without_asking = false;
    m_services.trace.write_trace("apertura_db - AD1 ");
    m_course.apri_db();
    m_services.trace.write_trace("apertura_db - return from apri_db ");
    trace_unstored("order of the texts", m_course.database().unstored());
    m_course.params.font.clear();
    m_params.read_params();
    m_services.trace.write_trace("apertura_db - return from read_params ");
    trace_unstored("parameters", m_params.unstored());
    m_course.set_side_fields();
    m_course.record_count = m_course.count_records();
    // The first course has been worked on since the program started.
    m_course.start_counting(m_first_course ? m_start_time : m_services.clock.now());
    m_services.settings.save_setting(last_course_key, m_course.db_path);
    m_main_window.load();
    m_course.all_passed_announced = false;
    m_first_course = false;
}

void CourseOpener::trace_unstored(const std::string& what, const std::string& reason)
{
    if (!reason.empty())
        m_services.trace.write_trace("apertura_db - " + what + " not stored - " + reason);
}

void CourseOpener::report_failure(const std::string& reason)
{
    m_main_window.unload();
    m_course.close();
    const std::string failure =
        "The course " + m_course.db_path + (m_creating ? " cannot be created." : " cannot be opened.");
    m_creating = false;
    m_services.trace.write_trace("apertura_db - " + failure + " - " + reason);
    m_services.desktop.message_box({.text = failure + "\r\n\r\n" + reason, .icon = platform::BoxIcon::exclamation});
    m_course.db_path.clear();
    m_course.course_name.clear();
}

void CourseOpener::m_open()
{
    if (!m_course.db_path.empty()) {
        m_params.write_params();
        m_params.save_work_time(m_services.clock.now());
        m_course.close();
    }
    m_course.db_path.clear();
    m_course.course_name.clear();
    m_main_window.unload();
    m_choose_file_on_open = true;
    m_course.current_cnt = 0;
    m_course.previous_cnt = 0;
    if (!apertura_db())
        throw common::ProgramEnded{};
}

void CourseOpener::m_new()
{
    m_create_without_asking = true;
    try {
        m_open();
    } catch (const common::Error&) {
        // The present course could not be stored: nothing new is to be created by a later command either.
        m_create_without_asking = false;
        throw;
    }
}

} // namespace cuedrill::drill
