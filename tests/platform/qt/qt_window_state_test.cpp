#include "fakes/temp_folder.h"
#include "platform/qt/qt_settings_store.h"
#include "platform/qt/qt_test_tools.h"
#include "platform/qt/qt_window.h"
#include "platform/qt/qt_window_state.h"

#include <QScreen>
#include <filesystem>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <string_view>
#include <sys/stat.h>

namespace cuedrill::platform::qt {

namespace {

const QRect left_screen(0, 0, 1280, 1024);
const QRect right_screen(1280, 0, 1920, 1080);
constexpr QSize smallest{640, 480};

class BroughtOntoScreenTest : public testing::Test {
protected:
    const QList<QRect> screens{left_screen, right_screen};
};

TEST_F(BroughtOntoScreenTest, a_place_on_a_screen_stays)
{
    for (const QRect& place :
         {QRect(100, 80, 1000, 720), QRect(1400, 300, 700, 500), left_screen, right_screen, QRect(1000, 100, 800, 600)})
        EXPECT_EQ(brought_onto_screen(place, smallest, screens), place) << place.left();
}

TEST_F(BroughtOntoScreenTest, a_place_on_no_screen_comes_onto_the_first_one)
{
    const QRect moved = brought_onto_screen(QRect(9000, -9000, 1000, 720), smallest, screens);
    EXPECT_EQ(moved.size(), QSize(1000, 720));
    EXPECT_TRUE(left_screen.contains(moved));
}

TEST_F(BroughtOntoScreenTest, a_place_beyond_the_edge_comes_onto_the_nearest_screen_with_its_title)
{
    const QRect moved = brought_onto_screen(QRect(2900, -30, 1000, 720), smallest, screens);
    EXPECT_EQ(moved.size(), QSize(1000, 720));
    EXPECT_TRUE(right_screen.contains(moved));
    EXPECT_GE(moved.top(), 30);
}

TEST_F(BroughtOntoScreenTest, a_place_half_on_a_gap_between_screens_is_moved)
{
    // The left screen is lower than the right one; below it nothing is visible.
    const QRect moved = brought_onto_screen(QRect(900, 400, 700, 670), smallest, screens);
    EXPECT_TRUE(left_screen.contains(moved));
}

TEST_F(BroughtOntoScreenTest, a_size_beyond_the_screen_shrinks_and_leaves_room_for_the_frame)
{
    const QRect moved = brought_onto_screen(QRect(0, 0, 5000, 4000), smallest, {left_screen});
    EXPECT_TRUE(left_screen.contains(moved));
    EXPECT_EQ(moved.size(), left_screen.size() - frame_room);
}

TEST_F(BroughtOntoScreenTest, a_size_below_the_smallest_grows)
{
    const QRect moved = brought_onto_screen(QRect(1200, 1000, 20, 10), smallest, {left_screen});
    EXPECT_EQ(moved.size(), smallest);
    EXPECT_TRUE(left_screen.contains(moved));
}

TEST_F(BroughtOntoScreenTest, a_screen_below_the_smallest_size_is_not_left)
{
    const QRect tiny(0, 0, 400, 300);
    EXPECT_TRUE(tiny.contains(brought_onto_screen(QRect(50, 50, 640, 480), smallest, {tiny})));
}

TEST_F(BroughtOntoScreenTest, without_any_screen_the_place_stays)
{
    EXPECT_EQ(brought_onto_screen(QRect(1, 2, 3, 4), smallest, {}), QRect(1, 2, 3, 4));
}

/// Windows created one after another, like consecutive runs of the program. The test screen is 800 x 800.
class QtWindowStateTest : public QtTest {
protected:
    std::unique_ptr<QtWindow> start()
    {
        auto window = std::make_unique<QtWindow>("Form1", QSize(400, 300), guard, QtWindowState(&store));
        window->widget().setMinimumSize(200, 150);
        window->show();
        return window;
    }

    QRect place_at_next_start() { return start()->widget().geometry(); }

    void write_state(std::string_view bytes) const
    {
        std::filesystem::create_directories(std::filesystem::path(path).parent_path());
        folder.write("CUEDRILL/window.ini", bytes);
    }

    void expect_in_the_middle()
    {
        const auto window = start();
        const QWidget& widget = window->widget();
        EXPECT_EQ(widget.size(), QSize(400, 300));
        const QPoint off = widget.geometry().center() - widget.screen()->availableGeometry().center();
        EXPECT_LE(off.manhattanLength(), 2);
        EXPECT_FALSE(widget.isMaximized());
    }

    /// Expects that all of the window is visible and large enough to be used.
    static void expect_on_screen(const QRect& shown)
    {
        const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
        EXPECT_TRUE(screen.contains(shown)) << shown.left() << ", " << shown.top();
        EXPECT_GE(shown.width(), 200);
        EXPECT_GE(shown.height(), 150);
    }

