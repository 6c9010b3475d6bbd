// The course that a new user finds in the first file dialog.
#include "common/errors.h"
#include "drill/course_opener.h"
#include "drill/opener_fixture.h"
#include "drill/sample_course.h"
#include "platform/database.h"
#include "store/course.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <new>
#include <string>
#include <vector>

namespace cuedrill::drill {
namespace {

const std::string offered = fakes::FakeSettings::full_key("CUEDRILL", "general", "sample_offered");

class Sample : public OpenerFixture {
protected:
    Sample() : OpenerFixture("@Q@ H @A@ Hydrogen\n@Q@ He @A@ Helium\n") {}

    /// Starts without a course and cancels the dialog.
    void start_and_cancel()
    {
        desktop.expect_file({});
        EXPECT_FALSE(opener.apertura_db());
        EXPECT_FALSE(engine.database.is_open());
    }

    /// The names in the data folder.
    [[nodiscard]] std::vector<std::string> names() const
    {
        return std::filesystem::exists(data_folder) ? files.names_in(data_folder) : std::vector<std::string>();
    }

    void put_into_data_folder(const std::string& name, const std::string& bytes) const
    {
        std::filesystem::create_directories(data_folder);
        std::ofstream(data_folder + "/" + name, std::ios::binary) << bytes;
    }

    /// What the trace tells about the sample.
    [[nodiscard]] std::string noted() const
    {
        const std::string text = std::filesystem::exists(folder.file("trace.txt")) ? folder.read("trace.txt") : "";
        const std::size_t start = text.find("sample course - ");
        return start == std::string::npos ? "" : text.substr(start, text.find("\r\n", start) - start);
    }

    void expect_failure(const std::string& reason)
    {
        start_and_cancel();
        EXPECT_NE(noted().find(reason), std::string::npos) << noted();
        EXPECT_TRUE(desktop.boxes.empty());
        EXPECT_EQ(names(), std::vector<std::string>());
    }

