#include "bank/record_bank.h"
#include "common/errors.h"
#include "fakes/course_builder.h"
#include "fakes/recording_database.h"
#include "fakes/temp_folder.h"

#include <chrono>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace cuedrill::bank {
namespace {

using namespace std::chrono_literals;

using fakes::Operation;
using fakes::QaRow;
using platform::DatabaseError;
using platform::DatabaseErrorKind;

/// A course of three records; the first has a history in both directions, and the third repeats its answer.
class RecordsOfACourse : public testing::Test {
protected:
    void SetUp() override
    {
        builder.question("France?", "Paris")
            .level(2)
            .attempts(4)
            .fails(1)
            .tested_ago(24h)
            .shown_ago(12h)
            .inverted()
            .level(3)
            .attempts(6)
            .fails(2)
            .tested_ago(48h)
            .shown_ago(36h);
        builder.question("Italy?", "Rome").level(1).attempts(1).fails(0).tested_ago(1h);
        builder.question("Capital of France?", "Paris");
        path = builder.write(folder);
        course.db_path = path;
        course.apri_db();
        course.set_side_fields();
        course.record_count = course.count_records();
        before = stored();
    }

    void invert()
    {
        course.params.invert = true;
        course.set_side_fields();
    }

    [[nodiscard]] std::vector<QaRow> stored() const { return fakes::read_course(path).qa; }

    /// Expects the file and the values in memory unchanged.
    void expect_unchanged()
    {
        EXPECT_EQ(stored(), before);
        EXPECT_EQ(course.record_count, 3);
        EXPECT_EQ(database.transaction_depth(), 0);
    }

    static constexpr const char* vanished = "The question is no longer in the course; another program has deleted it.";

    fakes::TempFolder folder;
    fakes::RealEngine engine;
    fakes::RecordingDatabase database{engine.database};
    fakes::CourseBuilder builder;
    store::Course course{database};
    RecordBank bank{course, engine.text_compare};
    std::string path;
    std::vector<QaRow> before;
};

class ChangeRecord : public RecordsOfACourse {};

TEST_F(ChangeRecord, gives_new_texts_and_starts_the_counters_again_but_keeps_the_dates)
{
    bank.change_record(1, "FRANCE?", "Lyon");
    QaRow changed = before.at(0);
    changed.q = "FRANCE?";
    changed.a = "Lyon";
    changed.q_side.attempts = changed.q_side.fails = changed.q_side.successes = 0;
    changed.a_side.attempts = changed.a_side.fails = changed.a_side.successes = 0;
    EXPECT_EQ(stored(), (std::vector{changed, before.at(1), before.at(2)}));
    EXPECT_EQ(course.record_count, 3);
    EXPECT_EQ(database.transaction_depth(), 0);
}

TEST_F(ChangeRecord, starts_the_counters_again_when_the_texts_stay)
{
    bank.change_record(2, "Italy?", "Rome");
    const QaRow changed = stored().at(1);
    EXPECT_EQ(changed.q_side,
              (fakes::SideRow{0, 0, 0, before.at(1).q_side.date_last_test, before.at(1).q_side.date_last_show}));
    EXPECT_EQ(changed.a_side, (fakes::SideRow{0, 0, 0, std::nullopt, std::nullopt}));
}

TEST_F(ChangeRecord, puts_the_question_on_the_asked_side_of_an_inverted_course)
{
    invert();
    bank.change_record(2, "Roma", "Italia?");
    EXPECT_EQ(stored().at(1).q, "Italia?");
    EXPECT_EQ(stored().at(1).a, "Roma");
}

TEST_F(ChangeRecord, that_has_vanished_is_an_error_and_changes_nothing)
{
    try {
        bank.change_record(4, "Spain?", "Madrid");
        FAIL() << "not refused";
    } catch (const store::RecordGone& error) {
        EXPECT_STREQ(error.what(), vanished);
    }
    expect_unchanged();
}

TEST_F(ChangeRecord, that_is_refused_changes_nothing_and_leaves_no_row_in_progress)
{
    try {
        bank.change_record(1, "France?", std::string(201, 'a'));
        FAIL() << "not refused";
    } catch (const DatabaseError& error) {
        EXPECT_EQ(error.kind(), DatabaseErrorKind::constraint);
    }
    expect_unchanged();
    bank.change_record(1, "France?", std::string(200, 'a'));
    EXPECT_EQ(stored().at(0).a, std::string(200, 'a'));
}

class FailingChange : public RecordsOfACourse, public testing::WithParamInterface<Operation> {};

TEST_P(FailingChange, changes_nothing_and_may_be_repeated)
{
    database.fail_at(GetParam(), 1, DatabaseErrorKind::locked);
    EXPECT_THROW(bank.change_record(1, "France?", "Lyon"), DatabaseError);
    expect_unchanged();
    bank.change_record(1, "France?", "Lyon");
    EXPECT_EQ(stored().at(0).a, "Lyon");
    EXPECT_EQ(stored().at(0).q_side.attempts, 0);
}

INSTANTIATE_TEST_SUITE_P(Steps, FailingChange,
                         testing::Values(Operation::begin, Operation::execute, Operation::commit));

class DeleteRecord : public RecordsOfACourse {};

TEST_F(DeleteRecord, takes_that_record_alone_out_of_the_course)
{
    bank.delete_record(2);
    EXPECT_EQ(stored(), (std::vector{before.at(0), before.at(2)}));
    EXPECT_EQ(course.record_count, 2);
    EXPECT_EQ(database.transaction_depth(), 0);
}

TEST_F(DeleteRecord, never_gives_its_number_to_another_one)
{
    bank.delete_record(3);
    EXPECT_EQ(bank.insert_record("Spain?", "Madrid"), 4);
    EXPECT_EQ(course.record_count, 3);
}

TEST_F(DeleteRecord, that_has_vanished_is_an_error_and_is_not_counted)
{
    try {
        bank.delete_record(4);
        FAIL() << "not refused";
    } catch (const store::RecordGone& error) {
        EXPECT_STREQ(error.what(), vanished);
    }
    expect_unchanged();
}

class FailingDelete : public RecordsOfACourse, public testing::WithParamInterface<Operation> {};

TEST_P(FailingDelete, deletes_nothing_and_may_be_repeated)
{
    database.fail_at(GetParam(), 1, DatabaseErrorKind::read_only);
    EXPECT_THROW(bank.delete_record(1), DatabaseError);
    expect_unchanged();
    bank.delete_record(1);
    EXPECT_EQ(stored(), (std::vector{before.at(1), before.at(2)}));
    EXPECT_EQ(course.record_count, 2);
}

INSTANTIATE_TEST_SUITE_P(Steps, FailingDelete,
                         testing::Values(Operation::begin, Operation::execute, Operation::commit));

/// The hook notes what the course is about to lose.
class LostTexts : public RecordsOfACourse {
protected:
    void SetUp() override
    {
        RecordsOfACourse::SetUp();
        bank.before_loss = [this](Loss loss, const store::QaTexts& texts) {
            lost.push_back((loss == Loss::deleted ? "deleted " : "replaced ") + texts.q + " " + texts.a);
            EXPECT_EQ(database.transaction_depth(), 1) << "nothing is committed yet";
            EXPECT_EQ(database.count(Operation::commit), commits);
        };
    }

