#include "platform/qt/qt_button.h"

#include "common/text.h"
#include "platform/qt/qt_look.h"
#include "platform/qt/qt_text.h"

#include <QApplication>
#include <QMouseEvent>
#include <QStyle>

namespace cuedrill::platform::qt {

namespace {

// Beside the caption, both sides together.
constexpr int padding = 6;

std::optional<MouseButton> from_qt(Qt::MouseButton button)
{
    switch (button) {
    case Qt::LeftButton:
        return MouseButton::left;
    case Qt::RightButton:
        return MouseButton::right;
    case Qt::MiddleButton:
        return MouseButton::middle;
    default:
        return std::nullopt;
    }
}

/// Presses that follow each other faster belong to one gesture, in milliseconds.
quint64 several_clicks_ms()
{
    return static_cast<quint64>(QApplication::doubleClickInterval());
}

} // namespace

int PressButton::needed_width() const
{
    const int frame = style()->pixelMetric(QStyle::PM_DefaultFrameWidth, nullptr, this);
    return fontMetrics().size(Qt::TextShowMnemonic, text()).width() + padding + 2 * frame;
}

void PressButton::ask_for_width(int width)
{
    m_asked_width = width;
    updateGeometry();
}

QSize PressButton::sizeHint() const
{
    const QSize hint = QPushButton::sizeHint();
    return {m_asked_width.value_or(hint.width()), hint.height()};
}

QSize PressButton::minimumSizeHint() const
{
    // In a window that is too narrow all buttons of a row become narrower, instead of covering each other.
    const QSize hint = QPushButton::minimumSizeHint();
    return {m_asked_width ? padding : hint.width(), hint.height()};
}

void PressButton::mousePressEvent(QMouseEvent* event)
{
    if (m_last_of_several && event->timestamp() - *m_last_of_several < several_clicks_ms()) {
        m_last_of_several = event->timestamp();
        return;
    }
    m_last_of_several.reset();
    const Qt::MouseButton button = event->button();
    mouse_down(button);
    QPushButton::mousePressEvent(event);
}

void PressButton::mouseReleaseEvent(QMouseEvent* event)
{
    const Qt::MouseButton button = event->button();
    QPushButton::mouseReleaseEvent(event);
    mouse_up(button);
}

void PressButton::mouseDoubleClickEvent(QMouseEvent* event)
{
    event->accept();
    m_last_of_several = event->timestamp();
}

QtButton::QtButton(const char* name, QtActionGate& gate, Kind kind) : QtButton(name, gate, kind, *new PressButton)
{
}

QtButton::QtButton(const char* name, QtActionGate& gate, Kind kind, PressButton& button)
    : QtHelpfulControl(button, name), m_button(button), m_gate(gate), m_kind(kind)
{
    if (m_kind == Kind::toolbar) {
        m_button.setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
        m_button.setFocusPolicy(Qt::TabFocus);
    }
    m_button.mouse_down = [this](Qt::MouseButton which) { mouse_went_down(which); };
    m_button.mouse_up = [this](Qt::MouseButton which) { mouse_came_up(which); };
    QObject::connect(&m_button, &QPushButton::clicked, &m_button, [this] { clicked(); });
}

void QtButton::clicked()
{
    // A box that opens while a button of the mouse is down takes away the news that it came up; a click, which is
    // always one of the left button or of the keyboard, is then the time to tell it.
    for (const Qt::MouseButton other : {Qt::RightButton, Qt::MiddleButton}) {
        if (m_down.testFlag(other) && !QGuiApplication::mouseButtons().testFlag(other))
            mouse_came_up(other);
    }
    m_gate.run(on_click);
}

void QtButton::mouse_went_down(Qt::MouseButton button)
{
    const std::optional<MouseButton> which = from_qt(button);
    if (!which)
        return;
    m_down.setFlag(button);
    if (on_mouse_down)
        m_gate.run([this, which] { on_mouse_down(*which); });
}

void QtButton::mouse_came_up(Qt::MouseButton button)
{
    const std::optional<MouseButton> which = from_qt(button);
    if (!which)
        return;
    m_down.setFlag(button, false);
    if (on_mouse_up)
        m_gate.guard().run([this, which] { on_mouse_up(*which); });
}

void QtButton::set_caption(std::string_view text)
{
    m_caption = text;
    show_caption();
}

void QtButton::show_access_letter(bool shown)
{
    m_access_letter_shown = shown;
    show_caption();
}

void QtButton::show_caption()
{
    const QString caption = to_qt(m_caption);
    m_button.setText(m_access_letter_shown ? caption : without_access_key(caption));
    if (m_kind == Kind::toolbar) {
        // The toolkit would press the button later, and again while the key is held.
        m_button.setShortcut(QKeySequence());
        place();
    }
}

std::string QtButton::caption() const
{
    return m_caption;
}

void QtButton::set_left(common::Twips left)
{
    m_left = left;
    place();
}

void QtButton::set_width(common::Twips width)
{
    m_width = width;
    place();
}

common::Twips QtButton::width() const
{
    return m_width.value_or(to_twips(m_button.needed_width()));
}

void QtButton::set_tool_tip(std::string_view text)
{
    m_button.setToolTip(plain_tool_tip(to_qt(text)));
    m_button.setAccessibleDescription(to_qt(common::trim_blanks(text)));
}

void QtButton::set_focus()
{
    m_button.setFocus(Qt::OtherFocusReason);
}

bool QtButton::has_focus() const
{
    return holds_focus();
}

void QtButton::place()
{
    if (m_kind == Kind::toolbar) {
        m_button.ask_for_width(to_pixels(width()));
        return;
    }
    // Both edges are rounded by themselves, so that equal gaps in twips stay equal to the eye.
    const int left = to_pixels(m_left);
    const int right = to_pixels(m_left + width());
    const QWidget* container = m_button.parentWidget();
    const int height = container != nullptr ? container->height() : m_button.sizeHint().height();
    m_button.setGeometry(left, 0, right - left, height);
}

} // namespace cuedrill::platform::qt
