#include "common/errors.h"
#include "exchange/question_export_fixture.h"

#include <memory>
#include <new>
#include <string_view>

namespace cuedrill::exchange {
namespace {

using platform::BoxAnswer;
using platform::BoxIcon;

/// Whatever stops an export: the file of that name is as it was, and one box tells why.
class StoppedExport : public ExportFixture {
protected:
    void SetUp() override
    {
        ExportFixture::SetUp();
        open({{"Norway?", "Oslo"}, {"Peru?", "Lima"}});
        files.files[target] = "older";
    }

    void run_and_expect(const std::string& text)
    {
        expect_file_dialog(target);
        expect_numbers_question(BoxAnswer::no);
        desktop.expect_box_like({.text = "The export has stopped.\r\n\r\n" + text, .icon = BoxIcon::exclamation},
                                BoxAnswer::ok);
        question_export.Export_QA();
        EXPECT_EQ(files.files.at(target), "older");
        EXPECT_TRUE(opened.empty());
    }
    [[nodiscard]] std::string about_course(const std::string& reason) const
    {
        return "The course " + course_path + " could not be read or written.\r\n\r\n" + reason;
    }
    [[nodiscard]] std::string nothing_written(const std::string& reason) const
    {
        return reason + "\r\n\r\n" + target + " is as it was.";
    }
    [[nodiscard]] std::string partly_written(const std::string& reason) const
    {
        return reason + "\r\n\r\nWhat was written is kept in " + unfinished +
               " until the next export into that folder.\r\n" + target + " is as it was.";
    }
};

TEST_F(StoppedExport, says_that_no_file_can_be_created)
{
    files.replacement_failure = "Cannot write there.";
    run_and_expect(nothing_written("Cannot write there."));
    EXPECT_FALSE(files.files.contains(unfinished));
}

TEST_F(StoppedExport, on_a_full_disk_says_where_the_unfinished_file_is)
{
    files.write_failure = "There is no room.";
    run_and_expect(partly_written("There is no room."));
    EXPECT_TRUE(files.files.contains(unfinished));
}

TEST_F(StoppedExport, at_the_end_keeps_the_whole_file_under_its_other_name)
{
    files.finish_failure = "The name cannot be taken.";
    run_and_expect(partly_written("The name cannot be taken."));
    EXPECT_EQ(files.files.at(unfinished), heading() + record("Norway?", "Oslo") + record("Peru?", "Lima") + ending(2));
}

TEST_F(StoppedExport, by_the_query_begins_no_file)
{
    database.fail_at(fakes::Operation::open_recordset);
    run_and_expect(nothing_written(about_course("The disk is full.")));
    EXPECT_FALSE(files.files.contains(unfinished));
}

TEST_F(StoppedExport, without_a_course_begins_no_file)
{
    course.close();
    run_and_expect(nothing_written("No course is open."));
    EXPECT_FALSE(files.files.contains(unfinished));
}

TEST_F(StoppedExport, without_a_window_throws_the_same_words)
{
    files.finish_failure = "The name cannot be taken.";
    try {
        question_export.export_file(target, false);
        FAIL() << "nothing was thrown";
    } catch (const common::Error& error) {
        EXPECT_EQ(error.what(), partly_written("The name cannot be taken."));
    }
}

TEST_F(StoppedExport, works_again_when_the_reason_is_gone)
{
    files.write_failure = "There is no room.";
    run_and_expect(partly_written("There is no room."));
    files.write_failure.clear();
    EXPECT_EQ(exported(), heading() + record("Norway?", "Oslo") + record("Peru?", "Lima") + ending(2));
    EXPECT_FALSE(files.files.contains(unfinished));
}

/// The rows of a database that cannot be read to their end.
class BreakingRows : public platform::Recordset {
public:
    BreakingRows(std::unique_ptr<platform::Recordset> rows, int moves) : m_rows(std::move(rows)), m_moves(moves) {}

    [[nodiscard]] bool bof() const override { return m_rows->bof(); }
    [[nodiscard]] bool eof() const override { return m_rows->eof(); }
    void move_first() override
    {
        use_up();
        m_rows->move_first();
    }
    void move_next() override
    {
        use_up();
        m_rows->move_next();
    }
    [[nodiscard]] platform::Value field(std::string_view column) const override { return m_rows->field(column); }
    [[nodiscard]] platform::Value field(int column) const override { return m_rows->field(column); }

private:
    void use_up()
    {
        if (--m_moves < 0)
            throw platform::DatabaseError(platform::DatabaseErrorKind::input_output, 10, "The disk cannot be read.");
    }

