#include "common/text.h"
#include "store/schema.h"
#include "tools/opened_course.h"
#include "tools/verbs.h"

#include <array>
#include <ostream>

namespace cuedrill::tools {
namespace {

constexpr std::array<Option, 1> options{{{"--clear", "", "Goes back to the standard font."}}};

constexpr std::string_view help =
    "FONT is the name of a font family, such as \"Noto Sans\". The window shows questions and answers in it, in bold\n"
    "type of 12 points. A font that the computer lacks is replaced by a similar one. Without FONT, prints the present\n"
    "one.\n";

void check(const std::string& font)
{
    if (common::trim_blanks(font).empty())
        throw UsageError("A font has a name.");
    if (common::code_points(font) > store::longest_text)
        throw UsageError("The name of a font has at most " + std::to_string(store::longest_text) + " characters.");
}

int run(const Arguments& arguments, Surroundings& around)
{
    const std::string font = arguments.word(1);
    const bool clear = arguments.has("--clear");
    if (clear && !font.empty())
        throw UsageError("Give a font, or --clear.");
    if (!clear && font.empty()) {
        OpenedCourse opened(arguments.word(0), OpenedCourse::For::reading, around);
        const std::string& present = opened.course().params.font;
        around.out << (present.empty() ? "The standard font" : present) << '\n';
        return done;
    }
    if (!clear)
        check(font);
    OpenedCourse opened(arguments.word(0), OpenedCourse::For::writing, around);
    opened.params().change_font(font);
    return done;
}

} // namespace

const Verb& font_verb()
{
    static const Verb verb{
        "font", "Sets the font of questions and answers.", {"COURSE [FONT]", 1, 2, options}, help, run};
    return verb;
}

} // namespace cuedrill::tools
