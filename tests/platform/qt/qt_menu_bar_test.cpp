#include "platform/qt/qt_menu_bar.h"
#include "platform/qt/qt_test_tools.h"

#include <QAction>
#include <QCoreApplication>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QTest>

namespace cuedrill::platform::qt {

namespace {

class QtMenuBarTest : public QtTest {
protected:
    QAction& action(const char* name) { return *bar.findChild<QAction*>(QLatin1String(name)); }

    QtGuard guard;
    QMenuBar bar;
    QtActionGate gate{guard, bar};
    std::vector<std::string> told;
    QtMenuBar menu_bar{bar, gate, [this](const QString& text) { told.push_back(text.toStdString()); }};
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

TEST_F(QtMenuBarTest, AnOptionThatIsOffIsToldWhenTheUserComesToIt)
{
    Menu& menu = menu_bar.add_menu("options", "&Options");
    MenuEntry& option = menu.add_entry("m_invert", "&Invert");
    option.set_checkable(true);
    menu.add_entry("m_target", "Change &target level");
    for (const char* name : {"m_invert", "m_target"})
        action(name).hover();
    EXPECT_EQ(told, std::vector<std::string>{"not checked"});
    option.set_checked(true);
    action("m_invert").hover();
    EXPECT_EQ(told.size(), 1U);
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

/// A window with a menu bar and a text that has the focus.
class MenuKeysTest : public QtTest {
protected:
    MenuKeysTest()
    {
        window.setCentralWidget(&text);
        menu_bar.add_menu("m_file", "&File").add_entry("m_open", "&Open a course");
        menu_bar.add_menu("m_show", "&Show").add_entry("m_history", "Show &history");
        window.show();
        window.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
        text.setFocus();
    }

    ~MenuKeysTest() override { text.setParent(nullptr); }

    /// Sends a key as the system does: to the open menu, otherwise to the window.
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QWidget* const popup = QApplication::activePopupWidget();
        if (popup != nullptr)
            QTest::keyClick(popup, key, modifiers);
        else
            QTest::keyClick(window.windowHandle(), key, modifiers);
        QCoreApplication::processEvents();
    }

    QtGuard guard;
    QMainWindow window;
    QPlainTextEdit text;
    QtActionGate gate{guard, window};
    QtMenuBar menu_bar{*window.menuBar(), gate, [](const QString&) {}};
};

TEST_F(MenuKeysTest, TheKeyboardGoesBackAfterAMenuWasLeftForAnother)
{
    press(Qt::Key_F, Qt::AltModifier);
    ASSERT_NE(QApplication::activePopupWidget(), nullptr);
    press(Qt::Key_Escape);
    ASSERT_TRUE(window.menuBar()->hasFocus());
    press(Qt::Key_S, Qt::AltModifier);
    ASSERT_NE(QApplication::activePopupWidget(), nullptr);
    press(Qt::Key_H);
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
    EXPECT_TRUE(text.hasFocus());
}

TEST_F(MenuKeysTest, TheKeyboardGoesBackAfterTheSecondMenuWasLeftToo)
{
    for (const Qt::Key menu : {Qt::Key_F, Qt::Key_S, Qt::Key_F}) {
        press(menu, Qt::AltModifier);
        press(Qt::Key_Escape);
        EXPECT_TRUE(window.menuBar()->hasFocus());
    }
    press(Qt::Key_Escape);
    EXPECT_TRUE(text.hasFocus());
}

TEST_F(MenuKeysTest, ALetterChoosesTheOnlyEnabledEntryThatHasIt)
{
    Menu& show = menu_bar.add_menu("m_lists", "&Lists");
    MenuEntry& hints = show.add_entry("m_view_hints", "Show &hints");
    MenuEntry& history = show.add_entry("m_view_history", "Show &history");
    std::string chosen;
    hints.on_click = [&] { chosen += "hints "; };
    history.on_click = [&] { chosen += "history "; };
    hints.set_enabled(false);
    EXPECT_EQ(hints.caption(), "Show &hints");
    press(Qt::Key_L, Qt::AltModifier);
    press(Qt::Key_H);
    EXPECT_EQ(chosen, "history ");
    hints.set_enabled(true);
    history.set_enabled(false);
    press(Qt::Key_L, Qt::AltModifier);
    press(Qt::Key_H);
    EXPECT_EQ(chosen, "history hints ");
}

TEST_F(MenuKeysTest, TheKeyboardGoesBackToWhereItWasLast)
{
    QPushButton& other = *new QPushButton(&window);
    other.show();
    other.setFocus();
    press(Qt::Key_F, Qt::AltModifier);
    press(Qt::Key_Escape);
    press(Qt::Key_Escape);
    EXPECT_TRUE(other.hasFocus());
    text.setFocus();
    press(Qt::Key_F, Qt::AltModifier);
    press(Qt::Key_O);
    EXPECT_TRUE(text.hasFocus());
}

} // namespace

} // namespace cuedrill::platform::qt
