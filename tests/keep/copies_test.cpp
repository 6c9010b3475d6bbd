// Copies of a real course in a temporary folder, with failures of the disk.
#include "common/errors.h"
#include "fakes/course_builder.h"
#include "fakes/fake_clock.h"
#include "fakes/fake_folders.h"
#include "fakes/file_size_limit.h"
#include "fakes/recording_database.h"
#include "fakes/temp_folder.h"
#include "keep/copies.h"
#include "keep/copy_names.h"
#include "platform/sound_files.h"
#include "platform/sqlite/sqlite_database.h"
#include "platform/system/system_files.h"
#include "store/course.h"

#include <algorithm>
#include <chrono>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace cuedrill::keep {
namespace {

namespace fs = std::filesystem;
using fakes::Operation;

class CourseCopy : public testing::Test {
protected:
    CourseCopy()
    {
        fakes::CourseBuilder builder;
        builder.question("France?", "Paris").level(3).attempts(4);
        builder.question("Italy?", "Rome");
        builder.number_param("time_ever", 77);
        open(builder);
    }

    void open(const fakes::CourseBuilder& builder, const std::string& name = "course.crs")
    {
        course.close();
        course.db_path = builder.write(folder, name);
        course.apri_db();
        course.record_count = course.count_records();
    }

    std::unique_ptr<CopyInMaking> begin() { return copies.begin(course, clock.time); }

    void make_copy() { begin()->make_at_once(); }

    /// Runs `action`, which must fail, and returns the reason.
    template <class Action>
    static std::string reason_of(Action action)
    {
        try {
            action();
        } catch (const common::Error& error) {
            return error.what();
        }
        ADD_FAILURE() << "nothing was thrown";
        return {};
    }

    [[nodiscard]] std::string copy_folder() const { return copies.folder_of(course.db_path); }

    /// The names in the folder of the copies, hidden ones too.
    [[nodiscard]] std::vector<std::string> names() const
    {
        std::vector<std::string> found;
        if (fs::exists(copy_folder())) {
            for (const auto& entry : fs::directory_iterator(copy_folder()))
                found.push_back(entry.path().filename().string());
        }
        std::sort(found.begin(), found.end());
        return found;
    }

    static mode_t mode_of(const std::string& path)
    {
        struct stat status {};
        EXPECT_EQ(::stat(path.c_str(), &status), 0) << path;
        return status.st_mode & 0777;
    }

