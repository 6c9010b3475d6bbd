#include "support/command_line.h"

#include "support/program_name.h"
#include "support/version_history.h"

#include <algorithm>
#include <string_view>

namespace cuedrill::support {
namespace {

constexpr const char* usage = "usage: cuedrill [COURSE]\n"
                              "Asks the questions of a course, each one again when it is due.\n"
                              "\n"
                              "COURSE is a course file (.crs). Without one, or when that file does not exist,\n"
                              "the course of the last time is opened; where there is none, a dialog asks for\n"
                              "one, and a course that does not exist is offered to be created.\n"
                              "\n"
                              "Options, each alone on the command line:\n"
                              "  -h, --help    show this text\n"
                              "  --version     show the version\n"
                              "Options of the toolkit, such as -platform or -style, are accepted too.\n"
                              "\n"
                              "Exit codes:\n"
                              "  0  the program was ended by the user, or had nothing to open\n"
                              "  1  it could not start, or what was asked for could not be printed\n"
                              "\n"
                              "Files:\n"
                              "  Settings   general.ini in $XDG_CONFIG_HOME/CUEDRILL (~/.config/CUEDRILL)\n"
                              "  Trace log  trace.txt in the program's folder, while trace.flg lies beside it\n"
                              "  Agenda     agenda.txt in the program's folder\n"
                              "The program's folder is the one that holds the executable when that can be\n"
                              "written or holds trace.flg, otherwise $XDG_DATA_HOME/cuedrill\n"
                              "(~/.local/share/cuedrill).\n";

} // namespace

std::optional<std::string> command_line_answer(const std::vector<std::string>& arguments)
{
    if (arguments.size() != 1)
        return std::nullopt;
    const std::string& argument = arguments.front();
    if (argument == "-h" || argument == "--help")
        return usage;
    if (argument == "--version")
        return std::string(program_name) + " version " + program_version() + "\n";
    return std::nullopt;
}

bool sets_style(const std::vector<std::string>& arguments)
{
    return std::any_of(arguments.begin(), arguments.end(), [](std::string_view argument) {
        argument.remove_prefix(argument.starts_with("--") ? 1 : 0);
        return argument == "-style" || argument.starts_with("-style=");
    });
}

} // namespace cuedrill::support
