#include "drill/drill_fixture.h"
#include "drill/error_report.h"

#include <new>
#include <stdexcept>

namespace cuedrill::drill {
namespace {

class ErrorReportTest : public DrillFixture {
protected:
    void SetUp() override
    {
        static_cast<void>(folder.write("trace.flg", ""));
        start_with_three_questions();
    }

    void expect_traced(const std::string& message)
    {
        EXPECT_NE(folder.read("trace.txt").find(" - " + message + "\r\n"), std::string::npos) << message;
    }
};

TEST_F(ErrorReportTest, names_the_course_and_the_reason_of_the_engine)
{
    desktop.expect_box_like(
        {.text = "The course " + path + " could not be read or written.\r\n\r\nAnother program is using it.",
         .icon = platform::BoxIcon::exclamation},
        platform::BoxAnswer::ok);
    logic->error_report.report(
        platform::DatabaseError(platform::DatabaseErrorKind::locked, 5, "Another program is using it."));
    expect_traced("error - " + path + " - code 5 - Another program is using it.");
}

TEST_F(ErrorReportTest, gives_the_words_of_any_other_error)
{
    desktop.expect_box_like({.text = "unforeseen", .icon = platform::BoxIcon::exclamation}, platform::BoxAnswer::ok);
    logic->error_report.report(std::runtime_error("unforeseen"));
    expect_traced("error - unforeseen");
}

TEST_F(ErrorReportTest, tells_a_lack_of_memory_in_a_sentence)
{
    desktop.expect_box_like({.text = "There is not enough memory.", .icon = platform::BoxIcon::exclamation},
                            platform::BoxAnswer::ok);
    logic->error_report.report(std::bad_alloc());
    expect_traced("error - There is not enough memory.");
}

} // namespace
} // namespace cuedrill::drill
