#include "torture/disk_model.h"
#include "torture/effort.h"
#include "torture/recording.h"
#include "torture/window_check.h"
#include "torture/window_life.h"

#include <cstddef>
#include <gtest/gtest.h>
#include <random>
#include <set>
#include <string>
#include <utility>

// Notes each call by which the program with its window changes a file, whichever library makes it, and rebuilds what
// the disk can hold after a power cut at each point: the course, removed.txt, drafts, copies, exported files, settings.
namespace cuedrill::torture {
namespace {

class WindowPowerCuts : public testing::Test {
protected:
    void TearDown() override
    {
        report("window_power_cuts", {{"acts", check.acts()}, {"states", states}, {"failures", failures}});
    }

    void cut_everywhere(const Recording& recording)
    {
        DiskModel disk(recording);
        std::set<std::pair<std::size_t, std::int64_t>> seen;
        for (const DiskEvent& event : recording.events()) {
            disk.take(event);
            ++events;
            if (event.kind == DiskEvent::Kind::acknowledge)
                check.take(event.bytes);
            for (int choice = 0; choice < 6 && failures < 5; ++choice) {
                const DiskImage image = disk.cut(fate_of_bytes(choice), fate_of_names(choice), random);
                if (seen.insert({hash_of(image), check.acts()}).second)
                    try_state(image);
            }
        }
    }

    void try_state(const DiskImage& image)
    {
        ++states;
        const std::string complaint = check.complaint(image, true);
        if (complaint.empty())
            return;
        ++failures;
        ADD_FAILURE() << "After a power cut at event " << events << ", seed " << seed() << ", " << complaint;
    }

    [[nodiscard]] Fate fate_of_bytes(int choice)
    {
        if (choice < 4)
            return choice < 2 ? Fate::lost : Fate::kept;
        return static_cast<Fate>(random() % number_of_fates);
    }

    [[nodiscard]] Fate fate_of_names(int choice)
    {
        if (choice < 4)
            return choice % 2 == 0 ? Fate::lost : Fate::kept;
        return static_cast<Fate>(random() % 4);
    }

    std::mt19937_64 random{seed()};
    WindowPlace place;
    WindowCheck check;
    std::int64_t events = 0;
    std::int64_t states = 0;
    std::int64_t failures = 0;
};

TEST_F(WindowPowerCuts, LeaveWhatWasAcknowledged)
{
    place.make_course();
    const DiskImage start = read_image(place.folder());
    WindowCheck unused;
    unused.go_on_with(start);
    const auto acts = static_cast<std::uint64_t>(effort(60));
    ASSERT_EQ(place.live({.script_seed = random(), .acts = acts, .logged = true}, unused), WindowEnd::by_itself)
        << place.errors();
    check.go_on_with(start);
    cut_everywhere(Recording(place.folder(), start, place.log()));
    EXPECT_EQ(check.acts(), unused.acts());
}

} // namespace
} // namespace cuedrill::torture
