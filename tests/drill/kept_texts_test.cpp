#include "common/date_time.h"
#include "drill/course_opener.h"
#include "drill/drill_fixture.h"
#include "drill/record_editor.h"
#include "platform/database.h"
#include "store/course.h"

#include <csignal>
#include <ostream>
#include <sstream>
#include <string>
#include <sys/resource.h>

namespace cuedrill::drill {
namespace {

using platform::BoxAnswer;

constexpr const char* offer = "Do you want to save the changes?";
constexpr const char* not_saved = "Not saved. Kept in removed.txt.";
constexpr const char* perhaps_not_saved = "Perhaps not saved. Kept in removed.txt.";
constexpr const char* deleted = "Deleted. Kept in removed.txt.";

/// The first question is on display. The data folder does not exist yet.
class Kept : public DrillFixture {
protected:
    void SetUp() override
    {
        static_cast<void>(folder.write("trace.flg", ""));
        start_with_three_questions();
        yes();
    }

    void expect_offer(BoxAnswer answer) { desktop.expect_box(offer, answer); }

    void expect_deletion(const std::string& text)
    {
        desktop.expect_box("Are you sure you want to delete question \"" + text + "\" and its asnwer?", BoxAnswer::yes);
    }

    /// Lets time pass, in ticks of the timer.
    void pass(double seconds)
    {
        for (double passed = 0; passed < seconds; passed += 0.25) {
            clock.steady_seconds_more += 0.25;
            user([this] { form1.timer_250_ms.tick(); });
        }
    }

    [[nodiscard]] bool exists(const std::string& name) const { return files.exists(folder.file("data/" + name)); }
    [[nodiscard]] std::string data(const std::string& name) const
    {
        return exists(name) ? folder.read("data/" + name) : "";
    }

    [[nodiscard]] std::string entry(const std::string& reason, const std::string& q, const std::string& a,
                                    const std::string& remark = {}) const
    {
        return "/*/ " + common::format_date_time(clock.now()) + ", " + reason + "\r\n/*/ from " + path + "\r\n" +
               (remark.empty() ? "" : "/*/ An import does not bring this back as it was. " + remark + "\r\n") +
               "@Q@\r\n" + q + "\r\n@A@\r\n" + a + "\r\n\r\n/*/ ------------------------\r\n";
    }

    void expect_kept(const std::string& entries) const { EXPECT_EQ(data("removed.txt"), "\xEF\xBB\xBF" + entries); }

    void expect_nothing_kept() const
    {
        EXPECT_FALSE(exists("removed.txt"));
        EXPECT_FALSE(exists("draft-1.txt"));
    }

    [[nodiscard]] std::string trace() const { return folder.read("trace.txt"); }
};

/// A folder in which nothing can be created: a file has its name.
class Unkept : public Kept {
protected:
    void SetUp() override
    {
        static_cast<void>(folder.write("data", ""));
        Kept::SetUp();
    }

    [[nodiscard]] std::string reason() const
    {
        return "Cannot create the folder " + folder.file("data") + ": Not a directory.";
    }

