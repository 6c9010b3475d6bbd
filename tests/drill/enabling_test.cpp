#include "drill/commands.h"
#include "drill/drill_fixture.h"
#include "drill/drill_state.h"
#include "drill/enabling.h"
#include "drill/window_layout.h"

#include <ostream>
#include <set>

namespace cuedrill::drill {
namespace {

enum class Situation {
    nothing,
    question,
    hint,
    list,
    list_without_question,
    list_behind_answer,
    list_behind_changed_record,
    answer,
    answer_behind_hint,
    new_record,
    changed_record,
    empty_course
};

struct Case {
    const char* name;
    Situation situation;
    Mode mode;
    std::set<int> buttons;         ///< enabled toolbar buttons
    std::set<std::string> entries; ///< enabled menu entries, except those that always are
};

void PrintTo(const Case& one, std::ostream* out)
{
    *out << one.name;
}

const std::set<std::string> always_enabled{"m_open",
                                           "m_new",
                                           "m_change_course_title",
                                           "m_import",
                                           "m_exit",
                                           "m_always_let_me_type",
                                           "m_list_mode",
                                           "m_change_target_level",
                                           "m_random_extraction",
                                           "m_invert",
                                           "m_display_next_question",
                                           "m_disp_nr_mature",
                                           "m_score_elapsed_table",
                                           "m_export",
                                           "m_show_all_alphabetically",
                                           "m_show_sort_by_score",
                                           "m_view_all_q",
                                           "m_view_history",
                                           "m_show_sort_last_show",
                                           "m_all_q_and_a",
                                           "m_agenda",
                                           "m_show_all",
                                           "m_history",
                                           "m_find_q",
                                           "m_find_a",
                                           "helpcall",
                                           "howtogetcontexthelp",
                                           "m_version_history",
                                           "m_web_site",
                                           "m_about"};

const Case cases[] = {
    {"nothing",
     Situation::nothing,
     Mode::nothing,
     {1, 4, 9, 11},
     {"m_delete", "m_undo", "m_reset_all", "m_view_hints"}},
    {"question",
     Situation::question,
     Mode::question,
     {1, 2, 4, 5, 6, 7, 8, 9, 11},
     {"m_show_answer", "m_set_success", "m_set_failure", "m_edit", "m_delete", "m_undo", "m_reset_all", "m_view_hints",
      "m_display_q_nr", "m_list_similar"}},
    {"hint",
     Situation::hint,
     Mode::question,
     {1, 2, 3, 5, 6, 7, 8, 9, 11},
     {"m_show_answer", "m_set_success", "m_set_failure", "m_edit", "m_delete", "m_undo", "m_reset_all", "m_view_stats",
      "m_display_q_nr", "m_list_similar"}},
    {"answer",
     Situation::answer,
     Mode::answer,
     {1, 2, 6, 7, 8, 9, 11},
     {"m_show_answer", "m_set_success", "m_set_failure", "m_edit", "m_delete", "m_undo", "m_reset_all",
      "m_display_q_nr", "m_list_similar"}},
    {"answer_behind_hint",
     Situation::answer_behind_hint,
     Mode::answer,
     {1, 2, 3, 6, 7, 8, 9, 11},
     {"m_show_answer", "m_set_success", "m_set_failure", "m_edit", "m_delete", "m_undo", "m_reset_all", "m_view_stats",
      "m_display_q_nr", "m_list_similar"}},
    {"list",
     Situation::list,
     Mode::question,
     {1, 2, 3, 4, 5, 6, 7, 8, 9, 11},
     {"m_show_answer", "m_set_success", "m_set_failure", "m_edit", "m_delete", "m_undo", "m_reset_all", "m_view_stats",
      "m_view_hints", "m_display_q_nr", "m_list_similar", "m_recall_find_list"}},
    {"list_without_question",
     Situation::list_without_question,
     Mode::nothing,
     {1, 3, 4, 9, 11},
     {"m_delete", "m_undo", "m_reset_all", "m_view_stats", "m_view_hints", "m_recall_find_list"}},
    {"list_behind_answer",
     Situation::list_behind_answer,
     Mode::answer,
     {1, 2, 3, 6, 7, 8, 9, 11},
     {"m_show_answer", "m_set_success", "m_set_failure", "m_edit", "m_delete", "m_undo", "m_reset_all", "m_view_stats",
      "m_display_q_nr", "m_list_similar", "m_recall_find_list"}},
    {"list_behind_changed_record",
     Situation::list_behind_changed_record,
     Mode::edit_record,
     {1, 3, 10},
     {"m_view_stats", "m_list_similar", "m_recall_find_list"}},
    {"new_record", Situation::new_record, Mode::new_record, {1, 10}, {}},
    {"changed_record", Situation::changed_record, Mode::edit_record, {1, 10}, {"m_list_similar"}},
    {"empty_course",
     Situation::empty_course,
     Mode::empty_course,
     {1, 4, 9, 11},
     {"m_delete", "m_reset_all", "m_view_hints"}},
};

class Enabling : public DrillFixture, public testing::WithParamInterface<Case> {
protected:
    void SetUp() override
    {
        if (GetParam().situation == Situation::empty_course) {
            desktop.expect_box("You have passed level 5 for all questions.");
            start();
            return;
        }
        start_with_three_questions();
        if (GetParam().situation != Situation::nothing && GetParam().situation != Situation::list_without_question)
            yes();
        switch (GetParam().situation) {
        case Situation::hint:
            toolbar(4);
            break;
        case Situation::list:
        case Situation::list_without_question:
            choose("m_show_all");
            break;
        case Situation::list_behind_answer:
            yes();
            choose("m_show_all");
            break;
        case Situation::list_behind_changed_record:
            toolbar(8);
            choose("m_show_all");
            break;
        case Situation::answer:
            yes();
            break;
        case Situation::answer_behind_hint:
            toolbar(4);
            yes();
            break;
        case Situation::new_record:
            toolbar(9);
            break;
        case Situation::changed_record:
            toolbar(8);
            break;
        default:
            break;
        }
    }

