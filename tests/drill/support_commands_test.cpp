#include "drill/drill_fixture.h"
#include "support/version_history.h"

namespace cuedrill::drill {
namespace {

/// The menu entries that open something outside the main window.
class SupportCommands : public DrillFixture {
protected:
    void SetUp() override { start_with_three_questions(); }
};

TEST_F(SupportCommands, show_the_version_history_in_the_message_window)
{
    choose("m_version_history");
    EXPECT_TRUE(f_msgbox.window.shown);
    EXPECT_EQ(f_msgbox.window.caption, "Cuedrill - Version history");
    EXPECT_EQ(f_msgbox.Text1.text_value, support::release_notes_text());
}

TEST_F(SupportCommands, tell_the_version)
{
    desktop.on_box = [this] {
        EXPECT_TRUE(desktop.boxes.back().text.starts_with("Cuedrill version " + support::program_version()));
        desktop.expect_box(desktop.boxes.back().text);
    };
    choose("m_about");
}

TEST_F(SupportCommands, lead_to_the_web_page)
{
    choose("m_web_site");
    EXPECT_EQ(shell.calls, (std::vector<std::string>{"open https://example.org/cuedrill in "}));
}

TEST_F(SupportCommands, offer_the_web_page_as_help)
{
    desktop.on_box = [this] { desktop.expect_box(desktop.boxes.back().text, platform::BoxAnswer::ok); };
    choose("helpcall");
    EXPECT_EQ(shell.calls, (std::vector<std::string>{"open https://example.org/cuedrill in "}));
}

TEST_F(SupportCommands, open_the_agenda)
{
    const std::string working_folder = std::filesystem::current_path().string();
    choose("m_agenda");
    EXPECT_EQ(shell.calls, (std::vector<std::string>{"edit " + (folder.path() / "agenda.txt").string()}));
    std::filesystem::current_path(working_folder);
}

TEST_F(SupportCommands, export_the_course_and_open_the_file)
{
    const std::string file = (folder.path() / "out.txt").string();
    desktop.expect_save_file({.path = file, .title = "out.txt"});
    desktop.expect_box("Do you want to include questions numbers in the exported file?", platform::BoxAnswer::no);
    desktop.expect_box("3 questions and answers exported. Do you want to open the exported file?",
                       platform::BoxAnswer::yes);
    choose("m_export");
    EXPECT_EQ(shell.calls, (std::vector<std::string>{"open " + file + " in " + folder.path().string()}));
}

} // namespace
} // namespace cuedrill::drill
