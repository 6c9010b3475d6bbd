#include "fakes/course_builder.h"
#include "keep/removed_entry.h"

#include <gtest/gtest.h>
#include <string>

namespace cuedrill::keep {
namespace {

class RemovedEntry : public testing::Test {
protected:
    [[nodiscard]] std::string entry(const std::string& question, const std::string& answer) const
    {
        return entry_of({.when = when, .course = course, .reason = reason, .texts = {.q = question, .a = answer}},
                        engine.text_compare);
    }

    /// The comment about an import, without its beginning; empty if there is none.
    [[nodiscard]] std::string remark(const std::string& question, const std::string& answer) const
    {
        static const std::string begin = "/*/ An import does not bring this back as it was. ";
        const std::string text = entry(question, answer);
        const std::size_t at = text.find(begin);
        if (at == std::string::npos)
            return "";
        const std::size_t from = at + begin.size();
        return text.substr(from, text.find("\r\n", from) - from);
    }

    fakes::RealEngine engine;
    common::DateTime when =
        common::DateTime::from_fields({.year = 2026, .month = 11, .day = 22, .hour = 9, .minute = 5, .second = 7});
    std::string course = "/home/anna/Capitals.crs";
    Reason reason = Reason::deleted;
};

TEST_F(RemovedEntry, says_when_why_and_from_which_course)
{
    EXPECT_EQ(entry("France?", "Paris"), "/*/ 22/11/2026 09:05:07, deleted\r\n"
                                         "/*/ from /home/anna/Capitals.crs\r\n"
                                         "@Q@\r\nFrance?\r\n@A@\r\nParis\r\n\r\n"
                                         "/*/ ------------------------\r\n");
    reason = Reason::replaced;
    EXPECT_TRUE(entry("a", "b").starts_with("/*/ 22/11/2026 09:05:07, replaced by an edit\r\n"));
    reason = Reason::unsaved;
    EXPECT_TRUE(entry("a", "b").starts_with("/*/ 22/11/2026 09:05:07, typed and not saved\r\n"));
}

TEST_F(RemovedEntry, keeps_the_path_of_the_course_on_one_line)
{
    course = "/home/anna/a\r\nb\nc\rd\u2028e @Q@.crs";
    EXPECT_NE(entry("a", "b").find("/*/ from /home/anna/a b c d e @Q@.crs\r\n@Q@\r\na\r\n"), std::string::npos);
}

TEST_F(RemovedEntry, says_nothing_about_a_text_that_comes_back)
{
    for (const char* text : {"France?", "a\r\n\r\nb", "/*/ no comment", "a\r", "\na\n", "/*/", "@Q", "@", "é"})
        EXPECT_EQ(remark(text, text), "") << text;
    EXPECT_EQ(remark("a @Q@ b", "a @A@ b"), "");
    EXPECT_EQ(remark(std::string(200, 'q'), std::string(200, 'a')), "");
}

TEST_F(RemovedEntry, puts_a_text_that_begins_like_a_comment_behind_its_marker)
{
    EXPECT_NE(entry("/*/ q", "/*/ a").find("@Q@ /*/ q\r\n@A@ /*/ a\r\n"), std::string::npos);
}

TEST_F(RemovedEntry, says_what_an_import_changes)
{
    EXPECT_EQ(remark("a @a@ b", "c"), "The question holds \"@A@\".");
    EXPECT_EQ(remark("a", "b @Q@ c"), "The answer holds \"@Q@\".");
    EXPECT_EQ(remark("a", "b\r\n/*/ c"), "A line of the answer begins with \"/*/\".");
    EXPECT_EQ(remark(" a", "b\t"), "Blanks, TABs or line breaks at an end of the question are dropped. "
                                   "Blanks, TABs or line breaks at an end of the answer are dropped.");
    EXPECT_EQ(remark(std::string(201, 'q'), "a"), "The question has 201 characters; 200 fit.");
    EXPECT_EQ(remark("a", ""), "The answer is empty.");
    EXPECT_EQ(remark("", "a"), "The question is empty.");
    EXPECT_EQ(remark("e\u0301", "a"), "A letter and an accent that is a character of its own become one character.");
}

TEST_F(RemovedEntry, ends_a_question_that_a_marker_in_the_answer_began)
{
    EXPECT_TRUE(entry("a", "b @Q@ c").ends_with("b @Q@ c\r\n@A@\r\n\r\n/*/ ------------------------\r\n"));
    EXPECT_TRUE(entry("a", "b @Q@ c @A@ d").ends_with("b @Q@ c @A@ d\r\n\r\n/*/ ------------------------\r\n"));
}

} // namespace
} // namespace cuedrill::keep
