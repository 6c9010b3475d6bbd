#include "exchange/return_check.h"

#include "bank/record_bank.h"
#include "exchange/import_report.h"

#include <algorithm>
#include <utility>

namespace cuedrill::exchange {
namespace {

/// Sentences, one behind the other.
class Sentences {
public:
    void add_if(bool applies, std::string_view sentence)
    {
        if (applies && !sentence.empty())
            m_text.append(m_text.empty() ? "" : " ").append(sentence);
    }
    [[nodiscard]] const std::string& text() const { return m_text; }

private:
    std::string m_text;
};

bool has_comment_line(std::string_view text)
{
    const std::string line_and_comment = std::string(common::cr_lf).append(comment_start);
    return text.starts_with(comment_start) || text.find(line_and_comment) != std::string_view::npos;
}

std::string without_nul(std::string text)
{
    std::erase(text, '\0');
    return text;
}

/// The last answer as the file has it.
std::string with_closing_line(const std::string& answer)
{
    return answer + "\r\n\r\n\r\n" + std::string(closing_line);
}

bool is_stored(const ReadRecord& record)
{
    return !record.question.text.empty() && !record.answer.text.empty() && too_long(record).empty();
}

} // namespace

void ReturnCheck::restart()
{
    m_lines_read = LineSplitter(common::cr_lf);
    m_reader = {};
    m_number = m_changed = m_records = 0;
    m_read.reset();
    m_lines = {};
}

// The marker before a question ends the answer before it. Where it does not, that answer holds one that has begun a
// question, and this record's texts go into that.
void ReturnCheck::add(const std::string& question, const std::string& answer, std::string_view lines)
{
    const std::size_t behind_marker = lines.find(common::cr_lf) + common::cr_lf.size();
    read(lines.substr(0, behind_marker));
    const bool is_joined = m_number > 0 && !m_read;
    if (m_number > 0)
        check(false);
    ++m_number;
    m_question = question;
    m_answer = answer;
    m_is_joined = is_joined;
    m_records = 0;
    m_read.reset();
    read(lines.substr(behind_marker));
    m_is_cut = m_read.has_value();
    m_read.reset();
}

void ReturnCheck::finish(std::string_view lines)
{
    read(lines);
    m_reader.finish([this](ReadRecord record) { take(std::move(record)); });
    if (m_number > 0)
        check(true);
}

/// Codes 0 are dropped before anything else is looked for.
void ReturnCheck::read(std::string_view lines)
{
    const auto sink = [this](ReadRecord record) { take(std::move(record)); };
    m_lines_read.add(
        without_nul(std::string(lines)), [&](std::string_view text) { m_reader.add(text, sink); },
        [&] { m_reader.end_line(sink); });
}

void ReturnCheck::take(ReadRecord record)
{
    for (ReadText* const part : {&record.question, &record.answer})
        part->text = m_text_compare.nfc(part->text);
    m_records += is_stored(record) ? 1 : 0;
    m_read = std::move(record);
}

void ReturnCheck::check(bool last)
{
    if (comes_back(last))
        return;
    ++m_changed;
    m_lines.add(m_number, reasons(last) + " " + quoted_line(m_question));
}

bool ReturnCheck::comes_back(bool last) const
{
    return !m_is_joined && !m_is_cut && m_read && is_stored(*m_read) && m_read->question.text == m_question &&
           m_read->answer.text == (last ? with_closing_line(m_answer) : m_answer);
}

std::string ReturnCheck::reasons(bool last) const
{
    const std::string question = without_nul(m_question);
    const std::string answer = without_nul(m_answer);
    const std::string_view read_question = trim_exchange_text(question);
    const std::string before_end = last ? with_closing_line(answer) : answer;
    const std::string_view read_answer = trim_exchange_text(before_end);

    Sentences found;
    found.add_if(m_is_joined, "It is joined to the question that begins at \"@Q@\" in the answer before.");
    found.add_if(holds_marker(question, Marker::answer), "The question holds \"@A@\".");
    found.add_if(holds_marker(answer, Marker::question), "The answer holds \"@Q@\".");
    found.add_if(has_comment_line(question), "A line of the question begins with \"/*/\".");
    found.add_if(has_comment_line(answer), "A line of the answer begins with \"/*/\".");
    const bool cut_up = !found.text().empty();
    found.add_if(m_records > 1, "It comes back as " + std::to_string(m_records) + " records.");
    found.add_if(read_question.empty(), "The question is empty.");
    found.add_if(trim_exchange_text(answer).empty(), "The answer is empty.");
    found.add_if(!read_question.empty() && read_question != question,
                 "Blanks, TABs or line breaks at an end of the question are dropped.");
    found.add_if(!trim_exchange_text(answer).empty() && read_answer != before_end,
                 "Blanks, TABs or line breaks at an end of the answer are dropped.");
    found.add_if(question.size() != m_question.size() || answer.size() != m_answer.size(),
                 "NUL characters are dropped.");
    found.add_if(!is_in_normal_form(question) || !is_in_normal_form(answer),
                 "A letter and an accent that is a character of its own become one character.");
    // What is cut up or left out has other lengths.
    if (cut_up)
        return found.text();
    found.add_if(true, bank::too_long_text("question", common::code_points(read_question)));
    found.add_if(true, bank::too_long_text(last ? "answer, with the line of hyphens behind it," : "answer",
                                           common::code_points(read_answer)));
    return found.text();
}

bool ReturnCheck::is_in_normal_form(const std::string& text) const
{
    return m_text_compare.nfc(text) == text;
}

} // namespace cuedrill::exchange
