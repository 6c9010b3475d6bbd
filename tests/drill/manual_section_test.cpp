// The section at which the manual opens.

#include "drill/drill_fixture.h"
#include "drill/drill_state.h"
#include "drill/manual_section.h"

#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace cuedrill::drill {
namespace {

TEST(ManualSection, is_in_the_manual_in_every_state)
{
    std::ifstream file(CUEDRILL_MANUAL);
    const std::string manual{std::istreambuf_iterator<char>(file), {}};
    DrillState state;
    for (std::size_t mode = 0; mode < modes; ++mode) {
        for (const SharedPlace place : {SharedPlace::statistics, SharedPlace::hint, SharedPlace::list}) {
            for (const DialogState dialog :
                 {DialogState::AskToStart, DialogState::OfferAnswer, DialogState::AskKnown}) {
                for (const bool typing : {false, true}) {
                    state.shared_place = place;
                    state.dialog = dialog;
                    state.TypingMode = typing;
                    const std::string section = manual_section(static_cast<Mode>(mode), state);
                    EXPECT_NE(manual.find(" id=\"" + section + "\">"), std::string::npos) << section;
                }
            }
        }
    }
}

TEST(ManualSection, is_about_writing_while_a_record_is_written_beside_a_list)
{
    DrillState state;
    state.shared_place = SharedPlace::list;
    EXPECT_STREQ(manual_section(Mode::new_record, state), "writing");
    EXPECT_STREQ(manual_section(Mode::edit_record, state), "writing");
    EXPECT_STREQ(manual_section(Mode::question, state), "lists");
}

TEST(ManualSection, is_about_the_hint_while_one_is_shown)
{
    DrillState state;
    state.shared_place = SharedPlace::hint;
    state.TypingMode = true;
    EXPECT_STREQ(manual_section(Mode::question, state), "hints");
}

TEST(ManualSection, is_about_the_choice_of_questions_where_none_is_mature)
{
    DrillState state;
    state.dialog = DialogState::OfferAnswer;
    EXPECT_STREQ(manual_section(Mode::nothing, state), "next");
}

TEST(ManualSection, is_about_filling_a_course_without_questions)
{
    EXPECT_STREQ(manual_section(Mode::empty_course, {}), "own-course");
}

/// What "Help (user manual)" opens when the manual is a file.
class ManualInTheMenu : public DrillFixture {
protected:
    using Calls = std::vector<std::string>;

    void SetUp() override
    {
        web_page = (folder.path() / "index.html").string();
        std::ofstream(web_page) << "manual";
    }

    Calls opened_by_help()
    {
        shell.calls.clear();
        desktop.on_box = [this] { desktop.expect_box(desktop.boxes.back().text, platform::BoxAnswer::ok); };
        choose("helpcall");
        desktop.on_box = {};
        return shell.calls;
    }

    [[nodiscard]] Calls section(const std::string& name) const
    {
        return {"open file://" + web_page + "#" + name + " in " + folder.path().string()};
    }
};

TEST_F(ManualInTheMenu, opens_at_what_the_user_is_doing)
{
    start_with_three_questions();
    EXPECT_EQ(opened_by_help(), section("first-drill"));
    yes();
    EXPECT_EQ(opened_by_help(), section("first-drill"));
    toolbar(5);
    EXPECT_EQ(opened_by_help(), section("typing"));
    yes();
    EXPECT_EQ(opened_by_help(), section("levels"));
    choose("m_show_all");
    EXPECT_EQ(opened_by_help(), section("lists"));
    toolbar(9);
    EXPECT_EQ(opened_by_help(), section("writing"));
}

TEST_F(ManualInTheMenu, opens_at_its_beginning_as_the_web_site)
{
    start_with_three_questions();
    yes();
    choose("m_web_site");
    EXPECT_EQ(shell.calls, (Calls{"open " + web_page + " in " + folder.path().string()}));
}

} // namespace
} // namespace cuedrill::drill
