#include "bank/edit_flags.h"
#include "bank/record_bank.h"
#include "bank/stored_record_view.h"
#include "common/errors.h"
#include "exchange/question_import.h"
#include "platform/icu/icu_text_compare.h"
#include "platform/sqlite/sqlite_database.h"
#include "platform/system/system_clock.h"
#include "platform/system/system_files.h"
#include "scheduler/ports.h"
#include "store/course.h"
#include "store/schema.h"

#include <cstdlib>
#include <exception>
#include <filesystem>
#include <iostream>
#include <string>

// Makes a course of a question text file without any window.
namespace {

using namespace cuedrill;

/// A desktop without windows: boxes are printed, and nothing is asked.
class ConsoleDesktop : public platform::Desktop {
public:
    bool failed = false; ///< a box told that the work has stopped

    platform::BoxAnswer message_box(const platform::MessageBox& box) override
    {
        // A box with details lists what was left out of work that was done.
        failed = failed || (box.icon == platform::BoxIcon::exclamation && box.details.empty());
        (failed ? std::cerr : std::cout) << box.text << '\n' << box.details;
        return box.buttons == platform::BoxButtons::ok ? platform::BoxAnswer::ok : platform::BoxAnswer::no;
    }
    std::optional<std::string> input_box(const platform::InputBox&) override { return std::nullopt; }
    platform::ChosenFile open_file_dialog(const platform::FileDialog&) override { return {}; }
    platform::ChosenFile save_file_dialog(const platform::FileDialog&) override { return {}; }
    void pump() override {}
    void beep() override {}
    void set_pointer(platform::Pointer) override {}
};

class NoStatusLine : public scheduler::StatusLine {
public:
    void ShowStatus(std::string_view, int) override {}
};

class NoRecordView : public bank::StoredRecordView {
public:
    void show_stored_record() override {}
    void show_all_stored() override {}
};

int make_course(const std::string& course_path, const std::string& text_path)
{
    platform::icu::IcuTextCompare text_compare;
    platform::sqlite::SqliteDatabase database(text_compare);
    platform::system::SystemClock clock;
    platform::system::SystemFiles files;
    ConsoleDesktop desktop;
    NoStatusLine status;
    NoRecordView view;
    bank::EditFlags flags;

    if (!files.is_regular_file(text_path))
        throw common::Error("There is no file " + text_path + ".");
    store::Course course(database);
    course.db_path = course_path;
    store::create_course_db(database, course_path);
    course.close();
    course.apri_db();
    course.set_side_fields();
    bank::RecordBank record_bank(course, flags, desktop);
    exchange::QuestionImport(course, record_bank, flags, view, status, {files, clock, desktop, text_compare})
        .import_file(text_path);
    const bool made = course.record_count > 0;
    course.close();
    // A course of nothing would only stand in the way of the next try.
    if (desktop.failed && !made)
        std::filesystem::remove(course_path);
    return desktop.failed ? EXIT_FAILURE : EXIT_SUCCESS;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 3) {
        std::cerr << "usage: cuedrill-course COURSE QUESTIONS\n"
                     "Makes the new course file COURSE of the question text file QUESTIONS.\n";
        return EXIT_FAILURE;
    }
    try {
        return make_course(argv[1], argv[2]);
    } catch (const std::exception& error) {
        std::cerr << "cuedrill-course: " << error.what() << '\n';
        return EXIT_FAILURE;
    }
}
