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

/// A control that can tell what it is for.
class HelpfulControl : public Control {
public:
    /// From now on Shift and a click on the control, or F1 while it has the focus, calls `ask` and does nothing else;
    /// the click also while the control is disabled. The pointer over the control becomes an upright arrow.
    virtual void offer_help(std::function<void()> ask) = 0;
};

/// How a caption is placed in its label.
enum class Alignment { left, emphasised };

/// A line of text: a caption, a prompt, a figure, a status.
class Label : public HelpfulControl {
public:
    /// Of some labels assistive technology tells each new caption at once.
    virtual void set_caption(std::string_view text) = 0;
    /// Shows the caption, but has it told by nobody: what it says is told otherwise.
    virtual void set_untold_caption(std::string_view text) = 0;
    [[nodiscard]] virtual std::string caption() const = 0;
    /// What the label tells, for assistive technology ("Status"); its name is its caption.
    virtual void set_description(std::string_view text) = 0;
    /// Nothing gives the window's own background back. On a colour the text is dark.
    virtual void set_background(std::optional<common::Colour> colour) = 0;
    virtual void set_bold(bool bold) = 0;
    virtual void set_alignment(Alignment alignment) = 0;
};

/// The number of questions of one level, as a figure with a bar.
class LevelPanel : public HelpfulControl {
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

class Button : public HelpfulControl {
public:
    virtual void set_caption(std::string_view text) = 0;
    [[nodiscard]] virtual std::string caption() const = 0;
    /// Left edge and width within the container.
    virtual void set_left(common::Twips left) = 0;
    virtual void set_width(common::Twips width) = 0;
    /// What was set; before that, the width that the caption just needs.
    [[nodiscard]] virtual common::Twips width() const = 0;
    /// What the button does, for the pointer that rests on it and for assistive technology.
    virtual void set_tool_tip(std::string_view text) = 0;
    /// Whether the letter behind "&" in the caption is underlined. What it does with Alt is left to the window's keys.
    virtual void show_access_letter(bool shown) = 0;
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

enum class Key { character, enter, escape };

/// A key that is held down while another one is pressed.
enum class KeyModifier : std::uint8_t { none, control, alt };

/// A key that the window, and then the control with the focus, sees before the toolkit acts on it.
struct KeyPress {
    Key key = Key::character;
    /// The character that the key gives.
    std::string character{};
    /// Sent again and again because the key is held down.
    bool auto_repeat = false;
    /// The character was put together by an input method or with dead keys.
    bool composed = false;
    /// The letter at the key's place on a Latin keyboard, in lower case; 0 for a key that is no letter there.
    char place = 0;
    /// Such a combination types nothing, and only the window sees it, not the control with the focus.
    KeyModifier modifier = KeyModifier::none;
};

/// The keys of which the policy about presses knows something.
enum class KeyKind { other, enter, escape, blank };

/// A key that goes down or comes up, in whichever window of the program, before anybody acts on it.
struct KeyEvent {
    bool down = true; ///< else it comes up
    KeyKind kind = KeyKind::other;
    /// The place on the keyboard; 0 where the system does not tell it.
    std::uint32_t scan_code = 0;
    /// By the clock of the system; by another one, which only goes forward too, where the event has lost its time.
    std::int64_t milliseconds = 0;
    /// The system says that the key is held down. It does not always know.
    bool auto_repeat = false;
    const void* focus = nullptr; ///< whom a press goes to; only compared
    bool in_box = false;         ///< in a window that holds up the others
    bool typing = false;         ///< into text that is being edited
};

/// What a press of a key is: made by a finger, sent again because the key is held down, or what must do nothing.
enum class KeyJudgement { meant, held, stray };

struct Font {
    std::string name; ///< "FixedSys" stands for the system's fixed-pitch font
    int points = 9;
    bool bold = false;
};

/// Places in the text are counted in code points from 0; a line end (CR LF) counts as two.
class TextBox : public Control {
public:
    virtual void set_text(std::string_view text) = 0;
    [[nodiscard]] virtual std::string text() const = 0;
    /// Empties the box, which may be locked. Unlike a new text, this can be undone by the user.
    virtual void clear() = 0;
    /// Where the caret stands; with a selection, where that begins.
    [[nodiscard]] virtual std::size_t caret() const = 0;
    /// Puts the caret there and gives up a selection; behind the end is at the end.
    virtual void set_caret(std::size_t place) = 0;
    /// Inserts `text` and puts the caret behind it; a selection is given up, its text stays. The user can undo it.
    virtual void insert(std::size_t place, std::string_view text) = 0;
    /// The name that assistive technology tells.
    virtual void set_name(std::string_view name) = 0;
    virtual void set_background(std::optional<common::Colour> colour) = 0;
    virtual void set_font(const Font& font) = 0;
    /// A locked box shows its text and lets it be copied, but not changed.
    virtual void set_locked(bool locked) = 0;
    virtual void set_focus() = 0;
    /// Whether it has the keyboard focus, or will have it when the window becomes active.
    [[nodiscard]] virtual bool has_focus() const = 0;