    [[nodiscard]] int times_traced() const
    {
        int times = 0;
        std::istringstream lines(trace());
        for (std::string line; std::getline(lines, line);) {
            // The history of the course cannot be written either, but that is another line.
            if (line.find("texts not kept") == std::string::npos)
                continue;
            for (std::size_t at = line.find(reason()); at != std::string::npos; at = line.find(reason(), at + 1))
                ++times;
        }
        return times;
    }
};

using Deleting = Kept;
using Replacing = Kept;
using Leaving = Kept;
using Typing = Kept;

TEST_F(Deleting, keeps_both_texts)
{
    expect_deletion("France?");
    toolbar(11);
    expect_kept(entry("deleted", "France?", "Paris"));
    EXPECT_EQ(question(), "Italy?");
    EXPECT_EQ(status(), deleted);
    clock.steady_seconds_more += 5;
    form1.timer_250_ms.tick();
    EXPECT_EQ(status(), "");
}

TEST_F(Deleting, keeps_what_is_stored_and_not_what_is_shown)
{
    engine.database.execute("Update qa set q = 'Gallia?', a = 'Lutetia' where cnt = 1");
    expect_deletion("France?");
    toolbar(11);
    expect_kept(entry("deleted", "Gallia?", "Lutetia"));
}

/// Only the question on display is due.
class DeletingTheLastDue : public Kept {
protected:
    void SetUp() override
    {
        builder.question("France?", "Paris").level(0).attempts(1).fails(1).tested_ago(1h);
        builder.question("Italy?", "Rome").level(3).attempts(1).fails(0).tested_ago(1min);
        start();
        yes();
    }
};

TEST_F(DeletingTheLastDue, leaves_the_line_to_the_time_of_the_next_question)
{
    expect_deletion("France?");
    desktop.expect_box(nothing_mature);
    toolbar(11);
    expect_kept(entry("deleted", "France?", "Paris"));
    EXPECT_TRUE(status().starts_with("The next question is due ")) << status();
}

TEST_F(Deleting, keeps_the_texts_before_the_record_is_gone)
{
    bool kept_before_commit = false;
    database.at_each_call([&](fakes::Operation operation) {
        if (operation == fakes::Operation::commit)
            kept_before_commit = kept_before_commit || exists("removed.txt");
    });
    expect_deletion("France?");
    toolbar(11);
    database.at_each_call({});
    EXPECT_TRUE(kept_before_commit);
}

TEST_F(Deleting, says_nothing_when_the_record_stays)
{
    expect_deletion("France?");
    database.fail_at(fakes::Operation::commit);
    desktop.expect_box("The course " + path + " could not be read or written.\r\n\r\nThe disk is full.");
    toolbar(11);
    EXPECT_EQ(status(), "");
    pass(1);
    EXPECT_EQ(status(), "");
    EXPECT_EQ(stored(1).q, "France?");
}

TEST_F(Deleting, of_nothing_keeps_nothing)
{
    engine.database.execute("Delete from qa where cnt = 1");
    expect_deletion("France?");
    desktop.expect_box("The question is no longer in the course; another program has deleted it.");
    toolbar(11);
    expect_nothing_kept();
    EXPECT_EQ(status(), "");
}

TEST_F(Deleting, is_not_stopped_by_a_full_disk)
{
    rlimit before{};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &before), 0);
    files.create_folder(folder.file("data"));
    const std::string full = "\xEF\xBB\xBF" + std::string(900'000, 'x') + "/*/ ------------------------\r\n";
    static_cast<void>(folder.write("data/removed.txt", full));
    expect_deletion("France?");
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    rlimit limit = before;
    limit.rlim_cur = full.size() + 10;
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &limit), 0);
    toolbar(11);
    ::setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, handler);
    EXPECT_EQ(data("removed.txt"), full);
    EXPECT_EQ(question(), "Italy?");
    EXPECT_EQ(fakes::read_course(path).qa.size(), 2U);
    pass(0.25);
    EXPECT_EQ(status(),
              "Texts could not be kept. Cannot write " + folder.file("data/removed.txt") + ": File too large.");
}

TEST_F(Replacing, keeps_the_old_texts)
{
    change_to("Gaul?", "Paris");
    toolbar(10);
    EXPECT_EQ(stored(1).q, "Gaul?");
    expect_kept(entry("replaced by an edit", "France?", "Paris"));
    EXPECT_EQ(status(), "Saved.");
    pass(10);
    EXPECT_EQ(status(), "");
}

TEST_F(Replacing, keeps_nothing_where_no_text_changes)
{
    toolbar(8);
    toolbar(10);
    EXPECT_EQ(stored(1).q_side.successes, 0) << "it is saved, though";
    expect_nothing_kept();
}

TEST_F(Replacing, keeps_nothing_when_the_texts_are_refused)
{
    change_to("Gaul?", std::string(201, 'a'));
    desktop.expect_box("The answer has 201 characters; 200 fit.");
    toolbar(10);
    EXPECT_FALSE(exists("removed.txt"));
    EXPECT_TRUE(logic->editor.editing());
}

TEST_F(Replacing, keeps_nothing_for_a_new_record)
{
    write_new("Norway?", "Oslo");
    pass(2);
    EXPECT_TRUE(exists("draft-1.txt"));
    toolbar(10);
    EXPECT_EQ(stored(4).q, "Norway?");
    expect_nothing_kept();
    EXPECT_FALSE(exists("draft-1.lock"));
}

TEST_F(Leaving, by_escape_keeps_the_texts)
{
    write_new("Norway?", "Oslo");
    EXPECT_TRUE(press(platform::Key::escape));
    expect_kept(entry("typed and not saved", "Norway?", "Oslo"));
    EXPECT_EQ(question(), "Norway?");
    EXPECT_EQ(status(), "The changes are not saved.");
    pass(30);
    EXPECT_EQ(status(), "The changes are not saved.");
    toolbar(1);
    pass(0.25);
    EXPECT_EQ(status(), not_saved);
    pass(5);
    EXPECT_EQ(status(), "");
}

