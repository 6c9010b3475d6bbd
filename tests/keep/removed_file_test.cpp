#include "common/errors.h"
#include "fakes/fake_files.h"
#include "fakes/temp_folder.h"
#include "keep/removed_entry.h"
#include "keep/removed_file.h"
#include "platform/system/system_files.h"

#include <gtest/gtest.h>
#include <string>
#include <thread>
#include <vector>

namespace cuedrill::keep {
namespace {

constexpr const char* mark = "\xEF\xBB\xBF";
constexpr const char* path = "/data/removed.txt";

std::string entry(const std::string& text)
{
    return "@Q@\r\n" + text + "\r\n@A@\r\n" + text + "\r\n\r\n" + std::string(entry_end);
}

class Removed : public testing::Test {
protected:
    /// The words of the error with which an append fails.
    std::string append_words()
    {
        try {
            removed.append(entry("a"));
        } catch (const common::Error& error) {
            return error.what();
        }
        return "";
    }

    /// A sound file of that size.
    static std::string file_of(std::size_t size)
    {
        std::string text = mark;
        text.append(size - text.size() - entry_end.size(), 'x');
        return text.append(entry_end);
    }

    void expect_set_aside(const std::string& before)
    {
        EXPECT_EQ(files.files[path], mark + entry("a"));
        EXPECT_EQ(files.files["/data/removed.1.txt"], before);
    }

    fakes::FakeFiles files;
    RemovedFile removed{files, "/data"};
};

TEST_F(Removed, begins_with_the_mark_and_grows)
{
    EXPECT_EQ(removed.append(entry("a")), "");
    EXPECT_TRUE(files.folders.contains("/data"));
    EXPECT_EQ(files.files[path], mark + entry("a"));
    EXPECT_EQ(removed.append(entry("b")), "");
    EXPECT_EQ(files.files[path], mark + entry("a") + entry("b"));
    EXPECT_TRUE(files.held.empty());
}

TEST_F(Removed, begins_anew_in_an_empty_file)
{
    files.files[path] = "";
    EXPECT_EQ(removed.append(entry("a")), "");
    EXPECT_EQ(files.files[path], mark + entry("a"));
}

TEST_F(Removed, tells_why_it_cannot_be_written)
{
    files.durable_append_failure = "Cannot write /data/removed.txt: No space left on device.";
    EXPECT_EQ(append_words(), files.durable_append_failure);
    EXPECT_TRUE(files.held.empty());
    files.hold_failure = "Cannot lock /data/removed.lock: Permission denied.";
    EXPECT_EQ(append_words(), files.hold_failure);
    files.create_folder_failure = "Cannot create the folder /data: Permission denied.";
    EXPECT_EQ(append_words(), files.create_folder_failure);
    EXPECT_FALSE(files.files.contains(path));
}

TEST_F(Removed, is_not_written_while_another_program_writes_it)
{
    files.held_elsewhere.insert("/data/removed.lock");
    EXPECT_EQ(append_words(), "Cannot write /data/removed.txt: another program is writing it.");
    EXPECT_FALSE(files.files.contains(path));
}

TEST_F(Removed, is_written_on_a_file_system_without_locks)
{
    files.has_locks = false;
    EXPECT_EQ(append_words(), "");
    EXPECT_EQ(files.files[path], mark + entry("a"));
}

TEST_F(Removed, grows_until_it_is_full)
{
    const std::string nearly_full = file_of(full_removed_file - 1);
    files.files[path] = nearly_full;
    EXPECT_EQ(removed.append(entry("a")), "");
    EXPECT_EQ(files.files[path], nearly_full + entry("a"));
    EXPECT_EQ(removed.append(entry("a")), "");
    expect_set_aside(nearly_full + entry("a"));
}

TEST_F(Removed, keeps_all_files_when_one_is_full)
{
    files.files[path] = file_of(full_removed_file);
    files.files["/data/removed.1.txt"] = "younger";
    files.files["/data/removed.2.txt"] = "older";
    EXPECT_EQ(removed.append(entry("a")), "");
    EXPECT_EQ(files.journal,
              (std::vector<std::string>{"rename /data/removed.2.txt /data/removed.3.txt",
                                        "rename /data/removed.1.txt /data/removed.2.txt",
                                        "rename /data/removed.txt /data/removed.1.txt", "append /data/removed.txt"}));
    EXPECT_EQ(files.files["/data/removed.3.txt"], "older");
    EXPECT_EQ(files.files["/data/removed.2.txt"], "younger");
    expect_set_aside(file_of(full_removed_file));
}

TEST_F(Removed, uses_a_number_that_is_free_after_an_interrupted_renaming)
{
    files.files[path] = file_of(full_removed_file);
    files.files["/data/removed.1.txt"] = "younger";
    files.files["/data/removed.3.txt"] = "older";
    EXPECT_EQ(removed.append(entry("a")), "");
    EXPECT_EQ(files.files["/data/removed.2.txt"], "younger");
    EXPECT_EQ(files.files["/data/removed.3.txt"], "older");
    expect_set_aside(file_of(full_removed_file));
}

TEST_F(Removed, is_written_on_when_it_cannot_be_renamed)
{
    files.files[path] = file_of(full_removed_file);
    files.rename_failure = "Cannot rename /data/removed.txt: Permission denied.";
    EXPECT_EQ(removed.append(entry("a")), files.rename_failure);
    EXPECT_EQ(files.files[path], file_of(full_removed_file) + entry("a"));
}

TEST_F(Removed, is_written_on_when_it_cannot_be_read)
{
    files.files[path] = file_of(100);
    files.read_failure = "Cannot read /data/removed.txt: Permission denied.";
    EXPECT_EQ(removed.append(entry("a")), files.read_failure);
    EXPECT_EQ(files.files[path], file_of(100) + entry("a"));
}

TEST_F(Removed, is_set_aside_when_its_end_is_missing)
{
    const std::string whole = mark + entry("before");
    for (const std::size_t missing : {1U, 2U, 30U, 40U}) {
        files.files.clear();
        const std::string torn = whole.substr(0, whole.size() - missing);
        files.files[path] = torn;
        EXPECT_EQ(removed.append(entry("a")), "");
        expect_set_aside(torn);
    }
}

TEST_F(Removed, is_set_aside_when_its_encoding_was_changed)
{
    for (const std::string& text : {entry("before"), std::string("x"), std::string(mark)}) {
        files.files.clear();
        files.files[path] = text;
        EXPECT_EQ(removed.append(entry("a")), "");
        expect_set_aside(text);
    }
}

class RemovedOnDisk : public testing::Test {
protected:
    [[nodiscard]] std::string contents(const std::string& name)
    {
        const auto file = files.begin_reading(folder.file("new/data/" + name), 4 * full_removed_file);
        std::string all;
        for (std::string piece = file->read(65536); !piece.empty(); piece = file->read(65536))
            all += piece;
        return all;
    }

