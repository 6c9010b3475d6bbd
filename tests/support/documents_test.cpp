#include "fakes/fake_desktop.h"
#include "fakes/fake_files.h"
#include "fakes/fake_shell.h"
#include "support/documents.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace cuedrill::support {
namespace {

using Calls = std::vector<std::string>;

TEST(WebAddress, begins_with_a_protocol_or_www)
{
    for (const char* address : {"https://example.org", "http://example.org", "ftp://example.org", "www.example.org",
                                "HTTPS://EXAMPLE.ORG", "Www.example.org", "http://"})
        EXPECT_TRUE(is_web_address(address)) << address;
}

TEST(WebAddress, is_nothing_else)
{
    for (const char* other : {"", "http:/example.org", "https:", "ftps://example.org", "file:///home", "www",
                              " http://example.org", "/www.example.org", "example.org"})
        EXPECT_FALSE(is_web_address(other)) << other;
}

class DocumentsTest : public testing::Test {
protected:
    void expect_exclamation(const std::string& text)
    {
        desktop.expect_box_like({.text = text, .icon = platform::BoxIcon::exclamation}, platform::BoxAnswer::ok);
    }
    void expect_no_program(const std::string& what)
    {
        expect_exclamation("No program was found that opens " + what +
                           ".\r\n\r\nInstall one, or choose one in the settings of your desktop.");
    }

    fakes::FakeFiles files;
    fakes::FakeShell shell;
    fakes::FakeDesktop desktop;
    Documents documents{files, shell, desktop};
};

TEST_F(DocumentsTest, opens_a_file_in_its_folder)
{
    files.files["/home/anna/notes/verbs.txt"] = "";
    documents.open_document("/home/anna/notes/verbs.txt");
    EXPECT_EQ(shell.calls, Calls{"open /home/anna/notes/verbs.txt in /home/anna/notes"});
}

TEST_F(DocumentsTest, opens_a_file_at_a_section)
{
    files.files["/home/anna/my #1 100% \u00fcben/a-b_c~d.html"] = "";
    documents.open_document("/home/anna/my #1 100% \u00fcben/a-b_c~d.html", "lists");
    EXPECT_EQ(shell.calls, Calls{"open file:///home/anna/my%20%231%20100%25%20%C3%BCben/a-b_c~d.html#lists in "
                                 "/home/anna/my #1 100% \u00fcben"});
}

TEST_F(DocumentsTest, opens_a_file_at_its_beginning_where_no_program_opens_a_section)
{
    files.files["/home/anna/manual.html"] = "";
    shell.has_programs = false;
    expect_no_program("/home/anna/manual.html");
    documents.open_document("/home/anna/manual.html", "lists");
    EXPECT_EQ(shell.calls, (Calls{"open file:///home/anna/manual.html#lists in /home/anna",
                                  "open /home/anna/manual.html in /home/anna"}));
}

TEST_F(DocumentsTest, opens_a_web_address_without_a_section)
{
    documents.open_document("https://example.org/cuedrill", "lists");
    EXPECT_EQ(shell.calls, Calls{"open https://example.org/cuedrill in "});
}

TEST_F(DocumentsTest, names_a_missing_file_without_its_section)
{
    expect_exclamation("Path not found: /home/anna/manual.html");
    documents.open_document("/home/anna/manual.html", "lists");
    EXPECT_EQ(shell.calls, Calls{});
}

TEST_F(DocumentsTest, opens_a_file_of_the_top_folder_in_that)
{
    files.files["/verbs.txt"] = "";
    documents.open_document("/verbs.txt");
    EXPECT_EQ(shell.calls, Calls{"open /verbs.txt in /"});
}

TEST_F(DocumentsTest, takes_a_relative_name_against_the_working_folder)
{
    files.links["verbs.txt"] = "/home/anna/verbs.txt";
    files.files["/home/anna/verbs.txt"] = "";
    documents.open_document("verbs.txt");
    EXPECT_EQ(shell.calls, Calls{"open /home/anna/verbs.txt in /home/anna"});
}

TEST_F(DocumentsTest, shows_a_folder)
{
    files.folders.insert("/home/anna/notes");
    documents.open_document("/home/anna/notes");
    EXPECT_EQ(shell.calls, Calls{"folder /home/anna/notes"});
}

TEST_F(DocumentsTest, shows_a_folder_of_a_relative_name)
{
    files.links["notes"] = "/home/anna/notes";
    files.folders.insert("/home/anna/notes");
    documents.open_document("notes");
    EXPECT_EQ(shell.calls, Calls{"folder /home/anna/notes"});
}

TEST_F(DocumentsTest, opens_a_web_address_without_a_folder)
{
    documents.open_document("https://example.org/a?b=c");
    EXPECT_EQ(shell.calls, Calls{"open https://example.org/a?b=c in "});
}

TEST_F(DocumentsTest, prefers_a_file_to_a_web_address_of_that_name)
{
    files.links["www.notes"] = "/home/anna/www.notes";
    files.files["/home/anna/www.notes"] = "";
    documents.open_document("www.notes");
    EXPECT_EQ(shell.calls, Calls{"open /home/anna/www.notes in /home/anna"});
}

TEST_F(DocumentsTest, takes_only_what_stands_before_a_line_end)
{
    files.files["/home/anna/verbs.txt"] = "";
    documents.open_document("/home/anna/verbs.txt\r\nand more\rand more");
    documents.open_document("www.example.org\rverbs");
    EXPECT_EQ(shell.calls, (Calls{"open /home/anna/verbs.txt in /home/anna", "open www.example.org in "}));
}

TEST_F(DocumentsTest, tells_a_path_that_is_not_found)
{
    expect_exclamation("Path not found: /home/anna/nothing.txt");
    documents.open_document("/home/anna/nothing.txt\r\nsecond line");
    EXPECT_EQ(shell.calls, Calls{});
}

TEST_F(DocumentsTest, finds_nothing_of_an_empty_name)
{
    expect_exclamation("Path not found: ");
    documents.open_document("\r\nwww.example.org");
    EXPECT_EQ(shell.calls, Calls{});
}

TEST_F(DocumentsTest, tells_that_there_is_no_program_for_a_file)
{
    shell.has_programs = false;
    files.files["/home/anna/verbs.xyz"] = "";
    expect_no_program("/home/anna/verbs.xyz");
    documents.open_document("/home/anna/verbs.xyz");
    EXPECT_EQ(shell.calls.size(), 1U);
}

TEST_F(DocumentsTest, tells_that_there_is_no_program_for_a_folder)
{
    shell.has_programs = false;
    files.folders.insert("/home/anna/notes");
    expect_no_program("/home/anna/notes");
    documents.open_document("/home/anna/notes");
    EXPECT_EQ(shell.calls.size(), 1U);
}

TEST_F(DocumentsTest, tells_that_there_is_no_program_for_a_web_address)
{
    shell.has_programs = false;
    expect_no_program("www.example.org");
    documents.open_document("www.example.org");
    EXPECT_EQ(shell.calls.size(), 1U);
}

} // namespace
} // namespace cuedrill::support
