#pragma once

#include "app/base/trace_log.h"
#include "bank/edit_flags.h"
#include "bank/editor_view.h"
#include "bank/list_screen.h"
#include "bank/record_editor.h"
#include "bank/record_lists.h"
#include "bank/stored_record_view.h"
#include "drill/context_help.h"
#include "drill/drill_state.h"
#include "drill/key_pause.h"
#include "drill/question_dialog.h"
#include "drill/question_view.h"
#include "drill/statistics_view.h"
#include "drill/status_line.h"
#include "drill/toolbar.h"
#include "drill/typed_answer.h"
#include "drill/window_keys.h"
#include "drill/window_layout.h"
#include "platform/clock.h"
#include "platform/desktop.h"
#include "platform/form1.h"
#include "scheduler/end_of_program.h"
#include "scheduler/scoring.h"
#include "scheduler/statistics.h"
#include "store/course.h"
#include "store/course_params.h"
#include "store/course_title.h"
#include "store/main_window_host.h"

namespace cuedrill::drill {

/// The main window: how it comes and goes with a course, and what its controls and timers call.
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
        store::CourseTitle& title;
        bank::EditFlags& edit_flags;
        bank::RecordEditor& editor;
        bank::RecordLists& lists;
        scheduler::Statistics& statistics;
        scheduler::Scoring& scoring;
        scheduler::EndOfProgram& end_of_program;
        DrillState& state;
        StatusLine& status;
        StatisticsView& statistics_view;
        QuestionView& question_view;
        WindowLayout& layout;
        QuestionDialog& dialog;
        TypedAnswer& typed_answer;
        Toolbar& toolbar;
        ContextHelp& help;
        WindowKeys& keys;
        KeyPause& key_pause;
    };

    explicit MainWindow(const Parts& parts) : m_(parts) {}

    /// Attaches the controls, keys and timers, and gives the fixed texts.
    void attach();

    /// Shows the window on the course that has just been opened.
    /// @throws platform::DatabaseError, common::OverflowError
    void load();

    /// Puts the window away; the next `load` starts afresh.
    void unload();

    // What the editing of records asks of the two text boxes; see bank::EditorView.
    [[nodiscard]] bank::RecordTexts typed_texts() const;
    [[nodiscard]] bank::RecordTexts loaded_texts() const;
    void put_question(const std::string& text);
    void put_answer(const std::string& text);
    void empty_boxes();
    void show_answer_for_editing() { m_.question_view.show_answer_for_editing(); }
    void open_editor();
    void go_to_question() { m_.form1.Text_q.set_focus(); }
    void go_to_answer() { m_.form1.Text_a.set_focus(); }
    void redisplay();
    void tell_unsaved();
    void pause_keys() { m_.key_pause.begin(KeyPause::Keys::all); }
    void show_saved_record();

    /// Shows the current record and the counts after records were stored.
    void show_stored_record();

    /// Brings the list of all questions up to date, where it is shown.
    void show_all_stored() { m_.lists.rebuild_shown_list(); }

    // What lists of records ask of the window; see bank::ListScreen.
    void set_for_list(std::vector<std::string> lines);
    void replace_list(std::vector<std::string> lines) { m_.form1.listav.replace_lines(std::move(lines)); }
    [[nodiscard]] bool list_shown() const { return m_.state.list_shown(); }
    [[nodiscard]] std::string loaded_question() const { return m_.state.loaded_question; }
    void show_chosen_record() { m_.question_view.show_question(); }

    /// Work of the timers: the work time is shown and stored each minute, so that a crash costs no more than one.
    void timer_1_min_tick();
    void timer_1_sec_tick();

private:
    void attach_dialog();
    void attach_boxes();
    void forget_display();
    void refresh_counts();
    void close();

    Parts m_;
};

/// What the floors below ask of the main window. It stands for a window that is made later than they are.
class MainWindowPorts : public store::MainWindowHost,
                        public bank::EditorView,
                        public bank::StoredRecordView,
                        public bank::ListScreen {
public:
    explicit MainWindowPorts(platform::Window& window) : m_window(window) {}

    /// From now on the calls go to `main_window`. Required before the first course is opened.
    void connect(MainWindow& main_window) { m_main_window = &main_window; }

    void load_main_window() override { m_main_window->load(); }
    void unload_main_window() override { m_main_window->unload(); }
    void set_main_window_caption(std::string_view caption) override { m_window.set_caption(caption); }

    [[nodiscard]] bank::RecordTexts typed_texts() const override { return m_main_window->typed_texts(); }
    [[nodiscard]] bank::RecordTexts loaded_texts() const override { return m_main_window->loaded_texts(); }
    void put_question(const std::string& text) override { m_main_window->put_question(text); }
    void put_answer(const std::string& text) override { m_main_window->put_answer(text); }
    void empty_boxes() override { m_main_window->empty_boxes(); }
    void show_answer_for_editing() override { m_main_window->show_answer_for_editing(); }
    void open_editor() override { m_main_window->open_editor(); }
    void go_to_question() override { m_main_window->go_to_question(); }
    void go_to_answer() override { m_main_window->go_to_answer(); }
    void redisplay() override { m_main_window->redisplay(); }
    void tell_unsaved() override { m_main_window->tell_unsaved(); }
    void pause_keys() override { m_main_window->pause_keys(); }
    void show_saved_record() override { m_main_window->show_saved_record(); }
    void show_stored_record() override { m_main_window->show_stored_record(); }
    void show_all_stored() override { m_main_window->show_all_stored(); }

    void set_for_list(std::vector<std::string> lines) override { m_main_window->set_for_list(std::move(lines)); }
    void replace_list(std::vector<std::string> lines) override { m_main_window->replace_list(std::move(lines)); }
    [[nodiscard]] bool list_shown() const override { return m_main_window->list_shown(); }
    [[nodiscard]] std::string loaded_question() const override { return m_main_window->loaded_question(); }
    void show_chosen_record() override { m_main_window->show_chosen_record(); }

private:
    platform::Window& m_window;
    MainWindow* m_main_window = nullptr;
};

} // namespace cuedrill::drill
