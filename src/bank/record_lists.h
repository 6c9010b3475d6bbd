#pragma once

#include "bank/list_lines.h"
#include "bank/list_screen.h"
#include "bank/record_bank.h"
#include "bank/record_editor.h"
#include "platform/clock.h"
#include "platform/desktop.h"
#include "platform/text_compare.h"
#include "scheduler/end_of_program.h"
#include "scheduler/ports.h"
#include "store/course.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace cuedrill::bank {

/// The lists of records: all questions in an order, what a search has found, questions with the words of another one.
/// The list built last is kept until the next one is complete.
class RecordLists {
public:
    struct Services {
        platform::Desktop& desktop;
        const platform::TextCompare& text_compare;
        scheduler::StatusLine& status;
        RecordEditor& editor;
        scheduler::EndOfProgram& end_of_program;
        platform::Clock& clock;
    };

    RecordLists(store::Course& course, RecordBank& bank, ListScreen& screen, const Services& services)
        : m_course(course), m_bank(bank), m_screen(screen), m_services(services)
    {
    }

    /// Commands: all questions, each list in the order that its name tells.
    /// @throws what `build_question_list` throws.
    void m_show_all();
    void m_view_all_q() { m_show_all(); }
    void m_show_all_alphabetically();
    void m_all_q_and_a();
    void m_show_sort_by_score();
    void m_show_sort_last_show();
    void m_history();
    void m_view_history() { m_history(); }

    /// Commands: ask for a text and list the questions, or the answers, that hold it. What goes wrong is told in a box;
    /// the list shown before stays then.
    void m_find_q() { find(true); }
    void m_find_a() { find(false); }

    /// Command: lists, for each word of the question on display, the other questions that have it. What goes wrong, or
    /// takes too long, is told in a box; what was found until then is listed.
    void list_similar();

    /// Command: shows the list built last once more, without reading the course; answers are not shown again.
    void recall_find_list();

    /// Puts the record of a line on display: the first one with its text. Offers to save what is being typed first.
    /// Where no record is found, tells which search leads to it.
    /// @throws common::OverflowError when the record's number does not fit 16 bits
    /// @throws platform::DatabaseError
    void listav_click(const std::string& line);

    /// Builds the list of all questions anew, as it was built last, where it is what the user sees: a record has come
    /// or was changed. What goes wrong is told in a box; the list stays as it is then.
    void rebuild_shown_list();

    /// The sides of the course were exchanged: what the lines of the list are texts of has become the other side.
    void exchange_sides() { m_find_in_questions = !m_find_in_questions; }

    /// Forgets the list; its records are those of a course that is no longer open.
    void forget_list();

private:
    /// A list of questions before it is shown.
    struct QuestionList {
        ListLines list;
        std::vector<std::string> answers; ///< of each record; empty when they are not wanted
        std::vector<std::string> lines;
        bool complete = true;
    };

    void build_question_list(const std::string& clause, bool with_answers);
    [[nodiscard]] std::optional<QuestionList> list_questions(const std::string& clause, bool with_answers);
    [[nodiscard]] std::optional<QuestionList> read_questions(const std::string& clause, bool with_answers);
    void make_lines(QuestionList& questions, bool equal_stand_together);
    [[nodiscard]] bool has_other_answer(const ListLines& list, std::size_t place, bool equal_stand_together) const;
    [[nodiscard]] std::string risposta_item_selezionato(const std::string& question);
    void keep_questions(QuestionList questions, const std::string& clause, bool with_answers);
    void show_question_count();
    void find(bool in_questions);
    [[nodiscard]] bool find_text();
    [[nodiscard]] ListLines search(const std::string& text, bool& complete);
    [[nodiscard]] ListLines similar_to(const std::string& question, bool& complete);
    [[nodiscard]] bool collect_similar(const std::string& question, std::string_view word, double until,
                                       ListLines& found);
    void show_similar_count(bool complete);
    void show_the_other_way();
    void tell(const std::string& text);
    void tell_failure(const std::string& what_failed, const common::Error& error, const std::string& advice = {});

    store::Course& m_course;
    RecordBank& m_bank;
    ListScreen& m_screen;
    Services m_services;

    ListLines m_list;
    std::string m_last_list_kind; ///< empty before the first list
    std::string m_last_list_clause;
    bool m_last_list_with_answers = false;
    bool m_find_in_questions = true; ///< the lines list questions, not answers
    std::string m_last_search_string;
};

} // namespace cuedrill::bank
