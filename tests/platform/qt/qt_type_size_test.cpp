#include "fakes/fake_settings.h"
#include "platform/qt/qt_form1.h"
#include "platform/qt/qt_test_tools.h"
#include "platform/qt/qt_type_size.h"

#include <QListView>
#include <QMainWindow>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTest>
#include <QTextBlock>
#include <QTextLayout>
#include <QWheelEvent>
#include <csignal>
#include <cstdlib>
#include <memory>

namespace cuedrill::platform::qt {

namespace {

class QtTypeSizeTest : public QtTest {
protected:
    QtTypeSizeTest() { open(); }

    /// Makes the window anew, as the next run of the program does.
    void open()
    {
        form1.reset();
        form1 = std::make_unique<QtForm1>(guard, QtWindowState(&settings));
        for (TextBox* box : {&form1->controls().Text_q, &form1->controls().Text_a})
            box->set_font({"FixedSys", 9, false});
        form1->controls().panel_lista.set_visible(true);
        form1->controls().listav.set_visible(true);
        form1->controls().window.show();
        form1->widget().activateWindow();
        form1->widget().resize(1000, 720);
        QCoreApplication::processEvents();
    }

    template <class Widget = QWidget>
    Widget& widget(const char* name)
    {
        return *form1->widget().findChild<Widget*>(QLatin1String(name));
    }

    double points(const char* name) { return widget(name).font().pointSizeF(); }

    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::ControlModifier)
    {
        QTest::keyClick(&form1->widget(), key, modifiers);
    }

    void turn_wheel(QWidget& over, int angle, Qt::KeyboardModifiers modifiers = Qt::ControlModifier)
    {
        const QPointF place = QRectF(over.rect()).center();
        QWheelEvent event(place, over.mapToGlobal(place), QPoint(), QPoint(0, angle), Qt::NoButton, modifiers,
                          Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&over, &event);
    }

