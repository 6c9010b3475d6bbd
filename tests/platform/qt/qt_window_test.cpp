#include "common/errors.h"
#include "platform/qt/qt_test_tools.h"
#include "platform/qt/qt_window.h"

#include <QAccessible>
#include <QElapsedTimer>
#include <QImage>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QTimer>
#include <QWindow>

namespace cuedrill::platform::qt {

namespace {

class QtWindowTest : public QtTest {
protected:
    QtGuard guard;
    QtWindow window{"Form1", QSize(400, 300), guard};
};

TEST_F(QtWindowTest, ShowsItsCaptionAsItIs)
{
    window.set_caption("Cuedrill: a [*] & <b>");
    EXPECT_EQ(window.caption(), "Cuedrill: a [*] & <b>");
    window.show();
    QCoreApplication::processEvents();
    EXPECT_EQ(window.widget().windowHandle()->title(), "Cuedrill: a [*] & <b>");
}

TEST_F(QtWindowTest, AppearsInTheMiddleOfTheScreenInItsSize)
{
    window.show();
    EXPECT_TRUE(window.widget().isVisible());
    EXPECT_EQ(window.widget().size(), QSize(400, 300));
    const QPoint off = window.widget().geometry().center() - window.widget().screen()->availableGeometry().center();
    EXPECT_LE(off.manhattanLength(), 2);
    window.hide();
    EXPECT_FALSE(window.widget().isVisible());
}

TEST_F(QtWindowTest, ShowsWhichButtonHasTheFocusFromTheStart)
{
    auto* button = new QPushButton;
    window.widget().setCentralWidget(button);
    window.show();
    QCoreApplication::processEvents();
    button->clearFocus();
    const QImage without = button->grab().toImage();
    button->setFocus();
    ASSERT_TRUE(button->hasFocus());
    EXPECT_NE(button->grab().toImage(), without);
}

/// Handles events until `done`, for at most ten seconds.
bool handle_events_until(const std::function<bool()>& done)
{
    QElapsedTimer time;
    time.start();
    while (!done() && time.elapsed() < 10'000)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    return done();
}

TEST_F(QtWindowTest, TellsOfItsFirstPictureOnceAfterEachShow)
{
    int painted = 0;
    int told = 0;
    EventWatcher watcher(window.widget(), [&](QEvent::Type type) { painted += type == QEvent::Paint ? 1 : 0; });
    window.on_first_picture = [&] {
        EXPECT_GT(painted, 0);
        ++told;
    };
    window.show();
    EXPECT_EQ(told, 0);
    EXPECT_TRUE(handle_events_until([&] { return told == 1; }));
    const int before = painted;
    window.widget().update();
    EXPECT_TRUE(handle_events_until([&] { return painted > before; }));
    QCoreApplication::processEvents();
    EXPECT_EQ(told, 1);
    window.hide();
    window.show();
    EXPECT_TRUE(handle_events_until([&] { return told == 2; }));
}

TEST_F(QtWindowTest, TellsOfItsFirstPictureWhenNoActionIsRunning)
{
    bool running = false;
    bool told = false;
    window.on_first_picture = [&] {
        EXPECT_FALSE(running);
        told = true;
    };
    bool painted = false;
    EventWatcher watcher(window.widget(), [&](QEvent::Type type) { painted = painted || type == QEvent::Paint; });
    EXPECT_TRUE(window.gate().run([&] {
        running = true;
        window.show();
        EXPECT_TRUE(handle_events_until([&] { return painted; }));
        for (int i = 0; i < 10; ++i)
            QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
        running = false;
    }));
    EXPECT_FALSE(told);
    EXPECT_TRUE(handle_events_until([&] { return told; }));
}

TEST_F(QtWindowTest, TellsOfNoPictureOnceItIsHidden)
{
    bool told = false;
    window.on_first_picture = [&] { told = true; };
    EventWatcher watcher(window.widget(), [&](QEvent::Type type) {
        if (type == QEvent::Paint)
            QTimer::singleShot(0, &window.widget(), [&] { window.hide(); });
    });
    window.show();
    EXPECT_TRUE(handle_events_until([&] { return !window.widget().isVisible(); }));
    for (int i = 0; i < 10; ++i)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    EXPECT_FALSE(told);
}

TEST_F(QtWindowTest, IsNeverLargerThanTheScreen)
{
    QtWindow large("Form1", QSize(20000, 20000), guard);
    large.show();
    const QSize screen = large.widget().screen()->availableSize();
    EXPECT_LE(large.widget().width(), screen.width());
    EXPECT_LE(large.widget().height(), screen.height());
}

TEST_F(QtWindowTest, AStayingWindowIsNotClosedByTheToolkit)
{
    int asked = 0;
    window.on_close = [&] { ++asked; };
    window.show();
    EXPECT_FALSE(window.widget().close());
    EXPECT_EQ(asked, 1);
    EXPECT_TRUE(window.widget().isVisible());
    EXPECT_FALSE(guard.ending());
}

TEST_F(QtWindowTest, ClosingMayEndTheProgram)
{
    window.on_close = [] { throw common::ProgramEnded{}; };
    window.show();
    window.widget().close();
    EXPECT_TRUE(guard.ending());
}

TEST_F(QtWindowTest, TheEndOfTheSessionIsNoWishToClose)
{
    std::string told;
    window.on_close = [&] { told += "close "; };
    window.on_session_end = [&] { told += "session "; };
    window.end_session();
    EXPECT_EQ(told, "session ");
}

TEST_F(QtWindowTest, KeysReachTheHookAndAFailingOneIsSwallowed)
{
    std::string reported;
    guard.on_error = [&](const std::exception& error) { reported = error.what(); };
    auto* below = new QWidget;
    window.widget().setCentralWidget(below);
    below->setFocus();
    window.on_key = [](const KeyPress&) -> bool { throw std::runtime_error("key failed"); };
    EXPECT_TRUE(press_key(*below, Qt::Key_Q, "q"));
    EXPECT_EQ(reported, "key failed");
}

TEST_F(QtWindowTest, AnAnnouncementIsNotHiddenFromAssistiveTechnology)
{
    window.show();
    QAccessibleInterface& accessible =
        *QAccessible::queryAccessibleInterface(window.widget().findChild<QLabel*>("announcement"));
    EXPECT_EQ(accessible.role(), QAccessible::Notification);
    EXPECT_EQ(accessible.text(QAccessible::Name), "");
    EXPECT_FALSE(accessible.state().invisible);
    EXPECT_FALSE(accessible.state().focusable);
    window.announce("Not known.");
    window.announce_last("Level 0.");
    EXPECT_EQ(accessible.text(QAccessible::Name), "Not known. Level 0.");
}

TEST_F(QtWindowTest, NothingIsSeenOfAnAnnouncement)
{
    window.show();
    QCoreApplication::processEvents();
    const QImage before = window.widget().grab().toImage();
    const QWidget* focus = window.widget().focusWidget();
    window.announce_last("Not known. Level 0.");
    QCoreApplication::processEvents();
    EXPECT_EQ(window.widget().grab().toImage(), before);
    EXPECT_EQ(window.widget().focusWidget(), focus);
    EXPECT_EQ(window.widget().size(), QSize(400, 300));
}

TEST_F(QtWindowTest, KeysPassWhileNoHookIsSet)
{
    auto* below = new QWidget;
    window.widget().setCentralWidget(below);
    below->setFocus();
    EXPECT_FALSE(press_key(*below, Qt::Key_Q, "q"));
}

} // namespace

} // namespace cuedrill::platform::qt