TEST_F(Leaving, keeps_a_draft_of_one_text)
{
    write_new("", "Oslo");
    press(platform::Key::escape);
    expect_kept(entry("typed and not saved", "", "Oslo", "The question is empty."));
}

TEST_F(Leaving, keeps_a_changed_record_as_it_was_typed)
{
    change_to(" Gaul?", "Paris");
    press(platform::Key::escape);
    expect_kept(entry("typed and not saved", " Gaul?", "Paris",
                      "Blanks, TABs or line breaks at an end of the question are dropped."));
}

TEST_F(Leaving, keeps_nothing_where_nothing_was_typed)
{
    toolbar(8);
    press(platform::Key::escape);
    toolbar(9);
    press(platform::Key::escape);
    change_to("Gaul?", "Paris");
    form1.Text_q.text_value = "France?";
    press(platform::Key::escape);
    change_to("", " \r\n");
    press(platform::Key::escape);
    expect_nothing_kept();
    EXPECT_FALSE(exists(""));
}

TEST_F(Leaving, behind_insert_keeps_the_texts_once)
{
    write_new("Norway?", "Oslo");
    press(platform::Key::escape);
    toolbar(9);
    expect_kept(entry("typed and not saved", "Norway?", "Oslo"));
    EXPECT_EQ(question(), "");
    EXPECT_EQ(status(), "Type the question and its answer, then press Save. Escape leaves without saving.");
    press(platform::Key::escape);
    pass(1);
    EXPECT_EQ(status(), "");
    expect_kept(entry("typed and not saved", "Norway?", "Oslo"));
}

TEST_F(Leaving, by_a_rejection_keeps_the_texts)
{
    write_new("", "Oslo");
    desktop.expect_box("The question is empty. No saving performed.");
    toolbar(10);
    EXPECT_FALSE(logic->editor.editing());
    expect_kept(entry("typed and not saved", "", "Oslo", "The question is empty."));
    EXPECT_EQ(status(), "The changes are not saved.");
}

TEST_F(Leaving, for_the_next_question_keeps_the_texts)
{
    change_to("Gaul?", "Lutetia");
    expect_offer(BoxAnswer::no);
    toolbar(1);
    EXPECT_EQ(question(), "Italy?");
    expect_kept(entry("typed and not saved", "Gaul?", "Lutetia"));
    pass(0.25);
    EXPECT_EQ(status(), not_saved);
}

TEST_F(Leaving, for_the_next_question_after_a_rejection_keeps_the_texts)
{
    write_new("Norway?", "");
    expect_offer(BoxAnswer::yes);
    desktop.expect_box("The answer is empty. No saving performed.");
    toolbar(1);
    EXPECT_FALSE(logic->editor.editing());
    expect_kept(entry("typed and not saved", "Norway?", "", "The answer is empty."));
}

TEST_F(Leaving, keeps_the_texts_by_their_columns_in_an_inverted_course)
{
    desktop.expect_box(nothing_mature);
    choose("m_invert");
    write_new("Oslo", "Norway?");
    press(platform::Key::escape);
    expect_kept(entry("typed and not saved", "Norway?", "Oslo"));
}

TEST_F(Leaving, after_a_save_of_unknown_outcome_keeps_the_texts)
{
    write_new("Norway?", "Oslo");
    save_with_unknown_outcome();
    press(platform::Key::escape);
    EXPECT_EQ(status(), "It is not known whether the changes are saved.");
    expect_kept(entry("typed and perhaps not saved", "Norway?", "Oslo"));
    toolbar(1);
    pass(0.25);
    EXPECT_EQ(status(), perhaps_not_saved);
}

TEST_F(Leaving, for_the_next_question_after_a_save_of_unknown_outcome_says_that_nobody_can_tell)
{
    write_new("Norway?", "Oslo");
    save_with_unknown_outcome();
    form1.Text_a.text_value = "Bergen";
    pass(2);
    EXPECT_EQ(data("draft-1.txt"), "\xEF\xBB\xBF" + entry("typed and perhaps not saved", "Norway?", "Bergen"));
    expect_offer(BoxAnswer::no);
    toolbar(1);
    EXPECT_EQ(question(), "France?");
    expect_kept(entry("typed and perhaps not saved", "Norway?", "Bergen"));
    pass(0.25);
    EXPECT_EQ(status(), perhaps_not_saved);
}

struct Way {
    const char* name;
    const char* menu_entry; ///< empty for what no menu does
    bool asks = true;
    bool asks_for_file = false;

    friend void PrintTo(const Way& way, std::ostream* out) { *out << way.name; }
};

