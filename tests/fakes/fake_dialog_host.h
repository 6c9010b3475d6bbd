#pragma once

#include "platform/desktop.h"

#include <algorithm>
#include <string>
#include <string_view>

namespace cuedrill::fakes {

/// A helper window whose frame has a size of its own, so that it cannot become smaller than that.
class FakeDialogHost : public platform::DialogHost {
public:
    void set_caption(std::string_view text) override { caption = text; }
    void set_height(common::Twips height) override { height_value = std::max(height, smallest_height); }
    void set_width(common::Twips width) override { width_value = std::max(width, smallest_width); }
    [[nodiscard]] common::Twips height() const override { return height_value; }
    [[nodiscard]] common::Twips width() const override { return width_value; }
    void set_position(common::Twips new_left, common::Twips new_top) override
    {
        left = new_left;
        top = new_top;
    }
    [[nodiscard]] common::Twips screen_width() const override { return screen_width_value; }
    [[nodiscard]] common::Twips screen_height() const override { return screen_height_value; }
    void load() override
    {
        loaded = true;
        ++loads;
    }
    void unload() override
    {
        loaded = false;
        ++unloads;
    }

    std::string caption;
    common::Twips smallest_height = 435;
    common::Twips smallest_width = 1680;
    common::Twips height_value = 3600;
    common::Twips width_value = 4800;
    common::Twips left = 0;
    common::Twips top = 0;
    common::Twips screen_width_value = 1920 * common::twips_per_pixel;
    common::Twips screen_height_value = 1080 * common::twips_per_pixel;
    bool loaded = false;
    int loads = 0;
    int unloads = 0;
};

} // namespace cuedrill::fakes
