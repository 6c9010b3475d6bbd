#include "course_fixture.h"
#include "store/records.h"
#include "store/schema.h"

#include <chrono>
#include <gtest/gtest.h>

namespace cuedrill::store {
namespace {

using fakes::CourseBuilder;
using fakes::CourseContents;
using fakes::Operation;
using fakes::QaRow;
using platform::DatabaseError;
using platform::DatabaseErrorKind;
using std::chrono::hours;

class Records : public CourseFixture {
protected:
    const SideFields q_side = set_side_fields(false).Q_FIELD;
    const SideFields a_side = set_side_fields(true).Q_FIELD;

    void open_two()
    {
        CourseBuilder builder(clock.time);
        builder.question("Rome", "Italy").level(3).attempts(7).fails(2).tested_ago(hours(5)).shown_ago(hours(4));
        builder.question("Paris", "France").inverted().level(1).attempts(32767).tested_ago(hours(2)).never_shown();
        open(builder);
        database.forget();
    }

    [[nodiscard]] common::DateTime ago(hours time) const
    {
        return common::DateTime::from_seconds(clock.time.seconds() - std::chrono::seconds(time).count());
    }

    /// The engine's query plan for the last statement, which must have one text parameter.
    [[nodiscard]] std::string plan_of_last_statement()
    {
        std::string plan;
        for (const platform::Row row :
             engine.database.query("explain query plan " + database.statements().back(), {std::string("x")}))
            plan += stored_text(row.field("detail")) + "\n";
        return plan;
    }
};

TEST_F(Records, are_found_by_their_number)
{
    open_two();
    EXPECT_EQ(find_record(database, 1), (QaRecord{.cnt = 1,
                                                  .q = "Rome",
                                                  .a = "Italy",
                                                  .q_attempts = 7,
                                                  .q_fails = 2,
                                                  .q_successes = 3,
                                                  .q_date_last_test = ago(hours(5)),
                                                  .q_date_last_show = ago(hours(4))}));
    EXPECT_EQ(find_record(database, 2), (QaRecord{.cnt = 2,
                                                  .q = "Paris",
                                                  .a = "France",
                                                  .a_attempts = 32767,
                                                  .a_successes = 1,
                                                  .a_date_last_test = ago(hours(2))}));
    EXPECT_EQ(find_record(database, 3), std::nullopt);
    EXPECT_EQ(find_record(database, 0), std::nullopt);
    EXPECT_EQ(database.statement_count(), 4) << "one statement each";
}

TEST_F(Records, all_columns_are_told_apart)
{
    open(CourseBuilder());
    engine.database.execute("Insert into qa values (5, 'q', 'a', 1, 2, 3, 4, 6, 7, 10.5, 11.5, 12.5, 13.5)");
    const auto day = [](double number) { return common::DateTime::from_day_number(number); };
    EXPECT_EQ(find_record(database, 5), (QaRecord{.cnt = 5,
                                                  .q = "q",
                                                  .a = "a",
                                                  .q_attempts = 1,
                                                  .a_attempts = 2,
                                                  .q_fails = 3,
                                                  .a_fails = 4,
                                                  .q_successes = 6,
                                                  .a_successes = 7,
                                                  .q_date_last_test = day(10.5),
                                                  .a_date_last_test = day(11.5),
                                                  .q_date_last_show = day(12.5),
                                                  .a_date_last_show = day(13.5)}));
}

TEST_F(Records, give_0_for_counters_and_nothing_for_texts_and_dates_that_are_null)
{
    open(CourseBuilder());
    engine.database.execute("Insert into qa (cnt) values (9)");
    EXPECT_EQ(find_record(database, 9), QaRecord{.cnt = 9});
}

TEST_F(Records, give_each_side_what_belongs_to_it)
{
    open(CourseBuilder());
    engine.database.execute("Insert into qa values (5, 'q', 'a', 1, 2, 3, 4, 6, 7, 10.5, 11.5, 12.5, null)");
    const QaRecord record = find_record(database, 5).value();
    const RecordSide q = side_of(record, q_side);
    EXPECT_EQ(q.text, "q");
    EXPECT_EQ(q.attempts, 1);
    EXPECT_EQ(q.fails, 3);
    EXPECT_EQ(q.successes, 6);
    EXPECT_EQ(q.date_last_test, record.q_date_last_test);
    EXPECT_EQ(q.date_last_show, record.q_date_last_show);
    const RecordSide a = side_of(record, a_side);
    EXPECT_EQ(a.text, "a");
    EXPECT_EQ(a.attempts, 2);
    EXPECT_EQ(a.fails, 4);
    EXPECT_EQ(a.successes, 7);
    EXPECT_EQ(a.date_last_test, record.a_date_last_test);
    EXPECT_EQ(a.date_last_show, std::nullopt);
}

TEST_F(Records, texts_go_to_the_columns_of_their_sides)
{
    EXPECT_EQ(texts_by_column(q_side, "asked", "answer").q, "asked");
    EXPECT_EQ(texts_by_column(q_side, "asked", "answer").a, "answer");
    EXPECT_EQ(texts_by_column(a_side, "asked", "answer").q, "answer");
    EXPECT_EQ(texts_by_column(a_side, "asked", "answer").a, "asked");
}

TEST_F(Records, the_first_with_a_text_is_the_one_of_the_lowest_number_in_any_case)
{
    CourseBuilder builder;
    builder.question("rome", "one").number(30);
    builder.question("Paris", "ROME").number(4);
    builder.question("ROME", "two").number(7);
    builder.question("Éire", "Rome").number(2);
    open(builder);
    EXPECT_EQ(first_with_text(database, "q", "Rome").value().cnt, 7);
    EXPECT_EQ(first_with_text(database, "a", "rome").value().cnt, 2);
    EXPECT_EQ(first_with_text(database, "q", "éIRE").value().cnt, 2);
    EXPECT_EQ(first_with_text(database, "q", "Eire"), std::nullopt);
    EXPECT_EQ(first_with_text(database, "q", ""), std::nullopt);
    EXPECT_EQ(first_with_text(database, "q", "Rom"), std::nullopt);
    EXPECT_EQ(first_with_text(database, "q", "'; Delete from qa"), std::nullopt);
}

TEST_F(Records, a_text_is_looked_up_in_the_index_of_its_column)
{
    open_two();
    static_cast<void>(first_with_text(database, "q", "Rome"));
    EXPECT_EQ(plan_of_last_statement(), "SEARCH qa USING INDEX qa_q (q=?)\n");
    static_cast<void>(first_with_text(database, "a", "Rome"));
    EXPECT_EQ(plan_of_last_statement(), "SEARCH qa USING INDEX qa_a (a=?)\n");
}

TEST_F(Records, a_text_is_found_in_a_course_without_indexes_too)
{
    open_two();
    engine.database.execute("Drop index qa_q");
    EXPECT_EQ(first_with_text(database, "q", "ROME").value().cnt, 1);
}

TEST_F(Records, a_new_one_has_counters_of_0_no_dates_and_a_number_of_its_own)
{
    open_two();
    EXPECT_EQ(insert_record(database, next_cnt(database), {.q = "Bern", .a = "Switzerland"}), 3);
    const fakes::SideRow fresh{.attempts = 0, .fails = 0, .successes = 0};
    EXPECT_EQ(file().qa.at(2), (QaRow{.cnt = 3, .q = "Bern", .a = "Switzerland", .q_side = fresh, .a_side = fresh}));
}

TEST_F(Records, the_number_of_a_deleted_one_never_returns)
{
    open_two();
    EXPECT_EQ(delete_record(database, 2), 1);
    EXPECT_EQ(insert_record(database, next_cnt(database), {.q = "Bern", .a = "Switzerland"}), 3);
    EXPECT_EQ(delete_record(database, 3), 1);
    course.close();
    course.apri_db();
    EXPECT_EQ(insert_record(database, next_cnt(database), {.q = "Oslo", .a = "Norway"}), 4);
}

TEST_F(Records, the_next_number_is_the_one_that_the_engine_would_give)
{
    open_two();
    for (const char* change :
         {"Delete from sqlite_sequence", "Update sqlite_sequence set seq=9 where name='qa'",
          "Update sqlite_sequence set seq='x' where name='qa'", "Update sqlite_sequence set seq=null where name='qa'",
          "Delete from qa", "Insert into qa (cnt) values (-9)", "Insert into qa (cnt) values (40000)"}) {
        engine.database.execute(change);
        const std::int64_t next = next_cnt(database);
        engine.database.execute("Insert into qa (q) values ('x')");
        EXPECT_EQ(next, single_number(database, "Select last_insert_rowid()")) << change;
    }
}

TEST_F(Records, none_has_a_number_beyond_16_bits)
{
    open_two();
    for (const std::int64_t largest : {std::int64_t{32767}, std::int64_t{40000}, std::int64_t{9223372036854775807}}) {
        engine.database.execute("Update qa set cnt=?1 where cnt=(Select max(cnt) from qa)", {largest});
        const CourseContents before = file();
        EXPECT_THROW(insert_record(database, next_cnt(database), {.q = "q", .a = "a"}), common::OverflowError);
        EXPECT_EQ(file(), before);
    }
}

TEST_F(Records, a_taken_number_is_refused)
{
    open_two();
    const CourseContents before = file();
    EXPECT_THROW(insert_record(database, 2, {.q = "q", .a = "a"}), DatabaseError);
    EXPECT_EQ(file(), before);
}

TEST_F(Records, new_texts_begin_the_counters_again_and_leave_the_dates)
{
    open_two();
    const CourseContents before = file();
    EXPECT_EQ(change_texts(database, 1, {.q = "Roma", .a = "Italia"}), 1);
    QaRow expected = before.qa.at(0);
    expected.q = "Roma";
    expected.a = "Italia";
    for (fakes::SideRow* side : {&expected.q_side, &expected.a_side})
        side->attempts = side->fails = side->successes = 0;
    EXPECT_EQ(file().qa.at(0), expected);
    EXPECT_EQ(file().qa.at(1), before.qa.at(1));
}

TEST_F(Records, texts_that_are_too_long_are_refused_before_anything_is_written)
{
    open_two();
    const CourseContents before = file();
    std::string fits;
    for (int i = 0; i < longest_text; ++i)
        fits += "é";
    const auto refused = [](const std::function<void()>& write) -> std::string {
        try {
            write();
        } catch (const DatabaseError& error) {
            EXPECT_EQ(error.kind(), DatabaseErrorKind::constraint);
            return error.what();
        }
        return "stored";
    };
    EXPECT_EQ(refused([&] { insert_record(database, 3, {.q = fits + "x", .a = "a"}); }),
              "The text in column q has 201 characters; 200 fit.");
    EXPECT_EQ(refused([&] { insert_record(database, 3, {.q = "q", .a = fits + "x"}); }),
              "The text in column a has 201 characters; 200 fit.");
    // The engine's own check counts characters only up to the first NUL.
    EXPECT_EQ(refused([&] { insert_record(database, 3, {.q = "q", .a = std::string(201, '\0')}); }),
              "The text in column a has 201 characters; 200 fit.");
    EXPECT_EQ(refused([&] { static_cast<void>(change_texts(database, 1, {.q = fits + "x", .a = "a"})); }),
              "The text in column q has 201 characters; 200 fit.");
    EXPECT_EQ(database.statement_count(), 0);
    EXPECT_EQ(file(), before);
    EXPECT_EQ(change_texts(database, 1, {.q = fits, .a = fits}), 1);
    EXPECT_EQ(file().qa.at(0).a, fits);
}

TEST_F(Records, a_verdict_is_one_statement_about_one_side)
{
    open_two();
    CourseContents expected = file();
    const StoredVerdict verdict{.successes = 4, .attempts = 8, .fails = 3, .tested = clock.time};
    EXPECT_EQ(store_verdict(database, 1, q_side, verdict), 1);
    EXPECT_EQ(database.statement_count(), 1);
    expected.qa.at(0).q_side = {
        .attempts = 8, .fails = 3, .successes = 4, .date_last_test = clock.time, .date_last_show = clock.time};
    EXPECT_EQ(file(), expected);
    EXPECT_EQ(store_verdict(database, 2, a_side, verdict), 1);
    expected.qa.at(1).a_side = expected.qa.at(0).q_side;
    EXPECT_EQ(file(), expected);
}

TEST_F(Records, a_verdict_without_failures_leaves_their_number_be_it_null)
{
    open_two();
    const StoredVerdict verdict{.successes = 4, .attempts = 8, .fails = std::nullopt, .tested = clock.time};
    EXPECT_EQ(store_verdict(database, 1, q_side, verdict), 1);
    EXPECT_EQ(store_verdict(database, 2, q_side, verdict), 1);
    EXPECT_EQ(file().qa.at(0).q_side.fails, 2);
    EXPECT_EQ(file().qa.at(1).q_side.fails, std::nullopt);
    EXPECT_EQ(file().qa.at(1).q_side.attempts, 8);
}

TEST_F(Records, a_show_is_stamped_and_a_level_set_without_touching_anything_else)
{
    open_two();
    CourseContents expected = file();
    EXPECT_EQ(stamp_last_show(database, 2, q_side, clock.time), 1);
    expected.qa.at(1).q_side.date_last_show = clock.time;
    EXPECT_EQ(file(), expected);
    EXPECT_EQ(set_level(database, 2, a_side, 10), 1);
    expected.qa.at(1).a_side.successes = 10;
    EXPECT_EQ(file(), expected);
}

TEST_F(Records, one_that_has_vanished_is_seen_by_each_writer)
{
    open_two();
    const CourseContents before = file();
    EXPECT_EQ(change_texts(database, 9, {.q = "q", .a = "a"}), 0);
    EXPECT_EQ(delete_record(database, 9), 0);
    EXPECT_EQ(store_verdict(database, 9, q_side, {}), 0);
    EXPECT_EQ(stamp_last_show(database, 9, q_side, clock.time), 0);
    EXPECT_EQ(set_level(database, 9, q_side, 1), 0);
    EXPECT_EQ(file(), before);
}

TEST_F(Records, a_failing_statement_is_reported_and_writes_nothing)
{
    open_two();
    const CourseContents before = file();
    const std::function<void()> calls[] = {[&] { static_cast<void>(find_record(database, 1)); },
                                           [&] { static_cast<void>(first_with_text(database, "q", "Rome")); },
                                           [&] { insert_record(database, 3, {.q = "q", .a = "a"}); },
                                           [&] { static_cast<void>(change_texts(database, 1, {.q = "q", .a = "a"})); },
                                           [&] { static_cast<void>(delete_record(database, 1)); },
                                           [&] { static_cast<void>(store_verdict(database, 1, q_side, {})); },
                                           [&] { static_cast<void>(stamp_last_show(database, 1, q_side, clock.time)); },
                                           [&] { static_cast<void>(set_level(database, 1, q_side, 1)); }};
    for (const auto& call : calls) {
        database.fail_at_statement(1);
        EXPECT_THROW(call(), DatabaseError);
    }
    EXPECT_EQ(file(), before);
}

} // namespace
} // namespace cuedrill::store
