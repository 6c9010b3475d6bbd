#include "torture/course_check.h"
#include "torture/disk_model.h"
#include "torture/effort.h"
#include "torture/recording.h"
#include "torture/script.h"
#include "torture/watched_disk.h"

#include <gtest/gtest.h>
#include <random>
#include <set>
#include <utility>

// Records everything that reaches the disk while a course is used, and rebuilds what a disk can hold after a power cut
// at each point. Whatever the disk has done with what was not synced, the course must open, be sound, and hold what was
// acknowledged, or that and the one step that was under way.
namespace cuedrill::torture {
namespace {

/// Dumps before the first operation and after each one.
using Dumps = std::vector<std::string>;

class PowerCuts : public testing::Test {
protected:
    void TearDown() override
    {
        report("power_cuts", {{"operations", operations}, {"states", states}, {"failures", failures}});
    }

    /// Tries the disk at each point of the recording.
    /// @param dumps number i is allowed as long as i or i-1 operations are acknowledged.
    /// @param nested whether to cut the power once more while the course is opened after a cut.
    void cut_everywhere(const Recording& recording, const Dumps& dumps, int random_cuts, bool nested)
    {
        DiskModel disk(recording);
        std::size_t acknowledged = 0;
        std::set<std::pair<std::size_t, std::size_t>> seen;
        for (std::size_t point = 0; point <= recording.events().size() && failures < 5; ++point) {
            std::vector<std::string> allowed{dumps[acknowledged]};
            if (acknowledged + 1 < dumps.size())
                allowed.push_back(dumps[acknowledged + 1]);
            for (int choice = 0; choice < 4 + random_cuts; ++choice) {
                const DiskImage image = disk.cut(fate_of_bytes(choice), fate_of_names(choice), random);
                if (!seen.insert({hash_of(image), acknowledged}).second)
                    continue;
                try_state(image, allowed, point);
                if (nested && image.size() > 1 && random() % 8 == 0)
                    cut_recovery(image, allowed);
            }
            if (point == recording.events().size())
                break;
            disk.take(recording.events()[point]);
            if (recording.events()[point].kind == DiskEvent::Kind::acknowledge)
                ++acknowledged;
        }
        operations += static_cast<std::int64_t>(acknowledged);
    }

    void try_state(const DiskImage& image, const std::vector<std::string>& allowed, std::size_t point)
    {
        ++states;
        const std::string complaint = check.complaint(image, allowed, random() % 4 == 0);
        if (complaint.empty())
            return;
        ++failures;
        ADD_FAILURE() << "After a power cut at event " << point << ", seed " << seed() << ": " << complaint;
    }

    /// The power goes a second time, while the first cut is being mended.
    void cut_recovery(const DiskImage& image, const std::vector<std::string>& allowed)
    {
        const fakes::TempFolder again;
        write_image(image, again.path().string());
        Recording recording(again.path().string());
        {
            const WatchedDisk watched(recording);
            Session session(again.file(course_name));
            session.open();
        }
        DiskModel disk(recording);
        for (const DiskEvent& event : recording.events()) {
            disk.take(event);
            const auto fate = static_cast<Fate>(random() % number_of_fates);
            try_state(disk.cut(fate, static_cast<Fate>(random() % 4), random), allowed, 0);
        }
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
    fakes::TempFolder folder;
    CourseCheck check;
    std::int64_t operations = 0;
    std::int64_t states = 0;
    std::int64_t failures = 0;
};

TEST_F(PowerCuts, LeaveWhatWasAcknowledged)
{
    Session session(folder.file(course_name));
    session.create();
    session.open();
    Script script(seed());
    for (int i = 0; i < 30; ++i)
        session.perform(script.next());
    session.close();

    Recording recording(folder.path().string());
    Dumps dumps{check.dump(recording.start())};
    {
        const WatchedDisk watched(recording);
        session.open();
        for (int i = 0; i < effort(40); ++i) {
            session.perform(script.next());
            recording.acknowledge();
            dumps.push_back(session.dump());
        }
        session.close();
    }
    cut_everywhere(recording, dumps, 4, true);
}

TEST_F(PowerCuts, LeaveNoCourseOrAWholeOne)
{
    Recording recording(folder.path().string());
    Dumps dumps{no_course};
    {
        const WatchedDisk watched(recording);
        Session session(folder.file(course_name));
        session.create();
        recording.acknowledge();
        dumps.push_back(check.dump(read_image(folder.path().string())));
        session.open(); // stores the settings
        recording.acknowledge();
        dumps.push_back(session.dump());
        session.close();
    }
    cut_everywhere(recording, dumps, 30, false);
}

} // namespace
} // namespace cuedrill::torture
