#include "bank/duplicates.h"
#include "bank/merging.h"
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

class TwoCourses : public testing::Test {
protected:
    TwoCourses()
    {
        builder.question("France?", "Paris").level(2).tested_ago(24h);
        builder.question("Italy?", "Rome");
        other_builder.question("FRANCE?", "paris").level(4);
        other_builder.question("Italy?", "Roma").number(7).level(3);
        other_builder.question("Spain?", "Madrid")
            .number(9)
            .level(1)
            .attempts(5)
            .fails(2)
            .tested_ago(12h)
            .inverted()
            .level(4)
            .attempts(6)
            .fails(3)
            .tested_ago(48h)
            .shown_ago(1h);
        other_builder.number_param("target_level", 7).text_param("course_title", "Other");
    }

    void open()
    {
        course.db_path = builder.write(folder);
        course.apri_db();
        course.set_side_fields();
        course.record_count = course.count_records();
        other.db_path = other_builder.write(folder, "other.crs");
        other.apri_db();
    }

    [[nodiscard]] Merged merged(AlreadyThere already_there = AlreadyThere::both_texts)
    {
        return merge(course, other_engine.database, already_there, engine.text_compare);
    }

    [[nodiscard]] std::vector<fakes::QaRow> rows() const { return fakes::read_course(course.db_path).qa; }

    fakes::CourseBuilder builder;
    fakes::CourseBuilder other_builder;
    fakes::TempFolder folder;
    fakes::RealEngine engine;
    fakes::RealEngine other_engine;
    fakes::RecordingDatabase database{engine.database};
    store::Course course{database};
    store::Course other{other_engine.database};
};

TEST_F(TwoCourses, merged_have_the_records_of_both_with_their_history)
{
    open();
    std::vector<fakes::QaRow> expected = rows();
    const std::vector<fakes::QaRow> of_other = fakes::read_course(other.db_path).qa;
    const Merged result = merged();
    EXPECT_EQ(result.added, 2);
    ASSERT_EQ(result.left_out.size(), 1U);
    EXPECT_EQ(result.left_out[0].q, "FRANCE?");
    EXPECT_EQ(course.record_count, 4);
    const std::vector<fakes::QaRow> found = rows();
    ASSERT_EQ(found.size(), 4U);
    EXPECT_EQ(std::vector(found.begin(), found.begin() + 2), expected) << "those of the course are as they were";
    EXPECT_EQ(found[2].cnt, 3);
    EXPECT_EQ(found[2].a, "Roma");
    fakes::QaRow spain = of_other[2];
    spain.cnt = 4;
    EXPECT_EQ(found[3], spain);
    EXPECT_EQ(fakes::read_course(other.db_path).qa, of_other);
}

TEST_F(TwoCourses, merged_can_leave_out_all_questions_that_are_there)
{
    open();
    const Merged result = merged(AlreadyThere::question);
    EXPECT_EQ(result.added, 1);
    EXPECT_EQ(result.left_out.size(), 2U);
}

TEST_F(TwoCourses, merged_twice_add_nothing_the_second_time)
{
    open();
    static_cast<void>(merged());
    const std::vector<fakes::QaRow> before = rows();
    EXPECT_EQ(merged().added, 0);
    EXPECT_EQ(rows(), before);
}

TEST_F(TwoCourses, that_do_not_fit_are_not_merged)
{
    builder.question("last number", "a").number(32766);
    open();
    const std::vector<fakes::QaRow> before = rows();
    EXPECT_THROW(static_cast<void>(merged()), common::OverflowError);
    EXPECT_EQ(rows(), before);
    EXPECT_EQ(course.record_count, 3);
}

TEST_F(TwoCourses, that_have_too_many_records_are_not_merged)
{
    open();
    platform::Transaction transaction(engine.database);
    for (int i = 0; i < 32766 - 2; ++i)
        engine.database.execute("Insert into qa (q, a) values (?1, 'a')", {std::to_string(i)});
    transaction.commit();
    EXPECT_THROW(static_cast<void>(merged()), common::OverflowError);
    EXPECT_EQ(store::single_number(engine.database, "Select count(0) from qa"), 32766);
}

TEST_F(TwoCourses, are_as_they_were_after_an_error)
{
    open();
    const std::vector<fakes::QaRow> before = rows();
    for (int which = 1; which <= 2; ++which) {
        database.fail_at(fakes::Operation::execute, which);
        EXPECT_THROW(static_cast<void>(merged()), platform::DatabaseError);
        EXPECT_EQ(rows(), before);
    }
    database.fail_commit(false);
    EXPECT_THROW(static_cast<void>(merged()), platform::DatabaseError);
    EXPECT_EQ(rows(), before);
    database.fail_commit(true);
    EXPECT_EQ(merged().added, 2) << "stored, though the commit has failed";
    EXPECT_EQ(rows().size(), 4U);
}

TEST_F(TwoCourses, renumbering_gives_an_empty_one_everything_from_number_1)
{
    builder = fakes::CourseBuilder();
    open();
    EXPECT_EQ(renumber(engine.database, other_engine.database), 3);
    fakes::CourseContents expected = fakes::read_course(other.db_path);
    fakes::CourseContents found = fakes::read_course(course.db_path);
    ASSERT_EQ(found.qa.size(), 3U);
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(found.qa[i].cnt, static_cast<std::int64_t>(i) + 1);
        EXPECT_EQ(found.qa[i].q, expected.qa[i].q);
        EXPECT_EQ(found.qa[i].a_side.date_last_show, expected.qa[i].a_side.date_last_show);
    }
    EXPECT_EQ(found.qa[2].a_side, expected.qa[2].a_side);
    EXPECT_EQ(found.params, expected.params);
}

class Duplicates : public TwoCourses {};

TEST_F(Duplicates, are_found_on_either_side)
{
    builder.question("france?", "Lyon");
    builder.question("Lazio?", "ROME");
    builder.question("Campania?", "Naples");
    open();
    const std::vector<SameTexts> questions = find_duplicates(engine.database, "q", engine.text_compare);
    ASSERT_EQ(questions.size(), 1U);
    ASSERT_EQ(questions[0].size(), 2U);
    EXPECT_EQ(questions[0][0].cnt, 1);
    EXPECT_EQ(questions[0][1].cnt, 3);
    const std::vector<SameTexts> answers = find_duplicates(engine.database, "a", engine.text_compare);
    ASSERT_EQ(answers.size(), 1U);
    EXPECT_EQ(answers[0][1].cnt, 4);
}

} // namespace
} // namespace cuedrill::bank
