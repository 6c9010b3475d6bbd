#include "platform/qt/qt_key_filter.h"

#include "platform/qt/qt_text.h"

#include <QAbstractButton>
#include <QApplication>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QMenuBar>
#include <QWindow>
#include <algorithm>
#include <array>

namespace cuedrill::platform::qt {

namespace {

/// The letter at the key's position on a Latin keyboard; 0 if there is no letter there. X11 and Wayland number the keys
/// by position: the three rows of letters begin at 24, 38 and 52.
char latin_letter(quint32 scan_code)
{
    struct Row {
        quint32 first;
        std::string_view letters;
    };
    constexpr Row rows[] = {{24, "qwertyuiop"}, {38, "asdfghjkl"}, {52, "zxcvbnm"}};
    for (const Row& row : rows) {
        if (scan_code >= row.first && scan_code - row.first < row.letters.size())
            return row.letters[scan_code - row.first];
    }
    return 0;
}

/// The only code point of `text` if it is printable, blank included; 0 otherwise.
char32_t single_character(const QString& text)
{
    const QList<uint> code_points = text.toUcs4();
    if (code_points.size() != 1 || !QChar::isPrint(code_points.front()))
        return 0;
    return code_points.front();
}

/// std::nullopt for combinations that the program does not use.
std::optional<KeyModifier> to_modifier(Qt::KeyboardModifiers modifiers)
{
    modifiers &= Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier | Qt::ShiftModifier;
    if (modifiers == Qt::NoModifier || modifiers == Qt::ShiftModifier)
        return KeyModifier::none;
    if (modifiers == Qt::ControlModifier)
        return KeyModifier::control;
    if (modifiers == Qt::AltModifier)
        return KeyModifier::alt;
    return std::nullopt;
}

/// The text of the event. With Ctrl the event may contain a control character, so with a modifier it is taken from the
/// key.
QString text_of(const QKeyEvent& event, KeyModifier modifier)
{
    if (modifier == KeyModifier::none)
        return event.text();
    const bool has_character = event.key() > Qt::Key_Space && event.key() < Qt::Key_Escape;
    return has_character ? QString::fromUcs4(std::array{static_cast<char32_t>(event.key())}.data(), 1).toLower()
                         : QString();
}

KeyKind kind_of(int key)
{
    switch (key) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return KeyKind::enter;
    case Qt::Key_Escape:
        return KeyKind::escape;
    case Qt::Key_Space:
        return KeyKind::blank;
    default:
        return KeyKind::other;
    }
}

bool is_menu(const QWidget& widget)
{
    return qobject_cast<const QMenuBar*>(&widget) != nullptr || qobject_cast<const QMenu*>(&widget) != nullptr;
}

/// Whether typing changes text there.
bool is_edited(const QWidget& widget)
{
    return widget.testAttribute(Qt::WA_InputMethodEnabled);
}

/// `watched` if it is the widget that gets a key event first, in whichever window; otherwise null. A widget that
/// ignores the event passes it on to its parents.
QWidget* first_station(QObject& watched)
{
    auto* const widget = qobject_cast<QWidget*>(&watched);
    if (widget == nullptr || is_menu(*widget))
        return widget;
    const QWidget* const focus = widget->window()->focusWidget();
    return widget == (focus != nullptr ? focus : widget->window()) ? widget : nullptr;
}

} // namespace

std::optional<KeyPress> to_key_press(const QKeyEvent& event, bool typing)
{
    const std::optional<KeyModifier> modifier = to_modifier(event.modifiers());
    if (!modifier)
        return std::nullopt;
    KeyPress press;
    press.modifier = *modifier;
    const KeyKind kind = kind_of(event.key());
    if (kind == KeyKind::enter) {
        if (typing && event.modifiers().testFlag(Qt::ShiftModifier))
            return std::nullopt;
        press.key = Key::enter;
        return press;
    }
    if (kind == KeyKind::escape) {
        if (press.modifier != KeyModifier::none)
            return std::nullopt;
        press.key = Key::escape;
        return press;
    }
    const QString text = text_of(event, press.modifier);
    if (single_character(text) == 0)
        return std::nullopt;
    press.character = from_qt(text);
    press.place = latin_letter(event.nativeScanCode());
    return press;
}

bool swallows(const KeyHook& hook, const KeyPress& press, QtActionGate& gate)
{
    if (!hook)
        return false;
    bool swallowed = true;
    gate.run([&] { swallowed = hook(press); });
    return swallowed;
}

