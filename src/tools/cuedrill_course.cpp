#include "common/errors.h"
#include "exchange/import_words.h"
#include "exchange/importer.h"
#include "platform/icu/icu_text_compare.h"
#include "platform/sqlite/file_checks.h"
#include "platform/sqlite/new_file.h"
#include "platform/sqlite/sqlite_database.h"
#include "platform/system/system_clock.h"
#include "platform/system/system_files.h"
#include "store/course.h"
#include "store/schema.h"

#include <csignal>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <iostream>
#include <new>
#include <string>

// Makes a course from a question text file, without a window.
namespace {

using namespace cuedrill;

void print_report(std::ostream& out, const exchange::ImportReport& report)
{
    const std::string summary = report.summary();
    if (!summary.empty())
        out << summary << '\n' << report.lines();
}

/// @param reason the text of the error that stopped the import.
[[noreturn]] void give_up(const exchange::Importer& importer, const std::string& reason)
{
    std::cerr << exchange::stop_words(reason, importer.progress()) << '\n';
    print_report(std::cerr, importer.report());
    throw common::Error("No course was made, because the import did not come to its end.");
}

/// Prints what the window's import command shows in boxes.
void run(exchange::Importer& importer)
{
    exchange::Progress progress;
    try {
        while (!progress.finished) {
            progress = importer.step(exchange::Importer::usual_step);
            if (progress.empty)
                std::cout << exchange::empty_words(*progress.empty) << '\n';
        }
    } catch (const common::Error& error) {
        give_up(importer, error.what());
    } catch (const std::bad_alloc& error) {
        give_up(importer, common::words_of(error));
    }
    std::cout << exchange::end_words(progress) << '\n' << exchange::end_details(progress);
    print_report(std::cout, importer.report());
}

/// The path for the new course. No file next to it may look to the engine like a journal of it.
std::string free_path(const std::string& course_path)
{
    try {
        return platform::sqlite::new_course_file(course_path);
    } catch (const platform::DatabaseError& error) {
        throw common::Error("The course " + course_path + " could not be made. " + error.what());
    }
}

/// Imports into the course at `path`, which has no records.
void import_into(const std::string& path, const std::string& text_path)
{
    platform::icu::IcuTextCompare text_compare;
    platform::sqlite::SqliteDatabase database(text_compare);
    platform::system::SystemClock clock;
    platform::system::SystemFiles files;
    store::Course course(database);
    course.db_path = path;
    course.apri_db();
    course.set_side_fields();
    exchange::Importer importer(course, files, clock, text_compare, text_path);
    run(importer);
    if (course.record_count == 0)
        throw common::Error("No course was made: " + text_path +
                            " has no record that can be stored. A record is a question behind \"@Q@\" and its answer "
                            "behind \"@A@\".");
}

/// The course is built under a temporary name, where nobody looks for it until it is complete.
void make_course(const std::string& course_name, const std::string& text_path)
{
    const platform::system::SystemFiles files;
    if (!files.is_regular_file(text_path))
        throw common::Error("There is no file " + text_path + ".");
    const std::string course_path = files.absolute(course_name);
    if (files.exists(course_path))
        throw common::Error("There is a file " + course_path + " already.");
    using platform::sqlite::TemporaryFile;
    TemporaryFile making(std::filesystem::path(free_path(course_path)).parent_path().string(),
                         TemporaryFile::Start::only_a_name);
    {
        platform::icu::IcuTextCompare text_compare;
        platform::sqlite::SqliteDatabase database(text_compare);
        store::create_course_db(database, making.path());
    }
    making.hold();
    import_into(making.path(), text_path);
    // The import may take a while; checked again, because a file of that name may have appeared.
    platform::sqlite::give_name(making.path(), free_path(course_path));
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 3) {
        std::cerr << "usage: cuedrill-course COURSE QUESTIONS\n"
                     "Makes the new course file COURSE of the question text file QUESTIONS.\n";
        return EXIT_FAILURE;
    }
    // Ignored, so that a write beyond the file size limit fails and is reported; by default the signal ends the
    // program.
    std::signal(SIGXFSZ, SIG_IGN);
    try {
        make_course(argv[1], argv[2]);
        return EXIT_SUCCESS;
    } catch (const std::exception& error) {
        std::cerr << "cuedrill-course: " << cuedrill::common::words_of(error) << '\n';
        return EXIT_FAILURE;
    }
}
