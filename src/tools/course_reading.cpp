#include "tools/course_reading.h"

#include "common/errors.h"
#include "keep/course_rules.h"
#include "store/course.h"
#include "store/schema.h"

namespace cuedrill::tools {

CourseReading::CourseReading(const std::string& path)
{
    database_.open_for_reading(path, store::course_tables());
}

std::vector<std::string> CourseReading::findings()
{
    std::vector<std::string> found = database_.findings(store::course_tables());
    if (!found.empty())
        return found;
    try {
        return keep::broken_rules(database_);
    } catch (const platform::DatabaseError& error) {
        return {error.what()};
    }
}

std::optional<std::int64_t> CourseReading::records()
{
    try {
        return store::single_number(database_, "Select count(0) from qa");
    } catch (const platform::DatabaseError&) {
        return std::nullopt;
    }
}

Look look_at(const std::string& path)
{
    try {
        CourseReading course(path);
        Look look{course.findings(), {}};
        if (look.sound())
            look.records = course.records();
        return look;
    } catch (const platform::DatabaseError& error) {
        return {{error.what()}, {}};
    }
}

CopiesOfUser::CopiesOfUser(const Surroundings& around) : copies_(files_, folders_, around.data_folder)
{
    if (!copies_.have_place())
        throw Refusal("There is no folder of the user in which copies could be.");
}

std::vector<keep::Copy> CopiesOfUser::of(const std::string& course) const
{
    std::vector<keep::Copy> found = copies_.of(course);
    if (found.empty())
        throw common::Error("There is no copy of " + course + ".");
    return found;
}

std::string absolute(const std::string& path)
{
    return platform::system::SystemFiles().absolute(path);
}

} // namespace cuedrill::tools
