#include "drill/main_menu.h"

namespace cuedrill::drill {

// The members are initialised in the order of their declaration, which is the order on the screen.
MainMenu::MainMenu(platform::MenuBar& bar)
    : m_file(bar.add_menu("m_file", "&File")), m_open(m_file.add_entry("m_open", "&Open a course")),
      m_new(m_file.add_entry("m_new", "&Create a new course")),
      m_change_course_title(m_file.add_entry("m_change_course_title", "Change &title of current course")),
      m_compact(m_file.add_entry("m_compact", "&Compact data base (not available)")),
      m_repair(m_file.add_entry("m_repair", "&Repair data base (not available)")),
      m_import(m_file.add_entry("m_import", "&Import questions and answers from text file")),
      clearall(m_file.add_entry("clearall", "&Delete all questions and answers")),
      m_exit(m_file.add_entry("m_exit", "&Exit")), options(bar.add_menu("options", "&Options")),
      m_cuecards(options.add_entry("m_cuecards", "&Cue cards")),
      m_always_let_me_type(options.add_entry("m_always_let_me_type", "Always &let me type the answer")),
      m_list_mode(options.add_entry("m_list_mode", "Always show &hints")),
      m_change_target_level(options.add_entry("m_change_target_level", "Change &target level  (now ...)")),
      m_random_extraction(options.add_entry("m_random_extraction", "&Random extraction of questions")),
      m_invert(options.add_entry("m_invert", "&Invert questions/answers")),
      m_commands(bar.add_menu("m_commands", "&Actions")),
      m_show_answer(m_commands.add_entry("m_show_answer", "Show answer (A or *)")),
      m_set_success(m_commands.add_entry("m_set_success", "Set success (+)")),
      m_set_failure(m_commands.add_entry("m_set_failure", "Set failure (-)")),
      m_display_next_question(m_commands.add_entry("m_display_next_question", "Display next question (Q)")),
      m_edit(m_commands.add_entry("m_edit", "&Edit current question/answer (E)")),
      m_delete(m_commands.add_entry("m_delete", "&Delete current question/answer (D)")),
      m_undo(m_commands.add_entry("m_undo", "Undo &previous question result")),
      m_reset_all(m_commands.add_entry("m_reset_all", "&Reset all counters")), m_show(bar.add_menu("m_show", "&Show")),
      m_view_stats(m_show.add_entry("m_view_stats", "Show &statistics")),
      m_view_hints(m_show.add_entry("m_view_hints", "Show &hints")),
      m_disp_nr_mature(m_show.add_entry("m_disp_nr_mature", "Show number of &mature questions")),
      m_display_q_nr(m_show.add_entry("m_display_q_nr", "Show current question &number")),
      helps(bar.add_menu("helps", "&?")),
      m_score_elapsed_table(helps.add_entry("m_score_elapsed_table", "Score / elapsed time table"))
{
    for (platform::MenuEntry* without_command : {&m_compact, &m_repair, &clearall, &m_cuecards})
        without_command->set_enabled(false);
    for (platform::MenuEntry* option : {&m_always_let_me_type, &m_list_mode, &m_random_extraction, &m_invert})
        option->set_checkable(true);
}

} // namespace cuedrill::drill
