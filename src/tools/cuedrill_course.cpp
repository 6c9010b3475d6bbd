#include "bank/edit_flags.h"
#include "bank/record_bank.h"
#include "bank/stored_record_view.h"
#include "common/errors.h"
#include "exchange/question_import.h"
#include "platform/icu/icu_text_compare.h"
#include "platform/sqlite/new_file.h"
#include "platform/sqlite/sqlite_database.h"
#include "platform/system/system_clock.h"
#include "platform/system/system_files.h"
#include "scheduler/ports.h"
#include "store/course.h"
#include "store/schema.h"

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <exception>
#include <fcntl.h>
#include <filesystem>
#include <iostream>
#include <random>
#include <string>
#include <unistd.h>

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

/// A course that is being made. It has a name of its own, under which nobody looks for a course; whoever creates the
/// next course in the folder removes it when its maker was killed, which a lock on its first byte tells.
class CourseInMaking {
public:
    explicit CourseInMaking(const std::string& course_path)
        : m_path((std::filesystem::path(course_path).parent_path() / ".cuedrill-new-").string() +
                 std::to_string(std::random_device()()))
    {
    }
    CourseInMaking(const CourseInMaking&) = delete;
    CourseInMaking& operator=(const CourseInMaking&) = delete;
    // The lock goes last: closing any handle of a file ends the locks that the engine has on it.
    ~CourseInMaking()
    {
        ::unlink((m_path + "-journal").c_str());
        ::unlink(m_path.c_str());
        if (m_handle >= 0)
            ::close(m_handle);
    }

    [[nodiscard]] const std::string& path() const { return m_path; }

    /// Locks the file, which must have been created.
    void hold()
    {
        m_handle = ::open(m_path.c_str(), O_RDWR | O_CLOEXEC | O_NOFOLLOW);
        struct flock range {};
        range.l_type = F_WRLCK;
        range.l_whence = SEEK_SET;
        range.l_len = 1;
        // Without locks on the file system, nobody can take the file for a leftover.
        if (m_handle < 0 || (::fcntl(m_handle, F_OFD_SETLK, &range) != 0 && (errno == EAGAIN || errno == EACCES)))
            throw common::Error("The course could not be created. Try again.");
    }

private:
    std::string m_path;
    int m_handle = -1;
};

int make_course(const std::string& course_name, const std::string& text_path)
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
    const std::string course_path = files.absolute(course_name);
    if (files.exists(course_path))
        throw common::Error("There is a file " + course_path + " already.");
    CourseInMaking making(course_path);
    store::Course course(database);
    course.db_path = making.path();
    store::create_course_db(database, making.path());
    course.close();
    making.hold();
    course.apri_db();
    course.set_side_fields();
    bank::RecordBank record_bank(course, flags, desktop);
    exchange::QuestionImport(course, record_bank, flags, view, status, {files, clock, desktop, text_compare})
        .import_file(text_path);
    const bool made = course.record_count > 0;
    course.close();
    // A course of nothing would only stand in the way of the next try.
    if (made || !desktop.failed)
        platform::sqlite::give_name(making.path(), course_path);
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
    // Beyond a limit of the file size a write fails, and a box says so; the signal would end the program.
    std::signal(SIGXFSZ, SIG_IGN);
    try {
        return make_course(argv[1], argv[2]);
    } catch (const std::exception& error) {
        std::cerr << "cuedrill-course: " << cuedrill::common::words_of(error) << '\n';
        return EXIT_FAILURE;
    }
}
