#pragma once

#include "exchange/question_export.h"
#include "fakes/course_builder.h"
#include "fakes/fake_clock.h"
#include "fakes/fake_desktop.h"
#include "fakes/fake_files.h"
#include "fakes/recording_database.h"
#include "fakes/temp_folder.h"

#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

namespace cuedrill::exchange {

/// The texts of a record.
using Texts = std::vector<std::pair<std::string, std::string>>;

inline Texts texts_of(const fakes::CourseContents& contents)
{
    Texts texts;
    for (const fakes::QaRow& row : contents.qa)
        texts.emplace_back(row.q, row.a);
    return texts;
}

/// Exports a real course into files in memory. Whenever a box is shown, no transaction or recordset may be open and
/// the pointer must be the normal one; at the end the course must be what it was.
class ExportFixture : public testing::Test {
protected:
    void SetUp() override
    {
        course.params.course_title = "Capitals";
        desktop.on_box = [this] { expect_nothing_open(); };
    }

    void TearDown() override
    {
        if (!course_path.empty()) {
            EXPECT_EQ(fakes::read_course(course_path), before);
        }
        EXPECT_EQ(database.transaction_depth(), 0);
        EXPECT_EQ(database.open_recordsets(), 0);
    }

    void expect_nothing_open() const
    {
        EXPECT_EQ(database.transaction_depth(), 0);
        EXPECT_EQ(database.open_recordsets(), 0);
        EXPECT_EQ(desktop.pointer_depth, 0);
    }

    void open(const fakes::CourseBuilder& builder)
    {
        course_path = builder.write(folder);
        open_written();
    }

    /// A course of these questions and answers, numbered from 1.
    void open(const Texts& texts)
    {
        fakes::CourseBuilder builder;
        for (const auto& [q, a] : texts)
            builder.question(q, a);
        open(builder);
    }

    /// The course at `course_path`.
    void open_written()
    {
        before = fakes::read_course(course_path);
        course.db_path = course_path;
        course.apri_db();
        course.set_side_fields();
        files.files[course_path] = "the course";
    }

    /// The exported file.
    std::string exported(bool numbered = false)
    {
        question_export.export_file(target, numbered);
        return files.files.at(target);
    }

    /// What an export of the open course says before and after its records.
    static std::string heading(const std::string& title = "Capitals")
    {
        return "/*/ Cuedrill questions and answers exported form " + title + " on 15/11/2026 05:47:17\r\n\r\n\r\n";
    }
    static std::string ending(int count)
    {
        return "\r\n------------------------\r\n/*/ " + std::to_string(count) + " questions and answers exported\r\n";
    }
    static std::string record(const std::string& q, const std::string& a)
    {
        return "@Q@\r\n" + q + "\r\n@A@\r\n" + a + "\r\n\r\n";
    }

    /// What the command asks.
    void expect_file_dialog(const std::string& chosen) { desktop.expect_save_file({.path = chosen, .title = "title"}); }
    void expect_question(const std::string& text, platform::BoxAnswer answer)
    {
        desktop.expect_box_like(
            {.text = text, .buttons = platform::BoxButtons::yes_no, .icon = platform::BoxIcon::question}, answer);
    }
    void expect_numbers_question(platform::BoxAnswer answer)
    {
        expect_question("Do you want to include questions numbers in the exported file?", answer);
    }
    void expect_count_question(int count, platform::BoxAnswer answer)
    {
        expect_question(
            std::to_string(count) + " questions and answers exported. Do you want to open the exported file?", answer);
    }

    const std::string target = "/home/anna/QA export.txt";
    const std::string unfinished = target + ".cuedrill-part";

    fakes::TempFolder folder;
    fakes::FakeClock clock;
    fakes::FakeDesktop desktop;
    fakes::FakeFiles files;
    fakes::RealEngine engine;
    fakes::RecordingDatabase database{engine.database};
    store::Course course{database};
    std::string course_path;
    fakes::CourseContents before; ///< of the course
    std::vector<std::string> opened;
    QuestionExport question_export{
        course,
        {files, clock, desktop, [this](const std::string& path) { opened.push_back(path); }, engine.text_compare}};
};

} // namespace cuedrill::exchange