/// Everything else that takes the texts out of the boxes.
class WayOfLeaving : public Kept, public testing::WithParamInterface<Way> {
protected:
    void go()
    {
        const std::string name = GetParam().name;
        if (name == "closing")
            user([this] { form1.window.close(); });
        else if (name == "session")
            user([this] { form1.window.end_session(); });
        else if (name == "click")
            user([this] { form1.listav.click(1); });
        else
            choose(GetParam().menu_entry);
    }
};

INSTANTIATE_TEST_SUITE_P(Ways, WayOfLeaving,
                         testing::Values(Way{"exit", "m_exit"}, Way{"closing", ""}, Way{"session", "", false},
                                         Way{"opening", "m_open", true, true}, Way{"creating", "m_new", true, true},
                                         Way{"inverting", "m_invert"}, Way{"click", ""}),
                         [](const auto& way) { return std::string(way.param.name); });

TEST_P(WayOfLeaving, keeps_the_texts)
{
    choose("m_show_all");
    write_new("Norway?", "Oslo");
    pass(2);
    ASSERT_TRUE(exists("draft-1.txt"));
    const std::string expected = entry("typed and not saved", "Norway?", "Oslo");
    if (GetParam().asks)
        expect_offer(BoxAnswer::no);
    if (GetParam().asks_for_file) {
        fakes::CourseBuilder other;
        other.question("Oslo?", "Norway").level(1).attempts(1).fails(0).tested_ago(1h);
        const bool creates = std::string_view(GetParam().name) == "creating";
        desktop.expect_file(
            {.path = creates ? folder.file("other.crs") : other.write(folder, "other.crs"), .title = "other.crs"});
        if (creates)
            desktop.expect_box("You have passed level 5 for all questions.");
    }
    go();
    expect_kept(expected);
    EXPECT_FALSE(exists("draft-1.txt"));
    EXPECT_FALSE(exists("draft-1.lock"));
    EXPECT_EQ(fakes::read_course(path).qa.size(), 3U);
    if (ended)
        return;
    pass(0.25);
    EXPECT_EQ(status(), not_saved);
}

TEST_P(WayOfLeaving, keeps_nothing_where_nothing_was_typed)
{
    choose("m_show_all");
    toolbar(9);
    pass(2);
    if (GetParam().asks_for_file)
        desktop.expect_file({.path = ""});
    go();
    expect_nothing_kept();
}

TEST_F(Leaving, with_a_course_that_turns_out_to_be_damaged_keeps_the_texts)
{
    write_new("Norway?", "Oslo");
    database.fail_check(platform::DatabaseErrorKind::damaged, "The file is damaged.");
    desktop.expect_box("The course " + path + " cannot be opened.\r\n\r\nThe file is damaged.");
    desktop.expect_file({.path = ""});
    user([this] { logic->opener.finish_check(); });
    EXPECT_TRUE(ended);
    expect_kept(entry("typed and not saved", "Norway?", "Oslo"));
}

TEST_F(Typing, is_in_the_draft_before_two_seconds_are_over)
{
    write_new("Norway?", "");
    pass(0.5);
    EXPECT_FALSE(exists("draft-1.txt")) << "not at each key";
    pass(1);
    EXPECT_EQ(data("draft-1.txt"),
              "\xEF\xBB\xBF" + entry("typed and not saved", "Norway?", "", "The answer is empty."));
    for (const char* text : {"O", "Os", "Osl", "Oslo"}) {
        form1.Text_a.text_value = text;
        pass(0.5);
    }
    EXPECT_NE(data("draft-1.txt").find("\r\n@A@\r\nOs"), std::string::npos) << "also without a pause";
    pass(1);
    EXPECT_EQ(data("draft-1.txt"), "\xEF\xBB\xBF" + entry("typed and not saved", "Norway?", "Oslo"));
    EXPECT_FALSE(exists("removed.txt"));
}

TEST_F(Typing, is_written_once)
{
    write_new("Norway?", "Oslo");
    pass(2);
    files.remove(folder.file("data/draft-1.txt"));
    pass(10);
    EXPECT_FALSE(exists("draft-1.txt"));
}

TEST_F(Typing, without_an_editor_is_no_draft)
{
    toolbar(7);
    type_answer("Rome");
    pass(3);
    expect_nothing_kept();
}

TEST_F(Typing, that_was_taken_back_leaves_no_draft)
{
    change_to("Gaul?", "Paris");
    pass(2);
    ASSERT_TRUE(exists("draft-1.txt"));
    form1.Text_q.text_value = "France?";
    pass(2);
    expect_nothing_kept();
}

