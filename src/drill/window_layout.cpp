#include "drill/window_layout.h"

namespace cuedrill::drill {
namespace {

/// Room left of, between and right of the buttons, in twips.
constexpr common::Twips margin = 100;

} // namespace

void WindowLayout::RelayoutWindow()
{
    const bool question = question_on_display();
    platform::Button* const focused = focused_button();
    m_form1.bot_other.set_visible(m_state.dialog == DialogState::AskKnown);
    m_form1.bot_yes.set_enabled(question || m_state.dialog == DialogState::AskToStart);
    // In the other states "No" asks for no verdict.
    m_form1.bot_no.set_enabled(question || m_state.dialog != DialogState::AskKnown);
    for (platform::MenuEntry* entry :
         {&m_menu.m_show_answer, &m_menu.m_set_success, &m_menu.m_set_failure, &m_menu.m_display_q_nr})
        entry->set_enabled(question);
    keep_focus(focused);
}

platform::Button* WindowLayout::focused_button() const
{
    for (platform::Button* button : {&m_form1.bot_yes, &m_form1.bot_no, &m_form1.bot_other}) {
        if (button->has_focus())
            return button;
    }
    return nullptr;
}

/// Who drills with the keyboard goes on with it: where the button with the focus has become unusable, the first usable
/// one gets it. It stands in for one that is only disabled, until that can be used again.
void WindowLayout::keep_focus(platform::Button* focused)
{
    if (focused == nullptr)
        return;
    const auto usable = [](const platform::Button* button) { return button->enabled() && button->visible(); };
    platform::Button* wanted = focused == m_stand_in ? m_displaced : focused;
    m_displaced = m_stand_in = nullptr;
    if (!usable(wanted)) {
        platform::Button* first_usable = nullptr;
        for (platform::Button* button : {&m_form1.bot_other, &m_form1.bot_no, &m_form1.bot_yes}) {
            if (usable(button))
                first_usable = button;
        }
        if (wanted->visible()) {
            m_displaced = wanted;
            m_stand_in = first_usable;
        }
        wanted = first_usable;
    }
    if (wanted != nullptr && !wanted->has_focus())
        wanted->set_focus();
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
