#pragma once

#include "common/text.h"
#include "fakes/fake_control.h"
#include "platform/controls.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace cuedrill::fakes {

class FakeLabel : public FakeHelpfulControl<platform::Label> {
public:
    using FakeHelpfulControl::FakeHelpfulControl;

    void set_caption(std::string_view text) override
    {
        caption_value = text;
        note("caption", text);
    }
    [[nodiscard]] std::string caption() const override { return caption_value; }
    void set_description(std::string_view text) override
    {
        description = text;
        note("description", text);
    }
    void set_background(std::optional<common::Colour> colour) override
    {
        background = colour;
        note("background", colour);
    }
    void set_bold(bool value) override
    {
        bold = value;
        note("bold", value);
    }
    void set_alignment(platform::Alignment value) override
    {
        alignment = value;
        note("alignment", value == platform::Alignment::left ? "left" : "emphasised");
    }

    std::string caption_value;
    std::string description;
    std::optional<common::Colour> background;
    bool bold = false;
    platform::Alignment alignment = platform::Alignment::left;
};

class FakeLevelPanel : public FakeHelpfulControl<platform::LevelPanel> {
public:
    using FakeHelpfulControl::FakeHelpfulControl;

    void set_caption(std::string_view text) override
    {
        caption = text;
        note("caption", text);
    }
    void set_description(std::string_view text) override
    {
        description = text;
        note("description", text);
    }
    void set_count(std::int64_t new_count, std::int64_t new_total) override
    {
        count = new_count;
        total = new_total;
        note("count", std::to_string(new_count) + "/" + std::to_string(new_total));
    }
    void set_background(std::optional<common::Colour> colour) override
    {
        background = colour;
        note("background", colour);
    }
    void set_marked(bool value) override
    {
        marked = value;
        note("marked", value);
    }

    std::string caption;
    std::string description;
    std::int64_t count = 0;
    std::int64_t total = 0;
    std::optional<common::Colour> background;
    bool marked = false;
};

/// Where the keyboard focus of a window is.
struct FakeFocus {
    const void* owner = nullptr; ///< nothing when it is outside of the controls that take part
};

/// Loses the focus, as in a real window, when it can no longer be used.
class FakeButton : public FakeHelpfulControl<platform::Button> {
public:
    using FakeHelpfulControl::FakeHelpfulControl;

    void set_visible(bool value) override
    {
        FakeControl::set_visible(value);
        lose_focus_when_unusable();
    }
    void set_enabled(bool value) override
    {
        FakeControl::set_enabled(value);
        lose_focus_when_unusable();
    }
    void set_caption(std::string_view text) override
    {
        caption_value = text;
        note("caption", text);
    }
    [[nodiscard]] std::string caption() const override { return caption_value; }
    void set_left(common::Twips value) override
    {
        left = value;
        note("left", std::int64_t{value});
    }
    void set_width(common::Twips value) override
    {
        width_value = value;
        note("width", std::int64_t{value});
    }
    [[nodiscard]] common::Twips width() const override { return width_value; }
    bool access_letter_shown = true;
    void show_access_letter(bool shown) override { access_letter_shown = shown; }
    void set_tool_tip(std::string_view text) override
    {
        tool_tip = text;
        note("tool_tip", text);
    }
    void set_focus() override
    {
        ++focused;
        take_focus();
        note("focus");
    }
    [[nodiscard]] bool has_focus() const override { return focus->owner == this; }
    /// The user goes to it with the keyboard.
    void take_focus() { focus->owner = this; }

    /// The left mouse button goes down and up on it. Where going down made the button unusable, there is no click.
    void click()
    {
        press(platform::MouseButton::left);
        activate();
        release(platform::MouseButton::left);
    }
    void right_click()
    {
        press(platform::MouseButton::right);
        release(platform::MouseButton::right);
    }
    /// A mouse button goes down on it.
    void press(platform::MouseButton button)
    {
        if (usable() && on_mouse_down)
            on_mouse_down(button);
    }
    void release(platform::MouseButton button)
    {
        if (on_mouse_up)
            on_mouse_up(button);
    }
    /// The space bar presses it: a click without the mouse.
    void activate()
    {
        if (usable() && on_click)
            on_click();
    }

    std::string caption_value;
    std::string tool_tip;
    common::Twips left = 0;
    common::Twips width_value = 0;
    int focused = 0; ///< how often it was given the focus
    FakeFocus own_focus;
    FakeFocus* focus = &own_focus; ///< shared by the controls of a window

private:
    void lose_focus_when_unusable() const
    {
        if (!usable() && has_focus())
            focus->owner = nullptr;
    }
};

