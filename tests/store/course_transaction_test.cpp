#include "course_fixture.h"
#include "store/course_transaction.h"
#include "store/records.h"

#include <gtest/gtest.h>

namespace cuedrill::store {
namespace {

/// A course with one record, whose answer a transaction changes.
class CommitOrFindOut : public CourseFixture {
protected:
    void SetUp() override
    {
        fakes::CourseBuilder builder;
        builder.question("France?", "Paris");
        open(builder, "Verbs");
        course.record_count = 1;
    }

    void change_answer()
    {
        CourseTransaction transaction(course);
        ASSERT_EQ(change_texts(database, 1, {.q = "France?", .a = "Lutetia"}), 1);
        transaction.commit({.is_stored =
                                [this] {
                                    ++questions;
                                    return find_record(database, 1).value().a == "Lutetia";
                                },
                            .when_stored_after_all = [this] { ++late; }});
    }

    [[nodiscard]] std::string answer() const { return file().qa.at(0).a; }

    int questions = 0; ///< number of calls of `is_stored`
    int late = 0;      ///< number of calls of `when_stored_after_all`
};

TEST_F(CommitOrFindOut, asks_nothing_when_the_commit_succeeds)
{
    change_answer();
    EXPECT_EQ(answer(), "Lutetia");
    EXPECT_EQ(questions, 0);
    EXPECT_EQ(late, 0);
}

TEST_F(CommitOrFindOut, tells_a_change_to_be_stored_that_is_so)
{
    database.fail_commit(true);
    change_answer();
    EXPECT_EQ(answer(), "Lutetia");
    EXPECT_EQ(questions, 1);
    EXPECT_EQ(late, 0) << "the caller knows it already";
    EXPECT_EQ(database.transaction_depth(), 0);
}

TEST_F(CommitOrFindOut, throws_the_error_of_the_commit_where_nothing_is_stored)
{
    database.fail_commit(false);
    EXPECT_THROW(change_answer(), platform::CommitError);
    EXPECT_EQ(answer(), "Paris");
    EXPECT_FALSE(course.unsettled);
    EXPECT_EQ(database.transaction_depth(), 0);
}

TEST_F(CommitOrFindOut, says_so_where_the_course_cannot_be_read_again)
{
    for (const bool stored : {true, false}) {
        SCOPED_TRACE(stored);
        late = 0;
        database.fail_commit(stored);
        database.fail_at(fakes::Operation::query);
        try {
            change_answer();
            ADD_FAILURE() << "nothing was thrown";
        } catch (const OutcomeUnknown& error) {
            EXPECT_STREQ(error.what(), "The commit failed. It is not known whether the change is stored, because the "
                                       "course cannot be read again.");
            EXPECT_EQ(error.kind(), platform::DatabaseErrorKind::input_output);
        }
        database.fail_at(fakes::Operation::query);
        EXPECT_THROW(settle(course), OutcomeUnknown);
        settle(course);
        EXPECT_EQ(late, stored ? 1 : 0);
        settle(course);
        EXPECT_EQ(late, stored ? 1 : 0) << "once";
        database.execute("Update qa set a = 'Paris'");
    }
}

TEST_F(CommitOrFindOut, settles_before_the_next_transaction)
{
    database.fail_commit(true);
    database.fail_at(fakes::Operation::query);
    EXPECT_THROW(change_answer(), OutcomeUnknown);
    const CourseTransaction next(course);
    EXPECT_EQ(late, 1);
}

TEST_F(CommitOrFindOut, begins_nothing_while_it_cannot_settle)
{
    database.fail_commit(true);
    database.fail_at(fakes::Operation::query);
    EXPECT_THROW(change_answer(), OutcomeUnknown);
    database.fail_at(fakes::Operation::query);
    try {
        const CourseTransaction next(course);
        ADD_FAILURE() << "it has begun";
    } catch (const OutcomeUnknown&) {
        ADD_FAILURE() << "nothing of the next one is stored";
    } catch (const platform::DatabaseError& error) {
        EXPECT_STREQ(error.what(), "The commit failed. It is not known whether the change before this one is stored, "
                                   "because the course cannot be read again.");
    }
    EXPECT_EQ(database.transaction_depth(), 0);
    EXPECT_EQ(late, 0);
}

TEST_F(CommitOrFindOut, leaves_nothing_open_when_the_course_is_closed)
{
    database.fail_commit(true);
    database.fail_at(fakes::Operation::query);
    EXPECT_THROW(change_answer(), OutcomeUnknown);
    course.close();
    settle(course);
    EXPECT_EQ(late, 0);
}

TEST_F(CommitOrFindOut, holds_for_the_settings)
{
    params.read_params();
    database.fail_commit(true);
    params.change_params([](CourseParams& changed) { changed.invert = true; });
    EXPECT_TRUE(course.params.invert);
    EXPECT_EQ(file().number("invert"), 1);

    database.fail_commit(false);
    EXPECT_THROW(params.change_params([](CourseParams& changed) { changed.invert = false; }), platform::CommitError);
    EXPECT_TRUE(course.params.invert);
    EXPECT_EQ(file().number("invert"), 1);
}

TEST_F(CommitOrFindOut, makes_settings_the_course_s_own_that_turn_out_to_be_stored)
{
    params.read_params();
    course.set_side_fields();
    for (const bool stored : {false, true}) {
        SCOPED_TRACE(stored);
        course.last_verdict = LastVerdict{.cnt = 1};
        course.all_passed_announced = true;
        database.fail_commit(stored);
        database.fail_at(fakes::Operation::query);
        EXPECT_THROW(params.change_params([](CourseParams& changed) {
            changed.course_title = "New";
            changed.invert = true;
            changed.target_level = 6;
        }),
                     OutcomeUnknown);
        EXPECT_EQ(course.params.course_title, "Course Verbs");
        EXPECT_FALSE(course.params.invert);
        course.params.score_today = 7;
        settle(course);
        EXPECT_EQ(course.params.course_title, stored ? "New" : "Course Verbs");
        EXPECT_EQ(course.params.invert, stored);
        EXPECT_EQ(course.params.target_level, stored ? 6 : 5);
        EXPECT_EQ(course.params.score_today, 7) << "a counter";
        EXPECT_EQ(course.Q_FIELD.text, stored ? "a" : "q");
        EXPECT_EQ(course.last_verdict.has_value(), !stored);
        EXPECT_EQ(course.all_passed_announced, !stored);
    }
    EXPECT_EQ(file().param("course_title")->string_value, "New");
}

TEST_F(CommitOrFindOut, keeps_settings_that_turn_out_to_be_stored_in_the_next_change)
{
    params.read_params();
    database.fail_commit(true);
    database.fail_at(fakes::Operation::query);
    EXPECT_THROW(params.change_params([](CourseParams& changed) { changed.course_title = "New"; }), OutcomeUnknown);
    params.change_params([](CourseParams& changed) { changed.random_mode = true; });
    EXPECT_EQ(course.params.course_title, "New");
    EXPECT_EQ(file().param("course_title")->string_value, "New");
    EXPECT_EQ(file().number("random_mode"), 1);
}

TEST_F(CommitOrFindOut, makes_a_font_the_course_s_own_that_turns_out_to_be_stored)
{
    params.read_params();
    database.fail_commit(true);
    database.fail_at(fakes::Operation::query);
    EXPECT_THROW(params.change_font("Serif"), OutcomeUnknown);
    EXPECT_EQ(course.params.font, "");
    settle(course);
    EXPECT_EQ(course.params.font, "Serif");
}

TEST_F(CommitOrFindOut, calls_the_hook_once_memory_is_updated)
{
    int shown = 0;
    course.when_stored_after_all = [&] {
        ++shown;
        EXPECT_EQ(late, 1);
        EXPECT_FALSE(course.unsettled);
    };
    database.fail_commit(true);
    change_answer();
    EXPECT_EQ(shown, 0) << "the caller shows it";
    database.execute("Update qa set a = 'Paris'");
    for (const bool stored : {false, true}) {
        database.fail_commit(stored);
        database.fail_at(fakes::Operation::query);
        EXPECT_THROW(change_answer(), OutcomeUnknown);
        settle(course);
        EXPECT_EQ(shown, stored ? 1 : 0);
    }
}

TEST_F(CommitOrFindOut, holds_for_the_work_time)
{
    params.read_params();
    course.start_counting(clock.time);
    clock.advance_seconds(60);
    database.fail_commit(true);
    params.save_work_time(clock.time);
    EXPECT_EQ(file().number("time_ever"), 60);
    clock.advance_seconds(60);
    database.fail_commit(false);
    EXPECT_THROW(params.save_work_time(clock.time), platform::CommitError);
    EXPECT_EQ(file().number("time_ever"), 60);
}

} // namespace
} // namespace cuedrill::store
