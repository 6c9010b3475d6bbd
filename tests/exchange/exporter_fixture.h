#pragma once

#include "exchange/exporter.h"
#include "exchange/texts.h"
#include "fakes/course_builder.h"
#include "fakes/fake_clock.h"
#include "fakes/fake_files.h"
#include "fakes/recording_database.h"
#include "fakes/temp_folder.h"

#include <gtest/gtest.h>
#include <string>

namespace cuedrill::exchange {

/// Exports a real course into files in memory. At the end the course must be unchanged, and no transaction or recordset
/// may be open.
class ExportFixture : public testing::Test {
protected:
    ExportFixture();
    ~ExportFixture() override;

    void SetUp() override;
    void TearDown() override;

    void expect_nothing_open() const;

    void open(const fakes::CourseBuilder& builder);
    /// Writes and opens a course of these questions and answers, numbered from 1.
    void open(const Texts& texts);
    /// Opens the course at `course_path`.
    void open_written();

    /// Exports and returns the file.
    std::string exported(bool numbered = false);

    /// What an export of the open course writes before and after its records.
    static std::string heading(const std::string& title = "Capitals");
    static std::string ending(int count);
    static std::string record(const std::string& q, const std::string& a);

    /// The message of a failed export, with an older file at `target`.
    [[nodiscard]] std::string about_course(const std::string& reason) const;
    [[nodiscard]] std::string nothing_written(const std::string& reason) const;
    [[nodiscard]] std::string partly_written(const std::string& reason) const;

    const std::string target = "/home/anna/QA export.txt";
    const std::string unfinished = target + ".cuedrill-part";

    fakes::TempFolder folder;
    fakes::FakeClock clock;
    fakes::FakeFiles files;
    fakes::RealEngine engine;
    fakes::RecordingDatabase database{engine.database};
    store::Course course{database};
    std::string course_path;
    fakes::CourseContents before; ///< the course before the export
    Exporter exporter{course, files, clock, engine.text_compare};
};

} // namespace cuedrill::exchange
