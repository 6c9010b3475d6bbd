// When what is due is counted, and what the window shows of it.
#include "drill/drill_fixture.h"
#include "store/course.h"

#include <algorithm>
#include <string>
#include <vector>

namespace cuedrill::drill {
namespace {

class DuePictureTest : public DrillFixture {
protected:
    static common::DateTime at(int year, int month, int day, int hour, int minute, int second = 0)
    {
        return common::DateTime::from_fields(
            {.year = year, .month = month, .day = day, .hour = hour, .minute = minute, .second = second});
    }

    /// Of 29/Nov/2026, a Sunday, at noon.
    static common::DateTime sunday_noon() { return at(2026, 11, 29, 12, 0); }

    /// Counts at another time of the clock.
    void count_at(common::DateTime time)
    {
        clock.time = time;
        count();
    }

    [[nodiscard]] std::vector<std::string> captions() const
    {
        std::vector<std::string> texts;
        for (const platform::DueBar& bar : form1.screen.due_picture.bars)
            texts.push_back(bar.caption);
        return texts;
    }

    void count()
    {
        user([this] { form1.timer_due.tick(); });
    }

    [[nodiscard]] std::vector<std::string> figures() const
    {
        std::vector<std::string> texts;
        for (const platform::DueBar& bar : form1.screen.due_picture.bars)
            texts.push_back(bar.figure);
        return texts;
    }

