#include "drill/drill_fixture.h"
#include "drill/drill_state.h"
#include "drill/edit_flags.h"
#include "drill/record_editor.h"
#include "store/course.h"

#include <ostream>

namespace cuedrill::drill {
namespace {

using platform::BoxAnswer;

constexpr const char* offer = "Do you want to save the changes?";

/// The first question is on display.
class LeavingTheEditor : public DrillFixture {
protected:
    void SetUp() override
    {
        start_with_three_questions();
        yes();
        before = fakes::read_course(path);
    }

    void expect_offer(BoxAnswer answer)
    {
        desktop.expect_box_like({.text = offer,
                                 .buttons = platform::BoxButtons::yes_no,
                                 .icon = platform::BoxIcon::question,
                                 .must_be_answered = true},
                                answer);
    }

    void expect_in_boxes(const std::string& question_text, const std::string& answer_text) const
    {
        EXPECT_EQ(question(), question_text);
        EXPECT_EQ(answer(), answer_text);
    }

    fakes::CourseContents before;
};

struct Way {
    const char* name;
    const char* menu_entry; ///< empty for the close button of the window
    bool asks_for_file = false;

    friend void PrintTo(const Way& way, std::ostream* out) { *out << way.name; }
};

/// An action that ends the display of the current record.
class WayOut : public LeavingTheEditor, public testing::WithParamInterface<Way> {
protected:
    void go()
    {
        if (*GetParam().menu_entry == '\0')
            user([this] { form1.window.close(); });
        else
            choose(GetParam().menu_entry);
    }

    /// Runs the action, and chooses a new file if it asks for one.
    void go_to_the_end()
    {
        if (GetParam().asks_for_file) {
            const std::string name = "other.crs";
            fakes::CourseBuilder other;
            other.question("Oslo?", "Norway").level(1).attempts(1).fails(0).tested_ago(1h);
            const bool creates = std::string_view(GetParam().name) == "creating";
            desktop.expect_file({.path = creates ? folder.file(name) : other.write(folder, name), .title = name});
            if (creates)
                desktop.expect_box("You have passed level 5 for all questions.");
        }
        go();
    }

    void expect_open(const std::string& question_text, const std::string& answer_text) const
    {
        EXPECT_FALSE(gone());
        EXPECT_TRUE(logic->editor.editing());
        EXPECT_FALSE(form1.Text_q.locked);
        expect_in_boxes(question_text, answer_text);
        EXPECT_EQ(records(), before.qa);
    }

    [[nodiscard]] bool gone() const { return ended || logic->course.db_path != path || logic->course.params.invert; }

