#include "drill/drill_commands.h"

#include "common/errors.h"

#include <string>

namespace cuedrill::drill {

void DrillCommands::attach(MainMenu& menu)
{
    menu.m_open.on_click = [this] {
        if (m_to.editor.ask_to_save())
            m_to.opener.m_open();
    };
    menu.m_new.on_click = [this] {
        if (m_to.editor.ask_to_save())
            m_to.opener.m_new();
    };
    menu.m_change_course_title.on_click = [this] { m_to.title.m_change_course_title(); };
    menu.m_import.on_click = [this] { m_to.import.Import_questions_and_answers(); };
    menu.m_export.on_click = [this] { m_to.question_export.Export_QA(); };
    menu.m_exit.on_click = [this] {
        if (m_to.editor.ask_to_save())
            m_to.end_of_program.end_program();
    };

    menu.m_always_let_me_type.on_click = [this] { m_to.aids.ToggleAlwaysType(); };
    menu.m_list_mode.on_click = [this] { m_to.aids.ToggleListMode(); };
    menu.m_change_target_level.on_click = [this] {
        m_to.levels.m_change_target_level();
        tell_next_due_anew();
    };
    menu.m_random_extraction.on_click = [this] { m_to.selection.m_random_extraction(); };
    menu.m_invert.on_click = [this] { m_invert(); };

    menu.m_show_answer.on_click = [this] { m_to.dialog.ShowAnswerCommand(); };
    menu.m_set_success.on_click = [this] { m_to.dialog.SucceedAndNext(); };
    menu.m_set_failure.on_click = [this] { m_to.dialog.FailAndNext(); };
    menu.m_display_next_question.on_click = [this] { m_to.dialog.NextQuestionCommand(); };
    menu.m_edit.on_click = [this] { m_to.editor.begin_edit(); };
    menu.m_delete.on_click = [this] { m_to.editor.delete_record(); };
    menu.m_undo.on_click = [this] { m_to.scoring.m_undo(); };
    menu.m_reset_all.on_click = [this] {
        m_to.scoring.m_reset_all();
        tell_next_due_anew();
    };
    menu.m_agenda.on_click = [this] { m_to.agenda.open_agenda(); };

    menu.m_view_stats.on_click = [this] { m_to.aids.m_view_stats(); };
    menu.m_view_hints.on_click = [this] { m_to.aids.m_view_hints(); };
    menu.m_disp_nr_mature.on_click = [this] { m_to.selection.m_disp_nr_mature(); };
    menu.m_display_q_nr.on_click = [this] { m_display_q_nr(); };
    attach_lists(menu);
    attach_help(menu);
}

void DrillCommands::attach_lists(MainMenu& menu)
{
    menu.m_list_similar.on_click = [this] { m_to.lists.list_similar(); };
    menu.m_show_all_alphabetically.on_click = [this] { m_to.lists.m_show_all_alphabetically(); };
    menu.m_show_sort_by_score.on_click = [this] { m_to.lists.m_show_sort_by_score(); };
    menu.m_view_all_q.on_click = [this] { m_to.lists.m_view_all_q(); };
    menu.m_view_history.on_click = [this] { m_to.lists.m_view_history(); };
    menu.m_show_sort_last_show.on_click = [this] { m_to.lists.m_show_sort_last_show(); };
    menu.m_all_q_and_a.on_click = [this] { m_to.lists.m_all_q_and_a(); };
    menu.m_show_all.on_click = [this] { m_to.lists.m_show_all(); };
    menu.m_history.on_click = [this] { m_to.lists.m_history(); };
    menu.m_find_q.on_click = [this] { m_to.lists.m_find_q(); };
    menu.m_find_a.on_click = [this] { m_to.lists.m_find_a(); };
    menu.m_recall_find_list.on_click = [this] { m_to.lists.recall_find_list(); };
}

void DrillCommands::attach_help(MainMenu& menu)
{
    menu.helpcall.on_click = [this] { m_to.help.show_help(); };
    menu.howtogetcontexthelp.on_click = [this] { m_to.context_help.ShowContextHelpHint(); };
    menu.m_score_elapsed_table.on_click = [this] { m_to.levels.m_score_elapsed_table(); };
    menu.m_version_history.on_click = [this] { m_to.help.release_notes(); };
    menu.m_web_site.on_click = [this] { m_to.help.m_web_site(); };
    menu.m_about.on_click = [this] { m_to.help.show_about(); };
}

void DrillCommands::m_invert()
{
    if (!m_to.editor.ask_to_save())
        return;
    store::CourseParams changed = m_to.course.params;
    changed.invert = !changed.invert;
    m_to.params.change_params(changed);
    m_to.course.set_side_fields();
    // The last verdict was about the other direction.
    m_to.scoring.forget_last_verdict();
    m_to.lists.exchange_sides();
    m_to.statistics_view.show_options();
    try {
        m_to.toolbar.run(statistics_button);
    } catch (...) {
        // The question on display was asked in the direction of before; its verdict must not go to the other one.
        m_to.dialog.withdraw_question();
        throw;
    }
    m_to.selection.next_question();
}

/// Keeps true what the status line says about the time of the next question, where it does.
void DrillCommands::tell_next_due_anew()
{
    if (!m_to.status.about_due())
        return;
    m_to.status.withdraw_about_due();
    m_to.selection.tell_next_due();
}

void DrillCommands::m_display_q_nr()
{
    m_to.desktop.message_box({.text = "Question number: " + std::to_string(m_to.course.current_cnt)});
}

} // namespace cuedrill::drill
