#include "platform/qt/qt_dialog_host.h"
#include "platform/qt/qt_look.h"
#include "platform/qt/qt_test_tools.h"

#include <QScreen>

namespace cuedrill::platform::qt {

namespace {

class QtDialogHostTest : public QtTest {
protected:
    QtDialogHost host;
};

TEST_F(QtDialogHostTest, TellsTheSizeOfTheSmallestWindowInTwips)
{
    EXPECT_GE(host.least_height(), 300);
    EXPECT_GE(host.least_width(), 300);
    EXPECT_LT(host.least_height(), 2000);
    EXPECT_LT(host.least_width(), 6000);
}

TEST_F(QtDialogHostTest, TheWindowExistsOnlyWhileLoadedAndIsNeverShown)
{
    EXPECT_EQ(host.widget(), nullptr);
    host.load();
    ASSERT_NE(host.widget(), nullptr);
    EXPECT_TRUE(host.widget()->isHidden());
    QWidget* const window = host.widget();
    host.load();
    EXPECT_EQ(host.widget(), window);
    host.unload();
    EXPECT_EQ(host.widget(), nullptr);
    host.unload();
}

TEST_F(QtDialogHostTest, TheWindowStandsInTheCentreOfTheScreenInItsLeastSize)
{
    host.load();
    const QRect place = host.widget()->geometry();
    EXPECT_EQ(to_twips(place.width()), host.least_width());
    EXPECT_EQ(to_twips(place.height()), host.least_height());
    const QSize screen = QApplication::primaryScreen()->size();
    EXPECT_EQ(place.left(), (screen.width() - place.width()) / 2);
    EXPECT_EQ(place.top(), (screen.height() - place.height()) / 2);
}

} // namespace

} // namespace cuedrill::platform::qt
