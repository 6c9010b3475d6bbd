#pragma once

#include "platform/settings_store.h"

#include <QList>
#include <QRect>
#include <QSize>
#include <QString>
#include <optional>
#include <string>
#include <string_view>

class QWidget;

namespace cuedrill::platform::qt {

/// Zoom of the user in percent.
inline constexpr int smallest_zoom = 60;
inline constexpr int usual_zoom = 100;
inline constexpr int largest_zoom = 400;

/// Stores position and size of a window, and whether it is maximised, between runs of the program. Errors of the store
/// and unusable values are ignored.
///
/// On Wayland a program neither learns nor chooses the position of its window. There, only the size and whether it is
/// maximised are stored, apart from what other platforms store, so that a session on Wayland leaves a position alone.
class QtWindowState {
public:
    /// @param store where to store them and the zoom, in the section "window"; null if they are not stored.
    explicit QtWindowState(SettingsStore* store = nullptr);
    /// @param platform name of the toolkit's platform.
    QtWindowState(SettingsStore* store, const QString& platform);

    /// Restores the stored state of `window`, which must not have been shown yet, and moves it so that all of it is on
    /// a screen.
    /// @return false if nothing usable was stored; the window is unchanged then.
    bool restore(QWidget& window) const;

    /// Stores the state of `window`. For a window that is full screen or minimised, that is its normal position and
    /// size.
    void save(const QWidget& window) const;

    /// The stored zoom of the type in percent; std::nullopt if none between `smallest_zoom` and `largest_zoom` is
    /// stored.
    [[nodiscard]] std::optional<int> zoom() const;
    void save_zoom(int percent) const;

private:
    bool restore_from(std::string_view key, QWidget& window) const;
    [[nodiscard]] std::optional<std::string> get(std::string_view key) const;
    void set(std::string_view key, std::string_view value) const;

    SettingsStore* store_;
    bool has_positions_; ///< of windows, on this platform
};

/// Space for the window frame, which the system draws and reports only later; both sides together, in pixels.
inline constexpr QSize frame_room{16, 42};

/// `place` itself if it is on `screens` and neither smaller than `smallest` nor larger than a screen. Otherwise the
/// nearest such place on the screen that contains most of it, or on the first screen. On a screen smaller than
/// `smallest`, the size of the screen.
QRect brought_onto_screen(const QRect& place, QSize smallest, const QList<QRect>& screens);

} // namespace cuedrill::platform::qt
