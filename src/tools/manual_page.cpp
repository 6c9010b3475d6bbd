#include "tools/manual_page.h"

#include "tools/verb.h"

namespace cuedrill::tools {
namespace {

constexpr std::string_view page_begin = R"(.TH CUEDRILL\-COURSE 1 "" Cuedrill "User Commands"
.SH NAME
cuedrill\-course \- work on Cuedrill courses without a window
.SH SYNOPSIS
.nf
)";

constexpr std::string_view page_description = R"(.fi
.SH DESCRIPTION
With two file names and no verb, the new course file
.I COURSE
is made of the question text file
.IR QUESTIONS .
.PP
A course that is called like a verb is named with its folder:
.IR ./copies .
Options may stand before and behind the file names; behind
.B \-\-
everything is a file name or a word.
.SH VERBS
)";

constexpr std::string_view page_end = R"(.SH EXIT STATUS
.TP
.B 0
Done.
.TP
.B 1
Nothing or only a part was done.
.TP
.B 2
Refused; also for a command line that is not understood.
.SH FILES
Copies and histories of courses are in
.IR $XDG_DATA_HOME/cuedrill ,
by default
.IR \(ti/.local/share/cuedrill .
.SH SEE ALSO
.BR cuedrill (1),
.BR cuedrill\-course\-file (5)
)";

std::string one_line(std::string_view text)
{
    std::string line = roff_text(text);
    if (line.ends_with('\n'))
        line.pop_back();
    return line;
}

std::string synopsis_line(const Verb& verb)
{
    return "\\fBcuedrill\\-course " + one_line(verb.name) + "\\fR " + one_line(verb.syntax.words) +
           (verb.syntax.options.empty() ? "" : " [options]") + "\n";
}

std::string option_lines(const Option& option)
{
    return ".TP\n\\fB" + one_line(option.name) + "\\fR" +
           (option.value.empty() ? "" : " \\fI" + one_line(option.value) + "\\fR") + "\n" + roff_text(option.help) +
           "\n";
}

std::string verb_section(const Verb& verb)
{
    std::string section = ".SS " + one_line(verb.name) + " " + one_line(verb.syntax.words) + "\n" +
                          roff_text(verb.summary) + "\n" + ".PP\n" + roff_text(verb.help);
    for (const Option& option : verb.syntax.options)
        section += option_lines(option);
    return section;
}

/// A line without its line end.
std::string roff_line(std::string_view line)
{
    // At the start of a line, a period or an apostrophe would make it a request.
    std::string result = line.starts_with('.') || line.starts_with('\'') ? "\\&" : "";
    for (const char c : line) {
        if (c == '\\')
            result += "\\e";
        else if (c == '-')
            result += "\\-";
        else if (c == '\'')
            result += "\\(aq";
        else if (c == '"')
            result += "\\(dq";
        else if (c == '`')
            result += "\\(ga";
        else if (c == '~')
            result += "\\(ti";
        else if (c == '^')
            result += "\\(ha";
        else
            result += c;
    }
    return result;
}

} // namespace

std::string roff_text(std::string_view text)
{
    std::string result;
    bool literal = false;
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        const std::string_view line = text.substr(0, end);
        if (line.starts_with(' ') != literal) {
            literal = !literal;
            result += literal ? ".nf\n" : ".fi\n";
        }
        result += roff_line(line);
        if (end == std::string_view::npos)
            break;
        result += '\n';
        text.remove_prefix(end + 1);
    }
    if (literal)
        result += ".fi\n";
    return result;
}

std::string manual_page()
{
    std::string page(page_begin);
    page += "\\fBcuedrill\\-course\\fR COURSE QUESTIONS\n";
    for (const Verb& verb : all_verbs())
        page += synopsis_line(verb);
    page += "\\fBcuedrill\\-course\\fR VERB \\-\\-help\n";
    page += page_description;
    for (const Verb& verb : all_verbs())
        page += verb_section(verb);
    page += page_end;
    return page;
}

} // namespace cuedrill::tools
