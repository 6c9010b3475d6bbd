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

/// Registers `ask` with the QtContextHelp of the window of `widget`, to be called when the user asks for help on
/// `widget`. The pointer over it becomes an upright arrow.
void offer_help(QWidget& widget, std::function<void()> ask);

/// Context help for the widgets of one window. The user asks with Shift and a left click on the widget, even a disabled
/// one, or with F1 while it has the focus. The widget does not see these events, and the focus stays.
class QtContextHelp : public QObject {
public:
    /// @param general called if the control with the focus offers no help.
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
    bool pressed_ = false;        ///< the left button went down for help and has not come up yet
    QPointer<QWidget> asked_{};   ///< the widget on which it went down; null for the second press of a double click
    QPointer<QWidget> pointed_{}; ///< the widget with help under the pointer
};

} // namespace cuedrill::platform::qt