TEST_F(Typing, goes_on_into_the_same_draft_when_a_save_is_refused)
{
    change_to("Gaul?", "");
    pass(2);
    desktop.expect_box("The answer is empty. No saving performed.");
    toolbar(10);
    EXPECT_TRUE(logic->editor.editing());
    EXPECT_TRUE(exists("draft-1.txt"));
    form1.Text_a.text_value = "Lutetia";
    pass(2);
    EXPECT_EQ(data("draft-1.txt"), "\xEF\xBB\xBF" + entry("typed and not saved", "Gaul?", "Lutetia"));
    EXPECT_FALSE(exists("draft-2.txt"));
}

TEST_F(Unkept, texts_stop_nothing)
{
    change_to("Gaul?", "Paris");
    pass(2);
    toolbar(10);
    EXPECT_EQ(stored(1).q, "Gaul?");
    EXPECT_EQ(status(), "Saved.");
    pass(5);
    EXPECT_EQ(status(), "Texts could not be kept. " + reason());
    pass(5);
    EXPECT_EQ(status(), "The history of the course could not be written. " + reason());
    pass(5);
    EXPECT_EQ(status(), "");
    expect_deletion("Gaul?");
    toolbar(11);
    EXPECT_EQ(question(), "Italy?");
    EXPECT_EQ(status(), "");
    pass(1);
    EXPECT_EQ(status(), "") << "it is told once";
    write_new("Norway?", "Oslo");
    press(platform::Key::escape);
    EXPECT_EQ(status(), "The changes are not saved.");
    pass(1);
    EXPECT_EQ(times_traced(), 5) << "draft, change, deletion, unsaved texts, and their draft";
    toolbar(1);
    pass(1);
    EXPECT_EQ(status(), "");
}

TEST_F(Unkept, texts_are_in_the_trace_when_the_program_ends)
{
    write_new("Norway?", "Oslo");
    user([this] { form1.window.end_session(); });
    EXPECT_TRUE(ended);
    EXPECT_FALSE(logic->course.is_in_use());
    EXPECT_NE(trace().find("end_program - texts not kept - " + reason()), std::string::npos);
}

TEST_F(Leaving, keeps_the_texts_in_the_draft_when_the_file_cannot_be_written)
{
    files.create_folder(folder.file("data/removed.txt"));
    write_new("Norway?", "Oslo");
    press(platform::Key::escape);
    const std::string first = "\xEF\xBB\xBF" + entry("typed and not saved", "Norway?", "Oslo");
    EXPECT_EQ(data("draft-1.txt"), first);
    write_new("Sweden?", "Stockholm");
    pass(2);
    EXPECT_EQ(data("draft-1.txt"), first);
    EXPECT_TRUE(exists("draft-2.txt"));
    toolbar(10);
    EXPECT_EQ(data("draft-1.txt"), first);
    EXPECT_FALSE(exists("draft-2.txt"));
}

/// The program starts beside drafts.
class StartBesideDrafts : public Kept {
protected:
    void SetUp() override
    {
        files.create_folder(folder.file("data"));
        static_cast<void>(folder.write("trace.flg", ""));
        static_cast<void>(folder.write("data/draft-1.txt", left));
    }

    std::string left = "\xEF\xBB\xBF/*/ typed\r\n@Q@\r\nNorway?\r\n@A@\r\n\r\n\r\n/*/ ------------------------\r\n";
};

TEST_F(StartBesideDrafts, keeps_that_of_a_program_that_was_killed)
{
    start_with_three_questions();
    EXPECT_EQ(data("removed.txt"), left);
    EXPECT_FALSE(exists("draft-1.txt"));
    pass(0.25);
    EXPECT_EQ(status(), "Unsaved texts found. Kept in removed.txt.");
}

TEST_F(StartBesideDrafts, leaves_that_of_a_program_that_runs)
{
    const auto other = files.hold(folder.file("data/draft-1.lock"), 0ms);
    start_with_three_questions();
    EXPECT_EQ(data("draft-1.txt"), left);
    EXPECT_FALSE(exists("removed.txt"));
    pass(0.25);
    EXPECT_EQ(status(), "");
}

TEST_F(StartBesideDrafts, goes_on_when_they_cannot_be_kept)
{
    files.create_folder(folder.file("data/removed.txt"));
    start_with_three_questions();
    EXPECT_EQ(data("draft-1.txt"), left);
    pass(0.25);
    const std::string reason = "Cannot write " + folder.file("data/removed.txt") + ": Is a directory.";
    EXPECT_EQ(status(), "Texts could not be kept. " + reason);
    EXPECT_NE(trace().find("texts not kept - " + reason), std::string::npos);
}

} // namespace
} // namespace cuedrill::drill
