#include "drill/sample_course.h"

#include "app/base/paths.h"
#include "common/errors.h"
#include "common/text.h"
#include "exchange/importer.h"
#include "store/course.h"
#include "store/schema.h"

#include <algorithm>
#include <new>
#include <string_view>
#include <utility>
#include <vector>

namespace cuedrill::drill {
namespace {

constexpr std::string_view offered_key = "sample_offered";

/// The name of the course until it is complete. A file of such a name that a killed program has left is removed when
/// the next course is created in its folder.
constexpr std::string_view unfinished_name = ".cuedrill-new-1";

constexpr std::string_view course_ending = ".crs";

bool is_course_name(std::string_view name)
{
    return name.size() > course_ending.size() &&
           common::equal_ascii(name.substr(name.size() - course_ending.size()), course_ending);
}

/// A course that is being made: closed and removed with this object, unless it has got its name.
class UnfinishedCourse {
public:
    UnfinishedCourse(platform::Database& database, platform::Files& files, std::string path)
        : database_(database), files_(files), path_(std::move(path))
    {
        store::create_course_db(database_, path_);
        database_.close();
    }
    UnfinishedCourse(const UnfinishedCourse&) = delete;
    UnfinishedCourse& operator=(const UnfinishedCourse&) = delete;
    ~UnfinishedCourse()
    {
        database_.close();
        try {
            if (!path_.empty())
                files_.remove(path_);
        } catch (const common::Error&) {
            // The error that left the course unfinished is the one that is noted.
        }
    }

    [[nodiscard]] const std::string& path() const { return path_; }

    /// Requires that it is closed.
    void give_name(const std::string& name)
    {
        files_.rename_to_free_name(path_, name);
        path_.clear();
    }

private:
    platform::Database& database_;
    platform::Files& files_;
    std::string path_;
};

} // namespace

void SampleCourse::put_once()
{
    if (data_folder_.empty() || !services_.files.is_regular_file(questions_) ||
        !services_.settings.get_setting(offered_key).empty())
        return;
    if (!remember()) {
        note("it could not be remembered that it was put there");
        return;
    }
    try {
        services_.files.create_folder(data_folder_);
        if (!data_folder_holds_course())
            make();
    } catch (const common::Error& error) {
        note(error.what());
    } catch (const std::bad_alloc& error) {
        note(common::words_of(error));
    }
}

std::string SampleCourse::folder_with_course() const
{
    try {
        return !data_folder_.empty() && data_folder_holds_course() ? data_folder_ : std::string();
    } catch (const common::Error&) {
        return {}; // most often because there is no such folder
    }
}

bool SampleCourse::is_there() const
{
    return services_.files.is_regular_file(app::join_path(data_folder_, file_name));
}

/// Before the course is made: one that came back after the user has deleted it would be worse than none.
bool SampleCourse::remember()
{
    services_.settings.save_setting(offered_key, "1");
    return !services_.settings.get_setting(offered_key).empty();
}

bool SampleCourse::data_folder_holds_course() const
{
    const std::vector<std::string> names = services_.files.names_in(data_folder_);
    return std::any_of(names.begin(), names.end(), is_course_name);
}

void SampleCourse::make()
{
    UnfinishedCourse course(database_, services_.files, app::join_path(data_folder_, unfinished_name));
    fill(course.path());
    course.give_name(app::join_path(data_folder_, file_name));
}

void SampleCourse::fill(const std::string& path)
{
    // Not the course of the window: nothing of this one is shown or kept.
    store::Course course(database_);
    course.db_path = path;
    course.apri_db();
    course.set_side_fields();
    exchange::Importer importer(course, services_.files, services_.clock, services_.text_compare, questions_);
    while (!importer.step(exchange::Importer::usual_step).finished) {
    }
    course.close();
    if (importer.progress().stored == 0)
        throw common::Error(questions_ + ": it holds no questions");
}

void SampleCourse::note(const std::string& reason)
{
    services_.trace.write_trace("sample course - " + reason);
}

} // namespace cuedrill::drill
