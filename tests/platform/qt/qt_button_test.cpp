#include "platform/qt/qt_button.h"
#include "platform/qt/qt_test_tools.h"

#include <QApplication>
#include <QMouseEvent>
#include <algorithm>

namespace cuedrill::platform::qt {

namespace {

class QtButtonTest : public QtTest {
protected:
    QtButtonTest()
    {
        window.resize(220, 40);
        button.widget().setParent(&window);
        button.set_width(3000);
        window.show();
        button.on_click = [this] { journal += "click "; };
        button.on_mouse_down = [this](MouseButton which) { journal += "down" + number(which); };
        button.on_mouse_up = [this](MouseButton which) { journal += "up" + number(which); };
    }

    static std::string number(MouseButton which) { return std::to_string(static_cast<int>(which)) + " "; }

    /// Clicks with this timestamp, in milliseconds.
    void click_at(quint64 time, bool second_of_two = false, Qt::MouseButton which = Qt::LeftButton)
    {
        for (const QEvent::Type type :
             {second_of_two ? QEvent::MouseButtonDblClick : QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
            const QPointF point = QRectF(button.widget().rect()).center();
            QMouseEvent event(type, point, button.widget().mapToGlobal(point), which,
                              type == QEvent::MouseButtonRelease ? Qt::MouseButtons() : which, Qt::NoModifier);
            event.setTimestamp(time);
            QCoreApplication::sendEvent(&button.widget(), &event);
        }
    }

    QtGuard guard;
    QWidget window;
    QtActionGate gate{guard, window};
    QtButton button{"bot_yes", gate};
    std::string journal;
};

TEST_F(QtButtonTest, ALeftClickTellsPressClickAndReleaseInThisOrder)
{
    click_with(button.widget(), Qt::LeftButton);
    EXPECT_EQ(journal, "down1 click up1 ");
}

TEST_F(QtButtonTest, ARightClickIsNoClick)
{
    click_with(button.widget(), Qt::RightButton);
    EXPECT_EQ(journal, "down2 up2 ");
}

TEST_F(QtButtonTest, AReleaseThatABoxHasSwallowedIsToldBeforeTheNextClick)
{
    send_mouse(button.widget(), QEvent::MouseButtonPress, Qt::RightButton);
    button.widget().click();
    EXPECT_EQ(journal, "down2 up2 click ");
}

// By then the button may ask something else, which the second press of the same gesture must not answer.
TEST_F(QtButtonTest, ADoubleClickClicksOnce)
{
    click_with(button.widget(), Qt::LeftButton);
    send_mouse(button.widget(), QEvent::MouseButtonDblClick, Qt::LeftButton);
    send_mouse(button.widget(), QEvent::MouseButtonRelease, Qt::LeftButton);
    EXPECT_TRUE(journal.starts_with("down1 click up1 ")) << journal;
    EXPECT_EQ(journal.find("click", journal.find("click") + 1), std::string::npos) << journal;
    click_at(1000);
    EXPECT_TRUE(journal.ends_with("down1 click up1 ")) << journal;
}

TEST_F(QtButtonTest, AsManyClicksAsFollowEachOtherFastClickOnce)
{
    const auto interval = static_cast<quint64>(QApplication::doubleClickInterval());
    quint64 now = 10000;
    click_at(now);
    const std::string once = journal;
    ASSERT_EQ(once, "down1 click up1 ");
    // The toolkit reports every second press as a double click.
    for (const bool second : {true, false, true, false}) {
        now += interval - 1;
        click_at(now, second);
        EXPECT_EQ(std::count(journal.begin(), journal.end(), 'k'), 1) << journal;
        EXPECT_EQ(journal.find("down", 1), std::string::npos) << journal;
    }
    journal.clear();
    click_at(now + interval);
    EXPECT_EQ(journal, once);
}

TEST_F(QtButtonTest, ThirdPressOfTheRightButtonDoesNothingEither)
{
    click_at(1000, false, Qt::RightButton);
    click_at(1100, true, Qt::RightButton);
    click_at(1200, false, Qt::RightButton);
    EXPECT_EQ(journal, "down2 up2 up2 up2 ");
}

TEST_F(QtButtonTest, SpaceClicksOnceHoweverLongItIsHeld)
{
    press_key(button.widget(), Qt::Key_Space, " ");
    for (int i = 0; i < 3; ++i) {
        release_key(button.widget(), Qt::Key_Space, " ", true);
        press_key(button.widget(), Qt::Key_Space, " ", true);
    }
    EXPECT_EQ(journal, "");
    release_key(button.widget(), Qt::Key_Space, " ");
    EXPECT_EQ(journal, "click ");
}

TEST_F(QtButtonTest, AClickWhileTheFirstOneIsHandledIsDropped)
{
    int clicks = 0;
    button.on_click = [&] {
        if (++clicks == 1)
            button.widget().click();
    };
    button.widget().click();
    EXPECT_EQ(clicks, 1);
    button.widget().click();
    EXPECT_EQ(clicks, 2);
}

TEST_F(QtButtonTest, AClickOnAnotherButtonWhileTheFirstOneIsHandledIsDropped)
{
    QtButton other("bot_no", gate);
    other.widget().setParent(&window);
    other.on_click = [this] { journal += "other "; };
    button.on_click = [&] { other.widget().click(); };
    button.widget().click();
    EXPECT_EQ(journal, "");
}

TEST_F(QtButtonTest, StandsWhereTheTwipsSay)
{
    button.set_left(150);
    button.set_width(1500);
    EXPECT_EQ(button.widget().geometry(), QRect(10, 0, 100, 40));
}

TEST_F(QtButtonTest, EdgesAreRoundedToTheNearestPixel)
{
    button.set_left(100);  // 6.67 pixels
    button.set_width(998); // right edge at 73.2 pixels
    EXPECT_EQ(button.widget().x(), 7);
    EXPECT_EQ(button.widget().width(), 66);
}

TEST_F(QtButtonTest, TellsTheWidthThatWasSetAndBeforeThatTheOneThatTheCaptionNeeds)
{
    EXPECT_EQ(button.width(), 3000);
    QtButton other("bot_no", gate);
    other.widget().setParent(&window);
    other.set_caption("No");
    const int narrow = other.width();
    other.set_caption("No, ask another question");
    const int text = other.widget().fontMetrics().horizontalAdvance("No, ask another question");
    EXPECT_GT(other.width(), narrow);
    EXPECT_GT(other.width(), 15 * text);
    EXPECT_LE(other.width(), 15 * (text + 12));
}

TEST_F(QtButtonTest, TheToolTipIsShownLiterallyAndToldAsDescription)
{
    button.set_tool_tip(" Shows <b>the</b> answer ");
    EXPECT_TRUE(button.widget().toolTip().contains("&lt;b&gt;the&lt;/b&gt;"))
        << button.widget().toolTip().toStdString();
    EXPECT_EQ(button.widget().accessibleDescription(), "Shows <b>the</b> answer");
    button.set_tool_tip("");
    EXPECT_EQ(button.widget().toolTip(), "");
    EXPECT_EQ(button.widget().accessibleDescription(), "");
}

TEST_F(QtButtonTest, KeepsCaptionNameAndState)
{
    button.set_caption("No, ask another question");
    button.set_enabled(false);
    EXPECT_EQ(button.caption(), "No, ask another question");
    EXPECT_EQ(button.widget().text(), "No, ask another question");
    EXPECT_EQ(button.widget().objectName(), "bot_yes");
    button.widget().click();
    EXPECT_EQ(journal, "");
}

TEST_F(QtButtonTest, TakesTheFocus)
{
    button.set_focus();
    EXPECT_EQ(window.focusWidget(), &button.widget());
}

TEST_F(QtButtonTest, KnowsWhetherItHasTheFocus)
{
    QPushButton other(&window);
    other.show();
    other.setFocus();
    EXPECT_FALSE(button.has_focus());
    button.set_focus();
    EXPECT_TRUE(button.has_focus());
    other.setFocus();
    EXPECT_FALSE(button.has_focus());
}

TEST_F(QtButtonTest, AFailingHandlerIsReportedAndTheButtonGoesOn)
{
    std::string reported;
    guard.on_error = [&](const std::exception& error) { reported = error.what(); };
    button.on_click = [] { throw std::runtime_error("no such record"); };
    button.widget().click();
    EXPECT_EQ(reported, "no such record");
    button.on_click = [this] { journal += "click "; };
    button.widget().click();
    EXPECT_EQ(journal, "click ");
}

} // namespace

} // namespace cuedrill::platform::qt
