#pragma once

#include "app/base/settings.h"
#include "app/base/trace_log.h"
#include "drill/main_window.h"
#include "platform/clock.h"
#include "platform/desktop.h"
#include "platform/files.h"
#include "store/course.h"
#include "store/course_params.h"

#include <string>

namespace cuedrill::drill {

/// Decides which course to work on, creates it when asked to, and opens it: at the start of the program and whenever
/// the user asks for another course.
class CourseOpener {
public:
    struct Services {
        platform::Files& files;
        platform::Clock& clock;
        platform::Desktop& desktop;
        platform::DialogHost& form2; ///< owns the file dialog
        app::Settings& settings;
        app::TraceLog& trace;
    };

    /// @param program_folder where the first file dialog opens.
    /// @param start_time when the program started.
    CourseOpener(store::Course& course, store::CourseParamsStore& params, MainWindow& main_window,
                 const Services& services, std::string program_folder, common::DateTime start_time);

    /// Opens the course at `db_path`, or the one of the last time, or the one that the user chooses, and loads the main
    /// window. A course that cannot be opened is named in a box with the reason, and the user chooses another one.
    /// @return true when a course is open; false when the user cancelled the file dialog.
    /// @throws common::ProgramEnded when the user does not want a missing course to be created.
    bool apertura_db();

    /// "&Open a course": closes the present course and lets the user choose another one; the program ends when they
    /// cancel.
    /// @throws platform::DatabaseError when the present course cannot be stored; it stays open then.
    void m_open();

    /// "&Create a new course": like `m_open`, and a missing file is created without asking.
    void m_new();

private:
    bool take_command_line_course();
    bool choose_course(bool ask_user);
    bool show_file_dialog(const std::string& last, bool last_exists);
    void prepare_chosen_course();
    void open_course();
    void create_course();
    void trace_unstored(const std::string& what, const std::string& reason);
    void report_failure(const std::string& reason);

    store::Course& course_;
    store::CourseParamsStore& params_;
    MainWindow& main_window_;
    Services services_;
    std::string program_folder_;
    common::DateTime start_time_;

    bool choose_file_on_open_ = false;   ///< skip the remembered course
    bool create_without_asking_ = false; ///< a missing file is created without a question
    bool first_course_ = true;           ///< none has been opened since the start
    bool creating_ = false;              ///< a course is being created just now
};

} // namespace cuedrill::drill
