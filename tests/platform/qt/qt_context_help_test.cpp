#include "platform/qt/qt_button.h"
#include "platform/qt/qt_screen.h"
#include "platform/qt/qt_test_tools.h"
#include "platform/qt/qt_window.h"

#include <QDialog>
#include <QMenu>
#include <QTest>
#include <QWindow>

namespace cuedrill::platform::qt {

namespace {

class QtContextHelpTest : public QtTest {
protected:
    QtContextHelpTest()
    {
        auto* content = new QWidget;
        int top = 0;
        for (QWidget* widget : widgets()) {
            widget->setParent(content);
            widget->setGeometry(10, top += 40, 200, 30);
        }
        window.widget().setCentralWidget(content);
        button.on_click = [this] { journal += "click "; };
        button.on_mouse_down = [this](MouseButton) { journal += "down "; };
        button.on_mouse_up = [this](MouseButton) { journal += "up "; };
        button.offer_help([this] { journal += "help "; });
        tool.offer_help([this] { journal += "help "; });
        screen.offer_help(&Screen::panel_total, [this] { journal += "help "; });
        screen.offer_level_help([this] { journal += "help "; });
        window.show();
        QCoreApplication::processEvents();
        window.widget().activateWindow();
        typed.setFocus();
    }

    ~QtContextHelpTest() override { typed.setParent(nullptr); }

    std::vector<QWidget*> widgets() { return {&button.widget(), &tool.widget(), &label, &panel, &typed}; }

    QWindow* handle() { return window.widget().windowHandle(); }

    QPoint middle_of(QWidget& widget) { return widget.mapTo(&window.widget(), widget.rect().center()); }

    /// Clicks on the widget through the window's handle, as a real click arrives.
    void click(QWidget& widget, Qt::KeyboardModifiers held, Qt::MouseButton which = Qt::LeftButton)
    {
        QTest::mouseClick(handle(), which, held, middle_of(widget));
    }

    /// Moves the pointer onto the widget, starting outside all widgets.
    void point_at(QWidget& widget)
    {
        point_beside();
        QTest::mouseMove(handle(), middle_of(widget));
        QCoreApplication::processEvents();
    }

    void point_beside()
    {
        // The toolkit ignores a move to the pointer's current position, even if that was in another window; so move
        // twice.
        QTest::mouseMove(handle(), QPoint(300, 240));
        QTest::mouseMove(handle(), QPoint(300, 250));
        QCoreApplication::processEvents();
    }

    Qt::CursorShape pointer() { return handle()->cursor().shape(); }

