#include "platform/qt/qt_button.h"
#include "platform/qt/qt_test_tools.h"

#include <QAccessible>
#include <QHBoxLayout>

namespace cuedrill::platform::qt {

namespace {

class QtToolbarButtonTest : public QtTest {
protected:
    QtToolbarButtonTest()
    {
        auto* row = new QHBoxLayout(&window);
        row->addWidget(&button.widget());
        row->addWidget(&neighbour.widget());
    }

    void show(int width)
    {
        window.resize(width, 60);
        window.show();
        QCoreApplication::processEvents();
    }

    QtGuard guard;
    QWidget window;
    QtActionGate gate{guard, window};
    QtButton button{"pb_1", gate, QtButton::Kind::toolbar};
    QtButton neighbour{"pb_2", gate, QtButton::Kind::toolbar};
};

TEST_F(QtToolbarButtonTest, IsAsWideAsItsCaptionNeedsUntilAWidthIsSet)
{
    button.set_caption("+");
    show(600);
    EXPECT_EQ(button.width(), 15 * button.widget().width());
    EXPECT_LT(button.widget().width(), 30);
    button.set_caption("Next &Question");
    QCoreApplication::processEvents();
    EXPECT_EQ(button.width(), 15 * button.widget().width());
    EXPECT_GT(button.widget().width(), button.widget().fontMetrics().horizontalAdvance("Next Question"));
    button.set_width(button.width() + 300);
    const int wanted = button.widget().width() + 20;
    QCoreApplication::processEvents();
    EXPECT_EQ(button.widget().width(), wanted);
}

TEST_F(QtToolbarButtonTest, AWidthThatWasSetStaysWhateverTheCaptionAndTheWindow)
{
    button.set_width(1800);
    button.set_caption("&Edit");
    show(600);
    EXPECT_EQ(button.width(), 1800);
    EXPECT_EQ(button.widget().width(), 120);
    window.resize(1200, 60);
    QCoreApplication::processEvents();
    EXPECT_EQ(button.widget().width(), 120);
}

TEST_F(QtToolbarButtonTest, TheMarkOfTheLetterTakesNoRoom)
{
    button.set_caption("&Edit");
    neighbour.set_caption("Edit");
    EXPECT_EQ(button.width(), neighbour.width());
}

TEST_F(QtToolbarButtonTest, InTooNarrowAWindowNoButtonCoversAnother)
{
    button.set_width(3000);
    neighbour.set_width(3000);
    show(200);
    ASSERT_EQ(window.width(), 200);
    EXPECT_LT(button.widget().geometry().right(), neighbour.widget().x());
    EXPECT_LE(neighbour.widget().geometry().right(), 200);
    EXPECT_EQ(button.width(), 3000);
}

TEST_F(QtToolbarButtonTest, TheLetterIsShownButIsNoShortcut)
{
    button.set_caption("Next &Question");
    EXPECT_EQ(button.widget().text(), "Next &Question");
    EXPECT_EQ(button.caption(), "Next &Question");
    EXPECT_TRUE(button.widget().shortcut().isEmpty());
    QAccessibleActionInterface& actions = *QAccessible::queryAccessibleInterface(&button.widget())->actionInterface();
    EXPECT_EQ(actions.keyBindingsForAction(QAccessibleActionInterface::pressAction()).join(";"), "");
}

TEST_F(QtToolbarButtonTest, ALetterThatIsNotShownIsPromisedToNobody)
{
    button.set_caption("Show &Stats");
    button.show_access_letter(false);
    EXPECT_EQ(button.widget().text(), "Show Stats");
    EXPECT_EQ(button.caption(), "Show &Stats");
    QAccessibleInterface& accessible = *QAccessible::queryAccessibleInterface(&button.widget());
    EXPECT_EQ(accessible.text(QAccessible::Accelerator), "");
    EXPECT_EQ(accessible.text(QAccessible::Name), "Show Stats");
}

TEST_F(QtToolbarButtonTest, IsCalledByItsCaption)
{
    const auto name = [](QtButton& named) {
        return QAccessible::queryAccessibleInterface(&named.widget())->text(QAccessible::Name);
    };
    button.set_caption("+");
    neighbour.set_caption("Show &Hints");
    EXPECT_EQ(name(button), "+");
    EXPECT_EQ(name(neighbour), "Show Hints");
}

TEST_F(QtToolbarButtonTest, IsReachedWithTabButDoesNotTakeTheFocusFromATextThatIsTyped)
{
    EXPECT_EQ(button.widget().focusPolicy(), Qt::TabFocus);
}

TEST_F(QtToolbarButtonTest, ADoubleClickClicksOnce)
{
    int clicks = 0;
    button.on_click = [&] { ++clicks; };
    click_with(button.widget(), Qt::LeftButton);
    send_mouse(button.widget(), QEvent::MouseButtonDblClick, Qt::LeftButton);
    send_mouse(button.widget(), QEvent::MouseButtonRelease, Qt::LeftButton);
    EXPECT_EQ(clicks, 1);
}

} // namespace

} // namespace cuedrill::platform::qt
