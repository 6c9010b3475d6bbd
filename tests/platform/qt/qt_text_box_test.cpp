#include "platform/qt/qt_card.h"
#include "platform/qt/qt_test_tools.h"
#include "platform/qt/qt_text_box.h"

#include <QClipboard>
#include <QDialog>
#include <QFontDatabase>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTextBlock>
#include <QTextLayout>

namespace cuedrill::platform::qt {

namespace {

class QtTextBoxTest : public QtTest {
protected:
    QtTextBoxTest() { card.surround(box.widget()); }

    void show()
    {
        card.resize(300, 200);
        card.show();
        card.activateWindow();
        QCoreApplication::processEvents();
    }

    void select(int anchor, int position)
    {
        QTextCursor cursor = box.widget().textCursor();
        cursor.setPosition(anchor);
        cursor.setPosition(position, QTextCursor::KeepAnchor);
        box.widget().setTextCursor(cursor);
    }

    QtGuard guard;
    Card card;
    QtActionGate gate{guard, card};
    QtKeyFilter keys;
    QtTextBox box{"Text_a", gate, keys};
};

TEST_F(QtTextBoxTest, GivesLinesBackWithCrLf)
{
    box.set_text("one\r\ntwo\r\n\r\nfour");
    EXPECT_EQ(box.widget().toPlainText(), "one\ntwo\n\nfour");
    EXPECT_EQ(box.text(), "one\r\ntwo\r\n\r\nfour");
}

TEST_F(QtTextBoxTest, GivesBackEveryCharacterThatWasSet)
{
    for (const std::string text :
         {"", " ", "a\tb", "no\u00a0break", "x\u00b2 \U0001F600 \u0436", "<b>&amp;</b>", "end\r\n"}) {
        box.set_text(text);
        EXPECT_EQ(box.text(), text);
    }
}

TEST_F(QtTextBoxTest, ALineEndTypedWithShiftIsALineEnd)
{
    box.widget().setPlainText(QStringLiteral("one") + QChar(0x2028) + QStringLiteral("two"));
    EXPECT_EQ(box.text(), "one\r\ntwo");
}

TEST_F(QtTextBoxTest, ALockedBoxCanBeReadAndCopiedButNotChanged)
{
    show();
    box.set_text("fixed");
    box.set_locked(true);
    box.widget().setFocus();
    press_key(box.widget(), Qt::Key_X, "x");
    EXPECT_EQ(box.text(), "fixed");
    EXPECT_TRUE(box.widget().textInteractionFlags().testFlag(Qt::TextSelectableByMouse));
    EXPECT_TRUE(box.widget().textInteractionFlags().testFlag(Qt::TextSelectableByKeyboard));
    EXPECT_TRUE(box.widget().hasFocus());

    box.set_locked(false);
    press_key(box.widget(), Qt::Key_X, "x");
    EXPECT_EQ(box.text(), "xfixed");
}

TEST_F(QtTextBoxTest, AnUnlockedBoxCanBeChangedInEveryWay)
{
    box.set_locked(true);
    box.set_locked(false);
    EXPECT_EQ(box.widget().textInteractionFlags(), Qt::TextEditorInteraction);
    EXPECT_TRUE(box.widget().testAttribute(Qt::WA_InputMethodEnabled));
}

TEST_F(QtTextBoxTest, WhatIsPastedComesAsPlainText)
{
    auto* const copied = new QMimeData;
    copied->setHtml("<b>bold</b> <a href=\"x\">link</a>");
    copied->setText("<b>plain</b>");
    QGuiApplication::clipboard()->setMimeData(copied);
    box.set_locked(true);
    box.set_locked(false);
    box.widget().paste();
    EXPECT_EQ(box.text(), "<b>plain</b>");
    EXPECT_FALSE(box.widget().currentCharFormat().font().bold());
}

TEST_F(QtTextBoxTest, CharactersOfCodeZeroAreDroppedFromWhatIsPasted)
{
    auto* const copied = new QMimeData;
    const QChar nul(QChar::Null);
    copied->setText(nul + QStringLiteral("Os") + nul + QStringLiteral("lo\nNor") + nul + nul + QStringLiteral("way") +
                    nul);
    QGuiApplication::clipboard()->setMimeData(copied);
    box.widget().paste();
    EXPECT_EQ(box.text(), "Oslo\r\nNorway");
}

/// Makes accessible the function that the toolkit calls for each paste.
struct PasteAccess : QPlainTextEdit {
    using QPlainTextEdit::insertFromMimeData;
};

TEST_F(QtTextBoxTest, AnEmptyClipboardPastesNothing)
{
    box.set_text("Oslo");
    const QMimeData without_format;
    for (const QMimeData* nothing : {&without_format, static_cast<const QMimeData*>(nullptr)})
        (box.widget().*(&PasteAccess::insertFromMimeData))(nothing);
    EXPECT_EQ(box.text(), "Oslo");
}

TEST_F(QtTextBoxTest, WhatWasClearedComesBackWithAnUndo)
{
    box.set_locked(true);
    box.set_text("one\r\ntwo");
    box.clear();
    EXPECT_EQ(box.text(), "");
    box.set_locked(false);
    press_key(box.widget(), Qt::Key_Z, "\x1a", false, Qt::ControlModifier);
    EXPECT_EQ(box.text(), "one\r\ntwo");
    box.set_text("");
    press_key(box.widget(), Qt::Key_Z, "\x1a", false, Qt::ControlModifier);
    EXPECT_EQ(box.text(), "") << "a new text cannot be undone";
}

TEST_F(QtTextBoxTest, TheCaretIsCountedInCodePointsAndALineEndAsTwo)
{
    box.set_text("a\U0001F600\r\nb\u0436");
    for (const std::size_t place : {0U, 1U, 2U, 4U, 5U, 6U}) {
        box.set_caret(place);
        EXPECT_EQ(box.caret(), place);
    }
    EXPECT_TRUE(box.widget().textCursor().atEnd());
    box.set_caret(100);
    EXPECT_EQ(box.caret(), 6U);
    EXPECT_TRUE(box.widget().textCursor().atEnd());
    box.set_caret(3);
    EXPECT_EQ(box.caret(), 2U);
}

TEST_F(QtTextBoxTest, TheCaretIsWhereASelectionBeginsAndSettingItGivesTheSelectionUp)
{
    box.set_text("one two");
    select(2, 5);
    EXPECT_EQ(box.caret(), 2U);
    select(5, 2);
    EXPECT_EQ(box.caret(), 2U);
    box.set_caret(3);
    EXPECT_FALSE(box.widget().textCursor().hasSelection());
}

TEST_F(QtTextBoxTest, InsertsAtThePlaceAndLeavesTheCaretBehind)
{
    box.set_text("a\U0001F600\r\nb");
    box.insert(4, "x\r\n<i>");
    EXPECT_EQ(box.text(), "a\U0001F600\r\nx\r\n<i>b");
    EXPECT_EQ(box.caret(), 10U);
}

TEST_F(QtTextBoxTest, AnInsertedTextReplacesNoSelection)
{
    box.set_text("one two");
    select(0, 3);
    box.insert(box.caret(), "[word] ");
    EXPECT_EQ(box.text(), "[word] one two");
    EXPECT_EQ(box.caret(), 7U);
    EXPECT_FALSE(box.widget().textCursor().hasSelection());
}

TEST_F(QtTextBoxTest, AnUndoOfAnInsertedTextLeavesWhatWasTypedBefore)
{
    show();
    box.widget().setFocus();
    press_key(box.widget(), Qt::Key_A, "a");
    box.insert(1, " two");
    EXPECT_EQ(box.text(), "a two");
    press_key(box.widget(), Qt::Key_Z, "\x1a", false, Qt::ControlModifier);
    EXPECT_EQ(box.text(), "a");
}

TEST_F(QtTextBoxTest, AKeyIsSeenByTheHookFirst)
{
    show();
    box.widget().setFocus();
    std::string seen;
    box.on_key = [&](const KeyPress& press) {
        seen += press.character + "(" + box.text() + ")";
        return press.character == "b";
    };
    press_key(box.widget(), Qt::Key_A, "a");
    press_key(box.widget(), Qt::Key_B, "b");
    EXPECT_EQ(seen, "a()b(a)");
    EXPECT_EQ(box.text(), "a");
}

TEST_F(QtTextBoxTest, AKeyDuringAnotherActionGetsNowhere)
{
    show();
    box.widget().setFocus();
    int seen = 0;
    box.on_key = [&](const KeyPress&) { return ++seen == 0; };
    gate.run([this] { press_key(box.widget(), Qt::Key_A, "a"); });
    EXPECT_EQ(seen, 0);
    EXPECT_EQ(box.text(), "");
}

TEST_F(QtTextBoxTest, TakesTheFocus)
{
    show();
    box.widget().clearFocus();
    box.set_focus();
    EXPECT_TRUE(box.widget().hasFocus());
}

TEST_F(QtTextBoxTest, TabLeavesTheBox)
{
    show();
    QPushButton next(&card);
    next.show();
    box.widget().setFocus();
    press_key(box.widget(), Qt::Key_Tab, "\t");
    EXPECT_FALSE(box.widget().hasFocus());
    EXPECT_EQ(box.text(), "");
}

TEST_F(QtTextBoxTest, HasTheFocusOfItsWindowAlsoWhileThatIsNotActive)
{
    show();
    box.widget().clearFocus();
    EXPECT_FALSE(box.has_focus());
    box.set_focus();
    EXPECT_TRUE(box.has_focus());
    QDialog in_front;
    in_front.show();
    in_front.activateWindow();
    QCoreApplication::processEvents();
    EXPECT_TRUE(box.has_focus());
    box.widget().clearFocus();
    EXPECT_FALSE(box.has_focus());
}

TEST_F(QtTextBoxTest, WrapsALongWordInsteadOfScrollingSideways)
{
    show();
    box.set_text(std::string(300, 'W'));
    EXPECT_GT(box.widget().document()->firstBlock().layout()->lineCount(), 1);
}

TEST_F(QtTextBoxTest, TheFixedPitchNameStandsForTheSystemsFixedFont)
{
    box.set_font({"FixedSys", 9, false});
    EXPECT_EQ(box.widget().font().family(), QFontDatabase::systemFont(QFontDatabase::FixedFont).family());
    EXPECT_EQ(box.widget().font().pointSize(), 9);
    EXPECT_FALSE(box.widget().font().bold());
}

TEST_F(QtTextBoxTest, AMissingFixedPitchFontIsReplacedByTheSystemsOne)
{
    box.set_font({"Courier New", 9, false});
    const QString there = QFontDatabase::hasFamily("Courier New")
                              ? QStringLiteral("Courier New")
                              : QFontDatabase::systemFont(QFontDatabase::FixedFont).family();
    EXPECT_EQ(box.widget().font().family(), there);
    EXPECT_EQ(box.widget().font().pointSize(), 9);
}

TEST_F(QtTextBoxTest, AnyOtherFontIsTakenByItsName)
{
    box.set_font({"DejaVu Serif", 12, true});
    EXPECT_EQ(box.widget().font().family(), "DejaVu Serif");
    EXPECT_EQ(box.widget().font().pointSize(), 12);
    EXPECT_TRUE(box.widget().font().bold());
}

TEST_F(QtTextBoxTest, ABackgroundComesWithBlackTextFillsTheCardAndGoesWithoutTrace)
{
    card.resize(300, 200);
    const QPalette before = box.widget().palette();
    box.set_background(common::light_green);
    EXPECT_EQ(box.widget().palette().color(QPalette::Text), QColor(Qt::black));
    const QImage picture = card.grab().toImage();
    EXPECT_EQ(picture.pixelColor(150, 100), QColor(128, 255, 128));
    EXPECT_EQ(picture.pixelColor(150, 2), QColor(128, 255, 128));
    box.set_background(std::nullopt);
    EXPECT_EQ(box.widget().palette().color(QPalette::Base), before.color(QPalette::Base));
    EXPECT_EQ(box.widget().palette().color(QPalette::Text), before.color(QPalette::Text));
}

TEST_F(QtTextBoxTest, HasTheAccessibleNameThatWasSet)
{
    box.set_name("Answer");
    EXPECT_EQ(box.widget().accessibleName(), "Answer");
    EXPECT_EQ(box.widget().objectName(), "Text_a");
}

TEST_F(QtTextBoxTest, TheCardShowsTheFocus)
{
    show();
    box.widget().clearFocus();
    const QImage without = card.grab().toImage();
    box.widget().setFocus();
    EXPECT_NE(card.grab().toImage().pixelColor(150, 0), without.pixelColor(150, 0));
}

} // namespace

} // namespace cuedrill::platform::qt
