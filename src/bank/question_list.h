#pragma once

#include "bank/list_lines.h"
#include "platform/text_compare.h"
#include "store/course.h"

#include <optional>
#include <string>
#include <vector>

namespace cuedrill::bank {

/// The questions of a course in some order.
struct QuestionList {
    std::string clause;               ///< that gives the order: "order by cnt"
    ListLines list;                   ///< the questions with their levels
    std::vector<std::string> answers; ///< of each record; empty when they are not wanted
    std::vector<std::string> lines;   ///< as they are shown
    bool complete = true;             ///< false when records were left out for want of room
    int answers_not_found = 0;        ///< lines without an answer because no record has their question any more
};

/// Reads the questions of the course, up to the length of a list. The lines are still to be made.
/// @return nothing when the course has no records.
/// @throws platform::DatabaseError
/// @throws common::OverflowError when a level does not fit 16 bits
[[nodiscard]] std::optional<QuestionList> read_questions(store::Course& course, const std::string& clause,
                                                         bool with_answers);

/// Makes the lines of the list, each record on one. Beside a question stands the answer of the first record that has
/// it, which is the record that its line leads to. Uses up the answers, and cuts off what a list has no room for.
/// @throws platform::DatabaseError
void make_lines(QuestionList& questions, store::Course& course, const platform::TextCompare& text_compare);

/// The answer of the first record with this question.
/// @throws platform::DatabaseError
[[nodiscard]] std::optional<std::string> risposta_item_selezionato(store::Course& course, const std::string& question);

} // namespace cuedrill::bank
