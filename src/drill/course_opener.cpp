#include "drill/course_opener.h"

#include "app/base/paths.h"
#include "common/text.h"
#include "store/schema.h"

#include <chrono>
#include <utility>

namespace cuedrill::drill {
namespace {

constexpr const char* last_course_key = "last_db_path";

std::string missing_file(const std::string& path)
{
    return "File " + path + " does not exist.";
}

/// Some file dialogs return the pattern itself if no name was typed.
constexpr const char* bare_pattern = "*.crs";

constexpr const char* open_elsewhere =
    "This course is also open in another window. Records are safe; the work counters of "
    "the one closed last count.";
/// Time to read three lines.
constexpr int seconds_of_warning = 20;

/// Until a check that another program has prevented is tried again. An attempt may wait some seconds for it.
constexpr std::chrono::minutes next_attempt{1};

} // namespace

CourseOpener::CourseOpener(store::Course& course, store::CourseParamsStore& params, MainWindow& main_window,
                           const Services& services, std::string program_folder, common::DateTime start_time)
    : course_(course), params_(params), main_window_(main_window), services_(services),
      program_folder_(std::move(program_folder)), start_time_(start_time)
{
}

void CourseOpener::attach()
{
    services_.window.on_first_picture = [this] { finish_check(); };
    services_.timer.on_tick = [this] { finish_check(); };
}

bool CourseOpener::apertura_db()
{
    services_.trace.write_trace("apertura_db -  begin - db_path$ = " + course_.db_path);
    // Options that a course does not store keep the values of the course before it, but never of one that failed to
    // open.
    earlier_params_ = course_.params;
    bool course_determined = take_command_line_course();
    bool last_attempt_failed = false;
    while (true) {
        try {
            if (!course_determined) {
                // After a failure, ask the user: the remembered course may be the one that failed.
                if (!choose_course(choose_file_on_open_ || last_attempt_failed))
                    return false;
                prepare_chosen_course();
            }
            open_course();
            return true;
        } catch (const common::Error& error) {
            course_.params = earlier_params_;
            report_failure(error.what());
            course_determined = false;
            last_attempt_failed = true;
        }
    }
}

bool CourseOpener::take_command_line_course()
{
    if (course_.db_path.empty())
        return false;
    if (!app::file_exists(services_.files, course_.db_path)) {
        services_.desktop.message_box(
            {.text = missing_file(course_.db_path) + services_.copies.words_about_newest(course_.db_path)});
        return false;
    }
    course_.course_name = app::name_of(course_.db_path);
    return true;
}

bool CourseOpener::choose_course(bool ask_user)
{
    services_.form2.load();
    services_.desktop.pump();

    const std::string last = services_.settings.get_setting(last_course_key);
    if (last.empty())
        services_.sample.put_once();
    const bool last_exists = app::file_exists(services_.files, last);
    if (ask_user || !last_exists)
        return show_file_dialog(last, last_exists);
    course_.db_path = last;
    course_.course_name = app::name_of(last);
    return true;
}

bool CourseOpener::show_file_dialog(const std::string& last, bool last_exists)
{
    const auto [folder, file] = first_choice(last, last_exists);
    const platform::ChosenFile chosen =
        services_.desktop.open_file_dialog({.title = "Specify name of Cuedrill file to open or create",
                                            .initial_folder = folder,
                                            .initial_file = file,
                                            .default_extension = "crs",
                                            .filter = "Cuedrill database file (*.crs)|*.crs"});
    if (chosen.path.empty() || common::equal_ascii(chosen.path, bare_pattern) ||
        common::equal_ascii(chosen.title, bare_pattern)) {
        create_without_asking_ = false;
        return false;
    }
    course_.db_path = chosen.path;
    // The title is a plain file name. The "/" before it keeps name_of from treating ":" and "\\" in it as separators.
    course_.course_name = app::name_of("/" + chosen.title);
    return true;
}

/// A user who has never opened a course begins with the sample, or where another course is. In an installation of the
/// user's own, the program's folder is another one, that of the executable.
CourseOpener::FirstChoice CourseOpener::first_choice(const std::string& last, bool last_exists) const
{
    if (last_exists)
        return {app::dir_of(last), app::file_of(last)};
    const std::string folder_with_course = last.empty() ? services_.sample.folder_with_course() : std::string();
    if (folder_with_course.empty())
        return {program_folder_, {}};
    return {folder_with_course, services_.sample.is_there() ? SampleCourse::file_name : ""};
}

void CourseOpener::prepare_chosen_course()
{
    services_.trace.write_trace("apertura_db -  db_determined ");
    close_course();
    services_.form2.unload();
    if (app::file_exists(services_.files, course_.db_path))
        return;
    if (!create_without_asking_) {
        const auto answer =
            services_.desktop.message_box({.text = missing_file(course_.db_path) + " Do you want to create it?" +
                                                   services_.copies.words_about_newest(course_.db_path),
                                           .buttons = platform::BoxButtons::yes_no,
                                           .icon = platform::BoxIcon::question});
        if (answer != platform::BoxAnswer::yes)
            throw common::ProgramEnded{};
    }
    create_course();
}

void CourseOpener::close_course()
{
    services_.timer.stop();
    services_.history.course_closing();
    course_.close();
    services_.open_courses.leave();
}

void CourseOpener::create_course()
{
    creating_ = true;
    store::create_course_db(course_.database(), course_.db_path);
    creating_ = false;
    course_.close();
}

void CourseOpener::open_course()
{
    create_without_asking_ = false;
    services_.trace.write_trace("apertura_db - AD1 ");
    course_.apri_db();
    services_.trace.write_trace("apertura_db - return from apri_db ");
    trace_unstored("order of the texts", course_.database().unstored());
    course_.params.font.clear();
    params_.read_params();
    services_.trace.write_trace("apertura_db - return from read_params ");
    trace_unstored("parameters", params_.unstored());
    course_.set_side_fields();
    course_.record_count = course_.count_records();
    // For the first course the work time counts from the start of the program.
    course_.start_counting(first_course_ ? start_time_ : services_.clock.now());
    services_.settings.save_setting(last_course_key, course_.db_path);
    const bool also_open_elsewhere = services_.open_courses.enter(course_.db_path);
    main_window_.load();
    if (also_open_elsewhere)
        services_.status.ShowStatus(open_elsewhere, seconds_of_warning);
    course_.all_passed_announced = false;
    first_course_ = false;
}

void CourseOpener::trace_unstored(const std::string& what, const std::string& reason)
{
    if (!reason.empty())
        services_.trace.write_trace("apertura_db - " + what + " not stored - " + reason);
}

void CourseOpener::report_failure(const std::string& reason)
{
    main_window_.unload();
    close_course();
    const std::string failure =
        "The course " + course_.db_path + (creating_ ? " cannot be created." : " cannot be opened.");
    creating_ = false;
    services_.trace.write_trace("apertura_db - " + failure + " - " + reason);
    services_.desktop.message_box(
        {.text = failure + "\r\n\r\n" + reason + services_.copies.words_about_newest(course_.db_path),
         .icon = platform::BoxIcon::exclamation});
    course_.db_path.clear();
    course_.course_name.clear();
}

void CourseOpener::m_open()
{
    if (!course_.db_path.empty()) {
        params_.write_params();
        params_.save_work_time(services_.clock.now());
        close_course();
    }
    course_.db_path.clear();
    course_.course_name.clear();
    main_window_.unload();
    choose_file_on_open_ = true;
    if (!apertura_db())
        throw common::ProgramEnded{};
}

void CourseOpener::m_new()
{
    create_without_asking_ = true;
    try {
        m_open();
    } catch (const common::Error&) {
        // The present course could not be stored, so the command ends here. Later commands must not create files
        // unasked.
        create_without_asking_ = false;
        throw;
    }
}

void CourseOpener::finish_check()
{
    try {
        course_.database().finish_check();
        services_.timer.stop();
        services_.copies.course_opened();
        services_.history.course_opened();
        return;
    } catch (const platform::DatabaseError& error) {
        // A write before the next attempt makes the check, too.
        if (error.kind() == platform::DatabaseErrorKind::locked) {
            services_.timer.start(next_attempt);
            return;
        }
        course_.params = earlier_params_;
        report_failure(error.what());
    }
    choose_file_on_open_ = true;
    if (!apertura_db())
        throw common::ProgramEnded{};
}

} // namespace cuedrill::drill
