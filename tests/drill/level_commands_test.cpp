#include "drill/level_commands.h"
#include "drill/scoring_fixture.h"

#include <gtest/gtest.h>

namespace cuedrill::drill {
namespace {

using fakes::CourseBuilder;
using fakes::Operation;

const std::string prompt = "New target level (1 to 10)?";

class LevelTable : public ScoringFixture {};

TEST_F(LevelTable, is_told_in_minutes_and_days)
{
    desktop.expect_box_like({.text =
                                 "At least 0.1 minutes must elapse to pass from level 0 to 1\r\n"
                                 "At least 5.0 minutes must elapse to pass from level 1 to 2\r\n"
                                 "At least 60.0 minutes must elapse to pass from level 2 to 3\r\n"
                                 "At least 0.5 days must elapse to pass from level 3 to 4\r\n"
                                 "At least 2.0 days must elapse to pass from level 4 to 5\r\n"
                                 "At least 7.0 days must elapse to pass from level 5 to 6\r\n"
                                 "At least 20.0 days must elapse to pass from level 6 to 7\r\n"
                                 "At least 60.0 days must elapse to pass from level 7 to 8\r\n"
                                 "At least 120.0 days must elapse to pass from level 8 to 9\r\n"
                                 "At least 365.0 days must elapse to pass from level 9 to 10\r\n"
                                 "At least 0.1 minutes must elapse to show the same question after an unanswered test"},
                            platform::BoxAnswer::ok);
    level_commands.m_score_elapsed_table();
}

class TargetLevel : public ScoringFixture {
protected:
    TargetLevel()
    {
        CourseBuilder builder;
        builder.question("a").level(5);
        open(builder);
        options.show_course();
    }

    /// The menu entry with the target level.
    [[nodiscard]] std::string target_entry() const { return command_controls.entry(Command::change_target).caption(); }

    const std::string entry_before = "Change &target level  (now 5)";

    /// Gives the answers one after the other.
    void answer(std::initializer_list<const char*> answers)
    {
        for (const char* text : answers)
            desktop.expect_input(prompt, text);
        level_commands.m_change_target_level();
    }
};

TEST_F(TargetLevel, is_asked_for_with_the_present_one_filled_in)
{
    desktop.expect_input(prompt, std::nullopt);
    level_commands.m_change_target_level();
    ASSERT_EQ(desktop.inputs.size(), 1U);
    EXPECT_EQ(desktop.inputs[0].title, "Changing target level");
    EXPECT_EQ(desktop.inputs[0].default_text, "5");
}

TEST_F(TargetLevel, is_stored_and_shown_with_fresh_counts)
{
    answer({"6"});
    EXPECT_EQ(course.params.target_level, 6);
    EXPECT_EQ(file().number("target_level"), 6);
    EXPECT_EQ(target_entry(), "Change target level (now 6)");
    EXPECT_EQ(panels().unpassed, 1);
}

TEST_F(TargetLevel, is_unchanged_after_cancel_and_after_blanks)
{
    const auto before = file();
    desktop.expect_input(prompt, std::nullopt);
    level_commands.m_change_target_level();
    answer({""});
    answer({"   "});
    EXPECT_EQ(course.params.target_level, 5);
    EXPECT_EQ(file(), before);
    EXPECT_EQ(target_entry(), entry_before);
}

TEST_F(TargetLevel, is_asked_for_again_until_the_answer_is_a_level)
{
    answer({"11", "0", "-1", "abc", "10.1", "0.99", "5 6", "1e9", "nan", "0x5", "8"});
    EXPECT_EQ(course.params.target_level, 8);
    EXPECT_EQ(desktop.inputs.size(), 11U);
    EXPECT_TRUE(desktop.boxes.empty());
}

TEST_F(TargetLevel, is_given_up_by_an_empty_answer_after_a_wrong_one)
{
    answer({"11", ""});
    EXPECT_EQ(course.params.target_level, 5);
}

struct Accepted {
    const char* typed;
    common::Int16 level;
};

class AcceptedLevel : public TargetLevel, public testing::WithParamInterface<Accepted> {};

TEST_P(AcceptedLevel, is_the_whole_part_of_the_number)
{
    answer({GetParam().typed});
    EXPECT_EQ(course.params.target_level, GetParam().level);
    EXPECT_EQ(file().number("target_level"), GetParam().level);
}

INSTANTIATE_TEST_SUITE_P(Answers, AcceptedLevel,
                         testing::Values(Accepted{"1", 1}, Accepted{"10", 10}, Accepted{" 7 ", 7}, Accepted{"2.9", 2},
                                         Accepted{"3,7", 3}, Accepted{"3.7", 3}, Accepted{"+4", 4},
                                         Accepted{"9.999", 9}));

TEST_F(TargetLevel, when_raised_makes_the_notice_possible_again)
{
    course.all_passed_announced = true;
    answer({"6"});
    EXPECT_FALSE(course.all_passed_announced);
}

TEST_F(TargetLevel, when_lowered_or_kept_leaves_the_notice_alone)
{
    course.all_passed_announced = true;
    answer({"5.9"});
    EXPECT_TRUE(course.all_passed_announced);
    answer({"4"});
    EXPECT_TRUE(course.all_passed_announced);
}

/// Level, notice, file and window are unchanged.
TEST_F(TargetLevel, is_unchanged_when_it_cannot_be_stored)
{
    const auto before = file();
    course.all_passed_announced = true;
    database.fail_at(Operation::commit);
    desktop.expect_input(prompt, "9");
    EXPECT_THROW(level_commands.m_change_target_level(), platform::DatabaseError);
    EXPECT_EQ(course.params.target_level, 5);
    EXPECT_TRUE(course.all_passed_announced);
    EXPECT_EQ(file(), before);
    EXPECT_EQ(target_entry(), entry_before);
}

} // namespace
} // namespace cuedrill::drill
