#pragma once

#include <array>
#include <cstddef>

namespace cuedrill::drill {

/// What the user is doing, as far as it decides what can be done next.
enum class Mode : std::size_t {
    nothing,  ///< no question is on display
    question, ///< a question is on display, its answer is not
    answer,   ///< the answer is on display too
    editing   ///< a record is being typed or changed
};
inline constexpr std::size_t modes = 4;

/// The commands that are not always enabled, or that have a button of the toolbar.
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
    question_number
};

struct EnablingRow {
    Command command;
    std::array<bool, modes> enabled; ///< by mode
};

/// In which mode each command is enabled. Three commands have one more condition: statistics and hints must not be on
/// display already, and typing must not be what is always done.
inline constexpr std::array enabling_table{
    //                                     nothing, question, answer, editing
    EnablingRow{Command::next_question, {true, true, true, true}},
    EnablingRow{Command::show_answer, {false, true, true, false}},
    EnablingRow{Command::show_stats, {true, true, true, true}},
    EnablingRow{Command::show_hints, {false, true, false, false}},
    EnablingRow{Command::let_me_type, {false, true, false, false}},
    EnablingRow{Command::success, {false, true, true, false}},
    EnablingRow{Command::failure, {false, true, true, false}},
    EnablingRow{Command::edit, {false, true, true, false}},
    EnablingRow{Command::insert, {true, true, true, false}},
    EnablingRow{Command::save, {false, false, false, true}},
    EnablingRow{Command::delete_record, {true, true, true, false}},
    EnablingRow{Command::undo, {true, true, true, false}},
    EnablingRow{Command::reset_all, {true, true, true, false}},
    EnablingRow{Command::question_number, {false, true, true, false}},
};

} // namespace cuedrill::drill
