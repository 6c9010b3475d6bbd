#include "platform/qt/qt_key_filter.h"
#include "platform/qt/qt_test_tools.h"

#include <QDialog>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <QWindow>
#include <QtTest/qtestspontaneevent.h>

namespace cuedrill::platform::qt {

namespace {

class QtKeyFilterTest : public QtTest {
protected:
    QtKeyFilterTest()
    {
        window.setCentralWidget(new QWidget);
        text.setParent(window.centralWidget());
        button.setParent(window.centralWidget());
        QObject::connect(&button, &QPushButton::clicked, &button, [this] { ++clicks; });
        filter.add(window, [this](const KeyPress& press) {
            seen.push_back(press);
            return swallow;
        });
        window.show();
        text.setFocus();
    }

    ~QtKeyFilterTest() override
    {
        text.setParent(nullptr);
        button.setParent(nullptr);
    }

    QMainWindow window;
    QPlainTextEdit text;
    QPushButton button;
    int clicks = 0;
    bool swallow = false;
    std::vector<KeyPress> seen;
    std::vector<KeyEvent> judged;
    KeyJudge judge = as_sent;
    QtKeyFilter filter{[this](const KeyEvent& event) {
        judged.push_back(event);
        return judge(event);
    }};
};

TEST_F(QtKeyFilterTest, SeesAKeyBeforeTheControlWhichThenGetsIt)
{
    press_key(text, Qt::Key_X, "x");
    ASSERT_EQ(seen.size(), 1U);
    EXPECT_EQ(seen[0].key, Key::character);
    EXPECT_EQ(seen[0].character, "x");
    EXPECT_EQ(text.toPlainText(), "x");
}

TEST_F(QtKeyFilterTest, ASwallowedKeyReachesNobody)
{
    swallow = true;
    EXPECT_TRUE(press_key(text, Qt::Key_Plus, "+"));
    EXPECT_EQ(seen.size(), 1U);
    EXPECT_EQ(text.toPlainText(), "");
}

TEST_F(QtKeyFilterTest, AKeyThatTheControlLeavesAloneIsSeenOnlyOnce)
{
    button.setFocus();
    press_key(button, Qt::Key_Q, "q");
    EXPECT_EQ(seen.size(), 1U);
}

TEST_F(QtKeyFilterTest, BothEnterKeysAndEscapeAreToldAsSuch)
{
    swallow = true;
    press_key(text, Qt::Key_Return, "\r");
    press_key(text, Qt::Key_Enter, "\r", false, Qt::KeypadModifier);
    press_key(text, Qt::Key_Escape, "\x1b");
    ASSERT_EQ(seen.size(), 3U);
    EXPECT_EQ(seen[0].key, Key::enter);
    EXPECT_EQ(seen[1].key, Key::enter);
    EXPECT_EQ(seen[2].key, Key::escape);
    EXPECT_EQ(seen[2].character, "");
}

TEST_F(QtKeyFilterTest, TheKeypadGivesTheSameSigns)
{
    swallow = true;
    press_key(text, Qt::Key_Plus, "+", false, Qt::KeypadModifier);
    press_key(text, Qt::Key_Minus, "-", false, Qt::KeypadModifier);
    press_key(text, Qt::Key_Asterisk, "*", false, Qt::KeypadModifier);
    ASSERT_EQ(seen.size(), 3U);
    EXPECT_EQ(seen[0].character + seen[1].character + seen[2].character, "+-*");
}

TEST_F(QtKeyFilterTest, TellsThatAKeyIsHeldDown)
{
    press_key(text, Qt::Key_Plus, "+", true);
    ASSERT_EQ(seen.size(), 1U);
    EXPECT_TRUE(seen[0].auto_repeat);
}

TEST_F(QtKeyFilterTest, AStrayKeyReachesNobody)
{
    judge = [](const KeyEvent&) { return KeyJudgement::stray; };
    EXPECT_TRUE(press_key(text, Qt::Key_X, "x"));
    button.setFocus();
    press_key(button, Qt::Key_Space, " ");
    release_key(button, Qt::Key_Space, " ");
    EXPECT_TRUE(seen.empty());
    EXPECT_EQ(text.toPlainText(), "");
    EXPECT_EQ(clicks, 0);
}

TEST_F(QtKeyFilterTest, AStrayKeyReachesNoBoxOfTheToolkit)
{
    QDialog box(&window);
    box.setModal(true);
    QPushButton ok("OK", &box);
    QObject::connect(&ok, &QPushButton::clicked, &box, &QDialog::accept);
    box.show();
    ok.setFocus();
    judge = [](const KeyEvent&) { return KeyJudgement::stray; };
    for (const int key : {Qt::Key_Return, Qt::Key_Space, Qt::Key_Escape}) {
        press_key(ok, key);
        release_key(ok, key);
    }
    EXPECT_TRUE(box.isVisible());
    judge = as_sent;
    press_key(ok, Qt::Key_Return, "\r");
    EXPECT_FALSE(box.isVisible());
}

TEST_F(QtKeyFilterTest, AKeyThatTheJudgeCallsHeldIsToldAsSuchAndClicksNothing)
{
    judge = [](const KeyEvent&) { return KeyJudgement::held; };
    button.setFocus();
    press_key(button, Qt::Key_Return, "\r");
    ASSERT_EQ(seen.size(), 1U);
    EXPECT_TRUE(seen[0].auto_repeat);
    EXPECT_EQ(clicks, 0);
}

TEST_F(QtKeyFilterTest, TheJudgeIsToldWhichKeyGoesDownAndWhen)
{
    const struct {
        int key;
        KeyKind kind;
    } cases[] = {{Qt::Key_Return, KeyKind::enter}, {Qt::Key_Enter, KeyKind::enter}, {Qt::Key_Escape, KeyKind::escape},
                 {Qt::Key_Space, KeyKind::blank},  {Qt::Key_X, KeyKind::other},     {Qt::Key_Tab, KeyKind::other}};
    for (const auto& c : cases) {
        QKeyEvent event(QEvent::KeyPress, c.key, Qt::NoModifier, 36, 0, 0, {}, true);
        event.setTimestamp(10'000);
        QCoreApplication::sendEvent(&text, &event);
        const KeyEvent& told = judged.back();
        EXPECT_TRUE(told.down);
        EXPECT_EQ(told.kind, c.kind) << c.key;
        EXPECT_EQ(told.scan_code, 36U);
        EXPECT_EQ(told.milliseconds, 10'000);
        EXPECT_TRUE(told.auto_repeat);
    }
    text.setFocus();
    press_key(text, Qt::Key_X, "x");
    EXPECT_FALSE(judged.back().auto_repeat);
}

TEST_F(QtKeyFilterTest, TheJudgeIsToldWhichKeyComesUpAndWhen)
{
    QKeyEvent event(QEvent::KeyRelease, Qt::Key_Return, Qt::NoModifier, 36, 0, 0);
    event.setTimestamp(10'050);
    QCoreApplication::sendEvent(&text, &event);
    ASSERT_FALSE(judged.empty());
    EXPECT_FALSE(judged.back().down);
    EXPECT_EQ(judged.back().scan_code, 36U);
    EXPECT_EQ(judged.back().milliseconds, 10'050);
}

TEST_F(QtKeyFilterTest, TheJudgeIsToldWhereAKeyGoes)
{
    press_key(text, Qt::Key_X, "x");
    button.setFocus();
    press_key(button, Qt::Key_X, "x");
    QDialog box(&window);
    box.setModal(true);
    QLineEdit edit(&box);
    box.show();
    edit.setFocus();
    press_key(edit, Qt::Key_X, "x");
    ASSERT_EQ(judged.size(), 3U) << "each press is judged once";
    EXPECT_EQ(judged[0].focus, &text);
    EXPECT_EQ(judged[1].focus, &button);
    EXPECT_EQ(judged[2].focus, &edit);
    EXPECT_TRUE(judged[0].typing);
    EXPECT_FALSE(judged[1].typing);
    EXPECT_TRUE(judged[2].typing);
    EXPECT_FALSE(judged[0].in_box);
    EXPECT_TRUE(judged[2].in_box);
    text.setReadOnly(true);
    text.setFocus();
    press_key(text, Qt::Key_X, "x");
    EXPECT_FALSE(judged[3].typing) << "a text that is locked";
}

TEST_F(QtKeyFilterTest, AKeyWithoutATimeIsMeasuredByAClockThatGoesForward)
{
    const auto press_without_time = [this] {
        QKeyEvent event(QEvent::KeyPress, Qt::Key_X, Qt::NoModifier, "x");
        QCoreApplication::sendEvent(&text, &event);
        return judged.back().milliseconds;
    };
    const std::int64_t first = press_without_time();
    EXPECT_GE(first, 0);
    QTest::qWait(3);
    const std::int64_t later = press_without_time() - first;
    EXPECT_GE(later, 2);
    EXPECT_LT(later, 60'000);
}

TEST_F(QtKeyFilterTest, CombinationsOfOtherKeysAndKeysWithoutACharacterAreNotTold)
{
    press_key(text, Qt::Key_Q, "q", false, Qt::MetaModifier);
    press_key(text, Qt::Key_Q, "q", false, Qt::ControlModifier | Qt::AltModifier);
    press_key(text, Qt::Key_Escape, "", false, Qt::ControlModifier);
    press_key(text, Qt::Key_Left);
    press_key(text, Qt::Key_Backspace, "\b");
    press_key(text, Qt::Key_Delete, "\x7f");
    press_key(text, Qt::Key_Tab, "\t");
    EXPECT_TRUE(seen.empty());
}

TEST_F(QtKeyFilterTest, KeysOfMenusAndOfOtherWindowsAreNotTold)
{
    window.menuBar()->setFocus();
    press_key(*window.menuBar(), Qt::Key_Q, "q");
    QDialog box(&window);
    QPlainTextEdit other(&box);
    other.setFocus();
    press_key(other, Qt::Key_Q, "q");
    EXPECT_TRUE(seen.empty());
}

TEST_F(QtKeyFilterTest, EnterThatIsNotSwallowedClicksTheButtonWithTheFocus)
{
    button.setFocus();
    press_key(button, Qt::Key_Return, "\r");
    EXPECT_EQ(clicks, 1);
    press_key(button, Qt::Key_Return, "\r", true);
    EXPECT_EQ(clicks, 1);
    swallow = true;
    press_key(button, Qt::Key_Return, "\r");
    EXPECT_EQ(clicks, 1);
    EXPECT_EQ(seen.size(), 3U);
}

TEST_F(QtKeyFilterTest, SpaceClicksTheButtonWithTheFocusOnceHoweverLongItIsHeld)
{
    button.setFocus();
    press_key(button, Qt::Key_Space, " ");
    EXPECT_EQ(clicks, 1);
    for (int i = 0; i < 3; ++i) {
        release_key(button, Qt::Key_Space, " ", true);
        press_key(button, Qt::Key_Space, " ", true);
    }
    release_key(button, Qt::Key_Space, " ");
    EXPECT_EQ(clicks, 1);
}

TEST_F(QtKeyFilterTest, AnEnterThatIsNotSwallowedStartsANewLine)
{
    press_key(text, Qt::Key_Return, "\r");
    EXPECT_EQ(text.toPlainText(), "\n");
}

TEST_F(QtKeyFilterTest, ShiftAndEnterIsALineInTextAndEnterElsewhere)
{
    press_key(text, Qt::Key_Return, "\r", false, Qt::ShiftModifier);
    EXPECT_TRUE(seen.empty());
    EXPECT_EQ(text.toPlainText(), "\n");
    text.setReadOnly(true);
    press_key(text, Qt::Key_Return, "\r", false, Qt::ShiftModifier);
    button.setFocus();
    press_key(button, Qt::Key_Return, "\r", false, Qt::ShiftModifier);
    ASSERT_EQ(seen.size(), 2U);
    EXPECT_EQ(seen[0].key, Key::enter);
    EXPECT_EQ(seen[1].key, Key::enter);
    EXPECT_EQ(clicks, 1);
}

TEST_F(QtKeyFilterTest, AControlSeesTheKeysThatTheWindowLeavesAlone)
{
    std::string seen_by_text;
    filter.add(text, [&](const KeyPress& press) {
        EXPECT_EQ(seen.back().character, press.character) << "the window is asked first";
        seen_by_text += press.character;
        return press.character == "b";
    });
    press_key(text, Qt::Key_A, "a");
    EXPECT_TRUE(press_key(text, Qt::Key_B, "b"));
    swallow = true;
    press_key(text, Qt::Key_C, "c");
    EXPECT_EQ(seen_by_text, "ab");
    EXPECT_EQ(text.toPlainText(), "a");
}

TEST_F(QtKeyFilterTest, AControlSeesNoKeysOfOthers)
{
    int seen_by_text = 0;
    filter.add(text, [&](const KeyPress&) { return ++seen_by_text > 0; });
    button.setFocus();
    press_key(button, Qt::Key_Q, "q");
    EXPECT_EQ(seen.size(), 1U);
    EXPECT_EQ(seen_by_text, 0);
}

TEST_F(QtKeyFilterTest, AControlSeesNoCombinations)
{
    int seen_by_text = 0;
    filter.add(text, [&](const KeyPress&) { return ++seen_by_text > 0; });
    press_key(text, Qt::Key_S, "\x13", false, Qt::ControlModifier);
    EXPECT_EQ(seen.size(), 1U);
    EXPECT_EQ(seen_by_text, 0);
}

TEST_F(QtKeyFilterTest, AControlIsToldThatAKeyIsHeldDown)
{
    std::vector<bool> held;
    filter.add(text, [&](const KeyPress& press) {
        held.push_back(press.auto_repeat);
        return true;
    });
    press_key(text, Qt::Key_X, "x");
    press_key(text, Qt::Key_X, "x", true);
    EXPECT_EQ(held, (std::vector<bool>{false, true}));
}

TEST_F(QtKeyFilterTest, ACharacterOfAnInputMethodIsToldAsComposedToTheControlToo)
{
    std::vector<KeyPress> seen_by_text;
    filter.add(text, [&](const KeyPress& press) {
        seen_by_text.push_back(press);
        return true;
    });
    QInputMethodEvent commit;
    commit.setCommitString("\u00ea");
    QCoreApplication::sendEvent(&text, &commit);
    press_key(text, Qt::Key_X, "x");
    EXPECT_EQ(text.toPlainText(), "");
    ASSERT_EQ(seen_by_text.size(), 2U);
    EXPECT_EQ(seen_by_text[0].character, "\u00ea");
    EXPECT_TRUE(seen_by_text[0].composed);
    EXPECT_FALSE(seen_by_text[1].composed);
    EXPECT_TRUE(seen[0].composed);
}

TEST_F(QtKeyFilterTest, ACommittedCharacterOfAnInputMethodIsSeenFirst)
{
    QInputMethodEvent commit;
    commit.setCommitString("+");
    QCoreApplication::sendEvent(&text, &commit);
    EXPECT_EQ(text.toPlainText(), "+");
    swallow = true;
    QCoreApplication::sendEvent(&text, &commit);
    EXPECT_EQ(text.toPlainText(), "+");
    ASSERT_EQ(seen.size(), 2U);
    EXPECT_EQ(seen[1].character, "+");
}

TEST_F(QtKeyFilterTest, ACommittedWordIsTextAndNoKey)
{
    QInputMethodEvent commit;
    commit.setCommitString("word");
    QCoreApplication::sendEvent(&text, &commit);
    EXPECT_EQ(text.toPlainText(), "word");
    EXPECT_TRUE(seen.empty());
}

class SwallowsTest : public QtTest {
protected:
    QtGuard guard;
    QWidget window;
    QtActionGate gate{guard, window};
};

TEST_F(SwallowsTest, TheHookDecidesAndAMissingOneSwallowsNothing)
{
    EXPECT_TRUE(swallows([](const KeyPress& press) { return press.character == "x"; }, {.character = "x"}, gate));
    EXPECT_FALSE(swallows([](const KeyPress& press) { return press.character == "x"; }, {.character = "y"}, gate));
    EXPECT_FALSE(swallows({}, {}, gate));
}

TEST_F(SwallowsTest, AKeyDuringAnotherActionIsSwallowedUnseen)
{
    int seen = 0;
    bool swallowed = false;
    gate.run([&] {
        swallowed = swallows(
            [&](const KeyPress&) {
                ++seen;
                return false;
            },
            {}, gate);
    });
    EXPECT_TRUE(swallowed);
    EXPECT_EQ(seen, 0);
}

TEST_F(SwallowsTest, AKeyWhoseHandlingFailsIsSwallowed)
{
    std::string reported;
    guard.on_error = [&](const std::exception& error) { reported = error.what(); };
    EXPECT_TRUE(swallows([](const KeyPress&) -> bool { throw std::runtime_error("key failed"); }, {}, gate));
    EXPECT_EQ(reported, "key failed");
}

std::unique_ptr<QKeyEvent> key_event(QEvent::Type type, quint64 time, int key = Qt::Key_Return)
{
    auto event = std::make_unique<QKeyEvent>(type, key, Qt::NoModifier, 36, 0, 0, "\r");
    event->setTimestamp(time);
    return event;
}

class CopiedKeys : public QtTest {
protected:
    /// The timestamp that a copy gets; 0 for none.
    quint64 time_of_copy(QEvent::Type type, int key = Qt::Key_Return)
    {
        const auto copy = key_event(type, 0, key);
        const bool lacks = times.lacks_time(*copy, now);
        EXPECT_EQ(lacks, copy->timestamp() == 0);
        return copy->timestamp();
    }
    void see(QEvent::Type type, quint64 time)
    {
        const auto event = key_event(type, time);
        EXPECT_FALSE(times.lacks_time(*event, now));
        EXPECT_EQ(event->timestamp(), time);
    }

    qint64 now = 0;
    QtKeyTimes times;
};

TEST_F(CopiedKeys, HaveTheTimesOfTheirOriginals)
{
    see(QEvent::KeyPress, 7000);
    see(QEvent::KeyRelease, 7060);
    see(QEvent::KeyPress, 7160);
    now = 9000; // the machine is busy
    EXPECT_EQ(time_of_copy(QEvent::KeyPress), 7000U);
    EXPECT_EQ(time_of_copy(QEvent::KeyRelease), 7060U);
    EXPECT_EQ(time_of_copy(QEvent::KeyPress), 7160U);
    EXPECT_EQ(time_of_copy(QEvent::KeyPress), 0U);
}

TEST_F(CopiedKeys, HaveNoTimeWhereTheOriginalWasNotSeen)
{
    EXPECT_EQ(time_of_copy(QEvent::KeyPress), 0U);
    see(QEvent::KeyPress, 7000);
    EXPECT_EQ(time_of_copy(QEvent::KeyPress, Qt::Key_Escape), 0U);
    EXPECT_EQ(time_of_copy(QEvent::KeyRelease), 0U);
    EXPECT_EQ(time_of_copy(QEvent::KeyPress), 7000U);
}

TEST_F(CopiedKeys, DoNotHaveTheTimeOfAKeyThatAssistiveTechnologyHasKept)
{
    see(QEvent::KeyPress, 7000);
    now = 10'001;
    EXPECT_EQ(time_of_copy(QEvent::KeyPress), 0U);
    see(QEvent::KeyPress, 8000);
    EXPECT_EQ(time_of_copy(QEvent::KeyPress), 8000U);
}

/// Withholds key events and sends copies without timestamps later, as the toolkit does for assistive technology.
class KeyCopies : public QObject {
public:
    KeyCopies() { QCoreApplication::instance()->installEventFilter(this); }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        const bool key = event->type() == QEvent::KeyPress || event->type() == QEvent::KeyRelease;
        auto* const window = qobject_cast<QWindow*>(watched);
        if (!key || window == nullptr || !event->spontaneous())
            return false;
        const auto& original = static_cast<QKeyEvent&>(*event);
        waiting_.emplace_back(window, std::make_unique<QKeyEvent>(original.type(), original.key(), original.modifiers(),
                                                                  original.nativeScanCode(), 0U, 0U, original.text(),
                                                                  original.isAutoRepeat()));
        return true;
    }

    void deliver()
    {
        for (const auto& [window, copy] : std::exchange(waiting_, {}))
            QCoreApplication::sendEvent(window, copy.get());
        QCoreApplication::processEvents();
    }

private:
    std::vector<std::pair<QWindow*, std::unique_ptr<QKeyEvent>>> waiting_;
};

TEST_F(QtKeyFilterTest, KeysThatWaitForAssistiveTechnologyAreMeasuredByTheirOwnTime)
{
    KeyCopies copies;
    button.setFocus();
    const auto send = [this](QEvent::Type type, quint64 time) {
        const auto event = key_event(type, time);
        QSpontaneKeyEvent::setSpontaneous(event.get());
        QCoreApplication::instance()->notify(window.windowHandle(), event.get());
    };
    // The filter does not see the first original. After its copy, the filter runs before the one that withholds events.
    send(QEvent::KeyPress, 10'000);
    copies.deliver();
    send(QEvent::KeyRelease, 10'050);
    copies.deliver();
    ASSERT_EQ(clicks, 1);
    judged.clear();
    // The program was busy and gets them all at once.
    send(QEvent::KeyPress, 10'300);
    send(QEvent::KeyRelease, 10'350);
    send(QEvent::KeyPress, 10'500);
    copies.deliver();
    EXPECT_EQ(clicks, 3);
    std::vector<std::int64_t> pressed;
    for (const KeyEvent& event : judged) {
        if (event.down)
            pressed.push_back(event.milliseconds);
    }
    EXPECT_EQ(pressed, (std::vector<std::int64_t>{10'300, 10'500}));
    send(QEvent::KeyRelease, 11'000);
    copies.deliver();
    EXPECT_FALSE(judged.back().down);
    EXPECT_EQ(judged.back().milliseconds, 11'000);
}

TEST(Combinations, TellOneModifierAndTheLetterInLowerCase)
{
    const auto press_of = [](int key, Qt::KeyboardModifiers modifiers, const char* text) {
        return to_key_press(QKeyEvent(QEvent::KeyPress, key, modifiers, 39, 0, 0, QString::fromUtf8(text)), true);
    };
    const std::optional<KeyPress> save = press_of(Qt::Key_S, Qt::ControlModifier, "\x13");
    ASSERT_TRUE(save.has_value());
    EXPECT_EQ(save->character, "s");
    EXPECT_EQ(save->place, 's');
    EXPECT_EQ(save->modifier, KeyModifier::control);
    const std::optional<KeyPress> enter = press_of(Qt::Key_Return, Qt::ControlModifier, "\r");
    ASSERT_TRUE(enter.has_value());
    EXPECT_EQ(enter->key, Key::enter);
    EXPECT_EQ(enter->modifier, KeyModifier::control);
    const std::optional<KeyPress> alt = press_of(Qt::Key_Q, Qt::AltModifier, "q");
    ASSERT_TRUE(alt.has_value());
    EXPECT_EQ(alt->modifier, KeyModifier::alt);
    EXPECT_FALSE(press_of(Qt::Key_S, Qt::ControlModifier | Qt::AltModifier, "s").has_value());
    EXPECT_FALSE(press_of(Qt::Key_S, Qt::ControlModifier | Qt::ShiftModifier, "S").has_value());
    EXPECT_FALSE(press_of(Qt::Key_S, Qt::MetaModifier, "s").has_value());
    EXPECT_FALSE(press_of(Qt::Key_Escape, Qt::AltModifier, "").has_value());
}

TEST(LetterKeys, TellTheCharacterAndTheLatinLetterAtTheirPlace)
{
    const struct {
        const char* text;
        quint32 scan_code;
        char place;
    } cases[] = {{"q", 24, 'q'},    {"a", 24, 'q'},      {";", 24, 'q'},      {"\u0439", 24, 'q'},
                 {"\u0436", 47, 0}, {"\u044c", 58, 'm'}, {"\u0e49", 43, 'h'}, {"1", 10, 0}};
    for (const auto& c : cases) {
        for (const bool typing : {false, true}) {
            const QKeyEvent event(QEvent::KeyPress, 0, Qt::NoModifier, c.scan_code, 0, 0, QString::fromUtf8(c.text));
            const std::optional<KeyPress> press = to_key_press(event, typing);
            ASSERT_TRUE(press.has_value()) << c.text;
            EXPECT_EQ(press->character, c.text);
            EXPECT_EQ(press->place, c.place) << c.text;
        }
    }
}

} // namespace

} // namespace cuedrill::platform::qt
