#include "platform/qt/qt_menu_bar.h"
#include "platform/qt/qt_test_tools.h"

#include <QAction>
#include <QCoreApplication>
#include <QMenu>
#include <QMenuBar>

namespace cuedrill::platform::qt {

namespace {

class QtMenuBarTest : public QtTest {
protected:
    QAction& action(const char* name) { return *bar.findChild<QAction*>(QLatin1String(name)); }

    QtGuard guard;
    QMenuBar bar;
    QtActionGate gate{guard, bar};
    QtMenuBar menu_bar{bar, gate};
};

TEST_F(QtMenuBarTest, ShowsMenusAndEntriesInOrder)
{
    Menu& file = menu_bar.add_menu("m_file", "&File");
    file.add_entry("m_open", "&Open a course");
    MenuEntry& exit = file.add_entry("m_exit", "&Exit");
    menu_bar.add_menu("helps", "&?");

    ASSERT_EQ(bar.actions().size(), 2);
    EXPECT_EQ(bar.actions()[0]->text(), "&File");
    EXPECT_EQ(bar.actions()[1]->text(), "&?");
    const QMenu& menu = *bar.findChild<QMenu*>("m_file");
    ASSERT_EQ(menu.actions().size(), 2);
    EXPECT_EQ(menu.actions()[0]->objectName(), "m_open");
    EXPECT_EQ(menu.actions()[1]->text(), "&Exit");
    EXPECT_EQ(exit.caption(), "&Exit");
}

TEST_F(QtMenuBarTest, AClickReachesTheEntry)
{
    int clicks = 0;
    menu_bar.add_menu("m_file", "&File").add_entry("m_exit", "&Exit").on_click = [&] { ++clicks; };
    action("m_exit").trigger();
    QCoreApplication::processEvents();
    EXPECT_EQ(clicks, 1);
}

TEST_F(QtMenuBarTest, TheCheckMarkIsWhatWasSetAndNotWhatAClickToggles)
{
    MenuEntry& entry = menu_bar.add_menu("options", "&Options").add_entry("m_invert", "&Invert");
    entry.set_checkable(true);
    bool seen_by_handler = true;
    entry.on_click = [&] { seen_by_handler = action("m_invert").isChecked(); };
    action("m_invert").trigger();
    QCoreApplication::processEvents();
    EXPECT_FALSE(seen_by_handler);
    EXPECT_FALSE(action("m_invert").isChecked());
    entry.set_checked(true);
    EXPECT_TRUE(action("m_invert").isChecked());
    action("m_invert").trigger();
    QCoreApplication::processEvents();
    EXPECT_TRUE(action("m_invert").isChecked());
}

TEST_F(QtMenuBarTest, SettingTheMarkIsNoClick)
{
    int clicks = 0;
    MenuEntry& entry = menu_bar.add_menu("options", "&Options").add_entry("m_invert", "&Invert");
    entry.on_click = [&] { ++clicks; };
    entry.set_checkable(true);
    entry.set_checked(true);
    EXPECT_EQ(clicks, 0);
}

TEST_F(QtMenuBarTest, ADisabledEntryCannotBeChosenAndAHiddenOneIsGone)
{
    int clicks = 0;
    MenuEntry& entry = menu_bar.add_menu("m_file", "&File").add_entry("m_compact", "&Compact");
    entry.on_click = [&] { ++clicks; };
    entry.set_enabled(false);
    action("m_compact").trigger();
    QCoreApplication::processEvents();
    EXPECT_EQ(clicks, 0);
    EXPECT_FALSE(entry.enabled());
    EXPECT_TRUE(entry.visible());
    entry.set_visible(false);
    EXPECT_FALSE(action("m_compact").isVisible());
    EXPECT_FALSE(entry.visible());
}

TEST_F(QtMenuBarTest, ACaptionCanBeChanged)
{
    MenuEntry& entry = menu_bar.add_menu("options", "&Options").add_entry("m_level", "Level (now 5)");
    entry.set_caption("Level (now 6)");
    EXPECT_EQ(action("m_level").text(), "Level (now 6)");
    EXPECT_EQ(entry.caption(), "Level (now 6)");
}

} // namespace

} // namespace cuedrill::platform::qt
