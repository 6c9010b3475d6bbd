#pragma once

#include "common/colour.h"
#include "common/text.h"
#include "common/twips.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Windows without a toolkit: one interface per kind of control, with only the operations that the logic needs. A
/// control calls a hook (`on_...`) when the user does something; a hook may be empty. All texts are UTF-8 and are
/// displayed literally, never as markup.
namespace cuedrill::platform {

class Control {
public:
    Control() = default;
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;
    virtual ~Control() = default;

    virtual void set_visible(bool visible) = 0;
    /// The value last set, even while the window itself is hidden.
    [[nodiscard]] virtual bool visible() const = 0;
    virtual void set_enabled(bool enabled) = 0;
    [[nodiscard]] virtual bool enabled() const = 0;
};

enum class MouseButton : std::uint8_t { left = 1, right = 2, middle = 4 };

class Button : public Control {
public:
    /// Calls `ask`, and does nothing else, on Shift+click on the button or on F1 while it has the focus. Shift+click
    /// also works while the button is disabled. The pointer over the button becomes an upright arrow.
    virtual void offer_help(std::function<void()> ask) = 0;
    virtual void set_caption(std::string_view text) = 0;
    [[nodiscard]] virtual std::string caption() const = 0;
    /// Left edge and width within the container.
    virtual void set_left(common::Twips left) = 0;
    virtual void set_width(common::Twips width) = 0;
    /// The width last set; before that, the width that just fits the caption.
    [[nodiscard]] virtual common::Twips width() const = 0;
    /// What the button does, for the tool tip and for assistive technology.
    virtual void set_tool_tip(std::string_view text) = 0;
    /// Whether the letter after "&" in the caption is underlined. The window's keys decide what Alt and that letter do.
    virtual void show_access_letter(bool shown) = 0;
    virtual void set_focus() = 0;
    /// Whether it has the keyboard focus, or will have it when the window becomes active.
    [[nodiscard]] virtual bool has_focus() const = 0;

    std::function<void()> on_click;
    std::function<void(MouseButton)> on_mouse_down;
    /// A mouse button was released. If that makes a click, the click hook has been called before.
    std::function<void(MouseButton)> on_mouse_up;
};

/// An invisible control that can have the keyboard focus and ignores all keys.
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

enum class Key { character, enter, escape };

/// A modifier held down while another key is pressed.
enum class KeyModifier : std::uint8_t { none, control, alt };

/// A key press, offered first to the window, then to the control with the focus, before the toolkit acts on it.
struct KeyPress {
    Key key = Key::character;
    /// The character that the key types.
    std::string character{};
    /// An auto-repeat event of a key that is held down.
    bool auto_repeat = false;
    /// The character was composed by an input method or with dead keys.
    bool composed = false;
    /// The letter at this key's position on a Latin keyboard, in lower case; 0 if there is no letter there.
    char place = 0;
    /// A key with a modifier types nothing; only the window sees it, not the control with the focus.
    KeyModifier modifier = KeyModifier::none;
};

/// Kinds of keys that the key policy distinguishes.
enum class KeyKind { other, enter, escape, blank };

/// A key that goes down or up in any window of the program, reported before anything else handles it.
struct KeyEvent {
    bool down = true; ///< whether the key goes down; otherwise it goes up
    KeyKind kind = KeyKind::other;
    /// The position on the keyboard; 0 if the system does not report it.
    std::uint32_t scan_code = 0;
    /// Monotonic time: the timestamp of the system or, if the event has none, that of a clock with another start.
    std::int64_t milliseconds = 0;
    /// The system reports the event as auto-repeat. It does not always recognise auto-repeat.
    bool auto_repeat = false;
    const void* focus = nullptr; ///< the control that gets the press; only for comparison
    bool in_box = false;         ///< in a modal window
    bool typing = false;         ///< into text that is being edited
};

/// Whether a press was made by the user, is auto-repeat, or must be ignored.
enum class KeyJudgement { meant, held, stray };

struct Font {
    std::string name; ///< "FixedSys" means the system's fixed-pitch font
    int points = 9;
    bool bold = false;
};

/// Positions in the text are counted in code points from 0; a line end (CR LF) counts as two.
class TextBox : public Control {
public:
    virtual void set_text(std::string_view text) = 0;
    [[nodiscard]] virtual std::string text() const = 0;
    /// Empties the box, even a locked one. Unlike setting a new text, the user can undo this.
    virtual void clear() = 0;
    /// The position of the cursor; with a selection, its beginning.
    [[nodiscard]] virtual std::size_t caret() const = 0;
    /// Moves the cursor and drops the selection. A position beyond the end means the end.
    virtual void set_caret(std::size_t place) = 0;
    /// Inserts `text`, puts the cursor after it and drops the selection (its text stays). The user can undo it.
    virtual void insert(std::size_t place, std::string_view text) = 0;
    /// The accessible name, for assistive technology.
    virtual void set_name(std::string_view name) = 0;
    virtual void set_background(std::optional<common::Colour> colour) = 0;
    virtual void set_font(const Font& font) = 0;
    /// A locked box is read-only; its text can still be copied.
    virtual void set_locked(bool locked) = 0;
    virtual void set_focus() = 0;
    /// Whether it has the keyboard focus, or will have it when the window becomes active.
    [[nodiscard]] virtual bool has_focus() const = 0;