    QtGuard guard;
    fakes::TempFolder folder;
    QtSettingsStore store{folder.path().string()};
    const std::string path = folder.file("CUEDRILL/window.ini");
    const QRect chosen{37, 61, 512, 333};
};

TEST_F(QtWindowStateTest, a_first_window_appears_in_the_middle)
{
    expect_in_the_middle();
}

TEST_F(QtWindowStateTest, place_and_size_come_back_after_the_window_has_gone)
{
    start()->widget().setGeometry(chosen);
    EXPECT_EQ(place_at_next_start(), chosen);
    // A window that is not moved stays where it is, however often the program starts.
    EXPECT_EQ(place_at_next_start(), chosen);
}

TEST_F(QtWindowStateTest, they_are_kept_when_the_window_is_hidden)
{
    const auto window = start();
    window->widget().setGeometry(chosen);
    window->hide();
    EXPECT_EQ(place_at_next_start(), chosen);
}

TEST_F(QtWindowStateTest, they_are_kept_at_the_end_of_the_session_before_anything_else)
{
    const auto window = start();
    bool kept = false;
    window->on_session_end = [&] { kept = std::filesystem::exists(path); };
    window->widget().setGeometry(chosen);
    window->end_session();
    EXPECT_TRUE(kept);
    EXPECT_EQ(place_at_next_start(), chosen);
}

TEST_F(QtWindowStateTest, a_window_that_is_shown_again_does_not_jump)
{
    const auto window = start();
    window->widget().setGeometry(chosen);
    window->hide();
    const std::string bytes = folder.read("CUEDRILL/window.ini");
    window->show();
    window->widget().setGeometry(1, 2, 300, 200);
    window->hide();
    window->widget().setGeometry(chosen);
    write_state(bytes);
    window->show();
    EXPECT_EQ(window->widget().geometry(), chosen);
}

TEST_F(QtWindowStateTest, a_window_that_was_never_shown_keeps_nothing)
{
    {
        const QtWindow window("Form1", QSize(400, 300), guard, QtWindowState(&store));
    }
    EXPECT_FALSE(std::filesystem::exists(path));
}

TEST_F(QtWindowStateTest, a_maximised_window_comes_back_maximised_and_knows_its_other_place)
{
    {
        const auto window = start();
        window->widget().setGeometry(chosen);
        window->widget().setWindowState(Qt::WindowMaximized);
    }
    for (int run = 0; run < 2; ++run) {
        const auto window = start();
        EXPECT_TRUE(window->widget().isMaximized());
        EXPECT_EQ(window->widget().normalGeometry(), chosen);
    }
    const auto window = start();
    window->widget().showNormal();
    EXPECT_EQ(window->widget().geometry(), chosen);
}

TEST_F(QtWindowStateTest, a_maximised_window_that_is_shown_again_stays_maximised)
{
    const auto window = start();
    window->widget().setGeometry(chosen);
    window->widget().setWindowState(Qt::WindowMaximized);
    window->hide();
    window->show();
    EXPECT_TRUE(window->widget().isMaximized());
    EXPECT_EQ(window->widget().normalGeometry(), chosen);
}

TEST_F(QtWindowStateTest, a_minimised_or_full_window_comes_back_as_it_is_otherwise)
{
    for (const Qt::WindowState state : {Qt::WindowMinimized, Qt::WindowFullScreen}) {
        {
            const auto window = start();
            window->widget().setGeometry(chosen);
            window->widget().setWindowState(state);
        }
        const auto window = start();
        EXPECT_EQ(window->widget().windowState(), Qt::WindowNoState);
        EXPECT_EQ(window->widget().geometry(), chosen);
    }
}

TEST_F(QtWindowStateTest, a_minimised_window_that_was_maximised_comes_back_maximised)
{
    {
        const auto window = start();
        window->widget().setWindowState(Qt::WindowMaximized | Qt::WindowMinimized);
    }
    EXPECT_EQ(start()->widget().windowState(), Qt::WindowMaximized);
}

TEST_F(QtWindowStateTest, a_file_of_something_else_is_ignored)
{
    for (const std::string_view bytes :
         {std::string_view(), std::string_view("\0\xFF\n=", 4), std::string_view("nothing that is known\n"),
          std::string_view("[General]\ngeometry=\n"), std::string_view("[General]\ngeometry=a, list\n"),
          std::string_view("[window]\nleft=37\ntop=61\nwidth=512\nheight=333\nmaximized=0\n")}) {
        write_state(bytes);
        expect_in_the_middle();
    }
}

TEST_F(QtWindowStateTest, a_place_that_was_kept_in_part_is_ignored)
{
    start()->widget().setGeometry(chosen);
    const std::string whole = store.get("CUEDRILL", "window", "geometry").value();
    for (std::size_t length = 0; length < whole.size(); ++length) {
        store.set("CUEDRILL", "window", "geometry", whole.substr(0, length));
        expect_in_the_middle();
    }
}

TEST_F(QtWindowStateTest, a_place_off_the_screen_comes_back_onto_it)
{
    for (const QRect& place : {QRect(-9000, 9000, 512, 333), QRect(9000, -9000, 512, 333), QRect(700, 700, 512, 333),
                               QRect(0, 0, 5000, 4000), QRect(-300, 20, 5000, 200)}) {
        start()->widget().setGeometry(place);
        expect_on_screen(place_at_next_start());
    }
}

TEST_F(QtWindowStateTest, a_size_below_the_smallest_grows)
{
    {
        const auto window = start();
        window->widget().setMinimumSize(0, 0);
        window->widget().setGeometry(300, 300, 20, 10);
    }
    const QRect shown = place_at_next_start();
    EXPECT_EQ(shown.topLeft(), QPoint(300, 300));
    EXPECT_EQ(shown.size(), QSize(200, 150));
}

// Reading a pipe would block until somebody writes.
TEST_F(QtWindowStateTest, what_is_no_file_is_not_waited_for)
{
    std::filesystem::create_directories(folder.file("CUEDRILL"));
    ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
    expect_in_the_middle();
}

TEST_F(QtWindowStateTest, a_folder_in_the_place_of_the_file_stops_nothing)
{
    std::filesystem::create_directories(path);
    start()->widget().setGeometry(chosen);
    expect_in_the_middle();
    EXPECT_TRUE(std::filesystem::is_directory(path));
}

// A file in the way stops even root, who ignores missing permissions.
TEST_F(QtWindowStateTest, a_folder_that_cannot_be_made_stops_nothing)
{
    folder.write("CUEDRILL", "in the way");
    start()->widget().setGeometry(chosen);
    expect_in_the_middle();
    EXPECT_EQ(folder.read("CUEDRILL"), "in the way");
}

TEST_F(QtWindowStateTest, nothing_else_is_left_beside_the_file)
{
    start()->widget().setGeometry(chosen);
    for (const auto& entry : std::filesystem::directory_iterator(folder.file("CUEDRILL")))
        EXPECT_EQ(entry.path(), path);
}

/// The same, where each run of the program is on a platform of this name.
class WindowStateOnPlatforms : public QtWindowStateTest {
protected:
    std::unique_ptr<QtWindow> start_on(const char* platform)
    {
        auto window = std::make_unique<QtWindow>("Form1", QSize(400, 300), guard,
                                                 QtWindowState(&store, QString::fromLatin1(platform)));
        window->widget().setMinimumSize(200, 150);
        window->show();
        return window;
    }

