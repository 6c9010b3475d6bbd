#include "tools/arguments.h"

#include <array>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <vector>

namespace cuedrill::tools {
namespace {

using Line = std::vector<std::string>;

constexpr std::array<Option, 2> options{{{"--to", "FILE", "Where to."}, {"--json", "", "In JSON."}}};

Arguments parse(const Line& line)
{
    return {line, {"COURSE [TIME]", 1, 2, options}};
}

std::string complaint_about(const Line& line)
{
    try {
        static_cast<void>(parse(line));
    } catch (const UsageError& error) {
        return error.what();
    }
    return "none";
}

TEST(Arguments, are_words_and_options_in_any_order)
{
    const Arguments arguments = parse({"--json", "a.crs", "--to", "b.crs", "2026"});
    EXPECT_EQ(arguments.word(0), "a.crs");
    EXPECT_EQ(arguments.word(1), "2026");
    EXPECT_EQ(arguments.word(2), "");
    EXPECT_TRUE(arguments.has("--json"));
    EXPECT_EQ(arguments.value("--to"), "b.crs");
}

TEST(Arguments, that_are_missing_are_empty)
{
    const Arguments arguments = parse({"a.crs"});
    EXPECT_EQ(arguments.word(1), "");
    EXPECT_FALSE(arguments.has("--json"));
    EXPECT_EQ(arguments.value("--to"), std::nullopt);
}

TEST(Arguments, have_values_behind_an_equals_sign_too)
{
    EXPECT_EQ(parse({"a.crs", "--to=b=c.crs"}).value("--to"), "b=c.crs");
}

TEST(Arguments, behind_two_hyphens_are_words)
{
    EXPECT_EQ(parse({"--", "--to", "--"}).word(0), "--to");
    EXPECT_EQ(parse({"--", "--to", "--"}).word(1), "--");
}

TEST(Arguments, that_are_not_understood_are_told)
{
    EXPECT_EQ(complaint_about({}), "Something is missing.");
    EXPECT_EQ(complaint_about({"a", "b", "c"}), "There is too much: c.");
    EXPECT_EQ(complaint_about({"a", "--salvage", "c"}), "There is no option --salvage.");
    EXPECT_EQ(complaint_about({"a", "--to"}), "The option --to needs a value.");
    EXPECT_EQ(complaint_about({"a", "--to="}), "The option --to needs a value.");
    EXPECT_EQ(complaint_about({"a", "--json=yes"}), "The option --json takes no value.");
    EXPECT_EQ(complaint_about({"a", "--json", "--json"}), "The option --json stands twice.");
    EXPECT_EQ(complaint_about({"a"}), "none");
}

} // namespace
} // namespace cuedrill::tools
