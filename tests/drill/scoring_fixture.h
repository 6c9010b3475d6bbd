#pragma once

#include "adapters/deck_adapters.h"
#include "drill/display.h"
#include "drill/end_of_program.h"
#include "drill/level_commands.h"
#include "drill/scoring.h"
#include "drill/selection.h"
#include "drill/statistics.h"
#include "fakes/course_builder.h"
#include "fakes/fake_clock.h"
#include "fakes/fake_desktop.h"
#include "fakes/fake_files.h"
#include "fakes/fake_folders.h"
#include "fakes/fake_form1.h"
#include "fakes/fake_random.h"
#include "fakes/recording_database.h"
#include "fakes/temp_folder.h"

#include <chrono>
#include <cstdint>
#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace cuedrill::program {
struct Logic;
} // namespace cuedrill::program

namespace cuedrill::drill {

using namespace std::chrono_literals;
using namespace scheduler;

inline constexpr std::chrono::seconds one_day = 24h;

/// The statistics that the window shows.
struct ShownStatistics {
    std::optional<int> score; ///< std::nullopt until it is shown
    std::int64_t total = 0;
    std::vector<std::int64_t> counts;
    std::int64_t unpassed = 0;
    std::optional<int> marked;
    std::string open_time;
    std::string today;
    std::string ever;
};

ShownStatistics statistics_of(const platform::Screen& screen);

/// Verdicts, the selection of questions and the statistics, with a fake window and a course in a temporary folder. The
/// database engine is real; a test can plan failures of it.
class ScoringFixture : public testing::Test {
protected:
    fakes::TempFolder folder;
    fakes::FakeClock clock;
    fakes::FakeRandom random;
    fakes::FakeDesktop desktop;
    fakes::FakeFiles files{make_files()};
    fakes::FakeFolders folders;
    fakes::FakeForm1 form1;
    adapters::DeckAdapters deck_adapters;
    fakes::RealEngine engine;
    fakes::RecordingDatabase database{engine.database};

private:
    struct Program;
    std::unique_ptr<Program> program_;

protected:
    // The parts of the program, wired as the program wires them.
    program::Logic& logic;
    store::Course& course;
    store::CourseParamsStore& params;
    CommandControls& command_controls;
    CourseOptions& options;
    EditFlags& flags;
    DrillState& state;
    StatusLine& status;
    Display& display;
    DeadTimes& dead_times;
    Statistics& statistics;
    EndOfProgram& end_of_program;
    Scoring& scoring;
    Selection& selection;
    LevelCommands& level_commands;

    ScoringFixture();
    ~ScoringFixture() override;

    /// Writes the course and opens it; the target level is 5 unless the course says otherwise.
    void open(const fakes::CourseBuilder& builder);

    /// A course of one record, which is the current one.
    void open_with_current(const fakes::CourseBuilder& builder);

    [[nodiscard]] common::Int16 current_cnt() const { return state.shown.current_cnt(); }
    [[nodiscard]] common::Int16 previous_cnt() const { return state.shown.previous_cnt(); }

    [[nodiscard]] ShownStatistics panels() const { return statistics_of(form1.screen); }

    /// Whether the panel of that level, 0 to 5, is marked as the target by colour and by a sign.
    [[nodiscard]] bool is_target(int level) const;

    /// How many questions were asked.
    [[nodiscard]] std::size_t shows() const { return form1.window.announcements.size(); }

    /// The texts that the status line has shown since the course was opened, including empty ones.
    [[nodiscard]] std::vector<std::string> status_texts() const;

    /// Expects that the status line shows `text` for `seconds` seconds, or until the next text if `seconds` is 0. Lets
    /// this time pass.
    void expect_status(const std::string& text, int seconds);

    /// What the file of the course holds now, as another program sees it.
    [[nodiscard]] fakes::CourseContents file() const;

    /// The history of the first record, with the question asked.
    [[nodiscard]] fakes::SideRow stored() const;

private:
    static fakes::FakeFiles make_files();
};

} // namespace cuedrill::drill
