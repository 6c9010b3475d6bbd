#include "tools/json.h"

#include <gtest/gtest.h>

namespace cuedrill::tools {
namespace {

TEST(Json, quotes_a_text)
{
    EXPECT_EQ(json_text(""), "\"\"");
    EXPECT_EQ(json_text("say \"ä\" \\ now"), "\"say \\\"ä\\\" \\\\ now\"");
    EXPECT_EQ(json_text("a\nb\x1f"), "\"a\\u000ab\\u001f\"");
    EXPECT_EQ(json_text("a\xff"), "\"a\xEF\xBF\xBD\"");
}

TEST(Json, lists_values)
{
    EXPECT_EQ(json_list({}), "[]");
    EXPECT_EQ(json_list({"1", "\"b\""}), "[1, \"b\"]");
}

} // namespace
} // namespace cuedrill::tools
