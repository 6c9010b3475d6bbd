#include "common/text.h"
#include "drill/commands.h"

#include <cctype>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <set>
#include <string>

namespace cuedrill::drill {
namespace {

constexpr std::size_t commands = static_cast<std::size_t>(Command::save) + 1;

TEST(CommandTable, has_each_command_once)
{
    std::set<Command> seen;
    for (const CommandRow& row : command_table())
        EXPECT_TRUE(seen.insert(row.command).second) << static_cast<int>(row.command);
    EXPECT_EQ(seen.size(), commands);
}

TEST(CommandTable, gives_each_command_an_entry_or_a_button_or_a_key_with_ctrl)
{
    for (const CommandRow& row : command_table())
        EXPECT_TRUE(row.entry || row.button || row.control_key != no_key) << static_cast<int>(row.command);
}

TEST(CommandTable, names_each_entry_once)
{
    std::set<std::string> names;
    for (const CommandRow& row : command_table()) {
        if (row.entry) {
            EXPECT_TRUE(names.insert(row.entry->name).second) << row.entry->name;
        }
    }
}

TEST(CommandTable, numbers_the_buttons_without_a_gap)
{
    std::set<int> numbers;
    for (const CommandRow& row : command_table()) {
        if (row.button) {
            EXPECT_TRUE(numbers.insert(row.button->number).second) << row.button->number;
        }
    }
    ASSERT_FALSE(numbers.empty());
    EXPECT_EQ(*numbers.begin(), 1);
    EXPECT_EQ(*numbers.rbegin(), static_cast<int>(numbers.size()));
}

TEST(CommandTable, gives_no_key_twice)
{
    std::set<char> keys;
    for (const CommandRow& row : command_table()) {
        if (row.key != no_key) {
            EXPECT_TRUE(keys.insert(row.key).second) << row.key;
        }
    }
}

TEST(CommandTable, gives_each_key_with_ctrl_one_command_a_help_and_a_line_in_the_manual)
{
    std::ifstream file(CUEDRILL_MANUAL);
    const std::string manual{std::istreambuf_iterator<char>(file), {}};
    std::set<char> keys;
    for (const CommandRow& row : command_table()) {
        if (row.control_key == no_key)
            continue;
        EXPECT_TRUE(keys.insert(row.control_key).second) << row.control_key;
        EXPECT_EQ(command_with_control_key(row.control_key), row.command);
        EXPECT_FALSE(command_with_key(row.control_key)) << "Ctrl never runs the command of a single key";
        const std::string letter(1, static_cast<char>(std::toupper(row.control_key)));
        ASSERT_NE(row.help, nullptr);
        EXPECT_NE(std::string(row.help).find("Key: Ctrl+" + letter), std::string::npos) << letter;
        EXPECT_NE(manual.find("<kbd>Ctrl</kbd>+<kbd>" + letter + "</kbd>"), std::string::npos) << letter;
    }
    EXPECT_EQ(keys, (std::set<char>{'l', 'r'}));
    EXPECT_FALSE(command_with_control_key(no_key));
}

TEST(CommandTable, gives_each_key_a_help_that_names_it)
{
    for (const CommandRow& row : command_table()) {
        if (row.key == no_key)
            continue;
        ASSERT_NE(row.help, nullptr) << row.key;
        const std::string help = row.help;
        const std::size_t keys = help.rfind("\r\n\r\nKey");
        ASSERT_NE(keys, std::string::npos) << row.key;
        EXPECT_NE(help.find(static_cast<char>(std::toupper(row.key)), keys), std::string::npos) << row.key;
    }
}

TEST(CommandTable, is_told_in_the_manual)
{
    std::ifstream file(CUEDRILL_MANUAL);
    const std::string manual{std::istreambuf_iterator<char>(file), {}};
    ASSERT_FALSE(manual.empty());
    for (const CommandRow& row : command_table()) {
        if (!row.entry)
            continue;
        std::string caption = common::replace_all(row.entry->caption, "&", "");
        // What changes while the program runs is not told.
        caption = std::string(common::trim_blanks(caption.substr(0, caption.find("(now"))));
        EXPECT_NE(manual.find("<td>" + caption), std::string::npos) << caption;
    }
}

TEST(CommandTable, finds_the_row_of_each_command)
{
    for (const CommandRow& row : command_table())
        EXPECT_EQ(&row_of(row.command), &row);
}

} // namespace
} // namespace cuedrill::drill
