// The pointer is busy whenever a command works on the database. The fixture checks that it is normal at every box.
#include "drill/scoring_fixture.h"

#include <gtest/gtest.h>
#include <string>

namespace cuedrill::drill {
namespace {

struct Work {
    const char* name;
    void (*run)(Scoring& scoring);
};

class BusyPointer : public ScoringFixture, public testing::WithParamInterface<Work> {
protected:
    BusyPointer()
    {
        fakes::CourseBuilder builder;
        builder.question("asked").level(2).attempts(1).tested_ago(one_day);
        builder.number_param("target_level", 1);
        open_with_current(builder);
    }

    void expect_busy_while(const Work& work)
    {
        int operations = 0;
        database.at_each_call([&](fakes::Operation) {
            ++operations;
            EXPECT_GT(desktop.pointer_depth, 0);
        });
        work.run(scoring);
        database.at_each_call({});
        EXPECT_GT(operations, 0);
        EXPECT_EQ(desktop.pointer_depth, 0);
    }
};

TEST_P(BusyPointer, is_shown_while_the_database_works)
{
    scoring.set_failure(); // so that there is something to undo
    course.all_passed_announced = true;
    expect_busy_while(GetParam());
}

TEST_F(BusyPointer, gives_way_to_the_boxes_in_the_middle_of_the_work)
{
    desktop.expect_box("Congratulations! You have passed level 1 for all questions.");
    expect_busy_while({"success", [](Scoring& work) { work.set_success(); }});
    desktop.expect_box("This will set all question at level 0; do you really want to do this?",
                       platform::BoxAnswer::yes);
    expect_busy_while({"reset_all", [](Scoring& work) { work.m_reset_all(); }});
}

INSTANTIATE_TEST_SUITE_P(Works, BusyPointer,
                         testing::Values(Work{"success", [](Scoring& scoring) { scoring.set_success(); }},
                                         Work{"failure", [](Scoring& scoring) { scoring.set_failure(); }},
                                         Work{"stamp", [](Scoring& scoring) { scoring.StampLastShow(); }},
                                         Work{"undo", [](Scoring& scoring) { scoring.m_undo(); }}),
                         [](const auto& work) { return std::string(work.param.name); });

} // namespace
} // namespace cuedrill::drill
