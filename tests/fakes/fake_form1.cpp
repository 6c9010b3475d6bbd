#include "fakes/fake_form1.h"

#include "common/text.h"

#include <cstddef>
#include <string>

namespace cuedrill::fakes {

FakeForm1::FakeForm1()
{
    for (FakeButton* button : {&bot_yes, &bot_no, &bot_other})
        button->focus = &focus;
    for (FakeButton& button : pb)
        button.focus = &focus;
    Text_q.focus = Text_a.focus = t_hint.focus = listav.focus = bot_focus.focus = &focus;
}

FakeForm1::~FakeForm1() = default;

void FakeForm1::press_in(FakeTextBox& box, const platform::KeyPress& key)
{
    box.take_focus();
    if (window.press(key) || (box.on_key && box.on_key(key)))
        return;
    if (key.key == platform::Key::character)
        box.take_character(key.character);
    else if (key.key == platform::Key::enter)
        box.take_character(common::cr_lf);
}

void FakeForm1::press_in(FakeHintBox& box, const platform::KeyPress& key)
{
    box.take_focus();
    if (!window.press(key) && box.on_key)
        box.on_key(key);
}

void FakeForm1::type(FakeTextBox& box, std::string_view text)
{
    while (!text.empty()) {
        const std::string_view character = common::first_code_points(text, 1);
        press_in(box, {platform::Key::character, std::string(character)});
        text.remove_prefix(character.size());
    }
}

FakeButton& FakeForm1::toolbar(int number)
{
    return pb.at(static_cast<std::size_t>(number - 1));
}

} // namespace cuedrill::fakes
