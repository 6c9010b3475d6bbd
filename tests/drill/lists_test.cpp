#include "drill/drill_fixture.h"
#include "drill/drill_state.h"
#include "drill/question_import.h"
#include "drill/record_editor.h"
#include "store/course.h"

#include <vector>

namespace cuedrill::drill {
namespace {

using Lines = std::vector<std::string>;

/// Lists of records in the main window.
class ListsInTheWindow : public DrillFixture {
protected:
    void SetUp() override { start_with_three_questions(); }

    void expect_list()
    {
        EXPECT_TRUE(form1.panel_lista.is_visible);
        EXPECT_TRUE(form1.listav.is_visible);
        EXPECT_FALSE(form1.t_hint.is_visible);
        EXPECT_FALSE(form1.frame_stats.is_visible);
    }
    void expect_no_list()
    {
        EXPECT_FALSE(form1.listav.is_visible);
        EXPECT_FALSE(form1.listav.has_focus());
    }
    void find(std::string_view entry_name, const std::string& text)
    {
        desktop.expect_input("String?", text);
        choose(entry_name);
    }
    void click(std::size_t line)
    {
        user([&] { form1.listav.click(line); });
    }
    [[nodiscard]] const std::string& status() const { return form1.screen.P_status.text; }
};

TEST_F(ListsInTheWindow, take_the_place_of_the_statistics)
{
    choose("m_show_all");
    expect_list();
    EXPECT_EQ(form1.listav.lines, (Lines{"02 - France?", "00 - Italy?", "00 - Spain?"}));
    EXPECT_TRUE(form1.listav.from_first);
    EXPECT_TRUE(form1.listav.has_focus());
    EXPECT_EQ(status(), "3 questions (the number on the left is the question score)");
}

TEST_F(ListsInTheWindow, are_named)
{
    EXPECT_EQ(form1.listav.accessible_name, "List");
}

TEST_F(ListsInTheWindow, take_the_place_of_a_hint)
{
    yes();
    toolbar(4);
    choose("m_show_all");
    expect_list();
}

TEST_F(ListsInTheWindow, come_in_the_order_of_their_entry)
{
    const struct {
        const char* entry;
        Lines lines;
    } expected[] = {
        {"m_show_all_alphabetically", {"02 - France?", "00 - Italy?", "00 - Spain?"}},
        {"m_view_all_q", {"02 - France?", "00 - Italy?", "00 - Spain?"}},
        {"m_show_sort_by_score", {"00 - Spain?", "00 - Italy?", "02 - France?"}},
        {"m_all_q_and_a", {"02 - France?  --->  Paris", "00 - Italy?  --->  Rome", "00 - Spain?  --->  Madrid"}},
    };
    for (const auto& one : expected) {
        form1.listav.lines.clear();
        choose(one.entry);
        EXPECT_EQ(form1.listav.lines, one.lines) << one.entry;
    }
}

TEST_F(ListsInTheWindow, by_the_date_last_shown_run_both_ways)
{
    yes();
    clock.advance_seconds(60);
    no();
    clock.advance_seconds(60);
    no();
    for (const char* name : {"m_history", "m_view_history"}) {
        choose(name);
        EXPECT_EQ(form1.listav.lines, (Lines{"00 - Italy?", "02 - France?", "00 - Spain?"})) << name;
    }
    choose("m_show_sort_last_show");
    EXPECT_EQ(form1.listav.lines, (Lines{"00 - Spain?", "02 - France?", "00 - Italy?"}));
}

TEST_F(ListsInTheWindow, are_left_by_each_command_of_the_drill)
{
    yes();
    for (const char* name : {"m_display_next_question", "m_set_success", "m_view_stats", "m_show_answer"}) {
        choose("m_show_all");
        expect_list();
        choose(name);
        expect_no_list();
        EXPECT_TRUE(form1.frame_stats.is_visible) << name;
    }
}

TEST_F(ListsInTheWindow, are_left_for_typing_and_by_an_undone_verdict)
{
    yes();
    choose("m_set_success");
    choose("m_show_all");
    toolbar(5);
    expect_no_list();
    choose("m_show_all");
    choose("m_undo");
    expect_no_list();
}

TEST_F(ListsInTheWindow, give_the_status_line_back_to_the_request_for_a_verdict)
{
    yes();
    choose("m_show_answer");
    const std::string request = status();
    choose("m_show_all");
    EXPECT_NE(status(), request);
    press(platform::Key::escape);
    EXPECT_EQ(status(), request);
    EXPECT_EQ(form1.screen.P_status.background, common::pure_red);
}

TEST_F(ListsInTheWindow, leave_the_status_line_to_what_is_not_about_them)
{
    yes();
    choose("m_show_all");
    toolbar(8);
    const std::string instruction = status();
    toolbar(3);
    expect_no_list();
    EXPECT_EQ(status(), instruction);
}

TEST_F(ListsInTheWindow, are_left_for_a_hint)
{
    yes();
    choose("m_show_all");
    choose("m_view_hints");
    expect_no_list();
    EXPECT_TRUE(form1.t_hint.is_visible);
}

TEST_F(ListsInTheWindow, are_closed_by_escape)
{
    choose("m_show_all");
    EXPECT_TRUE(press(platform::Key::escape));
    expect_no_list();
    EXPECT_TRUE(form1.frame_stats.is_visible);
    EXPECT_FALSE(ended);
}

TEST_F(ListsInTheWindow, give_the_keyboard_back_to_the_answer_that_is_being_typed)
{
    yes();
    toolbar(5);
    user([this] { form1.type(form1.Text_a, "Par"); });
    choose("m_show_all");
    press(platform::Key::escape);
    EXPECT_TRUE(form1.Text_a.has_focus());
    EXPECT_EQ(form1.Text_a.text_value, "Par");
}

TEST_F(ListsInTheWindow, tell_that_what_was_typed_is_not_saved)
{
    yes();
    choose("m_show_all");
    toolbar(8);
    user([this] { form1.type(form1.Text_q, "Old "); });
    form1.listav.lines = {"00 - Nowhere?"};
    desktop.expect_box("Do you want to save the changes?", platform::BoxAnswer::no);
    desktop.expect_box("nomatch in listav_click.");
    click(0);
    EXPECT_EQ(form1.Text_q.text_value, "Old France?");
    EXPECT_EQ(status(), "The changes are not saved.");
}

TEST_F(ListsInTheWindow, get_the_enter_that_chooses_a_line)
{
    yes();
    choose("m_show_all");
    EXPECT_FALSE(press(platform::Key::enter));
    EXPECT_FALSE(logic->state.answer_revealed);
}

TEST_F(ListsInTheWindow, leave_the_letters_to_the_commands)
{
    yes();
    choose("m_show_all");
    EXPECT_TRUE(press("a"));
    EXPECT_EQ(form1.Text_a.text_value, "Paris");
}

TEST_F(ListsInTheWindow, show_the_record_of_a_line_that_is_clicked)
{
    choose("m_show_all");
    click(2);
    expect_no_list();
    EXPECT_EQ(form1.Text_q.text_value, "Spain?");
    EXPECT_EQ(form1.Text_a.text_value, "");
    EXPECT_EQ(logic->state.shown.current_cnt(), 3);
    EXPECT_EQ(logic->state.dialog, DialogState::AskToStart);
    EXPECT_EQ(status(), "");
    EXPECT_EQ(form1.window.announcements.back(), "Spain?");
}

TEST_F(ListsInTheWindow, ask_the_chosen_record_as_the_course_wants_its_questions_asked)
{
    choose("m_list_mode");
    choose("m_always_let_me_type");
    choose("m_show_all");
    click(0);
    EXPECT_TRUE(form1.t_hint.is_visible);
    EXPECT_TRUE(form1.Text_a.has_focus());
    EXPECT_TRUE(logic->state.TypingMode);
}

TEST_F(ListsInTheWindow, let_the_chosen_record_be_judged)
{
    choose("m_show_all");
    click(1);
    choose("m_show_answer");
    press("+");
    EXPECT_EQ(stored(2).q_side.attempts, 4);
}

TEST_F(ListsInTheWindow, stay_where_a_line_leads_to_nothing)
{
    choose("m_show_all");
    yes();
    choose("m_show_all");
    form1.listav.lines = {"00 - Nowhere?"};
    desktop.expect_box("nomatch in listav_click.");
    click(0);
    expect_list();
    EXPECT_EQ(form1.Text_q.text_value, "France?");
}

TEST_F(ListsInTheWindow, find_questions_and_answers)
{
    find("m_find_q", "A");
    EXPECT_EQ(form1.listav.lines, (Lines{"02 - France?", "00 - Italy?", "00 - Spain?"}));
    EXPECT_EQ(status(), "3 questions found.");
    find("m_find_a", "mad");
    EXPECT_EQ(form1.listav.lines, (Lines{"00 - Madrid"}));
    EXPECT_EQ(status(), "1 answers found.");
    click(0);
    EXPECT_EQ(form1.Text_q.text_value, "Spain?");
}

TEST_F(ListsInTheWindow, stay_after_a_search_in_vain)
{
    choose("m_show_all");
    desktop.expect_input("String?", "Oslo");
    desktop.expect_box("No records found.");
    choose("m_find_a");
    expect_list();
    click(1);
    EXPECT_EQ(form1.Text_q.text_value, "Italy?");
}

TEST_F(ListsInTheWindow, are_recalled_once_there_was_one)
{
    EXPECT_FALSE(entry("m_recall_find_list").is_enabled);
    find("m_find_a", "mad");
    choose("m_view_stats");
    EXPECT_TRUE(entry("m_recall_find_list").is_enabled);
    choose("m_recall_find_list");
    expect_list();
    EXPECT_EQ(form1.listav.lines, (Lines{"00 - Madrid"}));
}

TEST_F(ListsInTheWindow, are_forgotten_with_their_course)
{
    choose("m_show_all");
    fakes::CourseBuilder other;
    other.question("Peru?", "Lima");
    const std::string other_path = other.write(folder, "other.crs");
    desktop.expect_file({.path = other_path, .title = "other.crs"});
    desktop.expect_box("You have passed level 5 for all questions.");
    choose("m_open");
    expect_no_list();
    EXPECT_TRUE(form1.frame_stats.is_visible);
    EXPECT_FALSE(entry("m_recall_find_list").is_enabled);
}

TEST_F(ListsInTheWindow, show_questions_with_the_words_of_the_one_on_display)
{
    yes();
    toolbar(9);
    user([this] {
        form1.type(form1.Text_q, "Rivers of France?");
        form1.type(form1.Text_a, "Seine");
    });
    toolbar(10);
    choose("m_list_similar");
    EXPECT_EQ(form1.listav.lines, (Lines{"02 - France?*"}));
    click(0);
    EXPECT_EQ(form1.Text_q.text_value, "France?");
}

TEST_F(ListsInTheWindow, show_what_was_saved_meanwhile)
{
    yes();
    choose("m_show_all_alphabetically");
    toolbar(8);
    expect_list();
    user([this] { form1.type(form1.Text_q, "Ancient "); });
    toolbar(10);
    expect_list();
    EXPECT_EQ(form1.listav.lines, (Lines{"00 - Ancient France?", "00 - Italy?", "00 - Spain?"}));
    EXPECT_FALSE(form1.listav.from_first);
    EXPECT_EQ(status(), "3 questions (the number on the left is the question score)");
}

TEST_F(ListsInTheWindow, show_a_new_record_too)
{
    choose("m_show_all");
    toolbar(9);
    expect_list();
    EXPECT_TRUE(form1.Text_q.has_focus());
    user([this] {
        form1.type(form1.Text_q, "Peru?");
        form1.type(form1.Text_a, "Lima");
    });
    toolbar(10);
    EXPECT_EQ(form1.listav.lines.back(), "00 - Peru?");
}

TEST_F(ListsInTheWindow, of_a_search_stay_as_they_are_after_a_save)
{
    yes();
    find("m_find_q", "Fra");
    toolbar(8);
    user([this] { form1.type(form1.Text_q, "Old "); });
    toolbar(10);
    EXPECT_EQ(form1.listav.lines, (Lines{"02 - France?"}));
}

TEST_F(ListsInTheWindow, show_what_was_imported)
{
    choose("m_show_all");
    const std::string text = folder.write("more.txt", "@Q@Peru?@A@Lima\r\n@Q@Chile?@A@Santiago\r\n");
    desktop.on_box = [this] { EXPECT_EQ(form1.listav.lines.size(), 5U) << "when the end of the import is told"; };
    desktop.expect_box("2 questions and answers insterted.");
    user([&] { logic->question_import.import_file(text); });
    expect_list();
    EXPECT_EQ(form1.listav.lines.back(), "00 - Chile?");
}

TEST_F(ListsInTheWindow, ask_whether_to_save_before_a_line_takes_the_place_of_what_is_typed)
{
    yes();
    choose("m_show_all");
    toolbar(8);
    user([this] { form1.type(form1.Text_q, "Old "); });
    desktop.expect_box("Do you want to save the changes?", platform::BoxAnswer::no);
    click(1);
    EXPECT_EQ(form1.Text_q.text_value, "Italy?");
    EXPECT_FALSE(logic->editor.editing());
    EXPECT_EQ(stored(1).q, "France?");
}

TEST_F(ListsInTheWindow, follow_the_direction_of_the_course)
{
    choose("m_invert");
    choose("m_all_q_and_a");
    EXPECT_EQ(form1.listav.lines,
              (Lines{"00 - Madrid  --->  Spain?", "00 - Paris  --->  France?", "00 - Rome  --->  Italy?"}));
    click(1);
    EXPECT_EQ(form1.Text_q.text_value, "Paris");
}

TEST_F(ListsInTheWindow, are_left_by_inverting)
{
    choose("m_show_all");
    choose("m_invert");
    expect_no_list();
}

TEST_F(ListsInTheWindow, lead_to_their_records_after_inverting_too)
{
    choose("m_show_all");
    choose("m_invert");
    choose("m_recall_find_list");
    EXPECT_EQ(form1.listav.lines, (Lines{"02 - France?", "00 - Italy?", "00 - Spain?"}));
    click(1);
    EXPECT_EQ(form1.Text_q.text_value, "Rome");
    EXPECT_EQ(logic->state.shown.current_cnt(), 2);
}

TEST_F(ListsInTheWindow, are_left_when_a_record_is_deleted)
{
    yes();
    choose("m_show_all");
    desktop.expect_box("Are you sure you want to delete question \"France?\" and its asnwer?",
                       platform::BoxAnswer::yes);
    toolbar(11);
    expect_no_list();
}

class ListOfOneQuestion : public DrillFixture {};

TEST_F(ListOfOneQuestion, is_left_also_where_no_question_follows)
{
    builder.question("Peru?", "Lima").level(0).attempts(1).tested_ago(1h);
    start();
    yes();
    choose("m_show_all");
    desktop.expect_box("No question is mature for being asked.");
    choose("m_display_next_question");
    EXPECT_FALSE(form1.listav.is_visible);
    EXPECT_TRUE(form1.frame_stats.is_visible);
}

TEST_F(ListOfOneQuestion, is_left_when_the_last_record_is_deleted)
{
    builder.question("Peru?", "Lima").level(0).attempts(1).tested_ago(1h);
    start();
    yes();
    choose("m_show_all");
    desktop.expect_box("Are you sure you want to delete question \"Peru?\" and its asnwer?", platform::BoxAnswer::yes);
    desktop.expect_box("There are no questions in the database.");
    toolbar(11);
    EXPECT_FALSE(form1.listav.is_visible);
}

TEST_F(ListOfOneQuestion, that_cannot_be_read_after_a_save_is_told_and_the_record_is_saved)
{
    builder.question("Peru?", "Lima").level(0).attempts(1).tested_ago(1h);
    start();
    yes();
    choose("m_show_all");
    toolbar(8);
    user([this] { form1.type(form1.Text_q, "Old "); });
    database.at_each_call([this](fakes::Operation operation) {
        if (operation == fakes::Operation::open_recordset &&
            database.statements().back() == "Select * from qa order by cnt")
            throw platform::DatabaseError(platform::DatabaseErrorKind::locked, 0, "Another program is using it.");
    });
    desktop.expect_box("The list is not up to date.\r\n\r\nThe course " + path +
                       " could not be read or written.\r\n\r\nAnother program is using it.");
    toolbar(10);
    EXPECT_EQ(stored(1).q, "Old Peru?");
    EXPECT_FALSE(logic->editor.editing());
    EXPECT_EQ(form1.listav.lines, (Lines{"00 - Peru?"}));
}

class ListsOfNothing : public DrillFixture {
protected:
    void SetUp() override
    {
        desktop.expect_box("You have passed level 5 for all questions.");
        start();
    }
};

TEST_F(ListsOfNothing, end_the_program)
{
    desktop.expect_box("Database empty.");
    choose("m_show_all");
    EXPECT_TRUE(ended);
    EXPECT_FALSE(logic->course.is_open());
}

TEST_F(ListsOfNothing, ask_first_whether_to_save_what_is_typed)
{
    toolbar(9);
    user([this] { form1.type(form1.Text_q, "Peru?"); });
    desktop.expect_box("Database empty.");
    desktop.expect_box("Do you want to save the changes?", platform::BoxAnswer::no);
    choose("m_history");
    EXPECT_TRUE(ended);
}

TEST_F(ListsOfNothing, of_a_search_find_nothing)
{
    desktop.expect_input("String?", "a");
    desktop.expect_box("No records found.");
    choose("m_find_q");
    EXPECT_FALSE(ended);
}

} // namespace
} // namespace cuedrill::drill
