#include "platform/qt/qt_card.h"
#include "platform/qt/qt_hint_box.h"
#include "platform/qt/qt_test_tools.h"

#include <QAccessible>
#include <QClipboard>
#include <QDropEvent>
#include <QFontDatabase>
#include <QFontInfo>
#include <QMimeData>
#include <QPushButton>
#include <QScrollBar>
#include <QTextLayout>

namespace cuedrill::platform::qt {

namespace {

constexpr auto word_list = " [ant]   [bee]   [\U0001F600 cat]  ";

class QtHintBoxTest : public QtTest {
protected:
    QtHintBoxTest()
    {
        card.surround(edit);
        card.resize(300, 160);
        card.show();
        card.activateWindow();
        QCoreApplication::processEvents();
        edit.clearFocus();
    }

    void show_word_list()
    {
        box.set_text(word_list);
        box.set_words({{2, 5}, {10, 13}, {18, 23}});
        edit.setFocus();
    }

    [[nodiscard]] QRect cell(int position) const { return cell_of(edit, position); }

    void click_at(QPointF point)
    {
        send_mouse_at(viewport, QEvent::MouseButtonPress, Qt::LeftButton, point);
        send_mouse_at(viewport, QEvent::MouseButtonRelease, Qt::LeftButton, point);
    }

    void drag(QPointF from, QPointF to)
    {
        send_mouse_at(viewport, QEvent::MouseButtonPress, Qt::LeftButton, from);
        send_mouse_at(viewport, QEvent::MouseMove, Qt::LeftButton, to);
        send_mouse_at(viewport, QEvent::MouseButtonRelease, Qt::LeftButton, to);
    }

    void press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        press_key(edit, key, {}, false, modifiers);
    }

    [[nodiscard]] std::string selected() const { return edit.textCursor().selectedText().toStdString(); }

