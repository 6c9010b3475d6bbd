#pragma once

#include "bank/list_lines.h"
#include "bank/question_list.h"
#include "drill/drill_state.h"
#include "drill/edit_flags.h"
#include "drill/status_line.h"
#include "drill/window_layout.h"
#include "platform/controls.h"
#include "platform/desktop.h"
#include "platform/text_compare.h"
#include "store/course.h"
#include "store/side_fields.h"

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace cuedrill::drill {

/// What is told where a list had to end early.
inline constexpr const char* list_not_complete = "Too many items found, the list is not complete.";

/// What kind of list was built last: the values of `last_list_kind`.
inline constexpr const char* select_questions = "select_questions";
inline constexpr const char* find_question = "find_question";
inline constexpr const char* find_answer = "find_answer";
inline constexpr const char* similar_list = "list_similar";

/// The list of records built last, and `listav`, where it is shown. It is kept until the next one is complete.
class LastList {
public:
    LastList(store::Course& course, platform::ListBox& listav, DrillState& state, const EditFlags& edit_flags,
             WindowLayout& layout, StatusLine& status, platform::Desktop& desktop,
             const platform::TextCompare& text_compare)
        : course_(course), listav_(listav), state_(state), edit_flags_(edit_flags), layout_(layout), status_(status),
          desktop_(desktop), text_compare_(text_compare)
    {
    }

    /// Lists all questions in the order of `clause`, with their answers where they are wanted, and shows them.
    /// @return false when the course has no records; the list before stays then.
    /// @throws platform::DatabaseError, common::OverflowError; the list before stays then too.
    [[nodiscard]] bool build_question_list(const std::string& clause, bool with_answers);

    /// Builds the list of all questions anew, as it was built last, where it is what the user sees: a record has come
    /// or was changed. What goes wrong is told in a box; the list stays as it is then.
    void rebuild_shown_list();

    /// Shows the records that were found.
    /// @param of_questions whether their lines are questions, not answers.
    void show_found(bank::ListLines found, const char* kind, bool of_questions);

    /// Command: shows the list once more, without reading the course; answers are not shown again.
    void recall_find_list();

    /// The side of the course that the lines are texts of.
    [[nodiscard]] const store::SideFields& side() const
    {
        return find_in_questions_ ? course_.Q_FIELD : course_.A_FIELD;
    }
    /// Attaches what is done with the line that the user chooses.
    void attach(std::function<void(const std::string& line)> choose) { listav_.on_click = std::move(choose); }

    [[nodiscard]] bool find_in_questions() const { return find_in_questions_; }

    /// The sides of the course were exchanged: what the lines are texts of has become the other side.
    void exchange_sides() { find_in_questions_ = !find_in_questions_; }

    /// Forgets the list; its records are those of a course that is no longer open.
    void forget_list();

private:
    [[nodiscard]] std::optional<bank::QuestionList> list_questions(const std::string& clause, bool with_answers);
    [[nodiscard]] std::optional<bank::QuestionList> read_questions(const std::string& clause, bool with_answers);
    void set_for_list(std::vector<std::string> lines);
    void keep_questions(bank::QuestionList questions, bool with_answers);
    void keep(bank::ListLines list, const char* kind, bool of_questions);

    store::Course& course_;
    platform::ListBox& listav_;
    DrillState& state_;
    const EditFlags& edit_flags_;
    WindowLayout& layout_;
    StatusLine& status_;
    platform::Desktop& desktop_;
    const platform::TextCompare& text_compare_;

    bank::ListLines list_;
    std::string last_list_kind_; ///< empty before the first list
    std::string last_list_clause_;
    bool last_list_with_answers_ = false;
    bool find_in_questions_ = true; ///< the lines list questions, not answers
};

} // namespace cuedrill::drill
