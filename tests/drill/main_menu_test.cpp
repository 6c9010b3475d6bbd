#include "drill/drill_fixture.h"

#include <set>
#include <vector>

namespace cuedrill::drill {
namespace {

using Captions = std::vector<std::string>;

const std::set<std::string> without_command{"m_compact", "m_repair", "clearall", "m_cuecards"};

class Menus : public DrillFixture {
protected:
    [[nodiscard]] Captions captions(std::string_view menu) const
    {
        Captions result;
        for (const auto& one : form1.menu_bar.menu(menu).entries)
            result.push_back(one->caption_value);
        return result;
    }
};

TEST_F(Menus, stand_in_their_order)
{
    make_program();
    Captions menus;
    for (const auto& menu : form1.menu_bar.menus)
        menus.push_back(menu->caption);
    EXPECT_EQ(menus, (Captions{"&File", "&Options", "&Lists", "&Actions", "&Show", "F&ind", "&?"}));
}

TEST_F(Menus, have_their_entries_in_order)
{
    make_program();
    EXPECT_EQ(captions("m_file"),
              (Captions{"&Open a course", "&Create a new course", "Change &title of current course",
                        "&Compact data base (not available)", "&Repair data base (not available)",
                        "&Import questions and answers from text file", "E&xport questions and answers to text file",
                        "&Delete all questions and answers", "&Exit"}));
    EXPECT_EQ(captions("options"), (Captions{"&Cue cards", "Always &let me type the answer", "Always show &hints",
                                             "Change &target level  (now ...)", "&Random extraction of questions",
                                             "&Invert questions/answers"}));
    EXPECT_EQ(captions("m_list"), (Captions{"Questions with some &identical words as current question",
                                            "All questions ordered &alphabetically", "All questions ordered by &score",
                                            "All questions orderd by &creation date",
                                            "All questions ordered by date &last shown (descending)",
                                            "&All questions ordered by date last show (ascending)",
                                            "All questions a&nd answers ordered alphabetically"}));
    EXPECT_EQ(captions("m_commands"),
              (Captions{"Show answer (A or *)", "Set success (+)", "Set failure (-)", "Display next question (Q)",
                        "&Edit current question/answer (E)", "&Delete current question/answer (D)",
                        "Undo &previous question result", "&Reset all counters", "Open &agenda"}));
    EXPECT_EQ(captions("m_show"), (Captions{"Show &statistics", "Show &hints", "Show number of &mature questions",
                                            "Show current question &number", "Show all questions", "Show &history"}));
    EXPECT_EQ(captions("m_find"), (Captions{"Find question", "Find answer", "&Recall last list"}));
    EXPECT_EQ(captions("helps"),
              (Captions{"&Help (user manual)", "H&ow to get context help", "Score / elapsed time table",
                        "Version history", "Author's &web site", "&About Cuedrill"}));
}

TEST_F(Menus, show_entries_without_a_command_disabled)
{
    start_with_three_questions();
    for (const std::string& name : without_command)
        EXPECT_FALSE(entry(name).is_enabled) << name;
    for (const char* name :
         {"m_open", "m_new", "m_change_course_title", "m_import", "m_exit", "m_always_let_me_type", "m_list_mode",
          "m_change_target_level", "m_random_extraction", "m_invert", "m_display_next_question", "m_undo",
          "m_reset_all", "m_disp_nr_mature", "m_score_elapsed_table"})
        EXPECT_TRUE(entry(name).is_enabled) << name;
}

TEST_F(Menus, every_other_entry_has_a_command)
{
    make_program();
    for (const auto& menu : form1.menu_bar.menus) {
        for (const auto& one : menu->entries)
            EXPECT_NE(static_cast<bool>(one->on_click), without_command.contains(one->name)) << one->name;
    }
}

TEST_F(Menus, enable_what_needs_a_question_only_while_there_is_one)
{
    start_with_three_questions();
    const auto expect_enabled = [this](bool enabled) {
        for (const char* name : {"m_show_answer", "m_set_success", "m_set_failure", "m_edit", "m_display_q_nr"})
            EXPECT_EQ(entry(name).is_enabled, enabled) << name;
    };
    expect_enabled(false);
    yes();
    expect_enabled(true);
    no();
    no();
    desktop.expect_box(nothing_mature);
    no();
    expect_enabled(false);
}

TEST_F(Menus, check_the_options_of_the_course)
{
    builder.number_param("random_mode", 1).number_param("invert", 0);
    builder.number_param("list_mode", 1).number_param("always_type", 0);
    start_with_three_questions();
    EXPECT_TRUE(entry("m_list_mode").checked);
    EXPECT_FALSE(entry("m_always_let_me_type").checked);
    EXPECT_TRUE(entry("m_random_extraction").checkable);
    EXPECT_TRUE(entry("m_invert").checkable);
    EXPECT_TRUE(entry("m_random_extraction").checked);
    EXPECT_FALSE(entry("m_invert").checked);
    desktop.expect_box("Mature questions of a given level will be extracted ordered by date of last test");
    choose("m_random_extraction");
    EXPECT_FALSE(entry("m_random_extraction").checked);
    choose("m_invert");
    EXPECT_TRUE(entry("m_invert").checked);
}

TEST_F(Menus, name_the_target_level_when_a_course_is_loaded)
{
    builder.number_param("target_level", 3);
    start_with_three_questions();
    EXPECT_EQ(entry("m_change_target_level").caption_value, "Change &target level  (now 3)");
    EXPECT_EQ(form1.screen.lab_nr_unpassed.text, "q. unpassed (level <3)");
}

TEST_F(Menus, name_the_target_level_after_a_change)
{
    start_with_three_questions();
    desktop.expect_input("New target level (1 to 10)?", "7");
    choose("m_change_target_level");
    EXPECT_EQ(entry("m_change_target_level").caption_value, "Change target level (now 7)");
    EXPECT_EQ(form1.screen.lab_nr_unpassed.text, "q. unpassed (level <7)");
    EXPECT_EQ(fakes::read_course(path).number("target_level"), 7);
}

} // namespace
} // namespace cuedrill::drill
