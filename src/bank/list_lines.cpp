#include "bank/list_lines.h"

#include "common/errors.h"
#include "common/number_format.h"
#include "common/text.h"
#include "store/course.h"

#include <algorithm>

namespace cuedrill::bank {
namespace {

constexpr int score_digits = 2;

/// Bytes of a line besides its texts: score, hyphen and arrow.
constexpr std::size_t line_frame = 24;

std::size_t size_in_list(std::size_t text_size, std::size_t beside)
{
    return 2 * text_size + beside + line_frame;
}

} // namespace

void ListLines::add(std::string text, common::Int16 score, std::size_t beside)
{
    if (full())
        throw common::OutOfRangeError("Too many items found: " + std::to_string(longest_list) +
                                      " are the most that a list can hold.");
    size_ += size_in_list(text.size(), beside);
    list_texts_.push_back(std::move(text));
    list_scores_.push_back(score);
}

bool ListLines::has_room_for(std::size_t text_size, std::size_t beside) const
{
    return size_ + size_in_list(text_size, beside) <= most_list_text;
}

void ListLines::cut(std::size_t count)
{
    list_texts_.resize(std::min(count, list_count()));
    list_scores_.resize(list_texts_.size());
}

std::string ListLines::line(std::size_t place) const
{
    return common::format_padded(list_scores_.at(place), score_digits) + " - " + list_texts_.at(place);
}

std::vector<std::string> ListLines::lines() const
{
    std::vector<std::string> all;
    all.reserve(list_count());
    for (std::size_t place = 0; place < list_count(); ++place)
        all.push_back(line(place));
    return all;
}

common::Int16 score_of(const platform::Recordset& row, const store::SideFields& side)
{
    return store::nz_int16(row.field(side.successes), "score");
}

std::string in_one_line(std::string text)
{
    if (text.find(common::cr_lf) != std::string::npos)
        text = common::replace_all(text, common::cr_lf, " ");
    return text;
}

std::string text_of_line(std::string_view line)
{
    // A blank follows the hyphen.
    std::string_view text = line.substr(std::min(line.find('-'), line.size()));
    text.remove_prefix(std::min<std::size_t>(2, text.size()));
    const std::size_t answer = text.find(common::trim_blanks(answer_arrow));
    if (answer != std::string_view::npos)
        text = common::trim_blanks(text.substr(0, answer));
    return remove_char(text, '*');
}

std::string remove_char(std::string_view text, char ch)
{
    std::string rest(text);
    std::erase(rest, ch);
    return rest;
}

} // namespace cuedrill::bank
