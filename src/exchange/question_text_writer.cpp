#include "exchange/question_text_writer.h"

#include "common/text.h"
#include "exchange/code_page_1252.h"
#include "exchange/text_decoding.h"
#include "store/course.h"

#include <functional>
#include <string_view>

namespace cuedrill::exchange {
namespace {

std::string line(std::string_view text)
{
    return std::string(text).append(common::cr_lf);
}

std::string comment(std::string_view text)
{
    return line("/*/ " + std::string(text));
}

/// A line end in the title would end the comment.
std::string heading(const QuestionTextForm& form)
{
    const std::string title = common::replace_all(common::with_one_kind_of_line_end(form.course_title), "\n", " ");
    return comment("Cuedrill questions and answers exported form " + title + " on " +
                   common::format_date_time(form.written)) +
           line("") + line("");
}

std::string record(const std::string& question, const std::string& answer)
{
    return line("@Q@") + line(question) + line("@A@") + line(answer) + line("");
}

std::string ending(std::int64_t count)
{
    return line("") + line(closing_line) + comment(std::to_string(count) + " questions and answers exported");
}

/// Receives one or more whole lines; returns false to stop.
using Sink = std::function<bool(const std::string& lines)>;

/// Passes the whole text to `sink`, until it returns false.
/// @return the number of records passed.
std::int64_t hand_on(platform::Recordset& rows, const QuestionTextForm& form, ReturnCheck& check, const Sink& sink)
{
    check.restart();
    if (!sink(heading(form)))
        return 0;
    std::int64_t count = 0;
    for (; !rows.eof(); rows.move_next()) {
        const std::string number = form.numbered ? comment(std::to_string(count + 1)) : "";
        const std::string question = store::stored_text(rows.field("q"));
        const std::string answer = store::stored_text(rows.field("a"));
        const std::string lines = record(question, answer);
        if (!sink(number + lines))
            return count;
        check.add(question, answer, lines);
        ++count;
    }
    const std::string end = ending(count);
    sink(end);
    check.finish(end);
    return count;
}

/// Writes lines in Windows-1252 as long as every character exists there.
class CodePageOutput {
public:
    explicit CodePageOutput(platform::Replacement& file) : file_(file) {}

    /// Returns false, with nothing written, if a character does not exist in Windows-1252.
    bool write(const std::string& lines)
    {
        const auto bytes = utf8_to_code_page_1252(lines);
        fits_ = bytes.has_value();
        if (!bytes)
            return false;
        if (*bytes != lines) {
            all_ascii_ = false;
            all_utf8_ = all_utf8_ && is_read_as_utf8(*bytes);
        }
        file_.write(*bytes);
        return true;
    }

    /// Whether a reader gets back what was written. It must not take the file for UTF-8, unless all of it is ASCII. No
    /// UTF-8 sequence spans a line end, so the file is well-formed UTF-8 exactly if all its lines are.
    [[nodiscard]] bool is_faithful() const { return fits_ && (all_ascii_ || !all_utf8_); }

private:
    platform::Replacement& file_;
    bool fits_ = true;
    bool all_ascii_ = true;
    bool all_utf8_ = true;
};

} // namespace

std::int64_t write_question_text(platform::Replacement& file, platform::Recordset& rows, const QuestionTextForm& form,
                                 ReturnCheck& check)
{
    CodePageOutput code_page(file);
    const std::int64_t count =
        hand_on(rows, form, check, [&](const std::string& lines) { return code_page.write(lines); });
    if (code_page.is_faithful())
        return count;
    file.restart();
    rows.move_first();
    file.write(utf8_mark);
    return hand_on(rows, form, check, [&](const std::string& lines) {
        file.write(lines);
        return true;
    });
}

} // namespace cuedrill::exchange
