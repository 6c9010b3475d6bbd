#pragma once

#include "app/base/trace_log.h"
#include "drill/end_of_program.h"
#include "drill/fake_displays.h"
#include "drill/level_commands.h"
#include "drill/scoring.h"
#include "drill/selection.h"
#include "drill/statistics.h"
#include "fakes/course_builder.h"
#include "fakes/fake_clock.h"
#include "fakes/fake_desktop.h"
#include "fakes/fake_files.h"
#include "fakes/fake_random.h"
#include "fakes/recording_database.h"
#include "fakes/temp_folder.h"

#include <chrono>
#include <gtest/gtest.h>
#include <string>

namespace cuedrill::drill {

using namespace std::chrono_literals;
using namespace scheduler;

inline constexpr std::chrono::seconds one_day = 24h;

/// Verdicts, the choice of questions and the statistics without a window, on a course in a folder of its own, with the
/// real engine, whose failures a test can plan.
class ScoringFixture : public testing::Test {
protected:
    fakes::TempFolder folder;
    fakes::FakeClock clock;
    fakes::FakeRandom random;
    fakes::FakeDesktop desktop;
    fakes::FakeFiles files{make_files()};
    app::TraceLog trace{files, clock, desktop, "/program"};
    fakes::FakeQuestionDisplay display;
    fakes::FakeStatusLine status;
    fakes::FakeStatisticsPanels panels;
    fakes::RealEngine engine;
    fakes::RecordingDatabase database{engine.database};
    store::Course course{database};
    store::CourseParamsStore params{course, clock};
    DeadTimes dead_times;
    Statistics statistics{course, params, panels, clock, desktop, clock.time};
    EndOfProgram end_of_program{course, params, clock, trace};
    Scoring scoring{course, dead_times, statistics, {display, status, panels}, clock, desktop, end_of_program};
    Selection selection{course, params, dead_times, display, panels, {clock, random, desktop, status}};
    LevelCommands level_commands{course, params, dead_times, statistics, panels, desktop};

    ScoringFixture()
    {
        dead_times.init_dead_time_array();
        display.course = &course;
        // A box may stay for hours: no transaction and no statement may be open meanwhile, nor the pointer be busy.
        desktop.on_box = [this] {
            EXPECT_EQ(database.transaction_depth(), 0);
            EXPECT_EQ(database.open_recordsets(), 0);
            EXPECT_EQ(desktop.pointer_depth, 0);
        };
    }

    /// Writes the course and opens it; the target level is 5 unless the course says otherwise.
    void open(const fakes::CourseBuilder& builder)
    {
        course.db_path = builder.write(folder);
        course.course_name = "course";
        course.apri_db();
        params.read_params();
        course.set_side_fields();
        course.record_count = course.count_records();
        course.start_counting(clock.time);
        database.forget();
    }

    /// A course of one record, which is the current one.
    void open_with_current(const fakes::CourseBuilder& builder)
    {
        open(builder);
        course.current_cnt = 1;
        display.question_on_display = true;
    }

    /// What the file of the course holds now, as another program sees it.
    [[nodiscard]] fakes::CourseContents file() const { return fakes::read_course(course.db_path); }

    /// The history of the first record, with the question asked.
    [[nodiscard]] fakes::SideRow stored() const { return file().qa.at(0).q_side; }

private:
    static fakes::FakeFiles make_files()
    {
        fakes::FakeFiles with_switch;
        with_switch.files["/program/trace.flg"] = "";
        return with_switch;
    }
};

} // namespace cuedrill::drill
