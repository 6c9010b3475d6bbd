#include "platform/qt/qt_button.h"

#include "common/text.h"
#include "platform/qt/qt_context_help.h"
#include "platform/qt/qt_look.h"
#include "platform/qt/qt_text.h"

#include <QApplication>
#include <QMouseEvent>
#include <QStyle>

namespace cuedrill::platform::qt {

namespace {

// Left and right of the caption together, in pixels.
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

/// Time limit in milliseconds: presses in faster succession count as one gesture.
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
    asked_width_ = width;
    updateGeometry();
}

QSize PressButton::sizeHint() const
{
    const QSize hint = QPushButton::sizeHint();
    return {asked_width_.value_or(hint.width()), hint.height()};
}

QSize PressButton::minimumSizeHint() const
{
    // If the window is too narrow, all buttons of a row shrink instead of covering each other.
    const QSize hint = QPushButton::minimumSizeHint();
    return {asked_width_ ? padding : hint.width(), hint.height()};
}

void PressButton::mousePressEvent(QMouseEvent* event)
{
    if (last_of_several_ && event->timestamp() - *last_of_several_ < several_clicks_ms()) {
        last_of_several_ = event->timestamp();
        return;
    }
    last_of_several_.reset();
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
    last_of_several_ = event->timestamp();
}

QtButton::QtButton(const char* name, QtActionGate& gate, Kind kind) : QtButton(name, gate, kind, *new PressButton)
{
}

QtButton::QtButton(const char* name, QtActionGate& gate, Kind kind, PressButton& button)
    : QtControl(button, name), button_(button), gate_(gate), kind_(kind)
{
    if (kind_ == Kind::toolbar) {
        button_.setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
        button_.setFocusPolicy(Qt::TabFocus);
    }
    button_.mouse_down = [this](Qt::MouseButton which) { mouse_went_down(which); };
    button_.mouse_up = [this](Qt::MouseButton which) { mouse_came_up(which); };
    QObject::connect(&button_, &QPushButton::clicked, &button_, [this] { clicked(); });
}

void QtButton::clicked()
{
    // A box that opens while a mouse button is down swallows the release event. A click is always of the left button or
    // the keyboard, so report the missed release of the other buttons now.
    for (const Qt::MouseButton other : {Qt::RightButton, Qt::MiddleButton}) {
        if (down_.testFlag(other) && !QGuiApplication::mouseButtons().testFlag(other))
            mouse_came_up(other);
    }
    gate_.run(on_click);
}

void QtButton::mouse_went_down(Qt::MouseButton button)
{
    const std::optional<MouseButton> which = from_qt(button);
    if (!which)
        return;
    down_.setFlag(button);
    if (on_mouse_down)
        gate_.run([this, which] { on_mouse_down(*which); });
}

void QtButton::mouse_came_up(Qt::MouseButton button)
{
    const std::optional<MouseButton> which = from_qt(button);
    if (!which)
        return;
    down_.setFlag(button, false);
    if (on_mouse_up)
        gate_.guard().run([this, which] { on_mouse_up(*which); });
}

void QtButton::offer_help(std::function<void()> ask)
{
    qt::offer_help(button_, std::move(ask));
}

void QtButton::set_caption(std::string_view text)
{
    caption_ = text;
    show_caption();
}

void QtButton::show_access_letter(bool shown)
{
    access_letter_shown_ = shown;
    show_caption();
}

void QtButton::show_caption()
{
    const QString caption = to_qt(caption_);
    button_.setText(access_letter_shown_ ? caption : without_access_key(caption));
    if (kind_ == Kind::toolbar) {
        // The toolkit presses the button later than the window's keys, and again on auto-repeat; so remove its
        // shortcut.
        button_.setShortcut(QKeySequence());
        place();
    }
}

std::string QtButton::caption() const
{
    return caption_;
}

void QtButton::set_left(common::Twips left)
{
    left_ = left;
    place();
}

void QtButton::set_width(common::Twips width)
{
    width_ = width;
    place();
}

common::Twips QtButton::width() const
{
    return width_.value_or(to_twips(button_.needed_width()));
}

void QtButton::set_tool_tip(std::string_view text)
{
    button_.setToolTip(plain_tool_tip(to_qt(text)));
    button_.setAccessibleDescription(to_qt(common::trim_blanks(text)));
}

void QtButton::set_focus()
{
    button_.setFocus(Qt::OtherFocusReason);
}

bool QtButton::has_focus() const
{
    return holds_focus();
}

void QtButton::place()
{
    if (kind_ == Kind::toolbar) {
        button_.ask_for_width(to_pixels(width()));
        return;
    }
    // Each edge is rounded on its own, so that gaps equal in twips look equal.
    const int left = to_pixels(left_);
    const int right = to_pixels(left_ + width());
    const QWidget* container = button_.parentWidget();
    const int height = container != nullptr ? container->height() : button_.sizeHint().height();
    button_.setGeometry(left, 0, right - left, height);
}

} // namespace cuedrill::platform::qt
