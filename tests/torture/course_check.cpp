#include "torture/course_check.h"

#include "common/errors.h"
#include "store/schema.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <variant>

namespace cuedrill::torture {

using platform::sqlite::SqliteDatabase;

std::string CourseCheck::open_and_dump()
{
    SqliteDatabase database(order_, std::chrono::milliseconds(0));
    database.open(folder_.file(course_name), store::course_tables());
    const platform::Rows findings = database.query("PRAGMA integrity_check");
    const auto* const finding = findings.empty() ? nullptr : std::get_if<std::string>(&findings[0].field(0));
    if (finding == nullptr || *finding != "ok")
        throw common::Error("the engine finds: " + (finding == nullptr ? std::string("nothing") : *finding));
    return dump_of(database);
}

/// Where there is no course, one can be created, and no temporary course of an earlier attempt stays. Its journal may
/// stay by itself, where the power cut has taken the name of the file only: the program removes no file that it cannot
/// lock.
std::string CourseCheck::complaint_about_creation()
{
    SqliteDatabase database(order_, std::chrono::milliseconds(0));
    store::create_course_db(database, folder_.file(course_name));
    database.close();
    for (const auto& entry : std::filesystem::directory_iterator(folder_.path())) {
        const std::string name = entry.path().filename().string();
        if (name != course_name && !name.ends_with("-journal"))
            return "a creation leaves " + name + " of the one before";
    }
    return {};
}

std::string CourseCheck::complaint(const DiskImage& image, const std::vector<std::string>& allowed, bool turned)
{
    write_image(image, folder());
    order_.turned = turned;
    const auto allows = [&](const std::string& state) {
        return std::find(allowed.begin(), allowed.end(), state) != allowed.end();
    };
    try {
        if (!image.contains(course_name))
            return allows(no_course) ? complaint_about_creation() : "the course is gone";
        return allows(open_and_dump()) ? std::string() : "the course does not hold what was acknowledged";
    } catch (const common::Error& error) {
        return std::string("the course cannot be used: ") + error.what();
    }
}

std::string CourseCheck::dump(const DiskImage& image)
{
    if (!image.contains(course_name))
        return no_course;
    write_image(image, folder());
    order_.turned = false;
    return open_and_dump();
}

std::set<std::pair<std::string, std::string>> CourseCheck::texts(const DiskImage& image)
{
    write_image(image, folder());
    order_.turned = false;
    SqliteDatabase database(order_, std::chrono::milliseconds(0));
    database.open(folder_.file(course_name), store::course_tables());
    std::set<std::pair<std::string, std::string>> texts;
    for (const platform::Row& row : database.query("Select q, a from qa"))
        texts.emplace(std::get<std::string>(row.field(0)), std::get<std::string>(row.field(1)));
    return texts;
}

} // namespace cuedrill::torture
