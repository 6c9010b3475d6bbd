#pragma once

#include "common/twips.h"
#include "drill/mode.h"

#include <optional>
#include <span>
#include <string_view>

namespace cuedrill::drill {

enum class MenuName { file, options, lists, actions, show, find, help };

struct MenuRow {
    MenuName menu;
    const char* name;
    const char* caption;
};

/// All commands of the menus, the toolbar and the single keys.
enum class Command {
    open_course,
    new_course,
    change_title,
    compact,
    repair,
    import_questions,
    export_questions,
    clear_all,
    exit,
    cue_cards,
    always_type,
    always_hint,
    change_target,
    random_extraction,
    invert,
    list_similar,
    list_alphabetically,
    list_by_score,
    list_by_creation,
    list_last_shown_first,
    list_last_shown_last,
    list_with_answers,
    show_answer,
    success,
    failure,
    next_question,
    edit,
    delete_record,
    undo,
    reset_all,
    agenda,
    show_stats,
    show_hints,
    count_mature,
    question_number,
    show_all,
    show_history,
    find_question,
    find_answer,
    recall_list,
    help,
    context_help,
    score_table,
    version_history,
    web_site,
    about,
    let_me_type,
    insert,
    repeat_question,
    tell_figures,
    save
};

/// The place of a command in the menus.
struct MenuEntryRow {
    MenuName menu;
    const char* name;
    const char* caption;
    bool checkable = false; ///< an option, with a check mark while it is on
};

inline constexpr char no_key = 0;

/// The button of a command in the toolbar.
struct ButtonRow {
    int number; ///< counted from 1, in toolbar order
    const char* caption;
    const char* help_text;     ///< for the tool tip
    common::Twips extra_width; ///< in addition to the width of the caption
};

/// A command and everything that the window shows for it.
struct CommandRow {
    Command command;
    InModes modes; ///< modes in which it is enabled; some commands have a further condition (see WindowLayout)
    std::optional<MenuEntryRow> entry{};
    std::optional<ButtonRow> button{};
    char key = no_key;          ///< lower-case letter that runs the command while no text box has the focus
    const char* help = nullptr; ///< text of the context help; null for none
    /// lower-case letter that runs the command with Ctrl, from anywhere in the window
    char control_key = no_key;
};

/// The menus, in order.
std::span<const MenuRow> menu_table();

/// Every command once; the commands of one menu are in menu order. To add a command, add its name to the enumeration, a
/// row here and a case in DrillCommands::run; CONTRIBUTING.md says which documents and tests name it, too.
std::span<const CommandRow> command_table();

const CommandRow& row_of(Command command);

/// The command that has this key, a lower-case letter; std::nullopt if there is none.
std::optional<Command> command_with_key(char key);

/// The command that this key, a lower-case letter, runs with Ctrl; std::nullopt if there is none.
std::optional<Command> command_with_control_key(char key);

/// The command that has this key and a button, and can also be run with Alt, because no menu uses the letter;
/// std::nullopt if there is none.
std::optional<Command> command_with_access_letter(char key);

} // namespace cuedrill::drill
