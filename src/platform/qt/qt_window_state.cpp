#include "platform/qt/qt_window_state.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QRegion>
#include <QSaveFile>
#include <QScreen>
#include <QWidget>
#include <algorithm>
#include <charconv>
#include <string_view>

namespace cuedrill::platform::qt {

namespace {

// What is longer was not written here.
constexpr qint64 longest_file = 1024;
// Far beyond all screens, and far from where a sum of two numbers overflows.
constexpr int farthest = 100000;

/// The number that stands behind `key` and "=" on a line of its own.
std::optional<int> number_of(std::string_view text, std::string_view key)
{
    while (!text.empty()) {
        const std::string_view line = text.substr(0, text.find('\n'));
        text.remove_prefix(std::min(line.size() + 1, text.size()));
        if (line.size() <= key.size() || !line.starts_with(key) || line[key.size()] != '=')
            continue;
        const std::string_view digits = line.substr(key.size() + 1);
        int number = 0;
        const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
        const bool whole = error == std::errc() && end == digits.data() + digits.size();
        return whole && number >= -farthest && number <= farthest ? std::optional(number) : std::nullopt;
    }
    return std::nullopt;
}

int shared_area(const QRect& a, const QRect& b)
{
    const QRect shared = a.intersected(b);
    return shared.isEmpty() ? 0 : shared.width() * shared.height();
}

} // namespace

bool QtWindowState::restore(QWidget& window) const
{
    const std::optional<State> state = read();
    if (!state)
        return false;
    QList<QRect> screens;
    for (const QScreen* screen : QGuiApplication::screens())
        screens.append(screen->availableGeometry());
    window.setGeometry(brought_onto_screen(state->place, window.minimumSize(), screens));
    if (state->maximized)
        window.setWindowState(window.windowState() | Qt::WindowMaximized);
    return true;
}

void QtWindowState::save(const QWidget& window) const
{
    const QRect place = window.normalGeometry();
    if (path_.empty() || place.isEmpty())
        return;
    const std::string text = "[window]\nleft=" + std::to_string(place.left()) + "\ntop=" + std::to_string(place.top()) +
                             "\nwidth=" + std::to_string(place.width()) + "\nheight=" + std::to_string(place.height()) +
                             "\nmaximized=" + (window.isMaximized() ? "1" : "0") + "\n";
    const QString path = QString::fromStdString(path_);
    QDir().mkpath(QFileInfo(path).path());
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly) && file.write(text.data(), static_cast<qint64>(text.size())) > 0)
        file.commit();
}

std::optional<QtWindowState::State> QtWindowState::read() const
{
    const QString path = QString::fromStdString(path_);
    // Something else than a file could be read without end, or would be waited for.
    const QFileInfo info(path);
    if (path_.empty() || !info.isFile() || info.size() > longest_file)
        return std::nullopt;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    return parse(file.read(longest_file).toStdString());
}

std::optional<QtWindowState::State> QtWindowState::parse(const std::string& text)
{
    const auto left = number_of(text, "left");
    const auto top = number_of(text, "top");
    const auto width = number_of(text, "width");
    const auto height = number_of(text, "height");
    const auto maximized = number_of(text, "maximized");
    if (!left || !top || !width || !height || !maximized || *width <= 0 || *height <= 0)
        return std::nullopt;
    return State{QRect(*left, *top, *width, *height), *maximized == 1};
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

    // The frame's sides are equally wide, and its bottom is as wide as they are: the rest is the title.
    const int side = frame_room.width() / 2;
    const QRect room = screen.adjusted(side, frame_room.height() - side, -side, -side);
    QRect moved(place.topLeft(), size.boundedTo(room.size()));
    moved.moveLeft(std::clamp(moved.left(), room.left(), room.right() + 1 - moved.width()));
    moved.moveTop(std::clamp(moved.top(), room.top(), room.bottom() + 1 - moved.height()));
    return moved;
}

} // namespace cuedrill::platform::qt
