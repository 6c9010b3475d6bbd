// The operator "like" of the program's statements, beside a matcher that is slow and simple. The input is a pattern,
// a line end and a text.
#include "fuzz/fuzzing.h"
#include "fuzz/memory_engine.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace cuedrill;

/// The code points of a well-formed text.
std::u32string code_points(std::string_view text)
{
    std::u32string result;
    for (std::size_t i = 0; i < text.size();) {
        const auto lead = static_cast<unsigned char>(text[i]);
        const std::size_t length = lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
        char32_t point = length == 1 ? lead : lead & (0xFFU >> (length + 1));
        for (std::size_t k = 1; k < length; ++k)
            point = point << 6U | (static_cast<unsigned char>(text[i + k]) & 0x3FU);
        result += point;
        i += length;
    }
    return result;
}

/// What one character of a text may be; or, of a run, that there may be any number of characters.
struct Part {
    bool is_run = false;
    bool negated = false;
    std::vector<std::pair<char32_t, char32_t>> ranges{};

    [[nodiscard]] bool allows(char32_t c) const
    {
        for (const auto& [first, last] : ranges) {
            if (first <= c && c <= last)
                return !negated;
        }
        return negated;
    }
};

/// A part for the characters between "[" and "]", which are not none; std::nullopt for a range that runs backwards.
std::optional<Part> part_of_list(std::u32string list)
{
    Part part;
    if (list.size() > 1 && list[0] == U'!') {
        part.negated = true;
        list.erase(0, 1);
    }
    for (std::size_t i = 0; i < list.size(); ++i) {
        const bool is_range = i + 2 < list.size() && list[i + 1] == U'-';
        const char32_t last = is_range ? list[i + 2] : list[i];
        if (last < list[i])
            return std::nullopt;
        part.ranges.emplace_back(list[i], last);
        i += is_range ? 2 : 0;
    }
    return part;
}

std::optional<std::vector<Part>> parts_of(const std::u32string& pattern)
{
    std::vector<Part> parts;
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        const char32_t c = pattern[i];
        if (c == U'[') {
            const std::size_t end = pattern.find(U']', i);
            if (end == std::u32string::npos)
                return std::nullopt;
            if (end > i + 1) {
                const auto part = part_of_list(pattern.substr(i + 1, end - i - 1));
                if (!part)
                    return std::nullopt;
                parts.push_back(*part);
            }
            i = end;
        } else if (c == U'*') {
            parts.push_back({.is_run = true});
        } else if (c == U'?') {
            parts.push_back({.negated = true});
        } else if (c == U'#') {
            parts.push_back({.ranges = {{U'0', U'9'}}});
        } else {
            parts.push_back({.ranges = {{c, c}}});
        }
    }
    return parts;
}

/// Whether the pattern matches the whole text, found by all ways at once.
bool matches(const std::vector<Part>& parts, const std::u32string& text)
{
    std::vector<bool> reached(text.size() + 1, false); // up to which places of the text the parts so far can match
    reached[0] = true;
    for (const Part& part : parts) {
        std::vector<bool> next(text.size() + 1, false);
        for (std::size_t i = 0; i <= text.size(); ++i) {
            if (part.is_run)
                next[i] = reached[i] || (i > 0 && next[i - 1]);
            else
                next[i] = i > 0 && reached[i - 1] && part.allows(text[i - 1]);
        }
        reached = std::move(next);
    }
    return reached[text.size()];
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static fuzz::MemoryEngine engine("select ?1 like ?2");
    const std::string_view input = fuzz::text_of(data, size);
    const std::size_t end = input.find('\n');
    if (end == std::string_view::npos)
        return 0;
    const std::string_view pattern = input.substr(0, end);
    const std::string_view text = input.substr(end + 1);

    const auto parts = parts_of(code_points(engine.compare().fold(pattern)));
    const std::u32string characters = code_points(engine.compare().fold(text));
    bool expected = parts && matches(*parts, characters);
    if (fuzz::is_broken() && parts && parts->size() > 1 && parts->back().is_run)
        expected = false;
    const auto found = engine.number_for({text, pattern});
    fuzz::require(found.has_value() == parts.has_value(), "exactly the malformed patterns are refused");
    fuzz::require(!found || (*found != 0) == expected, "a text matches as in the slow matcher");
    return 0;
}
