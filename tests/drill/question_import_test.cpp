#include "common/errors.h"
#include "drill/drill_fixture.h"
#include "drill/edit_flags.h"
#include "drill/end_of_program.h"
#include "drill/import_explanation.h"
#include "drill/question_import.h"
#include "store/course.h"

#include <filesystem>
#include <new>
#include <sys/stat.h>
#include <utility>
#include <vector>

namespace cuedrill::drill {
namespace {

using namespace std::string_literals;
using fakes::Operation;
using platform::BoxAnswer;
using platform::BoxButtons;
using platform::BoxIcon;
using Texts = std::vector<std::pair<std::string, std::string>>;

/// Imports into a course that is empty at first. While a box is open or events are pumped, no transaction may be open.
class ImportDialogue : public DrillFixture {
protected:
    void SetUp() override
    {
        builder.text_param("course_title", "Capitals");
        desktop.expect_box("You have passed level 5 for all questions."); // true of a course without questions
        start();
        desktop.boxes.clear();
        desktop.pumps = 0;
        desktop.on_box = [this] { expect_nothing_open(); };
        desktop.on_pump = [this] { expect_nothing_open(); };
        form1.journal.clear();
    }

    void expect_nothing_open() const
    {
        EXPECT_EQ(database.transaction_depth(), 0);
        EXPECT_EQ(database.open_recordsets(), 0);
    }

    /// Imports a file with these bytes.
    void import(std::string_view bytes) { import_file(folder.write("questions.txt", bytes)); }
    void import_file(const std::string& file)
    {
        user([&] { logic->question_import.import_file(file); });
    }

    /// From now on storing a record takes this long.
    void let_a_record_take(double seconds)
    {
        database.at_each_call([this, seconds](Operation operation) {
            if (operation == Operation::execute)
                clock.steady_seconds_more += seconds;
        });
    }

    /// The questions and answers in the file, as another program reads them.
    [[nodiscard]] Texts texts() const
    {
        Texts texts;
        for (const fakes::QaRow& row : fakes::read_course(path).qa)
            texts.emplace_back(row.q, row.a);
        return texts;
    }

    /// The texts that the status line has shown.
    [[nodiscard]] std::vector<std::string> statuses() const
    {
        const std::string caption = "P_status.caption=";
        std::vector<std::string> found;
        for (const std::string& entry : form1.journal) {
            if (entry.starts_with(caption))
                found.push_back(entry.substr(caption.size()));
        }
        return found;
    }

    /// A text with the `count` records "q1"/"a1", "q2"/"a2" and so on.
    static std::string records(int count)
    {
        std::string text;
        for (int i = 1; i <= count; ++i)
            text += "@Q@ q" + std::to_string(i) + " @A@ a" + std::to_string(i) + "\r\n";
        return text;
    }
    static std::string inserted(int count) { return std::to_string(count) + " questions and answers insterted."; }
    static std::string stopped(const std::string& reason, std::int64_t stored)
    {
        return "The import has stopped.\r\n\r\n" + reason + "\r\n\r\n" + std::to_string(stored) +
               " questions and answers are stored.";
    }
    static std::string importing(int stored)
    {
        return "Importing: " + std::to_string(stored) + " questions and answers stored";
    }
};

class ImportCommand : public ImportDialogue {
protected:
    void expect_explanation(BoxAnswer answer)
    {
        desktop.expect_box_like({.text = import_explanation,
                                 .buttons = BoxButtons::yes_no,
                                 .icon = BoxIcon::question,
                                 .default_button = BoxAnswer::no,
                                 .title = "Importing questions and answers from text file"},
                                answer);
    }
    void expect_confirmation(const std::string& file, BoxAnswer answer)
    {
        desktop.expect_box_like({.text = "Questions from file \"" + file +
                                         "\"will be added to current course (Capitals).\r\nDo you wish to continue?",
                                 .buttons = BoxButtons::yes_no,
                                 .icon = BoxIcon::question},
                                answer);
    }
    void expect_plain(const std::string& text) { desktop.expect_box_like({.text = text}, BoxAnswer::ok); }

