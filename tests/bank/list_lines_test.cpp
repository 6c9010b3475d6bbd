#include "bank/list_lines.h"
#include "common/errors.h"

#include <gtest/gtest.h>

namespace cuedrill::bank {
namespace {

TEST(ListLines, begin_with_the_score_in_at_least_two_digits)
{
    ListLines list;
    list.add("France?", 2);
    list.add("Italy?", 0);
    list.add("Spain?", 12);
    list.add("Malta?", 32767);
    EXPECT_EQ(list.line(0), "02 - France?");
    EXPECT_EQ(list.lines(), (std::vector<std::string>{"02 - France?", "00 - Italy?", "12 - Spain?", "32767 - Malta?"}));
}

TEST(ListLines, keep_their_texts_as_they_are)
{
    ListLines list;
    list.add(" a \r\n b ", 1);
    EXPECT_EQ(list.text(0), " a \r\n b ");
    EXPECT_EQ(list.line(0), "01 -  a \r\n b ");
    EXPECT_EQ(list.list_count(), 1U);
}

TEST(ListLines, of_nothing_are_none)
{
    const ListLines list;
    EXPECT_EQ(list.list_count(), 0U);
    EXPECT_TRUE(list.lines().empty());
    EXPECT_FALSE(list.full());
}

TEST(ListLines, are_10000_at_the_most)
{
    ListLines list;
    for (int i = 1; i < 10000; ++i)
        list.add("item", 0);
    EXPECT_FALSE(list.full());
    list.add("last", 0);
    EXPECT_TRUE(list.full());
    try {
        list.add("one more", 0);
        FAIL() << "not refused";
    } catch (const common::OutOfRangeError& error) {
        EXPECT_STREQ(error.what(), "Too many items found: 10000 are the most that a list can hold.");
    }
    EXPECT_EQ(list.list_count(), 10000U);
    EXPECT_EQ(list.text(9999), "last");
    EXPECT_EQ(list.lines().size(), 10000U);
}

TEST(ListLines, hold_64_million_bytes_at_the_most)
{
    ListLines list;
    const std::string text(1'000'000, 'x');
    int records = 0;
    for (; list.has_room_for(text.size()) && records < 1000; ++records)
        list.add(text, 0);
    EXPECT_EQ(records, 31) << "each text stands in the list and in its line";
    EXPECT_TRUE(list.has_room_for(900'000));
    EXPECT_FALSE(list.has_room_for(900'000, 900'000)) << "with an answer beside it";
    EXPECT_FALSE(list.full());
}

TEST(ListLines, count_what_stands_beside_the_texts)
{
    ListLines list;
    list.add("x", 0, 63'000'000);
    EXPECT_TRUE(list.has_room_for(400'000));
    EXPECT_FALSE(list.has_room_for(500'000));
}

TEST(ListLines, can_be_cut)
{
    ListLines list;
    for (const char* const text : {"a", "b", "c"})
        list.add(text, 1);
    list.cut(5);
    EXPECT_EQ(list.list_count(), 3U);
    list.cut(1);
    EXPECT_EQ(list.lines(), (std::vector<std::string>{"01 - a"}));
}

TEST(InOneLine, makes_each_cr_lf_one_blank_and_leaves_the_rest)
{
    EXPECT_EQ(in_one_line("a\r\nb\r\n\r\nc"), "a b  c");
    EXPECT_EQ(in_one_line("a\rb\nc\td"), "a\rb\nc\td");
    EXPECT_EQ(in_one_line(""), "");
}

TEST(TextOfLine, is_what_stands_behind_the_score)
{
    EXPECT_EQ(text_of_line("02 - France?"), "France?");
    EXPECT_EQ(text_of_line("123 - France?"), "France?");
    EXPECT_EQ(text_of_line("02 - well-known - or not?"), "well-known - or not?");
    EXPECT_EQ(text_of_line("02 - -x-"), "-x-");
}

TEST(TextOfLine, loses_one_blank_behind_the_hyphen_and_no_other)
{
    EXPECT_EQ(text_of_line("02 -   France? "), "  France? ");
}

TEST(TextOfLine, may_be_nothing)
{
    for (const char* const line : {"", "02", "02 -", "02 - "})
        EXPECT_EQ(text_of_line(line), "") << line;
}

TEST(TextOfLine, ends_before_the_answer)
{
    EXPECT_EQ(text_of_line("02 - France?  --->  Paris"), "France?");
    EXPECT_EQ(text_of_line("02 -   France?    --->  "), "France?");
    EXPECT_EQ(text_of_line("02 - France?  --->  a  --->  b"), "France?");
    EXPECT_EQ(text_of_line("02 - France?--->Paris"), "France?");
    EXPECT_EQ(text_of_line("02 -   --->  Paris"), "");
    EXPECT_EQ(text_of_line("02 - a --> b ---"), "a --> b ---");
}

TEST(TextOfLine, loses_every_mark)
{
    EXPECT_EQ(text_of_line("00 - Capital* of* France*?"), "Capital of France?");
    EXPECT_EQ(text_of_line("00 - ***"), "");
    EXPECT_EQ(text_of_line("00 - France*?  --->  Paris*"), "France?");
}

TEST(RemoveChar, removes_each_of_one_character)
{
    EXPECT_EQ(remove_char("*a**b*", '*'), "ab");
    EXPECT_EQ(remove_char("ab", '*'), "ab");
    EXPECT_EQ(remove_char("", '*'), "");
}

} // namespace
} // namespace cuedrill::bank
