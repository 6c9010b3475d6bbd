#include "exchange/question_import_fixture.h"

#include <algorithm>
#include <filesystem>
#include <sys/stat.h>

namespace cuedrill::exchange {
namespace {

using namespace std::string_literals;
using platform::BoxAnswer;
using platform::BoxButtons;
using platform::BoxIcon;

class ImportCommand : public ImportFixture {
protected:
    void expect_explanation(BoxAnswer answer)
    {
        desktop.expect_box_like(
            {.text = "This function will import questions and answers form a text file and put them in the current "
                     "course.\r\n"
                     "In the text file each question must be preceded by '@Q@', and the related answer by '@A@'\r\n"
                     "Questions and answers may be on different lines and consist of more than one line each.\r\n"
                     "Spaces, newline and TAB characters at beginning or end of questions and answers are trimmed.\r\n"
                     "Lines beginning with /*/ are ignored.\r\n"
                     "Example 1: @Q@ What is the capital of Alabama?  @A@ Montgomery\r\n"
                     "Example 2:\r\n"
                     "@Q@\r\n"
                     "What is the capital of Alabama?\r\n"
                     "@A@\r\n"
                     "Montgomery\r\n"
                     "Do you wish to continue?",
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

    /// The command, up to the choice of the file and what follows it.
    void choose(const std::string& file)
    {
        expect_explanation(BoxAnswer::yes);
        desktop.expect_file({.path = file, .title = "title"});
    }
    void run() { question_import.Import_questions_and_answers(); }
};

TEST_F(ImportCommand, explains_asks_for_the_file_asks_again_and_tells_the_number)
{
    const std::string file = folder.write("capitals.txt", "@Q@ Norway? @A@ Oslo\r\n@Q@ Peru? @A@ Lima");
    choose(file);
    expect_confirmation(file, BoxAnswer::yes);
    expect_plain("2 questions and answers insterted.");
    run();
    EXPECT_EQ(stored(), (Texts{{"Norway?", "Oslo"}, {"Peru?", "Lima"}}));
    EXPECT_EQ(course.record_count, 2);
    EXPECT_EQ(desktop.file_dialogs.at(0).filter, "Text file (*.txt)|*.txt|All files (*.*)|*.*");
}

TEST_F(ImportCommand, stops_when_the_explanation_is_answered_with_no)
{
    expect_explanation(BoxAnswer::no);
    run();
}

TEST_F(ImportCommand, is_refused_while_a_record_is_typed_or_changed)
{
    for (bool bank::EditFlags::*flag : {&bank::EditFlags::new_mode, &bank::EditFlags::edit_mode}) {
        flags.clear();
        flags.*flag = true;
        expect_explanation(BoxAnswer::yes);
        expect_plain(
            "This function cannot be used while in insert or modify mode. Press ESC to cancel insert or edit.");
        run();
    }
}

TEST_F(ImportCommand, is_refused_without_a_course)
{
    course.close();
    expect_explanation(BoxAnswer::yes);
    expect_plain("You should create a course first");
    run();
}

TEST_F(ImportCommand, stops_silently_when_the_file_dialog_is_cancelled)
{
    choose("");
    run();
}

TEST_F(ImportCommand, stops_when_the_confirmation_is_answered_with_no)
{
    const std::string file = folder.write("capitals.txt", "@Q@ Norway? @A@ Oslo");
    choose(file);
    expect_confirmation(file, BoxAnswer::no);
    run();
    EXPECT_TRUE(stored().empty());
}

TEST_F(ImportCommand, tells_that_a_file_does_not_exist)
{
    choose(folder.file("missing.txt"));
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
        choose(name);
        expect_plain("The file " + name + " is the open course itself. Choose a text file.");
        run();
    }
}

TEST_F(ImportCommand, refuses_what_is_no_ordinary_file)
{
    const std::string pipe = folder.file("pipe");
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    for (const std::string& name : {folder.path().string(), pipe, "/dev/null"s}) {
        choose(name);
        expect_plain("The file " + name + " is not an ordinary file. Choose a text file.");
        run();
    }
}

class Import : public ImportFixture {};

TEST_F(Import, of_a_file_without_questions_inserts_nothing)
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
    EXPECT_TRUE(stored().empty());
    EXPECT_TRUE(view.shown.empty());
}

TEST_F(Import, tells_of_empty_parts_and_goes_on)
{
    desktop.expect_box_like({.text = "Answer to question 1  is empty. Record not inserted."}, BoxAnswer::ok);
    desktop.expect_box_like({.text = "Question 3  is empty. Record not inserted."}, BoxAnswer::ok);
    desktop.expect_box(inserted(2));
    import("@Q@ x @A@ \t\r\n@Q@ y @A@ z\r\n@Q@ \r\n @A@ v\r\n@Q@ last @A@ one");
    EXPECT_EQ(stored(), (Texts{{"y", "z"}, {"last", "one"}}));
}

TEST_F(Import, has_stored_what_came_before_when_a_box_is_shown)
{
    desktop.on_box = [this] {
        EXPECT_EQ(database.transaction_depth(), 0);
        EXPECT_EQ(stored(), (Texts{{"y", "z"}}));
        EXPECT_EQ(view.shown.back(), std::pair(common::Int16{1}, std::int64_t{1}));
    };
    desktop.expect_box("Question 2  is empty. Record not inserted.");
    desktop.expect_box(inserted(1));
    import("@Q@ y @A@ z @Q@ @A@ v");
}

TEST_F(Import, drops_a_question_without_an_answer_silently)
{
    desktop.expect_box(inserted(1));
    import("@Q@ y @A@ z\r\n@Q@ lost\r\n");
    EXPECT_EQ(stored(), (Texts{{"y", "z"}}));
}

TEST_F(Import, takes_repeated_questions)
{
    desktop.expect_box(inserted(2));
    import("@Q@ y @A@ z @Q@ y @A@ z");
    EXPECT_EQ(stored(), (Texts{{"y", "z"}, {"y", "z"}}));
}

TEST_F(Import, says_nothing_about_the_format_where_a_question_was_found)
{
    desktop.expect_box_like({.text = inserted(0)}, BoxAnswer::ok);
    import("@Q@ lost");
}

TEST_F(Import, puts_questions_on_the_asked_side)
{
    course.params.invert = true;
    course.set_side_fields();
    desktop.expect_box(inserted(1));
    import("@Q@ Norway? @A@ Oslo");
    EXPECT_EQ(stored(), (Texts{{"Oslo", "Norway?"}}));
}

TEST_F(Import, lists_the_refused_records_once_with_number_reason_and_text)
{
    const std::string long_question(201, 'q');
    const std::string long_answer(250, 'a');
    desktop.expect_box("Question 3  is empty. Record not inserted.");
    desktop.expect_box(inserted(4));
    desktop.expect_box_like(
        {.text = "Refused, and not stored: 2",
         .icon = BoxIcon::exclamation,
         .details = "Question 2: The question has 201 characters; 200 fit. \"" + std::string(201, 'q') +
                    "\"\r\nQuestion 4: The answer has 257 characters; 200 fit. \"" + long_answer + " lines\"\r\n"},
        BoxAnswer::ok);
    import("@Q@ a @A@ b\r\n@Q@ " + long_question + " @A@ b\r\n@Q@ @A@ b\r\n@Q@ two @A@ " + long_answer +
           "\r\nlines\r\n@Q@ c @A@ d");
    EXPECT_EQ(stored(), (Texts{{"a", "b"}, {"c", "d"}}));
    EXPECT_EQ(course.record_count, 2);
}

TEST_F(Import, lists_both_texts_where_both_are_refused)
{
    const std::string question(201, 'q');
    const std::string answer(1001, 'a');
    desktop.expect_box(inserted(1));
    desktop.expect_box_like({.text = "Refused, and not stored: 1",
                             .icon = BoxIcon::exclamation,
                             .details = "Question 1: The question has 201 characters; 200 fit. \"" + question +
                                        "\" The answer has 1001 characters; 200 fit. \"" + std::string(1000, 'a') +
                                        "...\"\r\n"},
                            BoxAnswer::ok);
    import("@Q@" + question + "@A@" + answer);
}

/// What the course alone knows to refuse cannot be told of one text.
TEST_F(Import, lists_both_texts_where_the_course_refuses_the_record)
{
    database.fail_at(fakes::Operation::execute, 1, platform::DatabaseErrorKind::constraint, "It is not wanted.");
    desktop.expect_box(inserted(1));
    desktop.expect_box_like({.text = "Refused, and not stored: 1",
                             .icon = BoxIcon::exclamation,
                             .details = "Question 1: It is not wanted. \"a\" \"b\"\r\n"},
                            BoxAnswer::ok);
    import("@Q@ a @A@ b");
    EXPECT_TRUE(stored().empty());
}

// Far longer texts are held in part only; that part must never be stored as if it were all.
TEST_F(Import, refuses_a_text_of_megabytes_with_its_length)
{
    const std::string beginning(1000, 'x');
    desktop.expect_box(inserted(2));
    desktop.expect_box_like({.text = "Refused, and not stored: 2",
                             .icon = BoxIcon::exclamation,
                             .details = "Question 1: The question has 3000000 characters; 200 fit. \"" + beginning +
                                        "...\"\r\nQuestion 2: The answer has 3000000 characters; 200 fit. \"" +
                                        beginning + "...\"\r\n"},
                            BoxAnswer::ok);
    const std::string text(3000000, 'x');
    import("@Q@ " + text + " @A@ a\r\n@Q@ q @A@ " + text);
    EXPECT_TRUE(stored().empty());
}

TEST_F(Import, cuts_off_a_list_that_nobody_could_read)
{
    std::string text;
    for (int i = 0; i < 2000; ++i)
        text += "@Q@ a @A@ " + std::string(201, 'x') + "\r\n";
    desktop.expect_box(inserted(2000));
    desktop.expect_box("Refused, and not stored: 2000");
    import(text);
    const std::string& details = desktop.boxes.back().details;
    EXPECT_LT(details.size(), 300000U);
    const std::string line =
        "Question 1: The answer has 201 characters; 200 fit. \"" + std::string(201, 'x') + "\"\r\n";
    EXPECT_TRUE(details.starts_with(line));
    const auto shown = std::count(details.begin(), details.end(), '\n') - 1;
    EXPECT_TRUE(details.ends_with("\r\n... and " + std::to_string(2000 - shown) + " more.\r\n"));
}

TEST_F(Import, lists_how_many_characters_could_not_be_read)
{
    desktop.expect_box("Answer to question 3  is empty. Record not inserted.");
    desktop.expect_box(inserted(3));
    desktop.expect_box_like({.text = "Questions with characters that could not be read: 3",
                             .icon = BoxIcon::exclamation,
                             .details = "Question 2: 1 character of the question could not be read. \"caf\uFFFD\"\r\n"
                                        "Question 3: 1 character of the question could not be read. \"\uFFFD\"\r\n"
                                        "Question 4: 1 character of the question could not be read. \"\uFFFD\" 2 "
                                        "characters of the answer could not be read. \"\uFFFDx\uFFFD\"\r\n"},
                            BoxAnswer::ok);
    import("\xEF\xBB\xBF@Q@ caf\u00e9 @A@ \uFFFD\r\n@Q@ caf\xE9 @A@ b\r\n@Q@ \xE9 @A@\r\n"
           "@Q@ \xE9 @A@ \xE9x\xFF\r\n");
    EXPECT_EQ(stored(), (Texts{{"café", "\uFFFD"}, {"caf\uFFFD", "b"}, {"\uFFFD", "\uFFFDx\uFFFD"}}));
}

TEST_F(Import, tells_of_refused_records_and_of_unreadable_characters_in_one_list)
{
    desktop.expect_box(inserted(2));
    desktop.expect_box_like(
        {.text = "Refused, and not stored: 1\r\nQuestions with characters that could not be read: 1",
         .icon = BoxIcon::exclamation,
         .details = "Question 1: The question has 201 characters; 200 fit. \"" + std::string(201, 'q') +
                    "\"\r\nQuestion 2: 1 character of the answer could not be read. \"\uFFFD\"\r\n"},
        BoxAnswer::ok);
    import("\xEF\xBB\xBF@Q@ " + std::string(201, 'q') + " @A@ a @Q@ b @A@ \xE9");
}

TEST_F(Import, does_not_list_the_refused_records_of_the_import_before)
{
    desktop.expect_box(inserted(1));
    desktop.expect_box("Refused, and not stored: 1");
    import("@Q@ " + std::string(201, 'q') + " @A@ b");
    desktop.expect_box(inserted(1));
    import("@Q@ a @A@ b");
}

TEST_F(Import, shows_the_last_record_and_leaves_the_status_line_empty)
{
    desktop.expect_box(inserted(3));
    import(records(3));
    EXPECT_EQ(view.shown, (RecordingView::Shown{{3, 3}}));
    EXPECT_EQ(view.statuses, (std::vector<std::string>{"Importing: 3 questions and answers stored", ""}));
}

struct Encoded {
    const char* name;
    std::string bytes;
    const char* question;
    const char* answer;
};

class EncodedImport : public ImportFixture, public testing::WithParamInterface<Encoded> {};

TEST_P(EncodedImport, is_stored_as_nfc_in_utf8)
{
    desktop.expect_box(inserted(1));
    import(GetParam().bytes);
    EXPECT_EQ(stored(), (Texts{{GetParam().question, GetParam().answer}}));
}

INSTANTIATE_TEST_SUITE_P(
    Files, EncodedImport,
    testing::Values(Encoded{"utf8_with_mark", "\xEF\xBB\xBF@Q@ caf\xC3\xA9 @A@ \xE2\x82\xAC", "café", "€"},
                    Encoded{"utf8_without_mark", "@Q@ caf\xC3\xA9 @A@ x", "café", "x"},
                    Encoded{"code_page_1252", "@Q@ caf\xE9 @A@ \x80", "café", "€"},
                    Encoded{"decomposed", "@Q@ cafe\xCC\x81 @A@ x", "caf\xC3\xA9", "x"},
                    Encoded{"nul_bytes", "@Q@ a\0b @A@ c"s, "ab", "c"},
                    Encoded{"lf_lines", "@Q@\nLine 1\nLine 2\n@A@\nOslo\n", "Line 1\r\nLine 2", "Oslo"},
                    Encoded{"cr_lines", "/*/ @Q@ no\r@Q@\rLine 1\rLine 2\r@A@\rOslo\r", "Line 1\r\nLine 2", "Oslo"}),
    [](const auto& encoded) { return std::string(encoded.param.name); });

// Decomposed, the question has 400 code points; brought to one form it has the 200 that fit.
TEST_F(Import, counts_the_characters_of_the_form_that_is_stored)
{
    std::string decomposed;
    std::string composed;
    for (int i = 0; i < 200; ++i) {
        decomposed += "e\xCC\x81";
        composed += "\xC3\xA9";
    }
    desktop.expect_box(inserted(1));
    import("@Q@" + decomposed + "@A@ x");
    EXPECT_EQ(stored(), (Texts{{composed, "x"}}));
}

class GroupedImport : public ImportFixture {
protected:
    /// What is in the file whenever events are pumped.
    std::vector<std::size_t> pumped_at;

