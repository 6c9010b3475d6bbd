#pragma once

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QTimer>
#include <QWidget>
#include <functional>
#include <gtest/gtest.h>
#include <stdexcept>
#include <string>

namespace cuedrill::platform::qt {

/// A timestamp of the system clock in milliseconds, one second after the previous one.
inline quint64 next_moment()
{
    static quint64 moment = 1'000'000;
    return moment += 1000;
}

/// Sends a key press as the toolkit delivers it to the focus widget. Returns whether it was accepted.
inline bool press_key(QWidget& widget, int key, const QString& text = {}, bool auto_repeat = false,
                      Qt::KeyboardModifiers modifiers = Qt::NoModifier, quint32 scan_code = 0)
{
    QKeyEvent event(QEvent::KeyPress, key, modifiers, scan_code, 0, 0, text, auto_repeat);
    event.setTimestamp(next_moment());
    QCoreApplication::sendEvent(&widget, &event);
    return event.isAccepted();
}

inline void release_key(QWidget& widget, int key, const QString& text = {}, bool auto_repeat = false)
{
    QKeyEvent event(QEvent::KeyRelease, key, Qt::NoModifier, text, auto_repeat);
    event.setTimestamp(next_moment());
    QCoreApplication::sendEvent(&widget, &event);
}

inline void send_mouse_at(QWidget& widget, QEvent::Type type, Qt::MouseButton button, QPointF point)
{
    const Qt::MouseButtons held = type == QEvent::MouseButtonRelease ? Qt::MouseButtons() : Qt::MouseButtons(button);
    QMouseEvent event(type, point, widget.mapToGlobal(point), type == QEvent::MouseMove ? Qt::NoButton : button, held,
                      Qt::NoModifier);
    QCoreApplication::sendEvent(&widget, &event);
}

inline void send_mouse(QWidget& widget, QEvent::Type type, Qt::MouseButton button)
{
    send_mouse_at(widget, type, button, QRectF(widget.rect()).center());
}

inline void click_with(QWidget& widget, Qt::MouseButton button)
{
    send_mouse(widget, QEvent::MouseButtonPress, button);
    send_mouse(widget, QEvent::MouseButtonRelease, button);
}

/// The cell of the character at a document position, in viewport coordinates.
inline QRect cell_of(const QPlainTextEdit& edit, int position)
{
    QTextCursor cursor(edit.document());
    cursor.setPosition(position);
    const QRect left = edit.cursorRect(cursor);
    cursor.setPosition(position + 1);
    return {left.left(), left.top(), edit.cursorRect(cursor).left() - left.left(), left.height()};
}

/// Calls `inspect` with the next modal box that opens. `inspect` must close it.
template <typename Box>
void when_box_opens(std::function<void(Box&)> inspect)
{
    QTimer::singleShot(0, [inspect = std::move(inspect)] {
        auto* box = qobject_cast<Box*>(QApplication::activeModalWidget());
        ASSERT_NE(box, nullptr) << "no box of that kind is open";
        inspect(*box);
    });
}

/// A guard that records errors. A clean-up lets later tests run an event loop even if a test has ended the program.
class QtTest : public testing::Test {
protected:
    /// Runs an event loop once; this clears the toolkit's flag that makes all loops return.
    static void forget_end()
    {
        QTimer::singleShot(0, [] { QCoreApplication::exit(0); });
        QCoreApplication::exec();
    }

    void TearDown() override { forget_end(); }
};

} // namespace cuedrill::platform::qt
