#include "store/side_fields.h"

#include <gtest/gtest.h>

namespace cuedrill::store {
namespace {

void expect_side(const SideFields& side, const std::string& letter)
{
    EXPECT_EQ(side.text, letter);
    EXPECT_EQ(side.attempts, letter + "_attempts");
    EXPECT_EQ(side.fails, letter + "_fails");
    EXPECT_EQ(side.successes, letter + "_successes");
    EXPECT_EQ(side.date_last_test, letter + "_date_last_test");
    EXPECT_EQ(side.date_last_show, letter + "_date_last_show");
}

TEST(SideFields, asks_the_question_side_when_not_inverted)
{
    const SideMapping mapping = set_side_fields(false);
    expect_side(mapping.Q_FIELD, "q");
    expect_side(mapping.A_FIELD, "a");
}

TEST(SideFields, asks_the_answer_side_when_inverted)
{
    const SideMapping mapping = set_side_fields(true);
    expect_side(mapping.Q_FIELD, "a");
    expect_side(mapping.A_FIELD, "q");
}

} // namespace
} // namespace cuedrill::store
