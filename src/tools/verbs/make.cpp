#include "common/errors.h"
#include "exchange/import_words.h"
#include "exchange/importer.h"
#include "platform/icu/icu_text_compare.h"
#include "platform/sqlite/sqlite_database.h"
#include "platform/system/system_clock.h"
#include "platform/system/system_files.h"
#include "store/course.h"
#include "tools/new_course.h"
#include "tools/verb.h"

#include <new>
#include <ostream>

// Makes a course of a question text file, without a window.
namespace cuedrill::tools {
namespace {

void print_report(std::ostream& out, const exchange::ImportReport& report)
{
    const std::string summary = report.summary();
    if (!summary.empty())
        out << summary << '\n' << report.lines();
}

/// @param reason the text of the error that stopped the import.
[[noreturn]] void give_up(const exchange::Importer& importer, const std::string& reason, Surroundings& around)
{
    around.err << exchange::stop_words(reason, importer.progress()) << '\n';
    print_report(around.err, importer.report());
    throw common::Error("No course was made, because the import did not come to its end.");
}

/// Prints what the window's import command shows in boxes.
void run(exchange::Importer& importer, Surroundings& around)
{
    exchange::Progress progress;
    try {
        while (!progress.finished) {
            progress = importer.step(exchange::Importer::usual_step);
            if (progress.empty)
                around.out << exchange::empty_words(*progress.empty) << '\n';
        }
    } catch (const common::Error& error) {
        give_up(importer, error.what(), around);
    } catch (const std::bad_alloc& error) {
        give_up(importer, common::words_of(error), around);
    }
    around.out << exchange::end_words(progress) << '\n' << exchange::end_details(importer);
    print_report(around.out, importer.report());
}

/// Imports into the course at `path`, which has no records.
void import_into(const std::string& path, const std::string& text_path, Surroundings& around)
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
    run(importer, around);
    if (course.record_count == 0)
        throw common::Error("No course was made: " + text_path +
                            " has no record that can be stored. A record is a question behind \"@Q@\" and its answer "
                            "behind \"@A@\".");
}

} // namespace

int make_course(const std::string& course_name, const std::string& text_path, Surroundings& around)
{
    const platform::system::SystemFiles files;
    if (!files.is_regular_file(text_path))
        throw common::Error("There is no file " + text_path + ".");
    const std::string course_path = files.absolute(course_name);
    if (files.exists(course_path))
        throw common::Error("There is a file " + course_path + " already.");
    NewCourse course(course_path);
    import_into(course.making(), text_path, around);
    course.finish();
    return done;
}

} // namespace cuedrill::tools
