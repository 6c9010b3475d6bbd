#pragma once

#include "common/twips.h"
#include "drill/commands.h"
#include "platform/form1.h"

#include <functional>
#include <map>

namespace cuedrill::drill {

/// Rounds `x` down to a multiple of 15 twips, one pixel at 96 dpi.
common::Twips SnapToGrid(common::Twips x);

/// The menu entries and toolbar buttons, built from the table of commands.
class CommandControls {
public:
    /// Adds the menus with their entries. `form1` must outlive this object.
    explicit CommandControls(platform::Form1& form1);

    /// Sets the caption, width and tool tip of each button and attaches the commands: a menu entry calls `choose`, a
    /// button calls `press`.
    void attach(const std::function<void(Command)>& choose, const std::function<void(Command)>& press);

    /// Enables or disables the command's menu entry and button, if it has them.
    void set_enabled(Command command, bool enabled);
    [[nodiscard]] bool enabled(Command command) const;

    /// The command's menu entry or button. The command must have one.
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
