#pragma once

#include "exchange/question_import.h"
#include "fakes/course_builder.h"
#include "fakes/fake_clock.h"
#include "fakes/fake_desktop.h"
#include "fakes/recording_database.h"
#include "fakes/temp_folder.h"
#include "platform/system/system_files.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace cuedrill::exchange {

/// A clock that moves on by a fixed step whenever it is read.
class SteppingClock : public fakes::FakeClock {
public:
    double step = 0; ///< seconds

    [[nodiscard]] double steady_seconds() const override
    {
        const double present = m_seconds;
        m_seconds += step;
        return present;
    }

private:
    mutable double m_seconds = 20000;
};

/// A database whose disk is full from some commit on, for good.
class FillingDisk : public fakes::RecordingDatabase {
public:
    using RecordingDatabase::RecordingDatabase;

    /// How many more transactions, not parts of one, can be committed; nothing for no limit.
    std::optional<int> commits_left;

    void commit() override
    {
        if (transaction_depth() == 1 && commits_left && (*commits_left)-- <= 0) {
            commits_left = 0;
            throw platform::DatabaseError(platform::DatabaseErrorKind::full, 13, failure_words);
        }
        RecordingDatabase::commit();
    }
};

/// Keeps what it was told to show.
struct RecordingView : bank::StoredRecordView, scheduler::StatusLine {
    explicit RecordingView(const store::Course& shown_course) : course(shown_course) {}

    void show_stored_record() override { shown.emplace_back(course.current_cnt, course.record_count); }
    void show_all_stored() override { ++lists_shown; }
    void ShowStatus(std::string_view text, int) override { statuses.emplace_back(text); }

    using Shown = std::vector<std::pair<common::Int16, std::int64_t>>;

    const store::Course& course;
    Shown shown; ///< current record and number of records
    std::vector<std::string> statuses;
    int lists_shown = 0; ///< how often lists were to be brought up to date
};

/// Imports into a real course that is empty at first. Whenever a box is shown or events are pumped, no transaction may
/// be open.
class ImportFixture : public testing::Test {
protected:
    void SetUp() override
    {
        path = fakes::CourseBuilder().write(folder);
        course.db_path = path;
        course.apri_db();
        course.set_side_fields();
        course.params.course_title = "Capitals";
        const auto nothing_open = [this] {
            EXPECT_EQ(database.transaction_depth(), 0);
            EXPECT_EQ(database.open_recordsets(), 0);
        };
        desktop.on_box = nothing_open;
        desktop.on_pump = nothing_open;
    }

    /// Imports a file of these bytes.
    void import(std::string_view bytes) { question_import.import_file(folder.write("questions.txt", bytes)); }

    /// The questions and answers of the file, as another program would read them now.
    using Texts = std::vector<std::pair<std::string, std::string>>;
    [[nodiscard]] Texts stored() const
    {
        Texts texts;
        for (const fakes::QaRow& row : fakes::read_course(path).qa)
            texts.emplace_back(row.q, row.a);
        return texts;
    }

    /// A text of `count` records "q1"/"a1", "q2"/"a2" and so on.
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

    fakes::TempFolder folder;
    SteppingClock clock;
    fakes::FakeDesktop desktop;
    fakes::RealEngine engine;
    FillingDisk database{engine.database};
    platform::system::SystemFiles files;
    store::Course course{database};
    bank::EditFlags flags;
    bank::RecordBank bank{course, flags, desktop};
    RecordingView view{course};
    QuestionImport question_import{course, bank, flags, view, view, {files, clock, desktop, engine.text_compare}};
    std::string path; ///< of the course
};

} // namespace cuedrill::exchange
