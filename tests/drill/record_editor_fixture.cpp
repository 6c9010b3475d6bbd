#include "drill/record_editor_fixture.h"

#include "program/logic.h"

namespace cuedrill::drill {

RecordEditorTest::RecordEditorTest() : bank(logic.bank), editor(logic.editor), view(form1, state, logic.key_policy)
{
}

RecordEditorTest::~RecordEditorTest() = default;

void RecordEditorTest::open_course(bool inverted)
{
    fakes::CourseBuilder builder;
    builder.question("France?", "Paris").level(2).attempts(4).fails(1).tested_ago(one_day);
    builder.question("Italy?", "Rome");
    builder.question("Capital of France?", "Paris");
    open_with_current(builder);
    course.params.invert = inverted;
    course.set_side_fields();
    display.show_record(1);
    before = file();
}

void RecordEditorTest::begin_new(const std::string& question, const std::string& answer)
{
    editor.begin_new_record();
    view.type({question, answer});
}

void RecordEditorTest::begin_change(const std::string& question, const std::string& answer)
{
    editor.begin_edit();
    view.type({question, answer});
}

void RecordEditorTest::expect_open(const std::string& question, const std::string& answer)
{
    EXPECT_TRUE(editor.editing());
    EXPECT_TRUE(view.open());
    EXPECT_EQ(view.typed().question, question);
    EXPECT_EQ(view.typed().answer, answer);
    EXPECT_NE(view.status(), saved);
}

void RecordEditorTest::expect_left(const std::string& question, const std::string& answer)
{
    EXPECT_FALSE(editor.editing());
    EXPECT_FALSE(view.open());
    EXPECT_EQ(view.typed().question, question);
    EXPECT_EQ(view.typed().answer, answer);
    EXPECT_NE(view.status(), saved);
}

void RecordEditorTest::expect_texts(std::size_t index, const std::string& q, const std::string& a) const
{
    const auto rows = file().qa;
    ASSERT_GT(rows.size(), index);
    EXPECT_EQ(rows.at(index).q, q);
    EXPECT_EQ(rows.at(index).a, a);
}

std::string RecordEditorTest::many(const std::string& text, int times)
{
    std::string result;
    for (int i = 0; i < times; ++i)
        result += text;
    return result;
}

} // namespace cuedrill::drill
