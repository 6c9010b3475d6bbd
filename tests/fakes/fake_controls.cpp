#include "fakes/fake_controls.h"

#include "common/text.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace cuedrill::fakes {

template class FakeControl<platform::Button>;
template class FakeControl<platform::Frame>;
template class FakeControl<platform::TextBox>;
template class FakeControl<platform::HintBox>;
template class FakeControl<platform::ListBox>;
template class FakeControl<platform::MenuEntry>;
template class FakeTextControl<platform::TextBox>;
template class FakeTextControl<platform::HintBox>;

void FakeButton::set_visible(bool value)
{
    FakeControl::set_visible(value);
    lose_focus_when_unusable();
}

void FakeButton::set_enabled(bool value)
{
    FakeControl::set_enabled(value);
    lose_focus_when_unusable();
}

void FakeButton::set_caption(std::string_view text)
{
    caption_value = text;
    note("caption", text);
}

std::string FakeButton::caption() const
{
    return caption_value;
}

void FakeButton::set_left(common::Twips value)
{
    left = value;
    note("left", std::int64_t{value});
}

void FakeButton::set_width(common::Twips value)
{
    width_value = value;
    note("width", std::int64_t{value});
}

common::Twips FakeButton::width() const
{
    return width_value;
}

void FakeButton::show_access_letter(bool shown)
{
    access_letter_shown = shown;
}

void FakeButton::set_tool_tip(std::string_view text)
{
    tool_tip = text;
    note("tool_tip", text);
}

void FakeButton::set_focus()
{
    ++focused;
    take_focus();
    note("focus");
}

bool FakeButton::has_focus() const
{
    return focus->owner == this;
}

void FakeButton::take_focus()
{
    focus->owner = this;
}

void FakeButton::click()
{
    press(platform::MouseButton::left);
    activate();
    release(platform::MouseButton::left);
}

void FakeButton::right_click()
{
    press(platform::MouseButton::right);
    release(platform::MouseButton::right);
}

void FakeButton::press(platform::MouseButton button)
{
    if (usable() && on_mouse_down)
        on_mouse_down(button);
}

void FakeButton::release(platform::MouseButton button)
{
    if (on_mouse_up)
        on_mouse_up(button);
}

void FakeButton::activate()
{
    if (usable() && on_click)
        on_click();
}

void FakeButton::lose_focus_when_unusable() const
{
    if (!usable() && has_focus())
        focus->owner = nullptr;
}

void FakeFocusHolder::set_focus()
{
    ++focused;
    focus->owner = this;
    note("focus");
}

common::Twips FakeFrame::width() const
{
    return width_value;
}

void FakeFrame::resize(common::Twips width)
{
    width_value = width;
    if (on_resize)
        on_resize();
}

void FakeTextBox::set_text(std::string_view text)
{
    text_value = text;
    selection = {};
    cleared.reset();
    note("text", text);
}

void FakeTextBox::clear()
{
    cleared = std::exchange(text_value, {});
    selection = {};
    note("clear");
}

void FakeTextBox::undo()
{
    if (!locked && cleared)
        text_value = std::move(*cleared);
    cleared.reset();
}

std::size_t FakeTextBox::caret() const
{
    return selection.begin;
}

void FakeTextBox::set_caret(std::size_t place)
{
    const std::size_t at = std::min(place, common::code_points(text_value));
    selection = {at, at};
}

void FakeTextBox::insert(std::size_t place, std::string_view text)
{
    text_value.insert(common::first_code_points(text_value, place).size(), text);
    set_caret(place + common::code_points(text));
}

void FakeTextBox::set_background(std::optional<common::Colour> colour)
{
    background = colour;
    note("background", colour);
}

void FakeTextBox::set_font(const platform::Font& value)
{
    font = value;
    note("font", value.name + " " + std::to_string(value.points) + (value.bold ? " bold" : ""));
}

void FakeTextBox::set_locked(bool value)
{
    locked = value;
    note("locked", value);
}

void FakeTextBox::take_character(std::string_view character)
{
    if (locked)
        return;
    const std::size_t begin = common::first_code_points(text_value, selection.begin).size();
    const std::size_t end = common::first_code_points(text_value, selection.end).size();
    text_value.replace(begin, end - begin, character);
    set_caret(selection.begin + common::code_points(character));
}

