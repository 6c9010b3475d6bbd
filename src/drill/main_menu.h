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

private:
    platform::Menu& m_show;

public:
    platform::MenuEntry& m_view_stats;
    platform::MenuEntry& m_view_hints;
    platform::MenuEntry& m_disp_nr_mature;
    platform::MenuEntry& m_display_q_nr;

private:
    platform::Menu& helps;

public:
    platform::MenuEntry& m_score_elapsed_table;
};

} // namespace cuedrill::drill
