#pragma once

#include "bank/record_search.h"
#include "drill/display.h"
#include "drill/drill_state.h"
#include "drill/end_of_program.h"
#include "drill/last_list.h"
#include "drill/record_editor.h"
#include "drill/status_line.h"
#include "platform/clock.h"
#include "platform/desktop.h"
#include "platform/text_compare.h"
#include "store/course.h"

#include <optional>
#include <string>

namespace cuedrill::drill {

/// The commands that list records, and the click on a line that shows its record.
class RecordLists {
public:
    RecordLists(store::Course& course, const DrillState& state, LastList& list, Display& display, StatusLine& status,
                RecordEditor& editor, EndOfProgram& end_of_program, platform::Desktop& desktop,
                const platform::TextCompare& text_compare, platform::Clock& clock)
        : course_(course), state_(state), list_(list), display_(display), status_(status), editor_(editor),
          end_of_program_(end_of_program), desktop_(desktop), text_compare_(text_compare), clock_(clock)
    {
    }

    /// Attaches the click on a line of the list.
    void attach();

    /// Commands: list all questions, in the order that the name of the command says. An empty course ends the program.
    /// @throws whatever LastList::build_question_list throws.
    void m_show_all();
    void m_view_all_q() { m_show_all(); }
    void m_show_all_alphabetically();
    void m_all_q_and_a();
    void m_show_sort_by_score();
    void m_show_sort_last_show();
    void m_history();
    void m_view_history() { m_history(); }

    /// Commands: ask for a text and list the questions, or the answers, that contain it. An error is reported in a box;
    /// the previous list stays then.
    void m_find_q() { find_text(true); }
    void m_find_a() { find_text(false); }

    /// Command: for each word of the question on display, lists the other questions that contain it. If an error occurs
    /// or the search takes too long, a box says so, and the records found so far are listed.
    void list_similar();

    /// Shows the record of a line: the first one with its text. First offers to save unsaved texts. If no record is
    /// found, tells which search leads to it.
    /// @throws common::OverflowError if the record's number does not fit 16 bits
    /// @throws platform::DatabaseError
    void listav_click(const std::string& line);

private:
    void list_all(const std::string& clause, bool with_answers);
    void find_text(bool in_questions);
    [[nodiscard]] std::optional<bank::FoundRecords> search(bool in_questions, const std::string& text);
    [[nodiscard]] bank::SimilarQuestions find_similar(const std::string& question);
    void tell_missing(const bank::SimilarQuestions& similar);
    void tell_similar_count(std::size_t count, bool complete);
    void tell(const std::string& text);
    void warn(const std::string& what_failed, const std::string& reason, const std::string& advice);

    store::Course& course_;
    const DrillState& state_;
    LastList& list_;
    Display& display_;
    StatusLine& status_;
    RecordEditor& editor_;
    EndOfProgram& end_of_program_;
    platform::Desktop& desktop_;
    const platform::TextCompare& text_compare_;
    platform::Clock& clock_;

    std::string last_search_string_;
};

} // namespace cuedrill::drill
