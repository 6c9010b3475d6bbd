#include "common/errors.h"
#include "tools/importing.h"
#include "tools/new_course.h"
#include "tools/opened_course.h"
#include "tools/verb.h"

#include <ostream>

// Makes a course of a file with records, without a window.
namespace cuedrill::tools {
namespace {

/// Imports into the course at `path`, which has no records.
/// @param course_path the path that it will have.
void import_into(const std::string& path, const std::string& course_path, const std::string& text_path,
                 Surroundings& around)
{
    OpenedCourse opened(path, OpenedCourse::For::writing, around, course_path);
    const RecordSources sources(opened.files(), opened.text_compare());
    exchange::Importer importer(opened.course(), opened.clock(), opened.text_compare(),
                                [&] { return sources.open({.path = text_path}); });
    try {
        run_import(importer, around);
    } catch (const common::Error& error) {
        around.err << error.what() << '\n';
        throw common::Error("No course was made, because the import did not come to its end.");
    }
    if (opened.course().record_count == 0)
        throw common::Error("No course was made: " + text_path + " has no record that can be stored." +
                            (decks::is_deck_name(text_path)
                                 ? ""
                                 : " A record is a question behind \"@Q@\" and its answer behind \"@A@\"."));
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
    import_into(course.making(), course_path, text_path, around);
    course.finish();
    return done;
}

} // namespace cuedrill::tools
