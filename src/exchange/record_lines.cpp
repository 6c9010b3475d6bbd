#include "exchange/record_lines.h"

#include "common/text.h"

namespace cuedrill::exchange {
namespace {

/// In bytes: about a thousand lines. A longer list would also take noticeable time to display.
constexpr std::size_t longest_list = 262144;

/// In characters.
constexpr std::size_t longest_quotation = 1000;

} // namespace

void RecordLines::add(const std::string& name, const std::string& words)
{
    if (lines_.size() >= longest_list) {
        ++left_out_;
        return;
    }
    lines_.append(name).append(": ").append(words).append(common::cr_lf);
}

std::string RecordLines::text() const
{
    if (left_out_ == 0)
        return lines_;
    return lines_ + "... and " + std::to_string(left_out_) + " more." + std::string(common::cr_lf);
}

std::string record_name(std::int64_t number, const std::string& place)
{
    return place.empty() ? "Question " + std::to_string(number) : place;
}

std::string quoted_line(const std::string& text)
{
    std::string line = common::replace_all(text, common::cr_lf, " ");
    if (common::code_points(line) > longest_quotation)
        line = std::string(common::first_code_points(line, longest_quotation)) + "...";
    return "\"" + line + "\"";
}

} // namespace cuedrill::exchange
