#include "exchange/question_text.h"
#include "exchange/text_decoding.h"

#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <ostream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace cuedrill::exchange {
namespace {

struct Record {
    std::string question;
    std::string answer;

    friend bool operator==(const Record&, const Record&) = default;
    friend std::ostream& operator<<(std::ostream& stream, const Record& record)
    {
        return stream << testing::PrintToString(record.question) << " / " << testing::PrintToString(record.answer);
    }
};

using Records = std::vector<Record>;

/// The records of a text added in pieces of `size` bytes. Checks that they are numbered from 1.
Records records_of(std::string_view text, std::size_t size)
{
    Records records;
    const QuestionTextReader::Sink sink = [&](const ReadRecord& record) {
        records.push_back({record.question.text, record.answer.text});
        EXPECT_EQ(record.number, static_cast<std::int64_t>(records.size()));
    };
    QuestionTextReader reader;
    const auto add = [&](std::string_view part) { reader.add(part, sink); };
    TextSurvey survey;
    survey.add(std::string(text));
    LineSplitter lines(survey.format().line_end);
    TextDecoder decoder(survey.format());
    for (std::size_t at = 0; at < text.size(); at += size)
        lines.add(decoder.decode(std::string(text.substr(at, size))), add, [&] { reader.end_line(sink); });
    lines.finish(add);
    reader.finish(sink);
    return records;
}

Records records_of(std::string_view text)
{
    return records_of(text, text.size() + 1);
}

/// Adds a whole line.
void add_line(QuestionTextReader& reader, std::string_view line, const QuestionTextReader::Sink& sink)
{
    reader.add(line, sink);
    reader.end_line(sink);
}

struct Reading {
    const char* name;
    std::string text;
    Records records;
};

/// Names the test cases of a table.
constexpr auto by_name = [](const auto& table_case) { return std::string(table_case.param.name); };

class QuestionText : public testing::TestWithParam<Reading> {};

TEST_P(QuestionText, gives_its_records)
{
    EXPECT_EQ(records_of(GetParam().text), GetParam().records);
}

TEST_P(QuestionText, gives_the_same_records_in_pieces_of_any_size)
{
    for (std::size_t size = 1; size <= 8; ++size)
        EXPECT_EQ(records_of(GetParam().text, size), GetParam().records) << "in pieces of " << size;
}

const Record alabama{"What is the capital of Alabama?", "Montgomery"};

INSTANTIATE_TEST_SUITE_P(
    Examples, QuestionText,
    testing::Values(
        Reading{"one_line", "@Q@ What is the capital of Alabama?  @A@ Montgomery\r\n", {alabama}},
        Reading{"one_line_not_ended", "@Q@ What is the capital of Alabama?  @A@ Montgomery", {alabama}},
        Reading{"several_lines", "@Q@\r\nWhat is the capital of Alabama?\r\n@A@\r\nMontgomery\r\n", {alabama}},
        Reading{"empty_answer_then_a_record", "@Q@ x @A@\r\n@Q@ y @A@ z\r\n", {{"x", ""}, {"y", "z"}}},
        Reading{"empty_question_then_a_record", "@Q@ @A@ x\r\n@Q@ y @A@ z\r\n", {{"", "x"}, {"y", "z"}}},
        Reading{"question_without_answer_at_the_end", "@Q@ x @A@ y\r\n@Q@ lost\r\n", {{"x", "y"}}},
        Reading{"export_without_numbers",
                "/*/ Cuedrill questions and answers exported form Birds on 15/11/2026 05:47:17\r\n\r\n\r\n"
                "@Q@\r\na\r\n@A@\r\nb\r\n\r\n@Q@\r\nc\r\nd\r\n@A@\r\ne\r\n\r\n"
                "\r\n------------------------\r\n/*/ 2 questions and answers exported\r\n",
                {{"a", "b"}, {"c\r\nd", "e\r\n\r\n\r\n------------------------"}}},
        Reading{"export_with_numbers",
                "/*/ Cuedrill questions and answers exported form Birds on 15/11/2026 05:47:17\r\n\r\n\r\n"
                "/*/ 1\r\n@Q@\r\na\r\n@A@\r\nb\r\n\r\n/*/ 2\r\n@Q@\r\nc\r\n@A@\r\ne\r\n\r\n"
                "\r\n------------------------\r\n/*/ 2 questions and answers exported\r\n",
                {{"a", "b"}, {"c", "e\r\n\r\n\r\n------------------------"}}},
        Reading{"export_of_an_empty_course",
                "/*/ Cuedrill questions and answers exported form Birds on 15/11/2026 05:47:17\r\n\r\n\r\n\r\n"
                "------------------------\r\n/*/ 0 questions and answers exported\r\n",
                {}}),
    by_name);

INSTANTIATE_TEST_SUITE_P(
    Markers, QuestionText,
    testing::Values(
        Reading{"none", "just text\r\n", {}}, Reading{"empty_text", "", {}},
        Reading{"answer_marker_alone", "@A@ x\r\n", {}},
        Reading{"text_before_the_first", "x\r\n@A@ y\r\nz @Q@ q @A@ a", {{"q", "a"}}},
        Reading{"in_lower_case", "@q@ x @a@ y @q@ z @a@ w", {{"x", "y"}, {"z", "w"}}},
        Reading{"in_mixed_case", "@q@ x @A@ y @Q@ z @a@ w", {{"x", "y"}, {"z", "w"}}},
        Reading{"several_in_a_line", "@Q@a@A@b@Q@c@A@d@Q@e@A@f", {{"a", "b"}, {"c", "d"}, {"e", "f"}}},
        Reading{"in_the_middle_of_lines",
                "one @Q@ two\r\nthree @A@ four\r\nfive @Q@ six @A@ seven",
                {{"two\r\nthree", "four\r\nfive"}, {"six", "seven"}}},
        Reading{"answer_marker_inside_an_answer", "@Q@ x @A@ y @A@ z", {{"x", "y @A@ z"}}},
        Reading{"question_marker_inside_a_question", "@Q@ x @Q@ y @A@ z", {{"x @Q@ y", "z"}}},
        Reading{"sharing_an_at_sign_are_one", "@Q@A@ x @A@ y", {{"A@ x", "y"}}},
        Reading{"answer_sharing_an_at_sign", "@Q@ x @A@Q@ y", {{"x", "Q@ y"}}},
        Reading{"after_further_at_signs", "@@Q@@ x @@@A@ y @@q@ z @a@", {{"@ x @@", "y @"}, {"z", ""}}},
        Reading{"nothing_between_them", "@Q@@A@@Q@@A@", {{"", ""}, {"", ""}}},
        Reading{"at_the_ends_of_lines", "x @Q@\r\ny @A@\r\nz @Q@\r\nw @A@\r\n", {{"y", "z"}, {"w", ""}}},
        Reading{"broken_by_a_line_end", "@Q\r\n@ x @Q@ y @\r\nA@ z @A@ w", {{"y @\r\nA@ z", "w"}}},
        Reading{"broken_by_a_blank", "@Q @Q@ x @ A@ y @A@ z", {{"x @ A@ y", "z"}}},
        Reading{"cut_off_at_the_end", "@Q@ x @A@ y @Q", {{"x", "y @Q"}}},
        Reading{"of_other_letters", "@P@ @Q@ x @B@ @1@ @!@ @\xC3\xA1@ y @A@ z", {{"x @B@ @1@ @!@ @\xC3\xA1@ y", "z"}}},
        Reading{"beside_other_languages", "@Q@été@A@Καλημέρα", {{"été", "Καλημέρα"}}}),
    by_name);

INSTANTIATE_TEST_SUITE_P(
    CommentLines, QuestionText,
    testing::Values(Reading{"before_the_first_question", "/*/ @Q@ a @A@ b\r\n@Q@ x @A@ y", {{"x", "y"}}},
                    Reading{"inside_a_question", "@Q@ x\r\n/*/ note @A@ no\r\ny @A@ z", {{"x\r\ny", "z"}}},
                    Reading{"inside_an_answer", "@Q@ x @A@ y\r\n/*/ @Q@ note\r\nz", {{"x", "y\r\nz"}}},
                    Reading{"between_records", "@Q@ a @A@ b\r\n/*/\r\n@Q@ c @A@ d", {{"a", "b"}, {"c", "d"}}},
                    Reading{"not_after_blanks", "@Q@ x\r\n  /*/ y\r\n@A@ z", {{"x\r\n  /*/ y", "z"}}},
                    Reading{"not_after_anything_else", "@Q@ x /*/ y @A@\t/*/ z", {{"x /*/ y", "/*/ z"}}},
                    Reading{"not_by_two_characters", "@Q@ x\r\n/*\r\n/* / @A@ z", {{"x\r\n/*\r\n/* /", "z"}}}),
    by_name);

INSTANTIATE_TEST_SUITE_P(
    InnerText, QuestionText,
    testing::Values(Reading{"keeps_its_lines_blanks_and_tabs",
                            "@Q@\t a  b \r\n\r\n\tc \t@A@ \r\n d\r\n  e \r\n\r\n",
                            {{"a  b \r\n\r\n\tc", "d\r\n  e"}}},
                    Reading{"keeps_lone_line_ends", "@Q@ a\nb\rc @A@ d\ne\r\n", {{"a\nb\rc", "d\ne"}}},
                    Reading{"with_lf_lines_gets_cr_lf", "@Q@ a\nb\n@A@ c\nd\n", {{"a\r\nb", "c\r\nd"}}}),
    by_name);

TEST(QuestionTextReader, gives_a_record_as_soon_as_the_next_question_starts)
{
    int records = 0;
    const auto sink = [&](const ReadRecord&) { ++records; };
    QuestionTextReader reader;
    add_line(reader, "@Q@ x @A@ y", sink);
    EXPECT_EQ(records, 0);
    add_line(reader, "still y @Q@", sink);
    EXPECT_EQ(records, 1);
    reader.finish(sink);
    EXPECT_EQ(records, 1);
}

TEST(QuestionTextReader, gives_the_last_record_once)
{
    int records = 0;
    const auto sink = [&](const ReadRecord&) { ++records; };
    QuestionTextReader reader;
    add_line(reader, "@Q@ x @A@ y", sink);
    reader.finish(sink);
    reader.finish(sink);
    EXPECT_EQ(records, 1);
}

TEST(QuestionTextReader, lets_through_what_the_sink_throws)
{
    const auto sink = [](const ReadRecord&) { throw std::runtime_error("disk full"); };
    QuestionTextReader reader;
    EXPECT_THROW(add_line(reader, "@Q@ x @A@ y @Q@ z", sink), std::runtime_error);

    QuestionTextReader at_end;
    add_line(at_end, "@Q@ x @A@ y", sink);
    EXPECT_THROW(at_end.finish(sink), std::runtime_error);
}

// With texts of these sizes, quadratic work would take hours.

std::string repeated(std::string_view text, std::size_t times)
{
    std::string result;
    result.reserve(text.size() * times);
    for (std::size_t i = 0; i < times; ++i)
        result.append(text);
    return result;
}

constexpr std::size_t million = 1'000'000;

TEST(HugeText, with_a_million_records_on_one_line_is_read)
{
    std::int64_t records = 0;
    std::size_t wrong = 0;
    const auto sink = [&](const ReadRecord& record) {
        records = record.number;
        wrong += record.question.text == "x" && record.answer.text == "y" ? 0U : 1U;
    };
    QuestionTextReader reader;
    add_line(reader, repeated("@Q@x@A@y", million), sink);
    reader.finish(sink);
    EXPECT_EQ(records, static_cast<std::int64_t>(million));
    EXPECT_EQ(wrong, 0U);
}

TEST(HugeText, with_a_question_of_a_million_lines_is_read)
{
    ReadText question;
    const auto sink = [&](const ReadRecord& record) { question = record.question; };
    QuestionTextReader reader;
    add_line(reader, "@Q@", sink);
    for (std::size_t i = 0; i < million; ++i)
        add_line(reader, "a line", sink);
    add_line(reader, "@A@ y", sink);
    reader.finish(sink);
    EXPECT_EQ(question.text.size() + question.cut_off, million * 8 - 2);
    EXPECT_EQ(question.text.size(), CollectedText::most_kept);
}

TEST(HugeText, of_at_signs_and_broken_markers_is_read)
{
    const std::string noise = repeated("@@Q@ a@", million);
    const Records records = records_of("@Q@" + noise + "@A@y");
    ASSERT_EQ(records.size(), 1U);
    EXPECT_EQ(records[0].question, noise.substr(0, CollectedText::most_kept));
    EXPECT_EQ(records[0].answer, "y");
}

TEST(HugeText, before_the_first_question_is_left_out)
{
    EXPECT_EQ(records_of(repeated("@A@ no question\r\n", million) + "@Q@ x @A@ y"), (Records{{"x", "y"}}));
}

struct Trimming {
    const char* name;
    std::string text;
    std::string trimmed;
};

class TrimmedText : public testing::TestWithParam<Trimming> {};

TEST_P(TrimmedText, has_no_outer_white_space)
{
    EXPECT_EQ(trim_exchange_text(GetParam().text), GetParam().trimmed);
}

INSTANTIATE_TEST_SUITE_P(
    Rules, TrimmedText,
    testing::Values(
        Trimming{"empty", "", ""}, Trimming{"nothing_to_do", "a", "a"}, Trimming{"blanks", "  a b  ", "a b"},
        Trimming{"only_blanks", "   ", ""}, Trimming{"tabs", "\t\ta\tb\t\t", "a\tb"}, Trimming{"only_tabs", "\t\t", ""},
        Trimming{"line_ends", "\r\n\r\na\r\nb\r\n\r\n", "a\r\nb"}, Trimming{"only_line_ends", "\r\n\r\n", ""},
        Trimming{"single_line_end", "\r\n", ""}, Trimming{"leading_only", "\r\n\t a", "a"},
        Trimming{"trailing_only", "a \t\r\n", "a"}, Trimming{"mixed", " \t\r\n \t a \r\n\t \r\n\t\t ", "a"},
        Trimming{"only_mixed", " \t\r\n \t \r\n\t", ""}, Trimming{"lone_cr_stays", "\ra\r", "\ra\r"},
        Trimming{"lone_lf_stays", "\na\n", "\na\n"}, Trimming{"lone_cr_before_a_pair", "\r\r\na", "\r\r\na"},
        Trimming{"lone_cr_after_the_text", "a\r\r\n", "a\r"}, Trimming{"lone_lf_after_a_pair", "a\r\n\n", "a\r\n\n"},
        Trimming{"lone_lf_behind_a_leading_pair", "\r\n\na", "\na"},
        Trimming{"lone_line_ends_shield_blanks", "\n a \r", "\n a \r"},
        Trimming{"lf_cr_is_no_pair", "\n\ra\n\r", "\n\ra\n\r"},
        Trimming{"one_pair_is_no_start_and_end_of_two", "\n\r\n\r", "\n\r\n\r"},
        Trimming{"no_break_space_stays", "\u00A0a\u00A0", "\u00A0a\u00A0"},
        Trimming{"other_controls_stay", "\v\fa\v\f", "\v\fa\v\f"}),
    by_name);

TEST(TrimmedText, is_found_in_a_huge_mix_of_white_space)
{
    const std::string space = repeated(" \t\r\n", million);
    const std::string text = space + "a" + space;
    EXPECT_EQ(trim_exchange_text(text), "a");
    EXPECT_EQ(trim_exchange_text(space), "");
}

} // namespace
} // namespace cuedrill::exchange