    [[nodiscard]] std::string note() const
    {
        std::ifstream stream(copy_folder() + "/course.txt");
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    /// A course of some hundred pages.
    static fakes::CourseBuilder large()
    {
        fakes::CourseBuilder builder;
        for (int i = 0; i < 2000; ++i)
            builder.question("question " + std::to_string(i), std::string(150, 'x'));
        return builder;
    }

    fakes::TempFolder folder;
    fakes::FakeClock clock; // 15/11/2026 05:47:17
    fakes::FakeFolders folders;
    platform::system::SystemFiles files;
    fakes::RealEngine engine;
    fakes::RecordingDatabase database{engine.database};
    store::Course course{database};
    Copies copies{files, folders, folder.file("data")};
};

TEST_F(CourseCopy, holds_all_of_the_course_and_is_named_after_its_time)
{
    make_copy();
    EXPECT_EQ(names(), (std::vector<std::string>{"2026-11-15_05-47-17.crs", "course.txt"}));
    const std::optional<Copy> copy = copies.newest(course.db_path);
    ASSERT_TRUE(copy);
    EXPECT_EQ(copy->time, clock.time);
    EXPECT_EQ(copy->bytes, fs::file_size(copy->path));
    EXPECT_EQ(fakes::read_course(copy->path), fakes::read_course(course.db_path));
}

TEST_F(CourseCopy, lies_where_only_the_user_can_read_it)
{
    make_copy();
    EXPECT_EQ(mode_of(folder.file("data")), 0700U);
    EXPECT_EQ(mode_of(copy_folder()), 0700U);
    EXPECT_EQ(mode_of(copies.newest(course.db_path)->path), 0600U);
    EXPECT_EQ(mode_of(copy_folder() + "/course.txt"), 0600U);
}

TEST_F(CourseCopy, is_found_by_a_person_through_a_note)
{
    make_copy();
    EXPECT_NE(note().find("\n" + course.db_path + "\n"), std::string::npos) << note();
}

TEST_F(CourseCopy, is_found_by_any_path_to_the_course)
{
    make_copy();
    fs::create_directory_symlink(folder.path(), folder.file("link"));
    EXPECT_TRUE(copies.newest(folder.file("link/./course.crs")));
    EXPECT_FALSE(copies.newest(folder.file("other.crs")));
}

TEST_F(CourseCopy, is_found_when_the_course_is_gone)
{
    make_copy();
    const std::string path = course.db_path;
    course.close();
    fs::remove(path);
    EXPECT_TRUE(copies.newest(path));
}

TEST_F(CourseCopy, is_made_step_by_step)
{
    open(large(), "large.crs");
    const auto making = begin();
    while (database.count(Operation::copy_finish) == 0) {
        EXPECT_FALSE(copies.newest(course.db_path)) << "named too early";
        ASSERT_FALSE(making->step(10));
    }
    EXPECT_GT(database.count(Operation::copy_step), 20);
    EXPECT_TRUE(copies.newest(course.db_path));
    EXPECT_TRUE(making->step(10));
    EXPECT_EQ(fakes::read_course(copies.newest(course.db_path)->path).qa.size(), 2000U);
}

TEST_F(CourseCopy, holds_what_is_written_while_it_is_made)
{
    open(large(), "large.crs");
    const auto making = begin();
    ASSERT_FALSE(making->step(10));
    database.execute("Update qa set q = 'another' where cnt = 1");
    making->make_at_once();
    EXPECT_EQ(fakes::read_course(copies.newest(course.db_path)->path).qa.at(0).q, "another");
}

TEST_F(CourseCopy, starts_again_when_another_program_writes)
{
    open(large(), "large.crs");
    const auto making = begin();
    for (int i = 0; i < 5; ++i)
        ASSERT_FALSE(making->step(10));
    {
        fakes::RealEngine other;
        store::Course same(other.database);
        same.db_path = course.db_path;
        same.apri_db();
        other.database.execute("Update qa set q = 'another' where cnt = 1");
    }
    making->make_at_once();
    EXPECT_EQ(fakes::read_course(copies.newest(course.db_path)->path).qa.at(0).q, "another");
}

TEST_F(CourseCopy, waits_while_another_program_holds_the_course)
{
    fakes::RealEngine other;
    store::Course same(other.database);
    same.db_path = course.db_path;
    same.apri_db();
    const auto making = begin();
    {
        const int lock = ::open(course.db_path.c_str(), O_RDWR | O_CLOEXEC);
        struct flock range {};
        range.l_type = F_WRLCK;
        range.l_whence = SEEK_SET;
        range.l_start = 0x40000000; // where the engine announces that it is about to write
        range.l_len = 512;
        ASSERT_EQ(::fcntl(lock, F_OFD_SETLK, &range), 0);
        ASSERT_FALSE(making->step(1000));
        ASSERT_FALSE(making->step(1000));
        EXPECT_EQ(database.count(Operation::copy_flush), 0);
        range.l_type = F_UNLCK;
        ASSERT_EQ(::fcntl(lock, F_OFD_SETLK, &range), 0);
        // The descriptor stays open: closing it would end the engine's own locks.
    }
    making->make_at_once();
    EXPECT_TRUE(copies.newest(course.db_path));
}

TEST_F(CourseCopy, is_abandoned_when_the_course_is_closed)
{
    open(large(), "large.crs");
    const auto making = begin();
    ASSERT_FALSE(making->step(10));
    EXPECT_FALSE(making->abandoned());
    const std::string path = course.db_path;
    course.close();
    EXPECT_TRUE(making->abandoned());
    EXPECT_EQ(reason_of([&] { static_cast<void>(making->step(10)); }), "The course is closed.");
    course.db_path = path;
    course.apri_db();
    EXPECT_TRUE(making->abandoned());
}

TEST_F(CourseCopy, that_is_not_finished_leaves_nothing)
{
    open(large(), "large.crs");
    {
        const auto making = begin();
        ASSERT_FALSE(making->step(10));
        EXPECT_EQ(names().size(), 1U);
    }
    EXPECT_EQ(names(), std::vector<std::string>{});
}

TEST_F(CourseCopy, removes_what_a_killed_program_has_left)
{
    fs::create_directories(copy_folder());
    std::ofstream(copy_folder() + "/.cuedrill-new-123") << "half a copy";
    make_copy();
    EXPECT_EQ(names(), (std::vector<std::string>{"2026-11-15_05-47-17.crs", "course.txt"}));
}

TEST_F(CourseCopy, never_replaces_one_of_the_same_time)
{
    make_copy();
    make_copy();
    EXPECT_EQ(names(), (std::vector<std::string>{"2026-11-15_05-47-17.crs", "2026-11-15_05-47-18.crs", "course.txt"}));
}

TEST_F(CourseCopy, thins_out_the_older_ones)
{
    make_copy();
    clock.advance_seconds(60);
    make_copy();
    clock.advance_days(4);
    make_copy();
    EXPECT_EQ(names(), (std::vector<std::string>{"2026-11-15_05-48-17.crs", "2026-11-19_05-48-17.crs", "course.txt"}));
}

TEST_F(CourseCopy, is_as_good_when_an_older_one_cannot_be_removed)
{
    make_copy();
    clock.advance_seconds(60);
    make_copy();
    clock.advance_days(4);
    folders.refuse_to_remove = true;
    make_copy();
    EXPECT_EQ(copies.of(course.db_path).size(), 3U);
}

TEST_F(CourseCopy, knows_which_state_of_the_course_it_holds)
{
    EXPECT_FALSE(copies.newest_holds(course.db_path, database.mark()));
    make_copy();
    EXPECT_TRUE(copies.newest_holds(course.db_path, database.mark()));
    database.execute("Update qa set q = 'another' where cnt = 1");
    EXPECT_FALSE(copies.newest_holds(course.db_path, database.mark()));
    make_copy();
    EXPECT_TRUE(copies.newest_holds(course.db_path, database.mark()));
    fs::remove(copies.newest(course.db_path)->path);
    EXPECT_FALSE(copies.newest_holds(course.db_path, database.mark())) << "the newest one is another one now";
}

TEST_F(CourseCopy, is_as_good_without_a_note)
{
    fs::create_directories(copy_folder() + "/course.txt");
    make_copy();
    EXPECT_TRUE(copies.newest(course.db_path));
    EXPECT_FALSE(copies.newest_holds(course.db_path, database.mark()));
}

TEST_F(CourseCopy, is_not_made_without_room_for_two)
{
    folders.room = 2 * fs::file_size(course.db_path) - 1;
    EXPECT_EQ(reason_of([this] { make_copy(); }), "There is no room for two copies on the disk.");
    EXPECT_EQ(names(), std::vector<std::string>{});
    folders.room = 2 * fs::file_size(course.db_path);
    make_copy();
    EXPECT_TRUE(copies.newest(course.db_path));
}

TEST_F(CourseCopy, is_not_made_where_no_folder_can_be_created)
{
    folder.write("data", "a file in the place of the folder");
    EXPECT_NE(reason_of([this] { make_copy(); }).find("Cannot create the folder"), std::string::npos);
}

TEST_F(CourseCopy, of_a_user_without_a_data_folder_has_no_place)
{
    const Copies nowhere(files, folders, "");
    EXPECT_FALSE(nowhere.have_place());
    EXPECT_FALSE(nowhere.newest(course.db_path));
}

class FailingCopy : public CourseCopy, public testing::WithParamInterface<Operation> {};

TEST_P(FailingCopy, leaves_nothing_and_the_next_one_succeeds)
{
    database.fail_at(GetParam());
    EXPECT_EQ(reason_of([this] { make_copy(); }), fakes::RecordingDatabase::failure_words);
    EXPECT_EQ(names(), std::vector<std::string>{});
    make_copy();
    EXPECT_TRUE(copies.newest(course.db_path));
}

INSTANTIATE_TEST_SUITE_P(Steps, FailingCopy,
                         testing::Values(Operation::begin_copy, Operation::copy_step, Operation::copy_flush,
                                         Operation::copy_finish));

TEST_F(CourseCopy, that_does_not_fit_tells_the_reason_and_leaves_nothing)
{
    open(large(), "large.crs");
    {
        const fakes::FileSizeLimit limit(100'000);
        EXPECT_EQ(reason_of([this] { make_copy(); }), "A file would become larger than the system allows.");
        EXPECT_EQ(names(), std::vector<std::string>{});
    }
    make_copy();
    EXPECT_TRUE(copies.newest(course.db_path));
}

/// Takes each file for one that was sound when it was closed.
class AllSound : public platform::SoundFiles {
public:
    [[nodiscard]] bool is_noted(const std::string&, const std::string&) const noexcept override { return true; }
    void note(const std::string&, const std::string&) noexcept override {}
};

TEST_F(CourseCopy, of_a_course_with_hidden_damage_is_not_kept)
{
    open(large(), "large.crs");
    course.close();
    {
        std::fstream bytes(course.db_path, std::ios::in | std::ios::out | std::ios::binary);
        bytes.seekp(4096 * 40);
        bytes << std::string(4096, '\xee');
    }
    AllSound all_sound;
    platform::sqlite::SqliteDatabase unchecked(engine.text_compare, std::chrono::seconds(0), &all_sound);
    store::Course damaged(unchecked);
    damaged.db_path = course.db_path;
    damaged.apri_db();
    const auto making = copies.begin(damaged, clock.time);
    EXPECT_EQ(reason_of([&] { making->make_at_once(); }).substr(0, 14), "It is damaged ");
    EXPECT_FALSE(copies.newest(course.db_path));
}

TEST_F(CourseCopy, that_cannot_be_named_is_not_kept)
{
    const auto making = begin();
    ASSERT_FALSE(making->step(platform::CourseCopy::all_pages));
    ASSERT_FALSE(making->step(1));
    std::ofstream(copy_folder() + "/2026-11-15_05-47-17.crs") << "somebody else's";
    EXPECT_EQ(reason_of([&] { static_cast<void>(making->step(1)); }), "There is already a file of that name.");
}

} // namespace
} // namespace cuedrill::keep
