#include "drill/command_controls.h"

#include <algorithm>
#include <string>

namespace cuedrill::drill {
namespace {

bool is_available(const CommandRow& row)
{
    return std::find(row.modes.begin(), row.modes.end(), true) != row.modes.end();
}

} // namespace

common::Twips SnapToGrid(common::Twips x)
{
    const common::Twips beyond = x % common::twips_per_pixel;
    return x - (beyond < 0 ? beyond + common::twips_per_pixel : beyond);
}

CommandControls::CommandControls(platform::Form1& form1) : form1_(form1)
{
    for (const MenuRow& menu_row : menu_table()) {
        platform::Menu& menu = form1_.menu_bar.add_menu(menu_row.name, menu_row.caption);
        for (const CommandRow& row : command_table()) {
            if (!row.entry || row.entry->menu != menu_row.menu)
                continue;
            platform::MenuEntry& entry = menu.add_entry(row.entry->name, row.entry->caption);
            entry.set_enabled(is_available(row));
            if (row.entry->checkable)
                entry.set_checkable(true);
            entries_.emplace(row.command, &entry);
        }
    }
}

void CommandControls::attach(const std::function<void(Command)>& choose, const std::function<void(Command)>& press)
{
    SetToolbarCaptions();
    SetToolbarTooltips();
    for (const CommandRow& row : command_table()) {
        if (row.entry && is_available(row))
            entry(row.command).on_click = [choose, command = row.command] { choose(command); };
        if (row.button)
            pb(*row.button).on_click = [press, command = row.command] { press(command); };
    }
}

void CommandControls::SetToolbarCaptions()
{
    for (const CommandRow& row : command_table()) {
        if (!row.button)
            continue;
        platform::Button& button = pb(*row.button);
        button.set_caption(row.button->caption);
        button.show_access_letter(command_with_access_letter(row.key).has_value());
        button.set_width(button.width() + SnapToGrid(row.button->extra_width));
    }
}

void CommandControls::SetToolbarTooltips()
{
    for (const CommandRow& row : command_table()) {
        if (row.button)
            pb(*row.button).set_tool_tip(std::string(" ") + row.button->help_text + " ");
    }
}

void CommandControls::set_enabled(Command command, bool enabled)
{
    const CommandRow& row = row_of(command);
    if (row.button)
        pb(*row.button).set_enabled(enabled);
    if (row.entry)
        entry(command).set_enabled(enabled);
}

bool CommandControls::enabled(Command command) const
{
    return row_of(command).button ? button(command).enabled() : entry(command).enabled();
}

platform::Button& CommandControls::button(Command command) const
{
    return pb(row_of(command).button.value());
}

platform::Button& CommandControls::pb(const ButtonRow& row) const
{
    return *form1_.pb.at(static_cast<std::size_t>(row.number - 1));
}

} // namespace cuedrill::drill
