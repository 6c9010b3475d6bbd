#include "drill/record_lists_fixture.h"

#include "app/start/start.h"
#include "drill/display.h"
#include "drill/last_list.h"
#include "drill/record_lists.h"
#include "store/course.h"

#include <algorithm>

namespace cuedrill::drill {

RecordListsTest::RecordListsTest()
{
    // A box may stay open for hours, so no transaction and no statement may be open meanwhile, and the pointer must be
    // normal.
    desktop.on_box = [this] {
        EXPECT_EQ(database.transaction_depth(), 0);
        EXPECT_EQ(database.open_recordsets(), 0);
        EXPECT_EQ(desktop.pointer_depth, 0);
    };
}

RecordListsTest::~RecordListsTest() = default;

RecordListsTest::NewRecord RecordListsTest::add(const std::string& question, const std::string& answer)
{
    fakes::QuestionBuilder q_side = inverted ? builder.question(answer, question) : builder.question(question, answer);
    fakes::QuestionBuilder a_side = q_side;
    a_side.inverted();
    return inverted ? NewRecord{a_side, q_side} : NewRecord{q_side, a_side};
}

void RecordListsTest::open_course()
{
    builder.number_param("invert", inverted ? 1 : 0);
    path = builder.write(folder);
    const auto rows = file().qa;
    const bool some_not_passed = std::any_of(rows.begin(), rows.end(), [this](const fakes::QaRow& row) {
        return (inverted ? row.a_side : row.q_side).successes.value_or(5) < 5;
    });
    if (!some_not_passed)
        desktop.expect_box("You have passed level 5 for all questions.");
    make_program();
    user([this] { started = logic->start.run(path); });
    ASSERT_TRUE(started);
    desktop.check_all_shown();
    desktop.boxes.clear();
    form1.journal.clear();
    database.forget();
}

void RecordListsTest::open_course_with_items(int count)
{
    open_course();
    change_course("Insert into qa (q, a) with recursive numbers (n) as (select 1 union all select n + 1 from "
                  "numbers where n < " +
                  std::to_string(count) + ") select 'item ' || n, 'item ' || n from numbers");
}

void RecordListsTest::show(common::Int16 cnt)
{
    user([&] { logic->display.ask(cnt); });
    database.forget();
}

void RecordListsTest::begin_new(const std::string& question, const std::string& answer)
{
    toolbar(9);
    form1.Text_q.text_value = question;
    form1.Text_a.text_value = answer;
}

void RecordListsTest::find_question(std::optional<std::string> text)
{
    desktop.expect_input("String?", std::move(text));
    choose("m_find_q");
}

void RecordListsTest::find_answer(std::optional<std::string> text)
{
    desktop.expect_input("String?", std::move(text));
    choose("m_find_a");
}

void RecordListsTest::click(std::size_t place)
{
    user([&] { form1.listav.click(place); });
}

void RecordListsTest::click_line(const std::string& line)
{
    user([&] { logic->lists.listav_click(line); });
}

void RecordListsTest::expect_question_about_saving(platform::BoxAnswer answer)
{
    desktop.expect_box_like({.text = "Do you want to save the changes?",
                             .buttons = platform::BoxButtons::yes_no,
                             .icon = platform::BoxIcon::question,
                             .must_be_answered = true},
                            answer);
}

void RecordListsTest::expect_warning(const std::string& text)
{
    desktop.expect_box_like({.text = text, .icon = platform::BoxIcon::exclamation}, platform::BoxAnswer::ok);
}

std::string RecordListsTest::unreadable() const
{
    return "The course " + path + " could not be read or written.\r\n\r\nThe disk is full.";
}

std::string RecordListsTest::refusal_of(const std::string& sql)
{
    try {
        static_cast<void>(engine.database.open_recordset(sql));
    } catch (const platform::DatabaseError& error) {
        return error.what();
    }
    ADD_FAILURE() << "Not refused: " << sql;
    return {};
}

void RecordListsTest::expect_status(const std::string& text)
{
    clock.steady_seconds_more += 3600;
    form1.timer_250_ms.tick();
    EXPECT_EQ(status(), text);
}

void RecordListsTest::expect_chosen(common::Int16 cnt)
{
    EXPECT_EQ(logic->state.shown.current_cnt(), cnt);
    EXPECT_EQ(question(), inverted ? stored(cnt).a : stored(cnt).q);
    EXPECT_FALSE(list_shown());
}

Lines RecordListsTest::recalled()
{
    user([this] { logic->last_list.recall_find_list(); });
    return lines();
}

std::ptrdiff_t RecordListsTest::times_begun(std::string_view noted) const
{
    return std::count_if(form1.journal.begin(), form1.journal.end(),
                         [&](const std::string& entry) { return entry.starts_with(noted); });
}

std::string direction_name(const testing::TestParamInfo<bool>& is_inverted)
{
    return is_inverted.param ? "inverted" : "straight";
}

} // namespace cuedrill::drill
