#include "tools/completion.h"

#include "tools/verbs.h"

#include <ostream>

namespace cuedrill::tools {
namespace {

constexpr std::string_view help =
    "SHELL is bash or zsh. The package installs these scripts. For a program that was built by hand:\n"
    "  source <(cuedrill-course completion bash)\n"
    "  cuedrill-course completion zsh > \"${fpath[1]}/_cuedrill-course\"\n";

int run(const Arguments& arguments, Surroundings& around)
{
    const std::string shell = arguments.word(0);
    if (shell != "bash" && shell != "zsh")
        throw UsageError("SHELL is bash or zsh, not " + shell + ".");
    around.out << (shell == "bash" ? bash_completion() : zsh_completion());
    return done;
}

} // namespace

const Verb& completion_verb()
{
    static const Verb verb{"completion",
                           "Prints a script that completes command lines of this tool in a shell.",
                           {"SHELL", 1, 1, {}},
                           help,
                           run};
    return verb;
}

} // namespace cuedrill::tools
