#include "common/errors.h"
#include "platform/qt/qt_f_msgbox.h"
#include "platform/qt/qt_test_tools.h"

#include <QAccessible>
#include <QFontDatabase>
#include <QMainWindow>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QSizeGrip>
#include <QWindow>

namespace cuedrill::platform::qt {

namespace {

class QtFMsgboxTest : public QtTest {
protected:
    QtFMsgboxTest()
    {
        main_window.setGeometry(40, 50, 500, 300);
        main_window.show();
        main_window.activateWindow();
        QCoreApplication::processEvents();
    }

    void show()
    {
        f_msgbox.window.show();
        QCoreApplication::processEvents();
    }

    template <class Widget = QWidget>
    Widget& find(const char* name)
    {
        return *box.widget().findChild<Widget*>(QLatin1String(name));
    }

    QtGuard guard;
    QMainWindow main_window;
    QtKeyFilter keys;
    QtFMsgbox box{guard, main_window, keys};
    FMsgbox& f_msgbox = box.controls();
};

TEST_F(QtFMsgboxTest, EveryControlIsFoundByItsOwnName)
{
    EXPECT_EQ(box.widget().objectName(), "f_msgbox");
    f_msgbox.Text1.set_text("<b>text</b>");
    f_msgbox.b_ok.set_caption("&OK");
    EXPECT_EQ(find<QPlainTextEdit>("Text1").toPlainText(), "<b>text</b>");
    EXPECT_EQ(find<QPushButton>("b_ok").text(), "&OK");
    f_msgbox.pic_adjust.set_visible(false);
    show();
    EXPECT_TRUE(find<QSizeGrip>("pic_adjust").isHidden());
}

TEST_F(QtFMsgboxTest, IsAWindowOfItsOwnThatIsNeitherModalNorShownByItself)
{
    EXPECT_FALSE(box.widget().isVisible());
    show();
    EXPECT_TRUE(box.widget().isWindow());
    EXPECT_EQ(box.widget().parentWidget(), nullptr);
    EXPECT_EQ(box.widget().windowHandle()->transientParent(), nullptr) << "it would stay above the main window";
    EXPECT_FALSE(box.widget().isModal());
    EXPECT_EQ(box.widget().windowFlags() & Qt::WindowType_Mask, Qt::Window);
    EXPECT_EQ(QAccessible::queryAccessibleInterface(&box.widget())->role(), QAccessible::Window);
}

TEST_F(QtFMsgboxTest, ShowsItsCaptionAsItIs)
{
    f_msgbox.window.set_caption("a [*] & <b>");
    show();
    EXPECT_EQ(box.widget().windowHandle()->title(), "a [*] & <b>");
}

TEST_F(QtFMsgboxTest, LiesExactlyOverTheMainWindow)
{
    f_msgbox.window.cover_main_window();
    EXPECT_EQ(f_msgbox.window.inner_width(), 15 * 500);
    EXPECT_EQ(f_msgbox.window.inner_height(), 15 * 300);
    show();
    EXPECT_EQ(box.widget().geometry(), main_window.geometry());
    main_window.setGeometry(10, 60, 640, 400);
    QCoreApplication::processEvents();
    f_msgbox.window.cover_main_window();
    QCoreApplication::processEvents();
    EXPECT_EQ(box.widget().geometry(), QRect(10, 60, 640, 400));
}

TEST_F(QtFMsgboxTest, CoversAMainWindowThatFillsTheScreenAndIsSmallAgainWithIt)
{
    f_msgbox.window.show();
    for (const Qt::WindowState filling : {Qt::WindowMaximized, Qt::WindowFullScreen}) {
        main_window.setGeometry(40, 50, 500, 300);
        main_window.setWindowState(filling);
        QCoreApplication::processEvents();
        f_msgbox.window.cover_main_window();
        QCoreApplication::processEvents();
        EXPECT_TRUE(box.widget().windowState().testFlag(filling));
        EXPECT_EQ(box.widget().geometry(), main_window.geometry());
        EXPECT_EQ(box.widget().normalGeometry(), QRect(40, 50, 500, 300));
        main_window.setWindowState(Qt::WindowNoState);
        main_window.setGeometry(10, 60, 640, 400);
        QCoreApplication::processEvents();
        f_msgbox.window.cover_main_window();
        QCoreApplication::processEvents();
        EXPECT_FALSE(box.widget().windowState().testFlag(filling));
        EXPECT_EQ(box.widget().geometry(), QRect(10, 60, 640, 400));
    }
}

TEST_F(QtFMsgboxTest, ControlsStandWhereTheyArePlacedInTwips)
{
    f_msgbox.window.place(f_msgbox.Text1, {.left = 150, .top = 300, .width = 3000, .height = 1500});
    f_msgbox.window.place(f_msgbox.b_ok, {.left = 22, .top = 22, .width = 46, .height = 46});
    f_msgbox.window.place(f_msgbox.pic_adjust, {.left = 1500, .top = 1515, .width = 255, .height = 240});
    EXPECT_EQ(find("Text1").geometry(), QRect(10, 20, 200, 100));
    // 22 twips are 1.47 pixels, and 22 + 46 are 4.53: each edge is rounded on its own.
    EXPECT_EQ(find("b_ok").geometry(), QRect(1, 1, 4, 4));
    EXPECT_EQ(find("pic_adjust").geometry(), QRect(100, 101, 17, 16));
}

TEST_F(QtFMsgboxTest, TellsEachNewSizeAndThatItIsRestored)
{
    f_msgbox.window.cover_main_window();
    show();
    common::Twips width = 0;
    int told = 0;
    f_msgbox.window.on_resize = [&] {
        width = f_msgbox.window.inner_width();
        ++told;
    };
    box.widget().resize(600, 400);
    QCoreApplication::processEvents();
    EXPECT_EQ(width, 15 * 600);
    box.widget().setWindowState(Qt::WindowMinimized);
    QCoreApplication::processEvents();
    EXPECT_TRUE(f_msgbox.window.minimised());
    told = 0;
    show();
    EXPECT_FALSE(f_msgbox.window.minimised());
    EXPECT_GE(told, 1);
}

TEST_F(QtFMsgboxTest, AFailingResizeIsReported)
{
    std::string reported;
    guard.on_error = [&](const std::exception& error) { reported = error.what(); };
    f_msgbox.window.on_resize = [] { throw std::runtime_error("resize failed"); };
    show();
    EXPECT_EQ(reported, "resize failed");
}

TEST_F(QtFMsgboxTest, TheTextGetsTheKeyboardEachTimeTheWindowIsShown)
{
    show();
    EXPECT_TRUE(box.widget().isActiveWindow());
    EXPECT_TRUE(f_msgbox.Text1.has_focus());
    f_msgbox.b_ok.set_focus();
    main_window.activateWindow();
    show();
    EXPECT_TRUE(box.widget().isActiveWindow());
    EXPECT_TRUE(f_msgbox.Text1.has_focus());
}

TEST_F(QtFMsgboxTest, TheMainWindowHasTheKeyboardAgainWhenItIsHidden)
{
    show();
    ASSERT_FALSE(main_window.isActiveWindow());
    f_msgbox.window.hide();
    QCoreApplication::processEvents();
    EXPECT_FALSE(box.widget().isVisible());
    EXPECT_TRUE(main_window.isActiveWindow());
}

TEST_F(QtFMsgboxTest, TakesTheKeyboardFromNoOtherWindowWhenItIsHidden)
{
    show();
    QWidget other;
    other.show();
    other.activateWindow();
    QCoreApplication::processEvents();
    f_msgbox.window.hide();
    QCoreApplication::processEvents();
    EXPECT_TRUE(other.isActiveWindow());
}

TEST_F(QtFMsgboxTest, ClosingAsksAndClosesNothing)
{
    int asked = 0;
    f_msgbox.window.on_close = [&] { ++asked; };
    show();
    EXPECT_FALSE(box.widget().close());
    EXPECT_EQ(asked, 1);
    EXPECT_TRUE(box.widget().isVisible());
    EXPECT_FALSE(guard.ending());
}

TEST_F(QtFMsgboxTest, TheEndOfTheProgramMayComeFromIt)
{
    f_msgbox.window.on_close = [] { throw common::ProgramEnded{}; };
    show();
    box.widget().close();
    EXPECT_TRUE(guard.ending());
}

TEST_F(QtFMsgboxTest, SeesItsOwnKeysBeforeItsControls)
{
    std::string seen;
    f_msgbox.window.on_key = [&](const KeyPress& press) {
        seen += press.key == Key::escape ? "escape " : press.key == Key::enter ? "enter " : press.character + " ";
        if (press.auto_repeat)
            seen += "held ";
        return press.key != Key::character;
    };
    int clicks = 0;
    f_msgbox.b_ok.on_click = [&] { ++clicks; };
    show();
    EXPECT_TRUE(press_key(find("Text1"), Qt::Key_Escape, "\x1b"));
    press_key(find("Text1"), Qt::Key_Escape, "\x1b", true);
    press_key(main_window, Qt::Key_Escape, "\x1b");
    f_msgbox.b_ok.set_focus();
    press_key(find("b_ok"), Qt::Key_Return, "\r");
    EXPECT_EQ(clicks, 0);
    press_key(find("b_ok"), Qt::Key_Space, " ");
    EXPECT_EQ(clicks, 1);
    EXPECT_EQ(seen, "escape escape held enter   ");
}

TEST_F(QtFMsgboxTest, AFailingKeyIsReportedAndAClickDuringAnActionIsDropped)
{
    std::string reported;
    guard.on_error = [&](const std::exception& error) { reported = error.what(); };
    int clicks = 0;
    f_msgbox.b_ok.on_click = [&] { ++clicks; };
    f_msgbox.window.on_key = [&](const KeyPress&) -> bool {
        find<QPushButton>("b_ok").click();
        throw std::runtime_error("key failed");
    };
    show();
    EXPECT_TRUE(press_key(find("Text1"), Qt::Key_Q, "q"));
    EXPECT_EQ(reported, "key failed");
    EXPECT_EQ(clicks, 0);
}

TEST_F(QtFMsgboxTest, ItsTextCanBeScrolledBothWaysButNotChanged)
{
    std::string text;
    for (int i = 0; i < 100; ++i)
        text += std::string(200, 'W') + "\r\n";
    f_msgbox.Text1.set_text(text);
    f_msgbox.window.place(f_msgbox.Text1, {.left = 0, .top = 0, .width = 3000, .height = 1500});
    show();
    auto& edit = find<QPlainTextEdit>("Text1");
    EXPECT_GT(edit.verticalScrollBar()->maximum(), 0);
    EXPECT_GT(edit.horizontalScrollBar()->maximum(), 0);
    EXPECT_TRUE(edit.horizontalScrollBar()->isVisible());
    press_key(edit, Qt::Key_PageDown);
    press_key(edit, Qt::Key_PageDown);
    EXPECT_GT(edit.verticalScrollBar()->value(), 0);
    press_key(edit, Qt::Key_X, "x");
    EXPECT_EQ(f_msgbox.Text1.text(), text);
}

TEST_F(QtFMsgboxTest, TabGoesFromTheTextToTheButtonAndBack)
{
    show();
    press_key(find("Text1"), Qt::Key_Tab, "\t");
    EXPECT_TRUE(f_msgbox.b_ok.has_focus());
    press_key(find("b_ok"), Qt::Key_Tab, "\t");
    EXPECT_TRUE(f_msgbox.Text1.has_focus());
}

TEST_F(QtFMsgboxTest, TheButtonGivesItsHelp)
{
    int asked = 0;
    f_msgbox.b_ok.offer_help([&] { ++asked; });
    show();
    f_msgbox.b_ok.set_focus();
    press_key(find("b_ok"), Qt::Key_F1);
    EXPECT_EQ(asked, 1);
    f_msgbox.Text1.set_focus();
    EXPECT_TRUE(press_key(find("Text1"), Qt::Key_F1));
    EXPECT_EQ(asked, 1);
}

TEST_F(QtFMsgboxTest, TheSizeGripTakesNoFocusAndHasAName)
{
    EXPECT_EQ(find("pic_adjust").focusPolicy(), Qt::NoFocus);
    EXPECT_EQ(QAccessible::queryAccessibleInterface(&find("pic_adjust"))->text(QAccessible::Name),
              "Size of the window");
}

} // namespace

} // namespace cuedrill::platform::qt
