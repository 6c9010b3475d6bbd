#pragma once

#include "platform/qt/qt_guard.h"

#include <QEvent>
#include <QObject>
#include <QPointer>
#include <QWidget>
#include <functional>

class QKeyEvent;
class QMouseEvent;

namespace cuedrill::platform::qt {

/// Has the QtContextHelp of the window in which `widget` stands call `ask` when the user asks what `widget` is for, and
/// makes the pointer over it an upright arrow.
void offer_help(QWidget& widget, std::function<void()> ask);

/// Gives the help that the widgets of one window offer. The user asks for it with Shift and a click of the left button
/// on the widget, which may be disabled, or with F1 while it has the focus; the widget and the focus notice nothing.
class QtContextHelp : public QObject {
public:
    /// @param general is called where the control with the focus offers no help.
    QtContextHelp(QWidget& window, QtActionGate& gate, std::function<void()> general);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    [[nodiscard]] QWidget* aimed_at(QObject& watched, const QMouseEvent& event) const;
    [[nodiscard]] QWidget* helpful(QWidget* widget) const;
    void ask(const QWidget& widget);
    bool filter_mouse(QObject& watched, const QMouseEvent& event);
    bool filter_release(QObject& watched, const QMouseEvent& event);
    bool filter_key(const QObject& watched, const QKeyEvent& event);
    void note_pointer(QObject& watched, QEvent::Type type);
    void show_pointer();

    QWidget& window_;
    QtActionGate& gate_;
    std::function<void()> general_;
    bool pressed_ = false;        ///< the left button went down for help and is not up yet
    QPointer<QWidget> asked_{};   ///< the widget on which it went down; none for the second press of a double click
    QPointer<QWidget> pointed_{}; ///< the widget with help over which the pointer stands
};

} // namespace cuedrill::platform::qt