    /// A key that the window has left alone. Returns whether it is swallowed; otherwise the box takes it.
    std::function<bool(const KeyPress&)> on_key;
};

/// Text that cannot be changed, in which words can be chosen: with the mouse, or with the arrow keys, which go from
/// word to word. Places are counted as in a TextBox. A character of code 1 is drawn as a placeholder one cell wide.
class HintBox : public Control {
public:
    virtual void set_text(std::string_view text) = 0;
    [[nodiscard]] virtual std::string text() const = 0;
    /// The places of the words that the arrow keys go to, in order. A new text has none.
    virtual void set_words(std::vector<common::TextRange> words) = 0;
    /// Where the user has last clicked, or the beginning of the word that an arrow key led to; nothing before either.
    [[nodiscard]] virtual std::optional<std::size_t> caret() const = 0;
    virtual void set_name(std::string_view name) = 0;
    virtual void set_focus() = 0;
    /// Whether it has the keyboard focus, or will have it when the window becomes active.
    [[nodiscard]] virtual bool has_focus() const = 0;

    /// The user has clicked on the text. A click beside it and the second press of a double click are none.
    std::function<void()> on_click;
    /// A key that the window has left alone. Returns whether it is swallowed.
    std::function<bool(const KeyPress&)> on_key;
};

/// Lines of text of which one can be chosen. Each takes one row; a line end within it is drawn as a blank.
class ListBox : public Control {
public:
    /// Shows these lines from the first one on.
    virtual void set_lines(std::vector<std::string> lines) = 0;
    /// Shows these lines where others of their kind were shown before: the same place of the list stays in view.
    virtual void replace_lines(std::vector<std::string> lines) = 0;
    virtual void set_name(std::string_view name) = 0;
    virtual void set_focus() = 0;
    /// Whether it has the keyboard focus, or will have it when the window becomes active.
    [[nodiscard]] virtual bool has_focus() const = 0;

    /// The user has clicked on a line, or has gone to it with the arrow keys and pressed Enter or blank. Gets its text.
    std::function<void(const std::string& line)> on_click;
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

class Window {
public:
    virtual ~Window() = default;

    virtual void set_caption(std::string_view text) = 0;
    [[nodiscard]] virtual std::string caption() const = 0;
    virtual void show() = 0;
    virtual void hide() = 0;
    /// Has assistive technology tell `text` at once. Nothing is seen of it.
    virtual void announce(std::string_view text) = 0;

    /// Told once of each key that goes down, in whichever window of the program, boxes too, and of those that come up.
    /// What it gives for the latter means nothing. Without it each press counts as the system sends it.
    std::function<KeyJudgement(const KeyEvent&)> on_key_event;
    /// Returns whether the key is swallowed.
    std::function<bool(const KeyPress&)> on_key;
    /// The user asks the window to close.
    std::function<void()> on_close;
    /// F1 was pressed where no control has help of its own.
    std::function<void()> on_help;
    /// The session or the system ends the program. There is no time for questions.
    std::function<void()> on_session_end;
};

} // namespace cuedrill::platform