    fakes::TempFolder folder;
    platform::system::SystemFiles files;
};

TEST_F(RemovedOnDisk, is_shared_by_two_programs)
{
    RemovedFile first(files, folder.file("new/data"));
    RemovedFile second(files, folder.file("new/data"));
    const std::string long_text(full_removed_file, 'x');
    EXPECT_EQ(first.append(entry("a")), "");
    EXPECT_EQ(second.append(entry(long_text)), "");
    EXPECT_EQ(first.append(entry("b")), "");
    EXPECT_EQ(second.append(entry("c")), "");
    EXPECT_EQ(contents("removed.txt"), mark + entry("b") + entry("c"));
    EXPECT_EQ(contents("removed.1.txt"), mark + entry("a") + entry(long_text));
}

/// The lock belongs to the open file, so threads exclude each other as processes do.
TEST_F(RemovedOnDisk, loses_nothing_when_several_programs_fill_it_at_the_same_time)
{
    constexpr int programs = 3;
    constexpr int entries = 12;
    const std::string filling(200'000, 'x');
    const auto text = [](int program, int number) {
        return "program " + std::to_string(program) + " number " + std::to_string(number) + ".";
    };
    const auto fill = [&](int program) {
        RemovedFile removed(files, folder.file("new/data"));
        for (int number = 0; number < entries;) {
            try {
                EXPECT_EQ(removed.append(entry(text(program, number) + filling)), "");
                ++number;
            } catch (const common::Error& error) {
                // The machine may be so slow that another one has the lock for a second.
                EXPECT_TRUE(std::string(error.what()).ends_with("another program is writing it.")) << error.what();
            }
        }
    };
    std::vector<std::thread> threads;
    for (int program = 0; program < programs; ++program)
        threads.emplace_back(fill, program);
    for (std::thread& thread : threads)
        thread.join();
    std::string all;
    for (const std::string& name : files.names_in(folder.file("new/data"))) {
        const std::string file = contents(name);
        if (name != "removed.lock") {
            EXPECT_TRUE(file.starts_with(mark)) << name;
            EXPECT_TRUE(file.ends_with(entry_end)) << name;
        }
        all += file;
    }
    EXPECT_TRUE(files.exists(folder.file("new/data/removed.2.txt")));
    for (int program = 0; program < programs; ++program) {
        for (int number = 0; number < entries; ++number)
            EXPECT_NE(all.find("@A@\r\n" + text(program, number)), std::string::npos) << text(program, number);
    }
}

} // namespace
} // namespace cuedrill::keep
