// If a search for the next question fails, no question is left that could be judged a second time.
#include "common/errors.h"
#include "drill/scoring_fixture.h"
#include "drill/selection.h"

#include <gtest/gtest.h>
#include <new>

namespace cuedrill::drill {
namespace {

using fakes::CourseBuilder;
using fakes::Operation;

class SelectionFailure : public ScoringFixture {
protected:
    void expect_no_question() const
    {
        EXPECT_EQ(current_cnt(), 0);
        EXPECT_FALSE(state.shown.is_question());
        EXPECT_EQ(shows(), 0);
        EXPECT_EQ(desktop.pointer_depth, 0);
        EXPECT_EQ(database.open_recordsets(), 0);
    }
};

TEST_F(SelectionFailure, of_the_engine_takes_the_question_away)
{
    CourseBuilder builder;
    builder.question("a");
    open_with_current(builder);
    for (const int query : {1, 6}) {
        SCOPED_TRACE(query);
        display.take_for_record(1);
        database.fail_at(Operation::open_recordset, query);
        EXPECT_THROW(selection.next_question(), platform::DatabaseError);
        expect_no_question();
    }
    selection.next_question();
    EXPECT_EQ(current_cnt(), 1);
}

TEST_F(SelectionFailure, for_want_of_memory_takes_the_question_away)
{
    CourseBuilder builder;
    builder.question("a");
    open_with_current(builder);
    database.at_each_call([](Operation operation) {
        if (operation == Operation::open_recordset)
            throw std::bad_alloc();
    });
    EXPECT_THROW(selection.next_question(), std::bad_alloc);
    expect_no_question();
}

/// A number that does not fit 16 bits is rejected before anything is written.
TEST_F(SelectionFailure, of_a_number_beyond_16_bits_writes_nothing)
{
    CourseBuilder builder;
    builder.question("far").number(32768);
    open(builder);
    const auto before = file();
    EXPECT_THROW(selection.next_question(), common::OverflowError);
    expect_no_question();
    EXPECT_EQ(file(), before);
    EXPECT_EQ(database.count(Operation::execute), 0);
}

TEST_F(SelectionFailure, does_not_come_of_the_largest_number_of_16_bits)
{
    CourseBuilder builder;
    builder.question("last").number(32767);
    open(builder);
    selection.next_question();
    EXPECT_EQ(current_cnt(), 32767);
}

} // namespace
} // namespace cuedrill::drill
