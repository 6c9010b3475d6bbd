#include "fakes/fake_desktop.h"
#include "fakes/fake_f_msgbox.h"
#include "fakes/fake_files.h"
#include "fakes/fake_shell.h"
#include "support/help.h"
#include "support/version_history.h"

#include <fstream>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace cuedrill::support {
namespace {

using Calls = std::vector<std::string>;

constexpr const char* page = "/usr/share/doc/cuedrill/manual/index.html";
constexpr const char* open_page = "open /usr/share/doc/cuedrill/manual/index.html in /usr/share/doc/cuedrill/manual";

class HelpTest : public testing::Test {
protected:
    HelpTest()
    {
        box.attach();
        files.files[page] = "";
    }

    void expect_help(platform::BoxAnswer answer)
    {
        desktop.expect_box_like({.text = "The help file is still under construction.\r\n\r\nInformation about the "
                                         "program is available on the product's web page. OK opens that page now.",
                                 .buttons = platform::BoxButtons::ok_cancel,
                                 .icon = platform::BoxIcon::question},
                                answer);
    }

    fakes::FakeFMsgbox f_msgbox;
    fakes::FakeFiles files;
    fakes::FakeShell shell;
    fakes::FakeDesktop desktop;
    BigBox box{f_msgbox.controls};
    Documents documents{files, shell, desktop};
    HelpCommands help{box, documents, desktop, page};
};

TEST_F(HelpTest, shows_the_version_history_in_the_message_window)
{
    help.release_notes();
    EXPECT_TRUE(f_msgbox.window.shown);
    EXPECT_EQ(f_msgbox.window.caption, "Cuedrill - Version history");
    EXPECT_EQ(f_msgbox.Text1.text_value, release_notes_text());
}

TEST_F(HelpTest, tells_version_and_licence)
{
    desktop.expect_box_like(
        {.text = "Cuedrill version " + program_version() +
                 "\r\n\r\nCopyright (c) 2026 Cuedrill developers\r\nCuedrill is free software under the MIT License; "
                 "it comes without any warranty.\r\n\r\nIt is built with Qt (GNU Lesser General Public License), "
                 "SQLite (public domain) and ICU (Unicode License).",
         .icon = platform::BoxIcon::program},
        platform::BoxAnswer::ok);
    help.show_about();
}

TEST_F(HelpTest, tells_whose_the_copyright_is_as_the_licence_does)
{
    std::ifstream licence(LICENCE);
    std::string line;
    while (std::getline(licence, line) && !line.starts_with("Copyright"))
        continue;
    ASSERT_FALSE(line.empty());
    desktop.on_box = [&] { desktop.expect_box(desktop.boxes.back().text); };
    help.show_about();
    EXPECT_NE(desktop.boxes.back().text.find("\r\n" + line + "\r\n"), std::string::npos) << line;
}

TEST_F(HelpTest, opens_the_web_page_when_the_user_wants_help_from_there)
{
    expect_help(platform::BoxAnswer::ok);
    help.show_help("lists");
    EXPECT_EQ(shell.calls, Calls{"open file:///usr/share/doc/cuedrill/manual/index.html#lists in "
                                 "/usr/share/doc/cuedrill/manual"});
}

TEST_F(HelpTest, opens_nothing_when_the_user_does_not)
{
    expect_help(platform::BoxAnswer::cancel);
    help.show_help("lists");
    EXPECT_EQ(shell.calls, Calls{});
}

TEST_F(HelpTest, opens_the_web_page)
{
    help.m_web_site();
    EXPECT_EQ(shell.calls, Calls{open_page});
}

TEST_F(HelpTest, tells_that_the_web_page_is_missing)
{
    files.files.clear();
    desktop.expect_box(std::string("Path not found: ") + page);
    help.m_web_site();
    EXPECT_EQ(shell.calls, Calls{});
}

} // namespace
} // namespace cuedrill::support
