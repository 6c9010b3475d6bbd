#include "app/start/start.h"
#include "drill/course_title.h"
#include "drill/drill_fixture.h"
#include "store/course.h"

namespace cuedrill::drill {
namespace {

using fakes::Operation;

class Title : public DrillFixture {
protected:
    void SetUp() override
    {
        builder.question("to be", "was, been").level(0);
        builder.text_param("course_title", "Irregular verbs");
        path = builder.write(folder, "German Verbs.crs");
        make_program();
        user([this] { started = logic->start.run(path); });
        ASSERT_TRUE(started);
    }

    [[nodiscard]] std::string title() const { return logic->course.params.course_title; }
    [[nodiscard]] std::string stored_title() const
    {
        return fakes::read_course(path).param("course_title")->string_value.value_or("null");
    }
    [[nodiscard]] std::string caption() const { return form1.window.caption_value; }

    void answer_with(std::optional<std::string> answer)
    {
        desktop.expect_input("New title?", std::move(answer));
        choose("m_change_course_title");
    }

    void expect_unchanged() const
    {
        EXPECT_EQ(title(), "Irregular verbs");
        EXPECT_EQ(stored_title(), "Irregular verbs");
        EXPECT_EQ(caption(), "Cuedrill: Irregular verbs [german verbs]");
        EXPECT_EQ(times_noted("Form1.caption=" + caption()), 1) << "shown when the window was loaded";
    }
};

TEST_F(Title, stands_in_the_caption_with_the_name_of_the_course_in_lower_case)
{
    EXPECT_EQ(caption(), "Cuedrill: Irregular verbs [german verbs]");
    logic->course.course_name = "ÄRGER";
    logic->title.set_window_title();
    EXPECT_EQ(caption(), "Cuedrill: Irregular verbs [ärger]");
}

TEST_F(Title, is_asked_for_with_the_present_one_filled_in)
{
    answer_with(std::nullopt);
    ASSERT_EQ(desktop.inputs.size(), 1U);
    EXPECT_EQ(desktop.inputs[0].title, "Course title modification");
    EXPECT_EQ(desktop.inputs[0].default_text, "Irregular verbs");
    EXPECT_EQ(desktop.inputs[0].longest, 200);
    expect_unchanged();
}

TEST_F(Title, is_trimmed_stored_and_shown)
{
    answer_with("  Strong verbs ");
    EXPECT_EQ(title(), "Strong verbs");
    EXPECT_EQ(stored_title(), "Strong verbs");
    EXPECT_EQ(caption(), "Cuedrill: Strong verbs [german verbs]");
}

TEST_F(Title, is_stored_in_composed_form)
{
    answer_with("Cafe\xCC\x81");
    EXPECT_EQ(stored_title(), "Café");
}

TEST_F(Title, is_unchanged_after_an_answer_of_blanks_or_none)
{
    answer_with("   ");
    answer_with("");
    expect_unchanged();
}

/// Title, file and caption are unchanged.
TEST_F(Title, is_unchanged_when_it_cannot_be_stored)
{
    desktop.expect_input("New title?", "Strong verbs");
    database.fail_at(Operation::commit);
    EXPECT_THROW(logic->title.m_change_course_title(), platform::DatabaseError);
    expect_unchanged();
}

} // namespace
} // namespace cuedrill::drill
