#include "common/errors.h"
#include "tools/verbs.h"

#include <algorithm>
#include <exception>
#include <ostream>
#include <vector>

namespace cuedrill::tools {
namespace {

constexpr std::string_view tool = "cuedrill-course";
constexpr std::string_view help_option = "--help";

const Verb* verb_named(std::string_view name)
{
    const std::span<const Verb> verbs = all_verbs();
    const auto found = std::find_if(verbs.begin(), verbs.end(), [name](const Verb& verb) { return verb.name == name; });
    return found == verbs.end() ? nullptr : &*found;
}

void print_usage(std::ostream& out)
{
    out << "usage: " << tool << " COURSE QUESTIONS\n"
        << "           Makes the new course file COURSE of QUESTIONS: a question text, a table, or a file of another "
           "program.\n";
    for (const Verb& verb : all_verbs())
        out << "       " << tool << ' ' << verb.name << ' ' << verb.syntax.words
            << (verb.syntax.options.empty() ? "" : " [options]") << "\n           " << verb.summary << '\n';
    out << "       " << tool << " VERB --help\n"
        << "           More about a verb.\n"
        << "A course that is called like a verb is named with its folder: ./copies\n"
        << "Exit codes: 0 done, 1 nothing or only a part done, 2 refused.\n";
}

void print_help(const Verb& verb, std::ostream& out)
{
    out << "usage: " << tool << ' ' << verb.name << ' ' << verb.syntax.words
        << (verb.syntax.options.empty() ? "" : " [options]") << '\n'
        << verb.summary << '\n'
        << verb.help;
    for (const Option& option : verb.syntax.options)
        out << "  " << option.name << (option.value.empty() ? "" : " ") << option.value << "\n      " << option.help
            << '\n';
}

int run_verb(const Verb& verb, std::span<const std::string> line, Surroundings& around)
{
    if (std::find(line.begin(), line.end(), help_option) != line.end()) {
        print_help(verb, around.out);
        return done;
    }
    return verb.run(Arguments(line, verb.syntax), around);
}

int run_line(std::span<const std::string> line, Surroundings& around)
{
    const Verb* const verb = line.empty() ? nullptr : verb_named(line.front());
    try {
        if (verb != nullptr)
            return run_verb(*verb, line.subspan(1), around);
    } catch (const UsageError& error) {
        around.err << tool << ": " << error.what() << " See: " << tool << ' ' << verb->name << " --help\n";
        return refused;
    }
    if (line.size() == 2)
        return make_course(line[0], line[1], around);
    const bool asks = line.size() == 1 && line.front() == help_option;
    print_usage(asks ? around.out : around.err);
    return asks ? done : refused;
}

} // namespace

int run_tool(std::span<const std::string> line, Surroundings& around)
{
    try {
        const int code = run_line(line, around);
        if (!around.out.flush())
            throw common::Error("The output cannot be written.");
        return code;
    } catch (const Refusal& error) {
        around.err << tool << ": " << error.what() << '\n';
        return refused;
    } catch (const std::exception& error) {
        around.err << tool << ": " << common::words_of(error) << '\n';
        return not_all_done;
    }
}

std::span<const Verb> all_verbs()
{
    static const std::vector<Verb> verbs{new_verb(),    info_verb(),      due_verb(),     stats_verb(),  list_verb(),
                                         import_verb(), export_verb(),    fix_verb(),     dupes_verb(),  font_verb(),
                                         merge_verb(),  renumber_verb(),  history_verb(), copies_verb(), restore_verb(),
                                         check_verb(),  completion_verb()};
    return verbs;
}

} // namespace cuedrill::tools