    [[nodiscard]] std::vector<fakes::QaRow> records() const { return fakes::read_course(path).qa; }
};

INSTANTIATE_TEST_SUITE_P(Ways, WayOut,
                         testing::Values(Way{"exit", "m_exit"}, Way{"closing", ""}, Way{"opening", "m_open", true},
                                         Way{"creating", "m_new", true}, Way{"inverting", "m_invert"}),
                         [](const auto& way) { return std::string(way.param.name); });

TEST_P(WayOut, goes_on_without_the_texts_when_they_are_not_wanted)
{
    write_new("Norway?", "Oslo");
    expect_offer(BoxAnswer::no);
    go_to_the_end();
    EXPECT_TRUE(gone());
    EXPECT_FALSE(logic->editor.editing());
    EXPECT_EQ(records(), before.qa);
    if (!ended) {
        EXPECT_NE(question(), "Norway?");
        EXPECT_NE(answer(), "Oslo");
    }
}

TEST_P(WayOut, goes_on_when_the_texts_are_saved)
{
    write_new("Norway?", "Oslo");
    expect_offer(BoxAnswer::yes);
    // The record just saved is the only one with a level in the other direction, and no record is asked twice in a row.
    if (GetParam().name == std::string_view("inverting"))
        desktop.expect_box(nothing_mature);
    go_to_the_end();
    EXPECT_TRUE(gone());
    EXPECT_EQ(stored(4).q, "Norway?");
    EXPECT_EQ(stored(4).a, "Oslo") << "in the direction in which it was typed";
    EXPECT_EQ(stored(4).q_side.date_last_show, std::nullopt);
}

TEST_P(WayOut, stays_with_a_text_that_is_missing)
{
    write_new("Norway?", "");
    expect_offer(BoxAnswer::yes);
    desktop.expect_box("The answer is empty. No saving performed.");
    go();
    expect_open("Norway?", "");
    EXPECT_TRUE(form1.Text_a.has_focus());
}

TEST_P(WayOut, stays_with_a_question_that_is_missing)
{
    write_new(" ", "Oslo");
    expect_offer(BoxAnswer::yes);
    desktop.expect_box("The question is empty. No saving performed.");
    go();
    expect_open("", "Oslo");
    EXPECT_TRUE(form1.Text_q.has_focus());
    EXPECT_TRUE(logic->edit_flags.new_mode);
    form1.type(form1.Text_q, "Norway?");
    EXPECT_EQ(question(), "Norway?") << "no key is held back";
}

TEST_P(WayOut, asks_nothing_where_nothing_was_typed)
{
    toolbar(8);
    // The current record is the first one in the other direction, too, and no record is asked twice in a row.
    if (GetParam().name == std::string_view("inverting"))
        desktop.expect_box(nothing_mature);
    go_to_the_end();
    EXPECT_TRUE(gone());
    EXPECT_FALSE(logic->editor.editing());
    EXPECT_EQ(records(), before.qa);
}

TEST_P(WayOut, asks_nothing_beside_two_empty_boxes)
{
    toolbar(9);
    go_to_the_end();
    EXPECT_TRUE(gone());
    EXPECT_FALSE(logic->editor.editing());
}

TEST_P(WayOut, stays_with_a_question_that_is_there_already)
{
    change_to("Italy?", "Lutetia");
    expect_offer(BoxAnswer::yes);
    desktop.expect_box("Question is already in database.");
    go();
    expect_open("Italy?", "Lutetia");
    EXPECT_TRUE(logic->edit_flags.edit_mode);
}

TEST_P(WayOut, stays_in_the_editor_when_the_course_refuses_the_texts)
{
    change_to("Gaul?", std::string(201, 'a'));
    expect_offer(BoxAnswer::yes);
    desktop.expect_box("The answer has 201 characters; 200 fit.");
    go();
    EXPECT_FALSE(gone());
    EXPECT_TRUE(logic->editor.editing());
    EXPECT_FALSE(form1.Text_a.locked);
    expect_in_boxes("Gaul?", std::string(201, 'a'));
    EXPECT_EQ(records(), before.qa);
}

TEST_P(WayOut, stays_in_the_editor_when_the_texts_cannot_be_stored)
{
    change_to("Gaul?", "Lutetia");
    expect_offer(BoxAnswer::yes);
    database.fail_at(fakes::Operation::commit);
    desktop.expect_box("The question and its answer are not saved.\r\n\r\nThe course " + path +
                       " could not be read or written.\r\n\r\nThe disk is full.");
    go();
    EXPECT_FALSE(gone());
    EXPECT_TRUE(logic->editor.editing());
    expect_in_boxes("Gaul?", "Lutetia");
    EXPECT_EQ(records(), before.qa);
    EXPECT_EQ(database.transaction_depth(), 0);
}

/// Another program has deleted the record being changed and given its answer to another record.
class WayOutInverted : public WayOut {
protected:
    void SetUp() override
    {
        builder.number_param("invert", 1);
        builder.question("France?", "Paris").inverted().level(2).attempts(4).fails(1).tested_ago(24h);
        builder.question("Italy?", "Rome").inverted().level(0).attempts(3).fails(3).tested_ago(1h);
        start();
        yes();
        ASSERT_EQ(question(), "Paris");
    }

