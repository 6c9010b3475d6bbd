#pragma once

#include "drill/course_options.h"
#include "drill/course_title.h"
#include "drill/display.h"
#include "drill/end_of_program.h"
#include "drill/last_list.h"
#include "drill/question_dialog.h"
#include "drill/record_editor.h"
#include "drill/statistics.h"
#include "drill/status_line.h"
#include "drill/timers.h"
#include "platform/desktop.h"
#include "platform/form1.h"

namespace cuedrill::drill {

/// Shows and hides the main window with a course.
class MainWindow {
public:
    MainWindow(platform::Form1& form1, platform::Desktop& desktop, CourseTitle& title, CourseOptions& options,
               Statistics& statistics, Display& display, LastList& last_list, StatusLine& status,
               QuestionDialog& dialog, RecordEditor& editor, Timers& timers, EndOfProgram& end_of_program)
        : form1_(form1), desktop_(desktop), title_(title), options_(options), statistics_(statistics),
          display_(display), last_list_(last_list), status_(status), dialog_(dialog), editor_(editor), timers_(timers),
          end_of_program_(end_of_program)
    {
    }

    /// Attaches the hooks of the window itself: the user closes it, or the session ends.
    void attach();

    /// Shows the window for the course that has just been opened.
    /// @throws platform::DatabaseError, common::OverflowError
    void load();

    /// Hides the window and resets its state.
    void unload();

private:
    void forget_display();
    void close();

    platform::Form1& form1_;
    platform::Desktop& desktop_;
    CourseTitle& title_;
    CourseOptions& options_;
    Statistics& statistics_;
    Display& display_;
    LastList& last_list_;
    StatusLine& status_;
    QuestionDialog& dialog_;
    RecordEditor& editor_;
    Timers& timers_;
    EndOfProgram& end_of_program_;
};

} // namespace cuedrill::drill
