#include "platform/qt/qt_card.h"
#include "platform/qt/qt_list_box.h"
#include "platform/qt/qt_look.h"
#include "platform/qt/qt_test_tools.h"

#include <QAccessible>
#include <QAction>
#include <QClipboard>
#include <QDropEvent>
#include <QFontDatabase>
#include <QFontInfo>
#include <QHoverEvent>
#include <QImage>
#include <QMimeData>
#include <QPalette>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>

namespace cuedrill::platform::qt {

namespace {

std::vector<std::string> numbered(int count, const std::string& text = "line ")
{
    std::vector<std::string> lines;
    for (int i = 0; i < count; ++i)
        lines.push_back(text + std::to_string(i));
    return lines;
}

class QtListBoxTest : public QtTest {
protected:
    QtListBoxTest()
    {
        card.surround(view);
        card.resize(300, 160);
        card.show();
        card.activateWindow();
        QCoreApplication::processEvents();
        view.clearFocus();
        box.on_click = [this](const std::string& line) { clicked.push_back(line); };
    }

    [[nodiscard]] QPointF middle_of(int row) const
    {
        const QRect place = view.visualRect(view.lines().index(row));
        return {20.0, static_cast<double>(place.center().y())};
    }

    void send(QEvent::Type type, QPointF point, Qt::MouseButton button = Qt::LeftButton)
    {
        send_mouse_at(viewport, type, button, point);
    }

    void click_at(QPointF point, Qt::MouseButton button = Qt::LeftButton)
    {
        send(QEvent::MouseButtonPress, point, button);
        send(QEvent::MouseButtonRelease, point, button);
    }

    bool press(int key, const QString& text = {}, bool auto_repeat = false)
    {
        return press_key(view, key, text, auto_repeat);
    }

    [[nodiscard]] int current() const { return view.currentIndex().row(); }
    [[nodiscard]] int top() const { return view.verticalScrollBar()->value(); }

    [[nodiscard]] QColor background_of(int row)
    {
        const QRect place = view.visualRect(view.lines().index(row));
        return viewport.grab().toImage().pixelColor(place.right() - 3, place.center().y());
    }

    /// Asks the window's hook before the list's.
    QtKeyFilter& keys_of_window()
    {
        keys.add(card, [this](const KeyPress& press) { return window_hook(press); });
        return keys;
    }

