#include "platform/qt/qt_window_state.h"

#include "common/errors.h"

#include <QByteArray>
#include <QGuiApplication>
#include <QRegion>
#include <QScreen>
#include <QWidget>
#include <algorithm>

namespace cuedrill::platform::qt {

namespace {

constexpr std::string_view application = "CUEDRILL";
constexpr std::string_view section = "window";
constexpr std::string_view place_key = "geometry";
/// The position in it means nothing.
constexpr std::string_view size_key = "geometry_without_position";
constexpr std::string_view zoom_key = "zoom";

int shared_area(const QRect& a, const QRect& b)
{
    const QRect shared = a.intersected(b);
    return shared.isEmpty() ? 0 : shared.width() * shared.height();
}

} // namespace

QtWindowState::QtWindowState(SettingsStore* store) : QtWindowState(store, QGuiApplication::platformName())
{
}

QtWindowState::QtWindowState(SettingsStore* store, const QString& platform)
    : store_(store), has_positions_(!platform.startsWith(QLatin1String("wayland")))
{
}

std::optional<std::string> QtWindowState::get(std::string_view key) const
{
    if (store_ == nullptr)
        return std::nullopt;
    try {
        return store_->get(application, section, key);
    } catch (const common::Error&) {
        return std::nullopt;
    }
}

void QtWindowState::set(std::string_view key, std::string_view value) const
{
    if (store_ == nullptr)
        return;
    try {
        store_->set(application, section, key, value);
    } catch (const common::Error&) {
        // Not an error for the user: next time the window opens with its defaults.
        return;
    }
}

bool QtWindowState::restore(QWidget& window) const
{
    // The size that the window has elsewhere is better than none; a position is not made up.
    return (!has_positions_ && restore_from(size_key, window)) || restore_from(place_key, window);
}

bool QtWindowState::restore_from(std::string_view key, QWidget& window) const
{
    const QByteArray kept = QByteArray::fromBase64(QByteArray::fromStdString(get(key).value_or("")));
    // restoreGeometry reads zeros where bytes are missing, and then gives the window its smallest size.
    if (kept.size() < window.saveGeometry().size() || !window.restoreGeometry(kept))
        return false;
    // restoreGeometry is satisfied if part of the window is visible, and would restore full screen, too.
    const QRect place = window.normalGeometry();
    const Qt::WindowStates states = window.windowState() & Qt::WindowMaximized;
    QList<QRect> screens;
    for (const QScreen* screen : QGuiApplication::screens())
        screens.append(screen->availableGeometry());
    window.setWindowState(Qt::WindowNoState);
    window.setGeometry(brought_onto_screen(place, window.minimumSize(), screens));
    window.setWindowState(states);
    return true;
}

void QtWindowState::save(const QWidget& window) const
{
    set(has_positions_ ? place_key : size_key, window.saveGeometry().toBase64().toStdString());
}

std::optional<int> QtWindowState::zoom() const
{
    const std::string kept = get(zoom_key).value_or("");
    bool is_number = false;
    const int percent = QByteArray::fromStdString(kept).toInt(&is_number);
    if (!is_number || percent < smallest_zoom || percent > largest_zoom)
        return std::nullopt;
    return percent;
}

void QtWindowState::save_zoom(int percent) const
{
    set(zoom_key, std::to_string(percent));
}

QRect brought_onto_screen(const QRect& place, QSize smallest, const QList<QRect>& screens)
{
    if (screens.isEmpty())
        return place;
    const QRect screen = *std::max_element(screens.begin(), screens.end(), [&](const QRect& a, const QRect& b) {
        return shared_area(a, place) < shared_area(b, place);
    });
    QRegion outside(place);
    for (const QRect& other : screens)
        outside -= other;
    const QSize size = place.size().expandedTo(smallest);
    if (outside.isEmpty() && size == place.size() && size.boundedTo(screen.size()) == size)
        return place;

    // The sides and the bottom of the frame have the same width; the rest of the height is the title bar.
    const int side = frame_room.width() / 2;
    const QRect room = screen.adjusted(side, frame_room.height() - side, -side, -side);
    QRect moved(place.topLeft(), size.boundedTo(room.size()));
    moved.moveLeft(std::clamp(moved.left(), room.left(), room.right() + 1 - moved.width()));
    moved.moveTop(std::clamp(moved.top(), room.top(), room.bottom() + 1 - moved.height()));
    return moved;
}

} // namespace cuedrill::platform::qt
