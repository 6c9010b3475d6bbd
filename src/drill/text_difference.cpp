#include "drill/text_difference.h"

#include <algorithm>
#include <cstdint>
#include <string>

namespace cuedrill::drill {
namespace {

/// Longer texts, in characters, are not compared: time and memory grow with the product of both lengths.
constexpr std::size_t longest_compared = 1000;

std::vector<std::string_view> characters(std::string_view text)
{
    std::vector<std::string_view> result;
    while (!text.empty()) {
        result.push_back(common::first_code_points(text, 1));
        text.remove_prefix(result.back().size());
    }
    return result;
}

/// Adds the character at `place` to the marks, extending the last range if it ends there.
void mark(std::vector<common::TextRange>& marks, std::size_t place)
{
    if (!marks.empty() && marks.back().end == place)
        ++marks.back().end;
    else
        marks.push_back({place, place + 1});
}

/// For each pair of positions, the length of the longest common subsequence of what follows them.
class CommonLengths {
public:
    CommonLengths(std::size_t rows, std::size_t columns) : columns_(columns + 1), lengths_((rows + 1) * columns_) {}

    std::uint16_t& at(std::size_t row, std::size_t column) { return lengths_[row * columns_ + column]; }

private:
    std::size_t columns_;
    std::vector<std::uint16_t> lengths_;
};

} // namespace

// The classical table of longest common subsequences (Wagner and Fischer, 1974), filled from the end so that it can be
// read from the beginning.
TextDifference difference(std::string_view first, std::string_view second, const platform::TextCompare& text_compare)
{
    if (text_compare.nfc(first) != first || text_compare.nfc(second) != second)
        return {};
    const std::string folded_first = text_compare.lower(first);
    const std::string folded_second = text_compare.lower(second);
    const auto a = characters(folded_first);
    const auto b = characters(folded_second);
    TextDifference result;
    // In a few languages lower-casing changes the number of characters; positions would then not match the displayed
    // texts.
    if (a.size() != common::code_points(first) || b.size() != common::code_points(second))
        return result;
    if (std::max(a.size(), b.size()) > longest_compared)
        return result;

    CommonLengths lengths(a.size(), b.size());
    for (std::size_t i = a.size(); i-- > 0;) {
        for (std::size_t j = b.size(); j-- > 0;) {
            lengths.at(i, j) = a[i] == b[j] ? static_cast<std::uint16_t>(lengths.at(i + 1, j + 1) + 1)
                                            : std::max(lengths.at(i + 1, j), lengths.at(i, j + 1));
        }
    }
    std::size_t i = 0;
    std::size_t j = 0;
    while (i < a.size() || j < b.size()) {
        if (i < a.size() && j < b.size() && a[i] == b[j]) {
            ++i;
            ++j;
        } else if (j == b.size() || (i < a.size() && lengths.at(i + 1, j) >= lengths.at(i, j + 1))) {
            mark(result.in_first, i++);
        } else {
            mark(result.in_second, j++);
        }
    }
    return result;
}

} // namespace cuedrill::drill
