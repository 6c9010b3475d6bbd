#include "platform/qt/qt_level_panel.h"
#include "platform/qt/qt_test_tools.h"

#include <QAccessible>

namespace cuedrill::platform::qt {

namespace {

class QtLevelPanelTest : public QtTest {
protected:
    QtLevelPanelTest()
    {
        panel.widget().setParent(&window);
        panel.widget().resize(400, 24);
    }

    /// The colour at the left (0) to right (1) of the row, in its middle line.
    QColor colour_at(double place)
    {
        const QImage picture = panel.widget().grab().toImage();
        return picture.pixelColor(static_cast<int>(place * (picture.width() - 1)), picture.height() / 2);
    }

    QWidget window;
    QtLevelPanel panel{"panel_level_2"};
};

TEST_F(QtLevelPanelTest, TellsItsCountAsNameAndItsLevelAsDescription)
{
    panel.set_caption("Level 2");
    panel.set_description("Level 2");
    panel.set_count(14, 20);
    QAccessibleInterface& accessible = *QAccessible::queryAccessibleInterface(&panel.widget());
    EXPECT_EQ(accessible.text(QAccessible::Name), "14");
    EXPECT_EQ(accessible.text(QAccessible::Description), "Level 2");
    EXPECT_EQ(panel.widget().caption(), "Level 2");
    EXPECT_EQ(panel.widget().objectName(), "panel_level_2");
}

TEST_F(QtLevelPanelTest, FillsTheBarByTheShare)
{
    const QColor filled = panel.widget().palette().color(QPalette::Highlight);
    panel.set_count(10, 20);
    EXPECT_DOUBLE_EQ(panel.widget().share(), 0.5);
    EXPECT_EQ(colour_at(0.4), filled);
    EXPECT_NE(colour_at(0.7), filled);
}

TEST_F(QtLevelPanelTest, TheBarOfAnEmptyCourseIsEmpty)
{
    panel.set_count(0, 0);
    EXPECT_DOUBLE_EQ(panel.widget().share(), 0.0);
    EXPECT_EQ(panel.widget().text(), "0");
}

TEST_F(QtLevelPanelTest, AShareNeverLeavesTheBar)
{
    panel.set_count(30, 20);
    EXPECT_DOUBLE_EQ(panel.widget().share(), 1.0);
    EXPECT_EQ(panel.widget().text(), "30");
}

TEST_F(QtLevelPanelTest, ABackgroundComesWithBlackTextAndGoesWithoutTrace)
{
    const QColor before = colour_at(0.01);
    panel.set_background(common::light_cyan);
    EXPECT_EQ(colour_at(0.01), QColor(192, 255, 255));
    EXPECT_EQ(panel.widget().palette().color(QPalette::WindowText), QColor(Qt::black));
    panel.set_background(std::nullopt);
    EXPECT_EQ(colour_at(0.01), before);
}

TEST_F(QtLevelPanelTest, AMarkChangesThePictureAndNotOnlyItsColour)
{
    panel.set_count(1, 2);
    const QImage plain = panel.widget().grab().toImage();
    panel.set_marked(true);
    EXPECT_TRUE(panel.widget().marked());
    EXPECT_NE(panel.widget().grab().toImage(), plain);
    panel.set_marked(false);
    EXPECT_EQ(panel.widget().grab().toImage(), plain);
}

} // namespace

} // namespace cuedrill::platform::qt
