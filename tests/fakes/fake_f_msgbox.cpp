#include "fakes/fake_f_msgbox.h"

namespace cuedrill::fakes {

template class FakeControl<platform::Control>;

void FakeMessageWindow::set_caption(std::string_view text)
{
    caption = text;
    note("caption", text);
}

void FakeMessageWindow::cover_main_window()
{
    note("cover");
    resize(main_width, main_height);
}

common::Twips FakeMessageWindow::inner_width() const
{
    return width;
}

common::Twips FakeMessageWindow::inner_height() const
{
    return height;
}

bool FakeMessageWindow::minimised() const
{
    return is_minimised;
}

void FakeMessageWindow::place(platform::Control& control, const platform::Place& place)
{
    places[&control] = place;
}

void FakeMessageWindow::show()
{
    shown = true;
    note("show");
}

void FakeMessageWindow::hide()
{
    shown = false;
    note("hide");
}

void FakeMessageWindow::resize(common::Twips new_width, common::Twips new_height)
{
    width = new_width;
    height = new_height;
    if (on_resize)
        on_resize();
}

bool FakeMessageWindow::press(platform::Key key)
{
    return on_key && on_key({.key = key});
}

void FakeMessageWindow::close()
{
    if (on_close)
        on_close();
}

FakeFMsgbox::FakeFMsgbox() = default;

FakeFMsgbox::~FakeFMsgbox() = default;

} // namespace cuedrill::fakes
