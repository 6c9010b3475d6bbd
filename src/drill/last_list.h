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

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace cuedrill::drill {

/// Message about a list that was cut off.
inline constexpr const char* list_not_complete = "Too many items found, the list is not complete.";

/// The kind of the last list: values of `last_list_kind`.
inline constexpr const char* select_questions = "select_questions";
inline constexpr const char* find_question = "find_question";
inline constexpr const char* find_answer = "find_answer";
inline constexpr const char* similar_list = "list_similar";

/// The list of records built last, and `listav`, the control that shows it. It is kept until the next list is complete.
class LastList {
public:
    LastList(store::Course& course, platform::ListBox& listav, DrillState& state, const EditFlags& edit_flags,
             WindowLayout& layout, StatusLine& status, platform::Desktop& desktop,
             const platform::TextCompare& text_compare)
        : course_(course), listav_(listav), state_(state), edit_flags_(edit_flags), layout_(layout), status_(status),
          desktop_(desktop), text_compare_(text_compare)
    {
    }

    /// Lists all questions in the order of `clause`, with their answers if `with_answers` is set, and shows the list.
    /// @return false if the course has no records; the previous list stays then.
    /// @throws platform::DatabaseError, common::OverflowError; the previous list stays then.
    [[nodiscard]] bool build_question_list(const std::string& clause, bool with_answers);

    /// If a list of all questions is visible, builds it again after a record was added or changed. An error is reported
    /// in a box; the list stays as it is then.
    void rebuild_shown_list();

    /// Shows the records found by a search.
    /// @param of_questions whether the lines show questions; otherwise they show answers.
    void show_found(bank::ListLines found, const char* kind, bool of_questions);

    /// Command: shows the last list again without reading the course; answers are not shown again.
    void recall_find_list();

    /// The side of the course whose texts are in the lines.
    [[nodiscard]] const store::SideFields& side() const
    {
        return find_in_questions() ? course_.Q_FIELD : course_.A_FIELD;
    }
    /// Attaches what is done with the line that the user chooses.
    void attach(std::function<void(const std::string& line)> choose) { listav_.on_click = std::move(choose); }

    /// Whether the lines show questions; otherwise they show answers. That changes with the direction of the course.
    [[nodiscard]] bool find_in_questions() const { return column_ != course_.A_FIELD.text; }

    /// Clears the list when its course is closed.
    void forget_list();

private:
    [[nodiscard]] std::optional<bank::QuestionList> list_questions(const std::string& clause, bool with_answers);
    [[nodiscard]] std::optional<bank::QuestionList> read_questions(const std::string& clause, bool with_answers);
    [[nodiscard]] std::optional<std::size_t> line_on_display(const bank::ListLines& list, bool of_questions) const;
    void set_for_list(std::vector<std::string> lines, std::optional<std::size_t> on_display);
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
    std::string last_list_kind_; ///< empty until the first list is built
    std::string last_list_clause_;
    bool last_list_with_answers_ = false;
    std::string column_; ///< column of the texts in the lines; empty until the first list is built
};

} // namespace cuedrill::drill
