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

/// The letter at the place of the key on a Latin keyboard; 0 for a key that is no letter there. X11 and Wayland number
/// the keys by their place: the three rows of letters begin at 24, 38 and 52.
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

/// The only code point of `text`, when it can be seen or is a blank; 0 otherwise.
char32_t single_character(const QString& text)
{
    const QList<uint> code_points = text.toUcs4();
    if (code_points.size() != 1 || !QChar::isPrint(code_points.front()))
        return 0;
    return code_points.front();
}

/// Nothing for combinations that are none of the program's.
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

/// The text of the event; with Ctrl that may be a control character, so then the character is that of the key.
QString text_of(const QKeyEvent& event, KeyModifier modifier)
{
    if (modifier == KeyModifier::none)
        return event.text();
    const bool has_character = event.key() > Qt::Key_Space && event.key() < Qt::Key_Escape;
    return has_character ? QString::fromUcs4(std::array{static_cast<char32_t>(event.key())}.data(), 1).toLower()
                         : QString();
}

bool is_menu(const QWidget& widget)
{
    return qobject_cast<const QMenuBar*>(&widget) != nullptr || qobject_cast<const QMenu*>(&widget) != nullptr;
}

/// The widget to which a key in whichever window goes first, if that is the one; from there it may wander to others.
const QWidget* first_station(const QObject& watched)
{
    const auto* const widget = qobject_cast<const QWidget*>(&watched);
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
    press.auto_repeat = event.isAutoRepeat();
    switch (event.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (typing && event.modifiers().testFlag(Qt::ShiftModifier))
            return std::nullopt;
        press.key = Key::enter;
        return press;
    case Qt::Key_Escape:
        if (press.modifier != KeyModifier::none)
            return std::nullopt;
        press.key = Key::escape;
        return press;
    default:
        break;
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

QtKeyFilter::QtKeyFilter(QWidget& window, KeyHook hook) : window_(window), hook_(std::move(hook))
{
    clock_.start();
    QCoreApplication::instance()->installEventFilter(this);
}

void QtKeyFilter::add_control(QWidget& control, KeyHook hook)
{
    controls_.push_back({&control, std::move(hook)});
}

/// Gives the event the time at which the key went down or came up.
void QtKeyFilter::settle_time(QKeyEvent& event)
{
    if (!times_.lacks_time(event, clock_.elapsed()))
        return;
    // The filter that was installed last comes first, and so sees the next keys in time. Later, because the filters are
    // being called just now.
    QMetaObject::invokeMethod(
        this, [this] { QCoreApplication::instance()->installEventFilter(this); }, Qt::QueuedConnection);
}

bool QtKeyFilter::eventFilter(QObject* watched, QEvent* event)
{
    const bool is_window = qobject_cast<QWindow*>(watched) != nullptr;
    if (is_window && (event->type() == QEvent::KeyPress || event->type() == QEvent::KeyRelease))
        settle_time(static_cast<QKeyEvent&>(*event));
    if (event->type() == QEvent::KeyRelease)
        memory_.note_release(static_cast<QKeyEvent&>(*event));
    const bool is_key = event->type() == QEvent::KeyPress;
    if (!is_key && event->type() != QEvent::InputMethod)
        return false;
    const QWidget* const station = first_station(*watched);
    if (is_key && station != nullptr && memory_.is_stray(*station, static_cast<QKeyEvent&>(*event)))
        return true;
    // A key that a control leaves alone wanders up to its parents; the hook sees it only at its first station.
    QWidget* focus = window_.focusWidget() != nullptr ? window_.focusWidget() : &window_;
    if (watched != focus || is_menu(*focus))
        return false;
    return is_key ? filter_key(*focus, static_cast<QKeyEvent&>(*event))
                  : filter_commit(*focus, static_cast<QInputMethodEvent&>(*event));
}

bool QtKeyFilter::is_swallowed(const QWidget& focus, const KeyPress& press) const
{
    if (hook_(press))
        return true;
    if (press.modifier != KeyModifier::none)
        return false;
    // The window's hook may have moved the focus; the key still belongs to the control at which it was aimed.
    return std::any_of(controls_.begin(), controls_.end(),
                       [&](const ControlHook& entry) { return entry.control == &focus && entry.hook(press); });
}

bool QtKeyFilter::filter_key(QWidget& focus, const QKeyEvent& event)
{
    std::optional<KeyPress> press = to_key_press(event, focus.testAttribute(Qt::WA_InputMethodEnabled));
    if (!press)
        return false;
    press->auto_repeat = memory_.is_repeated(event);
    if (is_swallowed(focus, *press))
        return true;
    // A button by itself acts when Space is released, and would so take each release of a held key for the last one.
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
    if (single_character(event.commitString()) == 0)
        return false;
    KeyPress press;
    press.character = from_qt(event.commitString());
    press.composed = true;
    if (!is_swallowed(focus, press))
        return false;
    // The text that was being composed is gone with the character that it came to.
    QInputMethodEvent nothing_composed;
    QCoreApplication::sendEvent(&focus, &nothing_composed);
    return true;
}

} // namespace cuedrill::platform::qt
