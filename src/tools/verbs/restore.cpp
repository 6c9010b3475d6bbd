#include "app/base/paths.h"
#include "common/errors.h"
#include "keep/copy_names.h"
#include "platform/sqlite/new_file.h"
#include "store/schema.h"
#include "tools/course_reading.h"
#include "tools/verbs.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <memory>
#include <ostream>

namespace cuedrill::tools {
namespace {

constexpr std::array<Option, 1> options{
    {{"--to", "FILE", "The new file; otherwise \"<course> restored <time>.crs\" beside the course."}}};

constexpr std::string_view help =
    "Takes the newest copy, or the one of TIME. TIME is the beginning of a time as \"copies\" lists it, such as "
    "2026-11-21\n"
    "or 2026-11-21_16-05; it must fit one copy only. The copy is checked first, the new file afterwards. Neither the\n"
    "course nor any other file is ever replaced. Prints the path of the new file.\n";

/// A time as people write it, as the names of copies have it: "2026-11-21 16:05".
std::string as_in_names(std::string time)
{
    std::replace(time.begin(), time.end(), ' ', '_');
    std::replace(time.begin(), time.end(), ':', '-');
    return time;
}

keep::Copy chosen(const std::vector<keep::Copy>& copies, const std::string& time)
{
    std::vector<keep::Copy> fitting;
    std::copy_if(copies.begin(), copies.end(), std::back_inserter(fitting),
                 [&](const keep::Copy& copy) { return keep::time_name(copy.time).starts_with(as_in_names(time)); });
    if (fitting.empty())
        throw Refusal("There is no copy of the time " + time + ".");
    if (!time.empty() && fitting.size() > 1)
        throw Refusal("There are " + std::to_string(fitting.size()) + " copies of the time " + time +
                      ". Give more of it, such as " + keep::time_name(fitting.back().time) + ".");
    return fitting.back();
}

/// Copies it with the engine's own means: those of the copy's file system alone could leave half of it.
void write_copy(CourseReading& source, const std::string& target)
{
    const auto copy =
        source.database().begin_copy(target, store::course_tables(), platform::sqlite::TemporaryFile::usual_mode);
    if (!copy->step(platform::CourseCopy::all_pages))
        throw common::Error("Another program is using the copy.");
    copy->flush();
    copy->finish();
}

int run(const Arguments& arguments, Surroundings& around)
{
    const std::string course = absolute(arguments.word(0));
    const keep::Copy copy = chosen(CopiesOfUser(around).of(course), arguments.word(1));
    const std::string beside =
        app::join_path(app::dir_of(course), app::name_of(course) + " restored " + keep::time_name(copy.time) + ".crs");
    const std::string target = absolute(arguments.value("--to").value_or(beside));
    if (platform::system::SystemFiles().exists(target))
        throw Refusal("There is a file " + target + " already.");
    try {
        CourseReading source(copy.path);
        const std::vector<std::string> findings = source.findings();
        if (!findings.empty())
            throw Refusal("The copy " + copy.path + " is not sound. " + findings.front());
        write_copy(source, target);
    } catch (const platform::DatabaseError& error) {
        throw common::Error("The copy " + copy.path + " could not be restored to " + target + ". " + error.what());
    }
    around.out << target << '\n';
    return done;
}

} // namespace

const Verb& restore_verb()
{
    static const Verb verb{
        "restore", "Writes a copy of a course as a new course.", {"COURSE [TIME]", 1, 2, options}, help, run};
    return verb;
}

} // namespace cuedrill::tools
