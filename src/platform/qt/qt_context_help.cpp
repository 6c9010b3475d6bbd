#include "platform/qt/qt_context_help.h"

#include <QApplication>
#include <QMouseEvent>
#include <QVariant>
#include <QWindow>
#include <utility>

namespace cuedrill::platform::qt {

namespace {

using Ask = std::function<void()>;

constexpr auto help = "cuedrill_help";

bool offers_help(const QWidget& widget)
{
    return widget.property(help).isValid();
}

} // namespace

void offer_help(QWidget& widget, Ask ask)
{
    widget.setProperty(help, QVariant::fromValue(std::move(ask)));
    widget.setCursor(Qt::UpArrowCursor);
}

QtContextHelp::QtContextHelp(QWidget& window, QtActionGate& gate, std::function<void()> general)
    : window_(window), gate_(gate), general_(std::move(general))
{
    // Only a filter on the application sees events of disabled widgets.
    QCoreApplication::instance()->installEventFilter(this);
}

bool QtContextHelp::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseButtonRelease:
        return filter_mouse(*watched, static_cast<QMouseEvent&>(*event));
    case QEvent::KeyPress:
        return filter_key(*watched, static_cast<QKeyEvent&>(*event));
    case QEvent::Enter:
    case QEvent::Leave:
    case QEvent::EnabledChange:
        note_pointer(*watched, event->type());
        return false;
    default:
        return false;
    }
}

/// The widget that the event is meant for. Real mouse events reach the window's handle first and must be intercepted
/// there, because the toolkit moves the focus before a widget gets them. Synthetic events go to the widget directly.
QWidget* QtContextHelp::aimed_at(QObject& watched, const QMouseEvent& event) const
{
    if (&watched == window_.windowHandle())
        return window_.childAt(event.position().toPoint());
    return qobject_cast<QWidget*>(&watched);
}

/// `widget` or its nearest ancestor that offers help; null if there is none.
QWidget* QtContextHelp::helpful(QWidget* widget) const
{
    if (widget == nullptr || widget->window() != &window_)
        return nullptr;
    while (widget != nullptr && !offers_help(*widget))
        widget = widget->parentWidget();
    return widget;
}

void QtContextHelp::ask(const QWidget& widget)
{
    gate_.run(widget.property(help).value<Ask>());
}

bool QtContextHelp::filter_mouse(QObject& watched, const QMouseEvent& event)
{
    if (event.button() != Qt::LeftButton)
        return false;
    if (event.type() == QEvent::MouseButtonRelease)
        return filter_release(watched, event);
    // A click outside an open menu only closes the menu.
    const bool asks = event.modifiers().testFlag(Qt::ShiftModifier) && QApplication::activePopupWidget() == nullptr;
    QWidget* const widget = asks ? helpful(aimed_at(watched, event)) : nullptr;
    pressed_ = widget != nullptr;
    // At the window's handle, the second press of a double click arrives as a press and then as a double click.
    asked_ = event.type() == QEvent::MouseButtonPress ? widget : nullptr;
    return pressed_;
}

/// Asks on release, because a box that opens while the button is down would swallow the release event.
bool QtContextHelp::filter_release(QObject& watched, const QMouseEvent& event)
{
    if (!std::exchange(pressed_, false))
        return false;
    const QPointer<QWidget> asked = std::exchange(asked_, nullptr);
    if (asked != nullptr && helpful(aimed_at(watched, event)) == asked)
        ask(*asked);
    return true;
}

bool QtContextHelp::filter_key(const QObject& watched, const QKeyEvent& event)
{
    const QWidget* const focus = window_.focusWidget() != nullptr ? window_.focusWidget() : &window_;
    if (event.key() != Qt::Key_F1 || event.modifiers() != Qt::NoModifier || &watched != focus)
        return false;
    if (event.isAutoRepeat())
        return true;
    if (const QWidget* const widget = helpful(window_.focusWidget()))
        ask(*widget);
    else
        gate_.run(general_);
    return true;
}

/// Over a disabled widget the toolkit shows the pointer of its parent. It chooses the pointer just after it sends
/// Enter, and just before it reports that a widget was enabled or disabled.
void QtContextHelp::note_pointer(QObject& watched, QEvent::Type type)
{
    auto* const widget = qobject_cast<QWidget*>(&watched);
    if (widget == nullptr || widget->window() != &window_ || !offers_help(*widget))
        return;
    if (type == QEvent::Enter)
        pointed_ = widget;
    else if (type == QEvent::Leave)
        pointed_.clear();
    if (pointed_ != nullptr)
        QMetaObject::invokeMethod(
            this, [this] { show_pointer(); }, Qt::QueuedConnection);
}

void QtContextHelp::show_pointer()
{
    if (pointed_ != nullptr && window_.windowHandle() != nullptr)
        window_.windowHandle()->setCursor(Qt::UpArrowCursor);
}

} // namespace cuedrill::platform::qt
