#include "drill/drill_commands.h"

#include "common/text.h"
#include "drill/manual_section.h"
#include "store/course_transaction.h"

#include <string>

namespace cuedrill::drill {

/// Runs a command that may change when the next question is due. If the status line shows that time, it is updated.
template <class Work>
void DrillCommands::keep_due_true(Work work)
{
    try {
        work();
    } catch (...) {
        // The change may have been stored in spite of the error, so the time shown may be wrong.
        to_.status.withdraw_about_due();
        throw;
    }
    if (!to_.status.about_due())
        return;
    to_.status.withdraw_about_due();
    to_.selection.tell_next_due();
}

void DrillCommands::attach()
{
    controls_.attach([this](Command command) { run(command); },
                     [this](Command command) { RunToolbarCommand(command); });
}

void DrillCommands::RunToolbarCommand(Command command)
{
    if (!controls_.enabled(command)) {
        tell_disabled(command);
        return;
    }
    platform::TextBox* const typed_in = box_with_focus();
    form1_.bot_focus.set_focus();
    run(command);
    // The record was not accepted: put the focus back into the box in which the user was typing.
    if (to_.editor.editing() && box_with_focus() == nullptr)
        (typed_in != nullptr ? *typed_in : form1_.Text_q).set_focus();
}

/// The button of a disabled command is grey; the key says so.
void DrillCommands::tell_disabled(Command command) const
{
    if (command == Command::show_stats)
        return to_.narrator.tell_statistics();
    form1_.window.announce(common::replace_all(row_of(command).button->caption, "&", "") + " cannot be used now.");
    to_.narrator.tell_next_step();
}

platform::TextBox* DrillCommands::box_with_focus() const
{
    for (platform::TextBox* box : {&form1_.Text_q, &form1_.Text_a}) {
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
        return to_.title.m_change_course_title();
    case Command::import_questions:
        return to_.import.Import_questions_and_answers();
    case Command::export_questions:
        return to_.question_export.Export_QA();
    case Command::exit:
        return exit();
    case Command::always_type:
        return to_.aids.ToggleAlwaysType();
    case Command::always_hint:
        return to_.aids.ToggleListMode();
    case Command::change_target:
        return change_target();
    case Command::random_extraction:
        return to_.selection.m_random_extraction();
    case Command::invert:
        return m_invert();
    case Command::list_similar:
        return to_.lists.list_similar();
    case Command::list_alphabetically:
        return to_.lists.m_show_all_alphabetically();
    case Command::list_by_score:
        return to_.lists.m_show_sort_by_score();
    case Command::list_by_creation:
        return to_.lists.m_view_all_q();
    case Command::list_last_shown_first:
        return to_.lists.m_view_history();
    case Command::list_last_shown_last:
        return to_.lists.m_show_sort_last_show();
    case Command::list_with_answers:
        return to_.lists.m_all_q_and_a();
    case Command::show_answer:
        return to_.dialog.ShowAnswerCommand();
    case Command::success:
        return to_.dialog.SucceedAndNext();
    case Command::failure:
        return to_.dialog.FailAndNext();
    case Command::next_question:
        return to_.dialog.NextQuestionCommand();
    case Command::edit:
        return to_.editor.begin_edit();
    case Command::delete_record:
        return to_.editor.delete_record();
    case Command::undo:
        return to_.scoring.m_undo();
    case Command::reset_all:
        return reset_all();
    case Command::agenda:
        return to_.agenda.open_agenda();
    case Command::show_stats:
        to_.aids.m_view_stats();
        return to_.narrator.tell_statistics();
    case Command::show_hints:
        return to_.aids.m_view_hints();
    case Command::count_mature:
        return to_.selection.m_disp_nr_mature();
    case Command::question_number:
        return m_display_q_nr();
    case Command::show_all:
        return to_.lists.m_show_all();
    case Command::show_history:
        return to_.lists.m_history();
    case Command::find_question:
        return to_.lists.m_find_q();
    case Command::find_answer:
        return to_.lists.m_find_a();
    case Command::recall_list:
        return to_.last_list.recall_find_list();
    case Command::help:
        return to_.help.show_help(manual_section(to_.layout.mode(), to_.state));
    case Command::context_help:
        return to_.context_help.ShowContextHelpHint();
    case Command::score_table:
        return to_.levels.m_score_elapsed_table();
    case Command::version_history:
        return to_.help.release_notes();
    case Command::web_site:
        return to_.help.m_web_site();
    case Command::about:
        return to_.help.show_about();
    case Command::let_me_type:
        return to_.aids.m_let_me_type();
    case Command::insert:
        return to_.editor.begin_new_record();
    case Command::save:
        return save();
    case Command::repeat_question:
        return to_.narrator.repeat();
    case Command::tell_figures:
        return to_.narrator.tell_figures();
    case Command::compact:
    case Command::repair:
    case Command::clear_all:
    case Command::cue_cards:
        return; // never enabled
    }
}

void DrillCommands::open_course()
{
    if (to_.editor.ask_to_save())
        to_.opener.m_open();
}

void DrillCommands::create_course()
{
    if (to_.editor.ask_to_save())
        to_.opener.m_new();
}

void DrillCommands::exit()
{
    if (to_.editor.ask_to_save())
        to_.end_of_program.end_program();
}

void DrillCommands::change_target()
{
    keep_due_true([this] { to_.levels.m_change_target_level(); });
}

void DrillCommands::reset_all()
{
    keep_due_true([this] { to_.scoring.m_reset_all(); });
}

/// Moves the focus to "Insert" after a save, because the user often inserts several records in a row. The button is
/// disabled while the editor stays open.
void DrillCommands::save()
{
    to_.editor.save_record();
    platform::Button& insert = controls_.button(Command::insert);
    if (insert.enabled())
        insert.set_focus();
}

void DrillCommands::m_invert()
{
    if (!to_.editor.ask_to_save())
        return;
    const bool inverted = !to_.course.params.invert;
    try {
        to_.params.change_params([inverted](store::CourseParams& params) { params.invert = inverted; });
    } catch (const store::OutcomeUnknown&) {
        // The question on display must not be judged in another direction than the one it was asked in.
        to_.display.withdraw_question();
        throw;
    }
    to_.options.show_options();
    form1_.window.announce(CourseOptions::words_for(Command::invert, inverted));
    // The question on display was asked in the old direction and must not be judged in the new one.
    Display::Change change(to_.display);
    form1_.bot_focus.set_focus();
    to_.aids.m_view_stats();
    change.keep();
    to_.selection.next_question();
}

void DrillCommands::m_display_q_nr()
{
    to_.desktop.message_box({.text = "Question number: " + std::to_string(to_.state.shown.current_cnt())});
}

} // namespace cuedrill::drill
