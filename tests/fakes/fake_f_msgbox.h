#pragma once

#include "fakes/fake_controls.h"
#include "platform/f_msgbox.h"

#include <map>
#include <string>
#include <string_view>

namespace cuedrill::fakes {

/// The message window; it has the size of the main window once it has covered that.
class FakeMessageWindow : public platform::MessageWindow, public Journalled {
public:
    using Journalled::Journalled;

    void set_caption(std::string_view text) override
    {
        caption = text;
        note("caption", text);
    }
    void cover_main_window() override
    {
        note("cover");
        resize(main_width, main_height);
    }
    [[nodiscard]] common::Twips inner_width() const override { return width; }
    [[nodiscard]] common::Twips inner_height() const override { return height; }
    [[nodiscard]] bool minimised() const override { return is_minimised; }
    void place(platform::Control& control, const platform::Place& place) override { places[&control] = place; }
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

    void resize(common::Twips new_width, common::Twips new_height)
    {
        width = new_width;
        height = new_height;
        if (on_resize)
            on_resize();
    }
    bool press(platform::Key key) { return on_key && on_key({.key = key}); }
    void close()
    {
        if (on_close)
            on_close();
    }

    common::Twips main_width = 12000;
    common::Twips main_height = 9000;
    std::string caption;
    common::Twips width = 0;
    common::Twips height = 0;
    bool is_minimised = false;
    bool shown = false;
    std::map<const platform::Control*, platform::Place> places;
};

/// The message window with its controls; `controls` is what the logic gets.
class FakeFMsgbox {
public:
    Journal journal;
    FakeMessageWindow window{"f_msgbox", &journal};
    FakeTextBox Text1{"Text1", &journal};
    FakeButton b_ok{"b_ok", &journal};
    FakeControl<platform::Control> pic_adjust{"pic_adjust", &journal};

    platform::FMsgbox controls{window, Text1, b_ok, pic_adjust};
};

} // namespace cuedrill::fakes
