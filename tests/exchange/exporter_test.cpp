#include "common/text.h"
#include "exchange/exporter_fixture.h"
#include "exchange/importer_fixture.h"
#include "store/schema.h"

#include <algorithm>
#include <string_view>

namespace cuedrill::exchange {
namespace {

using namespace std::string_literals;

constexpr const char* mark = "\xEF\xBB\xBF";

class ExportedFile : public ExportFixture {};

TEST_F(ExportedFile, has_the_records_between_a_heading_and_their_number)
{
    open({{"Norway?", "Oslo"}, {"Peru?", "Lima"}});
    EXPECT_EQ(exported(), "/*/ Cuedrill questions and answers exported form Capitals on 15/11/2026 05:47:17\r\n"
                          "\r\n"
                          "\r\n"
                          "@Q@\r\n"
                          "Norway?\r\n"
                          "@A@\r\n"
                          "Oslo\r\n"
                          "\r\n"
                          "@Q@\r\n"
                          "Peru?\r\n"
                          "@A@\r\n"
                          "Lima\r\n"
                          "\r\n"
                          "\r\n"
                          "------------------------\r\n"
                          "/*/ 2 questions and answers exported\r\n");
}

TEST_F(ExportedFile, has_a_number_before_each_record_on_request)
{
    open({{"Norway?", "Oslo"}, {"Peru?", "Lima"}});
    EXPECT_EQ(exported(true),
              heading() + "/*/ 1\r\n" + record("Norway?", "Oslo") + "/*/ 2\r\n" + record("Peru?", "Lima") + ending(2));
}

TEST_F(ExportedFile, of_an_empty_course_says_that_there_are_no_records)
{
    open(Texts{});
    EXPECT_EQ(exported(true), heading() + ending(0));
}

TEST_F(ExportedFile, numbers_the_records_without_gaps_in_the_order_of_the_course)
{
    fakes::CourseBuilder builder;
    builder.question("third", "c").number(20);
    builder.question("first", "a").number(3);
    builder.question("second", "b").number(7);
    open(builder);
    EXPECT_EQ(exported(true), heading() + "/*/ 1\r\n" + record("first", "a") + "/*/ 2\r\n" + record("second", "b") +
                                  "/*/ 3\r\n" + record("third", "c") + ending(3));
    EXPECT_EQ(database.statements(), (std::vector<std::string>{"Select * from qa order by cnt"}));
}

TEST_F(ExportedFile, keeps_line_breaks_blanks_and_markers_inside_as_they_are)
{
    const std::string q = " one\r\ntwo\n\rthree\n\t";
    const std::string a = "\r\n/*/ @Q@ four\r\n";
    open({{q, a}});
    EXPECT_EQ(exported(), heading() + record(q, a) + ending(1));
}

TEST_F(ExportedFile, of_an_inverted_course_has_the_sides_as_they_are_stored)
{
    open({{"Norway?", "Oslo"}});
    course.params.invert = true;
    course.set_side_fields();
    EXPECT_EQ(exported(), heading() + record("Norway?", "Oslo") + ending(1));
}

TEST_F(ExportedFile, has_an_empty_line_for_a_missing_text)
{
    course_path = fakes::CourseBuilder().write(folder);
    engine.database.open(course_path, store::course_tables());
    engine.database.execute("Insert into qa (cnt) values (1)");
    engine.database.execute("Insert into qa (cnt, q) values (2, 'alone')");
    engine.database.close();
    open_written();
    EXPECT_EQ(exported(), heading() + record("", "") + record("alone", "") + ending(2));
}

TEST_F(ExportedFile, keeps_its_heading_in_one_line)
{
    open({{"Norway?", "Oslo"}});
    course.params.course_title = "a\r\n@Q@ b\rc\n\nd\r";
    EXPECT_EQ(exported(), heading("a @Q@ b c  d ") + record("Norway?", "Oslo") + ending(1));
}

TEST_F(ExportedFile, takes_the_place_of_an_older_and_longer_one)
{
    open({{"Norway?", "Oslo"}});
    files.files[target] = std::string(5000, 'x');
    EXPECT_EQ(exported(), heading() + record("Norway?", "Oslo") + ending(1));
    EXPECT_FALSE(files.files.contains(unfinished));
}

TEST_F(ExportedFile, gives_the_number_of_its_records)
{
    open({{"Norway?", "Oslo"}, {"Chişinău?", "Moldova"}});
    EXPECT_EQ(exporter.export_file(target, false).count, 2);
}

struct Encoding {
    const char* name;
    std::string title;
    std::string question;
    std::string bytes_of_title;
    std::string bytes_of_question;
};

class EncodedExport : public ExportFixture, public testing::WithParamInterface<Encoding> {
protected:
    /// Puts records before and after the one with the special characters; all must have the same encoding.
    void open_course()
    {
        open({{"before", "é"}, {GetParam().question, "x"}, {"after", "y"}});
        course.params.course_title = GetParam().title;
    }
    static std::string file_of(const std::string& e_acute)
    {
        return heading(GetParam().bytes_of_title) + record("before", e_acute) +
               record(GetParam().bytes_of_question, "x") + record("after", "y") + ending(3);
    }
};

class CodePageExport : public EncodedExport {};

TEST_P(CodePageExport, has_one_byte_for_each_character)
{
    open_course();
    EXPECT_EQ(exported(), file_of("\xE9"));
}

INSTANTIATE_TEST_SUITE_P(
    Texts, CodePageExport,
    testing::Values(Encoding{"ascii", "Capitals", "Norway?", "Capitals", "Norway?"},
                    Encoding{"own_characters", "Capitals", "3 € “x” ÿ", "Capitals", "3 \x80 \x93x\x94 \xFF"},
                    Encoding{"open_bytes", "Capitals", "\xC2\x81\xC2\x8D\xC2\x8F\xC2\x90\xC2\x9D", "Capitals",
                             "\x81\x8D\x8F\x90\x9D"},
                    Encoding{"title", "Österreich", "Norway?", "\xD6sterreich", "Norway?"},
                    Encoding{"looks_like_utf8_beside_what_does_not", "Capitals", "Ã©", "Capitals", "\xC3\xA9"}),
    [](const auto& encoding) { return std::string(encoding.param.name); });

class Utf8Export : public EncodedExport {};

TEST_P(Utf8Export, has_a_mark_and_all_of_its_text_in_utf8)
{
    open_course();
    EXPECT_EQ(exported(), mark + file_of("é"));
}

INSTANTIATE_TEST_SUITE_P(Texts, Utf8Export,
                         testing::Values(Encoding{"cyrillic", "Capitals", "Москва", "Capitals", "Москва"},
                                         Encoding{"title_alone", "Столицы", "Norway?", "Столицы", "Norway?"},
                                         Encoding{"control_character_of_no_byte", "Capitals", "\u0080", "Capitals",
                                                  "\xC2\x80"},
                                         Encoding{"decomposed", "Capitals", "e\u0301", "Capitals", "e\xCC\x81"},
                                         Encoding{"beyond_the_basic_plane", "Capitals", "𝄞", "Capitals", "𝄞"}),
                         [](const auto& encoding) { return std::string(encoding.param.name); });

class MisleadingExport : public ExportFixture {};

// In Windows-1252 the text would have the bytes of "é" in UTF-8, and be read as that.
TEST_F(MisleadingExport, that_would_be_read_as_utf8_is_written_so)
{
    open({{"Ã©", "x"}});
    EXPECT_EQ(exported(), mark + heading() + record("Ã©", "x") + ending(1));
}

TEST_F(MisleadingExport, that_would_be_read_as_utf8_without_its_nul_is_written_so)
{
    open({{"Ã\0©"s, "x"}});
    EXPECT_EQ(exported(), mark + heading() + record("Ã\0©"s, "x") + ending(1));
}

/// Exports a course and imports the file into an empty one, using real files.
class ExportAndImport : public ImportFixture {
protected:
    Texts texts_after(const Texts& texts)
    {
        fakes::CourseBuilder builder;
        for (const auto& [q, a] : texts)
            builder.question(q, a);
        fakes::RealEngine other_engine;
        store::Course exported{other_engine.database};
        exported.db_path = builder.write(folder, "exported.cdr");
        exported.apri_db();
        exported.params.course_title = "Capitals";
        const std::string file = folder.file("QA export.txt");
        told = Exporter(exported, files, clock, engine.text_compare).export_file(file, true);
        EXPECT_EQ(told.count, static_cast<std::int64_t>(texts.size()));
        EXPECT_EQ(import_file(file).failure, "");
        return stored();
    }

