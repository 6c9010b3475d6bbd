#include "app/base/sound_courses.h"

#include <exception>
#include <string_view>

namespace cuedrill::app {
namespace {

constexpr std::string_view application = "CUEDRILL";
constexpr std::string_view section = "window";
constexpr std::string_view key = "sound_courses";

/// The first line of `rest`, which loses it.
std::string_view take_line(std::string_view& rest)
{
    const std::string_view line = rest.substr(0, rest.find('\n'));
    rest.remove_prefix(line.size() < rest.size() ? line.size() + 1 : rest.size());
    return line;
}

std::string line_of(const std::string& path, const std::string& mark)
{
    return mark + " " + path;
}

bool is_about(std::string_view line, const std::string& path)
{
    const std::size_t blank = line.find(' ');
    return blank != std::string_view::npos && line.substr(blank + 1) == path;
}

/// Whether a line of the list can hold the path.
bool fits_a_line(const std::string& path)
{
    return path.find('\n') == std::string::npos;
}

} // namespace

std::string SoundCourses::lines() const
{
    return store_.get(application, section, key).value_or("");
}

bool SoundCourses::is_noted(const std::string& path, const std::string& mark) const noexcept
{
    try {
        const std::string kept = lines();
        const std::string wanted = line_of(path, mark);
        std::string_view rest = kept;
        while (!rest.empty()) {
            if (take_line(rest) == wanted)
                return true;
        }
    } catch (const std::exception&) {
        return false;
    }
    return false;
}

void SoundCourses::note(const std::string& path, const std::string& mark) noexcept
{
    if (!fits_a_line(path))
        return;
    try {
        const std::string kept = lines();
        std::string list = line_of(path, mark);
        std::string_view rest = kept;
        for (std::size_t courses = 1; !rest.empty() && courses < most_courses;) {
            const std::string_view line = take_line(rest);
            if (line.empty() || is_about(line, path))
                continue;
            list.append("\n").append(line);
            ++courses;
        }
        if (list != kept)
            store_.set(application, section, key, list);
    } catch (const std::exception&) {
        return;
    }
}

} // namespace cuedrill::app
