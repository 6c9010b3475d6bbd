#include "course_fixture.h"
#include "fake_main_window_host.h"
#include "fakes/fake_desktop.h"
#include "store/course_title.h"

#include <gtest/gtest.h>

namespace cuedrill::store {
namespace {

using fakes::CourseBuilder;
using fakes::Operation;

class Title : public CourseFixture {
protected:
    fakes::FakeDesktop desktop;
    fakes::FakeMainWindowHost host;
    CourseTitle title{course, params, host, desktop, engine.text_compare};

    Title()
    {
        open(CourseBuilder().text_param("course_title", "Irregular verbs"), "German Verbs");
        params.read_params();
    }

    [[nodiscard]] std::string stored() const { return file().param("course_title")->string_value.value_or("null"); }

    void expect_unchanged() const
    {
        EXPECT_EQ(course.params.course_title, "Irregular verbs");
        EXPECT_EQ(stored(), "Irregular verbs");
        EXPECT_EQ(host.caption, "");
    }
};

TEST_F(Title, stands_in_the_caption_with_the_name_of_the_course_in_lower_case)
{
    title.set_window_title();
    EXPECT_EQ(host.caption, "Cuedrill: Irregular verbs [german verbs]");
    course.course_name = "ÄRGER";
    title.set_window_title();
    EXPECT_EQ(host.caption, "Cuedrill: Irregular verbs [ärger]");
}

TEST_F(Title, is_asked_for_with_the_present_one_filled_in)
{
    desktop.expect_input("New title?", std::nullopt);
    title.m_change_course_title();
    ASSERT_EQ(desktop.inputs.size(), 1U);
    EXPECT_EQ(desktop.inputs[0].title, "Course title modification");
    EXPECT_EQ(desktop.inputs[0].default_text, "Irregular verbs");
    EXPECT_EQ(desktop.inputs[0].longest, 200);
    expect_unchanged();
}

TEST_F(Title, is_trimmed_stored_and_shown)
{
    desktop.expect_input("New title?", "  Strong verbs ");
    title.m_change_course_title();
    EXPECT_EQ(course.params.course_title, "Strong verbs");
    EXPECT_EQ(stored(), "Strong verbs");
    EXPECT_EQ(host.caption, "Cuedrill: Strong verbs [german verbs]");
}

TEST_F(Title, is_stored_in_composed_form)
{
    desktop.expect_input("New title?", "Cafe\xCC\x81");
    title.m_change_course_title();
    EXPECT_EQ(stored(), "Café");
}

TEST_F(Title, is_unchanged_after_an_answer_of_blanks_or_none)
{
    desktop.expect_input("New title?", "   ");
    title.m_change_course_title();
    desktop.expect_input("New title?", "");
    title.m_change_course_title();
    expect_unchanged();
}

/// Proves that title, file and caption are as before when the title cannot be stored.
TEST_F(Title, is_unchanged_when_it_cannot_be_stored)
{
    desktop.expect_input("New title?", "Strong verbs");
    database.fail_at(Operation::commit);
    EXPECT_THROW(title.m_change_course_title(), platform::DatabaseError);
    expect_unchanged();
}

} // namespace
} // namespace cuedrill::store
