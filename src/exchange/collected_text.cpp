#include "exchange/collected_text.h"

#include "common/text.h"

#include <algorithm>
#include <utility>

namespace cuedrill::exchange {
namespace {

constexpr std::string_view blanks_and_tabs = " \t";
constexpr std::string_view replacement_character = "\xEF\xBF\xBD";

bool has_outer_white_space(std::string_view text)
{
    return text.starts_with(common::cr_lf) || text.ends_with(common::cr_lf) || text.starts_with('\t') ||
           text.ends_with('\t');
}

bool is_continuation(char c)
{
    return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U;
}

/// The longest prefix of `text` within `room` bytes that does not split a character.
std::string_view fitting(std::string_view text, std::size_t room)
{
    if (text.size() <= room)
        return text;
    while (room > 0 && is_continuation(text[room]))
        --room;
    return text.substr(0, room);
}

std::size_t marks_in(std::string_view text)
{
    return static_cast<std::size_t>(std::count(text.begin(), text.end(), unreadable_mark));
}

} // namespace

std::string_view trim_exchange_text(std::string_view text)
{
    text = common::trim_blanks(text);
    while (has_outer_white_space(text)) {
        while (text.starts_with(common::cr_lf))
            text.remove_prefix(common::cr_lf.size());
        while (text.ends_with(common::cr_lf))
            text.remove_suffix(common::cr_lf.size());
        while (text.ends_with('\t'))
            text.remove_suffix(1);
        while (text.starts_with('\t'))
            text.remove_prefix(1);
        text = common::trim_blanks(text);
    }
    return text;
}

// Leading white space is dropped at once, and trailing white space is counted separately, so that a short text among
// megabytes of blanks is still kept whole.
void CollectedText::add(std::string_view text)
{
    if (kept_.empty())
        text.remove_prefix(std::min(text.find_first_not_of(blanks_and_tabs), text.size()));
    if (!full_) {
        const std::string_view kept = fitting(text, most_kept - kept_.size());
        kept_.append(kept);
        text.remove_prefix(kept.size());
        full_ = !text.empty();
    }
    count(text);
}

void CollectedText::add_line_end()
{
    if (kept_.empty())
        return;
    full_ = full_ || kept_.size() + common::cr_lf.size() > most_kept;
    if (full_)
        white_ += common::cr_lf.size();
    else
        kept_.append(common::cr_lf);
}

/// Counts the part of the text that is not kept.
void CollectedText::count(std::string_view text)
{
    const std::size_t last = text.find_last_not_of(blanks_and_tabs);
    if (last != std::string_view::npos) {
        cut_off_ += white_ + common::code_points(text.substr(0, last + 1));
        white_ = 0;
        unreadable_ += marks_in(text);
        text.remove_prefix(last + 1);
    }
    white_ += text.size();
}

ReadText CollectedText::take()
{
    const std::string_view text = cut_off_ == 0 ? trim_exchange_text(kept_) : std::string_view(kept_);
    ReadText result{.text = {}, .cut_off = cut_off_, .unreadable = unreadable_ + marks_in(text)};
    result.text = common::replace_all(text, std::string_view(&unreadable_mark, 1), replacement_character);
    *this = {};
    return result;
}

} // namespace cuedrill::exchange
