#include "drill/toolbar.h"

#include <array>
#include <string>
#include <string_view>

namespace cuedrill::drill {
namespace {

struct ToolbarRow {
    const char* caption;
    char key; ///< 0 for none
    const char* help_text;
    common::Twips extra_width; ///< beside the caption
};

constexpr std::array<ToolbarRow, platform::toolbar_buttons> toolbar_table{{
    {"Next &Question", 'q', "display next question", 300},
    {"Show &Answer", 'a', "display answer", 300},
    {"Show &Stats", 's', "display statistics", 100},
    {"Show &Hints", 'h', "display hint", 200},
    {"Let me &Type", 't', "let me type the answer", 200},
    {"+", 0, "set success", 200},
    {"-", 0, "set failure", 200},
    {"&Edit", 'e', "modify question or answer", 100},
    {"&Insert", 'i', "insert new question and answer", 200},
    {"&Save", 0, "save edited question and answer", 200},
    {"&Delete", 'd', "delete question and answer", 220},
}};

constexpr int insert_button = 9;

/// The letters with which Alt opens the menus of the bar.
constexpr std::string_view letters_of_menus = "flasio";

const ToolbarRow& row(int index)
{
    return toolbar_table.at(static_cast<std::size_t>(index - 1));
}

} // namespace

common::Twips SnapToGrid(common::Twips x)
{
    const common::Twips beyond = x % common::twips_per_pixel;
    return x - (beyond < 0 ? beyond + common::twips_per_pixel : beyond);
}

platform::Button& Toolbar::pb(int index) const
{
    return *m_form1.pb.at(static_cast<std::size_t>(index - 1));
}

void Toolbar::attach()
{
    SetToolbarCaptions();
    SetToolbarTooltips();
    for (int index = 1; index <= platform::toolbar_buttons; ++index)
        pb(index).on_click = [this, index] { RunToolbarCommand(index); };
}

void Toolbar::SetToolbarCaptions()
{
    for (int index = 1; index <= platform::toolbar_buttons; ++index) {
        pb(index).set_caption(row(index).caption);
        pb(index).show_access_letter(button_with_access_letter(row(index).key).has_value());
        pb(index).set_width(pb(index).width() + SnapToGrid(row(index).extra_width));
    }
}

void Toolbar::SetToolbarTooltips()
{
    for (int index = 1; index <= platform::toolbar_buttons; ++index)
        pb(index).set_tool_tip(std::string(" ") + row(index).help_text + " ");
}

std::optional<int> Toolbar::button_with_key(char key)
{
    for (int index = 1; index <= platform::toolbar_buttons; ++index) {
        if (key != 0 && key == row(index).key)
            return index;
    }
    return std::nullopt;
}

std::optional<int> Toolbar::button_with_access_letter(char key)
{
    return letters_of_menus.find(key) == std::string_view::npos ? button_with_key(key) : std::nullopt;
}

void Toolbar::RunToolbarCommand(int index)
{
    if (pb(index).enabled())
        run(index);
}

void Toolbar::run(int index)
{
    m_form1.bot_focus.set_focus();
    switch (index) {
    case 1:
        return m_dialog.NextQuestionCommand();
    case 2:
        return m_dialog.ShowAnswerCommand();
    case statistics_button:
        return m_aids.m_view_stats();
    case 4:
        return m_aids.m_view_hints();
    case 5:
        return m_aids.m_let_me_type();
    case 6:
        return m_dialog.SucceedAndNext();
    case 7:
        return m_dialog.FailAndNext();
    case 8:
        return m_editor.begin_edit();
    case insert_button:
        return m_editor.begin_new_record();
    case save_button:
        return save();
    default:
        return m_editor.delete_record();
    }
}

/// Who inserts one record often inserts another one. While the editor stays open the button is disabled.
void Toolbar::save()
{
    m_editor.save_record();
    if (pb(insert_button).enabled())
        pb(insert_button).set_focus();
}

} // namespace cuedrill::drill
