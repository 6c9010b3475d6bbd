#pragma once

#include "common/int16.h"
#include "platform/controls.h"

namespace cuedrill::drill {

/// The menus of the main window, in the order in which they are shown.
class MainMenu {
public:
    /// Adds the menus to `bar`, which must outlive this object.
    explicit MainMenu(platform::MenuBar& bar);

private:
    platform::Menu& m_file;

public:
    platform::MenuEntry& m_open;
    platform::MenuEntry& m_new;
    platform::MenuEntry& m_change_course_title;
    platform::MenuEntry& m_compact;
    platform::MenuEntry& m_repair;
    platform::MenuEntry& m_import;
    platform::MenuEntry& m_export;
    platform::MenuEntry& clearall;
    platform::MenuEntry& m_exit;

private:
    platform::Menu& options;

public:
    platform::MenuEntry& m_cuecards; ///< the heading of the options
    platform::MenuEntry& m_always_let_me_type;
    platform::MenuEntry& m_list_mode;
    platform::MenuEntry& m_change_target_level;
    platform::MenuEntry& m_random_extraction;
    platform::MenuEntry& m_invert;

private:
    platform::Menu& m_list;

public:
    platform::MenuEntry& m_list_similar;
    platform::MenuEntry& m_show_all_alphabetically;
    platform::MenuEntry& m_show_sort_by_score;
    platform::MenuEntry& m_view_all_q;
    platform::MenuEntry& m_view_history;
    platform::MenuEntry& m_show_sort_last_show;
    platform::MenuEntry& m_all_q_and_a;

private:
    platform::Menu& m_commands;

public:
    platform::MenuEntry& m_show_answer;
    platform::MenuEntry& m_set_success;
    platform::MenuEntry& m_set_failure;
    platform::MenuEntry& m_display_next_question;
    platform::MenuEntry& m_edit;
    platform::MenuEntry& m_delete;
    platform::MenuEntry& m_undo;
    platform::MenuEntry& m_reset_all;
    platform::MenuEntry& m_agenda;

private:
    platform::Menu& m_show;

public:
    platform::MenuEntry& m_view_stats;
    platform::MenuEntry& m_view_hints;
    platform::MenuEntry& m_disp_nr_mature;
    platform::MenuEntry& m_display_q_nr;
    platform::MenuEntry& m_show_all;
    platform::MenuEntry& m_history;

private:
    platform::Menu& m_find;

public:
    platform::MenuEntry& m_find_q;
    platform::MenuEntry& m_find_a;
    platform::MenuEntry& m_recall_find_list;

private:
    platform::Menu& helps;

public:
    platform::MenuEntry& helpcall;
    platform::MenuEntry& howtogetcontexthelp;
    platform::MenuEntry& m_score_elapsed_table;
    platform::MenuEntry& m_version_history;
    platform::MenuEntry& m_web_site;
    platform::MenuEntry& m_about;
};

} // namespace cuedrill::drill
