#pragma once

#include "common/colour.h"
#include "common/twips.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

/// Windows without a toolkit: one interface per kind of control, with only the operations that the logic needs.
/// A hook (`on_...`) is called by the control when the user does something; it may be empty. All texts are UTF-8 and
/// shown as they are, never as markup.
namespace cuedrill::platform {

class Control {
public:
    Control() = default;
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;
    virtual ~Control() = default;

    virtual void set_visible(bool visible) = 0;
    /// What was set, also while the window itself is not shown.
    [[nodiscard]] virtual bool visible() const = 0;
    virtual void set_enabled(bool enabled) = 0;
    [[nodiscard]] virtual bool enabled() const = 0;
};

/// How a caption is placed in its label.
enum class Alignment { left, emphasised };

/// A line of text: a caption, a prompt, a figure, a status.
class Label : public Control {
public:
    virtual void set_caption(std::string_view text) = 0;
    [[nodiscard]] virtual std::string caption() const = 0;
    /// What the label tells, for assistive technology ("Status"); its name is its caption.
    virtual void set_description(std::string_view text) = 0;
    /// Nothing gives the window's own background back. On a colour the text is dark.
    virtual void set_background(std::optional<common::Colour> colour) = 0;
    virtual void set_bold(bool bold) = 0;
    virtual void set_alignment(Alignment alignment) = 0;
};

/// The number of questions of one level, as a figure with a bar.
class LevelPanel : public Control {
public:
    virtual void set_caption(std::string_view text) = 0;
    virtual void set_description(std::string_view text) = 0;
    /// Shows `count`; the bar is filled by the share `count` of `total` (empty when `total` is 0).
    virtual void set_count(std::int64_t count, std::int64_t total) = 0;
    virtual void set_background(std::optional<common::Colour> colour) = 0;
    /// Marks the panel as the one that the last verdict led to.
    virtual void set_marked(bool marked) = 0;
};

enum class MouseButton : std::uint8_t { left = 1, right = 2, middle = 4 };

class Button : public Control {
public:
    virtual void set_caption(std::string_view text) = 0;
    [[nodiscard]] virtual std::string caption() const = 0;
    /// Left edge and width within the container.
    virtual void set_left(common::Twips left) = 0;
    virtual void set_width(common::Twips width) = 0;
    virtual void set_focus() = 0;
    /// Whether it has the keyboard focus, or will have it when the window becomes active.
    [[nodiscard]] virtual bool has_focus() const = 0;

    std::function<void()> on_click;
    std::function<void(MouseButton)> on_mouse_down;
    /// The button of the mouse is up again; a click that came of it has been told before.
    std::function<void(MouseButton)> on_mouse_up;
};

/// Takes the keyboard focus and does nothing with it.
class FocusHolder {
public:
    virtual ~FocusHolder() = default;
    virtual void set_focus() = 0;
};

/// A box that holds other controls.
class Frame : public Control {
public:
    [[nodiscard]] virtual common::Twips width() const = 0;

    std::function<void()> on_resize;
};

struct Font {
    std::string name; ///< "FixedSys" stands for the system's fixed-pitch font
    int points = 9;
    bool bold = false;
};

class TextBox : public Control {
public:
    virtual void set_text(std::string_view text) = 0;
    [[nodiscard]] virtual std::string text() const = 0;
    /// The name that assistive technology tells.
    virtual void set_name(std::string_view name) = 0;
    virtual void set_background(std::optional<common::Colour> colour) = 0;
    virtual void set_font(const Font& font) = 0;
    /// A locked box shows its text and lets it be copied, but not changed.
    virtual void set_locked(bool locked) = 0;

    /// The box has got (true) or lost (false) the keyboard focus.
    std::function<void(bool)> on_focus;
};

class MenuEntry : public Control {
public:
    /// "&" stands before the access letter.
    virtual void set_caption(std::string_view text) = 0;
    [[nodiscard]] virtual std::string caption() const = 0;
    virtual void set_checkable(bool checkable) = 0;
    virtual void set_checked(bool checked) = 0;

    std::function<void()> on_click;
};

/// A menu of the menu bar. The entries it gives live as long as it does.
class Menu {
public:
    virtual ~Menu() = default;
    virtual MenuEntry& add_entry(std::string_view name, std::string_view caption) = 0;
};

class MenuBar {
public:
    virtual ~MenuBar() = default;
    virtual Menu& add_menu(std::string_view name, std::string_view caption) = 0;
};

class Timer {
public:
    virtual ~Timer() = default;
    /// Ticks every `period` until stopped.
    virtual void start(std::chrono::milliseconds period) = 0;
    virtual void stop() = 0;

    std::function<void()> on_tick;
};

enum class Key { character, enter, escape };

/// A key that the window sees before its controls.
struct KeyPress {
    Key key = Key::character;
    /// The character that the key gives. For a letter key of a layout without Latin letters, the letter at its place,
    /// unless the key goes into text that can be edited.
    std::string character;
    /// Sent again and again because the key is held down.
    bool auto_repeat = false;
};

class Window {
public:
    virtual ~Window() = default;

    virtual void set_caption(std::string_view text) = 0;
    [[nodiscard]] virtual std::string caption() const = 0;
    virtual void show() = 0;
    virtual void hide() = 0;

    /// Returns whether the key is swallowed.
    std::function<bool(const KeyPress&)> on_key;
    /// The user, the session or the system asks the window to close.
    std::function<void()> on_close;
};

} // namespace cuedrill::platform
