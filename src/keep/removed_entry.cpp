#include "keep/removed_entry.h"

#include "common/text.h"
#include "exchange/question_text.h"
#include "exchange/return_check.h"

namespace cuedrill::keep {
namespace {

/// The texts of a record that follows an entry, to see whether it is read as a record of its own.
constexpr const char* next_question = "Next question";
constexpr const char* next_answer = "Next answer";

std::string line(std::string_view text)
{
    return std::string(text).append(common::cr_lf);
}

std::string comment(const std::string& text)
{
    return line(std::string(exchange::comment_start) + " " + text);
}

std::string_view words_of(Reason reason)
{
    switch (reason) {
    case Reason::deleted:
        return "deleted";
    case Reason::replaced:
        return "replaced by an edit";
    case Reason::perhaps_unsaved:
        return "typed and perhaps not saved";
    case Reason::unsaved:
        break;
    }
    return "typed and not saved";
}

/// A text that begins like a comment follows its marker in the same line, where it is none.
std::string marked(std::string_view marker, const std::string& text)
{
    const std::string_view separator = text.starts_with(exchange::comment_start) ? " " : common::cr_lf;
    return std::string(marker).append(separator).append(line(text));
}

std::string record(const std::string& question, const std::string& answer)
{
    return marked("@Q@", question) + marked("@A@", answer);
}

/// A line end in the path would end the comment.
std::string on_one_line(const std::string& path)
{
    return common::replace_all(common::with_one_kind_of_line_end(path), "\n", " ");
}

} // namespace

std::string entry_of(const RemovedTexts& removed, const platform::TextCompare& text_compare)
{
    const auto& [question, answer] = removed.texts;
    std::string lines = record(question, answer);
    exchange::ReturnCheck check(text_compare);
    check.add(question, answer, lines);
    check.add(next_question, next_answer, record(next_question, next_answer));
    // A marker in the answer has begun another question, which ends here instead of within the next entry.
    if (check.last_is_joined())
        lines += line("@A@");

    std::string comments =
        comment(common::format_date_time(removed.when) + ", " + std::string(words_of(removed.reason)));
    comments += comment("from " + on_one_line(removed.course));
    if (!check.reasons_before_last().empty())
        comments += comment("An import does not bring this back as it was. " + check.reasons_before_last());
    return comments + lines + line("") + std::string(entry_end);
}

} // namespace cuedrill::keep