class FakeFocusHolder : public platform::FocusHolder, public Journalled {
public:
    using Journalled::Journalled;

    void set_focus() override
    {
        ++focused;
        focus->owner = this;
        note("focus");
    }

    int focused = 0; ///< how often it was given the focus
    FakeFocus own_focus;
    FakeFocus* focus = &own_focus; ///< shared by the controls of a window
};

class FakeFrame : public FakeControl<platform::Frame> {
public:
    using FakeControl::FakeControl;

    [[nodiscard]] common::Twips width() const override { return width_value; }

    void resize(common::Twips width)
    {
        width_value = width;
        if (on_resize)
            on_resize();
    }

    common::Twips width_value = 9000;
};

/// What a text box and a hint box have in common: the keyboard, and places in their text, in code points.
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
    /// The user goes to it.
    void take_focus() { focus->owner = this; }
    [[nodiscard]] bool has_focus() const override { return focus->owner == this; }

    std::string text_value;
    std::string accessible_name;
    FakeFocus own_focus;
    FakeFocus* focus = &own_focus; ///< shared by the controls of a window
};

class FakeTextBox : public FakeTextControl<platform::TextBox> {
public:
    using FakeTextControl::FakeTextControl;

    /// Puts the caret before the text, as the toolkit does.
    void set_text(std::string_view text) override
    {
        text_value = text;
        selection = {};
        cleared.reset();
        note("text", text);
    }
    void clear() override
    {
        cleared = std::exchange(text_value, {});
        selection = {};
        note("clear");
    }
    /// The user takes back what emptied the box.
    void undo()
    {
        if (!locked && cleared)
            text_value = std::move(*cleared);
        cleared.reset();
    }
    [[nodiscard]] std::size_t caret() const override { return selection.begin; }
    void set_caret(std::size_t place) override
    {
        const std::size_t at = std::min(place, common::code_points(text_value));
        selection = {at, at};
    }
    void insert(std::size_t place, std::string_view text) override
    {
        text_value.insert(common::first_code_points(text_value, place).size(), text);
        set_caret(place + common::code_points(text));
    }
    void set_background(std::optional<common::Colour> colour) override
    {
        background = colour;
        note("background", colour);
    }
    void set_font(const platform::Font& value) override
    {
        font = value;
        note("font", value.name + " " + std::to_string(value.points) + (value.bold ? " bold" : ""));
    }
    void set_locked(bool value) override
    {
        locked = value;
        note("locked", value);
    }

    /// What the toolkit does with a character that nobody has swallowed.
    void take_character(std::string_view character)
    {
        if (locked)
            return;
        const std::size_t begin = common::first_code_points(text_value, selection.begin).size();
        const std::size_t end = common::first_code_points(text_value, selection.end).size();
        text_value.replace(begin, end - begin, character);
        set_caret(selection.begin + common::code_points(character));
    }

    common::TextRange selection;        ///< empty where only the caret stands
    std::optional<std::string> cleared; ///< what an undo brings back
    std::optional<common::Colour> background;
    platform::Font font;
    bool locked = false;
};

class FakeHintBox : public FakeTextControl<platform::HintBox> {
public:
    using FakeTextControl::FakeTextControl;

    void set_text(std::string_view text) override
    {
        text_value = text;
        words.clear();
        caret_value.reset();
        note("text", text);
    }
    void set_words(std::vector<common::TextRange> value) override { words = std::move(value); }
    [[nodiscard]] std::optional<std::size_t> caret() const override { return caret_value; }

    /// The user clicks on the character at `place`.
    void click(std::size_t place)
    {
        take_focus();
        caret_value = place;
        if (on_click)
            on_click();
    }

    std::vector<common::TextRange> words;
    std::optional<std::size_t> caret_value;
};

/// Takes its lines and tells which one was chosen.
class FakeListBox : public FakeControl<platform::ListBox> {
public:
    using FakeControl::FakeControl;

    void set_lines(std::vector<std::string> value) override
    {
        lines = std::move(value);
        from_first = true;
        note("lines", std::to_string(lines.size()));
    }
    void replace_lines(std::vector<std::string> value) override
    {
        lines = std::move(value);
        from_first = false;
        note("replaced_lines", std::to_string(lines.size()));
    }
    void set_name(std::string_view text) override
    {
        accessible_name = text;
        note("name", text);
    }
    void set_focus() override
    {
        note("focus");
        focus->owner = this;
    }
    [[nodiscard]] bool has_focus() const override { return focus->owner == this; }

