#pragma once

#include "platform/qt/qt_window_state.h"

#include <QObject>

class QMainWindow;

namespace cuedrill::platform::qt {

class HintEdit;
class LineView;
class QtTextBox;

/// How much larger than at the window's first size type is in a window of this size: as far as the window has grown in
/// both directions, never less than 1.
double growth(QSize window);

/// Keeps the type of question, answer, hint and list at the size that fits the window and that the user has chosen.
/// Ctrl with plus, minus and the mouse wheel changes the zoom in steps, Ctrl+0 resets it. It is kept with the place of
/// the window: stored when the window is hidden, on `keep`, and at the end.
class QtTypeSize : public QObject {
public:
    struct Texts {
        QtTextBox& question;
        QtTextBox& answer;
        HintEdit& hint;
        LineView& list;
    };

    /// @param window contains the texts, and must outlive this object.
    QtTypeSize(QMainWindow& window, const Texts& texts, QtWindowState state);
    ~QtTypeSize() override;

    /// Stores the zoom if it has changed.
    void keep();

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void add_keys();
    void set_zoom(int percent);
    void step(int steps);
    void turn(int angle);
    void apply();

    QMainWindow& window_;
    Texts texts_;
    QtWindowState state_;
    int zoom_; ///< in percent
    int kept_zoom_;
    int turned_ = 0; ///< angle that the wheel was turned since the last step, in eighths of a degree
};

} // namespace cuedrill::platform::qt
