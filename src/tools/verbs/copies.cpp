#include "keep/copy_names.h"
#include "tools/course_reading.h"
#include "tools/json.h"
#include "tools/verbs.h"

#include <algorithm>
#include <array>
#include <iomanip>
#include <iterator>
#include <ostream>

namespace cuedrill::tools {
namespace {

constexpr std::array<Option, 1> options{{{"--json", "", "Prints a list in JSON, with the path of each copy."}}};

constexpr std::string_view help = "The newest copy stands last. TIME is what \"restore\" takes. A copy that is not "
                                  "sound is named with what was found\n"
                                  "first. The course itself may be gone.\n";

std::string records_of(const Look& look)
{
    return look.records ? std::to_string(*look.records) : "-";
}

void print_table(const std::vector<keep::Copy>& copies, std::ostream& out)
{
    constexpr int width_of_time = 19;
    constexpr int width_of_number = 12;
    out << std::left << std::setw(width_of_time) << "TIME" << std::right << std::setw(width_of_number) << "RECORDS"
        << std::setw(width_of_number) << "BYTES"
        << "  STATE\n";
    for (const keep::Copy& copy : copies) {
        const Look look = look_at(copy.path);
        out << keep::time_name(copy.time) << std::setw(width_of_number) << records_of(look)
            << std::setw(width_of_number) << copy.bytes << "  "
            << (look.sound() ? std::string("sound") : "not sound: " + look.findings.front()) << '\n';
    }
}

void print_json(const std::vector<keep::Copy>& copies, std::ostream& out)
{
    std::vector<std::string> entries;
    for (const keep::Copy& copy : copies) {
        const Look look = look_at(copy.path);
        std::vector<std::string> findings;
        std::transform(look.findings.begin(), look.findings.end(), std::back_inserter(findings), json_text);
        entries.push_back(
            "{\"time\": " + json_text(keep::time_name(copy.time)) + ", \"path\": " + json_text(copy.path) +
            ", \"records\": " + (look.records ? std::to_string(*look.records) : "null") +
            ", \"bytes\": " + std::to_string(copy.bytes) + ", \"sound\": " + (look.sound() ? "true" : "false") +
            ", \"findings\": " + json_list(findings) + "}");
    }
    out << json_list(entries) << '\n';
}

int run(const Arguments& arguments, Surroundings& around)
{
    const std::vector<keep::Copy> copies = CopiesOfUser(around).of(absolute(arguments.word(0)));
    if (arguments.has("--json"))
        print_json(copies, around.out);
    else
        print_table(copies, around.out);
    return done;
}

} // namespace

const Verb& copies_verb()
{
    static const Verb verb{
        "copies", "Lists the copies of a course that Cuedrill has made.", {"COURSE", 1, 1, options}, help, run};
    return verb;
}

} // namespace cuedrill::tools