    QtGuard guard;
    fakes::FakeSettings settings;
    std::unique_ptr<QtForm1> form1;
};

TEST_F(QtTypeSizeTest, TheTypeHasTheSizeLaidDownInTheFirstWindow)
{
    for (const char* name : {"Text_q", "Text_a", "t_hint", "listav"})
        EXPECT_DOUBLE_EQ(points(name), 9) << name;
}

TEST_F(QtTypeSizeTest, GrowsWithTheWindowInTheDirectionThatGrowsLess)
{
    form1->widget().resize(2000, 1080);
    for (const char* name : {"Text_q", "Text_a", "t_hint", "listav"})
        EXPECT_DOUBLE_EQ(points(name), 13.5) << name;
    form1->widget().resize(1200, 1440);
    EXPECT_DOUBLE_EQ(points("Text_q"), 10.8);
    EXPECT_DOUBLE_EQ(growth(QSize(1920, 1080)), 1.5);
}

TEST_F(QtTypeSizeTest, IsNeverSmallerInASmallWindow)
{
    form1->widget().resize(400, 300);
    for (const char* name : {"Text_q", "Text_a", "t_hint", "listav"})
        EXPECT_DOUBLE_EQ(points(name), 9) << name;
}

TEST_F(QtTypeSizeTest, TheFontOfACourseGrowsToo)
{
    press(Qt::Key_Plus);
    form1->controls().Text_q.set_font({"DejaVu Serif", 12, true});
    EXPECT_NEAR(points("Text_q"), 13.2, 1e-6);
    EXPECT_TRUE(widget("Text_q").font().bold());
    form1->widget().resize(2000, 1440);
    EXPECT_NEAR(points("Text_q"), 26.4, 1e-6);
}

TEST_F(QtTypeSizeTest, CtrlWithPlusAndMinusGoesInStepsAndCtrl0Back)
{
    press(Qt::Key_Plus);
    for (const char* name : {"Text_q", "Text_a", "t_hint", "listav"})
        EXPECT_NEAR(points(name), 9.9, 1e-6) << name;
    press(Qt::Key_Equal);
    EXPECT_NEAR(points("Text_q"), 11.25, 1e-6);
    press(Qt::Key_Plus, Qt::ControlModifier | Qt::KeypadModifier);
    EXPECT_NEAR(points("Text_q"), 13.5, 1e-6);
    press(Qt::Key_Minus);
    EXPECT_NEAR(points("Text_q"), 11.25, 1e-6);
    press(Qt::Key_0);
    EXPECT_DOUBLE_EQ(points("Text_q"), 9);
}

TEST_F(QtTypeSizeTest, TheKeysWithoutCtrlChangeNothing)
{
    for (const Qt::Key key : {Qt::Key_Plus, Qt::Key_Minus, Qt::Key_0})
        press(key, Qt::NoModifier);
    EXPECT_DOUBLE_EQ(points("Text_q"), 9);
}

TEST_F(QtTypeSizeTest, TheKeysWorkWhileTextIsTypedAndTypeNothing)
{
    form1->controls().Text_a.set_focus();
    QTest::keyClick(&widget("Text_a"), Qt::Key_Plus, Qt::ControlModifier);
    EXPECT_NEAR(points("Text_a"), 9.9, 1e-6);
    EXPECT_EQ(form1->controls().Text_a.text(), "");
}

TEST_F(QtTypeSizeTest, TheZoomStopsAtItsLimits)
{
    for (int press_number = 0; press_number < 30; ++press_number)
        press(Qt::Key_Plus);
    EXPECT_DOUBLE_EQ(points("Text_q"), 36);
    for (int press_number = 0; press_number < 30; ++press_number)
        press(Qt::Key_Minus);
    EXPECT_NEAR(points("Text_q"), 5.4, 1e-6);
    for (int notch = 0; notch < 30; ++notch)
        turn_wheel(*widget<QPlainTextEdit>("Text_q").viewport(), 120);
    EXPECT_DOUBLE_EQ(points("Text_q"), 36);
}

TEST_F(QtTypeSizeTest, CtrlAndTheWheelZoomsOverEveryTextLockedOrNot)
{
    form1->controls().Text_q.set_locked(true);
    for (QWidget* over : {widget<QPlainTextEdit>("Text_q").viewport(), widget<QPlainTextEdit>("Text_a").viewport(),
                          widget<QPlainTextEdit>("t_hint").viewport(), widget<QListView>("listav").viewport()}) {
        turn_wheel(*over, 120);
        for (const char* name : {"Text_q", "Text_a", "t_hint", "listav"})
            EXPECT_NEAR(points(name), 9.9, 1e-6) << name;
        turn_wheel(*over, -120);
        EXPECT_DOUBLE_EQ(points("Text_q"), 9);
    }
}

TEST_F(QtTypeSizeTest, AFineWheelMakesAStepOfSeveralEvents)
{
    QWidget& over = *widget<QPlainTextEdit>("Text_q").viewport();
    for (int event = 0; event < 3; ++event)
        turn_wheel(over, 30);
    EXPECT_DOUBLE_EQ(points("Text_q"), 9);
    turn_wheel(over, 30);
    EXPECT_NEAR(points("Text_q"), 9.9, 1e-6);
}

TEST_F(QtTypeSizeTest, TheWheelAloneChangesNoType)
{
    turn_wheel(*widget<QPlainTextEdit>("Text_q").viewport(), 120, Qt::NoModifier);
    EXPECT_DOUBLE_EQ(points("Text_q"), 9);
}

TEST_F(QtTypeSizeTest, TheZoomIsThereAgainInTheNextRun)
{
    press(Qt::Key_Plus);
    press(Qt::Key_Plus);
    open();
    EXPECT_EQ(settings.get("CUEDRILL", "window", "zoom"), "125");
    EXPECT_NEAR(points("Text_q"), 11.25, 1e-6);
    EXPECT_NEAR(points("listav"), 11.25, 1e-6);
}

TEST_F(QtTypeSizeTest, TheZoomIsStoredWhenTheWindowIsHidden)
{
    press(Qt::Key_Plus);
    form1->controls().window.hide();
    EXPECT_EQ(settings.get("CUEDRILL", "window", "zoom"), "110");
}

TEST_F(QtTypeSizeTest, TheZoomIsStoredWhenTheSessionEnds)
{
    press(Qt::Key_Minus);
    std::raise(SIGTERM);
    QCoreApplication::processEvents();
    EXPECT_EQ(settings.get("CUEDRILL", "window", "zoom"), "90");
}

TEST_F(QtTypeSizeTest, AnUnusableStoredZoomIsIgnored)
{
    for (const char* kept : {"", "large", "59", "401", "-100", "1e2"}) {
        settings.set("CUEDRILL", "window", "zoom", kept);
        open();
        EXPECT_DOUBLE_EQ(points("Text_q"), 9) << kept;
    }
}

/// The rectangle of the text in a box, in coordinates of the box.
QRectF text_place(const QPlainTextEdit& edit)
{
    QTextCursor cursor(edit.document());
    const QRect first = edit.cursorRect(cursor);
    cursor.movePosition(QTextCursor::End);
    const QRect last = edit.cursorRect(cursor);
    return QRectF(first.united(last)).translated(edit.viewport()->pos());
}

TEST_F(QtTypeSizeTest, ALockedTextStandsInTheMiddleAndAnOpenOneAtTheTopLeft)
{
    auto& edit = widget<QPlainTextEdit>("Text_a");
    for (const char* text : {"Oslo", "red\r\ngreen\r\nblue"}) {
        form1->controls().Text_a.set_text(text);
        form1->controls().Text_a.set_locked(true);
        EXPECT_NEAR(text_place(edit).center().y(), edit.rect().center().y(), 3) << text;
        const QTextLine line = edit.document()->firstBlock().layout()->lineAt(0);
        EXPECT_NEAR(line.naturalTextRect().center().x(), edit.viewport()->width() / 2.0, 10) << text;

        form1->controls().Text_a.set_locked(false);
        EXPECT_LT(text_place(edit).top(), 12) << text;
        EXPECT_LT(text_place(edit).left(), 12) << text;
    }
}

TEST_F(QtTypeSizeTest, TheTextStaysInTheMiddleWhateverChanges)
{
    auto& edit = widget<QPlainTextEdit>("Text_q");
    form1->controls().Text_q.set_locked(true);
    form1->controls().Text_q.set_text("one\r\ntwo");
    const auto is_in_the_middle = [&] {
        QCoreApplication::processEvents();
        return std::abs(text_place(edit).center().y() - edit.rect().center().y()) <= 3;
    };
    EXPECT_TRUE(is_in_the_middle());
    form1->widget().resize(1400, 1000);
    EXPECT_TRUE(is_in_the_middle()) << "a larger window";
    press(Qt::Key_Plus);
    EXPECT_TRUE(is_in_the_middle()) << "larger type";
    form1->controls().Text_q.set_text("three");
    EXPECT_TRUE(is_in_the_middle()) << "another text";
}

TEST_F(QtTypeSizeTest, ALongTextBeginsAtTheTopAndScrolls)
{
    auto& edit = widget<QPlainTextEdit>("Text_q");
    form1->controls().Text_q.set_locked(true);
    std::string text;
    for (int line = 0; line < 200; ++line)
        text += "line\r\n";
    form1->controls().Text_q.set_text(text);
    QCoreApplication::processEvents();
    EXPECT_LT(text_place(edit).top(), 12);
    EXPECT_EQ(edit.viewport()->y(), 0);
    EXPECT_TRUE(edit.verticalScrollBar()->isVisible());
}

} // namespace

} // namespace cuedrill::platform::qt