    [[nodiscard]] bool went() const { return ended || logic->course.db_path != path || !logic->course.params.invert; }
};

INSTANTIATE_TEST_SUITE_P(Ways, WayOutInverted,
                         testing::Values(Way{"exit", "m_exit"}, Way{"closing", ""}, Way{"opening", "m_open", true},
                                         Way{"creating", "m_new", true}, Way{"inverting", "m_invert"}),
                         [](const auto& way) { return std::string(way.param.name); });

TEST_P(WayOutInverted, stays_with_texts_that_are_not_taken_as_a_new_record)
{
    change_to("Lutetia", "France?");
    engine.database.execute("Delete from qa where cnt = 1");
    engine.database.execute("Update qa set q = 'France?' where cnt = 2");
    before = fakes::read_course(path);
    expect_offer(BoxAnswer::yes);
    desktop.expect_box("The question is no longer in the course; another program has deleted it.\r\n\r\n"
                       "Do you want to save the texts as a new question and answer?",
                       BoxAnswer::yes);
    desktop.expect_box("Answer is already in database.");
    go();
    EXPECT_FALSE(went());
    EXPECT_TRUE(logic->edit_flags.new_mode);
    EXPECT_FALSE(form1.Text_a.locked);
    EXPECT_TRUE(form1.Text_a.has_focus());
    expect_in_boxes("Lutetia", "France?");
    EXPECT_EQ(records(), before.qa);
    form1.type(form1.Text_a, "!");
    EXPECT_NE(answer(), "France?") << "no key is held back";
}

class EndOfEditing : public LeavingTheEditor {};

TEST_F(EndOfEditing, with_the_session_asks_nothing)
{
    write_new("Norway?", "Oslo");
    user([this] { form1.window.end_session(); });
    EXPECT_TRUE(ended);
    EXPECT_TRUE(desktop.boxes.empty());
    EXPECT_EQ(fakes::read_course(path).qa, before.qa);
}

TEST_F(EndOfEditing, is_not_reached_through_the_dialog)
{
    write_new("Norway?", "Oslo");
    for (const fakes::FakeButton* button : {&form1.bot_yes, &form1.bot_no, &form1.bot_other})
        EXPECT_FALSE(button->usable()) << button->name;
    yes();
    no();
    user([this] { form1.bot_yes.right_click(); });
    expect_in_boxes("Norway?", "Oslo");
    EXPECT_TRUE(logic->editor.editing());
}

class EditingAtTheStart : public DrillFixture {};

TEST_F(EditingAtTheStart, is_not_ended_by_the_dialog)
{
    start_with_three_questions();
    toolbar(9);
    EXPECT_FALSE(form1.bot_no.usable());
    no();
    user([this] { form1.bot_yes.right_click(); });
    EXPECT_FALSE(ended);
    EXPECT_TRUE(logic->edit_flags.new_mode);
}

class NextQuestionInTheEditor : public LeavingTheEditor {};

TEST_F(NextQuestionInTheEditor, loses_the_texts_when_they_are_not_wanted)
{
    change_to("Gaul?", "Lutetia");
    expect_offer(BoxAnswer::no);
    toolbar(1);
    EXPECT_FALSE(logic->editor.editing());
    expect_in_boxes("Italy?", "");
    EXPECT_TRUE(form1.Text_q.locked);
    EXPECT_EQ(fakes::read_course(path), before) << "not even the time of the show";
    EXPECT_EQ(logic->state.dialog, DialogState::OfferAnswer);
}

TEST_F(NextQuestionInTheEditor, saves_a_change_and_stamps_nothing)
{
    toolbar(1);
    ASSERT_EQ(question(), "Italy?");
    clock.advance_seconds(60);
    change_to("Italia?", "Roma");
    expect_offer(BoxAnswer::yes);
    choose("m_display_next_question");
    EXPECT_FALSE(logic->editor.editing());
    expect_in_boxes("France?", "");
    EXPECT_EQ(stored(2).q, "Italia?");
    EXPECT_EQ(stored(2).q_side.date_last_show, before.qa.at(1).q_side.date_last_show);
}

TEST_F(NextQuestionInTheEditor, saves_a_new_record_and_stamps_nothing)
{
    write_new("Norway?", "Oslo");
    expect_offer(BoxAnswer::yes);
    toolbar(1);
    expect_in_boxes("France?", "");
    EXPECT_EQ(stored(4).q, "Norway?");
    EXPECT_EQ(stored(4).q_side.date_last_show, std::nullopt);
    EXPECT_EQ(form1.screen.panel_total.text, "4");
}

TEST_F(NextQuestionInTheEditor, is_asked_for_by_its_letter_outside_the_boxes)
{
    write_new("Norway?", "Oslo");
    form1.bot_focus.set_focus();
    expect_offer(BoxAnswer::no);
    EXPECT_TRUE(press("q"));
    expect_in_boxes("France?", "");
}

TEST_F(NextQuestionInTheEditor, comes_after_texts_that_were_rejected)
{
    const struct {
        const char* question;
        const char* answer;
        const char* reason;
    } rejected[] = {{"", "Oslo", "The question is empty. No saving performed."},
                    {"Norway?", "", "The answer is empty. No saving performed."},
                    {"Italy?", "Oslo", "Question is already in database."}};
    for (const auto& texts : rejected) {
        write_new(texts.question, texts.answer);
        expect_offer(BoxAnswer::yes);
        desktop.expect_box(texts.reason);
        toolbar(1);
        EXPECT_FALSE(logic->editor.editing()) << texts.reason;
        expect_in_boxes("France?", "");
    }
    EXPECT_EQ(fakes::read_course(path), before);
}

TEST_F(NextQuestionInTheEditor, does_not_come_when_the_course_refuses_the_texts)
{
    change_to(std::string(201, 'q'), "Lutetia");
    expect_offer(BoxAnswer::yes);
    desktop.expect_box("The question has 201 characters; 200 fit.");
    toolbar(1);
    EXPECT_TRUE(logic->editor.editing());
    expect_in_boxes(std::string(201, 'q'), "Lutetia");
    EXPECT_TRUE(form1.Text_q.has_focus());
    EXPECT_FALSE(form1.Text_q.locked);
    EXPECT_EQ(fakes::read_course(path), before);
}

TEST_F(NextQuestionInTheEditor, does_not_come_when_the_texts_cannot_be_stored)
{
    write_new("Norway?", "Oslo");
    expect_offer(BoxAnswer::yes);
    database.fail_at(fakes::Operation::execute);
    desktop.expect_box("The question and its answer are not saved.\r\n\r\nThe course " + path +
                       " could not be read or written.\r\n\r\nThe disk is full.");
    toolbar(1);
    EXPECT_TRUE(logic->edit_flags.new_mode);
    expect_in_boxes("Norway?", "Oslo");
    EXPECT_EQ(logic->course.record_count, 3);
    EXPECT_EQ(fakes::read_course(path), before);
}

TEST_F(NextQuestionInTheEditor, is_followed_by_a_pause_of_the_keys_after_a_rejection)
{
    write_new("", "Oslo");
    expect_offer(BoxAnswer::yes);
    desktop.expect_box("The question is empty. No saving performed.");
    toolbar(1);
    ASSERT_EQ(question(), "France?");
    EXPECT_TRUE(form1.window.press("q"));
    EXPECT_EQ(question(), "France?");
}

TEST_F(NextQuestionInTheEditor, offers_to_save_also_where_nothing_was_typed)
{
    toolbar(8);
    expect_offer(BoxAnswer::no);
    toolbar(1);
    EXPECT_FALSE(logic->editor.editing());
}

} // namespace
} // namespace cuedrill::drill
