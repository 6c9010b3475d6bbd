#pragma once

#include "drill/drill_state.h"

#include <array>
#include <cstddef>

namespace cuedrill::drill {

/// What the user is doing, as far as it decides what can be done next.
enum class Mode : std::size_t {
    empty_course, ///< there are no questions
    nothing,      ///< no question is on display
    question,     ///< a question is on display, its answer is not
    answer,       ///< the answer is on display too
    new_record,   ///< a record is being typed
    edit_record   ///< the record on display is being changed
};
inline constexpr std::size_t modes = 6;

/// The commands that are not always enabled, or that have a button of the toolbar or the dialog.
enum class Command {
    next_question,
    show_answer,
    show_stats,
    show_hints,
    let_me_type,
    success,
    failure,
    edit,
    insert,
    save,
    delete_record,
    undo,
    reset_all,
    question_number,
    list_similar,
    recall_list,
    yes,
    no,
    ignore,
    type_question, ///< the box can be typed in
    type_answer
};

struct EnablingRow {
    Command command;
    std::array<bool, modes> enabled; ///< by mode
};

/// In which mode each command is enabled. Some have one more condition. "Let me Type" is disabled while every answer is
/// typed. "Yes" and "No" as a verdict need an answer that is shown; as "shall the answer be shown" they need a question
/// on display; and "No" ends the program only while no question is on display. "Recall last list" needs a list that was
/// built before. Statistics and hints have the conditions of the `place_table`.
inline constexpr std::array enabling_table{
    //                                  empty, nothing, question, answer, new, edit
    EnablingRow{Command::next_question, {true, true, true, true, true, true}},
    EnablingRow{Command::show_answer, {false, false, true, true, false, false}},
    EnablingRow{Command::show_stats, {true, true, true, true, true, true}},
    EnablingRow{Command::show_hints, {true, true, true, false, false, false}},
    EnablingRow{Command::let_me_type, {false, false, true, false, false, false}},
    EnablingRow{Command::success, {false, false, true, true, false, false}},
    EnablingRow{Command::failure, {false, false, true, true, false, false}},
    EnablingRow{Command::edit, {false, false, true, true, false, false}},
    EnablingRow{Command::insert, {true, true, true, true, false, false}},
    EnablingRow{Command::save, {false, false, false, false, true, true}},
    EnablingRow{Command::delete_record, {true, true, true, true, false, false}},
    EnablingRow{Command::undo, {false, true, true, true, false, false}},
    EnablingRow{Command::reset_all, {true, true, true, true, false, false}},
    EnablingRow{Command::question_number, {false, false, true, true, false, false}},
    EnablingRow{Command::list_similar, {false, false, true, true, false, true}},
    EnablingRow{Command::recall_list, {true, true, true, true, true, true}},
    EnablingRow{Command::yes, {true, true, true, true, false, false}},
    EnablingRow{Command::no, {true, true, true, true, false, false}},
    EnablingRow{Command::ignore, {true, true, true, true, false, false}},
    EnablingRow{Command::type_question, {false, false, false, false, true, true}},
    EnablingRow{Command::type_answer, {false, false, true, false, true, true}},
};

/// What is visible, and can be asked for, while something stands in the shared place.
struct PlaceRow {
    SharedPlace place;
    bool frame_stats;
    bool panel_lista;
    bool t_hint;
    bool listav;
    bool show_stats; ///< the command is enabled, where its mode allows it too
    bool show_hints;
};

inline constexpr std::array place_table{
    //                               frame_stats, panel_lista, t_hint, listav, show_stats, show_hints
    PlaceRow{SharedPlace::statistics, true, false, false, false, false, true},
    PlaceRow{SharedPlace::hint, false, true, true, false, true, false},
    PlaceRow{SharedPlace::list, false, true, false, true, true, true},
};

} // namespace cuedrill::drill