    QtGuard guard;
    QtWindow window{"Form1", QSize(400, 300), guard};
    QtButton button{"bot_yes", window.gate()};
    QtButton tool{"pb_1", window.gate(), QtButton::Kind::toolbar};
    QWidget other_labels; ///< parent of the labels that no test uses
    QtScreen screen{other_labels, [](const QString&) {}};
    QWidget& label = screen.label(&Screen::panel_total);
    QWidget& panel = screen.level_row(2);
    QPlainTextEdit typed;
    std::string journal;
};

TEST_F(QtContextHelpTest, ShiftAndAClickOnAnyOfThemAsks)
{
    for (QWidget* widget : {widgets()[0], widgets()[1], widgets()[2], widgets()[3]}) {
        journal.clear();
        click(*widget, Qt::ShiftModifier);
        EXPECT_EQ(journal, "help ") << widget->objectName().toStdString();
    }
}

TEST_F(QtContextHelpTest, ADisabledControlIsAskedJustSo)
{
    for (QWidget* widget : {widgets()[0], widgets()[1], widgets()[2], widgets()[3]})
        widget->setEnabled(false);
    for (QWidget* widget : {widgets()[0], widgets()[1], widgets()[2], widgets()[3]}) {
        journal.clear();
        click(*widget, Qt::ShiftModifier);
        EXPECT_EQ(journal, "help ") << widget->objectName().toStdString();
    }
}

TEST_F(QtContextHelpTest, AnEventThatIsSentToADisabledButtonItselfAsks)
{
    button.set_enabled(false);
    QTest::mouseClick(&button.widget(), Qt::LeftButton, Qt::ShiftModifier);
    EXPECT_EQ(journal, "help ");
}

TEST_F(QtContextHelpTest, WhatStandsInAControlBelongsToIt)
{
    QWidget part(&panel);
    part.resize(panel.size());
    part.show();
    click(part, Qt::ShiftModifier);
    EXPECT_EQ(journal, "help ");
}

TEST_F(QtContextHelpTest, TheFocusStaysWhereItIs)
{
    ASSERT_TRUE(typed.hasFocus());
    click(button.widget(), Qt::ShiftModifier);
    EXPECT_TRUE(typed.hasFocus());
    click(button.widget(), Qt::NoModifier);
    EXPECT_TRUE(button.widget().hasFocus());
}

TEST_F(QtContextHelpTest, TheReleaseDoesNothingAlsoWhenShiftIsUpAgain)
{
    const QPoint place = middle_of(button.widget());
    QTest::mousePress(handle(), Qt::LeftButton, Qt::ShiftModifier, place);
    EXPECT_FALSE(button.widget().isDown());
    QTest::mouseRelease(handle(), Qt::LeftButton, Qt::NoModifier, place);
    EXPECT_EQ(journal, "help ");
}

TEST_F(QtContextHelpTest, TheNextClickIsAClickAgain)
{
    click(button.widget(), Qt::ShiftModifier);
    click(button.widget(), Qt::NoModifier);
    EXPECT_EQ(journal, "help down click up ");
}

TEST_F(QtContextHelpTest, WhoGoesAwayBeforeTheReleaseAsksNothing)
{
    QTest::mousePress(handle(), Qt::LeftButton, Qt::ShiftModifier, middle_of(label));
    QTest::mouseRelease(handle(), Qt::LeftButton, Qt::ShiftModifier, middle_of(button.widget()));
    EXPECT_EQ(journal, "");
}

TEST_F(QtContextHelpTest, AReleaseThatNeverComesIsNotTakenFromTheNextClick)
{
    QTest::mousePress(handle(), Qt::LeftButton, Qt::ShiftModifier, middle_of(label));
    click(button.widget(), Qt::NoModifier);
    EXPECT_EQ(journal, "down click up ");
}

TEST_F(QtContextHelpTest, TheRightButtonIsNoQuestion)
{
    click(button.widget(), Qt::ShiftModifier, Qt::RightButton);
    EXPECT_EQ(journal, "down up ");
}

TEST_F(QtContextHelpTest, WithoutHelpShiftChangesNothing)
{
    QtButton other("bot_no", window.gate());
    other.widget().setParent(window.widget().centralWidget());
    other.widget().setGeometry(220, 40, 100, 30);
    other.widget().show();
    other.on_click = [this] { journal += "other "; };
    click(other.widget(), Qt::ShiftModifier);
    EXPECT_EQ(journal, "other ");
}

TEST_F(QtContextHelpTest, TheSecondPressOfADoubleClickAsksNothing)
{
    QTest::mouseDClick(handle(), Qt::LeftButton, Qt::ShiftModifier, middle_of(button.widget()));
    EXPECT_EQ(journal, "help ");
    click(button.widget(), Qt::NoModifier);
    EXPECT_EQ(journal, "help down click up ");
}

TEST_F(QtContextHelpTest, OnlyTheLastOfferCounts)
{
    button.offer_help([this] { journal += "newer "; });
    click(button.widget(), Qt::ShiftModifier);
    EXPECT_EQ(journal, "newer ");
}

TEST_F(QtContextHelpTest, F1AsksTheButtonThatHasTheFocusOnceHoweverLongItIsHeld)
{
    button.set_focus();
    EXPECT_TRUE(press_key(button.widget(), Qt::Key_F1));
    EXPECT_TRUE(press_key(button.widget(), Qt::Key_F1, {}, true));
    EXPECT_EQ(journal, "help ");
}

TEST_F(QtContextHelpTest, F1WhereNoHelpIsOfferedAsksTheWindowOnceHoweverLongItIsHeld)
{
    window.on_help = [this] { journal += "all "; };
    EXPECT_TRUE(press_key(typed, Qt::Key_F1));
    EXPECT_TRUE(press_key(typed, Qt::Key_F1, {}, true));
    EXPECT_EQ(journal, "all ");
}

TEST_F(QtContextHelpTest, OtherKeysAskForNothing)
{
    button.set_focus();
    EXPECT_FALSE(press_key(window.widget(), Qt::Key_F1));
    press_key(button.widget(), Qt::Key_F1, {}, false, Qt::ControlModifier);
    press_key(button.widget(), Qt::Key_F2);
    EXPECT_EQ(journal, "");
}

TEST_F(QtContextHelpTest, NothingIsAskedWhileAnActionRuns)
{
    button.on_click = [this] {
        click(label, Qt::ShiftModifier);
        press_key(button.widget(), Qt::Key_F1);
    };
    button.set_focus();
    button.widget().click();
    EXPECT_EQ(journal, "");
}

TEST_F(QtContextHelpTest, NothingIsAskedBehindABox)
{
    QDialog box;
    button.set_focus();
    when_box_opens<QDialog>([&](QDialog& open) {
        QTest::mouseClick(&button.widget(), Qt::LeftButton, Qt::ShiftModifier);
        press_key(button.widget(), Qt::Key_F1);
        open.reject();
    });
    box.exec();
    EXPECT_EQ(journal, "");
}

TEST_F(QtContextHelpTest, BesideAnOpenMenuAClickOnlyClosesTheMenu)
{
    QMenu menu;
    menu.addAction("Undo");
    menu.popup(window.widget().mapToGlobal(QPoint(250, 250)));
    ASSERT_TRUE(menu.isVisible());
    click(button.widget(), Qt::ShiftModifier);
    EXPECT_FALSE(menu.isVisible());
    EXPECT_EQ(journal, "");
}

TEST_F(QtContextHelpTest, EachWindowAnswersForItsOwnControls)
{
    QtWindow other("Form2", QSize(200, 100), guard);
    other.show();
    other.gate().run([this] { QTest::mouseClick(&button.widget(), Qt::LeftButton, Qt::ShiftModifier); });
    EXPECT_EQ(journal, "help ");
}

TEST_F(QtContextHelpTest, HelpThatFailsIsReported)
{
    std::string reported;
    guard.on_error = [&](const std::exception& error) { reported = error.what(); };
    button.offer_help([] { throw std::runtime_error("no help"); });
    click(button.widget(), Qt::ShiftModifier);
    EXPECT_EQ(reported, "no help");
}

TEST_F(QtContextHelpTest, ThePointerIsAnUprightArrowOverThemAndOnlyThere)
{
    for (QWidget* widget : {widgets()[0], widgets()[1], widgets()[2], widgets()[3]}) {
        point_at(*widget);
        EXPECT_EQ(pointer(), Qt::UpArrowCursor) << widget->objectName().toStdString();
        point_beside();
        EXPECT_NE(pointer(), Qt::UpArrowCursor);
    }
}

TEST_F(QtContextHelpTest, ThePointerIsTheSameOverDisabledOnes)
{
    for (QWidget* widget : {widgets()[0], widgets()[1], widgets()[2], widgets()[3]})
        widget->setEnabled(false);
    for (QWidget* widget : {widgets()[0], widgets()[1], widgets()[2], widgets()[3]}) {
        point_at(*widget);
        EXPECT_EQ(pointer(), Qt::UpArrowCursor) << widget->objectName().toStdString();
        point_beside();
        EXPECT_NE(pointer(), Qt::UpArrowCursor);
    }
}

TEST_F(QtContextHelpTest, ThePointerStaysWhenAnotherWidgetGetsOneOfItsOwn)
{
    point_at(button.widget());
    typed.setCursor(Qt::WaitCursor);
    EXPECT_EQ(pointer(), Qt::UpArrowCursor);
}

TEST_F(QtContextHelpTest, ThePointerStaysWhileTheControlBelowItIsDisabledAndEnabled)
{
    point_at(button.widget());
    for (const bool enabled : {false, true, false}) {
        button.set_enabled(enabled);
        QCoreApplication::processEvents();
        EXPECT_EQ(pointer(), Qt::UpArrowCursor) << enabled;
    }
    panel.setEnabled(false); // not the widget under the pointer
    QCoreApplication::processEvents();
    EXPECT_EQ(pointer(), Qt::UpArrowCursor);
    point_beside();
    EXPECT_NE(pointer(), Qt::UpArrowCursor);
}

} // namespace

} // namespace cuedrill::platform::qt