    void watch_pumps()
    {
        desktop.on_pump = [this] {
            EXPECT_EQ(database.transaction_depth(), 0);
            pumped_at.push_back(stored().size());
        };
    }
};

TEST_F(GroupedImport, commits_many_times_a_second)
{
    clock.step = 0.03; // it is read once for each record, and twice where a group ends
    watch_pumps();
    desktop.expect_box(inserted(8));
    import(records(8));
    EXPECT_EQ(pumped_at, (std::vector<std::size_t>{0, 1, 3, 5, 7, 8}));
    EXPECT_EQ(view.shown, (RecordingView::Shown{{1, 1}, {3, 3}, {5, 5}, {7, 7}, {8, 8}}));
    EXPECT_EQ(view.statuses.front(), "Importing: 1 questions and answers stored");
    EXPECT_EQ(stored().size(), 8U);
}

TEST_F(GroupedImport, goes_through_in_one_piece_when_it_is_quick)
{
    watch_pumps();
    desktop.expect_box(inserted(500));
    import(records(500));
    EXPECT_TRUE(pumped_at.empty());
    EXPECT_EQ(stored().size(), 500U);
    EXPECT_EQ(view.shown.size(), 1U);
}

/// Proves that a record does not wait uncommitted for the next one, however far that is, and that the window paints.
TEST_F(GroupedImport, commits_and_shows_how_far_it_is_in_a_long_stretch_without_records)
{
    clock.step = 0.02;
    watch_pumps();
    desktop.expect_box(inserted(2));
    std::string text = "@Q@ q1 @A@ a1 @Q@ q2\r\n";
    while (text.size() < 2'000'000)
        text += "/*/ a remark\r\n";
    import(text + "@A@ a2");
    EXPECT_GT(pumped_at.size(), 40U);
    EXPECT_EQ(stored(), (Texts{{"q1", "a1"}, {"q2", "a2"}}));
    EXPECT_EQ(std::count(view.statuses.begin(), view.statuses.end(),
                         "Importing: 1 questions and answers stored, 50 % of the file read"),
              1);
}

} // namespace
} // namespace cuedrill::exchange