    /// The user clicks on the line, counted from 0. Its text is gone with the line when others are shown meanwhile.
    void click(std::size_t line)
    {
        if (!usable())
            return;
        focus->owner = this;
        const std::string text = lines.at(line);
        if (on_click)
            on_click(text);
    }

    std::vector<std::string> lines;
    bool from_first = false; ///< the lines were last shown from the first one on
    std::string accessible_name;
    FakeFocus own_focus;
    FakeFocus* focus = &own_focus; ///< shared by the controls of a window
};

/// The check mark is the logic's to set: a click leaves it as it is.
class FakeMenuEntry : public FakeControl<platform::MenuEntry> {
public:
    using FakeControl::FakeControl;

    void set_caption(std::string_view text) override
    {
        caption_value = text;
        note("caption", text);
    }
    [[nodiscard]] std::string caption() const override { return caption_value; }
    void set_checkable(bool value) override
    {
        checkable = value;
        note("checkable", value);
    }
    void set_checked(bool value) override
    {
        checked = value;
        note("checked", value);
    }

    void click()
    {
        if (usable() && on_click)
            on_click();
    }

    std::string caption_value;
    bool checkable = false;
    bool checked = false;
};

class FakeMenu : public platform::Menu, public Journalled {
public:
    using Journalled::Journalled;

    FakeMenuEntry& add_entry(std::string_view entry_name, std::string_view entry_caption) override
    {
        entries.push_back(std::make_unique<FakeMenuEntry>(std::string(entry_name), journal));
        entries.back()->caption_value = entry_caption;
        order.emplace_back(entry_name);
        return *entries.back();
    }

    std::string caption;
    std::vector<std::unique_ptr<FakeMenuEntry>> entries;
    std::vector<std::string> order; ///< names of the entries, "-" for a separator
};

class FakeMenuBar : public platform::MenuBar {
public:
    FakeMenuBar() = default;
    explicit FakeMenuBar(Journal* shared_journal) : journal(shared_journal) {}

    FakeMenu& add_menu(std::string_view name, std::string_view caption) override
    {
        menus.push_back(std::make_unique<FakeMenu>(std::string(name), journal));
        menus.back()->caption = caption;
        return *menus.back();
    }

    /// The entry of that name in any menu.
    /// @throws std::out_of_range when there is none.
    [[nodiscard]] FakeMenuEntry& entry(std::string_view name) const
    {
        for (const auto& menu : menus)
            for (const auto& entry : menu->entries)
                if (entry->name == name)
                    return *entry;
        throw std::out_of_range("no menu entry " + std::string(name));
    }

    /// @throws std::out_of_range when there is none of that name.
    [[nodiscard]] FakeMenu& menu(std::string_view name) const
    {
        for (const auto& menu : menus)
            if (menu->name == name)
                return *menu;
        throw std::out_of_range("no menu " + std::string(name));
    }

    std::vector<std::unique_ptr<FakeMenu>> menus;
    Journal* journal = nullptr;
};

class FakeTimer : public platform::Timer, public Journalled {
public:
    using Journalled::Journalled;

    void start(std::chrono::milliseconds value) override
    {
        period = value;
        running = true;
        note("start", std::int64_t{value.count()});
    }
    void stop() override
    {
        running = false;
        note("stop");
    }

    /// The period has passed; nothing happens while it is stopped.
    void tick()
    {
        if (running && on_tick)
            on_tick();
    }

    std::chrono::milliseconds period{0};
    bool running = false;
};

class FakeWindow : public platform::Window, public Journalled {
public:
    using Journalled::Journalled;

    void set_caption(std::string_view text) override
    {
        caption_value = text;
        note("caption", text);
    }
    [[nodiscard]] std::string caption() const override { return caption_value; }
    void show() override
    {
        shown = true;
        note("show");
    }
    void hide() override
    {
        shown = false;
        note("hide");
    }
    void announce(std::string_view text) override
    {
        announcements.emplace_back(text);
        note("announce", text);
    }

    /// The user presses a key; returns whether it was swallowed.
    bool press(const platform::KeyPress& key) { return on_key && on_key(key); }
    bool press(platform::Key key, bool auto_repeat = false) { return press({key, {}, auto_repeat}); }
    bool press(const std::string& character, bool auto_repeat = false)
    {
        return press({platform::Key::character, character, auto_repeat});
    }

    void close()
    {
        if (on_close)
            on_close();
    }
    /// The session ends.
    void end_session()
    {
        if (on_session_end)
            on_session_end();
    }

    std::string caption_value;
    std::vector<std::string> announcements;
    bool shown = false;
};

} // namespace cuedrill::fakes
