#include "tools/completion.h"

#include "tools/verb.h"

#include <string_view>

namespace cuedrill::tools {
namespace {

constexpr std::string_view bash_begin = R"sh(# bash completion for cuedrill-course
_cuedrill_course()
{
    local word=${COMP_WORDS[COMP_CWORD]} options=
    if [[ $COMP_CWORD == 1 ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$(_cuedrill_course_verbs)" -- "$word"; compgen -f -- "$word")
        return
    fi
    case ${COMP_WORDS[1]} in
)sh";

constexpr std::string_view bash_end = R"sh(    esac
    if [[ $word == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$options --help" -- "$word")
    else
        mapfile -t COMPREPLY < <(compgen -f -- "$word")
    fi
}
complete -o filenames -F _cuedrill_course cuedrill-course
)sh";

constexpr std::string_view zsh_begin = R"sh(#compdef cuedrill-course
_cuedrill-course()
{
    local -a verbs
    verbs=(
)sh";

constexpr std::string_view zsh_middle = R"sh(    )
    if (( CURRENT == 2 )); then
        _describe verb verbs
        _files
        return
    fi
    local verb=$words[2]
    shift words
    (( CURRENT-- ))
    case $verb in
)sh";

constexpr std::string_view zsh_end = R"sh(        *) _files ;;
    esac
}
_cuedrill-course "$@"
)sh";

/// The text as a part of a word in single quotes, in which brackets and colons have a meaning for zsh's completion.
std::string inner(std::string_view text)
{
    std::string result;
    for (const char c : text) {
        if (c == '\'')
            result += "'\\''";
        else if (c == '[' || c == ']' || c == ':' || c == '\\')
            (result += '\\') += c;
        else
            result += c;
    }
    return result;
}

std::string zsh_option(const Option& option)
{
    std::string words = "'" + std::string(option.name) + "[" + inner(option.help) + "]";
    if (!option.value.empty())
        words += ":" + inner(option.value) + ":" + (option.value == "FILE" ? "_files" : "");
    return words + "'";
}

} // namespace

std::string bash_completion()
{
    std::string names;
    std::string cases;
    for (const Verb& verb : all_verbs()) {
        names += " " + std::string(verb.name);
        std::string options;
        for (const Option& option : verb.syntax.options)
            options += (options.empty() ? "" : " ") + std::string(option.name);
        cases += "        " + std::string(verb.name) + ") options=\"" + options + "\" ;;\n";
    }
    return "_cuedrill_course_verbs() { echo" + names + "; }\n" + std::string(bash_begin) + cases +
           std::string(bash_end);
}

std::string zsh_completion()
{
    std::string verbs;
    std::string cases;
    for (const Verb& verb : all_verbs()) {
        verbs += "        '" + std::string(verb.name) + ":" + inner(verb.summary) + "'\n";
        cases += "        " + std::string(verb.name) + ") _arguments";
        for (const Option& option : verb.syntax.options)
            cases += " " + zsh_option(option);
        cases += " '--help[Tells more about it.]' '*:file:_files' ;;\n";
    }
    return std::string(zsh_begin) + verbs + std::string(zsh_middle) + cases + std::string(zsh_end);
}

} // namespace cuedrill::tools
