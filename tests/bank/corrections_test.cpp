#include "bank/corrections.h"
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

class CorrectedRecord : public testing::Test {
protected:
    void SetUp() override
    {
        builder.question("Frnace?", "Paris").level(2).attempts(4).fails(1).tested_ago(24h).inverted().level(3);
        builder.question("Italy?", "Rome");
        course.db_path = builder.write(folder);
        course.apri_db();
        course.set_side_fields();
        before = rows();
    }

    [[nodiscard]] std::vector<fakes::QaRow> rows() const { return fakes::read_course(course.db_path).qa; }

    std::optional<Refusal> correct(const Correction& correction)
    {
        return correct_record(course, correction, engine.text_compare,
                              [this](const store::QaTexts& texts) { lost.push_back(texts.q + "|" + texts.a); });
    }

    void expect_refused(const Correction& correction, const std::string& words)
    {
        const auto refusal = correct(correction);
        ASSERT_TRUE(refusal);
        EXPECT_EQ(refusal->words, words);
        EXPECT_EQ(rows(), before);
        EXPECT_TRUE(lost.empty());
    }

    fakes::CourseBuilder builder;
    fakes::TempFolder folder;
    fakes::RealEngine engine;
    fakes::RecordingDatabase database{engine.database};
    store::Course course{database};
    std::vector<fakes::QaRow> before;
    std::vector<std::string> lost;
};

TEST_F(CorrectedRecord, has_the_new_text_and_its_history)
{
    EXPECT_FALSE(correct({.cnt = 1, .q = "France?"}));
    before[0].q = "France?";
    EXPECT_EQ(rows(), before);
    EXPECT_EQ(lost, std::vector<std::string>{"Frnace?|Paris"});
    EXPECT_FALSE(correct({.cnt = 1, .a = "Paris!"}));
    before[0].a = "Paris!";
    EXPECT_EQ(rows(), before);
}

TEST_F(CorrectedRecord, loses_nothing_when_its_texts_stay)
{
    EXPECT_FALSE(correct({.cnt = 1, .q = "Frnace?", .a = "Paris"}));
    EXPECT_EQ(rows(), before);
    EXPECT_TRUE(lost.empty());
}

TEST_F(CorrectedRecord, may_differ_in_case_only)
{
    EXPECT_FALSE(correct({.cnt = 2, .q = "ITALY?"}));
    EXPECT_EQ(rows()[1].q, "ITALY?");
}

TEST_F(CorrectedRecord, keeps_a_question_that_stands_twice_already)
{
    database.execute("Update qa set q='Italy?' where cnt=1");
    EXPECT_FALSE(correct({.cnt = 1, .q = "italy?", .a = "Roma"}));
    EXPECT_EQ(rows()[0].a, "Roma");
}

TEST_F(CorrectedRecord, is_refused_as_the_editor_refuses_it)
{
    expect_refused({.cnt = 1, .q = " \r\n"}, "The question is empty.");
    expect_refused({.cnt = 1, .a = ""}, "The answer is empty.");
    expect_refused({.cnt = 1, .q = "italy?"}, "The record 2 has this question.");
    expect_refused({.cnt = 1, .a = std::string(201, 'a')}, "The answer has 201 characters; 200 fit.");
}

TEST_F(CorrectedRecord, must_be_there)
{
    EXPECT_THROW(static_cast<void>(correct({.cnt = 9, .q = "a"})), store::RecordGone);
}

TEST_F(CorrectedRecord, is_unchanged_after_an_error)
{
    for (const fakes::Operation operation :
         {fakes::Operation::begin, fakes::Operation::execute, fakes::Operation::commit}) {
        database.fail_at(operation, 1);
        EXPECT_THROW(static_cast<void>(correct({.cnt = 1, .q = "France?"})), platform::DatabaseError);
        EXPECT_EQ(rows(), before);
    }
}

TEST_F(CorrectedRecord, is_read_again_after_a_failed_commit)
{
    database.fail_commit(true);
    EXPECT_FALSE(correct({.cnt = 1, .q = "France?"}));
    EXPECT_EQ(rows()[0].q, "France?");
    database.fail_commit(false);
    EXPECT_THROW(static_cast<void>(correct({.cnt = 1, .q = "Spain?"})), platform::DatabaseError);
    EXPECT_EQ(rows()[0].q, "France?");
}

} // namespace
} // namespace cuedrill::bank