    /// Runs the command: the boxes before the file dialog, and the choice of `file`.
    void choose_file(const std::string& file)
    {
        expect_explanation(BoxAnswer::yes);
        desktop.expect_file({.path = file, .title = "title"});
    }
    void run() { choose("m_import"); }
};

TEST_F(ImportCommand, explains_asks_for_the_file_asks_again_and_tells_the_number)
{
    const std::string file = folder.write("capitals.txt", "@Q@ Norway? @A@ Oslo\r\n@Q@ Peru? @A@ Lima");
    choose_file(file);
    expect_confirmation(file, BoxAnswer::yes);
    expect_plain("2 questions and answers insterted.");
    run();
    EXPECT_EQ(texts(), (Texts{{"Norway?", "Oslo"}, {"Peru?", "Lima"}}));
    EXPECT_EQ(logic->course.record_count, 2);
    EXPECT_EQ(desktop.file_dialogs.at(0).filter, "Text file (*.txt)|*.txt|All files (*.*)|*.*");
}

TEST_F(ImportCommand, stops_when_the_explanation_is_answered_with_no)
{
    expect_explanation(BoxAnswer::no);
    run();
}

TEST_F(ImportCommand, is_refused_while_a_record_is_typed_or_changed)
{
    for (bool EditFlags::*flag : {&EditFlags::new_mode, &EditFlags::edit_mode}) {
        logic->edit_flags.clear();
        logic->edit_flags.*flag = true;
        expect_explanation(BoxAnswer::yes);
        expect_plain(
            "This function cannot be used while in insert or modify mode. Press ESC to cancel insert or edit.");
        run();
    }
}

TEST_F(ImportCommand, is_refused_without_a_course)
{
    logic->course.close();
    expect_explanation(BoxAnswer::yes);
    expect_plain("You should create a course first");
    run();
}

TEST_F(ImportCommand, stops_silently_when_the_file_dialog_is_cancelled)
{
    choose_file("");
    run();
}

TEST_F(ImportCommand, stops_when_the_confirmation_is_answered_with_no)
{
    const std::string file = folder.write("capitals.txt", "@Q@ Norway? @A@ Oslo");
    choose_file(file);
    expect_confirmation(file, BoxAnswer::no);
    run();
    EXPECT_TRUE(texts().empty());
}

TEST_F(ImportCommand, tells_that_a_file_does_not_exist)
{
    choose_file(folder.file("missing.txt"));
    expect_plain("File not found");
    run();
}

TEST_F(ImportCommand, refuses_the_open_course_under_any_name)
{
    const std::string symbolic = folder.file("symbolic.txt");
    const std::string hard = folder.file("hard.txt");
    std::filesystem::create_symlink(path, symbolic);
    std::filesystem::create_hard_link(path, hard);
    for (const std::string& name : {path, symbolic, hard}) {
        choose_file(name);
        expect_plain("The file " + name + " is the open course itself. Choose a text file.");
        run();
    }
}

TEST_F(ImportCommand, refuses_what_is_no_ordinary_file)
{
    const std::string pipe = folder.file("pipe");
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    for (const std::string& name : {folder.path().string(), pipe, "/dev/null"s}) {
        choose_file(name);
        expect_plain("The file " + name + " is not an ordinary file. Choose a text file.");
        run();
    }
}

class ImportInTheWindow : public ImportDialogue {};

TEST_F(ImportInTheWindow, tells_of_the_format_where_no_question_was_found)
{
    for (const char* text : {"", "no marker at all\r\n", "@A@ answer alone", "/*/ @Q@ a @A@ b"}) {
        desktop.expect_box_like(
            {.text = inserted(0),
             .details =
                 "No \"@Q@\" was found in the file. Each question must be preceded by \"@Q@\", and its answer by "
                 "\"@A@\".\r\nExample: @Q@ What is the capital of Alabama?  @A@ Montgomery\r\n"},
            BoxAnswer::ok);
        import(text);
    }
    EXPECT_TRUE(texts().empty());
    EXPECT_EQ(statuses(), (std::vector<std::string>{"", "", "", ""}));
}

TEST_F(ImportInTheWindow, says_nothing_about_the_format_where_a_question_was_found)
{
    desktop.expect_box_like({.text = inserted(0)}, BoxAnswer::ok);
    import("@Q@ lost");
}

TEST_F(ImportInTheWindow, tells_of_empty_parts_and_goes_on)
{
    desktop.expect_box_like({.text = "Answer to question 1  is empty. Record not inserted."}, BoxAnswer::ok);
    desktop.expect_box_like({.text = "Question 3  is empty. Record not inserted."}, BoxAnswer::ok);
    desktop.expect_box(inserted(2));
    import("@Q@ x @A@ \t\r\n@Q@ y @A@ z\r\n@Q@ \r\n @A@ v\r\n@Q@ last @A@ one");
    EXPECT_EQ(texts(), (Texts{{"y", "z"}, {"last", "one"}}));
}

TEST_F(ImportInTheWindow, has_stored_and_shown_what_came_before_when_a_box_is_shown)
{
    desktop.on_box = [this] {
        expect_nothing_open();
        EXPECT_EQ(texts(), (Texts{{"y", "z"}}));
        EXPECT_EQ(question(), "y");
        EXPECT_EQ(form1.screen.panel_total.text, "1");
    };
    desktop.expect_box("Question 2  is empty. Record not inserted.");
    desktop.expect_box(inserted(1));
    import("@Q@ y @A@ z @Q@ @A@ v");
}

TEST_F(ImportInTheWindow, ends_with_a_list_of_what_was_refused_or_could_not_be_read)
{
    desktop.expect_box_like({.text = inserted(2)}, BoxAnswer::ok);
    desktop.expect_box_like(
        {.text = "Refused, and not stored: 1\r\nQuestions with characters that could not be read: 1",
         .icon = BoxIcon::exclamation,
         .details = "Question 1: The question has 201 characters; 200 fit. \"" + std::string(201, 'q') +
                    "\"\r\nQuestion 2: 1 character of the answer could not be read. \"\uFFFD\"\r\n"},
        BoxAnswer::ok);
    import("\xEF\xBB\xBF@Q@ " + std::string(201, 'q') + " @A@ a @Q@ b @A@ \xE9");
}

TEST_F(ImportInTheWindow, does_not_list_the_refused_records_of_the_import_before)
{
    desktop.expect_box(inserted(1));
    desktop.expect_box("Refused, and not stored: 1");
    import("@Q@ " + std::string(201, 'q') + " @A@ b");
    desktop.expect_box(inserted(1));
    import("@Q@ a @A@ b");
}

TEST_F(ImportInTheWindow, shows_the_last_record_and_leaves_the_status_line_empty)
{
    desktop.expect_box(inserted(3));
    import(records(3));
    EXPECT_EQ(question(), "q3");
    EXPECT_EQ(logic->state.shown.current_cnt(), 3);
    EXPECT_EQ(statuses(), (std::vector<std::string>{importing(3), ""}));
    EXPECT_EQ(times_noted("panel_total.untold caption=3"), 1) << "counted once";
}

TEST_F(ImportInTheWindow, shows_each_import_from_its_first_record_on)
{
    desktop.expect_box(inserted(1));
    import(records(1));
    desktop.expect_box(inserted(1));
    import("@Q@ Norway? @A@ Oslo");
    EXPECT_EQ(question(), "Norway?");
    EXPECT_EQ(logic->state.shown.current_cnt(), 2);
}

TEST_F(ImportInTheWindow, leaves_the_editor)
{
    logic->edit_flags.new_mode = true;
    desktop.expect_box(inserted(1));
    import(records(1));
    EXPECT_FALSE(logic->edit_flags.editing());
}

/// Compares the file with the window whenever events are pumped.
TEST_F(ImportInTheWindow, lets_the_window_paint_many_times_a_second)
{
    let_a_record_take(0.03);
    std::vector<std::pair<std::size_t, std::string>> seen;
    desktop.on_pump = [&] {
        expect_nothing_open();
        seen.emplace_back(texts().size(), question());
        EXPECT_EQ(status(), importing(static_cast<int>(texts().size())));
    };
    desktop.expect_box(inserted(8));
    import(records(8));
    EXPECT_EQ(seen, (std::vector<std::pair<std::size_t, std::string>>{{2, "q2"}, {4, "q4"}, {6, "q6"}, {8, "q8"}}));
}

TEST_F(ImportInTheWindow, goes_through_in_one_piece_when_it_is_quick)
{
    desktop.expect_box(inserted(500));
    import(records(500));
    EXPECT_EQ(desktop.pumps, 0);
    EXPECT_EQ(texts().size(), 500U);
    EXPECT_EQ(statuses(), (std::vector<std::string>{importing(500), ""}));
}

TEST_F(ImportInTheWindow, shows_how_far_it_is_in_a_long_file)
{
    // The clock stands still, so only the empty record ends a step.
    std::string text = "@Q@ q1 @A@ a1 @Q@ @A@ a2 @Q@ q3 @A@ a3\r\n";
    while (text.size() < 1'100'000)
        text += "/*/ a remark\r\n";
    desktop.expect_box("Question 2  is empty. Record not inserted.");
    desktop.expect_box(inserted(2));
    import(text);
    EXPECT_EQ(desktop.pumps, 1);
    EXPECT_EQ(statuses(),
              (std::vector<std::string>{importing(1), importing(1) + ", 1 % of the file read", importing(2), ""}));
}

/// Whatever stops an import, one box reports it, and the records that it calls stored are in the file and on display.
class StoppedImportInTheWindow : public ImportDialogue {
protected:
    void expect_stopped(const std::string& reason, int stored)
    {
        desktop.expect_box_like({.text = stopped(reason, stored), .icon = BoxIcon::exclamation}, BoxAnswer::ok);
    }

