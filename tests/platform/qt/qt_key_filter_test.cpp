#include "platform/qt/qt_key_filter.h"
#include "platform/qt/qt_test_tools.h"

#include <QDialog>
#include <QInputMethodEvent>
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
    QtKeyFilter filter{window, [this](const KeyPress& press) {
                           seen.push_back(press);
                           return swallow;
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

TEST_F(QtKeyFilterTest, AKeyHeldOnWhileTheFocusMovesTypesAndPressesNothing)
{
    button.setFocus();
    press_key(button, Qt::Key_Space, " ");
    ASSERT_EQ(clicks, 1);
    text.setFocus();
    press_key(text, Qt::Key_Space, " ", true);
    EXPECT_EQ(text.toPlainText(), "");
    EXPECT_EQ(seen.size(), 1U);
    press_key(text, Qt::Key_Space, " ");
    press_key(text, Qt::Key_Space, " ", true);
    EXPECT_EQ(text.toPlainText(), "  ");
}

TEST_F(QtKeyFilterTest, AKeyHeldOnWhileABoxOpensDoesNotAnswerIt)
{
    press_key(text, Qt::Key_Return, "\r");
    QDialog box(&window);
    box.setModal(true);
    QPushButton ok("OK", &box);
    ok.setAutoDefault(true);
    int answers = 0;
    QObject::connect(&ok, &QPushButton::clicked, &ok, [&] { ++answers; });
    box.show();
    ok.setFocus();
    for (const int key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space, Qt::Key_Escape})
        press_key(ok, key, {}, true);
    EXPECT_EQ(answers, 0);
    EXPECT_TRUE(box.isVisible());
    press_key(ok, Qt::Key_Return, "\r");
    EXPECT_EQ(answers, 1);
}

/// A press at a moment of the system's clock, in milliseconds.
void press_at(QWidget& widget, quint64 moment, int key, const QString& text = {})
{
    QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier, text);
    event.setTimestamp(moment);
    QCoreApplication::sendEvent(&widget, &event);
}

