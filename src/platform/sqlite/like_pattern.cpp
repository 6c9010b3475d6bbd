#include "platform/sqlite/like_pattern.h"

#include "platform/sqlite/engine_error.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace cuedrill::platform::sqlite {
namespace {

constexpr std::string_view special = "*?#[";

[[noreturn]] void refuse(std::string_view shown, const std::string& fault)
{
    throw own_error(DatabaseErrorKind::other, "The pattern \"" + std::string(shown) + "\" has " + fault + ".");
}

} // namespace

LikePattern::LikePattern(std::string_view folded, std::string_view shown)
{
    while (!folded.empty()) {
        const std::string_view characters = folded.substr(0, folded.find_first_of(special));
        if (!characters.empty()) {
            elements_.push_back({.kind = Kind::characters, .characters = std::string(characters)});
            folded.remove_prefix(characters.size());
            continue;
        }
        const Character character = take(folded);
        if (character == '*') {
            elements_.push_back({.kind = Kind::run});
        } else if (character == '?') {
            elements_.push_back({.kind = Kind::none_of});
        } else if (character == '#') {
            elements_.push_back({.kind = Kind::one_of, .ranges = {{'0', '9'}}});
        } else {
            const std::size_t end = folded.find(']');
            if (end == std::string_view::npos)
                refuse(shown, "a \"[\" without a \"]\"");
            add_list(folded.substr(0, end), shown);
            folded.remove_prefix(end + 1);
        }
    }
}

void LikePattern::add_list(std::string_view list, std::string_view shown)
{
    if (list.empty())
        return;
    Element element{.kind = Kind::one_of};
    if (list.size() > 1 && list.front() == '!') {
        element.kind = Kind::none_of;
        list.remove_prefix(1);
    }
    while (!list.empty()) {
        const Character first = take(list);
        Character last = first;
        if (list.size() > 1 && list.front() == '-') {
            list.remove_prefix(1);
            last = take(list);
        }
        if (last < first)
            refuse(shown, "a range that runs backwards");
        element.ranges.push_back({first, last});
    }
    elements_.push_back(std::move(element));
}

/// Removes the first character of `text`, which must not be empty, and returns it.
LikePattern::Character LikePattern::take(std::string_view& text)
{
    const auto byte = [&](std::size_t place) { return static_cast<unsigned char>(text[place]); };
    Character character = byte(0);
    std::size_t length = 1;
    if (character >= 0x80)
        for (; length < text.size() && length < 4 && (byte(length) & 0xC0U) == 0x80U; ++length)
            character = character << 8U | byte(length);
    text.remove_prefix(length);
    return character;
}

bool LikePattern::Element::take_from(std::string_view& text) const
{
    if (kind == Kind::characters) {
        if (!text.starts_with(characters))
            return false;
        text.remove_prefix(characters.size());
        return true;
    }
    if (text.empty())
        return false;
    const Character character = take(text);
    const bool listed = std::any_of(ranges.begin(), ranges.end(), [&](const Range& range) {
        return character >= range.first && character <= range.last;
    });
    return listed == (kind == Kind::one_of);
}

bool LikePattern::Element::skip_to(std::string_view& text) const
{
    if (kind != Kind::characters)
        return true;
    const std::size_t place = text.find(characters);
    text.remove_prefix(std::min(place, text.size()));
    return place != std::string_view::npos;
}

bool LikePattern::matches(std::string_view folded) const
{
    auto element = elements_.begin();
    // On a mismatch only the last run is made longer: whatever an earlier run could take in addition, the last one can
    // take as well.
    auto behind_run = elements_.end();
    std::string_view behind_run_text;
    bool has_run = false;
    while (element != elements_.end() || !folded.empty()) {
        if (element != elements_.end() && element->kind == Kind::run) {
            has_run = true;
            behind_run = ++element;
            behind_run_text = folded;
        } else if (element != elements_.end() && element->take_from(folded)) {
            ++element;
            continue;
        } else if (has_run && !behind_run_text.empty()) {
            take(behind_run_text);
        } else {
            return false;
        }
        if (behind_run == elements_.end())
            return true;
        if (!behind_run->skip_to(behind_run_text))
            return false;
        element = behind_run;
        folded = behind_run_text;
    }
    return true;
}

} // namespace cuedrill::platform::sqlite
