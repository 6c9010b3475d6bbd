#include "drill/record_editor_fixture.h"
#include "store/course_transaction.h"

namespace cuedrill::drill {
namespace {

using fakes::Operation;
using platform::BoxAnswer;

class FailingSave : public RecordEditorTest, public testing::WithParamInterface<Operation> {
protected:
    void SetUp() override { open_course(false); }

    void expect_refusal()
    {
        desktop.expect_box_like({.text = "The question and its answer are not saved.\r\n\r\nThe course " +
                                         course.db_path + " could not be read or written.\r\n\r\nThe disk is full.",
                                 .icon = platform::BoxIcon::exclamation},
                                BoxAnswer::ok);
        EXPECT_EQ(editor.save_record(), SaveResult::refused);
        EXPECT_EQ(file(), before);
        EXPECT_EQ(course.record_count, 3);
        EXPECT_EQ(database.transaction_depth(), 0);
    }
};

TEST_P(FailingSave, of_a_new_record_changes_nothing_and_may_be_repeated)
{
    begin_new("Spain?", "Madrid");
    database.fail_at(GetParam());
    expect_refusal();
    expect_open("Spain?", "Madrid");
    EXPECT_EQ(current_cnt(), 0);
    EXPECT_EQ(editor.save_record(), SaveResult::saved);
    expect_texts(3, "Spain?", "Madrid");
    EXPECT_EQ(current_cnt(), 4);
}

TEST_P(FailingSave, of_a_change_changes_nothing_and_may_be_repeated)
{
    begin_change("Gaul?", "Lutetia");
    database.fail_at(GetParam());
    expect_refusal();
    expect_open("Gaul?", "Lutetia");
    EXPECT_EQ(current_cnt(), 1);
    EXPECT_EQ(editor.save_record(), SaveResult::saved);
    expect_texts(0, "Gaul?", "Lutetia");
}

// The first query looks for a duplicate question.
INSTANTIATE_TEST_SUITE_P(Steps, FailingSave,
                         testing::Values(Operation::query, Operation::begin, Operation::execute, Operation::commit));

class Refused : public Straight {};

TEST_F(Refused, new_record_of_a_full_course_is_told)
{
    course.record_count = 32767;
    begin_new("Spain?", "Madrid");
    desktop.expect_box("The question and its answer are not saved.\r\n\r\nThe course is full: 32767 questions and "
                       "answers are the most that it can hold.");
    EXPECT_EQ(editor.save_record(), SaveResult::refused);
    expect_open("Spain?", "Madrid");
    EXPECT_EQ(course.record_count, 32767);
    EXPECT_EQ(file(), before);
}

TEST_F(Refused, record_of_a_full_course_can_be_changed)
{
    course.record_count = 32767;
    begin_change("Gaul?", "Lutetia");
    EXPECT_EQ(editor.save_record(), SaveResult::saved);
    expect_texts(0, "Gaul?", "Lutetia");
}

TEST_F(Refused, number_beyond_16_bits_is_told_and_nothing_is_stored)
{
    database.execute("Insert into qa (cnt, q) values (32767, 'x')");
    database.execute("Delete from qa where cnt = 32767");
    begin_new("Spain?", "Madrid");
    desktop.expect_box("The question and its answer are not saved.\r\n\r\nOverflow: the record number 32768 is outside "
                       "-32768 to 32767.");
    EXPECT_EQ(editor.save_record(), SaveResult::refused);
    expect_open("Spain?", "Madrid");
    EXPECT_EQ(course.record_count, 3);
    EXPECT_EQ(current_cnt(), 0);
    EXPECT_EQ(database.transaction_depth(), 0);
    EXPECT_EQ(file(), before);
    display.take_for_record(1);
    begin_change("Gaul?", "Lutetia");
    EXPECT_EQ(editor.save_record(), SaveResult::saved) << "the cursor still finds records by their number";
    expect_texts(0, "Gaul?", "Lutetia");
}

class Vanished : public Straight {
protected:
    void change_it(BoxAnswer keep)
    {
        database.execute("Delete from qa where cnt = 1");
        begin_change("Gaul?", "Lutetia");
        desktop.expect_box_like({.text = "The question is no longer in the course; another program has deleted it."
                                         "\r\n\r\nDo you want to save the texts as a new question and answer?",
                                 .buttons = platform::BoxButtons::yes_no,
                                 .icon = platform::BoxIcon::question,
                                 .must_be_answered = true},
                                keep);
    }
};

TEST_F(Vanished, record_is_kept_as_a_new_one_on_yes)
{
    change_it(BoxAnswer::yes);
    EXPECT_EQ(editor.save_record(), SaveResult::saved);
    expect_texts(2, "Gaul?", "Lutetia");
    EXPECT_EQ(current_cnt(), 4);
    EXPECT_EQ(course.record_count, 3);
    EXPECT_FALSE(editor.editing());
}

TEST_F(Vanished, record_stays_in_the_editor_on_no)
{
    change_it(BoxAnswer::no);
    EXPECT_EQ(editor.save_record(), SaveResult::refused);
    expect_open("Gaul?", "Lutetia");
    EXPECT_EQ(file().qa.size(), 2U);
    EXPECT_EQ(database.transaction_depth(), 0);
}

class FailedCommitOfARecord : public Straight {
protected:
    void expect_unknown()
    {
        desktop.expect_box("It is not known whether the question and its answer are saved. Save again to find out."
                           "\r\n\r\nThe course " +
                           course.db_path +
                           " could not be read or written.\r\n\r\nThe commit failed. It is not known whether the "
                           "change is stored, because the course cannot be read again.");
        EXPECT_EQ(editor.save_record(), SaveResult::refused);
        expect_open(view.typed().question, view.typed().answer);
    }
};

TEST_F(FailedCommitOfARecord, of_a_save_that_is_stored_is_a_save)
{
    begin_new("Spain?", "Madrid");
    database.fail_commit(true);
    EXPECT_EQ(editor.save_record(), SaveResult::saved);
    EXPECT_EQ(course.record_count, 4);
    EXPECT_EQ(current_cnt(), 4);
    begin_change("Portugal?", "Lisbon");
    database.fail_commit(true);
    EXPECT_EQ(editor.save_record(), SaveResult::saved);
    expect_texts(3, "Portugal?", "Lisbon");
}

TEST_F(FailedCommitOfARecord, of_a_save_that_is_not_stored_may_be_repeated)
{
    begin_new("Spain?", "Madrid");
    database.fail_commit(false);
    desktop.expect_box("The question and its answer are not saved.\r\n\r\nThe course " + course.db_path +
                       " could not be read or written.\r\n\r\nThe commit failed.");
    EXPECT_EQ(editor.save_record(), SaveResult::refused);
    EXPECT_EQ(course.record_count, 3);
    EXPECT_EQ(editor.save_record(), SaveResult::saved);
    EXPECT_EQ(course.record_count, 4);
}

TEST_F(FailedCommitOfARecord, of_unknown_outcome_is_not_saved_twice_nor_refused_for_its_own_sake)
{
    for (const bool stored : {true, false}) {
        SCOPED_TRACE(stored);
        const std::string question = stored ? "Spain?" : "Portugal?";
        const int before_it = stored ? 3 : 4;
        begin_new(question, "Madrid");
        database.fail_commit(stored);
        database.fail_at(Operation::query, 3); // earlier queries look for a duplicate and for the record number
        expect_unknown();
        EXPECT_EQ(course.record_count, before_it);
        EXPECT_EQ(editor.save_record(), SaveResult::saved);
        EXPECT_EQ(course.record_count, before_it + 1);
        EXPECT_EQ(file().qa.size(), static_cast<std::size_t>(before_it + 1));
        EXPECT_EQ(file().qa.back().q, question);
        EXPECT_EQ(current_cnt(), file().qa.back().cnt);
    }
}

TEST_F(FailedCommitOfARecord, of_unknown_outcome_lets_the_texts_be_changed_before_the_next_save)
{
    begin_new("Spain?", "Madrid");
    database.fail_commit(true);
    database.fail_at(Operation::query, 3);
    expect_unknown();
    view.type({"Italy?", "Madrid"});
    desktop.expect_box("Question is already in database.");
    EXPECT_EQ(editor.save_record(), SaveResult::rejected);
    view.type({"Iberia?", "Madrid"});
    EXPECT_EQ(editor.save_record(), SaveResult::saved);
    EXPECT_EQ(course.record_count, 4);
    expect_texts(3, "Iberia?", "Madrid");
}

TEST_F(FailedCommitOfARecord, of_unknown_outcome_does_not_touch_another_new_record)
{
    begin_new("Spain?", "Madrid");
    database.fail_commit(true);
    database.fail_at(Operation::query, 3);
    expect_unknown();
    begin_new("Portugal?", "Lisbon");
    EXPECT_EQ(editor.save_record(), SaveResult::saved);
    EXPECT_EQ(course.record_count, 5);
    expect_texts(3, "Spain?", "Madrid");
    expect_texts(4, "Portugal?", "Lisbon");
}

TEST_F(FailedCommitOfARecord, of_two_new_records_of_unknown_outcome_does_not_give_one_the_texts_of_the_other)
{
    begin_new("Spain?", "Madrid");
    database.fail_commit(true);
    database.fail_at(Operation::query, 3);
    expect_unknown();
    begin_new("Portugal?", "Lisbon");
    database.fail_commit(false);
    database.fail_at(Operation::query, 3); // beginning this record has settled the earlier one
    expect_unknown();
    EXPECT_EQ(editor.save_record(), SaveResult::saved);
    EXPECT_EQ(course.record_count, 5);
    EXPECT_EQ(file().qa.size(), 5U);
    expect_texts(3, "Spain?", "Madrid");
    expect_texts(4, "Portugal?", "Lisbon");
}

TEST_F(FailedCommitOfARecord, of_a_change_of_unknown_outcome_may_be_repeated)
{
    begin_change("Gaul?", "Lutetia");
    database.fail_commit(true);
    database.fail_at(Operation::query, 3); // earlier queries look for a duplicate and for the old texts
    expect_unknown();
    database.fail_at(Operation::query); // it is still unknown
    expect_unknown();
    EXPECT_EQ(editor.save_record(), SaveResult::saved);
    expect_texts(0, "Gaul?", "Lutetia");
    EXPECT_EQ(course.record_count, 3);
}

TEST_F(FailedCommitOfARecord, of_a_change_that_is_stored_after_all_is_not_made_again)
{
    begin_change("Gaul?", "Lutetia");
    database.fail_commit(true);
    database.fail_at(Operation::query, 3);
    expect_unknown();
    database.forget();
    EXPECT_EQ(editor.save_record(), SaveResult::saved);
    EXPECT_EQ(database.count(Operation::begin), 0) << "a disk that is full by now does not make it look unsaved";
    EXPECT_EQ(view.status(), saved);
    EXPECT_EQ(current_cnt(), 1);
}

TEST_F(FailedCommitOfARecord, of_a_change_is_unknown_as_long_as_its_record_cannot_be_read)
{
    begin_change("Gaul?", "Lutetia");
    database.fail_commit(true);
    database.fail_at(Operation::query, 3);
    expect_unknown();
    store::settle(course);
    database.fail_at(Operation::query);
    desktop.expect_box("It is not known whether the question and its answer are saved. Save again to find out."
                       "\r\n\r\nThe course " +
                       course.db_path + " could not be read or written.\r\n\r\nThe disk is full.");
    EXPECT_EQ(editor.save_record(), SaveResult::refused);
    EXPECT_EQ(editor.save_record(), SaveResult::saved);
}

TEST_F(FailedCommitOfARecord, of_a_change_whose_record_another_program_then_deletes_offers_a_new_record)
{
    begin_change("Gaul?", "Lutetia");
    database.fail_commit(true);
    database.fail_at(Operation::query, 3);
    expect_unknown();
    store::settle(course);
    engine.database.execute("Delete from qa where cnt = 1");
    desktop.expect_box("The question is no longer in the course; another program has deleted it.\r\n\r\n"
                       "Do you want to save the texts as a new question and answer?",
                       BoxAnswer::yes);
    EXPECT_EQ(editor.save_record(), SaveResult::saved);
    expect_texts(2, "Gaul?", "Lutetia");
}

TEST_F(FailedCommitOfARecord, of_unknown_outcome_is_told_when_the_editor_is_left)
{
    begin_change("Gaul?", "Lutetia");
    database.fail_commit(true);
    database.fail_at(Operation::query, 3);
    expect_unknown();
    editor.leave_editor();
    expect_left("Gaul?", "Lutetia");
    EXPECT_EQ(view.status(), perhaps_unsaved);
    display.show_record(2);
    begin_change("Italia?", "Roma");
    editor.leave_editor();
    EXPECT_EQ(view.status(), surely_unsaved) << "nobody has tried to save that";
}

/// The outcome is unknown, so the course may contain the other texts.
TEST_F(FailedCommitOfARecord, of_unknown_outcome_is_told_also_where_the_texts_of_before_stand_in_the_boxes_again)
{
    begin_change("Gaul?", "Lutetia");
    database.fail_commit(true);
    database.fail_at(Operation::query, 3);
    expect_unknown();
    view.type(view.loaded());
    EXPECT_TRUE(editor.has_changes());
    editor.leave_editor();
    EXPECT_EQ(view.status(), perhaps_unsaved);
    EXPECT_EQ(current_cnt(), 0);
}

/// If the change turns out to be stored, however late, the record's verdict can no longer be undone.
TEST_F(FailedCommitOfARecord, of_a_change_or_deletion_leaves_no_verdict_to_be_undone_where_it_is_stored)
{
    for (const bool deletion : {false, true}) {
        SCOPED_TRACE(deletion);
        for (const bool stored : {false, true}) {
            SCOPED_TRACE(stored);
            display.take_for_record(1);
            scoring.set_failure();
            database.fail_commit(stored);
            if (deletion) {
                desktop.expect_box("Are you sure you want to delete question \"France?\" and its asnwer?",
                                   BoxAnswer::yes);
                form1.Text_q.text_value = "France?";
                database.fail_at(Operation::query, 2); // the first query reads the old texts
                EXPECT_THROW(editor.delete_record(), store::OutcomeUnknown);
            } else {
                begin_change(stored ? "Gaul?" : "Gallia?", "Lutetia");
                database.fail_at(Operation::query, 3);
                expect_unknown();
                editor.leave_editor();
            }
            store::settle(course);
            const std::size_t before_undo = shows();
            scoring.m_undo();
            EXPECT_EQ(shows(), stored ? before_undo : before_undo + 1);
        }
    }
    EXPECT_EQ(file().qa.size(), 2U);
}

TEST_F(FailedCommitOfARecord, of_a_deletion_is_told_as_it_is)
{
    for (const bool stored : {true, false}) {
        display.take_for_record(stored ? 1 : 2);
        database.fail_commit(stored);
        if (stored)
            bank.delete_record(1);
        else
            EXPECT_THROW(bank.delete_record(2), platform::CommitError);
        EXPECT_EQ(course.record_count, 2);
        EXPECT_EQ(file().qa.size(), 2U);
    }
    database.fail_commit(true);
    database.fail_at(Operation::query, 2); // the first query reads the old texts
    EXPECT_THROW(bank.delete_record(2), store::OutcomeUnknown);
    EXPECT_EQ(course.record_count, 2);
    statistics.refresh_counts();
    EXPECT_EQ(course.record_count, 1);
}

class Changes : public Straight {};

TEST_F(Changes, are_what_differs_from_the_record)
{
    EXPECT_FALSE(editor.has_changes());
    begin_change("France?", "Paris");
    EXPECT_FALSE(editor.has_changes());
    form1.Text_a.text_value = "paris";
    EXPECT_TRUE(editor.has_changes());
    view.type({"Franc?", "Paris"});
    EXPECT_TRUE(editor.has_changes());
    editor.leave_editor();
    EXPECT_FALSE(editor.has_changes()) << "nobody is asked about texts that are no longer in the editor";
}

TEST_F(Changes, are_all_that_stands_in_the_boxes_of_a_new_record)
{
    begin_new("", "");
    EXPECT_FALSE(editor.has_changes());
    form1.Text_q.text_value = "F";
    EXPECT_TRUE(editor.has_changes());
    view.type({"", "P"});
    EXPECT_TRUE(editor.has_changes());
    view.type({"France?", "Paris"});
    EXPECT_TRUE(editor.has_changes()) << "the texts of the record before are new ones here";
}

class AskToSave : public Straight {
protected:
    void expect_question(BoxAnswer answer)
    {
        desktop.expect_box_like({.text = "Do you want to save the changes?",
                                 .buttons = platform::BoxButtons::yes_no,
                                 .icon = platform::BoxIcon::question,
                                 .must_be_answered = true},
                                answer);
    }
};

TEST_F(AskToSave, asks_nothing_outside_the_editor)
{
    EXPECT_TRUE(editor.ask_to_save());
    EXPECT_EQ(editor.offer_to_save(), SaveResult::saved);
    EXPECT_TRUE(desktop.boxes.empty());
}

TEST_F(AskToSave, saves_on_yes)
{
    begin_new("Spain?", "Madrid");
    expect_question(BoxAnswer::yes);
    EXPECT_TRUE(editor.ask_to_save());
    EXPECT_FALSE(editor.editing());
    expect_texts(3, "Spain?", "Madrid");
}

TEST_F(AskToSave, leaves_the_editor_on_no_and_the_texts_in_the_boxes)
{
    begin_change("Gaul?", "Lutetia");
    expect_question(BoxAnswer::no);
    EXPECT_TRUE(editor.ask_to_save());
    expect_left("Gaul?", "Lutetia");
    EXPECT_EQ(file(), before);
}

TEST_F(AskToSave, holds_the_caller_back_when_a_text_is_rejected)
{
    const RecordTexts rejected[] = {{"", "Madrid"}, {"Spain?", ""}, {"Italy?", "Milan"}};
    const char* const reasons[] = {"The question is empty. No saving performed.",
                                   "The answer is empty. No saving performed.", "Question is already in database."};
    for (std::size_t i = 0; i < std::size(rejected); ++i) {
        begin_new(rejected[i].question, rejected[i].answer);
        expect_question(BoxAnswer::yes);
        desktop.expect_box(reasons[i]);
        EXPECT_FALSE(editor.ask_to_save()) << reasons[i];
        expect_open(rejected[i].question, rejected[i].answer);
        EXPECT_EQ(view.caret(), i == 1 ? "answer" : "question");
    }
    EXPECT_FALSE(view.keys_rest());
    EXPECT_EQ(file(), before);
}

TEST_F(AskToSave, asks_nothing_where_nothing_was_typed)
{
    begin_change(view.loaded().question, view.loaded().answer);
    EXPECT_TRUE(editor.ask_to_save());
    EXPECT_FALSE(editor.editing());
    EXPECT_EQ(view.status(), "");
    begin_new("", "");
    EXPECT_TRUE(editor.ask_to_save());
    EXPECT_FALSE(editor.editing());
    EXPECT_TRUE(desktop.boxes.empty());
}

TEST_F(AskToSave, offers_to_save_a_record_that_is_as_it_was_where_the_next_question_is_asked_for)
{
    begin_change(view.loaded().question, view.loaded().answer);
    expect_question(BoxAnswer::no);
    EXPECT_EQ(editor.offer_to_save(), SaveResult::saved);
    EXPECT_TRUE(editor.editing());
}

TEST_F(AskToSave, pauses_the_keys_only_where_a_rejection_leaves_the_editor)
{
    begin_new("", "Madrid");
    desktop.expect_box("The question is empty. No saving performed.");
    editor.save_record();
    EXPECT_TRUE(view.keys_rest());
    clock.steady_seconds_more += 2;
    begin_new("Spain?", "");
    desktop.expect_box("The answer is empty. No saving performed.");
    editor.save_record();
    EXPECT_FALSE(view.keys_rest());
}

TEST_F(AskToSave, is_about_texts_that_a_new_record_can_bring_back_once_they_were_left)
{
    begin_new("Spain?", "Madrid");
    editor.leave_editor();
    editor.begin_new_record();
    EXPECT_EQ(view.emptied().question, "Spain?");
    EXPECT_EQ(view.emptied().answer, "Madrid");
    EXPECT_EQ(view.typed().question, "");
}

TEST_F(AskToSave, holds_the_caller_back_and_stays_in_the_editor_when_the_course_refuses)
{
    begin_new("Spain?", many("a", 201));
    expect_question(BoxAnswer::yes);
    desktop.expect_box("The answer has 201 characters; 200 fit.");
    EXPECT_FALSE(editor.ask_to_save());
    expect_open("Spain?", many("a", 201));
}

class AskToSaveInverted : public RecordEditorTest {
protected:
    void SetUp() override { open_course(true); }
};

/// Another program has deleted the record and given its answer to another one.
TEST_F(AskToSaveInverted, stays_in_the_editor_when_the_texts_kept_as_a_new_record_are_rejected)
{
    begin_change("Lutetia", "France?");
    engine.database.execute("Delete from qa where cnt = 1");
    engine.database.execute("Update qa set q = 'France?' where cnt = 2");
    desktop.expect_box("Do you want to save the changes?", BoxAnswer::yes);
    desktop.expect_box("The question is no longer in the course; another program has deleted it.\r\n\r\n"
                       "Do you want to save the texts as a new question and answer?",
                       BoxAnswer::yes);
    desktop.expect_box("Answer is already in database.");
    EXPECT_FALSE(editor.ask_to_save());
    expect_open("Lutetia", "France?");
    EXPECT_TRUE(flags.new_mode);
    EXPECT_FALSE(view.keys_rest());
}

} // namespace
} // namespace cuedrill::drill
