#include "common/errors.h"
#include "platform/database.h"
#include "torture/bounded_child.h"
#include "torture/course_check.h"
#include "torture/effort.h"
#include "torture/hostile_courses.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <gtest/gtest.h>
#include <random>

// Opens course files that no program of good will has written, and uses those that open. Each is either refused with
// the right error and left as it is, or usable; never a crash, an endless loop or memory without bound.
namespace cuedrill::torture {
namespace {

constexpr std::array<const char*, 11> kinds{"full",         "input_output", "locked", "read_only",  "moved", "damaged",
                                            "not_a_course", "missing",      "exists", "constraint", "other"};

class HostileCourses : public testing::Test {
protected:
    void TearDown() override
    {
        report("hostile_courses", {{"files", files}, {"refused", refused}, {"failures", failures}});
    }

    /// In the child: opens the course and uses what can be used of it.
    [[nodiscard]] std::string use() const
    {
        Session session(folder.file(course_name));
        try {
            session.open();
        } catch (const platform::DatabaseError& error) {
            if (is_broken("touch_refused"))
                std::ofstream(folder.file(course_name), std::ios::app) << 'x';
            return std::string("refused:") + kinds.at(static_cast<std::size_t>(error.kind()));
        } catch (const common::Error&) {
            return "refused:value";
        }
        for (int i = 0; i < number_of_operations; ++i) {
            try {
                session.perform({static_cast<Operation>(i), 12345});
                static_cast<void>(session.dump());
            } catch (const common::Error&) {
                // A value that cannot be counted up, or damage that the check does not see, is told as an error.
                continue;
            }
        }
        return "opens";
    }

    void try_file(const std::string& name, const DiskImage& image, const std::string& expected)
    {
        if (failures >= 5)
            return;
        ++files;
        write_image(image, folder.path().string());
        const ChildOutcome outcome = run_bounded([this] { return use(); });
        refused += outcome.words.starts_with("refused") ? 1 : 0;
        std::string complaint = complaint_about(outcome, expected);
        if (complaint.empty() && outcome.words.starts_with("refused") && read_image(folder.path().string()) != image)
            complaint = "a refused file was changed, or a file has come beside it";
        if (complaint.empty())
            return;
        ++failures;
        ADD_FAILURE() << name << ", seed " << seed() << ": " << complaint;
    }

    [[nodiscard]] static std::string complaint_about(const ChildOutcome& outcome, const std::string& expected)
    {
        if (!outcome.death.empty())
            return outcome.death + " after " + std::to_string(outcome.seconds) + " s";
        if (outcome.seconds > most_course_seconds)
            return "it took " + std::to_string(outcome.seconds) + " s of processor time";
        if (outcome.peak_kilobytes > most_child_kilobytes)
            return "it took " + std::to_string(outcome.peak_kilobytes) + " KiB";
        const bool is_told = outcome.words == "opens" || outcome.words.starts_with("refused:");
        return is_told && (expected == "anything" || outcome.words == expected)
                   ? std::string()
                   : outcome.words + " instead of " + expected;
    }

    [[nodiscard]] static std::string& contents(DiskImage& image) { return image[course_name]; }

    std::mt19937_64 random{seed()};
    DiskImage sound = sound_course();
    fakes::TempFolder folder;
    std::int64_t files = 0;
    std::int64_t refused = 0;
    std::int64_t failures = 0;
};

TEST_F(HostileCourses, AreRefusedOrUsable)
{
    try_file("sound", sound, "opens");
    for (const HostileCourse& course : hostile_courses())
        try_file(course.name, course.make(sound), course.expected);
}

TEST_F(HostileCourses, CutShortAreRefused)
{
    for (std::size_t page = 1; page < pages_of(sound); ++page) {
        DiskImage image = sound;
        contents(image).resize(page * page_size);
        try_file("cut at page " + std::to_string(page), image, "refused:damaged");
    }
}

TEST_F(HostileCourses, WithAnOverwrittenPageAreRefusedOrUsable)
{
    for (std::size_t page = 0; page < pages_of(sound); ++page) {
        for (const int filling : {0x00, 0xFF, -1}) {
            DiskImage image = sound;
            const auto first = contents(image).begin() + static_cast<std::ptrdiff_t>(page * page_size);
            std::generate(first, first + page_size,
                          [&] { return static_cast<char>(filling < 0 ? random() : static_cast<unsigned>(filling)); });
            try_file("page " + std::to_string(page) + " overwritten with " + std::to_string(filling), image,
                     page == 0 ? "refused:not_a_course" : "anything");
        }
    }
}

TEST_F(HostileCourses, WithChangedBytesAreRefusedOrUsable)
{
    for (int i = 0; i < effort(150); ++i) {
        DiskImage image = sound;
        for (std::uint64_t left = 1 + random() % 20; left > 0; --left)
            contents(image)[random() % contents(image).size()] = static_cast<char>(random());
        try_file("bytes changed, number " + std::to_string(i), image, "anything");
    }
}

/// An inner page of a tree has these bytes at its start: its kind, and the number of its cells at 3; the page of the
/// rightmost child at 8, the places of the cells from 12 on; a cell begins with the page of its child.
TEST_F(HostileCourses, WhosePagesLeadInCirclesOrToOnePageAreRefused)
{
    int inner_pages = 0;
    for (std::size_t page = 1; page < pages_of(sound); ++page) {
        const std::size_t start = page * page_size;
        const char kind = contents(sound)[start];
        if (kind != 2 && kind != 5)
            continue;
        ++inner_pages;
        for (const std::size_t target : {page + 1, std::size_t{2}, std::size_t{3}}) {
            DiskImage image = sound;
            std::string& bytes = contents(image);
            const auto number_at = [&](std::size_t place) {
                return static_cast<std::size_t>(static_cast<unsigned char>(bytes[place])) * 256 +
                       static_cast<unsigned char>(bytes[place + 1]);
            };
            const std::string child{'\0', '\0', static_cast<char>(target / 256), static_cast<char>(target)};
            bytes.replace(start + 8, child.size(), child);
            for (std::size_t cell = 0; cell < number_at(start + 3); ++cell)
                bytes.replace(start + number_at(start + 12 + 2 * cell), child.size(), child);
            try_file("page " + std::to_string(page + 1) + " leads to page " + std::to_string(target), image,
                     "refused:damaged");
        }
    }
    EXPECT_GT(inner_pages, 2);
}

} // namespace
} // namespace cuedrill::torture