void FakeHintBox::set_text(std::string_view text)
{
    text_value = text;
    words.clear();
    caret_value.reset();
    note("text", text);
}

void FakeHintBox::set_words(std::vector<common::TextRange> value)
{
    words = std::move(value);
}

std::optional<std::size_t> FakeHintBox::caret() const
{
    return caret_value;
}

void FakeHintBox::click(std::size_t place)
{
    take_focus();
    caret_value = place;
    if (on_click)
        on_click();
}

void FakeListBox::set_lines(std::vector<std::string> value)
{
    lines = std::move(value);
    from_first = true;
    marked.reset();
    note("lines", std::to_string(lines.size()));
}

void FakeListBox::replace_lines(std::vector<std::string> value, std::optional<std::size_t> line)
{
    lines = std::move(value);
    from_first = false;
    marked = line;
    note("replaced_lines", std::to_string(lines.size()));
}

void FakeListBox::set_name(std::string_view text)
{
    accessible_name = text;
    note("name", text);
}

void FakeListBox::set_focus()
{
    note("focus");
    focus->owner = this;
}

bool FakeListBox::has_focus() const
{
    return focus->owner == this;
}

void FakeListBox::click(std::size_t line)
{
    if (!usable())
        return;
    focus->owner = this;
    const std::string text = lines.at(line);
    if (on_click)
        on_click(text);
}

void FakeMenuEntry::set_caption(std::string_view text)
{
    caption_value = text;
    note("caption", text);
}

std::string FakeMenuEntry::caption() const
{
    return caption_value;
}

void FakeMenuEntry::set_checkable(bool value)
{
    checkable = value;
    note("checkable", value);
}

void FakeMenuEntry::set_checked(bool value)
{
    checked = value;
    note("checked", value);
}

void FakeMenuEntry::click()
{
    if (usable() && on_click)
        on_click();
}

FakeMenuEntry& FakeMenu::add_entry(std::string_view entry_name, std::string_view entry_caption)
{
    entries.push_back(std::make_unique<FakeMenuEntry>(std::string(entry_name), journal));
    entries.back()->caption_value = entry_caption;
    order.emplace_back(entry_name);
    return *entries.back();
}

FakeMenuBar::FakeMenuBar(Journal* shared_journal) : journal(shared_journal)
{
}

FakeMenu& FakeMenuBar::add_menu(std::string_view name, std::string_view caption)
{
    menus.push_back(std::make_unique<FakeMenu>(std::string(name), journal));
    menus.back()->caption = caption;
    return *menus.back();
}

FakeMenuEntry& FakeMenuBar::entry(std::string_view name) const
{
    for (const auto& menu : menus)
        for (const auto& entry : menu->entries)
            if (entry->name == name)
                return *entry;
    throw std::out_of_range("no menu entry " + std::string(name));
}

FakeMenu& FakeMenuBar::menu(std::string_view name) const
{
    for (const auto& menu : menus)
        if (menu->name == name)
            return *menu;
    throw std::out_of_range("no menu " + std::string(name));
}

void FakeTimer::start(std::chrono::milliseconds value)
{
    period = value;
    running = true;
    note("start", std::int64_t{value.count()});
}

void FakeTimer::stop()
{
    running = false;
    note("stop");
}

void FakeTimer::tick()
{
    if (running && on_tick)
        on_tick();
}

void FakeWindow::set_caption(std::string_view text)
{
    caption_value = text;
    note("caption", text);
}

std::string FakeWindow::caption() const
{
    return caption_value;
}

void FakeWindow::show()
{
    shown = true;
    note("show");
}

void FakeWindow::hide()
{
    shown = false;
    note("hide");
}

void FakeWindow::announce(std::string_view text)
{
    announcements.emplace_back(text);
    note("announce", text);
}

bool FakeWindow::press(const platform::KeyPress& key)
{
    return on_key && on_key(key);
}

bool FakeWindow::press(platform::Key key, bool auto_repeat)
{
    return press({key, {}, auto_repeat});
}

bool FakeWindow::press(const std::string& character, bool auto_repeat)
{
    return press({platform::Key::character, character, auto_repeat});
}

void FakeWindow::close()
{
    if (on_close)
        on_close();
}

void FakeWindow::paint_first_picture()
{
    if (on_first_picture)
        on_first_picture();
}

void FakeWindow::end_session()
{
    if (on_session_end)
        on_session_end();
}

} // namespace cuedrill::fakes
