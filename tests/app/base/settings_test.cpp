#include "app/base/settings.h"
#include "fakes/fake_clock.h"
#include "fakes/fake_desktop.h"
#include "fakes/fake_files.h"
#include "fakes/fake_settings.h"

#include <gtest/gtest.h>
#include <string>

namespace cuedrill::app {
namespace {

class SettingsTest : public testing::Test {
protected:
    SettingsTest() { files.files["/opt/cuedrill/trace.flg"] = ""; }

    fakes::FakeFiles files;
    fakes::FakeClock clock;
    fakes::FakeDesktop desktop;
    fakes::FakeSettings store;
};

TEST_F(SettingsTest, AreKeptUnderTheProgramInSectionGeneral)
{
    TraceLog trace(files, clock, desktop, "/opt/cuedrill");
    Settings settings(store, trace);
    settings.save_setting("last_db_path", "/home/anna/b.crs");
    EXPECT_EQ(store.values.at("CUEDRILL/general/last_db_path"), "/home/anna/b.crs");
    EXPECT_EQ(settings.get_setting("last_db_path"), "/home/anna/b.crs");
    EXPECT_EQ(store.values.size(), 1U);
}

TEST_F(SettingsTest, AreEmptyWhenAbsent)
{
    TraceLog trace(files, clock, desktop, "/opt/cuedrill");
    const Settings settings(store, trace);
    EXPECT_EQ(settings.get_setting("last_db_path"), "");
}

// The store contains the value but cannot be read.
TEST_F(SettingsTest, AreEmptyWhenTheStoreCannotBeRead)
{
    TraceLog trace(files, clock, desktop, "/opt/cuedrill");
    const Settings settings(store, trace);
    store.values["CUEDRILL/general/last_db_path"] = "/home/anna/b.crs";
    store.read_failure = "Cannot read the settings.";
    EXPECT_EQ(settings.get_setting("last_db_path"), "");
}

// Writing waits for the disk, and most starts open the same course as the last time.
TEST_F(SettingsTest, AreNotWrittenAgainWhenTheyAreUnchanged)
{
    TraceLog trace(files, clock, desktop, "/opt/cuedrill");
    Settings settings(store, trace);
    settings.save_setting("last_db_path", "/home/anna/b.crs");
    store.write_failure = "Cannot write the settings.";
    settings.save_setting("last_db_path", "/home/anna/b.crs");
    EXPECT_FALSE(files.files.contains("/opt/cuedrill/trace.txt"));
}

// If the store cannot be written, the program goes on, and the trace says what was lost.
TEST_F(SettingsTest, ThatCannotBeSavedAreNotedInTheTraceOnly)
{
    TraceLog trace(files, clock, desktop, "/opt/cuedrill");
    Settings settings(store, trace);
    store.write_failure = "Cannot write the settings: No space left on device.";
    EXPECT_NO_THROW(settings.save_setting("last_db_path", "/home/anna/b.crs"));
    EXPECT_TRUE(files.files["/opt/cuedrill/trace.txt"].ends_with(
        " - save_setting - last_db_path - Cannot write the settings: No space left on device.\r\n"));
    EXPECT_TRUE(store.values.empty());
}

} // namespace
} // namespace cuedrill::app
