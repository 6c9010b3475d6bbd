#include "drill/opener_fixture.h"

#include "store/course.h"

#include <filesystem>

namespace cuedrill::drill {
namespace {

const std::string last_course = fakes::FakeSettings::full_key("CUEDRILL", "general", "last_db_path");

} // namespace

OpenerFixture::OpenerFixture(std::string_view questions)
    : course(make_traced_program(questions).course), params(logic->params), opener(logic->opener)
{
    // A box may stay open for hours, so no transaction and no statement may be open meanwhile.
    desktop.on_box = [this] {
        EXPECT_EQ(database.transaction_depth(), 0);
        EXPECT_EQ(database.open_recordsets(), 0);
    };
}

const LogicParts& OpenerFixture::make_traced_program(std::string_view questions)
{
    if (!questions.empty())
        sample_questions = folder.write("questions.txt", questions);
    static_cast<void>(folder.write("trace.flg", ""));
    make_program();
    return *logic;
}

fakes::CourseBuilder OpenerFixture::unpassed_course()
{
    fakes::CourseBuilder described;
    described.question("France?", "Paris").level(0).inverted().level(0);
    return described;
}

void OpenerFixture::remember(const std::string& course_path)
{
    settings_store.values[last_course] = course_path;
}

std::string OpenerFixture::remembered() const
{
    const auto found = settings_store.values.find(last_course);
    return found == settings_store.values.end() ? "nothing" : found->second;
}

void OpenerFixture::expect_dialog_answer(const std::string& chosen)
{
    desktop.expect_file({.path = chosen, .title = std::filesystem::path(chosen).filename().string()});
}

void OpenerFixture::expect_notice_of_empty_course(int target_level)
{
    desktop.expect_box("You have passed level " + std::to_string(target_level) + " for all questions.");
}

std::vector<std::string> OpenerFixture::traced() const
{
    std::vector<std::string> messages;
    if (!std::filesystem::exists(folder.file("trace.txt")))
        return messages;
    const std::string text = folder.read("trace.txt");
    const std::string separator = " apertura_db";
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = text.find("\r\n", start);
        const std::string line = text.substr(start, end - start);
        const std::size_t message = line.find(separator);
        messages.push_back(message == std::string::npos ? line : line.substr(message + 1));
        start = end + 2;
    }
    return messages;
}

void OpenerFixture::expect_open(const std::string& course_path) const
{
    EXPECT_TRUE(course.is_open());
    EXPECT_EQ(course.db_path, course_path);
    EXPECT_TRUE(form1.window.shown);
    EXPECT_EQ(remembered(), course_path);
    EXPECT_FALSE(form2.loaded);
}

void OpenerFixture::expect_nothing_open() const
{
    EXPECT_FALSE(course.is_open());
    EXPECT_FALSE(engine.database.is_open());
    EXPECT_FALSE(form1.window.shown);
}

platform::MessageBox OpenerFixture::cannot_open(const std::string& course_path, const std::string& reason)
{
    return {.text = "The course " + course_path + " cannot be opened.\r\n\r\n" + reason,
            .icon = platform::BoxIcon::exclamation};
}

fakes::CourseContents OpenerFixture::file() const
{
    return fakes::read_course(course.db_path);
}

std::ptrdiff_t OpenerFixture::times_shown() const
{
    return times_noted("Form1.show");
}

std::ptrdiff_t OpenerFixture::times_put_away() const
{
    return times_noted("Form1.hide");
}

} // namespace cuedrill::drill
