#pragma once

#include "bank/record_bank.h"
#include "exchange/importer.h"
#include "exchange/texts.h"
#include "fakes/fake_clock.h"
#include "fakes/recording_database.h"
#include "fakes/temp_folder.h"
#include "platform/system/system_files.h"

#include <cstdint>
#include <functional>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace cuedrill::exchange {

/// A clock that advances by a fixed step at each reading.
class SteppingClock : public fakes::FakeClock {
public:
    double step = 0; ///< seconds

    [[nodiscard]] double steady_seconds() const override;

private:
    mutable double seconds_ = 20000;
};

/// A database whose disk is full for good after some commits.
class FillingDisk : public fakes::RecordingDatabase {
public:
    using RecordingDatabase::RecordingDatabase;

    /// How many more transactions (not savepoints) can be committed; std::nullopt for no limit.
    std::optional<int> commits_left;

    void commit() override;
};

/// The result of an import that ended or was stopped by an error.
struct Outcome {
    Progress progress{};
    std::vector<std::pair<std::int64_t, EmptyRecord::Lacks>> empty{}; ///< numbers of the records left out
    std::vector<std::size_t> stored_at{}; ///< records in the file after each step but the last
    std::string summary{};                ///< of the report, like its lines
    std::string lines{};
    std::string failure{}; ///< text of the error; empty if there was none
};

/// Imports into a real course that is empty at first. Between steps no transaction may be open, and every record
/// counted as stored must be in the file.
class ImportFixture : public testing::Test {
protected:
    ImportFixture();
    ~ImportFixture() override;

    void SetUp() override;

    /// Imports a file with these bytes.
    Outcome import(std::string_view bytes) { return import_file(folder.write("questions.txt", bytes)); }
    Outcome import_file(const std::string& file);
    Outcome import_with(Importer& importer);

    [[nodiscard]] Importer importer_of(const std::string& file)
    {
        return {course, files, clock, engine.text_compare, file};
    }

    void expect_nothing_open() const;

    /// The questions and answers in the file, as another program would read them now.
    [[nodiscard]] Texts stored() const { return texts_of(fakes::read_course(path)); }

    /// A text of `count` records "q1"/"a1", "q2"/"a2" and so on.
    static std::string records(int count);

    std::function<void()> after_step; ///< called after each step but the last

    fakes::TempFolder folder;
    SteppingClock clock;
    fakes::RealEngine engine;
    FillingDisk database{engine.database};
    platform::system::SystemFiles files;
    store::Course course{database};
    bank::RecordBank bank{course, engine.text_compare};
    std::string path; ///< of the course
};

} // namespace cuedrill::exchange
