#include "torture/course_check.h"
#include "torture/disk_image.h"
#include "torture/effort.h"
#include "torture/question_texts.h"
#include "torture/replay.h"
#include "torture/victim.h"

#include <cstdint>
#include <exception>
#include <gtest/gtest.h>
#include <optional>
#include <random>
#include <string>

// Kills a program that uses a course, at random moments and at random calls of the engine. The course must then be
// sound and hold what the program has acknowledged, or that and one step more.
namespace cuedrill::torture {
namespace {

class Kills : public testing::Test {
protected:
    Kills()
    {
        Session session(path);
        session.create();
    }

    void TearDown() override
    {
        report("kills", {{"operations", operations}, {"kills", kills}, {"failures", failures}});
    }

    /// One life of the program, from the opening of the course that the one before has left.
    void live_and_die(const Kill& kill)
    {
        const DiskImage before = read_image(folder.path().string());
        const std::uint64_t script_seed = random();
        const Remains remains = run_and_kill(path, script_seed, kill);
        ++kills;
        const DiskImage after = read_image(folder.path().string());
        if (!remains.was_killed)
            return fail(script_seed, "the driver has ended by itself");
        const auto acknowledged = last_acknowledgement(remains.output);
        operations += acknowledged ? acknowledged->steps : 0;
        judge(before, after, script_seed, acknowledged);
        judge_kept(before, after, script_seed);
        // Its own journal stays for the next life, which has to roll it back.
    }

    void judge(const DiskImage& before, const DiskImage& after, std::uint64_t script_seed,
               const std::optional<Acknowledgement>& acknowledged)
    {
        try {
            const std::uint64_t found = hash_of_dump(check.dump(after));
            // Before the first acknowledgement the opening is the step that may or may not be stored.
            if (found == (acknowledged ? acknowledged->hash : hash_of_dump(check.dump(before))))
                return;
            if (found != hash_after(before, script_seed, acknowledged ? acknowledged->steps + 1 : 0))
                fail(script_seed, "the course does not hold what was acknowledged");
        } catch (const std::exception& error) {
            fail(script_seed, std::string("the course cannot be used: ") + error.what());
        }
    }

    /// What was in the course before and is not in it now must be in "removed.txt".
    void judge_kept(const DiskImage& before, const DiskImage& after, std::uint64_t script_seed)
    {
        try {
            auto lost = check.texts(before);
            for (const auto& texts : check.texts(after))
                lost.erase(texts);
            for (const auto& [name, bytes] : after) {
                if (!name.starts_with("removed") || !name.ends_with(".txt"))
                    continue;
                for (const store::QaTexts& texts : kept_in(bytes))
                    lost.erase({texts.q, texts.a});
            }
            if (!lost.empty())
                fail(script_seed, "removed.txt has lost \"" + lost.begin()->first + "\"");
        } catch (const std::exception& error) {
            fail(script_seed, std::string("the kept texts cannot be compared: ") + error.what());
        }
    }

    /// What the course holds after so many steps of a life.
    [[nodiscard]] static std::uint64_t hash_after(const DiskImage& before, std::uint64_t script_seed,
                                                  std::int64_t steps)
    {
        const fakes::TempFolder copy;
        write_image(before, copy.path().string());
        return replay(copy.file(course_name), script_seed, steps);
    }

    void fail(std::uint64_t script_seed, const std::string& complaint)
    {
        ++failures;
        ADD_FAILURE() << "After kill " << kills << ", seed " << seed() << ", script " << script_seed << ": "
                      << complaint;
        // Begin anew, with a course that is known to be good.
        write_image({}, folder.path().string());
        Session(path).create();
    }

    std::mt19937_64 random{seed()};
    fakes::TempFolder folder;
    std::string path = folder.file(course_name);
    CourseCheck check;
    std::int64_t operations = 0;
    std::int64_t kills = 0;
    std::int64_t failures = 0;
};

TEST_F(Kills, AtRandomCallsLeaveWhatWasAcknowledged)
{
    for (int i = 0; i < effort(200) && failures < 5; ++i)
        live_and_die({.calls = 1 + random() % (i % 3 == 0 ? 60 : 1000)});
}

TEST_F(Kills, AtRandomMomentsLeaveWhatWasAcknowledged)
{
    for (int i = 0; i < effort(100) && failures < 5; ++i)
        live_and_die({.microseconds = random() % 30000});
}

} // namespace
} // namespace cuedrill::torture
