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

/// Everything that the menus, the toolbar and the single keys can ask for.
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
    save
};

/// The place of a command in the menus.
struct MenuEntryRow {
    MenuName menu;
    const char* name;
    const char* caption;
    bool checkable = false; ///< it is an option, and has a check mark while it is on
};

inline constexpr char no_key = 0;

/// The button of a command in the toolbar.
struct ButtonRow {
    int number; ///< from 1, in the order of the toolbar
    const char* caption;
    char key;                  ///< a letter that runs the command outside of the text boxes, in lower case
    const char* help_text;     ///< for the tool tip
    common::Twips extra_width; ///< beside the caption
    const char* help;          ///< what the context help tells
};

/// A command with all that the window shows of it.
struct CommandRow {
    Command command;
    InModes modes; ///< in which it is enabled; some have a further condition (see WindowLayout)
    std::optional<MenuEntryRow> entry{};
    std::optional<ButtonRow> button{};
};

/// The menus in their order.
std::span<const MenuRow> menu_table();

/// Every command once; those of one menu in the order of its entries. A new command is a row here and a case in
/// DrillCommands::run.
std::span<const CommandRow> command_table();

const CommandRow& row_of(Command command);

/// The command that has this key, a letter in lower case; nothing when none has.
std::optional<Command> command_with_key(char key);

/// The command that has this key also together with Alt, because no menu has the letter; nothing when none has.
std::optional<Command> command_with_access_letter(char key);

} // namespace cuedrill::drill