    Exported told;
};

struct RoundTripText {
    const char* name;
    std::string text;
};

class RoundTrip : public ExportAndImport, public testing::WithParamInterface<RoundTripText> {};

// The closing line is read back as part of the last answer.
TEST_P(RoundTrip, gives_back_all_but_the_end_of_the_last_answer)
{
    const std::string& text = GetParam().text;
    EXPECT_EQ(texts_after({{"one\r\n\r\ntwo", text}, {text, "three\nfour\r\nfive"}, {"last", text}}),
              (Texts{{"one\r\n\r\ntwo", text},
                     {text, "three\nfour\r\nfive"},
                     {"last", text + "\r\n\r\n\r\n------------------------"}}));
}

TEST_P(RoundTrip, is_not_told_as_a_change)
{
    const std::string& text = GetParam().text;
    static_cast<void>(texts_after({{text, text}, {text, text}}));
    EXPECT_EQ(told.changed, 0);
    EXPECT_EQ(told.lines, "");
}

INSTANTIATE_TEST_SUITE_P(Texts, RoundTrip,
                         testing::Values(RoundTripText{"ascii", "Oslo"}, RoundTripText{"code_page", "café 3 € “x”"},
                                         RoundTripText{"open_byte", "\xC2\x81"}, RoundTripText{"cyrillic", "Москва"},
                                         RoundTripText{"looks_like_utf8", "Ã©"},
                                         RoundTripText{"control_character_of_no_byte", "\u0080"},
                                         RoundTripText{"beyond_the_basic_plane", "𝄞"}),
                         [](const auto& text) { return std::string(text.param.name); });

/// A record between two others. What is reported about it and about the next one must be what really happens to them.
struct Changed {
    const char* name;
    std::string question;
    std::string answer;
    std::string reasons; ///< empty if the record comes back unchanged
    std::string reasons_of_next = {};
    std::size_t records = 0; ///< how many come back in place of the three; 0 if not checked
};

class ToldChange : public ExportAndImport, public testing::WithParamInterface<Changed> {
protected:
    static std::string line(int number, const std::string& reasons, const std::string& question)
    {
        return reasons.empty() ? ""
                               : "Question " + std::to_string(number) + ": " + reasons + " \"" + question + "\"\r\n";
    }
};

TEST_P(ToldChange, is_what_an_import_does)
{
    const Changed& changed = GetParam();
    const Texts texts{{"first", "1"}, {changed.question, changed.answer}, {"last", "3"}};
    const Texts after = texts_after(texts);
    const auto comes_back = [&after](const std::string& question, const std::string& answer) {
        return std::find(after.begin(), after.end(), std::pair(question, answer)) != after.end();
    };
    EXPECT_TRUE(comes_back("first", "1"));
    EXPECT_EQ(comes_back(changed.question, changed.answer), changed.reasons.empty());
    EXPECT_EQ(comes_back("last", "3\r\n\r\n\r\n------------------------"), changed.reasons_of_next.empty());
    if (changed.records != 0) {
        EXPECT_EQ(after.size(), changed.records);
    }
    EXPECT_EQ(told.changed, (changed.reasons.empty() ? 0 : 1) + (changed.reasons_of_next.empty() ? 0 : 1));
    EXPECT_EQ(told.lines, line(2, changed.reasons, common::replace_all(changed.question, common::cr_lf, " ")) +
                              line(3, changed.reasons_of_next, "last"));
}

INSTANTIATE_TEST_SUITE_P(
    Records, ToldChange,
    testing::Values(
        Changed{"answer_marker_in_a_question", "x @a@ y", "z", "The question holds \"@A@\"."},
        Changed{"question_marker_in_a_question", "x @Q@ y", "z", ""},
        Changed{"question_marker_in_an_answer", "x", "y @Q@ z", "The answer holds \"@Q@\".",
                "It is joined to the question that begins at \"@Q@\" in the answer before.", 3},
        Changed{"question_marker_alone_in_an_answer", "x", "@Q@", "The answer holds \"@Q@\".",
                "It is joined to the question that begins at \"@Q@\" in the answer before.", 2},
        Changed{"both_markers_in_an_answer", "x", "y @Q@ z @A@ w",
                "The answer holds \"@Q@\". It comes back as 2 records.", "", 4},
        Changed{"markers_of_several_records_in_an_answer", "x", "y @Q@ z @A@ @Q@ v @A@ w @q@ u",
                "The answer holds \"@Q@\". It comes back as 2 records.",
                "It is joined to the question that begins at \"@Q@\" in the answer before.", 4},
        Changed{"all_markers_in_a_question", "x @A@ y @Q@ z", "w",
                "The question holds \"@A@\". It comes back as 2 records.", "", 4},
        Changed{"answer_marker_in_an_answer", "x", "y @A@ z", ""},
        Changed{"comment_in_a_question", "x\r\n/*/ y", "z", "A line of the question begins with \"/*/\"."},
        Changed{"comment_at_the_start_of_an_answer", "x", "/*/ y\r\nz", "A line of the answer begins with \"/*/\"."},
        Changed{"no_comment_behind_a_blank", "x\r\n /*/ y", "y /*/", ""},
        Changed{"no_comment_behind_a_lone_lf", "x\n/*/ y", "z\r/*/", ""},
        Changed{"outer_white_space", "x ", "\r\ny",
                "Blanks, TABs or line breaks at an end of the question are dropped. Blanks, TABs or line breaks at an "
                "end of "
                "the answer are dropped."},
        Changed{"empty_answer", "x", "", "The answer is empty."},
        Changed{"blank_answer", "x", " ", "The answer is empty."},
        Changed{"nul", "x\0y"s, "z", "NUL characters are dropped."},
        Changed{"marker_around_a_nul", "x@\0A@y"s, "z", "The question holds \"@A@\". NUL characters are dropped."},
        Changed{"decomposed", "e\u0301", "z",
                "A letter and an accent that is a character of its own become one character."},
        Changed{"longest", std::string(200, 'x'), std::string(200, 'y'), ""}),
    [](const auto& changed) { return std::string(changed.param.name); });

class LastRecord : public ExportAndImport {
protected:
    void expect_told(const std::string& answer, const std::string& lines)
    {
        const Texts after = texts_after({{"first", std::string(171, 'x')}, {"last", answer}});
        EXPECT_EQ(after.size(), lines.empty() ? 2U : 1U);
        EXPECT_EQ(told.lines, lines);
    }
};

TEST_F(LastRecord, is_told_where_the_line_of_hyphens_makes_its_answer_too_long)
{
    expect_told(std::string(171, 'x'),
                "Question 2: The answer, with the line of hyphens behind it, has 201 characters; "
                "200 fit. \"last\"\r\n");
}

TEST_F(LastRecord, is_not_told_where_its_answer_still_fits)
{
    expect_told(std::string(170, 'x'), "");
}

TEST_F(ExportedFile, has_the_records_named_that_would_come_back_changed)
{
    open({{"Norway?", "@Q@"}, {"Peru?", "Lima"}, {"x @A@", "y"}});
    const Exported told = exporter.export_file(target, false);
    EXPECT_EQ(told.count, 3);
    EXPECT_EQ(told.changed, 3);
    EXPECT_EQ(told.lines,
              "Question 1: The answer holds \"@Q@\". \"Norway?\"\r\n"
              "Question 2: It is joined to the question that begins at \"@Q@\" in the answer before. \"Peru?\"\r\n"
              "Question 3: The question holds \"@A@\". \"x @A@\"\r\n");
}

TEST_F(ExportedFile, has_each_record_named_once_where_it_was_begun_again)
{
    open({{"Norway?", "@Q@"}, {"Москва", "y"}});
    const Exported exported_records = exporter.export_file(target, false);
    EXPECT_EQ(exported_records.changed, 2);
    EXPECT_EQ(exported_records.lines,
              "Question 1: The answer holds \"@Q@\". \"Norway?\"\r\n"
              "Question 2: It is joined to the question that begins at \"@Q@\" in the answer before. \"Москва\"\r\n");
}

} // namespace
} // namespace cuedrill::exchange
