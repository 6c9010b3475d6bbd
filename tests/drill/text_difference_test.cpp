#include "drill/text_difference.h"
#include "platform/icu/icu_text_compare.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <ostream>
#include <string>
#include <vector>

namespace cuedrill::drill {
namespace {

using Ranges = std::vector<common::TextRange>;

class TextDifferenceTest : public testing::Test {
protected:
    [[nodiscard]] TextDifference between(std::string_view first, std::string_view second) const
    {
        return difference(first, second, text_compare);
    }

    void expect_between(std::string_view first, std::string_view second, const Ranges& in_first,
                        const Ranges& in_second) const
    {
        const TextDifference result = between(first, second);
        EXPECT_EQ(result.in_first, in_first) << first << " / " << second;
        EXPECT_EQ(result.in_second, in_second) << first << " / " << second;
    }

    platform::icu::IcuTextCompare text_compare;
};

TEST_F(TextDifferenceTest, of_texts_that_differ_in_case_alone_is_empty)
{
    expect_between("Paris", "pARIS", {}, {});
    expect_between("ZÜRICH", "Zürich", {}, {});
    expect_between("", "", {}, {});
}

TEST_F(TextDifferenceTest, marks_what_is_too_much_and_what_is_missing)
{
    expect_between("Pariss", "Paris", {{5, 6}}, {});
    expect_between("Pris", "Paris", {}, {{1, 2}});
    expect_between("xParis", "Paris", {{0, 1}}, {});
    expect_between("", "Paris", {}, {{0, 5}});
    expect_between("Paris", "", {{0, 5}}, {});
}

TEST_F(TextDifferenceTest, marks_what_stands_for_something_else_in_both)
{
    expect_between("Rome", "Roma", {{3, 4}}, {{3, 4}});
    expect_between("abc", "xyz", {{0, 3}}, {{0, 3}});
}

TEST_F(TextDifferenceTest, marks_characters_in_a_row_together_and_others_apart)
{
    expect_between("aXXbYc", "abc", {{1, 3}, {4, 5}}, {});
}

TEST_F(TextDifferenceTest, counts_characters_and_not_their_bytes)
{
    expect_between("Zurich", "Zürich", {{1, 2}}, {{1, 2}});
    expect_between("éa\U0001F600b", "éab", {{2, 3}}, {});
}

TEST_F(TextDifferenceTest, of_a_text_whose_small_letters_are_more_marks_nothing)
{
    expect_between("\u0130x", "y", {}, {});
    expect_between("y", "\u0130x", {}, {});
}

TEST_F(TextDifferenceTest, marks_texts_of_up_to_1000_characters)
{
    const std::string longest(999, 'a');
    expect_between(longest + "x", longest + "y", {{999, 1000}}, {{999, 1000}});
    expect_between(longest + "ax", longest, {}, {});
    expect_between(longest, longest + "ax", {}, {});
}

/// All texts of up to `length` letters from an alphabet of three.
std::vector<std::string> short_texts(std::size_t length)
{
    std::vector<std::string> texts{""};
    for (std::size_t begin = 0; texts.back().size() < length;) {
        const std::size_t end = texts.size();
        for (; begin < end; ++begin) {
            for (const char letter : {'a', 'b', 'c'})
                texts.push_back(texts[begin] + letter);
        }
    }
    return texts;
}

std::string without(const std::string& text, const Ranges& marks)
{
    std::string rest;
    for (std::size_t place = 0; place < text.size(); ++place) {
        if (std::none_of(marks.begin(), marks.end(),
                         [&](const common::TextRange& mark) { return place >= mark.begin && place < mark.end; }))
            rest += text[place];
    }
    return rest;
}

std::size_t longest_common(std::string_view a, std::string_view b)
{
    if (a.empty() || b.empty())
        return 0;
    if (a[0] == b[0])
        return 1 + longest_common(a.substr(1), b.substr(1));
    return std::max(longest_common(a.substr(1), b), longest_common(a, b.substr(1)));
}

TEST_F(TextDifferenceTest, leaves_the_same_and_as_much_as_possible_of_both)
{
    const std::vector<std::string> texts = short_texts(4);
    ASSERT_EQ(texts.size(), 1 + 3 + 9 + 27 + 81);
    for (const std::string& first : texts) {
        for (const std::string& second : texts) {
            const TextDifference result = between(first, second);
            const std::string rest = without(first, result.in_first);
            ASSERT_EQ(rest, without(second, result.in_second)) << first << " / " << second;
            ASSERT_EQ(rest.size(), longest_common(first, second)) << first << " / " << second;
        }
    }
}

TEST(TextDifference, of_texts_that_are_not_composed_is_not_looked_for)
{
    const platform::icu::IcuTextCompare text_compare;
    const TextDifference found = difference("Cafe\u0301s", "Caf\u00E9", text_compare);
    EXPECT_TRUE(found.in_first.empty());
    EXPECT_TRUE(found.in_second.empty());
}

} // namespace
} // namespace cuedrill::drill
