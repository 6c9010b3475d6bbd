#pragma once

#include "adapters/deck_adapters.h"
#include "common/errors.h"
#include "fakes/course_builder.h"
#include "fakes/fake_clock.h"
#include "fakes/fake_desktop.h"
#include "fakes/fake_dialog_host.h"
#include "fakes/fake_f_msgbox.h"
#include "fakes/fake_folders.h"
#include "fakes/fake_form1.h"
#include "fakes/fake_open_courses.h"
#include "fakes/fake_random.h"
#include "fakes/fake_settings.h"
#include "fakes/fake_shell.h"
#include "fakes/recording_database.h"
#include "fakes/temp_folder.h"
#include "platform/system/system_files.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <string_view>

namespace cuedrill::app {
class StartRoutine;
} // namespace cuedrill::app
namespace cuedrill::keep {
class Copies;
} // namespace cuedrill::keep
namespace cuedrill::scheduler {
class DeadTimes;
} // namespace cuedrill::scheduler
namespace cuedrill::store {
class Course;
class CourseParamsStore;
} // namespace cuedrill::store

namespace cuedrill::drill {

struct EditFlags;
class RecordEditor;
class EndOfProgram;

using namespace std::chrono_literals;

class AnswerAids;
class CourseOpener;
class CourseTitle;
struct DrillState;
class ErrorReport;
class LastList;
class MainWindow;
class QuestionDialog;
class QuestionImport;
class Display;
class RecordLists;
class StatusLine;
class TypedAnswer;
class WindowLayout;

/// The parts of the logic that tests use. A test includes the header of each part that it uses.
struct LogicParts {
    store::Course& course;
    store::CourseParamsStore& params;
    EditFlags& edit_flags;
    DrillState& state;
    StatusLine& status;
    WindowLayout& layout;
    Display& display;
    scheduler::DeadTimes& dead_times;
    EndOfProgram& end_of_program;
    RecordEditor& editor;
    LastList& last_list;
    RecordLists& lists;
    QuestionDialog& dialog;
    TypedAnswer& typed_answer;
    AnswerAids& aids;
    CourseTitle& title;
    MainWindow& main_window;
    CourseOpener& opener;
    keep::Copies& copies;
    QuestionImport& question_import;
    ErrorReport& error_report;
    app::StartRoutine& start;
};

/// The whole logic of the program, wired as in the program, with a real course and a fake window. Tests operate the
/// controls like a user; exceptions from handlers are treated as the program's event guard treats them.
class DrillFixture : public testing::Test {
protected:
    DrillFixture();
    ~DrillFixture() override;

    /// The course has three questions, asked in this order: "France?" of level 2, tested a day ago; "Italy?" of level
    /// 0, tested an hour ago; "Spain?", never tested. Two of them are not passed.
    void describe_three_questions();

    /// Writes the course that `builder` describes, and starts the program on it.
    void start();
    void start_with_three_questions();
    void make_program();

    /// Runs a user action. A template compiles faster here than a std::function per action.
    template <class Action>
    void user(Action action)
    {
        try {
            action();
        } catch (const common::ProgramEnded&) {
            ended = true;
        } catch (const std::exception& error) {
            report(error);
        }
    }
    /// Reports an error to the user, as the program's event guard does.
    void report(const std::exception& error);

    void yes();
    void no();
    void ignore();
    void choose(std::string_view menu_entry);
    /// Returns whether the window consumed the key.
    bool press(const platform::KeyPress& key);
    bool press(platform::Key key, bool auto_repeat = false);
    bool press(const std::string& character, bool auto_repeat = false);
    /// Presses a key in the answer box.
    void press_in_answer(const platform::KeyPress& key);
    void press_in_answer(const char* character);
    void enter_in_answer();
    /// Types into the answer box, after the text in it.
    void type_answer(std::string_view text);
    /// Begins a new record and types its texts.
    void write_new(std::string_view question_text, std::string_view answer_text);
    /// Begins to change the record on display and replaces its texts.
    void change_to(std::string_view question_text, std::string_view answer_text);
    /// Presses Save for the record that is being written. It is stored, but the commit reports an error and the course
    /// cannot be read again, so a box says that nobody knows.
    void save_with_unknown_outcome();
    /// Clicks the toolbar button with that number.
    void toolbar(int number);

    [[nodiscard]] fakes::FakeMenuEntry& entry(std::string_view name) const;
    [[nodiscard]] std::string prompt() const;
    [[nodiscard]] std::string question() const;
    [[nodiscard]] std::string answer() const;
    [[nodiscard]] std::string status() const;

    /// The record as another program would read it from the file now.
    [[nodiscard]] fakes::QaRow stored(std::int64_t cnt) const;

    /// The index of an entry in the journal of the fake window, and how often it is there.
    [[nodiscard]] std::ptrdiff_t place_of(const std::string& noted) const;
    [[nodiscard]] std::ptrdiff_t times_noted(const std::string& noted) const;

    static constexpr const char* nothing_mature = "No question is mature for being asked.";

    fakes::TempFolder folder;
    fakes::FakeClock clock;
    fakes::FakeRandom random;
    fakes::FakeDesktop desktop;
    fakes::FakeForm1 form1;
    fakes::FakeDialogHost form2;
    fakes::FakeFMsgbox f_msgbox;
    fakes::FakeShell shell;
    fakes::FakeSettings settings_store;
    platform::system::SystemFiles files;
    fakes::FakeOpenCourses open_courses;
    fakes::FakeFolders folders;
    adapters::DeckAdapters deck_adapters;
    fakes::RealEngine engine;
    fakes::RecordingDatabase database{engine.database};
    fakes::CourseBuilder builder;

    std::string data_folder = folder.file("data"); ///< it does not exist at first
    std::string sample_questions;                  ///< "" for a program without a sample
    std::string web_page = "https://example.org/cuedrill";
    std::string documents_folder = folder.file("Documents"); ///< it does not exist at first
    std::string path;                                        ///< of the course
    bool started = false;
    bool ended = false; ///< the program has ended

    const LogicParts* logic = nullptr; ///< null until the program is created

private:
    struct Program;
    std::unique_ptr<Program> program_;
};

} // namespace cuedrill::drill
