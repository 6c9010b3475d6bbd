// Which key presses count, with real key events in the whole program.

#include "program/program_fixture.h"

#include <QDialog>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>

namespace cuedrill::program {
namespace {

/// Presses a key with this timestamp of the system, in milliseconds.
void press_at(QWidget& widget, quint64 moment, int key, const QString& text = {}, bool auto_repeat = false)
{
    QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier, 0, 0, 0, text, auto_repeat);
    event.setTimestamp(moment);
    QCoreApplication::sendEvent(&widget, &event);
}

/// A modal box with one button that closes it.
class ClosingBox : public QDialog {
public:
    explicit ClosingBox(QWidget& parent) : QDialog(&parent)
    {
        setModal(true);
        connect(&ok, &QPushButton::clicked, this, &QDialog::accept);
        show();
        ok.setFocus();
    }

    QPushButton ok{"OK", this};
};

/// A button and a line edit in the window that none of the program's key rules handles.
struct Controls {
    explicit Controls(QMainWindow& window) : button(&window), line(&window)
    {
        QObject::connect(&button, &QPushButton::clicked, &button, [this] { ++clicks; });
        button.show();
        line.show();
        button.setFocus();
    }

    QPushButton button;
    QLineEdit line;
    int clicks = 0;
};

class KeysTest : public ProgramTest {
protected:
    std::string course = fakes::CourseBuilder().write(folder);
};

TEST_F(KeysTest, ABlankThatBouncesPressesAButtonOnce)
{
    run(course, [](Program& program) {
        Controls controls(program.form1().widget());
        press_at(controls.button, 10'000, Qt::Key_Space, " ");
        press_at(controls.button, 10'149, Qt::Key_Space, " ");
        EXPECT_EQ(controls.clicks, 1);
        press_at(controls.button, 10'300, Qt::Key_Space, " ");
        EXPECT_EQ(controls.clicks, 2);
    });
}

TEST_F(KeysTest, AKeyHeldOnWhileTheFocusMovesTypesNothing)
{
    run(course, [](Program& program) {
        Controls controls(program.form1().widget());
        press_at(controls.button, 10'000, Qt::Key_Space, " ");
        controls.line.setFocus();
        press_at(controls.line, 10'500, Qt::Key_Space, " ", true);
        EXPECT_EQ(controls.line.text(), "");
        press_at(controls.line, 11'000, Qt::Key_Space, " ");
        press_at(controls.line, 11'500, Qt::Key_Space, " ", true);
        EXPECT_EQ(controls.line.text(), "  ");
    });
}

TEST_F(KeysTest, AnEnterThatHasClosedABoxIsFollowedByAnotherOneButNotByTheChatterOfItsContact)
{
    run(course, [](Program& program) {
        Controls controls(program.form1().widget());
        ClosingBox box(program.form1().widget());
        press_at(box.ok, 10'000, Qt::Key_Return, "\r");
        ASSERT_FALSE(box.isVisible());
        controls.button.setFocus();
        press_at(controls.button, 10'008, Qt::Key_Return, "\r");
        EXPECT_EQ(controls.clicks, 0);
        press_at(controls.button, 10'060, Qt::Key_Return, "\r");
        EXPECT_EQ(controls.clicks, 1);
    });
}

TEST_F(KeysTest, AnEnterThatClosesABoxClosesNoNextOneUnseenAndIsNotHeldOn)
{
    run(course, [](Program& program) {
        Controls controls(program.form1().widget());
        ClosingBox box(program.form1().widget());
        press_at(box.ok, 10'000, Qt::Key_Return, "\r");
        {
            ClosingBox next(program.form1().widget());
            press_at(next.ok, 10'149, Qt::Key_Return, "\r");
            EXPECT_TRUE(next.isVisible());
            press_at(next.ok, 10'299, Qt::Key_Return, "\r");
            EXPECT_FALSE(next.isVisible());
        }
        controls.button.setFocus();
        press_at(controls.button, 11'000, Qt::Key_Return, "\r", true);
        EXPECT_EQ(controls.clicks, 0);
    });
}

TEST_F(KeysTest, AnEscapeThatBouncesDoesNotCloseTheMessageWindowUnseen)
{
    run(course, [](Program& program) {
        choose(program, "m_version_history");
        QWidget* message_window = nullptr;
        for (QWidget* const window : QApplication::topLevelWidgets()) {
            if (window->objectName() == "f_msgbox")
                message_window = window;
        }
        ASSERT_NE(message_window, nullptr);
        auto& text = *message_window->findChild<QPlainTextEdit*>("Text1");
        ASSERT_TRUE(message_window->isVisible());
        ClosingBox box(*message_window);
        press_at(box.ok, 10'000, Qt::Key_Escape);
        ASSERT_FALSE(box.isVisible());
        text.setFocus();
        press_at(text, 10'100, Qt::Key_Escape);
        EXPECT_TRUE(message_window->isVisible());
        press_at(text, 10'300, Qt::Key_Escape);
        EXPECT_FALSE(message_window->isVisible());
    });
}

TEST_F(KeysTest, TheKeysOfTheZoomAreNoVerdict)
{
    fakes::CourseBuilder builder;
    builder.question("one", "1");
    builder.question("two", "2");
    run(builder.write(folder, "zoom.crs"), [](Program& program) {
        press(program, "bot_yes");
        press(program, "bot_yes");
        ASSERT_EQ(label(program, "panel_dialog"), "Did you know the answer?");
        QWidget& window = program.form1().widget();
        window.activateWindow();
        QCoreApplication::processEvents();
        const double before = program.form1().widget().findChild<QWidget*>("Text_q")->font().pointSizeF();
        const std::string question = program.form1().controls().Text_q.text();
        for (const Qt::Key key : {Qt::Key_Plus, Qt::Key_Plus, Qt::Key_Minus}) {
            for (const Qt::KeyboardModifiers place : {Qt::NoModifier, Qt::KeypadModifier})
                QTest::keyClick(window.focusWidget(), key, Qt::ControlModifier | place);
        }
        EXPECT_GT(program.form1().widget().findChild<QWidget*>("Text_q")->font().pointSizeF(), before);
        EXPECT_EQ(label(program, "panel_dialog"), "Did you know the answer?");
        EXPECT_EQ(label(program, "Panel_score"), "0");
        EXPECT_EQ(program.form1().controls().Text_q.text(), question);
        // Where the toolkit finds no shortcut, the key is none of the program's, either.
        QKeyEvent plus(QEvent::KeyPress, Qt::Key_Plus, Qt::ControlModifier, "+");
        QCoreApplication::sendEvent(window.focusWidget(), &plus);
        EXPECT_EQ(label(program, "panel_dialog"), "Did you know the answer?");
        // Without Ctrl it is the verdict.
        QTest::keyClick(window.focusWidget(), Qt::Key_Plus);
        EXPECT_EQ(label(program, "Panel_score"), "1");
    });
}

} // namespace
} // namespace cuedrill::program
