#pragma once

#include "platform/settings_store.h"

#include <QList>
#include <QRect>
#include <QSize>

class QWidget;

namespace cuedrill::platform::qt {

/// Keeps the place and the size of a window, and whether it is maximised, from one run of the program to the next. A
/// store that cannot be read or written, or that holds something else, stops nothing.
class QtWindowState {
public:
    /// @param store where they are kept, in the section "window"; null when they are not to be kept.
    explicit QtWindowState(SettingsStore* store = nullptr) : store_(store) {}

    /// Gives `window`, which must not have been shown yet, what was kept, so that all of it is on a screen that there
    /// is now.
    /// @return false when nothing usable was kept; the window is as it was then.
    bool restore(QWidget& window) const;

    /// Keeps what `window` is like now. Of one that fills the screen, or is minimised, that is the place which it has
    /// otherwise.
    void save(const QWidget& window) const;

private:
    SettingsStore* store_;
};

/// Room for the frame, which the system draws around a window and tells only afterwards; both sides together, in
/// pixels.
inline constexpr QSize frame_room{16, 48};

/// `place` itself when it lies on `screens` and is neither smaller than `smallest` nor larger than a screen; otherwise
/// the nearest such place on the screen that has most of it, or on the first one. On a screen too small even for
/// `smallest` it is as large as the screen.
QRect brought_onto_screen(const QRect& place, QSize smallest, const QList<QRect>& screens);

} // namespace cuedrill::platform::qt
