#include "exchange/collected_text.h"

#include <gtest/gtest.h>
#include <string>

namespace cuedrill::exchange {
namespace {

constexpr std::size_t most = CollectedText::most_kept;

/// Proves that a text is returned as whole only if it is whole, and that the counts are right, whatever is added.
class CollectedTextTest : public testing::Test {
protected:
    void expect_taken(const std::string& text, std::size_t cut_off = 0)
    {
        const ReadText taken = collected.take();
        EXPECT_TRUE(taken.text == text) << taken.text.size() << " bytes";
        EXPECT_EQ(taken.cut_off, cut_off);
    }

    CollectedText collected;
};

TEST_F(CollectedTextTest, is_trimmed_at_both_ends)
{
    collected.add(" \t");
    collected.add_line_end();
    collected.add("  a b ");
    collected.add_line_end();
    collected.add("c\t");
    collected.add_line_end();
    expect_taken("a b \r\nc");
    expect_taken("");
}

TEST_F(CollectedTextTest, is_whole_between_megabytes_of_white_space)
{
    for (int i = 0; i < 100; ++i) {
        collected.add(std::string(most, ' '));
        collected.add_line_end();
    }
    collected.add("short");
    for (int i = 0; i < 100; ++i) {
        collected.add(std::string(most, '\t'));
        collected.add_line_end();
    }
    expect_taken("short");
}

TEST_F(CollectedTextTest, keeps_the_beginning_and_counts_the_rest)
{
    collected.add(std::string(most, 'x'));
    expect_taken(std::string(most, 'x'));

    collected.add(std::string(most, 'x') + "é y ");
    collected.add_line_end();
    collected.add("z \t");
    collected.add_line_end();
    expect_taken(std::string(most, 'x'), 7); // "é y " and a line end and "z"
}

TEST_F(CollectedTextTest, is_never_cut_inside_a_character)
{
    const std::string text(most - 1, 'x');
    collected.add(text + "é");
    collected.add("y");
    expect_taken(text, 2);
}

TEST_F(CollectedTextTest, has_no_half_line_end)
{
    const std::string text(most - 1, 'x');
    collected.add(text);
    collected.add_line_end();
    expect_taken(text);

    collected.add(text);
    collected.add_line_end();
    collected.add("y");
    expect_taken(text, 3);
}

TEST_F(CollectedTextTest, counts_what_could_not_be_read)
{
    collected.add("a\xFF"
                  "b\xFF");
    ReadText taken = collected.take();
    EXPECT_EQ(taken.text, "a\xEF\xBF\xBD"
                          "b\xEF\xBF\xBD");
    EXPECT_EQ(taken.unreadable, 2U);

    collected.add("\xFF" + std::string(most, 'x') + "\xFF y");
    taken = collected.take();
    EXPECT_EQ(taken.unreadable, 2U);
    EXPECT_EQ(collected.take().unreadable, 0U);
}

TEST_F(CollectedTextTest, does_not_count_a_replacement_character_of_the_file_itself)
{
    collected.add("a\xEF\xBF\xBD");
    EXPECT_EQ(collected.take().unreadable, 0U);
}

} // namespace
} // namespace cuedrill::exchange