    [[nodiscard]] std::string words() const { return form1.screen.due_picture.words; }
};

TEST_F(DuePictureTest, shows_what_is_due_now_and_on_each_day_and_says_it_in_words)
{
    clock.time = sunday_noon();
    builder = fakes::CourseBuilder(clock.time);
    builder.question("due").level(1).tested_ago(24h);
    builder.question("due, too").level(1).tested_ago(24h);
    builder.question("this evening").level(3).tested_ago(1h);
    builder.question("tomorrow").level(4).tested_ago(24h);
    builder.question("on Saturday").level(5).tested_ago(24h);
    builder.question("after a week").level(6).tested_ago(24h);
    builder.question("new");
    builder.number_param("target_level", 7);
    start();
    count();
    EXPECT_EQ(figures(), (std::vector<std::string>{"2", "1", "1", "0", "0", "0", "0", "1", "1"}));
    EXPECT_EQ(words(), "2 questions are due now, 1 more today, tomorrow 1, Tuesday 0, Wednesday 0, Thursday 0, "
                       "Friday 0, Saturday 1. 1 question is new.");
    std::vector<std::int64_t> wholes;
    for (const platform::DueBar& bar : form1.screen.due_picture.bars)
        wholes.push_back(bar.whole);
    EXPECT_EQ(captions(), (std::vector<std::string>{"Now", "Today", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat", "New"}));
    EXPECT_EQ(wholes, (std::vector<std::int64_t>{2, 2, 2, 2, 2, 2, 2, 2, 7}));
}

TEST_F(DuePictureTest, says_that_nothing_is_due)
{
    builder.question("passed").level(10).tested_ago(1h);
    desktop.expect_box("You have passed level 5 for all questions.");
    start();
    count();
    EXPECT_TRUE(words().starts_with("No question is due now, 0 more today, tomorrow 0, ")) << words();
    EXPECT_TRUE(words().ends_with(". No question is new.")) << words();
}

TEST_F(DuePictureTest, is_empty_until_the_figures_are_counted)
{
    start_with_three_questions();
    EXPECT_EQ(words(), "");
    EXPECT_EQ(figures(), (std::vector<std::string>(platform::due_bars)));
    count();
    EXPECT_NE(words(), "");
}

TEST_F(DuePictureTest, is_no_part_of_a_verdict)
{
    start_with_three_questions();
    count();
    const auto counts_of_due = [this] {
        const std::vector<std::string> statements = database.statements();
        return std::count_if(statements.begin(), statements.end(),
                             [](const std::string& sql) { return sql.starts_with("With span"); });
    };
    const auto before = counts_of_due();
    const std::string words_before = words();
    yes();
    yes();
    yes();
    EXPECT_EQ(counts_of_due(), before);
    EXPECT_EQ(words(), words_before);
    EXPECT_EQ(form1.timer_due.period, 50ms);
    count();
    EXPECT_EQ(counts_of_due(), before + 1);
    EXPECT_NE(words(), words_before);
}

TEST_F(DuePictureTest, is_counted_again_each_minute)
{
    builder.question("of level 1").level(1).tested_ago(4min);
    start();
    count();
    EXPECT_EQ(figures().front(), "0");
    EXPECT_TRUE(form1.timer_due.running);
    EXPECT_EQ(form1.timer_due.period, 1min);
    clock.advance_seconds(61);
    count();
    EXPECT_EQ(figures().front(), "1");
}

TEST_F(DuePictureTest, moves_on_by_a_day_at_midnight)
{
    clock.time = at(2026, 11, 29, 23, 59, 30);
    builder = fakes::CourseBuilder(clock.time);
    builder.question("at 23:59:51").level(4).tested_ago(48h - 20s);
    builder.question("on Monday").level(4).tested_ago(24h);
    builder.question("on Saturday").level(5).tested_ago(24h);
    builder.question("on the next Sunday").level(5).tested_ago(1s);
    builder.number_param("target_level", 7);
    start();
    count();
    EXPECT_EQ(captions(), (std::vector<std::string>{"Now", "Today", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat", "New"}));
    EXPECT_EQ(figures(), (std::vector<std::string>{"0", "1", "1", "0", "0", "0", "0", "1", "0"}));
    count_at(at(2026, 11, 30, 0, 0, 30));
    EXPECT_EQ(captions(), (std::vector<std::string>{"Now", "Today", "Tue", "Wed", "Thu", "Fri", "Sat", "Sun", "New"}));
    EXPECT_EQ(figures(), (std::vector<std::string>{"1", "1", "0", "0", "0", "0", "1", "1", "0"}));
    EXPECT_EQ(words(),
              "1 question is due now, 1 more today, tomorrow 0, Wednesday 0, Thursday 0, Friday 0, Saturday 1, "
              "Sunday 1. No question is new.");
}

TEST_F(DuePictureTest, follows_a_clock_that_is_put_back)
{
    clock.time = sunday_noon();
    builder = fakes::CourseBuilder(clock.time);
    builder.question("tested at 11").level(1).tested_ago(1h);
    start();
    count();
    EXPECT_EQ(figures(), (std::vector<std::string>{"1", "0", "0", "0", "0", "0", "0", "0", "0"}));
    count_at(at(2026, 11, 29, 10, 0));
    EXPECT_EQ(figures(), (std::vector<std::string>{"0", "1", "0", "0", "0", "0", "0", "0", "0"}));
    count_at(at(2026, 11, 27, 12, 0));
    EXPECT_EQ(captions().at(3), "Sun");
    EXPECT_EQ(figures(), (std::vector<std::string>{"0", "0", "0", "1", "0", "0", "0", "0", "0"}));
    count_at(at(2026, 1, 1, 12, 0));
    EXPECT_EQ(figures(), (std::vector<std::string>(platform::due_bars, "0"))) << "due after a week";
}

TEST_F(DuePictureTest, leaves_the_questions_on_their_dates_where_summer_time_begins)
{
    clock.time = at(2027, 3, 27, 23, 0); // a Saturday
    builder = fakes::CourseBuilder(clock.time);
    builder.question("at 02:30, an hour that is left out").level(4).tested_ago(48h - 3h - 30min);
    builder.question("on Sunday at 23:59:59").level(4).tested_ago(23h + 2s);
    builder.question("on Monday at 00:00:00").level(4).tested_ago(23h + 1s);
    start();
    count();
    EXPECT_EQ(figures(), (std::vector<std::string>{"0", "0", "2", "1", "0", "0", "0", "0", "0"}));
    count_at(at(2027, 3, 28, 1, 59, 59));
    EXPECT_EQ(figures(), (std::vector<std::string>{"0", "2", "1", "0", "0", "0", "0", "0", "0"}));
    count_at(at(2027, 3, 28, 3, 0));
    EXPECT_EQ(figures(), (std::vector<std::string>{"1", "1", "1", "0", "0", "0", "0", "0", "0"}));
    EXPECT_EQ(captions().at(2), "Mon");
}

TEST_F(DuePictureTest, waits_an_hour_longer_where_summer_time_ends)
{
    clock.time = at(2027, 10, 31, 2, 59, 59); // a Sunday
    builder = fakes::CourseBuilder(clock.time);
    builder.question("at 02:30").level(4).tested_ago(48h + 30min);
    builder.question("at 23:59:59").level(4).tested_ago(27h + 1s);
    start();
    count();
    EXPECT_EQ(figures(), (std::vector<std::string>{"1", "1", "0", "0", "0", "0", "0", "0", "0"}));
    count_at(at(2027, 10, 31, 2, 0));
    EXPECT_EQ(figures(), (std::vector<std::string>{"0", "2", "0", "0", "0", "0", "0", "0", "0"}));
    count_at(at(2027, 10, 31, 2, 30));
    EXPECT_EQ(figures(), (std::vector<std::string>{"1", "1", "0", "0", "0", "0", "0", "0", "0"}));
}

TEST_F(DuePictureTest, counts_further_than_the_numbers_of_records_go)
{
    start_with_three_questions();
    const std::string tested = std::to_string(clock.time.plus_days(-2000).day_number());
    engine.database.execute("With recursive n(i) as (values (1) union all Select i + 1 from n where i < 40000) "
                            "Insert into qa (cnt, q, a, q_successes, q_date_last_test) "
                            "Select -i, 'q', 'a', 1, case when i <= 33000 then " +
                            tested + " end from n");
    count();
    EXPECT_GE(form1.screen.due_picture.bars.front().count, 33000);
    EXPECT_GE(form1.screen.due_picture.bars.back().count, 7000);
    EXPECT_TRUE(words().starts_with(figures().front() + " questions are due now, ")) << words();
}

TEST_F(DuePictureTest, is_taken_away_where_the_figures_cannot_be_read)
{
    start_with_three_questions();
    count();
    database.fail_at(fakes::Operation::query);
    count();
    EXPECT_EQ(words(), "");
    EXPECT_TRUE(form1.timer_due.running);
    count();
    EXPECT_NE(words(), "");
}

TEST_F(DuePictureTest, is_no_more_counted_once_the_course_is_closed)
{
    start_with_three_questions();
    count();
    logic->course.close();
    const std::size_t before = database.statements().size();
    count();
    EXPECT_EQ(database.statements().size(), before);
    EXPECT_FALSE(form1.timer_due.running);
}

} // namespace
} // namespace cuedrill::drill
