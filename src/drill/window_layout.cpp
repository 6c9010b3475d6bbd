#include "drill/window_layout.h"

namespace cuedrill::drill {
namespace {

/// Room left of, between and right of the buttons, in twips.
constexpr common::Twips margin = 100;

} // namespace

void WindowLayout::RelayoutWindow()
{
    const bool question = question_on_display();
    m_form1.bot_yes.set_enabled(question || m_state.dialog == DialogState::AskToStart);
    // In the other states "No" asks for no verdict.
    m_form1.bot_no.set_enabled(question || m_state.dialog != DialogState::AskKnown);
    for (platform::MenuEntry* entry :
         {&m_menu.m_show_answer, &m_menu.m_set_success, &m_menu.m_set_failure, &m_menu.m_display_q_nr})
        entry->set_enabled(question);
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
