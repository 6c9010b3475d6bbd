#include "drill/commands.h"

#include <algorithm>
#include <array>

namespace cuedrill::drill {
namespace {

constexpr std::array menus{
    MenuRow{MenuName::file, "m_file", "&File"},   MenuRow{MenuName::options, "options", "&Options"},
    MenuRow{MenuName::lists, "m_list", "&Lists"}, MenuRow{MenuName::actions, "m_commands", "&Actions"},
    MenuRow{MenuName::show, "m_show", "&Show"},   MenuRow{MenuName::find, "m_find", "F&ind"},
    MenuRow{MenuName::help, "helps", "&?"},
};

//                          empty, nothing, question, answer, new, edit
constexpr InModes always{true, true, true, true, true, true};
constexpr InModes never{false, false, false, false, false, false};
constexpr InModes with_question{false, false, true, true, false, false};
constexpr InModes with_stored_record{false, false, true, true, false, true};
constexpr InModes before_answer{true, true, true, false, false, false};
constexpr InModes typing{false, false, true, false, false, false};
constexpr InModes outside_editor{true, true, true, true, false, false};
constexpr InModes outside_editor_with_records{false, true, true, true, false, false};
constexpr InModes in_editor{false, false, false, false, true, true};

constexpr CommandRow commands[] = {
    {.command = Command::open_course,
     .modes = always,
     .entry = MenuEntryRow{MenuName::file, "m_open", "&Open a course"}},
    {.command = Command::new_course,
     .modes = always,
     .entry = MenuEntryRow{MenuName::file, "m_new", "&Create a new course"}},
    {.command = Command::change_title,
     .modes = always,
     .entry = MenuEntryRow{MenuName::file, "m_change_course_title", "Change &title of current course"}},
    {.command = Command::compact,
     .modes = never,
     .entry = MenuEntryRow{MenuName::file, "m_compact", "&Compact data base (not available)"}},
    {.command = Command::repair,
     .modes = never,
     .entry = MenuEntryRow{MenuName::file, "m_repair", "&Repair data base (not available)"}},
    {.command = Command::import_questions,
     .modes = always,
     .entry = MenuEntryRow{MenuName::file, "m_import", "&Import questions and answers from text file"}},
    {.command = Command::export_questions,
     .modes = always,
     .entry = MenuEntryRow{MenuName::file, "m_export", "E&xport questions and answers to text file"}},
    {.command = Command::clear_all,
     .modes = never,
     .entry = MenuEntryRow{MenuName::file, "clearall", "&Delete all questions and answers"}},
    {.command = Command::exit, .modes = always, .entry = MenuEntryRow{MenuName::file, "m_exit", "&Exit"}},
    {.command = Command::cue_cards,
     .modes = never,
     .entry = MenuEntryRow{MenuName::options, "m_cuecards", "&Cue cards"}},
    {.command = Command::always_type,
     .modes = always,
     .entry = MenuEntryRow{MenuName::options, "m_always_let_me_type", "Always &let me type the answer", true}},
    {.command = Command::always_hint,
     .modes = always,
     .entry = MenuEntryRow{MenuName::options, "m_list_mode", "Always show &hints", true}},
    {.command = Command::change_target,
     .modes = always,
     .entry = MenuEntryRow{MenuName::options, "m_change_target_level", "Change &target level  (now ...)"}},
    {.command = Command::random_extraction,
     .modes = always,
     .entry = MenuEntryRow{MenuName::options, "m_random_extraction", "&Random extraction of questions", true}},
    {.command = Command::invert,
     .modes = always,
     .entry = MenuEntryRow{MenuName::options, "m_invert", "&Invert questions/answers", true}},
    {.command = Command::list_similar,
     .modes = with_stored_record,
     .entry =
         MenuEntryRow{MenuName::lists, "m_list_similar", "Questions with some &identical words as current question"}},
    {.command = Command::list_alphabetically,
     .modes = always,
     .entry = MenuEntryRow{MenuName::lists, "m_show_all_alphabetically", "All questions ordered &alphabetically"}},
    {.command = Command::list_by_score,
     .modes = always,
     .entry = MenuEntryRow{MenuName::lists, "m_show_sort_by_score", "All questions ordered by &score"}},
    {.command = Command::list_by_creation,
     .modes = always,
     .entry = MenuEntryRow{MenuName::lists, "m_view_all_q", "All questions orderd by &creation date"}},
    {.command = Command::list_last_shown_first,
     .modes = always,
     .entry =
         MenuEntryRow{MenuName::lists, "m_view_history", "All questions ordered by date &last shown (descending)"}},
    {.command = Command::list_last_shown_last,
     .modes = always,
     .entry = MenuEntryRow{MenuName::lists, "m_show_sort_last_show",
                           "&All questions ordered by date last show (ascending)"}},
    {.command = Command::list_with_answers,
     .modes = always,
     .entry = MenuEntryRow{MenuName::lists, "m_all_q_and_a", "All questions a&nd answers ordered alphabetically"}},
    {.command = Command::show_answer,
     .modes = with_question,
     .entry = MenuEntryRow{MenuName::actions, "m_show_answer", "Show answer (A or *)"},
     .button = ButtonRow{2, "Show &Answer", "display answer", 300},
     .key = 'a',
     .help = "Shows the answer. Then press + if you knew it, or - if you did not.\r\n\r\nKeys: A, or Enter "
             "while the answer box is empty; * in the answer box, unless you are typing the answer"},
    {.command = Command::success,
     .modes = with_question,
     .entry = MenuEntryRow{MenuName::actions, "m_set_success", "Set success (+)"},
     .button = ButtonRow{6, "+", "set success", 200},
     .help = "You knew the answer: the question's level rises as far as the time since its last test "
             "allows, and the next question is asked.\r\n\r\nKey: +, once the answer is shown"},
    {.command = Command::failure,
     .modes = with_question,
     .entry = MenuEntryRow{MenuName::actions, "m_set_failure", "Set failure (-)"},
     .button = ButtonRow{7, "-", "set failure", 200},
     .help = "You did not know the answer: the question goes back to level 0, and the next question is "
             "asked.\r\n\r\nKey: -, once the answer is shown"},
    {.command = Command::next_question,
     .modes = always,
     .entry = MenuEntryRow{MenuName::actions, "m_display_next_question", "Display next question (Q)"},
     .button = ButtonRow{1, "Next &Question", "display next question", 300},
     .key = 'q',
     .help = "Asks the next question. The one on display gets no verdict; it is marked as shown, so that "
             "it does not come again at once. While you are typing or changing a record, you are asked "
             "whether to save it first.\r\n\r\nKey: Q"},
    {.command = Command::edit,
     .modes = with_question,
     .entry = MenuEntryRow{MenuName::actions, "m_edit", "&Edit current question/answer (E)"},
     .button = ButtonRow{8, "&Edit", "modify question or answer", 100},
     .key = 'e',
     .help = "Lets you change the question on display and its answer. When you save it, the question starts its "
             "history again: attempts, failures and level go back to 0, in both directions.\r\n\r\nKey: E"},
    {.command = Command::delete_record,
     .modes = outside_editor,
     .entry = MenuEntryRow{MenuName::actions, "m_delete", "&Delete current question/answer (D)"},
     .button = ButtonRow{11, "&Delete", "delete question and answer", 220},
     .key = 'd',
     .help = "Deletes the question on display and its answer, after asking you. This cannot be undone. "
             "Without a question on display it only empties the boxes.\r\n\r\nKey: D"},
    {.command = Command::undo,
     .modes = outside_editor_with_records,
     .entry = MenuEntryRow{MenuName::actions, "m_undo", "Undo &previous question result"}},
    {.command = Command::reset_all,
     .modes = outside_editor,
     .entry = MenuEntryRow{MenuName::actions, "m_reset_all", "&Reset all counters"}},
    {.command = Command::agenda, .modes = always, .entry = MenuEntryRow{MenuName::actions, "m_agenda", "Open &agenda"}},
    {.command = Command::show_stats,
     .modes = always,
     .entry = MenuEntryRow{MenuName::show, "m_view_stats", "Show &statistics"},
     .button = ButtonRow{3, "Show &Stats", "display statistics", 100},
     .key = 's',
     .help = "Shows the statistics of the course in place of the hint or the list.\r\n\r\nKey: S"},
    {.command = Command::show_hints,
     .modes = before_answer,
     .entry = MenuEntryRow{MenuName::show, "m_view_hints", "Show &hints"},
     .button = ButtonRow{4, "Show &Hints", "display hint", 200},
     .key = 'h',
     .help = "Shows words from which you can put the answer together: click them in their order, or go to "
             "them with Tab and the arrow keys and choose with Enter. One wrong word ends the question as "
             "not known.\r\n\r\nWhile you are typing the answer, shows its shape instead: the letters A to "
             "Z and the digits are hidden.\r\n\r\nAn answer that you type after a hint counts as not "
             "known.\r\n\r\nKey: H, outside of the boxes; Escape leaves them"},
    {.command = Command::count_mature,
     .modes = always,
     .entry = MenuEntryRow{MenuName::show, "m_disp_nr_mature", "Show number of &mature questions"}},
    {.command = Command::question_number,
     .modes = with_question,
     .entry = MenuEntryRow{MenuName::show, "m_display_q_nr", "Show current question &number"}},
    {.command = Command::show_all,
     .modes = always,
     .entry = MenuEntryRow{MenuName::show, "m_show_all", "Show all questions"}},
    {.command = Command::show_history,
     .modes = always,
     .entry = MenuEntryRow{MenuName::show, "m_history", "Show &history"}},
    {.command = Command::find_question,
     .modes = always,
     .entry = MenuEntryRow{MenuName::find, "m_find_q", "Find question"}},
    {.command = Command::find_answer,
     .modes = always,
     .entry = MenuEntryRow{MenuName::find, "m_find_a", "Find answer"}},
    {.command = Command::recall_list,
     .modes = always,
     .entry = MenuEntryRow{MenuName::find, "m_recall_find_list", "&Recall last list"}},
    {.command = Command::help,
     .modes = always,
     .entry = MenuEntryRow{MenuName::help, "helpcall", "&Help (user manual)"}},
    {.command = Command::context_help,
     .modes = always,
     .entry = MenuEntryRow{MenuName::help, "howtogetcontexthelp", "H&ow to get context help"}},
    {.command = Command::score_table,
     .modes = always,
     .entry = MenuEntryRow{MenuName::help, "m_score_elapsed_table", "Score / elapsed time table"}},
    {.command = Command::version_history,
     .modes = always,
     .entry = MenuEntryRow{MenuName::help, "m_version_history", "Version history"}},
    {.command = Command::web_site,
     .modes = always,
     .entry = MenuEntryRow{MenuName::help, "m_web_site", "Author's &web site"}},
    {.command = Command::about, .modes = always, .entry = MenuEntryRow{MenuName::help, "m_about", "&About Cuedrill"}},
    {.command = Command::let_me_type,
     .modes = typing,
     .button = ButtonRow{5, "Let me &Type", "let me type the answer", 200},
     .key = 't',
     .help = "Puts the caret into the answer box. Type the answer and press Enter to have it judged; upper and lower "
             "case do not matter. Until the answer is shown or the next question comes, *, + and - are ordinary "
             "characters.\r\n\r\nKey: T"},
    {.command = Command::insert,
     .modes = outside_editor,
     .button = ButtonRow{9, "&Insert", "insert new question and answer", 200},
     .key = 'i',
     .help = "Empties both boxes for a new question and its answer. Texts that you left unsaved come back "
             "with Ctrl+Z in each box.\r\n\r\nKey: I"},
    {.command = Command::repeat_question,
     .modes = always,
     .help = "Has a screen reader say what is asked, what is in the answer box, what the status line tells, and what "
             "you can do now.\r\n\r\nKey: Ctrl+R",
     .control_key = 'r'},
    {.command = Command::tell_figures,
     .modes = always,
     .help = "Has a screen reader say the level, attempts and failures of the question on display, and the statistics "
             "of the course.\r\n\r\nKey: Ctrl+L",
     .control_key = 'l'},
    {.command = Command::save,
     .modes = in_editor,
     .button = ButtonRow{10, "&Save", "save edited question and answer", 200},
     .help = "Stores the question and the answer that you have typed. Blanks around them are dropped; 200 "
             "characters fit into each."},
};

/// The access letters of the menus in the menu bar.
constexpr std::string_view letters_of_menus = "flasio";

} // namespace

std::span<const MenuRow> menu_table()
{
    return menus;
}

std::span<const CommandRow> command_table()
{
    return commands;
}

const CommandRow& row_of(Command command)
{
    return *std::find_if(std::begin(commands), std::end(commands),
                         [command](const CommandRow& row) { return row.command == command; });
}

std::optional<Command> command_with_key(char key)
{
    for (const CommandRow& row : commands) {
        if (key != no_key && row.key == key)
            return row.command;
    }
    return std::nullopt;
}

std::optional<Command> command_with_control_key(char key)
{
    for (const CommandRow& row : commands) {
        if (key != no_key && row.control_key == key)
            return row.command;
    }
    return std::nullopt;
}

std::optional<Command> command_with_access_letter(char key)
{
    if (letters_of_menus.find(key) != std::string_view::npos)
        return std::nullopt;
    const std::optional<Command> command = command_with_key(key);
    return command && row_of(*command).button ? command : std::nullopt;
}

} // namespace cuedrill::drill