    const std::vector<std::string> only_the_sample{"Chemical elements.crs"};
    const std::string sample_path = data_folder + "/Chemical elements.crs";
};

TEST_F(Sample, lies_in_the_data_folder_when_the_first_dialog_comes)
{
    bool there = false;
    desktop.on_box = [&] {
        there = names() == only_the_sample;
        EXPECT_FALSE(engine.database.is_open());
    };
    start_and_cancel();
    EXPECT_TRUE(there);
    const fakes::CourseContents contents = fakes::read_course(sample_path);
    ASSERT_EQ(contents.qa.size(), 2U);
    EXPECT_EQ(contents.qa.at(1).q, "He");
    EXPECT_EQ(contents.qa.at(1).a, "Helium");
    EXPECT_EQ(noted(), "");
    EXPECT_TRUE(desktop.boxes.empty());
}

TEST_F(Sample, is_in_the_folder_where_the_first_dialog_begins)
{
    start_and_cancel();
    EXPECT_EQ(desktop.file_dialogs.at(0).initial_folder, data_folder);
    EXPECT_EQ(desktop.file_dialogs.at(0).initial_file, "Chemical elements.crs");
    // At the next start, too: still no course was opened.
    start_and_cancel();
    EXPECT_EQ(desktop.file_dialogs.at(1).initial_folder, data_folder);
    EXPECT_EQ(desktop.file_dialogs.at(1).initial_file, "Chemical elements.crs");
}

TEST_F(Sample, that_was_deleted_sends_no_dialog_to_its_folder)
{
    start_and_cancel();
    std::filesystem::remove(sample_path);
    start_and_cancel();
    EXPECT_EQ(desktop.file_dialogs.at(1).initial_folder, folder.path().string());
}

TEST_F(Sample, sends_no_dialog_to_its_folder_once_a_course_was_opened)
{
    start_and_cancel();
    remember(courses.file("gone.crs"));
    start_and_cancel();
    EXPECT_EQ(desktop.file_dialogs.at(1).initial_folder, folder.path().string());
}

TEST_F(Sample, can_be_chosen_and_drilled)
{
    expect_dialog_answer(sample_path);
    EXPECT_TRUE(opener.apertura_db());
    EXPECT_EQ(course.record_count, 2);
    EXPECT_EQ(remembered(), sample_path);
    EXPECT_EQ(course.params.course_title, "Course Chemical elements");
}

TEST_F(Sample, that_was_deleted_does_not_come_back)
{
    start_and_cancel();
    std::filesystem::remove(sample_path);
    start_and_cancel();
    EXPECT_EQ(names(), std::vector<std::string>());
}

TEST_F(Sample, is_not_put_beside_a_course_of_the_user)
{
    put_into_data_folder("Verbs.CRS", "mine");
    start_and_cancel();
    EXPECT_EQ(names(), (std::vector<std::string>{"Verbs.CRS"}));
    EXPECT_EQ(desktop.file_dialogs.at(0).initial_folder, data_folder);
    EXPECT_EQ(desktop.file_dialogs.at(0).initial_file, "");
    // The first start is over, also when that course goes.
    std::filesystem::remove(data_folder + "/Verbs.CRS");
    start_and_cancel();
    EXPECT_EQ(names(), std::vector<std::string>());
}

TEST_F(Sample, is_put_beside_other_files)
{
    put_into_data_folder("agenda.txt", "today");
    put_into_data_folder(".crs", "only an ending");
    start_and_cancel();
    EXPECT_TRUE(std::filesystem::exists(sample_path));
}

TEST_F(Sample, does_not_come_to_a_user_who_has_opened_a_course_before)
{
    remember(courses.file("gone.crs"));
    start_and_cancel();
    EXPECT_EQ(names(), std::vector<std::string>());
}

TEST_F(Sample, does_not_come_when_a_course_is_given)
{
    course.db_path = unpassed_course().write(courses, "mine.crs");
    EXPECT_TRUE(opener.apertura_db());
    EXPECT_FALSE(std::filesystem::exists(sample_path));
}

TEST_F(Sample, does_not_come_without_its_questions)
{
    std::filesystem::remove(sample_questions);
    start_and_cancel();
    EXPECT_FALSE(std::filesystem::exists(data_folder));
    EXPECT_FALSE(settings_store.values.contains(offered));
    EXPECT_EQ(noted(), "");
}

TEST_F(Sample, never_replaces_what_has_its_name_by_then)
{
    database.at_each_call([this](fakes::Operation operation) {
        if (operation == fakes::Operation::commit)
            put_into_data_folder("Chemical elements.crs", "mine");
    });
    start_and_cancel();
    EXPECT_EQ(names(), only_the_sample);
    EXPECT_EQ(std::filesystem::file_size(sample_path), 4U);
    EXPECT_NE(noted(), "");
}

TEST_F(Sample, is_not_made_where_it_cannot_be_remembered)
{
    settings_store.write_failure = "no access";
    start_and_cancel();
    EXPECT_FALSE(std::filesystem::exists(data_folder));
    EXPECT_EQ(noted(), "sample course - it could not be remembered that it was put there");
}

TEST_F(Sample, is_not_made_in_a_folder_that_cannot_be_made)
{
    static_cast<void>(folder.write("data", "a file in the way"));
    start_and_cancel();
    EXPECT_NE(noted(), "");
    EXPECT_EQ(folder.read("data"), "a file in the way");
    EXPECT_TRUE(desktop.boxes.empty());
}

TEST_F(Sample, leaves_nothing_when_the_course_cannot_be_created)
{
    database.fail_at(fakes::Operation::create, 1, platform::DatabaseErrorKind::full, "The disk is full.");
    expect_failure("The disk is full.");
}

TEST_F(Sample, leaves_nothing_when_the_course_cannot_be_filled)
{
    database.fail_at(fakes::Operation::execute, 1, platform::DatabaseErrorKind::full, "The disk is full.");
    expect_failure("The disk is full.");
}

TEST_F(Sample, leaves_nothing_when_the_questions_cannot_be_read)
{
    std::ofstream(sample_questions, std::ios::binary) << std::string("\xFF\xFE@\0", 4);
    expect_failure("UTF-16");
}

TEST_F(Sample, leaves_nothing_when_there_are_no_questions)
{
    std::ofstream(sample_questions) << "nothing of the kind";
    expect_failure("it holds no questions");
}

TEST_F(Sample, leaves_nothing_when_memory_is_short)
{
    database.at_each_call([](fakes::Operation operation) {
        if (operation == fakes::Operation::execute)
            throw std::bad_alloc();
    });
    expect_failure("memory");
}

} // namespace
} // namespace cuedrill::drill