    /// Called for a key that the window did not handle. Returns whether the key is consumed; otherwise the box takes
    /// it.
    std::function<bool(const KeyPress&)> on_key;
};

/// Read-only text in which words can be chosen: with the mouse, or with the arrow keys, which go from word to word.
/// Positions are counted as in a TextBox. A character of code 1 is drawn as a placeholder one cell wide.
class HintBox : public Control {
public:
    virtual void set_text(std::string_view text) = 0;
    [[nodiscard]] virtual std::string text() const = 0;
    /// The ranges of the words that the arrow keys go to, in order. Setting a new text clears them.
    virtual void set_words(std::vector<common::TextRange> words) = 0;
    /// Where the user last clicked, or the beginning of the word that an arrow key led to; std::nullopt before either.
    [[nodiscard]] virtual std::optional<std::size_t> caret() const = 0;
    virtual void set_name(std::string_view name) = 0;
    virtual void set_focus() = 0;
    /// Whether it has the keyboard focus, or will have it when the window becomes active.
    [[nodiscard]] virtual bool has_focus() const = 0;

    /// The user clicked on the text. A click beside it does not count, nor does the second press of a double click.
    std::function<void()> on_click;
    /// Called for a key that the window did not handle. Returns whether the key is consumed.
    std::function<bool(const KeyPress&)> on_key;
};

/// Lines of text, one of which can be chosen. Each takes one row; a line end within it is drawn as a blank.
class ListBox : public Control {
public:
    /// Shows these lines, scrolled to the first one.
    virtual void set_lines(std::vector<std::string> lines) = 0;
    /// Replaces the lines by an updated version of the same list, of which `marked` is the line of the question on
    /// display, and keeps the scroll position. The current line stays in its place, or goes with the mark if it was the
    /// marked one.
    virtual void replace_lines(std::vector<std::string> lines, std::optional<std::size_t> marked) = 0;
    /// Marks the line of the question on display, makes it current and scrolls to it; std::nullopt marks none. Setting
    /// the lines takes the mark away.
    virtual void mark_line(std::optional<std::size_t> line) = 0;
    virtual void set_name(std::string_view name) = 0;
    virtual void set_focus() = 0;
    /// Whether it has the keyboard focus, or will have it when the window becomes active.
    [[nodiscard]] virtual bool has_focus() const = 0;

    /// The user clicked on a line, or went to it with the arrow keys and pressed Enter or blank. Gets the line's text.
    std::function<void(const std::string& line)> on_click;
};

class MenuEntry : public Control {
public:
    /// "&" precedes the access letter.
    virtual void set_caption(std::string_view text) = 0;
    [[nodiscard]] virtual std::string caption() const = 0;
    virtual void set_checkable(bool checkable) = 0;
    virtual void set_checked(bool checked) = 0;

    std::function<void()> on_click;
};

/// A menu of the menu bar. It owns its entries.
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

class Window {
public:
    virtual ~Window() = default;

    virtual void set_caption(std::string_view text) = 0;
    [[nodiscard]] virtual std::string caption() const = 0;
    virtual void show() = 0;
    virtual void hide() = 0;
    /// Has assistive technology announce `text`, together with other texts of the same moment. Nothing is visible.
    virtual void announce(std::string_view text) = 0;
    /// The same for the last text before the program ends: waits until assistive technology, if there is any, has had
    /// the time to read it.
    virtual void announce_last(std::string_view text) = 0;

    /// Called once for each key that goes down or up in any window of the program, including boxes. The result for a
    /// key that goes up is ignored. If the hook is empty, each press is taken as the system reports it.
    std::function<KeyJudgement(const KeyEvent&)> on_key_event;
    /// Returns whether the key is consumed.
    std::function<bool(const KeyPress&)> on_key;
    /// The user asks the window to close.
    std::function<void()> on_close;
    /// Called once after each `show`, when the picture of the window is on the screen and no action of the user is
    /// running.
    std::function<void()> on_first_picture;
    /// F1 was pressed and the control with the focus has no help of its own.
    std::function<void()> on_help;
    /// The session or the system ends the program; there is no time to ask the user anything.
    std::function<void()> on_session_end;
};

} // namespace cuedrill::platform
