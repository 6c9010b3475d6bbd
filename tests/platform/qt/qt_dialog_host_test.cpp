#include "platform/qt/qt_dialog_host.h"
#include "platform/qt/qt_test_tools.h"

#include <QScreen>

namespace cuedrill::platform::qt {

namespace {

class QtDialogHostTest : public QtTest {
protected:
    QtDialogHost host;
};

TEST_F(QtDialogHostTest, GrantsTheSizeThatIsAskedFor)
{
    host.set_height(6000);
    host.set_width(9000);
    EXPECT_EQ(host.height(), 6000);
    EXPECT_EQ(host.width(), 9000);
}

TEST_F(QtDialogHostTest, GrantsAtLeastTheSmallestCaptionedWindow)
{
    host.set_height(0);
    host.set_width(0);
    EXPECT_GE(host.height(), 300);
    EXPECT_GE(host.width(), 300);
    EXPECT_LT(host.height(), 2000);
    EXPECT_LT(host.width(), 6000);
}

TEST_F(QtDialogHostTest, MeasuresThePrimaryScreenInTwips)
{
    const QSize screen = QApplication::primaryScreen()->size();
    EXPECT_EQ(host.screen_width(), screen.width() * 15);
    EXPECT_EQ(host.screen_height(), screen.height() * 15);
}

TEST_F(QtDialogHostTest, TheWindowExistsOnlyWhileLoadedAndIsNeverShown)
{
    EXPECT_EQ(host.widget(), nullptr);
    host.set_caption("Form2");
    host.set_position(150, 300);
    host.set_width(9000);
    host.set_height(6000);
    host.load();
    ASSERT_NE(host.widget(), nullptr);
    EXPECT_EQ(host.widget()->geometry(), QRect(10, 20, 600, 400));
    EXPECT_EQ(host.widget()->windowTitle(), "Form2");
    EXPECT_TRUE(host.widget()->isHidden());
    host.load();
    host.unload();
    EXPECT_EQ(host.widget(), nullptr);
    host.unload();
}

} // namespace

} // namespace cuedrill::platform::qt
