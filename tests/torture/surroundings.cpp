#include "torture/surroundings.h"

#include "common/errors.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <grp.h>
#include <regex>
#include <sstream>
#include <system_error>
#include <unistd.h>

namespace cuedrill::torture {
namespace {

namespace fs = std::filesystem;

/// Questions with the letters, digits and marks on which locales disagree.
constexpr const char* questions = "/*/ comment\r\n"
                                  "@q@ I\u011fd\u0131r ilinin merkezi? @a@ I\u011fd\u0131r\r\n"
                                  "@Q@ TITLE in small letters @A@ title\r\n"
                                  "@Q@ \u0130zmir @A@ \u0627\u0644\u0625\u062c\u0627\u0628\u0629 \u0663\u066b\u0665\r\n"
                                  "@Q@ Half of 3,000.5 @A@ 1500.25\r\n"
                                  "@Q@ \u06f1\u06f2\u06f3 \u0645\u06cc @A@ 123\r\n"
                                  "@Q@ stra\u00dfe @A@ STRASSE\r\n";

void set_variable(const std::string& name, const std::optional<std::string>& value)
{
    if (value)
        ::setenv(name.c_str(), value->c_str(), 1);
    else
        ::unsetenv(name.c_str());
}

/// In the child. Everything that could change what the program does and is not asked for is taken away.
void set_variables(const Household& household, const Surroundings& around)
{
    for (const char* const name : {"LANGUAGE", "LC_ALL", "LC_CTYPE", "LC_NUMERIC", "LC_TIME", "LC_COLLATE",
                                   "LC_MESSAGES", "LOCPATH", "TMPDIR", "DISPLAY", "WAYLAND_DISPLAY"})
        ::unsetenv(name);
    std::map<std::string, std::optional<std::string>> variables{{"LANG", "C.UTF-8"},
                                                                {"TZ", "UTC0"},
                                                                {"QT_QPA_PLATFORM", "offscreen"},
                                                                {"FONTCONFIG_FILE", household.file("fonts/fonts.conf")},
                                                                {"HOME", household.file("home")},
                                                                {"XDG_CONFIG_HOME", household.file("config")},
                                                                {"XDG_DATA_HOME", household.file("data")},
                                                                {"XDG_CACHE_HOME", household.file("cache")},
                                                                {"XDG_RUNTIME_DIR", household.file("run")}};
    for (const auto& [name, value] : around.variables)
        variables[name] = value;
    for (const auto& [name, value] : variables)
        set_variable(name, value);
}

void become_ordinary_user()
{
    if (::geteuid() == 0 &&
        (::setgroups(0, nullptr) != 0 || ::setgid(ordinary_user) != 0 || ::setuid(ordinary_user) != 0))
        std::_Exit(EXIT_FAILURE);
}

std::string complaint_about(const ChildOutcome& outcome)
{
    if (!outcome.death.empty())
        return outcome.death;
    if (outcome.peak_kilobytes > most_child_kilobytes)
        return "it took " + std::to_string(outcome.peak_kilobytes) + " KiB";
    return outcome.words.ends_with("done\n") ? std::string() : "it has not come to its end";
}

std::optional<fakes::CourseContents> course_in(const std::string& path)
{
    std::error_code error;
    try {
        if (fs::exists(path, error))
            return fakes::read_course(path);
    } catch (const common::Error&) {
        return std::nullopt;
    }
    return std::nullopt;
}

std::string replaced(std::string text, const std::string& what, const std::string& by)
{
    for (std::size_t i = text.find(what); i != std::string::npos; i = text.find(what, i + by.size()))
        text.replace(i, what.size(), by);
    return text;
}

} // namespace

Household::Household()
{
    for (const char* const name : {"home", "config", "data", "cache", "run", "courses", "fonts", "bin"})
        fs::create_directory(folder_.file(name));
    fs::permissions(folder_.file("run"), fs::perms::owner_all);
    folder_.write("courses/questions.txt", questions);
    // Where no user but this one may look at the sources and the programs.
    fs::copy(TORTURE_FONTS, folder_.file("fonts"), fs::copy_options::recursive);
    fs::copy(TORTURE_USER, folder_.file("bin/torture_user"));
}

void Household::give_away() const
{
    // As where a program is installed.
    fs::permissions(folder_.file("bin"), fs::perms::owner_read | fs::perms::owner_exec);
    if (::geteuid() != 0)
        return;
    const auto give = [](const fs::path& path) {
        if (::lchown(path.c_str(), ordinary_user, ordinary_user) != 0)
            throw std::system_error(errno, std::generic_category(), path.string());
    };
    give(folder_.path());
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder_.path()))
        give(entry.path());
}

std::string Household::neutral(std::string text) const
{
    // The folder of a course's copies is named by the course's path.
    static const std::regex hash("-[0-9a-f]{16}");
    return std::regex_replace(replaced(std::move(text), folder_.path().string(), "~"), hash, "-hash");
}

std::vector<std::string> Use::lines(std::string_view begin) const
{
    std::vector<std::string> found;
    std::istringstream in(words);
    for (std::string line; std::getline(in, line);) {
        if (line.starts_with(begin))
            found.push_back(line.substr(begin.size()));
    }
    return found;
}

Use use(const Household& household, const std::vector<std::string>& words, const Surroundings& around)
{
    std::vector<std::string> line{household.file("bin/torture_user"), std::to_string(told_descriptor)};
    for (const std::string& word : words)
        line.push_back(replaced(word, "~", household.file("").substr(0, household.file("").size() - 1)));
    const ChildOutcome outcome = run_program_bounded(line, [&] {
        set_variables(household, around);
        if (around.ordinary_user)
            become_ordinary_user();
        if (around.prepare)
            around.prepare();
    });
    Use result;
    result.complaint = complaint_about(outcome);
    std::istringstream in(household.neutral(outcome.words));
    for (std::string told; std::getline(in, told);)
        (told.starts_with("# ") ? result.surroundings : result.words) += told + "\n";
    result.course = course_in(household.course());
    std::error_code error;
    if (fs::exists(household.file("courses/export.txt"), error)) {
        std::ostringstream bytes;
        bytes << std::ifstream(household.file("courses/export.txt"), std::ios::binary).rdbuf();
        result.exported = bytes.str();
    }
    return result;
}

std::string difference(const std::string& expected, const std::string& found)
{
    std::istringstream a(expected);
    std::istringstream b(found);
    std::string line_a;
    std::string line_b;
    for (;;) {
        const bool more_a = static_cast<bool>(std::getline(a, line_a));
        const bool more_b = static_cast<bool>(std::getline(b, line_b));
        if (!more_a && !more_b)
            return {};
        if (more_a != more_b || line_a != line_b)
            return "\"" + (more_b ? line_b : "end") + "\" instead of \"" + (more_a ? line_a : "end") + "\"";
    }
}

} // namespace cuedrill::torture
