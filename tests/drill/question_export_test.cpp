#include "common/errors.h"
#include "drill/question_export.h"
#include "exchange/exporter_fixture.h"
#include "fakes/fake_desktop.h"
#include "fakes/fake_settings.h"
#include "fakes/fake_shell.h"

#include <new>

namespace cuedrill::drill {
namespace {

using exchange::Texts;
using platform::BoxAnswer;
using platform::BoxIcon;

/// While a box is open, no transaction or recordset may be open and the pointer must be normal.
class ExportDialogue : public exchange::ExportFixture {
protected:
    void SetUp() override
    {
        ExportFixture::SetUp();
        desktop.on_box = [this] { expect_free(); };
    }

    void expect_free() const
    {
        expect_nothing_open();
        EXPECT_EQ(desktop.pointer_depth, 0);
    }

    /// The questions of the command.
    void expect_file_dialog(const std::string& chosen) { desktop.expect_save_file({.path = chosen, .title = "title"}); }
    void expect_question(const std::string& text, BoxAnswer answer)
    {
        desktop.expect_box_like({.text = text, .buttons = platform::BoxButtons::yes_no, .icon = BoxIcon::question},
                                answer);
    }
    void expect_numbers_question(BoxAnswer answer)
    {
        expect_question("Do you want to include questions numbers in the exported file?", answer);
    }
    void expect_count_question(int count, BoxAnswer answer)
    {
        expect_question(
            std::to_string(count) + " questions and answers exported. Do you want to open the exported file?", answer);
    }

    void run() { question_export.Export_QA(); }

    /// The targets that the shell was asked to open.
    const std::vector<std::string>& opened() const { return shell.calls; }
    const std::vector<std::string> opened_target{"open " + target + " in /home/anna"};

