#include "app/start/start.h"
#include "common/errors.h"
#include "fakes/fake_dialog_host.h"

#include <gtest/gtest.h>

namespace cuedrill::app {
namespace {

TEST(FrameAllowancesTest, are_what_the_platform_grants_beyond_the_smallest_window)
{
    fakes::FakeDialogHost form2;
    form2.smallest_height = 555;
    form2.smallest_width = 1860;
    const FrameAllowances frame = measure_frame(form2);
    EXPECT_EQ(frame.height, 150);
    EXPECT_EQ(frame.width, 1740);
    EXPECT_EQ(frame.minimal_height, 555);
    EXPECT_EQ(frame.minimal_width, 1860);
}

TEST(FrameAllowancesTest, are_negative_where_windows_have_no_frame)
{
    fakes::FakeDialogHost form2;
    form2.smallest_height = 0;
    form2.smallest_width = 0;
    const FrameAllowances frame = measure_frame(form2);
    EXPECT_EQ(frame.height, -405);
    EXPECT_EQ(frame.width, -120);
    EXPECT_EQ(frame.minimal_height, 0);
    EXPECT_EQ(frame.minimal_width, 0);
}

TEST(FrameAllowancesTest, refuse_a_size_beyond_16_bits)
{
    fakes::FakeDialogHost tall;
    tall.smallest_height = 33173;
    EXPECT_THROW(static_cast<void>(measure_frame(tall)), common::OverflowError);
    fakes::FakeDialogHost wide;
    wide.smallest_width = 33000;
    EXPECT_THROW(static_cast<void>(measure_frame(wide)), common::OverflowError);
}

} // namespace
} // namespace cuedrill::app
