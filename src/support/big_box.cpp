#include "support/big_box.h"

#include <algorithm>

namespace cuedrill::support {
namespace {

using common::Twips;

constexpr Twips margin = 100;
constexpr Twips button_width = 1350;
constexpr Twips button_height = 420;
constexpr Twips adjust_size = 240;

/// min(wish, available), never negative.
Twips at_most(Twips wish, Twips available)
{
    return std::clamp(available, 0, wish);
}

} // namespace

void BigBox::attach()
{
    f_msgbox_.Text1.set_locked(true);
    f_msgbox_.Text1.set_name("Text");
    f_msgbox_.b_ok.set_caption("OK");
    f_msgbox_.b_ok.on_click = [this] { f_msgbox_.window.hide(); };
    f_msgbox_.window.on_close = [this] { f_msgbox_.window.hide(); };
    f_msgbox_.window.on_key = [this](const platform::KeyPress& press) { return take_key(press); };
    f_msgbox_.window.on_resize = [this] { place_controls(); };
}

void BigBox::big_box(std::string_view text, std::string_view caption)
{
    big_box_text_ = text;
    f_msgbox_.Text1.set_text(big_box_text_);
    f_msgbox_.window.set_caption(caption);
    if (!created_) {
        created_ = true;
        // Only now, because loading a font takes time that the start of the program is spared.
        f_msgbox_.Text1.set_font({.name = "Courier New", .points = 9});
        f_msgbox_.window.cover_main_window();
        // A window that already has the right size sends no resize event.
        place_controls();
    }
    f_msgbox_.window.show();
    // So that the arrow keys scroll the text and a screen reader starts to read it.
    f_msgbox_.Text1.set_focus();
}

bool BigBox::take_key(const platform::KeyPress& press)
{
    if (press.key == platform::Key::character || press.modifier != platform::KeyModifier::none)
        return false;
    // Ignore auto-repeat: the key that opened the window may still be down.
    if (!press.auto_repeat)
        f_msgbox_.window.hide();
    return true;
}

void BigBox::place_controls()
{
    platform::MessageWindow& window = f_msgbox_.window;
    if (window.minimised())
        return;
    const Twips width = window.inner_width();
    const Twips height = window.inner_height();

    const platform::Place adjust{.left = std::max(0, width - adjust_size),
                                 .top = std::max(0, height - adjust_size),
                                 .width = at_most(adjust_size, width),
                                 .height = at_most(adjust_size, height)};
    platform::Place ok{.width = at_most(button_width, adjust.left - 2 * margin),
                       .height = at_most(button_height, height)};
    // Centred, unless it would overlap the size grip in the corner.
    ok.left = std::max(0, std::min((width - ok.width) / 2, adjust.left - margin - ok.width));
    ok.top = std::max(0, height - margin - ok.height);

    window.place(f_msgbox_.Text1, {.left = margin,
                                   .top = margin,
                                   .width = std::max(0, width - 2 * margin),
                                   .height = std::max(0, ok.top - 2 * margin)});
    window.place(f_msgbox_.b_ok, ok);
    window.place(f_msgbox_.pic_adjust, adjust);
}

} // namespace cuedrill::support
