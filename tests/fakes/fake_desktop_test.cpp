#include "common/errors.h"
#include "fakes/fake_desktop.h"

#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

namespace cuedrill::fakes {
namespace {

using platform::BoxAnswer;
using platform::BoxButtons;
using platform::BoxIcon;
using platform::BusyPointer;
using platform::ChosenFile;
using platform::FileDialog;
using platform::InputBox;
using platform::MessageBox;

const MessageBox question{"Continue?", BoxButtons::yes_no, BoxIcon::question, std::nullopt, "", ""};
const MessageBox notice{"Done.", BoxButtons::ok, BoxIcon::none, std::nullopt, "", ""};
const InputBox title_box{"Title", "", "", 200};
const InputBox short_box{"Title", "", "", 4};
const FileDialog open_dialog{"Open", "", "", "", ""};

TEST(ExpectedBoxes, are_answered_in_their_order_and_recorded)
{
    FakeDesktop desktop;
    desktop.expect_box("Continue?", BoxAnswer::yes);
    desktop.expect_input("Title", "Birds");
    desktop.expect_file({"/x/birds.crs", "birds.crs"});
    desktop.expect_box_like(question, BoxAnswer::no);

    EXPECT_EQ(desktop.message_box(question), BoxAnswer::yes);
    EXPECT_EQ(desktop.input_box(title_box), "Birds");
    EXPECT_EQ(desktop.open_file_dialog(open_dialog).title, "birds.crs");
    EXPECT_EQ(desktop.message_box(question), BoxAnswer::no);
    ASSERT_EQ(desktop.boxes.size(), 2U);
    ASSERT_EQ(desktop.inputs.size(), 1U);
    ASSERT_EQ(desktop.file_dialogs.size(), 1U);
    EXPECT_EQ(desktop.file_dialogs[0].title, "Open");
}

TEST(UnexpectedBoxes, fail_the_test_and_count_as_closed)
{
    FakeDesktop desktop;
    EXPECT_NONFATAL_FAILURE(EXPECT_EQ(desktop.message_box(question), BoxAnswer::no), "Unexpected message box");
    EXPECT_NONFATAL_FAILURE(EXPECT_EQ(desktop.message_box(notice), BoxAnswer::ok), "Unexpected");
    EXPECT_NONFATAL_FAILURE(EXPECT_EQ(desktop.input_box(title_box), std::nullopt), "Unexpected input");
    EXPECT_NONFATAL_FAILURE(EXPECT_EQ(desktop.open_file_dialog(open_dialog).path, ""), "Unexpected file");
}

TEST(UnexpectedBoxes, of_another_kind_leave_the_expected_one_waiting)
{
    FakeDesktop desktop;
    desktop.expect_box("Continue?", BoxAnswer::yes);
    EXPECT_NONFATAL_FAILURE((void)desktop.input_box(title_box), "expected: message box \"Continue?\"");
    EXPECT_EQ(desktop.message_box(question), BoxAnswer::yes);
}

TEST(UnexpectedBoxes, of_another_text_or_look_fail_the_test)
{
    FakeDesktop desktop;
    desktop.expect_box("Stop?", BoxAnswer::yes);
    EXPECT_NONFATAL_FAILURE((void)desktop.message_box(question), "Stop?");
    MessageBox other = question;
    other.icon = BoxIcon::exclamation;
    desktop.expect_box_like(other, BoxAnswer::yes);
    EXPECT_NONFATAL_FAILURE((void)desktop.message_box(question), "box.icon");
    desktop.expect_box("Continue?", BoxAnswer::ok);
    EXPECT_NONFATAL_FAILURE((void)desktop.message_box(question), "no button of the box");
    desktop.expect_input("Title", "Birds");
    EXPECT_NONFATAL_FAILURE((void)desktop.input_box(short_box), "cannot be typed");
}

TEST(UnusedBoxes, fail_the_test_at_the_end)
{
    EXPECT_NONFATAL_FAILURE(
        {
            FakeDesktop desktop;
            desktop.expect_box("Continue?");
        },
        "Never shown: message box \"Continue?\"");
}

TEST(UnusedBoxes, are_reported_once_when_checked_earlier)
{
    FakeDesktop desktop;
    desktop.expect_input("Title", std::nullopt);
    EXPECT_NONFATAL_FAILURE(desktop.check_all_shown(), "Never shown: input box \"Title\"");
}

TEST(ShownBox, lets_the_test_look_at_that_moment_and_end_the_program)
{
    FakeDesktop desktop;
    std::string seen;
    desktop.on_box = [&] { seen = desktop.boxes.back().text; };
    desktop.expect_box("Continue?", BoxAnswer::yes);
    (void)desktop.message_box(question);
    EXPECT_EQ(seen, "Continue?");

    desktop.on_box = [&] { desktop.end_program(); };
    EXPECT_THROW((void)desktop.message_box(question), common::ProgramEnded);
    EXPECT_EQ(desktop.ends, 1);
}

TEST(Pump, is_counted_and_runs_the_hook)
{
    FakeDesktop desktop;
    desktop.pump();
    desktop.on_pump = [&] { desktop.end_program(); };
    EXPECT_THROW(desktop.pump(), common::ProgramEnded);
    EXPECT_EQ(desktop.pumps, 2);
}

TEST(Pointer, is_busy_while_its_guard_lives)
{
    FakeDesktop desktop;
    {
        const BusyPointer busy(desktop);
        EXPECT_EQ(desktop.pointer_depth, 1);
    }
    EXPECT_EQ(desktop.pointer_depth, 0);
}

TEST(Pointer, left_busy_fails_the_test)
{
    EXPECT_NONFATAL_FAILURE(
        {
            FakeDesktop desktop;
            desktop.set_pointer(platform::Pointer::busy);
        },
        "left busy");
}

} // namespace
} // namespace cuedrill::fakes
