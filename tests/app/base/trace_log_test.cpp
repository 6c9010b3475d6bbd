#include "app/base/trace_log.h"
#include "common/errors.h"
#include "fakes/fake_clock.h"
#include "fakes/fake_desktop.h"
#include "fakes/fake_files.h"

#include <gtest/gtest.h>
#include <optional>
#include <string>

namespace cuedrill::app {
namespace {

const std::string switch_path = "/opt/cuedrill/trace.flg";
const std::string trace_path = "/opt/cuedrill/trace.txt";
const std::string too_large = "Trace file too large. Please delete it (/opt/cuedrill/trace.txt)";

class TraceLogTest : public testing::Test {
protected:
    TraceLogTest()
    {
        clock.time =
            common::DateTime::from_fields({.year = 2026, .month = 11, .day = 15, .hour = 7, .minute = 12, .second = 3});
        clock.set_seconds_since_midnight = 25923.4149;
    }

    TraceLog& start_with_switch()
    {
        files.files[switch_path] = "";
        return trace.emplace(files, clock, desktop, "/opt/cuedrill");
    }

    fakes::FakeFiles files;
    fakes::FakeClock clock;
    fakes::FakeDesktop desktop;
    std::optional<TraceLog> trace;
};

using TraceSwitch = TraceLogTest;
using TraceLines = TraceLogTest;
using TraceLimit = TraceLogTest;
using TraceFailure = TraceLogTest;

TEST_F(TraceSwitch, IsOffWithoutTheSwitchFile)
{
    TraceLog off(files, clock, desktop, "/opt/cuedrill");
    EXPECT_FALSE(off.trace_enabled());
    off.write_trace("apertura_db - AD1");
    EXPECT_FALSE(files.exists(trace_path));
}

TEST_F(TraceSwitch, IsOnWithTheSwitchFileWhateverItHolds)
{
    files.read_failure = "its contents must not be read";
    EXPECT_TRUE(start_with_switch().trace_enabled());
}

TEST_F(TraceSwitch, IsDecidedOnlyAtStart)
{
    TraceLog& on = start_with_switch();
    files.files.erase(switch_path);
    on.write_trace("still");
    EXPECT_TRUE(on.trace_enabled());
    EXPECT_TRUE(files.exists(trace_path));

    TraceLog off(files, clock, desktop, "/home/anna");
    files.files["/home/anna/trace.flg"] = "";
    off.write_trace("too late");
    EXPECT_FALSE(files.exists("/home/anna/trace.txt"));
}

TEST_F(TraceLines, HaveDateTimeSecondsAndMessage)
{
    start_with_switch().write_trace("apertura_db - AD1");
    EXPECT_EQ(files.files[trace_path], "15/11/2026 07:12:03 (25923.41) - apertura_db - AD1\r\n");
}

TEST_F(TraceLines, AreAppendedToWhatIsThere)
{
    files.files[trace_path] = "older\r\n";
    TraceLog& log = start_with_switch();
    log.write_trace("");
    clock.advance_seconds(1);
    clock.set_seconds_since_midnight = 25924;
    log.write_trace("next");
    EXPECT_EQ(files.files[trace_path], "older\r\n"
                                       "15/11/2026 07:12:03 (25923.41) - \r\n"
                                       "15/11/2026 07:12:04 (25924.00) - next\r\n");
}

TEST_F(TraceLines, GoOnAfterTheFileWasDeleted)
{
    TraceLog& log = start_with_switch();
    log.write_trace("one");
    files.files.erase(trace_path);
    log.write_trace("two");
    EXPECT_EQ(files.files[trace_path], "15/11/2026 07:12:03 (25923.41) - two\r\n");
}

TEST_F(TraceLimit, OneMoreLineIsWrittenAt99999Bytes)
{
    files.files[trace_path] = std::string(99999, 'x');
    TraceLog& log = start_with_switch();
    log.write_trace("last");
    EXPECT_TRUE(files.files[trace_path].ends_with(" - last\r\n"));
    EXPECT_TRUE(log.trace_enabled());
}

TEST_F(TraceLimit, At100000BytesTheUserIsToldOnceInAPlainBox)
{
    files.files[trace_path] = std::string(100000, 'x');
    TraceLog& log = start_with_switch();
    platform::MessageBox plain;
    plain.text = too_large;
    desktop.expect_box_like(plain, platform::BoxAnswer::ok);
    log.write_trace("one too many");
    log.write_trace("and another");
    EXPECT_FALSE(log.trace_enabled());
    EXPECT_EQ(files.files[trace_path].size(), 100000U);
}

TEST_F(TraceLimit, TheTraceStaysOffWhenTheFileIsDeletedAfterTheWarning)
{
    files.files[trace_path] = std::string(100000, 'x');
    TraceLog& log = start_with_switch();
    desktop.expect_box(too_large);
    log.write_trace("one too many");
    files.files.erase(trace_path);
    log.write_trace("later");
    EXPECT_FALSE(files.exists(trace_path));
}

// Timers run while the box is open and write to the trace.
TEST_F(TraceLimit, ATraceBehindTheOpenBoxOpensNoSecondOne)
{
    files.files[trace_path] = std::string(100000, 'x');
    TraceLog& log = start_with_switch();
    desktop.on_box = [&] { log.write_trace("from a timer"); };
    desktop.expect_box(too_large);
    log.write_trace("one too many");
    EXPECT_EQ(desktop.boxes.size(), 1U);
}

TEST_F(TraceLimit, TheEndOfTheProgramBehindTheBoxIsPassedOn)
{
    files.files[trace_path] = std::string(100000, 'x');
    TraceLog& log = start_with_switch();
    desktop.on_box = [] { throw common::ProgramEnded{}; };
    EXPECT_THROW(log.write_trace("one too many"), common::ProgramEnded);
}

// If the file cannot be written, there is no error, no box and no further attempt.
TEST_F(TraceFailure, TurnsTheTraceOffAndDisturbsNothing)
{
    TraceLog& log = start_with_switch();
    files.append_failure = "Cannot write /opt/cuedrill/trace.txt: Permission denied.";
    EXPECT_NO_THROW(log.write_trace("lost"));
    EXPECT_FALSE(log.trace_enabled());
    files.append_failure.clear();
    log.write_trace("later");
    EXPECT_FALSE(files.exists(trace_path));
    EXPECT_TRUE(desktop.boxes.empty());
}

} // namespace
} // namespace cuedrill::app
