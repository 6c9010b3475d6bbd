#include "exchange/return_check.h"

#include "bank/record_bank.h"
#include "common/text.h"
#include "exchange/question_text.h"

#include <algorithm>

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

} // namespace

void ReturnCheck::restart()
{
    m_number = m_changed = 0;
    m_lines = {};
}

// Which record is the last one is known only when there is no further one.
void ReturnCheck::add(const std::string& question, const std::string& answer)
{
    if (m_number > 0)
        check(false);
    ++m_number;
    m_question = question;
    m_answer = answer;
}

void ReturnCheck::finish()
{
    if (m_number > 0)
        check(true);
}

void ReturnCheck::check(bool last)
{
    const std::string why = reasons(last);
    if (why.empty())
        return;
    ++m_changed;
    m_lines.add(m_number, why + " " + quoted_line(m_question));
}

std::string ReturnCheck::reasons(bool last) const
{
    const std::string question = without_nul(m_question);
    const std::string answer = without_nul(m_answer);
    const std::string_view read_question = trim_exchange_text(question);
    const std::string before_end = last ? answer + "\r\n\r\n\r\n" + std::string(closing_line) : answer;
    const std::string_view read_answer = trim_exchange_text(before_end);

    Sentences found;
    found.add_if(holds_marker(question, Marker::answer), "The question holds \"@A@\".");
    found.add_if(holds_marker(answer, Marker::question), "The answer holds \"@Q@\".");
    found.add_if(has_comment_line(question), "A line of the question begins with \"/*/\".");
    found.add_if(has_comment_line(answer), "A line of the answer begins with \"/*/\".");
    const bool cut_up = !found.text().empty();
    found.add_if(read_question.empty(), "The question is empty.");
    found.add_if(trim_exchange_text(answer).empty(), "The answer is empty.");
    found.add_if(!read_question.empty() && read_question != question,
                 "Blanks, TABs or line breaks at an end of the question are dropped.");
    found.add_if(!trim_exchange_text(answer).empty() && read_answer != before_end,
                 "Blanks, TABs or line breaks at an end of the answer are dropped.");
    found.add_if(question.size() != m_question.size() || answer.size() != m_answer.size(),
                 "NUL characters are dropped.");
    found.add_if(!is_in_normal_form(question) || !is_in_normal_form(answer), "Characters are written in another form.");
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
