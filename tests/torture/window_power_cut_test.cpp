#include "torture/disk_model.h"
#include "torture/effort.h"
#include "torture/recording.h"
#include "torture/window_check.h"
#include "torture/window_life.h"

#include <cstddef>
#include <cstdint>
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
        report("window_power_cuts",
               {{"acts", check.acts()}, {"states", states}, {"starts", starts}, {"failures", failures}});
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
        tell(check.complaint(image, true));
        if (random() % states_to_a_start == 0)
            start_with(image);
    }

    /// The next program starts with what the power cut has left, and works.
    void start_with(const DiskImage& image)
    {
        ++starts;
        write_image(image, place.folder());
        WindowCheck next;
        next.go_on_with(image, check);
        if (place.live({.script_seed = random(), .acts = 3}, next) == WindowEnd::by_itself)
            tell(next.complaint(read_image(place.folder()), false));
        else
            tell("the next program has failed: " + place.errors());
    }

    void tell(const std::string& complaint)
    {
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

    static constexpr std::uint64_t states_to_a_start = 300;

    std::mt19937_64 random{seed()};
    WindowPlace place;
    WindowCheck check;
    std::int64_t events = 0;
    std::int64_t states = 0;
    std::int64_t starts = 0;
    std::int64_t failures = 0;
};

TEST_F(WindowPowerCuts, LeaveWhatWasAcknowledged)
{
    place.make_course();
    const DiskImage start = read_image(place.folder());
    WindowCheck unused;
    unused.go_on_with(start);
    const auto acts = static_cast<std::uint64_t>(effort(100));
    ASSERT_EQ(place.live({.script_seed = random(), .acts = acts, .logged = true}, unused), WindowEnd::by_itself)
        << place.errors();
    check.go_on_with(start);
    cut_everywhere(Recording(place.folder(), start, place.log()));
    EXPECT_EQ(check.acts(), unused.acts());
}

} // namespace
} // namespace cuedrill::torture
