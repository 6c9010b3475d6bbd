#pragma once

#include "app/base/settings.h"
#include "app/base/trace_log.h"
#include "drill/course_copies.h"
#include "drill/main_window.h"
#include "drill/review_history.h"
#include "drill/sample_course.h"
#include "drill/status_line.h"
#include "platform/clock.h"
#include "platform/controls.h"
#include "platform/desktop.h"
#include "platform/files.h"
#include "platform/open_courses.h"
#include "store/course.h"
#include "store/course_params.h"

#include <string>

namespace cuedrill::drill {

/// Chooses the course to work on, creates it if wanted, and opens it: when the program starts and whenever the user
/// asks for another course.
class CourseOpener {
public:
    struct Services {
        platform::Files& files;
        platform::OpenCourses& open_courses;
        platform::Clock& clock;
        platform::Window& window;
        platform::Timer& timer; ///< ticks while no action of the user is running and no box is open
        platform::Desktop& desktop;
        platform::DialogHost& form2; ///< owner of the file dialog
        StatusLine& status;
        app::Settings& settings;
        app::TraceLog& trace;
        CourseCopies& copies;
        ReviewHistory& history;
        SampleCourse& sample;
    };

    /// @param program_folder initial folder of the file dialog where neither the course used last time nor, for a user
    /// who has opened none, a course in the data folder says where to begin.
    /// @param start_time when the program started.
    CourseOpener(store::Course& course, store::CourseParamsStore& params, MainWindow& main_window,
                 const Services& services, std::string program_folder, common::DateTime start_time);

    void attach();

    /// Opens the course at `db_path`, or else the one used last time, or else one that the user chooses, and loads the
    /// main window. A user who has never opened a course finds a sample when asked. If a course cannot be opened, a box
    /// tells which one and why, and the user chooses another.
    /// @return true if a course is open; false if the user cancelled the file dialog.
    /// @throws common::ProgramEnded if the user does not want a missing course to be created.
    bool apertura_db();

    /// "&Open a course": closes the present course and lets the user choose another one. The program ends if the user
    /// cancels.
    /// @throws platform::DatabaseError if the present course cannot be stored; it stays open then.
    void m_open();

    /// "&Create a new course": like `m_open`, but creates a missing file without asking.
    void m_new();

    /// Does what opening the course has put off: reads the whole file to see whether it is sound. If it is not, a box
    /// says so, the course is closed, and the user chooses another one. The program ends if the user cancels. After it,
    /// copies of the course may be made, and its history says that it is open. Where another program writes to the
    /// course meanwhile, the check comes a minute later.
    void finish_check();

private:
    /// What the file dialog shows when it opens: a folder, and the name of a file in it; "" for none.
    struct FirstChoice {
        std::string folder;
        std::string file;
    };

    bool take_command_line_course();
    bool choose_course(bool ask_user);
    bool show_file_dialog(const std::string& last, bool last_exists);
    [[nodiscard]] FirstChoice first_choice(const std::string& last, bool last_exists) const;
    void prepare_chosen_course();
    void open_course();
    void create_course();
    void close_course();
    void trace_unstored(const std::string& what, const std::string& reason);
    void report_failure(const std::string& reason);

    store::Course& course_;
    store::CourseParamsStore& params_;
    MainWindow& main_window_;
    Services services_;
    std::string program_folder_;
    common::DateTime start_time_;

    store::CourseParams earlier_params_; ///< of the course before the one that was opened last
    bool choose_file_on_open_ = false;   ///< skip the course used last time
    bool create_without_asking_ = false; ///< create a missing file without asking
    bool first_course_ = true;           ///< no course has been opened since the program started
    bool creating_ = false;              ///< a course is being created
};

} // namespace cuedrill::drill
