#include "drill/drill_commands.h"

#include <string>

namespace cuedrill::drill {

/// Runs a command after which the next question may be due at another time, and tells that time anew where the status
/// line tells it.
template <class Work>
void DrillCommands::keep_due_true(Work work)
{
    try {
        work();
    } catch (...) {
        // What it was to change may be stored all the same.
        m_to.status.withdraw_about_due();
        throw;
    }
    if (!m_to.status.about_due())
        return;
    m_to.status.withdraw_about_due();
    m_to.selection.tell_next_due();
}

void DrillCommands::attach()
{
    m_controls.attach([this](Command command) { run(command); },
                      [this](Command command) { RunToolbarCommand(command); });
}

void DrillCommands::RunToolbarCommand(Command command)
{
    if (!m_controls.button(command).enabled())
        return;
    platform::TextBox* const typed_in = box_with_focus();
    m_form1.bot_focus.set_focus();
    run(command);
    // Where the record was not taken, typing goes on in the box in which it stopped.
    if (m_to.editor.editing() && box_with_focus() == nullptr)
        (typed_in != nullptr ? *typed_in : m_form1.Text_q).set_focus();
}

platform::TextBox* DrillCommands::box_with_focus() const
{
    for (platform::TextBox* box : {&m_form1.Text_q, &m_form1.Text_a}) {
        if (box->has_focus())
            return box;
    }
    return nullptr;
}

void DrillCommands::run(Command command)
{
    switch (command) {
    case Command::open_course:
        return open_course();
    case Command::new_course:
        return create_course();
    case Command::change_title:
        return m_to.title.m_change_course_title();
    case Command::import_questions:
        return m_to.import.Import_questions_and_answers();
    case Command::export_questions:
        return m_to.question_export.Export_QA();
    case Command::exit:
        return exit();
    case Command::always_type:
        return m_to.aids.ToggleAlwaysType();
    case Command::always_hint:
        return m_to.aids.ToggleListMode();
    case Command::change_target:
        return change_target();
    case Command::random_extraction:
        return m_to.selection.m_random_extraction();
    case Command::invert:
        return m_invert();
    case Command::list_similar:
        return m_to.lists.list_similar();
    case Command::list_alphabetically:
        return m_to.lists.m_show_all_alphabetically();
    case Command::list_by_score:
        return m_to.lists.m_show_sort_by_score();
    case Command::list_by_creation:
        return m_to.lists.m_view_all_q();
    case Command::list_last_shown_first:
        return m_to.lists.m_view_history();
    case Command::list_last_shown_last:
        return m_to.lists.m_show_sort_last_show();
    case Command::list_with_answers:
        return m_to.lists.m_all_q_and_a();
    case Command::show_answer:
        return m_to.dialog.ShowAnswerCommand();
    case Command::success:
        return m_to.dialog.SucceedAndNext();
    case Command::failure:
        return m_to.dialog.FailAndNext();
    case Command::next_question:
        return m_to.dialog.NextQuestionCommand();
    case Command::edit:
        return m_to.editor.begin_edit();
    case Command::delete_record:
        return m_to.editor.delete_record();
    case Command::undo:
        return m_to.scoring.m_undo();
    case Command::reset_all:
        return reset_all();
    case Command::agenda:
        return m_to.agenda.open_agenda();
    case Command::show_stats:
        return m_to.aids.m_view_stats();
    case Command::show_hints:
        return m_to.aids.m_view_hints();
    case Command::count_mature:
        return m_to.selection.m_disp_nr_mature();
    case Command::question_number:
        return m_display_q_nr();
    case Command::show_all:
        return m_to.lists.m_show_all();
    case Command::show_history:
        return m_to.lists.m_history();
    case Command::find_question:
        return m_to.lists.m_find_q();
    case Command::find_answer:
        return m_to.lists.m_find_a();
    case Command::recall_list:
        return m_to.last_list.recall_find_list();
    case Command::help:
        return m_to.help.show_help();
    case Command::context_help:
        return m_to.context_help.ShowContextHelpHint();
    case Command::score_table:
        return m_to.levels.m_score_elapsed_table();
    case Command::version_history:
        return m_to.help.release_notes();
    case Command::web_site:
        return m_to.help.m_web_site();
    case Command::about:
        return m_to.help.show_about();
    case Command::let_me_type:
        return m_to.aids.m_let_me_type();
    case Command::insert:
        return m_to.editor.begin_new_record();
    case Command::save:
        return save();
    case Command::compact:
    case Command::repair:
    case Command::clear_all:
    case Command::cue_cards:
        return; // never enabled
    }
}

void DrillCommands::open_course()
{
    if (m_to.editor.ask_to_save())
        m_to.opener.m_open();
}

void DrillCommands::create_course()
{
    if (m_to.editor.ask_to_save())
        m_to.opener.m_new();
}

void DrillCommands::exit()
{
    if (m_to.editor.ask_to_save())
        m_to.end_of_program.end_program();
}

void DrillCommands::change_target()
{
    keep_due_true([this] { m_to.levels.m_change_target_level(); });
}

void DrillCommands::reset_all()
{
    keep_due_true([this] { m_to.scoring.m_reset_all(); });
}

/// Who inserts one record often inserts another one. While the editor stays open the button is disabled.
void DrillCommands::save()
{
    m_to.editor.save_record();
    platform::Button& insert = m_controls.button(Command::insert);
    if (insert.enabled())
        insert.set_focus();
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
    m_to.course.last_verdict.reset();
    m_to.last_list.exchange_sides();
    m_to.statistics_view.show_options();
    try {
        m_form1.bot_focus.set_focus();
        run(Command::show_stats);
    } catch (...) {
        // The question on display was asked in the direction of before; its verdict must not go to the other one.
        m_to.dialog.withdraw_question();
        throw;
    }
    m_to.selection.next_question();
}

void DrillCommands::m_display_q_nr()
{
    m_to.desktop.message_box({.text = "Question number: " + std::to_string(m_to.course.current_cnt)});
}

} // namespace cuedrill::drill
