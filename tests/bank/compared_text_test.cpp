#include "bank/compared_text.h"
#include "platform/icu/icu_text_compare.h"

#include <gtest/gtest.h>

namespace cuedrill::bank {
namespace {

TEST(SameText, is_a_matter_neither_of_case_nor_of_line_ends_nor_of_composition)
{
    const platform::icu::IcuTextCompare text_compare;
    EXPECT_TRUE(same_text("Caf\u00E9", "CAFE\u0301", text_compare));
    EXPECT_TRUE(same_text("a\r\nb", "a\nb", text_compare));
    EXPECT_FALSE(same_text("Caf\u00E9", "Cafe", text_compare));
    EXPECT_FALSE(same_text("a b", "a\nb", text_compare));
}

} // namespace
} // namespace cuedrill::bank