TEST_F(QtKeyFilterTest, AButtonIsPressedOnceByABlankThatBounces)
{
    button.setFocus();
    press_at(button, 10'000, Qt::Key_Space, " ");
    press_at(button, 10'149, Qt::Key_Space, " ");
    EXPECT_EQ(clicks, 1);
    press_at(button, 10'300, Qt::Key_Space, " ");
    EXPECT_EQ(clicks, 2);
}

TEST_F(QtKeyFilterTest, AKeyThatBouncesDoesNotReachTheNextWindow)
{
    QDialog box(&window);
    QPushButton ok("OK", &box);
    box.show();
    ok.setFocus();
    press_at(ok, 10'000, Qt::Key_Escape);
    text.setFocus();
    press_at(text, 10'100, Qt::Key_Escape);
    EXPECT_TRUE(seen.empty());
    press_at(text, 10'300, Qt::Key_Escape);
    EXPECT_EQ(seen.size(), 1U);
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

TEST_F(QtKeyFilterTest, AnEnterThatHasClosedABoxIsFollowedByAnotherOneAtOnce)
{
    for (const int key : {Qt::Key_Return, Qt::Key_Enter}) {
        for (const quint64 gap : {50ULL, 100ULL, 149ULL}) {
            for (QWidget* const target : {static_cast<QWidget*>(&text), static_cast<QWidget*>(&button)}) {
                ClosingBox box(window);
                const quint64 closed = next_moment();
                press_at(box.ok, closed, key, "\r");
                ASSERT_FALSE(box.isVisible());
                target->setFocus();
                seen.clear();
                press_at(*target, closed + gap, key, "\r");
                EXPECT_EQ(seen.size(), 1U) << gap;
            }
        }
    }
}

TEST_F(QtKeyFilterTest, TheContactThatClosesABoxMayChatter)
{
    button.setFocus();
    ClosingBox box(window);
    press_at(box.ok, 10'000, Qt::Key_Return, "\r");
    for (const quint64 moment : {10'008ULL, 10'057ULL})
        press_at(button, moment, Qt::Key_Return, "\r");
    EXPECT_TRUE(seen.empty());
    EXPECT_EQ(clicks, 0);
    press_at(button, 10'107, Qt::Key_Return, "\r");
    EXPECT_EQ(seen.size(), 1U);
    EXPECT_EQ(clicks, 1);
}

TEST_F(QtKeyFilterTest, AnEnterThatClosesABoxAndIsHeldDoesNothingMore)
{
    button.setFocus();
    ClosingBox box(window);
    press_at(box.ok, 10'000, Qt::Key_Return, "\r");
    press_key(button, Qt::Key_Return, "\r", true);
    EXPECT_TRUE(seen.empty());
    EXPECT_EQ(clicks, 0);
}

TEST_F(QtKeyFilterTest, AnEnterThatClosesABoxDoesNotCloseTheNextOneUnseen)
{
    ClosingBox box(window);
    press_at(box.ok, 10'000, Qt::Key_Return, "\r");
    ClosingBox next(window);
    press_at(next.ok, 10'149, Qt::Key_Return, "\r");
    EXPECT_TRUE(next.isVisible());
    press_at(next.ok, 10'299, Qt::Key_Return, "\r");
    EXPECT_FALSE(next.isVisible());
}

TEST_F(QtKeyFilterTest, AnEscapeThatClosesABoxDoesNothingElseUnseen)
{
    ClosingBox box(window);
    press_at(box.ok, 10'000, Qt::Key_Escape);
    text.setFocus();
    press_at(text, 10'149, Qt::Key_Escape);
    EXPECT_TRUE(seen.empty());
}

TEST_F(QtKeyFilterTest, EveryKeyCountsInTextThatIsBeingEdited)
{
    for (const quint64 moment : {10000ULL, 10020ULL, 10040ULL})
        press_at(text, moment, Qt::Key_Return, "\r");
    EXPECT_EQ(text.toPlainText(), "\n\n\n");
    press_at(text, 10'050, Qt::Key_X, "x");
    press_at(text, 10'060, Qt::Key_X, "x");
    EXPECT_EQ(text.toPlainText(), "\n\n\nxx");
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

// As X11 sends a held key where the toolkit has not noticed that it is one.
TEST_F(QtKeyFilterTest, APressAtTheTimeOfTheReleaseOfTheSameKeyIsARepeatedOne)
{
    constexpr quint32 return_key = 36;
    const auto send = [this](QEvent::Type type, quint64 time, quint32 scan_code) {
        QKeyEvent event(type, Qt::Key_Return, Qt::NoModifier, scan_code, 0, 0, "\r");
        event.setTimestamp(time);
        QCoreApplication::sendEvent(&button, &event);
    };
    button.setFocus();
    send(QEvent::KeyPress, 1000, return_key);
    send(QEvent::KeyRelease, 1500, return_key);
    send(QEvent::KeyPress, 1500, return_key);
    send(QEvent::KeyRelease, 1530, return_key);
    EXPECT_EQ(clicks, 1);
    send(QEvent::KeyPress, 1600, return_key);
    EXPECT_EQ(clicks, 2);
    ASSERT_EQ(seen.size(), 3U);
    EXPECT_TRUE(seen[1].auto_repeat);
    EXPECT_FALSE(seen[2].auto_repeat);
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
    filter.add_control(text, [&](const KeyPress& press) {
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
    filter.add_control(text, [&](const KeyPress&) { return ++seen_by_text > 0; });
    button.setFocus();
    press_key(button, Qt::Key_Q, "q");
    EXPECT_EQ(seen.size(), 1U);
    EXPECT_EQ(seen_by_text, 0);
}

TEST_F(QtKeyFilterTest, AControlIsToldThatAKeyIsHeldDown)
{
    std::vector<bool> held;
    filter.add_control(text, [&](const KeyPress& press) {
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
    filter.add_control(text, [&](const KeyPress& press) {
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

/// While assistive technology listens, keys come as copies without their time.
class KeysWithoutTime : public QtTest {
protected:
    static QKeyEvent event(QEvent::Type type, int key = Qt::Key_Space)
    {
        return {type, key, Qt::NoModifier, 65, 0, 0, " "};
    }

    QPushButton button;
    qint64 now = 5000;
    QtKeyMemory memory{[this] { return now; }};
};

TEST_F(KeysWithoutTime, AreNoRepetitionOfTheOneBeforeUnlessTheyFollowItAtOnce)
{
    memory.note_release(event(QEvent::KeyRelease));
    now += 1;
    EXPECT_TRUE(memory.is_repeated(event(QEvent::KeyPress)));
    now += 5;
    EXPECT_FALSE(memory.is_repeated(event(QEvent::KeyPress)));
}

TEST_F(KeysWithoutTime, AreStrayWhenTheyBounce)
{
    EXPECT_FALSE(memory.is_stray(button, event(QEvent::KeyPress)));
    now += 149;
    EXPECT_TRUE(memory.is_stray(button, event(QEvent::KeyPress)));
    now += 150;
    EXPECT_FALSE(memory.is_stray(button, event(QEvent::KeyPress)));
}

TEST_F(KeysWithoutTime, AreNotMeasuredByTheClockOfOthers)
{
    QKeyEvent timed = event(QEvent::KeyPress);
    timed.setTimestamp(9'000'000);
    EXPECT_FALSE(memory.is_stray(button, timed));
    EXPECT_FALSE(memory.is_stray(button, event(QEvent::KeyPress)));
}

std::unique_ptr<QKeyEvent> key_event(QEvent::Type type, quint64 time, int key = Qt::Key_Return, bool from_system = true)
{
    auto event = std::make_unique<QKeyEvent>(type, key, Qt::NoModifier, 36, 0, 0, "\r");
    event->setTimestamp(time);
    if (from_system)
        QSpontaneKeyEvent::setSpontaneous(event.get());
    return event;
}

class CopiedKeys : public QtTest {
protected:
    /// The time that a copy gets; 0 for none.
    quint64 time_of_copy(QEvent::Type type, int key = Qt::Key_Return)
    {
        const auto copy = key_event(type, 0, key, false);
        const bool lacks = times.lacks_time(*copy, now);
        EXPECT_EQ(lacks, copy->timestamp() == 0);
        return copy->timestamp();
    }
    void see(QEvent::Type type, quint64 time, bool from_system = true)
    {
        const auto event = key_event(type, time, Qt::Key_Return, from_system);
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
    now = 400;
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
    see(QEvent::KeyRelease, 7060, false);
    EXPECT_EQ(time_of_copy(QEvent::KeyRelease), 0U) << "another filter has given it its time";
    EXPECT_EQ(time_of_copy(QEvent::KeyPress), 7000U);
}

TEST_F(CopiedKeys, DoNotHaveTheTimeOfAKeyThatAssistiveTechnologyHasKept)
{
    see(QEvent::KeyPress, 7000);
    now = 1001;
    EXPECT_EQ(time_of_copy(QEvent::KeyPress), 0U);
    see(QEvent::KeyPress, 8000);
    EXPECT_EQ(time_of_copy(QEvent::KeyPress), 8000U);
}

/// Takes the keys away and sends copies without their time later, as the toolkit does for assistive technology.
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
        QCoreApplication::instance()->notify(window.windowHandle(), key_event(type, time).get());
    };
    send(QEvent::KeyPress, 10'000);
    copies.deliver();
    send(QEvent::KeyRelease, 10'050);
    copies.deliver();
    ASSERT_EQ(clicks, 1);
    // The program was busy: it gets them all at once.
    send(QEvent::KeyPress, 10'300);
    send(QEvent::KeyRelease, 10'350);
    send(QEvent::KeyPress, 10'500);
    copies.deliver();
    EXPECT_EQ(clicks, 3);
    send(QEvent::KeyRelease, 11'000);
    send(QEvent::KeyPress, 11'000);
    copies.deliver();
    EXPECT_EQ(clicks, 3) << "the key is held";
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
