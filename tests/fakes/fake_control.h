#pragma once

#include "common/colour.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace cuedrill::fakes {

/// What was done to the controls of a window, in order: "panel_dialog.caption=Show answer?", "bot_yes.focus".
using Journal = std::vector<std::string>;

/// A control that writes its calls to a journal, when it has one.
class Journalled {
public:
    Journalled() = default;
    explicit Journalled(std::string own_name, Journal* shared_journal = nullptr)
        : name(std::move(own_name)), journal(shared_journal)
    {
    }

    std::string name;
    Journal* journal = nullptr;

protected:
    void note(std::string_view what) const
    {
        if (journal != nullptr)
            journal->push_back(name + "." + std::string(what));
    }
    void note(std::string_view property, std::string_view value) const
    {
        if (journal != nullptr)
            journal->push_back(name + "." + std::string(property) + "=" + std::string(value));
    }
    void note(std::string_view property, bool value) const { note(property, value ? "true" : "false"); }
    void note(std::string_view property, const char* value) const { note(property, std::string_view(value)); }
    void note(std::string_view property, std::int64_t value) const { note(property, std::to_string(value)); }
    void note(std::string_view property, const std::optional<common::Colour>& colour) const
    {
        const auto part = [](std::uint8_t value) { return std::to_string(value); };
        note(property, colour ? part(colour->red) + "," + part(colour->green) + "," + part(colour->blue) : "none");
    }
    void note(std::string_view property, const std::string& value) const { note(property, std::string_view(value)); }
};

/// What all controls have; visible and enabled from the start.
template <class Interface>
class FakeControl : public Interface, public Journalled {
public:
    using Journalled::Journalled;

    void set_visible(bool value) override
    {
        is_visible = value;
        note("visible", value);
    }
    [[nodiscard]] bool visible() const override { return is_visible; }
    void set_enabled(bool value) override
    {
        is_enabled = value;
        note("enabled", value);
    }
    [[nodiscard]] bool enabled() const override { return is_enabled; }

    /// Whether the user can use it now.
    [[nodiscard]] bool usable() const { return is_visible && is_enabled; }

    bool is_visible = true;
    bool is_enabled = true;
};

/// A control that can tell what it is for.
template <class Interface>
class FakeHelpfulControl : public FakeControl<Interface> {
public:
    using FakeControl<Interface>::FakeControl;

    void offer_help(std::function<void()> ask) override { on_help = std::move(ask); }

    /// The user holds Shift and clicks on it, enabled or not.
    void shift_click() const
    {
        if (this->is_visible && on_help)
            on_help();
    }

    std::function<void()> on_help;
};

} // namespace cuedrill::fakes
