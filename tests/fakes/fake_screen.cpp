#include "fakes/fake_screen.h"

#include <algorithm>
#include <utility>

namespace cuedrill::fakes {
namespace {

std::string name_of(platform::ScreenLine line)
{
    return std::find_if(platform::screen_lines.begin(), platform::screen_lines.end(),
                        [line](const platform::NamedLine& one) { return one.line == line; })
        ->name;
}

} // namespace

void FakeScreen::show(const platform::Screen& screen)
{
    const platform::Screen before = std::exchange(shown, screen);
    for (const platform::NamedLine& named : platform::screen_lines)
        note_line(named.name, screen.*named.line, before.*named.line);
}

void FakeScreen::note_line(const std::string& name, const platform::Line& line, const platform::Line& before) const
{
    if (line.news != before.news)
        note(name, "caption", line.text);
    else if (line.text != before.text)
        note(name, "untold caption", line.text);
    if (line.visible != before.visible)
        note(name, "visible", line.visible ? "true" : "false");
}

void FakeScreen::note(const std::string& name, const char* property, const std::string& value) const
{
    if (journal != nullptr)
        journal->push_back(name + "." + property + "=" + value);
}

void FakeScreen::offer_help(platform::ScreenLine line, const std::function<void()>& ask)
{
    help_[name_of(line)] = ask;
}

void FakeScreen::offer_level_help(const std::function<void()>& ask)
{
    level_help_ = ask;
}

void FakeScreen::offer_due_help(const std::function<void()>& ask)
{
    due_help_ = ask;
}

void FakeScreen::shift_click(platform::ScreenLine line) const
{
    const auto help = help_.find(name_of(line));
    if (help != help_.end())
        help->second();
}

void FakeScreen::shift_click_level() const
{
    if (level_help_)
        level_help_();
}

void FakeScreen::shift_click_due() const
{
    if (due_help_)
        due_help_();
}

} // namespace cuedrill::fakes
