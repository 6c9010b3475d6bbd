#pragma once

#include "common/twips.h"
#include "drill/commands.h"
#include "platform/form1.h"

#include <functional>
#include <map>

namespace cuedrill::drill {

/// The largest multiple of 15 twips, one pixel of a usual screen, that is not above `x`.
common::Twips SnapToGrid(common::Twips x);

/// The entries of the menus and the buttons of the toolbar, made of the table of commands.
class CommandControls {
public:
    /// Adds the menus with their entries. `form1` outlives this object.
    explicit CommandControls(platform::Form1& form1);

    /// Gives each button its caption, its width and its tool tip, and attaches the commands: an entry runs its own by
    /// `choose`, a button by `press`.
    void attach(const std::function<void(Command)>& choose, const std::function<void(Command)>& press);

    /// Enables the command's entry and button, where it has them.
    void set_enabled(Command command, bool enabled);

    /// Requires that the command has one.
    [[nodiscard]] platform::MenuEntry& entry(Command command) const { return *entries_.at(command); }
    [[nodiscard]] platform::Button& button(Command command) const;

private:
    void SetToolbarCaptions();
    void SetToolbarTooltips();
    [[nodiscard]] platform::Button& pb(const ButtonRow& row) const;

    platform::Form1& form1_;
    std::map<Command, platform::MenuEntry*> entries_;
};

} // namespace cuedrill::drill
