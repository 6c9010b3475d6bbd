#include "tools/new_course.h"

#include "common/errors.h"
#include "platform/icu/icu_text_compare.h"
#include "platform/sqlite/file_checks.h"
#include "platform/sqlite/sqlite_database.h"
#include "store/schema.h"

#include <filesystem>
#include <utility>

namespace cuedrill::tools {
namespace {

/// The path for the new course. No file next to it may look to the engine like a journal of it.
std::string free_path(const std::string& course_path)
{
    try {
        return platform::sqlite::new_course_file(course_path);
    } catch (const platform::DatabaseError& error) {
        throw common::Error("The course " + course_path + " could not be made. " + error.what());
    }
}

} // namespace

NewCourse::NewCourse(std::string path)
    : path_(std::move(path)), file_(std::filesystem::path(free_path(path_)).parent_path().string(),
                                    platform::sqlite::TemporaryFile::Start::only_a_name)
{
    {
        const platform::icu::IcuTextCompare text_compare;
        platform::sqlite::SqliteDatabase database(text_compare);
        store::create_course_db(database, file_.path());
    }
    file_.hold();
}

void NewCourse::finish()
{
    // Making it may take a while; checked again, because a file of that name may have appeared.
    platform::sqlite::give_name(file_.path(), free_path(path_));
}

} // namespace cuedrill::tools
