// The list of sound courses in the file of settings, which anybody may have changed. The input is the path of a course,
// a line end, its mark, a line end, and the list.
#include "app/base/sound_courses.h"
#include "fuzz/fuzzing.h"

#include <algorithm>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace cuedrill;

class MemoryStore : public platform::SettingsStore {
public:
    std::string value;

    [[nodiscard]] std::optional<std::string> get(std::string_view /*application*/, std::string_view /*section*/,
                                                 std::string_view /*key*/) const override
    {
        return value;
    }
    void set(std::string_view /*application*/, std::string_view /*section*/, std::string_view /*key*/,
             std::string_view text) override
    {
        value = text;
    }
};

std::vector<std::string> lines_of(const std::string& text)
{
    std::vector<std::string> lines;
    std::string line;
    for (const char c : text) {
        if (c == '\n')
            lines.push_back(std::exchange(line, {}));
        else
            line += c;
    }
    if (!line.empty())
        lines.push_back(line);
    return lines;
}

bool is_noted(const app::SoundCourses& courses, const std::string& path, const std::string& mark)
{
    // As if the last letter of a path did not count.
    if (fuzz::is_broken() && path.size() > 3 && courses.is_noted(path.substr(0, path.size() - 1), mark))
        return true;
    return courses.is_noted(path, mark);
}

/// The lines that stay behind that of the course: in their order, as many as there is room for.
std::vector<std::string> others(const std::vector<std::string>& lines, const std::string& path)
{
    std::vector<std::string> kept;
    for (const std::string& line : lines) {
        const std::size_t blank = line.find(' ');
        const bool is_about = blank != std::string::npos && line.substr(blank + 1) == path;
        if (!line.empty() && !is_about && kept.size() + 1 < app::SoundCourses::most_courses)
            kept.push_back(line);
    }
    return kept;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string input(fuzz::text_of(data, size));
    const std::size_t first = input.find('\n');
    const std::size_t second = first == std::string::npos ? first : input.find('\n', first + 1);
    if (second == std::string::npos)
        return 0;
    const std::string path = input.substr(0, first);
    const std::string mark = input.substr(first + 1, second - first - 1);
    // A mark is one word, and no path is empty.
    if (path.empty() || mark.empty() || mark.find(' ') != std::string::npos)
        return 0;

    MemoryStore store;
    store.value = input.substr(second + 1);
    app::SoundCourses courses(store);
    const std::vector<std::string> before = lines_of(store.value);
    const bool expected = std::find(before.begin(), before.end(), mark + " " + path) != before.end();
    fuzz::require(is_noted(courses, path, mark) == expected, "exactly a course with a line of its own is noted");

    courses.note(path, mark);
    std::vector<std::string> after{mark + " " + path};
    const std::vector<std::string> kept = others(before, path);
    after.insert(after.end(), kept.begin(), kept.end());
    fuzz::require(lines_of(store.value) == after, "the course comes first, the others stay");
    fuzz::require(is_noted(courses, path, mark), "a noted course is noted");
    fuzz::require(!is_noted(courses, path, mark + "x"), "another state of it is not");
    const std::string once = store.value;
    courses.note(path, mark);
    fuzz::require(store.value == once, "noting it again changes nothing");
    return 0;
}