KeyJudgement as_sent(const KeyEvent& event)
{
    return event.auto_repeat ? KeyJudgement::held : KeyJudgement::meant;
}

QtKeyFilter::QtKeyFilter(KeyJudge judge) : judge_(std::move(judge))
{
    clock_.start();
    QCoreApplication::instance()->installEventFilter(this);
}

void QtKeyFilter::add(QWidget& widget, KeyHook hook)
{
    entries_.push_back({&widget, std::move(hook)});
}

/// Restores the event's timestamp.
void QtKeyFilter::settle_time(QKeyEvent& event)
{
    if (!times_.lacks_time(event, clock_.elapsed()))
        return;
    // Reinstall the filter: the one installed last runs first, and so sees the next keys before they are taken away.
    // Queued, because the filters are being called now.
    QMetaObject::invokeMethod(
        this, [this] { QCoreApplication::instance()->installEventFilter(this); }, Qt::QueuedConnection);
}

KeyJudgement QtKeyFilter::judge(const QKeyEvent& event, const QWidget* station)
{
    return judge_({.down = event.type() == QEvent::KeyPress,
                   .kind = kind_of(event.key()),
                   .scan_code = event.nativeScanCode(),
                   .milliseconds = event.timestamp() != 0 ? static_cast<qint64>(event.timestamp()) : clock_.elapsed(),
                   .auto_repeat = event.isAutoRepeat(),
                   .focus = station,
                   .in_box = station != nullptr && station->window()->isModal(),
                   .typing = station != nullptr && is_edited(*station)});
}

bool QtKeyFilter::eventFilter(QObject* watched, QEvent* event)
{
    const bool press = event->type() == QEvent::KeyPress;
    const bool release = event->type() == QEvent::KeyRelease;
    if ((press || release) && qobject_cast<QWindow*>(watched) != nullptr)
        settle_time(static_cast<QKeyEvent&>(*event));
    if (release)
        judge(static_cast<QKeyEvent&>(*event), nullptr);
    if (!press && event->type() != QEvent::InputMethod)
        return false;
    // A key that a control ignores is sent to its parents, too; only the first delivery counts.
    QWidget* const station = first_station(*watched);
    if (station == nullptr)
        return false;
    return press ? filter_key(*station, static_cast<QKeyEvent&>(*event))
                 : filter_commit(*station, static_cast<QInputMethodEvent&>(*event));
}

bool QtKeyFilter::has_hook(const QWidget& focus) const
{
    return !is_menu(focus) && std::any_of(entries_.begin(), entries_.end(), [&](const Entry& entry) {
        return entry.widget == &focus || entry.widget == focus.window();
    });
}

bool QtKeyFilter::is_swallowed(const QWidget& focus, const KeyPress& press) const
{
    // A hook may move the focus; the key still belongs to the control that had it before.
    return std::any_of(entries_.begin(), entries_.end(), [&](const Entry& entry) {
        const bool asked =
            entry.widget == focus.window() || (entry.widget == &focus && press.modifier == KeyModifier::none);
        return asked && entry.hook(press);
    });
}

bool QtKeyFilter::filter_key(QWidget& focus, const QKeyEvent& event)
{
    const KeyJudgement judgement = judge(event, &focus);
    if (judgement == KeyJudgement::stray)
        return true;
    std::optional<KeyPress> press = has_hook(focus) ? to_key_press(event, is_edited(focus)) : std::nullopt;
    if (!press)
        return false;
    press->auto_repeat = judgement == KeyJudgement::held;
    if (is_swallowed(focus, *press))
        return true;
    // By default a button clicks when Space is released, and an auto-repeat may send a release each time.
    auto* button = qobject_cast<QAbstractButton*>(&focus);
    const bool clicks = press->modifier == KeyModifier::none && (press->key == Key::enter || press->character == " ");
    if (!clicks || button == nullptr)
        return false;
    if (!press->auto_repeat)
        button->click();
    return true;
}

bool QtKeyFilter::filter_commit(QWidget& focus, const QInputMethodEvent& event)
{
    if (!has_hook(focus) || single_character(event.commitString()) == 0)
        return false;
    KeyPress press;
    press.character = from_qt(event.commitString());
    press.composed = true;
    if (!is_swallowed(focus, press))
        return false;
    // The composed character was consumed, so clear the text of the input method.
    QInputMethodEvent nothing_composed;
    QCoreApplication::sendEvent(&focus, &nothing_composed);
    return true;
}

} // namespace cuedrill::platform::qt