    void expect_shown(int count)
    {
        EXPECT_EQ(texts().size(), static_cast<std::size_t>(count));
        EXPECT_EQ(logic->course.record_count, count);
        EXPECT_EQ(logic->state.shown.current_cnt(), count);
        EXPECT_EQ(question(), count == 0 ? "" : "q" + std::to_string(count));
        EXPECT_EQ(status(), "");
        expect_nothing_open();
    }
};

TEST_F(StoppedImportInTheWindow, tells_why_and_how_many_records_are_stored)
{
    database.fail_at(Operation::execute, 3);
    expect_stopped("The disk is full.", 2);
    import(records(5));
    expect_shown(2);
}

TEST_F(StoppedImportInTheWindow, shows_what_could_be_stored_at_the_second_try)
{
    database.fail_at(Operation::commit, 1, platform::DatabaseErrorKind::locked, "Another program is using it.");
    expect_stopped("Another program is using it.", 5);
    import(records(5));
    expect_shown(5);
}

TEST_F(StoppedImportInTheWindow, tells_the_first_error_where_the_records_cannot_be_shown_either)
{
    database.fail_at(Operation::commit, 1, platform::DatabaseErrorKind::locked, "Another program is using it.");
    database.fail_at(Operation::open_recordset);
    expect_stopped("Another program is using it.", 1);
    import(records(1));
    EXPECT_EQ(texts().size(), 1U);
    EXPECT_EQ(question(), "") << "nothing that could be judged";
    EXPECT_EQ(status(), "");
}

TEST_F(StoppedImportInTheWindow, keeps_the_record_on_display_where_nothing_is_stored)
{
    desktop.expect_box(inserted(1));
    import(records(1));
    database.fail_at(Operation::begin);
    expect_stopped("The disk is full.", 0);
    import("@Q@ Norway? @A@ Oslo");
    expect_shown(1);
}

TEST_F(StoppedImportInTheWindow, shows_no_message_about_a_record_before_what_came_before_is_stored)
{
    database.fail_commit(false);
    expect_stopped("The commit failed.", 0);
    import("@Q@ y @A@ z @Q@ @A@ v @Q@ x @A@ w");
    expect_shown(0);
}

TEST_F(StoppedImportInTheWindow, says_of_how_many_records_nobody_can_tell)
{
    database.fail_commit(true);
    database.fail_at(Operation::query, 2); // the one before it gives the first number
    desktop.expect_box_like({.text = stopped("The commit failed. It is not known whether the change is stored, because "
                                             "the course cannot be read again.",
                                             0) +
                                     " Of 5 more it is not known whether they are stored.",
                             .icon = BoxIcon::exclamation},
                            BoxAnswer::ok);
    import(records(5));
    EXPECT_EQ(texts().size(), 5U);
}

TEST_F(StoppedImportInTheWindow, by_a_lack_of_memory_says_so)
{
    database.at_each_call([this](Operation operation) {
        if (operation == Operation::execute && database.count(operation) == 3)
            throw std::bad_alloc();
    });
    database.forget();
    expect_stopped("There is not enough memory.", 2);
    import(records(5));
    database.at_each_call(nullptr);
    expect_shown(2);
}

TEST_F(StoppedImportInTheWindow, lists_what_was_refused_before)
{
    database.fail_at(Operation::execute, 2); // the refused record is not written
    expect_stopped("The disk is full.", 1);
    desktop.expect_box("Refused, and not stored: 1");
    import("@Q@ q1 @A@ b @Q@ " + std::string(201, 'q') + " @A@ b @Q@ c @A@ d");
    expect_shown(1);
}

TEST_F(StoppedImportInTheWindow, says_that_the_course_is_full)
{
    logic->course.record_count = 32765;
    desktop.expect_box(stopped("The course is full: 32767 questions and answers are the most that it can hold.", 2));
    import(records(5));
    EXPECT_EQ(texts(), (Texts{{"q1", "a1"}, {"q2", "a2"}}));
}

TEST_F(StoppedImportInTheWindow, says_why_the_file_cannot_be_read)
{
    const std::string file = folder.file("gone.txt");
    desktop.on_box = [&] {
        const std::string& text = desktop.boxes.back().text;
        EXPECT_NE(text.find(file), std::string::npos) << text;
        desktop.expect_box(text);
        EXPECT_TRUE(text.ends_with("\r\n\r\n0 questions and answers are stored.")) << text;
    };
    import_file(file);
    EXPECT_EQ(desktop.boxes.size(), 1U);
}

TEST_F(StoppedImportInTheWindow, has_brought_the_list_of_all_questions_up_to_date)
{
    desktop.expect_box(inserted(1));
    import(records(1));
    choose("m_show_all");
    database.fail_at(Operation::execute, 3);
    desktop.on_box = [this] { EXPECT_EQ(form1.listav.lines.size(), 3U) << "when the end of the import is told"; };
    expect_stopped("The disk is full.", 2);
    import(records(5));
}

class EndedImport : public ImportDialogue {};

TEST_F(EndedImport, at_the_pump_keeps_what_was_committed)
{
    let_a_record_take(0.03);
    desktop.on_pump = [this] {
        if (logic->course.record_count == 4)
            logic->end_of_program.end_program();
    };
    import(records(8));
    EXPECT_TRUE(ended);
    EXPECT_EQ(texts().size(), 4U);
    expect_nothing_open();
}

TEST_F(EndedImport, at_a_box_keeps_what_came_before)
{
    desktop.on_box = [this] { logic->end_of_program.end_program(); };
    import("@Q@ y @A@ z @Q@ @A@ v @Q@ x @A@ w");
    EXPECT_TRUE(ended);
    EXPECT_EQ(texts(), (Texts{{"y", "z"}}));
}

} // namespace
} // namespace cuedrill::drill
