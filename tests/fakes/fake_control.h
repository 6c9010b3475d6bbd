#pragma once

#include "common/colour.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace cuedrill::fakes {

/// The calls to the controls of a window, in order: "panel_dialog.caption=Show answer?", "bot_yes.focus".
using Journal = std::vector<std::string>;

/// A control that writes its calls to a journal, if it has one.
class Journalled {
public:
    Journalled() = default;
    explicit Journalled(std::string own_name, Journal* shared_journal = nullptr);

    std::string name;
    Journal* journal = nullptr;

protected:
    void note(std::string_view what) const;
    void note(std::string_view property, std::string_view value) const;
    void note(std::string_view property, bool value) const;
    void note(std::string_view property, const char* value) const;
    void note(std::string_view property, std::int64_t value) const;
    void note(std::string_view property, const std::optional<common::Colour>& colour) const;
    void note(std::string_view property, const std::string& value) const;
};

/// Common part of all controls; initially visible and enabled.
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

} // namespace cuedrill::fakes
