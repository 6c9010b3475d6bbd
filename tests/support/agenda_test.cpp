#include "fakes/fake_desktop.h"
#include "fakes/fake_files.h"
#include "fakes/fake_shell.h"
#include "support/agenda.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace cuedrill::support {
namespace {

using Calls = std::vector<std::string>;

constexpr const char* folder = "/home/anna/.local/share/cuedrill";
constexpr const char* file = "/home/anna/.local/share/cuedrill/agenda.txt";

class AgendaTest : public testing::Test {
protected:
    void expect_exclamation(const std::string& text)
    {
        desktop.expect_box_like({.text = text, .icon = platform::BoxIcon::exclamation}, platform::BoxAnswer::ok);
    }
    void open() { agenda.open_agenda(); }

    fakes::FakeFiles files;
    fakes::FakeShell shell;
    fakes::FakeDesktop desktop;
    Agenda agenda{files, shell, desktop, folder};
};

TEST_F(AgendaTest, is_created_with_its_heading)
{
    open();
    EXPECT_EQ(files.files[file], "          CUEDRILL agenda\r\n          ===============\r\n");
    EXPECT_EQ(files.files.size(), 1U);
}

TEST_F(AgendaTest, is_opened_in_the_editor_and_its_process_remembered)
{
    EXPECT_EQ(agenda.task_id(), std::nullopt);
    open();
    EXPECT_EQ(shell.calls, Calls{std::string("edit ") + file});
    EXPECT_EQ(agenda.task_id(), 4711);
}

TEST_F(AgendaTest, is_never_touched_when_it_exists)
{
    files.files[file] = "Monday: verbs";
    files.replacement_failure = "It was touched.";
    files.append_failure = "It was touched.";
    open();
    EXPECT_EQ(files.files[file], "Monday: verbs");
    EXPECT_EQ(shell.calls, Calls{std::string("edit ") + file});
}

TEST_F(AgendaTest, makes_the_programs_folder_the_working_folder)
{
    open();
    EXPECT_EQ(files.changed_to, folder);
}

TEST_F(AgendaTest, leaves_the_working_folder_where_the_programs_folder_lies_in_the_network)
{
    Agenda in_network(files, shell, desktop, "\\\\server\\cuedrill");
    in_network.open_agenda();
    EXPECT_EQ(files.changed_to, "");
    EXPECT_EQ(shell.calls, Calls{"edit \\\\server\\cuedrill/agenda.txt"});
}

TEST_F(AgendaTest, takes_one_backslash_for_no_network)
{
    Agenda elsewhere(files, shell, desktop, "\\cuedrill");
    elsewhere.open_agenda();
    EXPECT_EQ(files.changed_to, "\\cuedrill");
}

TEST_F(AgendaTest, that_cannot_be_created_is_told_and_not_opened)
{
    for (std::string* failure : {&files.replacement_failure, &files.write_failure, &files.finish_failure}) {
        *failure = "Cannot write /x: No space left on device.";
        expect_exclamation("The agenda could not be created.\r\n\r\nCannot write /x: No space left on device.");
        open();
        desktop.check_all_shown();
        failure->clear();
    }
    EXPECT_FALSE(files.files.contains(file));
    EXPECT_EQ(shell.calls, Calls{});
    EXPECT_EQ(files.changed_to, "");
    EXPECT_EQ(agenda.task_id(), std::nullopt);
}

TEST_F(AgendaTest, without_an_editor_is_told)
{
    open();
    shell.has_programs = false;
    files.changed_to.clear();
    expect_exclamation(std::string("No text editor was found that opens ") + file +
                       ".\r\n\r\nInstall one, or choose one in the settings of your desktop.");
    open();
    EXPECT_EQ(files.changed_to, "");
    EXPECT_EQ(agenda.task_id(), 4711) << "the editor that was started before";
}

TEST_F(AgendaTest, tells_that_the_working_folder_cannot_be_changed)
{
    files.change_folder_failure = "Cannot change to /x: Permission denied.";
    expect_exclamation("The program's folder could not be made the working folder.\r\n\r\nCannot change to /x: "
                       "Permission denied.");
    open();
    EXPECT_EQ(agenda.task_id(), 4711);
}

} // namespace
} // namespace cuedrill::support
