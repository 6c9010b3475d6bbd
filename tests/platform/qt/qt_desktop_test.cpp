#include "common/errors.h"
#include "platform/qt/qt_desktop.h"
#include "platform/qt/qt_dialog_host.h"
#include "platform/qt/qt_test_tools.h"

#include <QAccessible>
#include <QClipboard>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <utility>

namespace cuedrill::platform::qt {

namespace {

class QtDesktopTest : public QtTest {
protected:
    /// Ends the program as soon as a box is open.
    void end_behind_the_box()
    {
        QTimer::singleShot(0, [this] {
            EXPECT_NE(QApplication::activeModalWidget(), nullptr);
            guard.run([] { throw common::ProgramEnded{}; });
        });
    }

    QtGuard guard;
    QtDialogHost host;
    QtDesktop desktop{guard, host};
};

TEST_F(QtDesktopTest, AMessageShowsItsTextLiterallyUnderTheProgramsTitle)
{
    when_box_opens<QMessageBox>([](QMessageBox& box) {
        EXPECT_EQ(box.textFormat(), Qt::PlainText);
        EXPECT_EQ(box.text(), "<b>one</b> & two\nthree");
        EXPECT_TRUE(box.textInteractionFlags().testFlag(Qt::TextSelectableByMouse));
        EXPECT_EQ(box.windowTitle(), "CUEDRILL");
        EXPECT_EQ(box.icon(), QMessageBox::NoIcon);
        EXPECT_EQ(box.standardButtons(), QMessageBox::Ok);
        box.button(QMessageBox::Ok)->click();
    });
    EXPECT_EQ(desktop.message_box({.text = "<b>one</b> & two\r\nthree"}), BoxAnswer::ok);
}

TEST_F(QtDesktopTest, AMessageWithMarksTellsTheSameWords)
{
    const std::string text = "You <typed>:  a & b\r\n\r\n Right:\u00a0 \u0436\r\n";
    when_box_opens<QMessageBox>([](QMessageBox& box) {
        QLabel& label = *box.findChild<QLabel*>("qt_msgbox_label");
        const QString words = "You <typed>:  a & b\n\n Right:\u00a0 \u0436\n";
        EXPECT_EQ(QAccessible::queryAccessibleInterface(&label)->text(QAccessible::Name), words);
        EXPECT_EQ(box.textFormat(), Qt::RichText);
        press_key(label, Qt::Key_A, "\x01", false, Qt::ControlModifier);
        press_key(label, Qt::Key_C, "\x03", false, Qt::ControlModifier);
        // The toolkit copies no-break spaces as ordinary blanks.
        EXPECT_EQ(QGuiApplication::clipboard()->text(), QString(words).replace(QChar(QChar::Nbsp), ' '));
        EXPECT_EQ(box.findChild<QPlainTextEdit*>()->accessibleName(), words);
        box.accept();
    });
    desktop.message_box({.text = text, .details = "more", .marked = {{5, 8}}});
}

TEST_F(QtDesktopTest, ALongWordIsNotCut)
{
    const std::string word(70, 'o'); // fits three quarters of the screen
    when_box_opens<QMessageBox>([&](QMessageBox& box) {
        const auto* const label = box.findChild<QLabel*>("qt_msgbox_label");
        ASSERT_NE(label, nullptr);
        EXPECT_GE(label->width(), label->fontMetrics().horizontalAdvance(QString::fromStdString(word)));
        box.close();
    });
    desktop.message_box({.text = "The correct answer is: \r\n\r\n   " + word});
}

TEST_F(QtDesktopTest, AMessageHasTheTitleAndIconThatAreAskedFor)
{
    when_box_opens<QMessageBox>([](QMessageBox& box) {
        EXPECT_EQ(box.windowTitle(), "Wrong answer");
        EXPECT_EQ(box.icon(), QMessageBox::Information);
        box.reject();
    });
    EXPECT_EQ(desktop.message_box({.text = "t", .icon = BoxIcon::information, .title = "Wrong answer"}), BoxAnswer::ok);
}

TEST_F(QtDesktopTest, DetailsAreShownAtOnce)
{
    when_box_opens<QMessageBox>([](QMessageBox& box) {
        const auto* const details = box.findChild<QPlainTextEdit*>();
        EXPECT_TRUE(details != nullptr && details->isVisible());
        EXPECT_TRUE(details != nullptr && details->isReadOnly());
        EXPECT_EQ(details != nullptr ? details->toPlainText() : QString(), "first\nsecond");
        for (const QAbstractButton* const button : box.buttons())
            EXPECT_EQ(button->isVisible(), button == box.button(QMessageBox::Ok)) << button->text().toStdString();
        box.accept();
    });
    desktop.message_box({.text = "t", .details = "first\r\nsecond"});
}

TEST_F(QtDesktopTest, DetailsCanBeReadWithTheKeyboard)
{
    when_box_opens<QMessageBox>([](QMessageBox& box) {
        auto* const details = box.findChild<QPlainTextEdit*>();
        ASSERT_NE(details, nullptr);
        EXPECT_TRUE(details->focusPolicy() & Qt::TabFocus);
        EXPECT_EQ(details->accessibleName(), "t");
        press_key(*details, Qt::Key_Down);
        EXPECT_EQ(details->textCursor().position(), 6) << "at the second line";
        box.accept();
    });
    desktop.message_box({.text = "t", .details = "first\r\nsecond"});
}

void activate(QWidget& box)
{
    box.activateWindow();
    QCoreApplication::processEvents();
}

/// The widgets in tab order, starting with the one that has the focus.
QList<QWidget*> tab_stops(QWidget& box)
{
    QList<QWidget*> stops;
    for (QWidget* widget = box.focusWidget(); widget != nullptr && !stops.contains(widget);
         widget = box.focusWidget()) {
        stops.append(widget);
        press_key(*widget, Qt::Key_Tab, "\t");
    }
    return stops;
}

TEST_F(QtDesktopTest, TheTextOfABoxIsReachedByTabBehindItsButtons)
{
    const MessageBox question{
        .text = "Really <b>all</b>?\r\nAll of them?", .buttons = BoxButtons::yes_no, .default_button = BoxAnswer::no};
    for (const std::vector<common::TextRange>& marked : {std::vector<common::TextRange>(), {{0, 6}}}) {
        when_box_opens<QMessageBox>([](QMessageBox& box) {
            auto* const label = box.findChild<QLabel*>("qt_msgbox_label");
            activate(box);
            EXPECT_TRUE(box.button(QMessageBox::No)->hasFocus());
            const QList<QWidget*> stops = tab_stops(box);
            EXPECT_EQ(stops.size(), 3);
            EXPECT_TRUE(stops.contains(label));
            EXPECT_TRUE(stops.contains(box.button(QMessageBox::Yes)));
            label->setFocus(Qt::TabFocusReason);
            const QAccessibleInterface& accessible = *QAccessible::queryAccessibleInterface(label);
            EXPECT_TRUE(accessible.state().focusable);
            EXPECT_TRUE(accessible.state().focused);
            EXPECT_EQ(accessible.text(QAccessible::Name), "Really <b>all</b>?\nAll of them?");
            press_key(*label, Qt::Key_Space, " ");
            EXPECT_TRUE(box.isVisible());
            press_key(*label, Qt::Key_Return, "\r");
            EXPECT_FALSE(box.isVisible());
        });
        MessageBox box = question;
        box.marked = marked;
        EXPECT_EQ(desktop.message_box(box), BoxAnswer::no) << "Enter presses the default button from the text too";
    }
}

TEST_F(QtDesktopTest, EscapeClosesABoxFromItsTextToo)
{
    when_box_opens<QMessageBox>([](QMessageBox& box) {
        auto* const label = box.findChild<QLabel*>("qt_msgbox_label");
        label->setFocus(Qt::TabFocusReason);
        press_key(*label, Qt::Key_Escape, "\x1b");
        EXPECT_FALSE(box.isVisible());
    });
    EXPECT_EQ(desktop.message_box({.text = "Really?", .buttons = BoxButtons::yes_no}), BoxAnswer::no);
}

TEST_F(QtDesktopTest, ABoxWithDetailsBeginsOnItsDefaultButtonAndHasItsTextsInItsTabOrder)
{
    when_box_opens<QMessageBox>([](QMessageBox& box) {
        activate(box);
        EXPECT_TRUE(box.button(QMessageBox::Ok)->hasFocus());
        const QList<QWidget*> stops = tab_stops(box);
        EXPECT_EQ(stops.size(), 3);
        EXPECT_TRUE(stops.contains(box.findChild<QLabel*>("qt_msgbox_label")));
        EXPECT_TRUE(stops.contains(box.findChild<QPlainTextEdit*>()));
        box.accept();
    });
    desktop.message_box({.text = "t", .details = "first\r\nsecond"});
}

TEST_F(QtDesktopTest, AQuestionGivesTheButtonThatWasPressed)
{
    const MessageBox question{.text = "Really?", .buttons = BoxButtons::yes_no, .icon = BoxIcon::question};
    when_box_opens<QMessageBox>([](QMessageBox& box) {
        EXPECT_EQ(box.icon(), QMessageBox::Question);
        EXPECT_EQ(box.defaultButton(), box.button(QMessageBox::Yes));
        box.button(QMessageBox::Yes)->click();
    });
    EXPECT_EQ(desktop.message_box(question), BoxAnswer::yes);
    when_box_opens<QMessageBox>([](QMessageBox& box) { box.button(QMessageBox::No)->click(); });
    EXPECT_EQ(desktop.message_box(question), BoxAnswer::no);
}

TEST_F(QtDesktopTest, AQuestionThatIsClosedOrEscapedIsAnsweredWithNo)
{
    const MessageBox question{.text = "Really?", .buttons = BoxButtons::yes_no};
    when_box_opens<QMessageBox>([](QMessageBox& box) { box.close(); });
    EXPECT_EQ(desktop.message_box(question), BoxAnswer::no);
    when_box_opens<QMessageBox>([](QMessageBox& box) { press_key(box, Qt::Key_Escape); });
    EXPECT_EQ(desktop.message_box(question), BoxAnswer::no);
}

TEST_F(QtDesktopTest, ALetterAnswersNoQuestion)
{
    when_box_opens<QMessageBox>([](QMessageBox& box) {
        for (const auto& [key, text] :
             {std::pair(Qt::Key_Y, "y"), std::pair(Qt::Key_N, "n"), std::pair(Qt::Key_Y, "Y")}) {
            press_key(box, key, text);
            press_key(*box.button(QMessageBox::Yes), key, text);
            EXPECT_TRUE(box.isVisible()) << text;
        }
        box.button(QMessageBox::Yes)->click();
    });
    EXPECT_EQ(desktop.message_box({.text = "Really?", .buttons = BoxButtons::yes_no}), BoxAnswer::yes);
}

TEST_F(QtDesktopTest, AQuestionThatMustBeAnsweredIsNeitherClosedNorEscaped)
{
    when_box_opens<QMessageBox>([](QMessageBox& box) {
        box.close();
        EXPECT_TRUE(box.isVisible());
        press_key(box, Qt::Key_Escape);
        EXPECT_TRUE(box.isVisible());
        box.button(QMessageBox::Yes)->click();
    });
    EXPECT_EQ(desktop.message_box({.text = "Save?", .buttons = BoxButtons::yes_no, .must_be_answered = true}),
              BoxAnswer::yes);
}

TEST_F(QtDesktopTest, TheDefaultButtonIsHonoured)
{
    when_box_opens<QMessageBox>([](QMessageBox& box) {
        EXPECT_EQ(box.icon(), QMessageBox::Warning);
        EXPECT_EQ(box.defaultButton(), box.button(QMessageBox::No));
        press_key(box, Qt::Key_Return);
    });
    EXPECT_EQ(desktop.message_box({.text = "Delete?",
                                   .buttons = BoxButtons::yes_no,
                                   .icon = BoxIcon::exclamation,
                                   .default_button = BoxAnswer::no}),
              BoxAnswer::no);
}

TEST_F(QtDesktopTest, OkOrCancelGivesTheButtonThatWasPressed)
{
    const MessageBox warning{.text = "Go on?", .buttons = BoxButtons::ok_cancel, .icon = BoxIcon::exclamation};
    when_box_opens<QMessageBox>([](QMessageBox& box) {
        EXPECT_EQ(box.standardButtons(), QMessageBox::Ok | QMessageBox::Cancel);
        EXPECT_EQ(box.defaultButton(), box.button(QMessageBox::Ok));
        box.button(QMessageBox::Ok)->click();
    });
    EXPECT_EQ(desktop.message_box(warning), BoxAnswer::ok);
    when_box_opens<QMessageBox>([](QMessageBox& box) { box.button(QMessageBox::Cancel)->click(); });
    EXPECT_EQ(desktop.message_box(warning), BoxAnswer::cancel);
}

TEST_F(QtDesktopTest, OkOrCancelThatIsClosedOrEscapedIsCancel)
{
    const MessageBox warning{.text = "Go on?", .buttons = BoxButtons::ok_cancel};
    when_box_opens<QMessageBox>([](QMessageBox& box) { box.close(); });
    EXPECT_EQ(desktop.message_box(warning), BoxAnswer::cancel);
    when_box_opens<QMessageBox>([](QMessageBox& box) { press_key(box, Qt::Key_Escape); });
    EXPECT_EQ(desktop.message_box(warning), BoxAnswer::cancel);
}

TEST_F(QtDesktopTest, EnterPressesCancelWhereThatIsTheDefaultAndALetterPressesNothing)
{
    when_box_opens<QMessageBox>([](QMessageBox& box) {
        for (const auto& [key, text] : {std::pair(Qt::Key_O, "o"), std::pair(Qt::Key_C, "c")}) {
            press_key(*box.button(QMessageBox::Ok), key, text);
            EXPECT_TRUE(box.isVisible()) << text;
        }
        press_key(box, Qt::Key_Return);
    });
    EXPECT_EQ(
        desktop.message_box({.text = "Go on?", .buttons = BoxButtons::ok_cancel, .default_button = BoxAnswer::cancel}),
        BoxAnswer::cancel);
}

TEST_F(QtDesktopTest, ABoxStandsOverTheMainWindow)
{
    QMainWindow window;
    window.show();
    when_box_opens<QMessageBox>([&](QMessageBox& box) {
        EXPECT_EQ(box.parentWidget(), &window);
        box.accept();
    });
    desktop.message_box({.text = "t"});
}

TEST_F(QtDesktopTest, AnEndBehindABoxIsThrownInsteadOfAnAnswer)
{
    end_behind_the_box();
    EXPECT_THROW(desktop.message_box({.text = "t"}), common::ProgramEnded);
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

TEST_F(QtDesktopTest, NoBoxOpensOnceTheProgramIsEnding)
{
    guard.end();
    EXPECT_THROW(desktop.message_box({.text = "t"}), common::ProgramEnded);
    EXPECT_THROW(static_cast<void>(desktop.input_box({})), common::ProgramEnded);
    EXPECT_THROW(static_cast<void>(desktop.open_file_dialog({})), common::ProgramEnded);
    EXPECT_THROW(static_cast<void>(desktop.save_file_dialog({})), common::ProgramEnded);
}

TEST_F(QtDesktopTest, AnInputBoxGivesTheTypedText)
{
    when_box_opens<QInputDialog>([](QInputDialog& box) {
        EXPECT_EQ(box.windowTitle(), "Find question");
        EXPECT_EQ(box.textValue(), "old");
        auto& line = *box.findChild<QLineEdit*>();
        line.clear();
        for (const char letter : {'n', 'e', 'w'})
            press_key(line, Qt::Key_A, QString(QLatin1Char(letter)));
        press_key(line, Qt::Key_Return, "\r");
    });
    EXPECT_EQ(desktop.input_box({.prompt = "Text", .title = "Find question", .default_text = "old"}), "new");
}

TEST_F(QtDesktopTest, ACancelledInputBoxGivesNothing)
{
    when_box_opens<QInputDialog>([](QInputDialog& box) { box.reject(); });
    EXPECT_EQ(desktop.input_box({.default_text = "old"}), std::nullopt);
}

TEST_F(QtDesktopTest, AnInputBoxShowsItsPromptLiterally)
{
    when_box_opens<QInputDialog>([](QInputDialog& box) {
        const auto& label = *box.findChild<QLabel*>();
        EXPECT_EQ(label.textFormat(), Qt::PlainText);
        EXPECT_EQ(label.buddy(), nullptr) << "a label with a buddy takes & for the mark of an access letter";
        EXPECT_EQ(label.text(), "<b>a</b> & b\nc");
        EXPECT_EQ(box.windowTitle(), "CUEDRILL");
        box.reject();
    });
    desktop.input_box({.prompt = "<b>a</b> & b\r\nc"});
}

TEST_F(QtDesktopTest, AnInputBoxTakesNoMoreThanTheLongestTextCountedInCodePoints)
{
    when_box_opens<QInputDialog>([](QInputDialog& box) {
        auto& line = *box.findChild<QLineEdit*>();
        line.insert(QString::fromUtf8("\U0001F600\U0001F601xyz"));
        press_key(line, Qt::Key_W, "w");
        box.accept();
    });
    EXPECT_EQ(desktop.input_box({.longest = 3}), "\U0001F600\U0001F601x");
}

TEST_F(QtDesktopTest, AnInputBoxDropsTheZerosOfAClipboard)
{
    when_box_opens<QInputDialog>([](QInputDialog& box) {
        box.findChild<QLineEdit*>()->insert(QString::fromUtf8("Ti\0tle", 6));
        box.accept();
    });
    EXPECT_EQ(desktop.input_box({}), "Title");
}

TEST_F(QtDesktopTest, AnEndBehindAnInputBoxIsThrown)
{
    end_behind_the_box();
    EXPECT_THROW(static_cast<void>(desktop.input_box({})), common::ProgramEnded);
}

TEST_F(QtDesktopTest, ThePumpRunsTimersAndPaints)
{
    QMainWindow window;
    auto* label = new QLabel("before");
    window.setCentralWidget(label);
    window.show();
    QCoreApplication::processEvents();
    int ticks = 0;
    QTimer::singleShot(0, [&] { ++ticks; });
    label->setText("after");
    desktop.pump();
    EXPECT_EQ(ticks, 1);
}

TEST_F(QtDesktopTest, AnEndDuringThePumpIsThrown)
{
    QTimer::singleShot(0, [this] { guard.run([] { throw common::ProgramEnded{}; }); });
    EXPECT_THROW(desktop.pump(), common::ProgramEnded);
}

TEST_F(QtDesktopTest, ThePointerIsBusyUntilTheOutermostWorkIsDone)
{
    {
        const BusyPointer outer(desktop);
        {
            const BusyPointer inner(desktop);
        }
        ASSERT_NE(QGuiApplication::overrideCursor(), nullptr);
        EXPECT_EQ(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
    }
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
    desktop.set_pointer(Pointer::normal);
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

TEST_F(QtDesktopTest, ABoxShowsTheNormalPointerInTheMiddleOfWork)
{
    const BusyPointer busy(desktop);
    when_box_opens<QMessageBox>([](QMessageBox& box) {
        EXPECT_EQ(QGuiApplication::overrideCursor()->shape(), Qt::ArrowCursor);
        box.accept();
    });
    desktop.message_box({.text = "t"});
    EXPECT_EQ(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
}

} // namespace

} // namespace cuedrill::platform::qt