    QtGuard guard;
    Card card;
    QtActionGate gate{guard, card};
    QtKeyFilter keys;
    QtHintBox box{"t_hint", gate, keys};
    HintEdit& edit = box.widget();
    QWidget& viewport = *edit.viewport();
};

TEST_F(QtHintBoxTest, GivesTheTextBackExactly)
{
    for (const std::string text : {"", "a\r\nb", "a\nb\rc", "\x01\x01 \x01", "no\u00a0break <b>\U0001F600</b>\r\n"}) {
        box.set_text(text);
        EXPECT_EQ(box.text(), text);
    }
    EXPECT_EQ(edit.objectName(), "t_hint");
}

TEST_F(QtHintBoxTest, IsInTheSystemsFixedPitchFontAndWrapsItsLines)
{
    EXPECT_EQ(edit.font().family(), QFontDatabase::systemFont(QFontDatabase::FixedFont).family());
    EXPECT_TRUE(QFontInfo(edit.font()).fixedPitch());
    box.set_text(std::string(300, 'W'));
    EXPECT_GT(edit.document()->firstBlock().layout()->lineCount(), 1);
}

TEST_F(QtHintBoxTest, HasTheAccessibleNameThatWasSet)
{
    box.set_name("Hint");
    EXPECT_EQ(QAccessible::queryAccessibleInterface(&edit)->text(QAccessible::Name), "Hint");
}

TEST_F(QtHintBoxTest, TakesTheFocusAndIsLeftWithTab)
{
    QPushButton next(&card);
    next.show();
    EXPECT_FALSE(box.has_focus());
    box.set_focus();
    EXPECT_TRUE(box.has_focus());
    EXPECT_EQ(edit.focusPolicy() & Qt::StrongFocus, Qt::StrongFocus);
    press_key(edit, Qt::Key_Tab, "\t");
    EXPECT_FALSE(box.has_focus());
}

TEST_F(QtHintBoxTest, TheCaretIsNowhereUntilTheUserHasMovedIt)
{
    show_word_list();
    EXPECT_EQ(box.caret(), std::nullopt);
    click_at(cell(0).center());
    EXPECT_EQ(box.caret(), 0U);
    box.set_text("other text");
    EXPECT_EQ(box.caret(), std::nullopt);
    box.set_text("");
    EXPECT_EQ(box.caret(), std::nullopt);
}

TEST_F(QtHintBoxTest, AClickPutsTheCaretBeforeTheCharacterAndIsTold)
{
    show_word_list();
    std::vector<std::size_t> clicks;
    box.on_click = [&] { clicks.push_back(box.caret().value()); };
    for (const int position : {1, 4, 11})
        click_at(QPointF(cell(position).right() - 1, cell(position).center().y()));
    EXPECT_EQ(clicks, (std::vector<std::size_t>{1, 4, 11}));
    EXPECT_FALSE(edit.textCursor().hasSelection());
}

TEST_F(QtHintBoxTest, TheCaretIsCountedInCodePointsAndALineEndAsTwo)
{
    box.set_text("ab\r\nc\U0001F600d\U0001F600e");
    click_at(cell(4).center());
    EXPECT_EQ(box.caret(), 5U);
    click_at(cell(9).center());
    EXPECT_EQ(box.caret(), 8U);
}

TEST_F(QtHintBoxTest, AClickBesideTheTextIsNoneAndLeavesTheCaret)
{
    box.set_text("ant\r\nbeetle");
    int clicks = 0;
    box.on_click = [&] { ++clicks; };
    const QPointF behind_the_line = cell(2).center() + QPointF(30, 0);
    const QPointF below(cell(4).center().x(), 140);
    click_at(behind_the_line);
    click_at(below);
    click_at(QPointF(1, cell(0).center().y()));
    EXPECT_EQ(clicks, 0);
    EXPECT_EQ(box.caret(), std::nullopt);
    click_at(cell(1).center());
    click_at(behind_the_line);
    EXPECT_EQ(clicks, 1);
    EXPECT_EQ(box.caret(), 1U);
}

TEST_F(QtHintBoxTest, ADragSelectsTextToBeCopiedAndIsNoClick)
{
    box.set_text("x \x01\x01 <b>");
    int clicks = 0;
    box.on_click = [&] { ++clicks; };
    drag(cell(0).center() - QPointF(2, 0), cell(7).center() + QPointF(2, 0));
    EXPECT_EQ(clicks, 0);
    EXPECT_EQ(selected(), "x \x01\x01 <b>");
    press_key(edit, Qt::Key_C, "\x03", false, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text().toStdString(), "x \x01\x01 <b>");
}

TEST_F(QtHintBoxTest, AClickWithATremblingHandIsAClick)
{
    show_word_list();
    int clicks = 0;
    box.on_click = [&] { ++clicks; };
    drag(cell(3).center(), cell(3).center() + QPointF(5, 0));
    EXPECT_EQ(clicks, 1);
    EXPECT_EQ(box.caret(), 3U);
    EXPECT_EQ(selected(), "");
}

TEST_F(QtHintBoxTest, TheSecondPressOfADoubleClickDoesNothing)
{
    show_word_list();
    int clicks = 0;
    box.on_click = [&] { ++clicks; };
    const QPointF point = cell(3).center();
    click_at(point);
    send_mouse_at(viewport, QEvent::MouseButtonDblClick, Qt::LeftButton, point);
    send_mouse_at(viewport, QEvent::MouseMove, Qt::LeftButton, point + QPointF(60, 0));
    send_mouse_at(viewport, QEvent::MouseButtonRelease, Qt::LeftButton, point);
    EXPECT_EQ(clicks, 1);
    EXPECT_EQ(selected(), "");
    EXPECT_EQ(box.caret(), 3U);
}

TEST_F(QtHintBoxTest, OnlyTheLeftButtonClicks)
{
    show_word_list();
    int clicks = 0;
    box.on_click = [&] { ++clicks; };
    for (const Qt::MouseButton button : {Qt::RightButton, Qt::MiddleButton}) {
        send_mouse_at(viewport, QEvent::MouseButtonPress, button, cell(3).center());
        send_mouse_at(viewport, QEvent::MouseButtonRelease, button, cell(3).center());
    }
    EXPECT_EQ(clicks, 0);
}

TEST_F(QtHintBoxTest, AClickOnTextThatWasReplacedMeanwhileIsNone)
{
    show_word_list();
    int clicks = 0;
    box.on_click = [&] { ++clicks; };
    const QPointF point = cell(3).center();
    send_mouse_at(viewport, QEvent::MouseButtonPress, Qt::LeftButton, point);
    box.set_text("other text");
    send_mouse_at(viewport, QEvent::MouseButtonRelease, Qt::LeftButton, point);
    EXPECT_EQ(clicks, 0);
    EXPECT_EQ(box.caret(), std::nullopt);
}

TEST_F(QtHintBoxTest, AClickDuringAnotherActionIsDroppedAndAFailingOneIsReported)
{
    show_word_list();
    std::string reported;
    guard.on_error = [&](const std::exception& error) { reported = error.what(); };
    box.on_click = [] { throw std::runtime_error("click failed"); };
    gate.run([this] { click_at(cell(3).center()); });
    EXPECT_EQ(reported, "");
    click_at(cell(3).center());
    EXPECT_EQ(reported, "click failed");
}

TEST_F(QtHintBoxTest, ArrowKeysGoFromWordToWord)
{
    show_word_list();
    for (const int key : {Qt::Key_Right, Qt::Key_Down, Qt::Key_Down, Qt::Key_Right})
        press(key);
    EXPECT_EQ(selected(), "\U0001F600 cat");
    EXPECT_EQ(box.caret(), 18U);
    press(Qt::Key_Left);
    EXPECT_EQ(selected(), "bee");
    EXPECT_EQ(box.caret(), 10U);
    press(Qt::Key_Up);
    press(Qt::Key_Up);
    EXPECT_EQ(selected(), "ant");
    press(Qt::Key_End);
    EXPECT_EQ(selected(), "\U0001F600 cat");
    press(Qt::Key_Home, Qt::KeypadModifier);
    EXPECT_EQ(selected(), "ant");
    EXPECT_EQ(box.caret(), 2U);
}

TEST_F(QtHintBoxTest, ArrowKeysGoOnFromWhereTheUserHasClicked)
{
    show_word_list();
    click_at(cell(11).center());
    press(Qt::Key_Right);
    EXPECT_EQ(selected(), "\U0001F600 cat");
    click_at(cell(11).center());
    press(Qt::Key_Left);
    EXPECT_EQ(selected(), "ant");
    click_at(cell(7).center());
    press(Qt::Key_Right);
    EXPECT_EQ(selected(), "bee");
}

TEST_F(QtHintBoxTest, TheFirstArrowKeyLeadsToTheFirstWordAlsoAtTheVeryBeginning)
{
    box.set_text("ant bee");
    box.set_words({{0, 3}, {4, 7}});
    edit.setFocus();
    press(Qt::Key_Right);
    EXPECT_EQ(selected(), "ant");
    EXPECT_EQ(box.caret(), 0U);
}

TEST_F(QtHintBoxTest, WordsMayContainLineEndsAndReachBeyondTheText)
{
    box.set_text("a\r\nb c");
    box.set_words({{0, 4}, {5, 90}});
    edit.setFocus();
    press(Qt::Key_Right);
    EXPECT_EQ(edit.textCursor().selectionEnd(), 3);
    press(Qt::Key_Right);
    EXPECT_EQ(selected(), "c");
}

TEST_F(QtHintBoxTest, TheWordThatAKeyLeadsToIsScrolledIntoView)
{
    std::string text;
    std::vector<common::TextRange> words;
    for (std::size_t i = 0; i < 60; ++i) {
        words.push_back({text.size(), text.size() + 4});
        text += "word\r\n";
    }
    box.set_text(text);
    box.set_words(words);
    edit.setFocus();
    press(Qt::Key_End);
    EXPECT_TRUE(viewport.rect().contains(edit.cursorRect()));
    EXPECT_GT(edit.verticalScrollBar()->value(), 0);
    press(Qt::Key_Home);
    EXPECT_EQ(edit.verticalScrollBar()->value(), 0);
}

TEST_F(QtHintBoxTest, WithoutWordsKeysScroll)
{
    show_word_list();
    std::string text;
    for (int i = 0; i < 60; ++i)
        text += "line\r\n";
    box.set_text(text);
    for (int i = 0; i < 30; ++i)
        press(Qt::Key_Down);
    EXPECT_GT(edit.verticalScrollBar()->value(), 0);
    EXPECT_EQ(selected(), "");
}

TEST_F(QtHintBoxTest, WithoutWordsKeysMoveTheCaretAndSelect)
{
    box.set_text("\x01\x01 \x01");
    edit.setFocus();
    press(Qt::Key_Right);
    EXPECT_EQ(box.caret(), 1U);
    press(Qt::Key_End, Qt::ShiftModifier);
    EXPECT_EQ(selected(), "\x01 \x01");
    EXPECT_EQ(box.caret(), 1U);
}

TEST_F(QtHintBoxTest, AssistiveTechnologyFindsTheChosenWordSelected)
{
    show_word_list();
    press(Qt::Key_Right);
    QAccessibleTextInterface& text = *QAccessible::queryAccessibleInterface(&edit)->textInterface();
    EXPECT_EQ(text.cursorPosition(), 2);
    int begin = 0;
    int end = 0;
    text.selection(0, &begin, &end);
    EXPECT_EQ(text.text(begin, end), "ant");
}

TEST_F(QtHintBoxTest, AWordThatAKeyLeadsToIsToldAndEventsAreTakenUpAgain)
{
    show_word_list();
    std::vector<std::string> reached;
    edit.word_reached = [&](const QString& word) { reached.push_back(word.toStdString()); };
    const QAccessible::UpdateHandler ours = [](QAccessibleEvent*) {};
    const QAccessible::UpdateHandler before = QAccessible::installUpdateHandler(ours);
    press(Qt::Key_Right);
    press(Qt::Key_End);
    EXPECT_EQ(QAccessible::installUpdateHandler(before), ours);
    EXPECT_EQ(reached, (std::vector<std::string>{"ant", "\U0001F600 cat"}));
}

TEST_F(QtHintBoxTest, AssistiveTechnologyCanPutTheCaret)
{
    show_word_list();
    QAccessibleTextInterface& text = *QAccessible::queryAccessibleInterface(&edit)->textInterface();
    text.setCursorPosition(0);
    EXPECT_EQ(box.caret(), 0U);
    text.setCursorPosition(11);
    EXPECT_EQ(box.caret(), 11U);
    text.setSelection(0, 2, 5);
    EXPECT_EQ(box.caret(), 2U);
}

TEST_F(QtHintBoxTest, NothingThatTheUserDoesChangesTheText)
{
    show_word_list();
    QGuiApplication::clipboard()->setText("pasted");
    press_key(edit, Qt::Key_X, "x");
    press_key(edit, Qt::Key_Backspace, "\b");
    press_key(edit, Qt::Key_A, "\x01", false, Qt::ControlModifier);
    press_key(edit, Qt::Key_Delete, "\x7f");
    press_key(edit, Qt::Key_X, "\x18", false, Qt::ControlModifier);
    press_key(edit, Qt::Key_V, "\x16", false, Qt::ControlModifier);
    press_key(edit, Qt::Key_Z, "\x1a", false, Qt::ControlModifier);
    edit.cut();
    edit.paste();
    edit.undo();
    QMimeData dropped;
    dropped.setText("dropped");
    QDropEvent drop(cell(3).center(), Qt::CopyAction, &dropped, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&viewport, &drop);
    EXPECT_EQ(edit.toPlainText().toStdString(), word_list);
    EXPECT_FALSE(edit.testAttribute(Qt::WA_InputMethodEnabled));
}

TEST_F(QtHintBoxTest, AKeyIsSeenByTheHookFirst)
{
    show_word_list();
    std::string seen;
    box.on_key = [&](const KeyPress& press) {
        seen += press.key == Key::enter ? "enter" : press.character;
        return true;
    };
    EXPECT_TRUE(press_key(edit, Qt::Key_A, "a"));
    press_key(edit, Qt::Key_Return, "\r", false, Qt::ShiftModifier);
    gate.run([this] { press_key(edit, Qt::Key_B, "b"); });
    EXPECT_EQ(seen, "aenter");
}

} // namespace

} // namespace cuedrill::platform::qt
