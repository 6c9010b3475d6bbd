#include "bank/merging.h"
#include "store/schema.h"
#include "tools/new_course.h"
#include "tools/opened_course.h"
#include "tools/verbs.h"

#include <ostream>

namespace cuedrill::tools {
namespace {

constexpr std::string_view help =
    "Each new record gets the next number, up to 32767; the numbers of deleted ones are not used again. FILE becomes "
    "a\n"
    "new course with the same records, levels, counts, dates and parameters, numbered from 1; COURSE stays as it is.\n"
    "A copy of COURSE is made, too. Prints the path of the new course.\n";

int run(const Arguments& arguments, Surroundings& around)
{
    const std::string target = platform::system::SystemFiles().absolute(arguments.word(1));
    OpenedCourse opened(arguments.word(0), OpenedCourse::For::writing, around);
    if (opened.files().exists(target))
        throw Refusal("There is a file " + target + " already.");
    opened.copy_first();
    NewCourse course(target);
    {
        platform::sqlite::SqliteDatabase fresh(opened.text_compare());
        fresh.open(course.making(), store::course_tables());
        static_cast<void>(bank::renumber(fresh, opened.course().database()));
    }
    course.finish();
    around.out << target << '\n';
    return done;
}

} // namespace

const Verb& renumber_verb()
{
    static const Verb verb{
        "renumber", "Makes a new course with the same records, numbered from 1.", {"COURSE FILE", 2, 2, {}}, help, run};
    return verb;
}

} // namespace cuedrill::tools
