#include "fakes/file_size_limit.h"
#include "platform/system/system_open_courses.h"
#include "tools/tool_fixture.h"
#include "tools/verb.h"

#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

namespace cuedrill::tools {
namespace {

using Texts = std::vector<std::pair<std::string, std::string>>;

class ExchangeVerb : public ToolFixture {
protected:
    void SetUp() override
    {
        fakes::CourseBuilder builder;
        builder.question("one", "uno").level(2).attempts(3);
        builder.question("two, \"three\"", "dos\r\ntres");
        builder.number_param("target_level", 5);
        course = builder.write(folder, "course.crs");
        empty = fakes::CourseBuilder().write(folder, "empty.crs");
    }

    [[nodiscard]] static Texts texts(const std::string& path)
    {
        Texts found;
        for (const fakes::QaRow& row : fakes::read_course(path).qa)
            found.emplace_back(row.q, row.a);
        return found;
    }

    std::string course;
    std::string empty;
};

TEST_F(ExchangeVerb, import_reads_a_question_text)
{
    const std::string file = folder.write("more.txt", "@Q@ four @A@ cuatro");
    EXPECT_EQ(run({"import", course, file}), 0);
    EXPECT_EQ(out, "1 questions and answers insterted.\n");
    EXPECT_EQ(texts(course).back(), (std::pair<std::string, std::string>("four", "cuatro")));
    EXPECT_EQ(copies.of(course).size(), 1U) << "of before the import";
}

TEST_F(ExchangeVerb, import_takes_the_columns_that_are_named)
{
    const std::string file = folder.write("words.csv", "No;Word;Meaning\n1;a;b\n2;c;d\n");
    EXPECT_EQ(run({"import", empty, file, "--columns", "Word,Meaning"}), 0);
    EXPECT_EQ(texts(empty), (Texts{{"a", "b"}, {"c", "d"}}));
    EXPECT_EQ(run({"import", empty, file, "--columns", "3,1"}), 0);
    EXPECT_EQ(texts(empty).back(), (std::pair<std::string, std::string>("d", "2")));
}

TEST_F(ExchangeVerb, import_obeys_what_is_said_about_a_table)
{
    const std::string file = folder.write("words.txt", "\xE9t\xE9|summer\nhiver|winter\n");
    EXPECT_EQ(run({"import", empty, file, "--format=table", "--separator=|", "--no-header", "--encoding=iso-8859-1"}),
              0);
    EXPECT_EQ(texts(empty), (Texts{{"\u00E9t\u00E9", "summer"}, {"hiver", "winter"}}));
    EXPECT_EQ(run({"import", empty, file, "--format=table", "--separator=|", "--header"}), 0);
    EXPECT_EQ(texts(empty).size(), 3U);
}

TEST_F(ExchangeVerb, import_can_leave_out_known_questions)
{
    const std::string file = folder.write("words.csv", "ONE,1\nnew,x\nnew,y\n");
    EXPECT_EQ(run({"import", course, file, "--skip-duplicates"}), 0);
    EXPECT_NE(out.find("2 left out, because the course has the question already:"), std::string::npos) << out;
    EXPECT_NE(out.find("line 1: \"ONE\""), std::string::npos) << out;
    EXPECT_EQ(texts(course).size(), 3U);
}

TEST_F(ExchangeVerb, import_leaves_out_or_cuts_what_is_too_long)
{
    const std::string file = folder.write("words.csv", "a,b\n" + std::string(210, 'x') + ",c\n");
    EXPECT_EQ(run({"import", empty, file}), 1);
    EXPECT_NE(out.find("line 2: The question has 210 characters; 200 fit."), std::string::npos) << out;
    EXPECT_EQ(texts(empty).size(), 1U);
    EXPECT_EQ(run({"import", empty, file, "--truncate"}), 0);
    EXPECT_EQ(texts(empty).back().first, std::string(200, 'x'));
}

TEST_F(ExchangeVerb, import_cuts_the_texts_of_a_question_text_too)
{
    const std::string file = folder.write("long.txt", "@Q@ " + std::string(210, 'x') + " @A@ b");
    EXPECT_EQ(run({"import", empty, file, "--truncate"}), 0);
    EXPECT_NE(out.find("1 text was cut to 200 characters."), std::string::npos) << out;
    EXPECT_EQ(texts(empty), (Texts{{std::string(200, 'x'), "b"}}));
}

TEST_F(ExchangeVerb, import_tells_by_its_exit_code_that_a_record_was_left_out)
{
    const std::string file = folder.write("words.csv", "a,b\n,x\ny,z\n");
    EXPECT_EQ(run({"import", empty, file}), 1);
    EXPECT_EQ(texts(empty).size(), 2U);
}

TEST_F(ExchangeVerb, import_takes_the_field_whose_name_has_the_same_case)
{
    const std::string file = folder.write("words.csv", "Word,word,WORD\nx,y,z\n");
    EXPECT_EQ(run({"import", empty, file, "--header", "--columns", "WORD,word"}), 0);
    EXPECT_EQ(texts(empty), (Texts{{"z", "y"}}));
    const std::string same = folder.write("same.csv", "Word,Word\nx,y\n");
    EXPECT_EQ(run({"import", empty, same, "--header", "--columns", "Word (2),Word"}), 0);
    EXPECT_EQ(texts(empty).back(), (std::pair<std::string, std::string>("y", "x")));
}

TEST_F(ExchangeVerb, import_is_told_in_the_history)
{
    EXPECT_EQ(run({"import", course, folder.write("words.csv", "a,b\nc,d\n")}), 0);
    EXPECT_EQ(run({"history", course, "--csv"}), 0);
    EXPECT_NE(out.find(",imported,4,q,"), std::string::npos) << out;
}

TEST_F(ExchangeVerb, import_can_be_tried_without_a_change)
{
    const std::string before = folder.read("course.crs");
    const std::string file = folder.write("words.csv", "a,b\n,c\n" + std::string(210, 'x') + ",c\none,d\n");
    EXPECT_EQ(run({"import", course, file, "--dry-run", "--skip-duplicates"}), 1);
    EXPECT_TRUE(out.starts_with("1 questions and answers would be imported.\n")) << out;
    EXPECT_NE(out.find("line 2: One of its texts is empty."), std::string::npos) << out;
    EXPECT_NE(out.find("line 3: "), std::string::npos) << out;
    EXPECT_NE(out.find("line 4: \"one\""), std::string::npos) << out;
    EXPECT_TRUE(folder.read("course.crs") == before);
    EXPECT_TRUE(copies.of(course).empty());
}

TEST_F(ExchangeVerb, import_of_a_file_without_records_says_what_was_looked_for)
{
    const std::string table = folder.write("words.csv", "alone\nalso\n");
    for (const bool dry : {false, true}) {
        std::vector<std::string> line{"import", empty, table};
        if (dry)
            line.emplace_back("--dry-run");
        EXPECT_EQ(run(line), 1);
        EXPECT_NE(out.find("rows with two fields separated by"), std::string::npos) << out;
    }
    const std::string text = folder.write("words.txt", "a,b\n");
    EXPECT_EQ(run({"import", empty, text}), 1);
    EXPECT_NE(out.find("@Q@"), std::string::npos) << out;
}

TEST_F(ExchangeVerb, import_refuses_what_cannot_be_meant)
{
    const std::string file = folder.write("words.csv", "a,b\n");
    EXPECT_EQ(run({"import", course, folder.file("none.csv")}), 2);
    EXPECT_EQ(run({"import", course, course}), 2);
    EXPECT_EQ(run({"import", course, file, "--columns", "one"}), 2);
    EXPECT_EQ(run({"import", course, file, "--encoding", "latin-99"}), 2);
    EXPECT_EQ(run({"import", course, file, "--separator", "ab"}), 2);
    EXPECT_EQ(run({"import", course, file, "--header", "--no-header"}), 2);
    EXPECT_EQ(run({"import", course, file, "--format", "word"}), 2);
    EXPECT_NE(err.find("There is no format word. Known are text, table"), std::string::npos) << err;
    EXPECT_EQ(run({"import", course, file, "--columns", "1,1"}), 2);
    EXPECT_EQ(run({"import", course, file, "--quote", "ab"}), 2);
    EXPECT_EQ(run({"import", course, folder.write("a.txt", "@Q@ a @A@ b"), "--columns", "1,2"}), 2);
    EXPECT_TRUE(copies.of(course).empty());
    platform::system::SystemOpenCourses window(folder.file("runtime"));
    window.enter(course);
    EXPECT_EQ(run({"import", course, file}), 2);
    EXPECT_EQ(run({"import", course, file, "--dry-run"}), 0);
    EXPECT_EQ(texts(course).size(), 2U);
}

TEST_F(ExchangeVerb, import_tells_how_far_it_came_when_it_stops)
{
    std::string table;
    for (int i = 0; i < 3000; ++i)
        table += "question " + std::to_string(i) + "," + std::string(150, 'a') + "\n";
    const std::string file = folder.write("words.csv", table);
    const fakes::FileSizeLimit limit(100'000);
    EXPECT_EQ(run({"import", empty, file}), 1);
    EXPECT_NE(err.find("The import has stopped."), std::string::npos) << err;
    EXPECT_NE(err.find(" questions and answers are stored."), std::string::npos) << err;
}

TEST_F(ExchangeVerb, export_and_import_bring_back_the_same_texts)
{
    for (const std::string ending : {"txt", "csv", "tsv", "kvtml"}) {
        const std::string file = folder.file("out." + ending);
        EXPECT_EQ(run({"export", course, file}), 0) << err;
        EXPECT_EQ(out, "2 records were written to " + file + ".\n");
        const std::string back = folder.file("back-" + ending + ".crs");
        ASSERT_EQ(run({"new", back}), 0);
        EXPECT_EQ(run({"import", back, file}), 0) << out << err;
        Texts expected = texts(course);
        if (ending == "txt") // a question text ends with a line that an import takes for a part of the last answer
            expected.back().second += "\r\n\r\n\r\n------------------------";
        EXPECT_EQ(texts(back), expected) << ending;
    }
}

TEST_F(ExchangeVerb, export_writes_to_the_output)
{
    EXPECT_EQ(run({"export", course, "-", "--format", "csv", "--numbered"}), 0);
    EXPECT_EQ(out, "number,question,answer\r\n1,one,uno\r\n2,\"two, \"\"three\"\"\",\"dos\r\ntres\"\r\n");
    EXPECT_EQ(run({"export", course, "-"}), 0);
    EXPECT_NE(out.find("@Q@"), std::string::npos) << out;
}

TEST_F(ExchangeVerb, export_replaces_nothing_unasked)
{
    const std::string file = folder.write("out.csv", "precious");
    EXPECT_EQ(run({"export", course, file}), 2);
    EXPECT_EQ(folder.read("out.csv"), "precious");
    EXPECT_EQ(run({"export", course, file, "--replace"}), 0);
    EXPECT_NE(folder.read("out.csv"), "precious");
    EXPECT_EQ(run({"export", course, course, "--replace"}), 2);
}

TEST_F(ExchangeVerb, export_lists_what_would_not_come_back)
{
    fakes::CourseBuilder builder;
    builder.question("a @A@ marker", "x");
    const std::string odd = builder.write(folder, "odd.crs");
    EXPECT_EQ(run({"export", odd, folder.file("odd.txt")}), 1);
    EXPECT_TRUE(err.starts_with("An import would not bring back unchanged:\nQuestion 1:")) << err;
    EXPECT_EQ(run({"export", odd, folder.file("odd.csv")}), 0) << err;
}

TEST_F(ExchangeVerb, export_refuses_what_cannot_be_meant)
{
    EXPECT_EQ(run({"export", course, folder.file("a.txt"), "--statistics"}), 2);
    EXPECT_EQ(run({"export", course, folder.file("a.txt"), "--format", "word"}), 2);
    EXPECT_EQ(run({"export", empty, folder.file("a.txt")}), 1);
}

TEST_F(ExchangeVerb, export_leaves_the_old_file_when_the_disk_is_full)
{
    const std::string file = folder.write("out.csv", "old");
    const fakes::FileSizeLimit limit(10);
    EXPECT_EQ(run({"export", course, file, "--replace"}), 1);
    EXPECT_NE(err, "");
    EXPECT_EQ(folder.read("out.csv"), "old");
}

TEST_F(ExchangeVerb, the_form_without_a_verb_reads_tables_too)
{
    const std::string file = folder.write("words.tsv", "a\tb\nc\td\n");
    EXPECT_EQ(run({folder.file("made.crs"), file}), 0);
    EXPECT_EQ(texts(folder.file("made.crs")), (Texts{{"a", "b"}, {"c", "d"}}));
    EXPECT_EQ(run({"info", folder.file("made.crs")}), 0);
    EXPECT_NE(out.find(" Course made\n"), std::string::npos) << out;
    const std::string none = folder.write("none.csv", "alone\n");
    EXPECT_EQ(run({folder.file("none.crs"), none}), 1);
    EXPECT_FALSE(files.exists(folder.file("none.crs")));
}

} // namespace
} // namespace cuedrill::tools
