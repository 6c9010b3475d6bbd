#include "common/date_time.h"
#include "keep/copy_names.h"
#include "torture/disk_image.h"
#include "torture/effort.h"
#include "torture/window_check.h"
#include "torture/window_folder.h"
#include "torture/window_life.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <memory>
#include <random>
#include <string>
#include <vector>

// Kills the program while its user works in its window, at random moments and at random calls that change a file. The
// next program goes on with what it finds.
namespace cuedrill::torture {
namespace {

namespace fs = std::filesystem;

class WindowKills : public testing::Test {
protected:
    WindowKills() { begin_anew(); }

    void TearDown() override
    {
        report("window_kills", {{"acts", acts + check->acts()}, {"kills", kills}, {"failures", failures}});
    }

    void begin_anew()
    {
        if (check)
            acts += check->acts();
        place = std::make_unique<WindowPlace>();
        place->make_course();
        check = std::make_unique<WindowCheck>();
        check->go_on_with(read_image(place->folder()));
    }

    /// One life of the program, from what the one before has left.
    void live_and_die(WindowLife life)
    {
        life.script_seed = random();
        const WindowEnd end = place->live(life, *check);
        ++kills;
        if (end != WindowEnd::killed)
            return fail(life, "the driver has ended by itself: " + place->errors());
        const DiskImage left = read_image(place->folder());
        if (const std::string complaint = check->complaint(left, false); !complaint.empty())
            return fail(life, complaint);
        check->go_on_with(left);
        if (random() % 2 == 0)
            age_copies();
    }

    /// Makes the copies two days older, so that the next program makes another one.
    void age_copies() const
    {
        std::vector<fs::path> copies;
        for (const auto& entry : fs::recursive_directory_iterator(place->folder() + "/" + window_data)) {
            if (keep::time_of_copy(entry.path().filename().string()))
                copies.push_back(entry.path());
        }
        for (const fs::path& copy : copies) {
            const common::DateTime time = *keep::time_of_copy(copy.filename().string());
            fs::rename(copy, copy.parent_path() / keep::copy_name(time.plus_days(-2)));
        }
    }

    void fail(const WindowLife& life, const std::string& complaint)
    {
        ++failures;
        ADD_FAILURE() << "After kill " << kills << ", seed " << seed() << ", script " << life.script_seed << ", call "
                      << life.calls << ": " << complaint;
        begin_anew();
    }

    std::mt19937_64 random{seed()};
    std::unique_ptr<WindowPlace> place;
    std::unique_ptr<WindowCheck> check;
    std::int64_t acts = 0;
    std::int64_t kills = 0;
    std::int64_t failures = 0;
};

TEST_F(WindowKills, AtRandomCallsLeaveWhatWasAcknowledged)
{
    for (int i = 0; i < effort(80) && failures < 5; ++i)
        live_and_die({.calls = 1 + random() % (i % 4 == 0 ? 40 : 600)});
}

TEST_F(WindowKills, AtRandomMomentsLeaveWhatWasAcknowledged)
{
    for (int i = 0; i < effort(30) && failures < 5; ++i)
        live_and_die({.milliseconds = 1 + random() % 1000});
}

} // namespace
} // namespace cuedrill::torture