    /// Whether the condition that the command has besides its mode is met.
    [[nodiscard]] bool further_condition(Command command) const
    {
        if (command == Command::show_stats)
            return form1.panel_lista.is_visible;
        if (command == Command::show_hints)
            return !form1.t_hint.is_visible;
        if (command == Command::recall_list)
            return form1.listav.is_visible;
        return true;
    }
};

TEST_P(Enabling, of_the_buttons_is_that_of_what_can_be_done)
{
    for (int number = 1; number <= platform::toolbar_buttons; ++number)
        EXPECT_EQ(form1.toolbar(number).is_enabled, GetParam().buttons.contains(number)) << number;
}

TEST_P(Enabling, of_the_entries_is_that_of_what_can_be_done)
{
    std::set<std::string> enabled = GetParam().entries;
    enabled.insert(always_enabled.begin(), always_enabled.end());
    for (const auto& menu : form1.menu_bar.menus) {
        for (const auto& one : menu->entries)
            EXPECT_EQ(one->is_enabled, enabled.contains(one->name)) << one->name;
    }
}

TEST_P(Enabling, follows_its_table)
{
    ASSERT_EQ(logic->layout.mode(), GetParam().mode);
    for (const CommandRow& row : command_table()) {
        const bool enabled = row.modes.at(static_cast<std::size_t>(GetParam().mode)) && further_condition(row.command);
        if (row.button) {
            EXPECT_EQ(form1.toolbar(row.button->number).is_enabled, enabled) << row.button->caption;
        }
        if (row.entry) {
            EXPECT_EQ(entry(row.entry->name).is_enabled, enabled) << row.entry->name;
        }
    }
}

TEST_P(Enabling, of_the_dialog_and_the_boxes_follows_its_table_too)
{
    const auto enabled = [](Input input) {
        for (const InputRow& row : input_table) {
            if (row.input == input)
                return row.modes.at(static_cast<std::size_t>(GetParam().mode));
        }
        ADD_FAILURE() << "the table has no row for it";
        return false;
    };
    // "Yes" and "No" have further conditions, which hold in all these situations: none is after the last question,
    // where there is nothing to judge.
    EXPECT_EQ(form1.bot_yes.is_enabled, enabled(Input::yes));
    EXPECT_EQ(form1.bot_no.is_enabled, enabled(Input::no));
    EXPECT_EQ(form1.bot_other.is_enabled, enabled(Input::ignore));
    EXPECT_EQ(form1.Text_q.locked, !enabled(Input::question_box));
    EXPECT_EQ(form1.Text_a.locked, !enabled(Input::answer_box));
}

TEST_P(Enabling, and_what_is_visible_follow_the_shared_place)
{
    for (const PlaceRow& row : place_table) {
        if (row.place != logic->state.shared_place)
            continue;
        EXPECT_EQ(form1.frame_stats.is_visible, row.frame_stats);
        EXPECT_EQ(form1.panel_lista.is_visible, row.panel_lista);
        EXPECT_EQ(form1.t_hint.is_visible, row.t_hint);
        EXPECT_EQ(form1.listav.is_visible, row.listav);
        return;
    }
    ADD_FAILURE() << "the table has no row for what stands there";
}

TEST_P(Enabling, of_typing_ends_with_the_option_to_type_always)
{
    choose("m_always_let_me_type");
    EXPECT_FALSE(form1.toolbar(5).is_enabled);
    choose("m_always_let_me_type");
    EXPECT_EQ(form1.toolbar(5).is_enabled, GetParam().buttons.contains(5));
}

INSTANTIATE_TEST_SUITE_P(Situations, Enabling, testing::ValuesIn(cases),
                         [](const auto& one) { return std::string(one.param.name); });

class Locks : public DrillFixture {
protected:
    void SetUp() override { start_with_three_questions(); }

    void expect_locked(bool question_box, bool answer_box)
    {
        EXPECT_EQ(form1.Text_q.locked, question_box);
        EXPECT_EQ(form1.Text_a.locked, answer_box);
    }
};

TEST_F(Locks, let_an_answer_be_typed_until_it_is_shown)
{
    expect_locked(true, true);
    yes();
    expect_locked(true, false);
    yes();
    expect_locked(true, true);
    no();
    expect_locked(true, false);
}

TEST_F(Locks, let_both_boxes_be_changed_in_the_editor)
{
    yes();
    for (const int number : {8, 9}) {
        toolbar(number);
        expect_locked(false, false);
        press(platform::Key::escape);
        expect_locked(true, true);
    }
}

} // namespace
} // namespace cuedrill::drill