    fakes::FakeDesktop desktop;
    fakes::FakeShell shell;
    support::Documents documents{files, shell, desktop};
    fakes::FakeSettings settings_store;
    app::TraceLog trace{files, clock, desktop, "/home/anna"};
    app::Settings settings{settings_store, trace};
    TextFolder export_folder{settings, files, "last_export_folder", "/home/anna/Documents"};
    QuestionExport question_export{course, exporter, documents, files, desktop, export_folder};
};

class ExportCommand : public ExportDialogue {
protected:
    void expect_refused(const std::string& name, const std::string& reason)
    {
        const auto files_before = files.files;
        expect_file_dialog(name);
        desktop.expect_box_like({.text = reason}, BoxAnswer::ok);
        run();
        desktop.check_all_shown();
        EXPECT_EQ(files.files, files_before);
        EXPECT_TRUE(database.statements().empty());
    }
    static std::string itself(const std::string& name)
    {
        return "The file " + name + " is the open course itself. Choose another name.";
    }
    static std::string kept(const std::string& name)
    {
        return "The name " + name + " is kept for the open course. Choose another name.";
    }
    static std::string not_ordinary(const std::string& name)
    {
        return "The file " + name + " is not an ordinary file. Choose another name.";
    }
};

TEST_F(ExportCommand, asks_for_the_file_and_for_numbers_and_offers_to_open_what_is_complete)
{
    open({{"Norway?", "Oslo"}, {"Peru?", "Lima"}});
    desktop.on_box = [this] {
        expect_free();
        EXPECT_EQ(files.files.contains(target), desktop.boxes.size() == 2);
        EXPECT_FALSE(files.files.contains(unfinished));
        EXPECT_TRUE(opened().empty());
    };
    expect_file_dialog(target);
    expect_numbers_question(BoxAnswer::yes);
    expect_count_question(2, BoxAnswer::yes);
    run();
    EXPECT_EQ(files.files.at(target),
              heading() + "/*/ 1\r\n" + record("Norway?", "Oslo") + "/*/ 2\r\n" + record("Peru?", "Lima") + ending(2));
    EXPECT_EQ(opened(), opened_target);
}

TEST_F(ExportCommand, proposes_a_name_in_its_dialog)
{
    open(Texts{});
    expect_file_dialog("");
    run();
    const platform::FileDialog& dialog = desktop.file_dialogs.at(0);
    EXPECT_EQ(dialog.title, "Exporting questions and answers to text file");
    EXPECT_EQ(dialog.initial_file, "QA export.txt");
    EXPECT_EQ(dialog.filter, "Text file (*.txt)|*.txt|All files (*.*)|*.*");
    EXPECT_EQ(dialog.default_extension, "txt");
}

TEST_F(ExportCommand, stops_silently_without_a_name)
{
    open({{"Norway?", "Oslo"}});
    const auto files_before = files.files;
    expect_file_dialog("");
    run();
    EXPECT_EQ(files.files, files_before);
}

TEST_F(ExportCommand, leaves_numbers_and_opening_when_both_are_answered_with_no)
{
    open({{"Norway?", "Oslo"}});
    expect_file_dialog(target);
    expect_numbers_question(BoxAnswer::no);
    expect_count_question(1, BoxAnswer::no);
    run();
    EXPECT_EQ(files.files.at(target), heading() + record("Norway?", "Oslo") + ending(1));
    EXPECT_TRUE(opened().empty());
}

TEST_F(ExportCommand, tells_the_number_of_an_empty_course)
{
    open(Texts{});
    expect_file_dialog(target);
    expect_numbers_question(BoxAnswer::no);
    expect_count_question(0, BoxAnswer::no);
    run();
}

TEST_F(ExportCommand, shows_a_busy_pointer_while_it_reads_and_writes)
{
    open({{"Norway?", "Oslo"}});
    int seen = 0;
    database.at_each_call([&](fakes::Operation) { seen = desktop.pointer_depth; });
    expect_file_dialog(target);
    expect_numbers_question(BoxAnswer::no);
    expect_count_question(1, BoxAnswer::no);
    run();
    EXPECT_EQ(seen, 1);
}

TEST_F(ExportCommand, refuses_the_open_course_under_any_name)
{
    open({{"Norway?", "Oslo"}});
    const std::string link = "/home/anna/link.txt";
    files.links[link] = course_path;
    expect_refused(course_path, itself(course_path));
    expect_refused(link, itself(link));
}

TEST_F(ExportCommand, refuses_the_names_that_the_engine_uses)
{
    open({{"Norway?", "Oslo"}});
    for (const std::string ending : {"-journal", "-wal", "-shm"}) {
        const std::string name = course_path + ending;
        expect_refused(name, kept(name));
        files.files[name] = "in use";
        expect_refused(name, kept(name));
        const std::string link = "/home/anna/link.txt";
        files.links[link] = name;
        expect_refused(link, kept(link));
    }
}

TEST_F(ExportCommand, refuses_the_names_that_the_engine_uses_behind_a_link_to_the_course)
{
    open({{"Norway?", "Oslo"}});
    course.db_path = "/home/anna/link.cdr";
    files.links[course.db_path] = course_path;
    for (const std::string& name : {course_path + "-journal", course.db_path + "-wal"})
        expect_refused(name, kept(name));
}

TEST_F(ExportCommand, takes_a_name_that_only_looks_like_one_of_the_engine)
{
    open({{"Norway?", "Oslo"}});
    const std::string name = "/home/anna/other-journal";
    expect_file_dialog(name);
    expect_numbers_question(BoxAnswer::no);
    expect_count_question(1, BoxAnswer::no);
    run();
    EXPECT_TRUE(files.files.contains(name));
}

TEST_F(ExportCommand, refuses_what_is_no_ordinary_file)
{
    open({{"Norway?", "Oslo"}});
    files.folders.insert("/home/anna/folder");
    expect_refused("/home/anna/folder", not_ordinary("/home/anna/folder"));
}

TEST_F(ExportCommand, names_what_would_come_back_changed_after_its_question)
{
    open({{"Norway?", "@Q@"}, {"Peru?", "Lima"}, {"x @A@", "y"}});
    expect_file_dialog(target);
    expect_numbers_question(BoxAnswer::no);
    expect_count_question(3, BoxAnswer::yes);
    desktop.expect_box_like(
        {.text = "Records that an import of this file would change or leave out: 3",
         .icon = BoxIcon::exclamation,
         .details =
             "Question 1: The answer holds \"@Q@\". \"Norway?\"\r\n"
             "Question 2: It is joined to the question that begins at \"@Q@\" in the answer before. \"Peru?\"\r\n"
             "Question 3: The question holds \"@A@\". \"x @A@\"\r\n"},
        BoxAnswer::ok);
    run();
    EXPECT_EQ(opened(), opened_target);
}

/// Whatever stops an export, the file of that name is unchanged, and one box gives the reason.
class StoppedExport : public ExportDialogue {
protected:
    void SetUp() override
    {
        ExportDialogue::SetUp();
        open({{"Norway?", "Oslo"}, {"Peru?", "Lima"}});
        files.files[target] = "older";
    }