    QRect place_on(const char* platform) { return start_on(platform)->widget().geometry(); }

    /// Wayland reports every window at the origin.
    const QRect as_wayland_tells{0, 0, 640, 480};
};

TEST_F(WindowStateOnPlatforms, wayland_leaves_the_place_on_x11_alone)
{
    start_on("xcb")->widget().setGeometry(chosen);
    start_on("wayland")->widget().setGeometry(as_wayland_tells);
    EXPECT_EQ(place_on("xcb"), chosen);
    start_on("wayland-egl")->widget().setGeometry(as_wayland_tells);
    EXPECT_EQ(place_on("xcb"), chosen);
}

TEST_F(WindowStateOnPlatforms, after_wayland_alone_the_window_is_in_the_middle_on_x11)
{
    start_on("wayland")->widget().setGeometry(as_wayland_tells);
    expect_in_the_middle();
}

TEST_F(WindowStateOnPlatforms, the_size_comes_back_on_wayland)
{
    start_on("wayland")->widget().setGeometry(as_wayland_tells);
    EXPECT_EQ(place_on("wayland").size(), as_wayland_tells.size());
    // A session on X11 in between does not change it.
    start_on("xcb")->widget().setGeometry(chosen);
    EXPECT_EQ(place_on("wayland").size(), as_wayland_tells.size());
}

TEST_F(WindowStateOnPlatforms, the_first_session_on_wayland_takes_the_size_of_x11)
{
    start_on("xcb")->widget().setGeometry(chosen);
    EXPECT_EQ(place_on("wayland").size(), chosen.size());
}

TEST_F(WindowStateOnPlatforms, a_maximised_window_comes_back_maximised_on_wayland)
{
    {
        const auto window = start_on("wayland");
        window->widget().setGeometry(as_wayland_tells);
        window->widget().setWindowState(Qt::WindowMaximized);
    }
    EXPECT_TRUE(start_on("wayland")->widget().isMaximized());
}

TEST_F(QtWindowStateTest, without_a_store_nothing_is_kept)
{
    const auto start_alone = [this] {
        auto window = std::make_unique<QtWindow>("Form1", QSize(400, 300), guard);
        window->show();
        return window;
    };
    start_alone()->widget().setGeometry(chosen);
    EXPECT_NE(start_alone()->widget().geometry(), chosen);
    EXPECT_FALSE(std::filesystem::exists(path));
}

} // namespace

} // namespace cuedrill::platform::qt
