#pragma once

#include "bank/list_screen.h"
#include "bank/record_editor.h"
#include "bank/record_lists.h"
#include "exchange/question_import.h"
#include "platform/icu/icu_text_compare.h"
#include "platform/sqlite/sqlite_database.h"
#include "platform/system/system_clock.h"
#include "platform/system/system_files.h"
#include "platform/system/system_random.h"
#include "scheduler/dead_time.h"
#include "scheduler/end_of_program.h"
#include "scheduler/scoring.h"
#include "scheduler/selection.h"
#include "scheduler/statistics.h"

#include <optional>
#include <string>

namespace cuedrill::bench {

/// The window's side of the program, with nothing behind it.
class NoWindow : public platform::Desktop,
                 public scheduler::QuestionDisplay,
                 public scheduler::StatusLine,
                 public scheduler::StatisticsPanels,
                 public bank::StoredRecordView,
                 public bank::EditorView {
public:
    /// What the user types into a box that asks for a text; nothing is a cancel.
    std::optional<std::string> typed;

    platform::BoxAnswer message_box(const platform::MessageBox&) override { return platform::BoxAnswer::ok; }
    std::optional<std::string> input_box(const platform::InputBox&) override { return typed; }
    platform::ChosenFile open_file_dialog(const platform::FileDialog&) override { return {}; }
    platform::ChosenFile save_file_dialog(const platform::FileDialog&) override { return {}; }
    void pump() override {}
    void beep() override {}
    void set_pointer(platform::Pointer) override {}
    void show_question() override {}
    void refresh_figures() override {}
    void clear_answer_state() override {}
    void withdraw_question() override {}
    void ShowStatus(std::string_view, int) override {}
    void show_total(std::int64_t) override {}
    void show_level(int, std::int64_t, std::int64_t, bool) override {}
    void show_unpassed(std::int64_t) override {}
    void mark_level(int) override {}
    void show_score(common::Int16) override {}
    void show_work_time(std::string_view, std::string_view, std::string_view) override {}
    void show_options() override {}
    void show_target_level() override {}
    void show_stored_record() override {}
    void show_all_stored() override {}
    [[nodiscard]] bank::RecordTexts typed_texts() const override { return {}; }
    [[nodiscard]] bank::RecordTexts loaded_texts() const override { return {}; }
    void put_question(const std::string&) override {}
    void put_answer(const std::string&) override {}
    void empty_boxes() override {}
    void pause_keys() override {}
    void show_answer_for_editing() override {}
    void open_editor() override {}
    void go_to_question() override {}
    void go_to_answer() override {}
    void redisplay() override {}
    void tell_unsaved() override {}
    void show_saved_record() override {}
};

class NoFiles : public platform::system::SystemFiles {
public:
    [[nodiscard]] bool exists(const std::string&) const override { return false; }
};

/// The program without its window.
struct Engine {
    explicit Engine(const std::string& path)
    {
        course.db_path = path;
        course.course_name = "bench";
        dead_times.init_dead_time_array();
    }

    void open()
    {
        course.apri_db();
        params.read_params();
        course.set_side_fields();
        course.record_count = course.count_records();
    }

    /// The lists of records, shown on `screen`.
    bank::RecordLists lists(bank::ListScreen& screen)
    {
        return {course, bank, screen, {window, text_compare, window, editor, end_of_program, clock}};
    }

    NoWindow window;
    platform::system::SystemClock clock;
    platform::system::SystemFiles files;
    platform::system::SystemRandom random;
    platform::icu::IcuTextCompare text_compare;
    platform::sqlite::SqliteDatabase database{text_compare};
    NoFiles no_trace;
    app::TraceLog trace{no_trace, clock, window, ""};
    store::Course course{database};
    store::CourseParamsStore params{course, clock};
    scheduler::DeadTimes dead_times;
    scheduler::EndOfProgram end_of_program{course, params, clock, trace};
    scheduler::Statistics statistics{course, params, window, clock, window, clock.now()};
    scheduler::Selection selection{course, params, dead_times, window, window, {clock, random, window, window}};
    scheduler::Scoring scoring{course, params, dead_times,    statistics, {window, window, window},
                               clock,  window, end_of_program};
    bank::EditFlags flags;
    bank::RecordBank bank{course, flags, window};
    bank::RecordEditor editor{
        course, flags, bank, window, {window, text_compare, window, statistics, scoring, selection}};
    exchange::QuestionImport import{course, bank, flags, window, window, {files, clock, window, text_compare}};
};

} // namespace cuedrill::bench