    void run_and_expect(const std::string& text)
    {
        expect_file_dialog(target);
        expect_numbers_question(BoxAnswer::no);
        desktop.expect_box_like({.text = "The export has stopped.\r\n\r\n" + text, .icon = BoxIcon::exclamation},
                                BoxAnswer::ok);
        run();
        EXPECT_EQ(files.files.at(target), "older");
        EXPECT_TRUE(opened().empty());
    }
};

TEST_F(StoppedExport, says_that_no_file_can_be_created)
{
    files.replacement_failure = "Cannot write there.";
    run_and_expect(nothing_written("Cannot write there."));
}

TEST_F(StoppedExport, on_a_full_disk_says_where_the_unfinished_file_is)
{
    files.write_failure = "There is no room.";
    run_and_expect(partly_written("There is no room."));
    EXPECT_TRUE(files.files.contains(unfinished));
}

TEST_F(StoppedExport, by_the_query_says_which_course_cannot_be_read)
{
    database.fail_at(fakes::Operation::open_recordset);
    run_and_expect(nothing_written(about_course("The disk is full.")));
}

TEST_F(StoppedExport, without_a_course_says_so)
{
    course.close();
    run_and_expect(nothing_written("No course is open."));
}

TEST_F(StoppedExport, works_again_when_the_reason_is_gone)
{
    files.write_failure = "There is no room.";
    run_and_expect(partly_written("There is no room."));
    files.write_failure.clear();
    expect_file_dialog(target);
    expect_numbers_question(BoxAnswer::no);
    expect_count_question(2, BoxAnswer::no);
    run();
    EXPECT_EQ(files.files.at(target), heading() + record("Norway?", "Oslo") + record("Peru?", "Lima") + ending(2));
}

/// The program ends during the command; no further box appears.
class EndedExport : public StoppedExport {
protected:
    void end_at_box(std::size_t number)
    {
        desktop.on_box = [this, number] {
            if (desktop.boxes.size() == number)
                throw common::ProgramEnded{};
        };
    }
};

TEST_F(EndedExport, before_it_is_written_leaves_the_older_file)
{
    end_at_box(1);
    expect_file_dialog(target);
    EXPECT_THROW(run(), common::ProgramEnded);
    EXPECT_EQ(files.files.at(target), "older");
}

TEST_F(EndedExport, at_the_query_leaves_the_older_file_and_the_normal_pointer)
{
    database.at_each_call([](fakes::Operation) { throw common::ProgramEnded{}; });
    expect_file_dialog(target);
    expect_numbers_question(BoxAnswer::no);
    EXPECT_THROW(run(), common::ProgramEnded);
    EXPECT_EQ(files.files.at(target), "older");
    EXPECT_EQ(desktop.pointer_depth, 0);
}

TEST_F(EndedExport, by_an_unforeseen_error_tells_nothing_itself)
{
    database.at_each_call([](fakes::Operation) { throw std::bad_alloc(); });
    expect_file_dialog(target);
    expect_numbers_question(BoxAnswer::no);
    EXPECT_THROW(run(), std::bad_alloc);
    EXPECT_EQ(files.files.at(target), "older");
    EXPECT_EQ(desktop.pointer_depth, 0);
}

TEST_F(EndedExport, at_the_last_question_leaves_the_complete_file)
{
    end_at_box(2);
    expect_file_dialog(target);
    expect_numbers_question(BoxAnswer::no);
    EXPECT_THROW(run(), common::ProgramEnded);
    EXPECT_EQ(files.files.at(target), heading() + record("Norway?", "Oslo") + record("Peru?", "Lima") + ending(2));
    EXPECT_TRUE(opened().empty());
}

} // namespace
} // namespace cuedrill::drill
