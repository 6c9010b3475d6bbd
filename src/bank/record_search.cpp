#include "bank/record_search.h"

#include "bank/search_text.h"
#include "common/errors.h"
#include "common/text.h"
#include "store/records.h"

#include <utility>

namespace cuedrill::bank {
namespace {

/// Time limit of the search for similar questions, in seconds. With records of normal length it takes a fraction of it.
constexpr double longest_comparison = 2;

/// Adds the other questions that contain the word. The word is put into the pattern unquoted: an apostrophe would end
/// the pattern, and the rest of the word would run as SQL.
/// @param until deadline, in steady seconds.
/// @return whether there was room for all of their texts.
bool add_questions_with(std::string_view word, store::Course& course, std::string_view question,
                        const platform::TextCompare& text_compare, platform::Clock& clock, double until,
                        ListLines& found)
{
    if (has_apostrophe(word))
        throw common::Error("A word with an apostrophe cannot be looked for.");
    const auto check_time = [&] {
        if (clock.steady_seconds() >= until)
            throw common::Error("Looking for more words would take too long.");
    };
    check_time();
    const store::SideFields& side = course.Q_FIELD;
    const auto rows = course.database().open_recordset("Select * from qa where " + side.text + " like '*" +
                                                       std::string(word) + "*' ");
    for (; !rows->eof(); rows->move_next()) {
        check_time();
        const std::string other = store::stored_text(rows->field(side.text));
        if (text_compare.equal(common::trim_blanks(other), question))
            continue;
        auto marked = marked_word(other, word, text_compare);
        if (!marked)
            continue;
        if (!found.has_room_for(marked->size()))
            return false;
        found.add(std::move(*marked), score_of(*rows, side));
    }
    return true;
}

} // namespace

FoundRecords search(store::Course& course, const store::SideFields& side, std::string_view text)
{
    FoundRecords found;
    const auto rows = course.database().open_recordset("Select * from qa where " + side.text + " like '*" +
                                                       escape_like(text) + "*' order by " + side.text);
    for (; !rows->eof(); rows->move_next()) {
        std::string listed = store::stored_text(rows->field(side.text));
        if (!found.list.has_room_for(listed.size()))
            break;
        found.list.add(std::move(listed), score_of(*rows, side));
    }
    found.complete = rows->eof();
    return found;
}

SimilarQuestions similar_questions(store::Course& course, std::string_view question,
                                   const platform::TextCompare& text_compare, platform::Clock& clock)
{
    question = common::trim_blanks(question);
    const double until = clock.steady_seconds() + longest_comparison;
    SimilarQuestions similar;
    for (const std::string_view word : words_of(question)) {
        try {
            similar.complete = add_questions_with(word, course, question, text_compare, clock, until, similar.list);
        } catch (const common::Error& error) {
            similar.complete = false;
            similar.stop = {std::string(word), store::words_about(error, course)};
        }
        if (!similar.complete)
            break;
    }
    return similar;
}

bool has_apostrophe(std::string_view word)
{
    return word.find('\'') != std::string_view::npos;
}

std::optional<std::int64_t> record_of_line(store::Course& course, const store::SideFields& side, std::string_view line)
{
    const auto record = store::first_with_text(course.database(), side.text, text_of_line(line));
    return record ? std::optional(record->cnt) : std::nullopt;
}

} // namespace cuedrill::bank
