#include "exchange/return_check.h"

#include "bank/new_records.h"
#include "exchange/import_report.h"

#include <algorithm>
#include <utility>

namespace cuedrill::exchange {
namespace {

/// Joins sentences with blanks.
class Sentences {
public:
    void add_if(bool applies, std::string_view sentence)
    {
        if (applies && !sentence.empty())
            text_.append(text_.empty() ? "" : " ").append(sentence);
    }
    [[nodiscard]] const std::string& text() const { return text_; }

private:
    std::string text_;
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

/// The last answer as it is read back from the file.
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
    lines_read_ = LineSplitter(common::cr_lf);
    reader_ = {};
    number_ = changed_ = records_ = 0;
    read_.reset();
    lines_ = {};
    reasons_.clear();
}

// The marker before a question ends the previous answer. If it does not, the previous answer contains a marker that
// began a question, and this record's texts become part of that one.
void ReturnCheck::add(const std::string& question, const std::string& answer, std::string_view lines)
{
    const std::size_t behind_marker = lines.find(common::cr_lf) + common::cr_lf.size();
    read(lines.substr(0, behind_marker));
    const bool is_joined = number_ > 0 && !read_;
    if (number_ > 0)
        check(false);
    ++number_;
    question_ = question;
    answer_ = answer;
    is_joined_ = is_joined;
    records_ = 0;
    read_.reset();
    read(lines.substr(behind_marker));
    is_cut_ = read_.has_value();
    read_.reset();
}

void ReturnCheck::finish(std::string_view lines)
{
    read(lines);
    reader_.finish([this](ReadRecord record) { take(std::move(record)); });
    if (number_ > 0)
        check(true);
}

/// The reader drops NUL characters before it looks for anything else, so they are dropped here, too.
void ReturnCheck::read(std::string_view lines)
{
    const auto sink = [this](ReadRecord record) { take(std::move(record)); };
    lines_read_.add(
        without_nul(std::string(lines)), [&](std::string_view text) { reader_.add(text, sink); },
        [&] { reader_.end_line(sink); });
}

void ReturnCheck::take(ReadRecord record)
{
    for (ReadText* const part : {&record.question, &record.answer})
        part->text = text_compare_.nfc(part->text);
    records_ += is_stored(record) ? 1 : 0;
    read_ = std::move(record);
}

void ReturnCheck::check(bool last)
{
    reasons_.clear();
    if (comes_back(last))
        return;
    ++changed_;
    reasons_ = reasons(last);
    lines_.add(record_name(number_), reasons_ + " " + quoted_line(question_));
}

bool ReturnCheck::comes_back(bool last) const
{
    return !is_joined_ && !is_cut_ && read_ && is_stored(*read_) && read_->question.text == question_ &&
           read_->answer.text == (last ? with_closing_line(answer_) : answer_);
}

std::string ReturnCheck::reasons(bool last) const
{
    const std::string question = without_nul(question_);
    const std::string answer = without_nul(answer_);
    const std::string_view read_question = trim_exchange_text(question);
    const std::string before_end = last ? with_closing_line(answer) : answer;
    const std::string_view read_answer = trim_exchange_text(before_end);

    Sentences found;
    found.add_if(is_joined_, "It is joined to the question that begins at \"@Q@\" in the answer before.");
    found.add_if(holds_marker(question, Marker::answer), "The question holds \"@A@\".");
    found.add_if(holds_marker(answer, Marker::question), "The answer holds \"@Q@\".");
    found.add_if(has_comment_line(question), "A line of the question begins with \"/*/\".");
    found.add_if(has_comment_line(answer), "A line of the answer begins with \"/*/\".");
    const bool cut_up = !found.text().empty();
    found.add_if(records_ > 1, "It comes back as " + std::to_string(records_) + " records.");
    found.add_if(read_question.empty(), "The question is empty.");
    found.add_if(trim_exchange_text(answer).empty(), "The answer is empty.");
    found.add_if(!read_question.empty() && read_question != question,
                 "Blanks, TABs or line breaks at an end of the question are dropped.");
    found.add_if(!trim_exchange_text(answer).empty() && read_answer != before_end,
                 "Blanks, TABs or line breaks at an end of the answer are dropped.");
    found.add_if(question.size() != question_.size() || answer.size() != answer_.size(), "NUL characters are dropped.");
    found.add_if(!is_in_normal_form(question) || !is_in_normal_form(answer),
                 "A letter and an accent that is a character of its own become one character.");
    // A text that is split or partly dropped has another length.
    if (cut_up)
        return found.text();
    found.add_if(true, bank::too_long_text("question", common::code_points(read_question)));
    found.add_if(true, bank::too_long_text(last ? "answer, with the line of hyphens behind it," : "answer",
                                           common::code_points(read_answer)));
    return found.text();
}

bool ReturnCheck::is_in_normal_form(const std::string& text) const
{
    return text_compare_.nfc(text) == text;
}

} // namespace cuedrill::exchange
