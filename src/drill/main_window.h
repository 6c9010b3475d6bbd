#pragma once

#include "app/base/trace_log.h"
#include "drill/course_options.h"
#include "drill/course_title.h"
#include "drill/display.h"
#include "drill/drill_state.h"
#include "drill/edit_flags.h"
#include "drill/end_of_program.h"
#include "drill/last_list.h"
#include "drill/question_dialog.h"
#include "drill/record_editor.h"
#include "drill/record_lists.h"
#include "drill/screen.h"
#include "drill/statistics.h"
#include "drill/status_line.h"
#include "drill/typed_answer.h"
#include "drill/window_layout.h"
#include "platform/clock.h"
#include "platform/desktop.h"
#include "platform/form1.h"
#include "store/course.h"
#include "store/course_params.h"

namespace cuedrill::drill {

/// The main window: opens and closes with a course, and connects its controls and timers.
class MainWindow {
public:
    /// Everything that the window shows or calls.
    struct Parts {
        platform::Form1& form1;
        platform::Desktop& desktop;
        platform::Clock& clock;
        app::TraceLog& trace;
        store::Course& course;
        store::CourseParamsStore& params;
        CourseTitle& title;
        EditFlags& edit_flags;
        RecordEditor& editor;
        LastList& last_list;
        RecordLists& lists;
        Statistics& statistics;
        EndOfProgram& end_of_program;
        DrillState& state;
        StatusLine& status;
        CourseOptions& options;
        MainScreen& screen;
        Display& display;
        WindowLayout& layout;
        QuestionDialog& dialog;
        TypedAnswer& typed_answer;
    };

    explicit MainWindow(const Parts& parts) : parts_(parts) {}

    /// Attaches the controls, keys and timers, and sets the fixed texts.
    void attach();

    /// Shows the window for the course that has just been opened.
    /// @throws platform::DatabaseError, common::OverflowError
    void load();

    /// Hides the window and resets its state.
    void unload();

    /// Updates the counts after records were stored, and shows the last of them, `cnt`.
    /// @throws platform::DatabaseError; no question is on display then.
    void show_stored_record(common::Int16 cnt);

    /// Updates the list of all questions, if it is visible.
    void show_all_stored() { parts_.last_list.rebuild_shown_list(); }

    /// Timer handlers. The work time is shown and stored every minute, so that a crash loses at most one minute of it.
    void timer_1_min_tick();
    void timer_1_sec_tick();

private:
    void attach_dialog();
    void attach_boxes();
    void forget_display();
    void close();
    void tell_about_work_time(const std::string& text);

    Parts parts_;
};

} // namespace cuedrill::drill