    std::unique_ptr<platform::Recordset> m_rows;
    int m_moves; ///< that still succeed
};

class BreakingDatabase : public fakes::RecordingDatabase {
public:
    using RecordingDatabase::RecordingDatabase;

    int moves = 0; ///< how many moves to another row succeed

    [[nodiscard]] std::unique_ptr<platform::Recordset> open_recordset(std::string_view sql) override
    {
        return std::make_unique<BreakingRows>(RecordingDatabase::open_recordset(sql), moves);
    }
};

class UnreadableCourse : public StoppedExport {
protected:
    void SetUp() override
    {
        StoppedExport::SetUp();
        unreadable.db_path = course_path;
        unreadable.apri_db();
        unreadable.params.course_title = "Capitals";
        desktop.on_box = [this] {
            EXPECT_EQ(breaking.open_recordsets(), 0);
            EXPECT_EQ(desktop.pointer_depth, 0);
        };
    }

    void run_and_expect_broken()
    {
        expect_file_dialog(target);
        expect_numbers_question(BoxAnswer::no);
        desktop.expect_box_like(
            {.text = "The export has stopped.\r\n\r\n" + partly_written(about_course("The disk cannot be read.")),
             .icon = BoxIcon::exclamation},
            BoxAnswer::ok);
        breaking_export.Export_QA();
        EXPECT_EQ(files.files.at(target), "older");
    }

    fakes::RealEngine other_engine;
    BreakingDatabase breaking{other_engine.database};
    store::Course unreadable{breaking};
    QuestionExport breaking_export{unreadable,
                                   {files, clock, desktop,
                                    [](const std::string&) { ADD_FAILURE() << "There is nothing to open."; },
                                    engine.text_compare}};
};

TEST_F(UnreadableCourse, leaves_the_records_before_in_the_unfinished_file)
{
    breaking.moves = 1;
    run_and_expect_broken();
    EXPECT_EQ(files.files.at(unfinished), heading() + record("Norway?", "Oslo") + record("Peru?", "Lima"));
}

TEST_F(UnreadableCourse, also_fails_where_its_rows_are_read_for_the_second_time)
{
    unreadable.params.course_title = "Столицы";
    run_and_expect_broken();
    EXPECT_EQ(files.files.at(unfinished), "");
}

/// The program ends while the command is at work; nobody is asked anything more.
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
    EXPECT_THROW(question_export.Export_QA(), common::ProgramEnded);
    EXPECT_EQ(files.files.at(target), "older");
}

TEST_F(EndedExport, at_the_query_leaves_the_older_file_and_the_normal_pointer)
{
    database.at_each_call([](fakes::Operation) { throw common::ProgramEnded{}; });
    expect_file_dialog(target);
    expect_numbers_question(BoxAnswer::no);
    EXPECT_THROW(question_export.Export_QA(), common::ProgramEnded);
    EXPECT_EQ(files.files.at(target), "older");
    EXPECT_EQ(desktop.pointer_depth, 0);
}

TEST_F(EndedExport, by_an_unforeseen_error_tells_nothing_itself)
{
    database.at_each_call([](fakes::Operation) { throw std::bad_alloc(); });
    expect_file_dialog(target);
    expect_numbers_question(BoxAnswer::no);
    EXPECT_THROW(question_export.Export_QA(), std::bad_alloc);
    EXPECT_EQ(files.files.at(target), "older");
    EXPECT_EQ(desktop.pointer_depth, 0);
}

TEST_F(EndedExport, at_the_last_question_leaves_the_complete_file)
{
    end_at_box(2);
    expect_file_dialog(target);
    expect_numbers_question(BoxAnswer::no);
    EXPECT_THROW(question_export.Export_QA(), common::ProgramEnded);
    EXPECT_EQ(files.files.at(target), heading() + record("Norway?", "Oslo") + record("Peru?", "Lima") + ending(2));
    EXPECT_TRUE(opened.empty());
}

} // namespace
} // namespace cuedrill::exchange
