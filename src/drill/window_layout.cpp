#include "drill/window_layout.h"

namespace cuedrill::drill {
namespace {

/// Room left of, between and right of the buttons, in twips.
constexpr common::Twips margin = 100;

} // namespace

void WindowLayout::RelayoutWindow()
{
    const bool question = question_on_display();
    const platform::Button* const focused = focused_button();
    m_form1.bot_other.set_visible(m_state.dialog == DialogState::AskKnown);
    m_form1.bot_yes.set_enabled(question || m_state.dialog == DialogState::AskToStart);
    // In the other states "No" asks for no verdict.
    m_form1.bot_no.set_enabled(question || m_state.dialog != DialogState::AskKnown);
    for (platform::MenuEntry* entry :
         {&m_menu.m_show_answer, &m_menu.m_set_success, &m_menu.m_set_failure, &m_menu.m_display_q_nr})
        entry->set_enabled(question);
    keep_focus(focused);
}

const platform::Button* WindowLayout::focused_button() const
{
    for (const platform::Button* button : {&m_form1.bot_yes, &m_form1.bot_no, &m_form1.bot_other}) {
        if (button->has_focus())
            return button;
    }
    return nullptr;
}

/// Who drills with the keyboard goes on with it: where the button with the focus has become unusable, the first usable
/// one gets it.
void WindowLayout::keep_focus(const platform::Button* focused)
{
    const auto usable = [](const platform::Button& button) { return button.enabled() && button.visible(); };
    if (focused == nullptr || (usable(*focused) && focused->has_focus()))
        return;
    for (platform::Button* button : {&m_form1.bot_yes, &m_form1.bot_no, &m_form1.bot_other}) {
        if (usable(*button) && (button == focused || !usable(*focused))) {
            button->set_focus();
            return;
        }
    }
}

void WindowLayout::lay_out_buttons()
{
    const bool three = m_state.dialog == DialogState::AskKnown;
    const int count = three ? 3 : 2;
    const common::Twips width = (m_form1.dialog_strip.width() - margin * count) / count;
    common::Twips left = margin;
    for (platform::Button* button : {&m_form1.bot_yes, &m_form1.bot_no, &m_form1.bot_other}) {
        if (button == &m_form1.bot_other && !three)
            break;
        button->set_width(width);
        button->set_left(left);
        left += width + margin;
    }
}

} // namespace cuedrill::drill
