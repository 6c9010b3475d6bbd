#include "tools/new_course.h"
#include "tools/opened_course.h"
#include "tools/verbs.h"

#include <array>
#include <ostream>

namespace cuedrill::tools {
namespace {

constexpr std::array<Option, 1> options{{{"--title", "TITLE", "The title; otherwise it is made of the file's name."}}};

constexpr std::string_view help = "The file must not exist. Prints its path.\n";

int run(const Arguments& arguments, Surroundings& around)
{
    const platform::system::SystemFiles files;
    const std::string path = files.absolute(arguments.word(0));
    if (files.exists(path))
        throw Refusal("There is a file " + path + " already.");
    NewCourse made(path);
    if (const std::optional<std::string> title = arguments.value("--title")) {
        OpenedCourse opened(made.making(), OpenedCourse::For::writing, around, path);
        opened.params().change_params([&title](store::CourseParams& params) { params.course_title = *title; });
        opened.course().close();
    }
    made.finish();
    around.out << path << '\n';
    return done;
}

} // namespace

const Verb& new_verb()
{
    static const Verb verb{"new", "Makes a course without records.", {"COURSE", 1, 1, options}, help, run};
    return verb;
}

} // namespace cuedrill::tools
