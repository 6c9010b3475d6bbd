#include "tools/manual_page.h"
#include "tools/verb.h"

#include <gtest/gtest.h>
#include <string>

namespace cuedrill::tools {
namespace {

TEST(ManualPage, has_a_section_for_each_verb_with_its_help_and_its_options)
{
    const std::string page = manual_page();
    for (const Verb& verb : all_verbs()) {
        const std::string words = std::string(verb.name) + " " + roff_text(verb.syntax.words);
        const std::size_t section = page.find("\n.SS " + words + "\n" + roff_text(verb.summary) + "\n");
        ASSERT_NE(section, std::string::npos) << verb.name;
        EXPECT_NE(page.find(roff_text(verb.help), section), std::string::npos) << verb.name;
        for (const Option& option : verb.syntax.options)
            EXPECT_NE(page.find(".TP\n\\fB" + roff_text(option.name), section), std::string::npos) << option.name;
    }
}

TEST(ManualPage, has_a_line_for_each_verb_in_its_synopsis)
{
    const std::string page = manual_page();
    const std::string synopsis = page.substr(0, page.find(".SH DESCRIPTION"));
    for (const Verb& verb : all_verbs())
        EXPECT_NE(synopsis.find("\\fBcuedrill\\-course " + std::string(verb.name) + "\\fR "), std::string::npos);
}

TEST(RoffText, keeps_what_roff_reads_as_its_own)
{
    EXPECT_EQ(roff_text(".TH"), "\\&.TH");
    EXPECT_EQ(roff_text("'quoted'"), "\\&\\(aqquoted\\(aq");
    EXPECT_EQ(roff_text("a.b\n.c\n"), "a.b\n\\&.c\n");
    EXPECT_EQ(roff_text("\\fB --x \"~^`\""), "\\efB \\-\\-x \\(dq\\(ti\\(ha\\(ga\\(dq");
    EXPECT_EQ(roff_text(""), "");
}

TEST(RoffText, fills_lines_but_not_those_that_begin_with_a_blank)
{
    EXPECT_EQ(roff_text("one\ntwo\n  a b\n  c\nthree\n"), "one\ntwo\n.nf\n  a b\n  c\n.fi\nthree\n");
    EXPECT_EQ(roff_text("one\n  a\n"), "one\n.nf\n  a\n.fi\n");
}

} // namespace
} // namespace cuedrill::tools
