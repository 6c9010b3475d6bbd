#pragma once

#include "fakes/fake_control.h"
#include "platform/controls.h"

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace cuedrill::fakes {

// Compiled once, in fake_controls.cpp.
extern template class FakeControl<platform::Button>;
extern template class FakeControl<platform::Frame>;
extern template class FakeControl<platform::TextBox>;
extern template class FakeControl<platform::HintBox>;
extern template class FakeControl<platform::ListBox>;
extern template class FakeControl<platform::MenuEntry>;

/// Which control of a window has the keyboard focus.
struct FakeFocus {
    const void* owner = nullptr; ///< null if a control that takes no part has it
};

/// Loses the focus, as in a real window, when it is hidden or disabled.
class FakeButton : public FakeControl<platform::Button> {
public:
    using FakeControl::FakeControl;

    void offer_help(std::function<void()> ask) override { on_help.swap(ask); }

    /// The user holds Shift and clicks on it, enabled or not.
    void shift_click() const
    {
        if (is_visible && on_help)
            on_help();
    }

    std::function<void()> on_help;

    void set_visible(bool value) override;
    void set_enabled(bool value) override;
    void set_caption(std::string_view text) override;
    [[nodiscard]] std::string caption() const override;
    void set_left(common::Twips value) override;
    void set_width(common::Twips value) override;
    [[nodiscard]] common::Twips width() const override;
    bool access_letter_shown = true;
    void show_access_letter(bool shown) override;
    void set_tool_tip(std::string_view text) override;
    void set_focus() override;
    [[nodiscard]] bool has_focus() const override;
    /// The user moves the focus to it with the keyboard.
    void take_focus();

    /// Presses and releases the left mouse button on it. If pressing disabled or hid the button, there is no click.
    void click();
    void right_click();
    /// Presses a mouse button on it, without releasing.
    void press(platform::MouseButton button);
    void release(platform::MouseButton button);
    /// Clicks with the space bar instead of the mouse.
    void activate();

    std::string caption_value;
    std::string tool_tip;
    common::Twips left = 0;
    common::Twips width_value = 0;
    int focused = 0; ///< how often set_focus was called
    FakeFocus own_focus;
    FakeFocus* focus = &own_focus; ///< shared by the controls of a window

private:
    void lose_focus_when_unusable() const;
};

class FakeFocusHolder : public platform::FocusHolder, public Journalled {
public:
    using Journalled::Journalled;

    void set_focus() override;

    int focused = 0; ///< how often set_focus was called
    FakeFocus own_focus;
    FakeFocus* focus = &own_focus; ///< shared by the controls of a window
};

class FakeFrame : public FakeControl<platform::Frame> {
public:
    using FakeControl::FakeControl;

    [[nodiscard]] common::Twips width() const override;

    void resize(common::Twips width);

    common::Twips width_value = 9000;
};

/// Common part of the text box and the hint box: keys, and positions in their text, in code points.
template <class Interface>
class FakeTextControl : public FakeControl<Interface> {
public:
    using FakeControl<Interface>::FakeControl;

    void set_name(std::string_view text) override
    {
        accessible_name = text;
        this->note("name", text);
    }
    [[nodiscard]] std::string text() const override { return text_value; }
    void set_focus() override
    {
        this->note("focus");
        take_focus();
    }
    /// The user moves the focus to it.
    void take_focus() { focus->owner = this; }
    [[nodiscard]] bool has_focus() const override { return focus->owner == this; }

    std::string text_value;
    std::string accessible_name;
    FakeFocus own_focus;
    FakeFocus* focus = &own_focus; ///< shared by the controls of a window
};

extern template class FakeTextControl<platform::TextBox>;
extern template class FakeTextControl<platform::HintBox>;

class FakeTextBox : public FakeTextControl<platform::TextBox> {
public:
    using FakeTextControl::FakeTextControl;

    /// Moves the cursor to the beginning, as the toolkit does.
    void set_text(std::string_view text) override;
    void clear() override;
    /// The user undoes the clearing of the box.
    void undo();
    [[nodiscard]] std::size_t caret() const override;
    void set_caret(std::size_t place) override;
    void insert(std::size_t place, std::string_view text) override;
    void set_background(std::optional<common::Colour> colour) override;
    void set_font(const platform::Font& value) override;
    void set_locked(bool value) override;

    /// Inserts a character that was not consumed, as the toolkit does.
    void take_character(std::string_view character);

    common::TextRange selection;        ///< empty if there is only the cursor
    std::optional<std::string> cleared; ///< what an undo restores
    std::optional<common::Colour> background;
    platform::Font font;
    bool locked = false;
};

class FakeHintBox : public FakeTextControl<platform::HintBox> {
public:
    using FakeTextControl::FakeTextControl;

    void set_text(std::string_view text) override;
    void set_words(std::vector<common::TextRange> value) override;
    [[nodiscard]] std::optional<std::size_t> caret() const override;

    /// The user clicks on the character at `place`.
    void click(std::size_t place);

    std::vector<common::TextRange> words;
    std::optional<std::size_t> caret_value;
};

/// Keeps the lines and reports the chosen one.
class FakeListBox : public FakeControl<platform::ListBox> {
public:
    using FakeControl::FakeControl;

    void set_lines(std::vector<std::string> value) override;
    void replace_lines(std::vector<std::string> value, std::optional<std::size_t> line) override;
    void mark_line(std::optional<std::size_t> line) override { marked = line; }
    void set_name(std::string_view text) override;
    void set_focus() override;
    [[nodiscard]] bool has_focus() const override;

    /// The user clicks on the line, counted from 0. Its text is destroyed if other lines are shown meanwhile.
    void click(std::size_t line);

    std::vector<std::string> lines;
    std::optional<std::size_t> marked;
    bool from_first = false; ///< whether the lines were last shown from the first one on
    std::string accessible_name;
    FakeFocus own_focus;
    FakeFocus* focus = &own_focus; ///< shared by the controls of a window
};

/// Only the logic sets the check mark: a click does not change it.
class FakeMenuEntry : public FakeControl<platform::MenuEntry> {
public:
    using FakeControl::FakeControl;

    void set_caption(std::string_view text) override;
    [[nodiscard]] std::string caption() const override;
    void set_checkable(bool value) override;
    void set_checked(bool value) override;

    void click();

    std::string caption_value;
    bool checkable = false;
    bool checked = false;
};

class FakeMenu : public platform::Menu, public Journalled {
public:
    using Journalled::Journalled;

    FakeMenuEntry& add_entry(std::string_view entry_name, std::string_view entry_caption) override;

    std::string caption;
    std::vector<std::unique_ptr<FakeMenuEntry>> entries;
    std::vector<std::string> order; ///< names of the entries in order, "-" for a separator
};

class FakeMenuBar : public platform::MenuBar {
public:
    FakeMenuBar() = default;
    explicit FakeMenuBar(Journal* shared_journal);

    FakeMenu& add_menu(std::string_view name, std::string_view caption) override;

    /// The entry with this name in any menu.
    /// @throws std::out_of_range when there is none.
    [[nodiscard]] FakeMenuEntry& entry(std::string_view name) const;

    /// @throws std::out_of_range when there is no menu with this name.
    [[nodiscard]] FakeMenu& menu(std::string_view name) const;

    std::vector<std::unique_ptr<FakeMenu>> menus;
    Journal* journal = nullptr;
};

class FakeTimer : public platform::Timer, public Journalled {
public:
    using Journalled::Journalled;

    void start(std::chrono::milliseconds value) override;
    void stop() override;

    /// Fires the timer; does nothing while it is stopped.
    void tick();

    std::chrono::milliseconds period{0};
    bool running = false;
};

class FakeWindow : public platform::Window, public Journalled {
public:
    using Journalled::Journalled;

    void set_caption(std::string_view text) override;
    [[nodiscard]] std::string caption() const override;
    void show() override;
    void hide() override;
    void announce(std::string_view text) override;
    /// Noted like any other announcement.
    void announce_last(std::string_view text) override { announce(text); }

    /// The user presses a key; returns whether it was consumed.
    bool press(const platform::KeyPress& key);
    bool press(platform::Key key, bool auto_repeat = false);
    bool press(const std::string& character, bool auto_repeat = false);

    void close();
    /// The window is painted for the first time since it was shown.
    void paint_first_picture();
    /// The session ends.
    void end_session();

    std::string caption_value;
    std::vector<std::string> announcements;
    bool shown = false;
};

} // namespace cuedrill::fakes
