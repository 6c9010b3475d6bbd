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
      m_export(m_file.add_entry("m_export", "E&xport questions and answers to text file")),
      clearall(m_file.add_entry("clearall", "&Delete all questions and answers")),
      m_exit(m_file.add_entry("m_exit", "&Exit")), options(bar.add_menu("options", "&Options")),
      m_cuecards(options.add_entry("m_cuecards", "&Cue cards")),
      m_always_let_me_type(options.add_entry("m_always_let_me_type", "Always &let me type the answer")),
      m_list_mode(options.add_entry("m_list_mode", "Always show &hints")),
      m_change_target_level(options.add_entry("m_change_target_level", "Change &target level  (now ...)")),
      m_random_extraction(options.add_entry("m_random_extraction", "&Random extraction of questions")),
      m_invert(options.add_entry("m_invert", "&Invert questions/answers")), m_list(bar.add_menu("m_list", "&Lists")),
      m_list_similar(m_list.add_entry("m_list_similar", "Questions with some &identical words as current question")),
      m_show_all_alphabetically(m_list.add_entry("m_show_all_alphabetically", "All questions ordered &alphabetically")),
      m_show_sort_by_score(m_list.add_entry("m_show_sort_by_score", "All questions ordered by &score")),
      m_view_all_q(m_list.add_entry("m_view_all_q", "All questions orderd by &creation date")),
      m_view_history(m_list.add_entry("m_view_history", "All questions ordered by date &last shown (descending)")),
      m_show_sort_last_show(
          m_list.add_entry("m_show_sort_last_show", "&All questions ordered by date last show (ascending)")),
      m_all_q_and_a(m_list.add_entry("m_all_q_and_a", "All questions a&nd answers ordered alphabetically")),
      m_commands(bar.add_menu("m_commands", "&Actions")),
      m_show_answer(m_commands.add_entry("m_show_answer", "Show answer (A or *)")),
      m_set_success(m_commands.add_entry("m_set_success", "Set success (+)")),
      m_set_failure(m_commands.add_entry("m_set_failure", "Set failure (-)")),
      m_display_next_question(m_commands.add_entry("m_display_next_question", "Display next question (Q)")),
      m_edit(m_commands.add_entry("m_edit", "&Edit current question/answer (E)")),
      m_delete(m_commands.add_entry("m_delete", "&Delete current question/answer (D)")),
      m_undo(m_commands.add_entry("m_undo", "Undo &previous question result")),
      m_reset_all(m_commands.add_entry("m_reset_all", "&Reset all counters")),
      m_agenda(m_commands.add_entry("m_agenda", "Open &agenda")), m_show(bar.add_menu("m_show", "&Show")),
      m_view_stats(m_show.add_entry("m_view_stats", "Show &statistics")),
      m_view_hints(m_show.add_entry("m_view_hints", "Show &hints")),
      m_disp_nr_mature(m_show.add_entry("m_disp_nr_mature", "Show number of &mature questions")),
      m_display_q_nr(m_show.add_entry("m_display_q_nr", "Show current question &number")),
      m_show_all(m_show.add_entry("m_show_all", "Show all questions")),
      m_history(m_show.add_entry("m_history", "Show &history")), m_find(bar.add_menu("m_find", "F&ind")),
      m_find_q(m_find.add_entry("m_find_q", "Find question")), m_find_a(m_find.add_entry("m_find_a", "Find answer")),
      m_recall_find_list(m_find.add_entry("m_recall_find_list", "&Recall last list")),
      helps(bar.add_menu("helps", "&?")), helpcall(helps.add_entry("helpcall", "&Help (user manual)")),
      howtogetcontexthelp(helps.add_entry("howtogetcontexthelp", "H&ow to get context help")),
      m_score_elapsed_table(helps.add_entry("m_score_elapsed_table", "Score / elapsed time table")),
      m_version_history(helps.add_entry("m_version_history", "Version history")),
      m_web_site(helps.add_entry("m_web_site", "Author's &web site")),
      m_about(helps.add_entry("m_about", "&About Cuedrill"))
{
    for (platform::MenuEntry* without_command : {&m_compact, &m_repair, &clearall, &m_cuecards})
        without_command->set_enabled(false);
    for (platform::MenuEntry* option : {&m_always_let_me_type, &m_list_mode, &m_random_extraction, &m_invert})
        option->set_checkable(true);
}

} // namespace cuedrill::drill
