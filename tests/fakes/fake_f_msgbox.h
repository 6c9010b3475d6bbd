#pragma once

#include "fakes/fake_controls.h"
#include "platform/f_msgbox.h"

#include <map>
#include <string>
#include <string_view>

namespace cuedrill::fakes {

extern template class FakeControl<platform::Control>;

/// The message window; takes the size of the main window when it covers it.
class FakeMessageWindow : public platform::MessageWindow, public Journalled {
public:
    using Journalled::Journalled;

    void set_caption(std::string_view text) override;
    void cover_main_window() override;
    [[nodiscard]] common::Twips inner_width() const override;
    [[nodiscard]] common::Twips inner_height() const override;
    [[nodiscard]] bool minimised() const override;
    void place(platform::Control& control, const platform::Place& place) override;
    void show() override;
    void hide() override;

    void resize(common::Twips new_width, common::Twips new_height);
    bool press(platform::Key key);
    void close();

    common::Twips main_width = 12000;
    common::Twips main_height = 9000;
    std::string caption;
    common::Twips width = 0;
    common::Twips height = 0;
    bool is_minimised = false;
    bool shown = false;
    std::map<const platform::Control*, platform::Place> places;
};

/// The message window with its controls; pass `controls` to the logic.
class FakeFMsgbox {
public:
    FakeFMsgbox();
    FakeFMsgbox(const FakeFMsgbox&) = delete;
    FakeFMsgbox& operator=(const FakeFMsgbox&) = delete;
    ~FakeFMsgbox();

    Journal journal;
    FakeMessageWindow window{"f_msgbox", &journal};
    FakeTextBox Text1{"Text1", &journal};
    FakeButton b_ok{"b_ok", &journal};
    FakeControl<platform::Control> pic_adjust{"pic_adjust", &journal};

    platform::FMsgbox controls{window, Text1, b_ok, pic_adjust};
};

} // namespace cuedrill::fakes
