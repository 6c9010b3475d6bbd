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
    std::string clause;               ///< gives the order: "order by cnt"
    ListLines list;                   ///< the questions with their levels
    std::vector<std::string> answers; ///< one per record; empty if not requested
    std::vector<std::string> lines;   ///< as they are shown
    bool complete = true;             ///< false if records were left out for lack of room
    int answers_not_found = 0;        ///< lines without an answer because no record has their question any more
};

/// Reads the questions of the course, up to the maximum length of a list. `make_lines` makes the lines.
/// @return std::nullopt if the course has no records.
/// @throws platform::DatabaseError
/// @throws common::OverflowError when a level does not fit 16 bits
[[nodiscard]] std::optional<QuestionList> read_questions(store::Course& course, const std::string& clause,
                                                         bool with_answers);

/// Makes one line per record. Each question is shown with the answer of the first record that has this question,
/// because the line leads to that record. Consumes the answers, and cuts off records that the list has no room for.
/// @throws platform::DatabaseError
void make_lines(QuestionList& questions, store::Course& course, const platform::TextCompare& text_compare);

/// The answer of the first record with this question; std::nullopt if there is none.
/// @throws platform::DatabaseError
[[nodiscard]] std::optional<std::string> risposta_item_selezionato(store::Course& course, const std::string& question);

} // namespace cuedrill::bank
