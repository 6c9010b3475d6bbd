#include "common/errors.h"
#include "exchange/exporter_fixture.h"

#include <memory>
#include <new>
#include <string_view>

namespace cuedrill::exchange {
namespace {

/// Whatever stops an export, the existing file stays unchanged and the error gives the reason.
class StoppedExport : public ExportFixture {
protected:
    void SetUp() override
    {
        ExportFixture::SetUp();
        open({{"Norway?", "Oslo"}, {"Peru?", "Lima"}});
        files.files[target] = "older";
    }

    void export_and_expect(const std::string& words) { export_and_expect(exporter, words); }
    void export_and_expect(Exporter& of_course, const std::string& words)
    {
        try {
            of_course.export_file(target, false);
            FAIL() << "nothing was thrown";
        } catch (const common::Error& error) {
            EXPECT_EQ(error.what(), words);
        }
        EXPECT_EQ(files.files.at(target), "older");
        expect_nothing_open();
    }
};

TEST_F(StoppedExport, says_that_no_file_can_be_created)
{
    files.replacement_failure = "Cannot write there.";
    export_and_expect(nothing_written("Cannot write there."));
    EXPECT_FALSE(files.files.contains(unfinished));
}

TEST_F(StoppedExport, on_a_full_disk_says_where_the_unfinished_file_is)
{
    files.write_failure = "There is no room.";
    export_and_expect(partly_written("There is no room."));
    EXPECT_TRUE(files.files.contains(unfinished));
}

TEST_F(StoppedExport, at_the_end_keeps_the_whole_file_under_its_other_name)
{
    files.finish_failure = "The name cannot be taken.";
    export_and_expect(partly_written("The name cannot be taken."));
    EXPECT_EQ(files.files.at(unfinished), heading() + record("Norway?", "Oslo") + record("Peru?", "Lima") + ending(2));
}

TEST_F(StoppedExport, by_the_query_begins_no_file)
{
    database.fail_at(fakes::Operation::open_recordset);
    export_and_expect(nothing_written(about_course("The disk is full.")));
    EXPECT_FALSE(files.files.contains(unfinished));
}

TEST_F(StoppedExport, without_a_course_begins_no_file)
{
    course.close();
    export_and_expect(nothing_written("No course is open."));
    EXPECT_FALSE(files.files.contains(unfinished));
}

TEST_F(StoppedExport, works_again_when_the_reason_is_gone)
{
    files.write_failure = "There is no room.";
    export_and_expect(partly_written("There is no room."));
    files.write_failure.clear();
    EXPECT_EQ(exported(), heading() + record("Norway?", "Oslo") + record("Peru?", "Lima") + ending(2));
    EXPECT_FALSE(files.files.contains(unfinished));
}

/// The rows of a database that fails after some moves.
class BreakingRows : public platform::Recordset {
public:
    BreakingRows(std::unique_ptr<platform::Recordset> rows, int moves) : rows_(std::move(rows)), moves_(moves) {}

    [[nodiscard]] bool bof() const override { return rows_->bof(); }
    [[nodiscard]] bool eof() const override { return rows_->eof(); }
    void move_first() override
    {
        use_up();
        rows_->move_first();
    }
    void move_next() override
    {
        use_up();
        rows_->move_next();
    }
    [[nodiscard]] platform::Value field(std::string_view column) const override { return rows_->field(column); }
    [[nodiscard]] platform::Value field(int column) const override { return rows_->field(column); }

private:
    void use_up()
    {
        if (--moves_ < 0)
            throw platform::DatabaseError(platform::DatabaseErrorKind::input_output, 10, "The disk cannot be read.");
    }

    std::unique_ptr<platform::Recordset> rows_;
    int moves_; ///< moves that still succeed
};

class BreakingDatabase : public fakes::RecordingDatabase {
public:
    using RecordingDatabase::RecordingDatabase;

    int moves = 0; ///< moves to another row that succeed

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
    }

    void export_and_expect_broken()
    {
        export_and_expect(breaking_exporter, partly_written(about_course("The disk cannot be read.")));
        EXPECT_EQ(breaking.open_recordsets(), 0);
    }

    fakes::RealEngine other_engine;
    BreakingDatabase breaking{other_engine.database};
    store::Course unreadable{breaking};
    Exporter breaking_exporter{unreadable, files, clock, engine.text_compare};
};

TEST_F(UnreadableCourse, leaves_the_records_before_in_the_unfinished_file)
{
    breaking.moves = 1;
    export_and_expect_broken();
    EXPECT_EQ(files.files.at(unfinished), heading() + record("Norway?", "Oslo") + record("Peru?", "Lima"));
}

TEST_F(UnreadableCourse, also_fails_where_its_rows_are_read_for_the_second_time)
{
    unreadable.params.course_title = "Столицы";
    export_and_expect_broken();
    EXPECT_EQ(files.files.at(unfinished), "");
}

TEST_F(StoppedExport, by_an_unforeseen_error_leaves_the_older_file)
{
    database.at_each_call([](fakes::Operation) { throw std::bad_alloc(); });
    EXPECT_THROW(exporter.export_file(target, false), std::bad_alloc);
    EXPECT_EQ(files.files.at(target), "older");
}

} // namespace
} // namespace cuedrill::exchange