    QtGuard guard;
    Card card;
    QtActionGate gate{guard, card};
    std::function<bool(const KeyPress&)> window_hook = [](const KeyPress&) { return false; };
    QtKeyFilter keys;
    QtListBox box{"listav", gate, keys_of_window()};
    LineView& view = box.widget();
    QWidget& viewport = *view.viewport();
    std::vector<std::string> clicked;
};

TEST_F(QtListBoxTest, ShowsEachLineInOneRowAndGivesItsTextBackExactly)
{
    const std::vector<std::string> lines{"", "a\r\nb\tc\nd\re\u2028f", "<b>\U0001F600</b> & no\u00a0break"};
    box.set_lines(lines);
    EXPECT_EQ(view.model()->rowCount(), 3);
    EXPECT_EQ(view.lines().index(1).data().toString(), "a b c d e f");
    EXPECT_EQ(view.lines().index(2).data().toString(), QString::fromStdString(lines[2]));
    EXPECT_EQ(view.visualRect(view.lines().index(0)).height(), view.visualRect(view.lines().index(1)).height());
    for (int row = 0; row < 3; ++row)
        click_at(middle_of(row));
    EXPECT_EQ(clicked, lines);
    EXPECT_EQ(view.objectName(), "listav");
}

TEST_F(QtListBoxTest, IsInTheSystemsFixedPitchFont)
{
    EXPECT_EQ(view.font().family(), QFontDatabase::systemFont(QFontDatabase::FixedFont).family());
    EXPECT_TRUE(QFontInfo(view.font()).fixedPitch());
}

TEST_F(QtListBoxTest, NewLinesAreShownFromTheFirstOneOn)
{
    box.set_lines(numbered(100, std::string(80, 'W')));
    view.setFocus();
    press(Qt::Key_End);
    view.horizontalScrollBar()->setValue(40);
    ASSERT_GT(top(), 0);
    box.set_lines(numbered(200, std::string(80, 'W')));
    EXPECT_EQ(top(), 0);
    EXPECT_EQ(view.horizontalScrollBar()->value(), 0);
    EXPECT_EQ(current(), 0) << "for the keyboard, which is there";
}

TEST_F(QtListBoxTest, NewLinesHaveNoCurrentOneWhereTheKeyboardIsElsewhere)
{
    box.set_lines(numbered(100));
    view.setFocus();
    press(Qt::Key_End);
    view.clearFocus();
    box.set_lines(numbered(100));
    EXPECT_EQ(current(), -1);
    EXPECT_EQ(top(), 0);
}

TEST_F(QtListBoxTest, ReplacedLinesAreShownAtTheSamePlace)
{
    box.set_lines(numbered(100, std::string(80, 'W')));
    view.verticalScrollBar()->setValue(40);
    view.horizontalScrollBar()->setValue(50);
    click_at(middle_of(42));
    box.replace_lines(numbered(90, std::string(80, 'V')), std::nullopt);
    EXPECT_EQ(top(), 40);
    EXPECT_EQ(view.horizontalScrollBar()->value(), 50);
    EXPECT_EQ(current(), 42);
    view.verticalScrollBar()->setValue(10);
    box.replace_lines(numbered(90), std::nullopt);
    EXPECT_EQ(top(), 10) << "the current line is not in view";
    EXPECT_EQ(current(), 42);
    view.verticalScrollBar()->setValue(40);
    box.replace_lines(numbered(20), std::nullopt);
    EXPECT_EQ(current(), 19);
    EXPECT_EQ(top(), view.verticalScrollBar()->maximum());
    box.replace_lines({}, std::nullopt);
    EXPECT_EQ(current(), -1);
}

TEST_F(QtListBoxTest, ReplacedLinesKeepThePlaceAlsoOfAListThatIsNotShown)
{
    box.set_lines(numbered(100));
    view.verticalScrollBar()->setValue(40);
    card.hide();
    box.replace_lines(numbered(100, "other "), std::nullopt);
    card.show();
    EXPECT_EQ(top(), 40);
    EXPECT_EQ(current(), -1);
}

TEST_F(QtListBoxTest, AClickIsToldWhenTheButtonIsUpOnTheSameLine)
{
    box.set_lines(numbered(5));
    send(QEvent::MouseButtonPress, middle_of(2));
    EXPECT_EQ(current(), 2);
    EXPECT_TRUE(clicked.empty());
    send(QEvent::MouseButtonRelease, middle_of(2));
    EXPECT_EQ(clicked, std::vector<std::string>{"line 2"});
    send(QEvent::MouseButtonPress, middle_of(2));
    send(QEvent::MouseMove, middle_of(4));
    send(QEvent::MouseButtonRelease, middle_of(4));
    EXPECT_EQ(clicked.size(), 1U);
    EXPECT_EQ(current(), 2);
}

TEST_F(QtListBoxTest, AClickBesideTheLinesIsNone)
{
    box.set_lines(numbered(2));
    click_at(QPointF(20, viewport.height() - 3));
    EXPECT_TRUE(clicked.empty());
    EXPECT_EQ(current(), -1);
}

TEST_F(QtListBoxTest, TheSecondPressOfADoubleClickDoesNothing)
{
    box.set_lines(numbered(5));
    click_at(middle_of(1));
    send(QEvent::MouseButtonDblClick, middle_of(3));
    send(QEvent::MouseButtonRelease, middle_of(3));
    EXPECT_EQ(clicked, std::vector<std::string>{"line 1"});
    EXPECT_EQ(current(), 1);
}

TEST_F(QtListBoxTest, TheSecondPressGoesToNothingElseThatCameUnderThePointerEither)
{
    box.set_lines(numbered(5));
    QPushButton other;
    bool pressed = false;
    QObject::connect(&other, &QPushButton::pressed, &other, [&pressed] { pressed = true; });
    const QPointF place = middle_of(1);
    click_at(place);
    const QPointF on_screen = viewport.mapToGlobal(place);
    for (const QPointF& where : {on_screen, on_screen + QPointF(100, 0)}) {
        EXPECT_FALSE(pressed);
        QMouseEvent press(QEvent::MouseButtonPress, QPointF(3, 3), where, Qt::LeftButton, Qt::LeftButton,
                          Qt::NoModifier);
        QCoreApplication::sendEvent(&other, &press);
    }
    EXPECT_TRUE(pressed) << "elsewhere it is no second press";
}

TEST_F(QtListBoxTest, OnlyTheLeftButtonChooses)
{
    box.set_lines(numbered(5));
    for (const Qt::MouseButton button : {Qt::RightButton, Qt::MiddleButton})
        click_at(middle_of(3), button);
    EXPECT_TRUE(clicked.empty());
    // Pressing another button meanwhile cancels the click.
    send(QEvent::MouseButtonPress, middle_of(3));
    click_at(middle_of(3), Qt::RightButton);
    send(QEvent::MouseButtonRelease, middle_of(3));
    EXPECT_TRUE(clicked.empty());
}

TEST_F(QtListBoxTest, AClickOnALineThatWasReplacedMeanwhileIsNone)
{
    box.set_lines(numbered(5));
    send(QEvent::MouseButtonPress, middle_of(3));
    box.replace_lines(numbered(5, "other "), std::nullopt);
    send(QEvent::MouseButtonRelease, middle_of(3));
    EXPECT_TRUE(clicked.empty());
}

TEST_F(QtListBoxTest, AClickOnAListThatIsScrolledGoesToTheLineUnderThePointer)
{
    box.set_lines(numbered(100));
    view.verticalScrollBar()->setValue(50);
    const QPointF bottom(20, viewport.height() - 2);
    const int row = view.indexAt(bottom.toPoint()).row();
    send(QEvent::MouseButtonPress, bottom);
    view.setFocus(Qt::MouseFocusReason);
    send(QEvent::MouseButtonRelease, bottom);
    EXPECT_EQ(clicked, std::vector<std::string>{"line " + std::to_string(row)});
    EXPECT_GT(row, 50);
}

TEST_F(QtListBoxTest, FocusByAClickDoesNotScroll)
{
    box.set_lines(numbered(100));
    view.verticalScrollBar()->setValue(50);
    view.setFocus(Qt::MouseFocusReason);
    EXPECT_EQ(top(), 50);
    EXPECT_EQ(current(), -1);
}

TEST_F(QtListBoxTest, AHandlerMayShowOtherLines)
{
    box.set_lines(numbered(5));
    box.on_click = [this](const std::string& line) {
        box.set_lines({"other"});
        clicked.push_back(line);
    };
    click_at(middle_of(4));
    EXPECT_EQ(clicked, std::vector<std::string>{"line 4"});
    EXPECT_EQ(view.model()->rowCount(), 1);
}

TEST_F(QtListBoxTest, AClickDuringAnotherActionIsDroppedAndAFailingOneIsReported)
{
    box.set_lines(numbered(5));
    std::string reported;
    guard.on_error = [&](const std::exception& error) { reported = error.what(); };
    box.on_click = [](const std::string& line) { throw std::runtime_error(line + " failed"); };
    gate.run([this] { click_at(middle_of(1)); });
    EXPECT_EQ(reported, "");
    click_at(middle_of(1));
    EXPECT_EQ(reported, "line 1 failed");
}

TEST_F(QtListBoxTest, KeysOfTheCursorMoveTheCurrentLineAndChooseNothing)
{
    box.set_lines(numbered(100));
    box.set_focus();
    const std::pair<int, int> steps[] = {{Qt::Key_Down, 1}, {Qt::Key_Down, 2}, {Qt::Key_Up, 1},
                                         {Qt::Key_End, 99}, {Qt::Key_Home, 0}, {Qt::Key_Up, 0}};
    for (const auto& [key, row] : steps) {
        press(key);
        EXPECT_EQ(current(), row);
    }
    press(Qt::Key_PageDown);
    const int page = current();
    EXPECT_GT(page, 3);
    EXPECT_LT(page, 20);
    press(Qt::Key_PageUp);
    EXPECT_EQ(current(), 0);
    EXPECT_TRUE(clicked.empty());
}

TEST_F(QtListBoxTest, TheLineThatAKeyLeadsToIsScrolledIntoViewAndTheColumnsStay)
{
    box.set_lines(numbered(100, std::string(80, 'W')));
    box.set_focus();
    press(Qt::Key_Right);
    const int left = view.horizontalScrollBar()->value();
    EXPECT_GT(left, 0);
    EXPECT_LT(left, 100);
    press(Qt::Key_End);
    EXPECT_TRUE(viewport.rect().contains(middle_of(99).toPoint()));
    EXPECT_EQ(view.horizontalScrollBar()->value(), left);
}

TEST_F(QtListBoxTest, EnterAndTheBlankChooseTheCurrentLine)
{
    box.set_lines(numbered(5));
    box.set_focus();
    press(Qt::Key_Down);
    EXPECT_TRUE(press(Qt::Key_Return, "\r"));
    press(Qt::Key_Down);
    EXPECT_TRUE(press(Qt::Key_Enter, "\r"));
    press(Qt::Key_Down);
    EXPECT_TRUE(press(Qt::Key_Space, " "));
    EXPECT_EQ(clicked, (std::vector<std::string>{"line 1", "line 2", "line 3"}));
}

TEST_F(QtListBoxTest, AHeldKeyChoosesOnce)
{
    box.set_lines(numbered(5));
    box.set_focus();
    for (const auto& [key, text] : {std::pair(Qt::Key_Return, "\r"), std::pair(Qt::Key_Space, " ")}) {
        clicked.clear();
        for (const bool repeated : {false, true, true})
            EXPECT_TRUE(press(key, text, repeated));
        EXPECT_EQ(clicked.size(), 1U);
    }
}

TEST_F(QtListBoxTest, TheWindowSeesKeysFirst)
{
    std::string seen;
    bool swallow = true;
    window_hook = [&](const KeyPress& press) {
        seen += press.key == Key::enter ? "enter" : press.key == Key::escape ? "escape" : press.character;
        return swallow;
    };
    box.set_lines(numbered(5));
    box.set_focus();
    press(Qt::Key_Return, "\r");
    press(Qt::Key_Space, " ");
    EXPECT_TRUE(clicked.empty());
    swallow = false;
    press(Qt::Key_Return, "\r");
    press(Qt::Key_Escape, "\x1b");
    EXPECT_EQ(clicked.size(), 1U);
    EXPECT_EQ(seen, "enter enterescape");
}

TEST_F(QtListBoxTest, CharactersSearchForNothing)
{
    box.set_lines({"ant", "bee", "cat"});
    box.set_focus();
    press(Qt::Key_C, "c");
    EXPECT_EQ(current(), 0);
    // Without an input method a letter key gives its Latin letter on every layout; nothing is typed here.
    EXPECT_FALSE(view.testAttribute(Qt::WA_InputMethodEnabled));
}

TEST_F(QtListBoxTest, TheFirstLineBecomesCurrentWhenTheListGetsTheFocusUnlessThereIsOne)
{
    box.set_lines(numbered(5));
    box.set_focus();
    EXPECT_EQ(current(), 0);
    press(Qt::Key_Down);
    view.clearFocus();
    box.set_focus();
    EXPECT_EQ(current(), 1);
}

TEST_F(QtListBoxTest, TakesTheFocusAndIsLeftWithTab)
{
    QPushButton next(&card);
    next.show();
    box.set_lines(numbered(5));
    EXPECT_FALSE(box.has_focus());
    box.set_focus();
    EXPECT_TRUE(box.has_focus());
    press(Qt::Key_Tab, "\t");
    EXPECT_FALSE(box.has_focus());
    EXPECT_EQ(current(), 0);
}

TEST_F(QtListBoxTest, TheCurrentLineIsMarkedWithAndWithoutTheFocusAndTheOneUnderThePointerToo)
{
    box.set_lines(numbered(5));
    const QPalette palette = view.palette();
    box.set_focus();
    EXPECT_EQ(background_of(0), palette.color(QPalette::Highlight));
    EXPECT_EQ(background_of(1), palette.color(QPalette::Base));
    view.clearFocus();
    const QColor left = background_of(0);
    EXPECT_NE(left, palette.color(QPalette::Highlight));
    EXPECT_NE(left, palette.color(QPalette::Base));
    ASSERT_TRUE(viewport.testAttribute(Qt::WA_Hover));
    QHoverEvent hover(QEvent::HoverMove, middle_of(2), middle_of(2), QPointF());
    QCoreApplication::sendEvent(&viewport, &hover);
    EXPECT_NE(background_of(2), palette.color(QPalette::Base));
    EXPECT_NE(background_of(2), left);
}

TEST_F(QtListBoxTest, ALineThatIsTooLongCanBeScrolledToItsEnd)
{
    std::vector<std::string> lines = numbered(100);
    lines[70] = std::string(400, 'W');
    box.set_lines(lines);
    const int width = view.fontMetrics().horizontalAdvance(QString(400, 'W'));
    EXPECT_GE(view.horizontalScrollBar()->maximum() + viewport.width(), width);
    box.set_lines(numbered(100));
    EXPECT_EQ(view.horizontalScrollBar()->maximum(), 0);
}

TEST_F(QtListBoxTest, ALineInAWideScriptCountsAsTheLongOneThatItIs)
{
    const QString wide(60, QChar(0x65E5));
    box.set_lines({std::string(70, 'i'), wide.toStdString()});
    EXPECT_EQ(view.lines().widest_row(), 1);
}

TEST_F(QtListBoxTest, FiguresStandInColumnsWhateverTheScriptOfTheText)
{
    const auto picture_of_figures = [this](const std::string& text) {
        box.set_lines({"  42  " + text});
        QRect place = view.visualRect(view.lines().index(0));
        place.setWidth(6 + view.fontMetrics().horizontalAdvance("  42  "));
        return viewport.grab(place).toImage();
    };
    EXPECT_EQ(picture_of_figures("\u05E9\u05DC\u05D5\u05DD"), picture_of_figures("shalom"));
}

TEST_F(QtListBoxTest, TheCurrentLineCanBeCopied)
{
    box.set_lines({"ant", "<b>bee</b>\r\n\tcat"});
    box.set_focus();
    press(Qt::Key_Down);
    QTest::keyClick(&view, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "<b>bee</b>\n\tcat");
    click_at(middle_of(0), Qt::RightButton);
    ASSERT_EQ(view.contextMenuPolicy(), Qt::ActionsContextMenu);
    ASSERT_EQ(view.actions().size(), 1);
    EXPECT_EQ(view.actions().front()->text(), "&Copy");
    view.actions().front()->trigger();
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "ant");
    EXPECT_TRUE(clicked.empty());
}

TEST_F(QtListBoxTest, NothingThatTheUserDoesChangesTheLines)
{
    box.set_lines(numbered(3));
    box.set_focus();
    press(Qt::Key_F2);
    press(Qt::Key_Delete, "\x7f");
    press_key(view, Qt::Key_X, "\x18", false, Qt::ControlModifier);
    QMimeData dropped;
    dropped.setText("dropped");
    QDropEvent drop(middle_of(1), Qt::CopyAction, &dropped, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&viewport, &drop);
    EXPECT_EQ(view.model()->rowCount(), 3);
    EXPECT_EQ(view.lines().line(0), "line 0");
}

TEST_F(QtListBoxTest, TheMarkedLineIsCurrentAndInView)
{
    box.set_lines(numbered(200));
    box.mark_line(150);
    EXPECT_EQ(view.currentIndex().row(), 150);
    EXPECT_TRUE(viewport.rect().contains(view.visualRect(view.lines().index(150))));
    card.resize(300, 400);
    QCoreApplication::processEvents();
    card.resize(300, 100);
    QCoreApplication::processEvents();
    EXPECT_TRUE(viewport.rect().contains(view.visualRect(view.lines().index(150))));
    EXPECT_TRUE(clicked.empty());
}

TEST_F(QtListBoxTest, AMarkThatComesWithReplacedLinesDoesNotScrollToIt)
{
    box.set_lines(numbered(200));
    box.mark_line(150);
    view.verticalScrollBar()->setValue(20);
    box.replace_lines(numbered(200, "other "), 160);
    EXPECT_EQ(view.marked_row(), 160);
    EXPECT_EQ(current(), 160) << "the marked line was current";
    EXPECT_EQ(top(), 20);
    card.resize(300, 400);
    QCoreApplication::processEvents();
    EXPECT_EQ(top(), 20);
    view.setCurrentIndex(view.lines().index(30));
    box.replace_lines(numbered(200), 150);
    EXPECT_EQ(view.marked_row(), 150);
    EXPECT_EQ(current(), 30);
    box.replace_lines(numbered(100), 100);
    EXPECT_EQ(view.marked_row(), LineView::no_row) << "there is no such line";
    EXPECT_EQ(current(), 30);
}

TEST_F(QtListBoxTest, TheMarkIsSeenAndToldAndGoesWithTheLines)
{
    box.set_lines(numbered(3));
    const QImage plain = viewport.grab().toImage();
    box.mark_line(0);
    view.setCurrentIndex(view.lines().index(2));
    view.setCurrentIndex({});
    EXPECT_NE(viewport.grab().toImage(), plain);
    QAccessibleInterface& list = *QAccessible::queryAccessibleInterface(&view);
    EXPECT_EQ(list.child(0)->text(QAccessible::Description), "question on display");
    EXPECT_EQ(list.child(1)->text(QAccessible::Description), "");
    box.replace_lines(numbered(3), std::nullopt);
    EXPECT_EQ(view.marked_row(), LineView::no_row);
    EXPECT_EQ(viewport.grab().toImage(), plain);
    box.mark_line(0);
    box.mark_line(std::nullopt);
    EXPECT_EQ(view.marked_row(), LineView::no_row);
    box.mark_line(3);
    EXPECT_EQ(view.marked_row(), LineView::no_row) << "there is no such line";
}

TEST_F(QtListBoxTest, ALineThatBeginsWithALevelHasABarOfItsLength)
{
    const auto filled_part = [this](const std::string& line) {
        box.set_lines({line});
        const QImage picture = viewport.grab().toImage();
        QPalette on_base = view.palette();
        on_base.setColor(QPalette::Window, on_base.color(QPalette::Base));
        on_base.setColor(QPalette::WindowText, on_base.color(QPalette::Text));
        const int y = view.visualRect(view.lines().index(0)).center().y();
        int pixels = 0;
        for (int x = 0; x < 80; ++x)
            pixels += picture.pixelColor(x, y) == bar_fill(on_base) ? 1 : 0;
        return pixels;
    };
    const int full = filled_part("10 - x");
    EXPECT_GT(full, 30);
    EXPECT_NEAR(filled_part("05 - x"), full / 2, 3);
    EXPECT_EQ(filled_part("00 - x"), 0);
    EXPECT_EQ(filled_part("99 - x"), full);
    EXPECT_EQ(filled_part("x"), 0);
    EXPECT_EQ(filled_part("3 capitals"), 0);
}

} // namespace

} // namespace cuedrill::platform::qt