    int commits = 0; ///< of earlier changes
    std::vector<std::string> lost;
};

TEST_F(LostTexts, of_a_deletion_are_those_that_are_stored)
{
    engine.database.execute("Update qa set a = ' Lutetia' || char(13, 10) where cnt = 1");
    bank.delete_record(1);
    EXPECT_EQ(lost, std::vector<std::string>{"deleted France?  Lutetia\r\n"});
}

TEST_F(LostTexts, of_a_change_are_those_before_it)
{
    bank.change_record(1, "France?", "Lutetia");
    commits = 1;
    bank.change_record(1, "Gaul?", "Lutetia");
    EXPECT_EQ(lost, (std::vector<std::string>{"replaced France? Paris", "replaced France? Lutetia"}));
}

TEST_F(LostTexts, are_those_of_the_columns_in_an_inverted_course)
{
    invert();
    bank.change_record(1, "Lutetia", "Gaul?");
    EXPECT_EQ(lost, std::vector<std::string>{"replaced France? Paris"});
}

TEST_F(LostTexts, are_none_where_no_text_changes)
{
    bank.change_record(1, "France?", "Paris");
    EXPECT_THROW(bank.change_record(1, "France?", std::string(201, 'x')), DatabaseError);
    EXPECT_THROW(bank.change_record(4, "Spain?", "Madrid"), store::RecordGone);
    EXPECT_THROW(bank.delete_record(4), store::RecordGone);
    EXPECT_TRUE(lost.empty());
}

class InsertRecord : public RecordsOfACourse {};

TEST_F(InsertRecord, gives_the_number_of_the_new_record)
{
    EXPECT_EQ(bank.insert_record("Spain?", "Madrid"), 4);
    EXPECT_EQ(stored().at(3).q, "Spain?");
    EXPECT_EQ(course.record_count, 4);
}

class Found : public RecordsOfACourse {};

TEST_F(Found, finds_a_text_in_its_column_without_regard_to_case)
{
    EXPECT_TRUE(bank.find("q", "France?").has_value());
    EXPECT_TRUE(bank.find("q", "fRANCE?").has_value());
    const auto paris = bank.find("a", "PARIS");
    ASSERT_TRUE(paris.has_value());
    EXPECT_EQ(store::nz(paris->cnt), 1);
    EXPECT_EQ(paris->answer, "Paris");
    EXPECT_FALSE(bank.find("q", "Paris").has_value());
    EXPECT_FALSE(bank.find("a", "France?").has_value());
    EXPECT_FALSE(bank.find("q", "France").has_value());
}

TEST_F(Found, goes_by_the_column_in_an_inverted_course_too)
{
    invert();
    const auto france = bank.find("q", "France?");
    ASSERT_TRUE(france.has_value());
    EXPECT_EQ(france->answer, "France?");
    EXPECT_FALSE(bank.find("q", "Paris").has_value());
}

TEST(TooLong, says_which_text_does_not_fit_and_how_long_it_is)
{
    const std::string fits(200, 'x');
    EXPECT_EQ(too_long(fits, fits), "");
    EXPECT_EQ(too_long(fits + "x", fits), "The question has 201 characters; 200 fit.");
    EXPECT_EQ(too_long(fits, fits + "thirteen more"), "The answer has 213 characters; 200 fit.");
    EXPECT_EQ(too_long(fits + "xx", fits + "x"),
              "The question has 202 characters; 200 fit. The answer has 201 characters; 200 fit.");
}

TEST(TooLong, counts_characters_and_not_bytes)
{
    std::string birds;
    for (int i = 0; i < 200; ++i)
        birds += "\U0001F426";
    EXPECT_EQ(too_long(birds, ""), "");
    EXPECT_EQ(too_long("", birds + "é"), "The answer has 201 characters; 200 fit.");
}

} // namespace
} // namespace cuedrill::bank
