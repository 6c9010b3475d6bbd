#include "drill/window_layout.h"

#include <algorithm>

namespace cuedrill::drill {
namespace {

/// Space to the left and right of the buttons and between them, in twips.
constexpr common::Twips margin = 100;

const PlaceRow& row_of(SharedPlace place)
{
    return *std::find_if(place_table.begin(), place_table.end(),
                         [place](const PlaceRow& row) { return row.place == place; });
}

} // namespace

void WindowLayout::RelayoutWindow()
{
    platform::Button* const focused = focused_button();
    screen_.repaint();
    relayout_boxes();
    relayout_shared_place();
    relayout_dialog();
    relayout_commands();
    keep_focus(focused);
}

WindowLayout::DialogHold::~DialogHold()
{
    if (!layout_.dialog_held_)
        return;
    release();
    layout_.RelayoutWindow();
}

void WindowLayout::relayout_boxes()
{
    form1_.Text_q.set_locked(!is_enabled(Input::question_box));
    form1_.Text_a.set_locked(!is_enabled(Input::answer_box));
}

void WindowLayout::relayout_shared_place()
{
    const PlaceRow& shown = row_of(state_.shared_place);
    // Otherwise the toolkit would move the focus to whichever control comes next.
    if ((!shown.t_hint && form1_.t_hint.has_focus()) || (!shown.listav && form1_.listav.has_focus()))
        form1_.bot_focus.set_focus();
    const bool list_goes = form1_.listav.visible() && !shown.listav;
    form1_.frame_stats.set_visible(shown.frame_stats);
    form1_.panel_lista.set_visible(shown.panel_lista);
    form1_.t_hint.set_visible(shown.t_hint);
    form1_.listav.set_visible(shown.listav);
    if (!list_goes)
        return;
    status_.withdraw_about_list();
    // The list's status text may have replaced the request for a verdict.
    if (state_.verdict_requested())
        status_.ask_for_verdict();
}

void WindowLayout::relayout_dialog()
{
    if (dialog_held_)
        return;
    form1_.bot_other.set_visible(state_.dialog == DialogState::AskKnown);
    form1_.bot_yes.set_enabled(is_enabled(Input::yes));
    form1_.bot_no.set_enabled(is_enabled(Input::no));
    form1_.bot_other.set_enabled(is_enabled(Input::ignore));
}

void WindowLayout::relayout_commands()
{
    for (const CommandRow& row : command_table())
        commands_.set_enabled(row.command, is_enabled(row));
}

bool WindowLayout::is_enabled(const CommandRow& row) const
{
    return row.modes.at(static_cast<std::size_t>(mode())) && further_condition(row.command);
}

/// The condition that a command has besides its mode.
bool WindowLayout::further_condition(Command command) const
{
    switch (command) {
    case Command::show_stats:
        return row_of(state_.shared_place).show_stats;
    case Command::show_hints:
        // While the answer is being typed, the command shows the masked hint instead.
        return row_of(state_.shared_place).show_hints || (state_.TypingMode && !state_.hint_is_masked);
    case Command::let_me_type:
        return !course_.params.always_type;
    case Command::recall_list:
        return state_.list_built;
    default:
        return true;
    }
}

bool WindowLayout::is_enabled(Input input) const
{
    const auto row = std::find_if(input_table.begin(), input_table.end(),
                                  [input](const InputRow& one) { return one.input == input; });
    return row->modes.at(static_cast<std::size_t>(mode())) && (input != Input::yes || dialog_takes_yes()) &&
           (input != Input::no || dialog_takes_no());
}

/// A verdict requires that the answer is on display. The dialog can be in the state AskKnown without it, because
/// commands that show another question do not change the state.
bool WindowLayout::dialog_takes_yes() const
{
    switch (state_.dialog) {
    case DialogState::AskToStart:
        return true;
    case DialogState::OfferAnswer:
        return question_on_display();
    case DialogState::AskKnown:
        break;
    }
    return answer_on_display();
}

/// In the state AskToStart "No" ends the program. It is disabled while a question is on display, because the user might
/// take it for an answer.
bool WindowLayout::dialog_takes_no() const
{
    switch (state_.dialog) {
    case DialogState::AskToStart:
        return !question_on_display();
    case DialogState::OfferAnswer:
        return true;
    case DialogState::AskKnown:
        break;
    }
    return answer_on_display();
}

platform::Button* WindowLayout::focused_button() const
{
    for (platform::Button* button : {&form1_.bot_yes, &form1_.bot_no, &form1_.bot_other}) {
        if (button->has_focus())
            return button;
    }
    return nullptr;
}

/// Keeps the keyboard focus on the dialog buttons: if the focused button becomes unusable, the first usable one gets
/// the focus. If the old one is only disabled, it gets the focus back when it is enabled again.
void WindowLayout::keep_focus(platform::Button* focused)
{
    if (focused == nullptr)
        return;
    const auto usable = [](const platform::Button* button) { return button->enabled() && button->visible(); };
    platform::Button* wanted = focused == stand_in_ ? displaced_ : focused;
    displaced_ = stand_in_ = nullptr;
    if (!usable(wanted)) {
        platform::Button* first_usable = nullptr;
        for (platform::Button* button : {&form1_.bot_other, &form1_.bot_no, &form1_.bot_yes}) {
            if (usable(button))
                first_usable = button;
        }
        if (wanted->visible()) {
            displaced_ = wanted;
            stand_in_ = first_usable;
        }
        wanted = first_usable;
    }
    if (wanted != nullptr && !wanted->has_focus())
        wanted->set_focus();
}

void WindowLayout::lay_out_buttons()
{
    const bool three = state_.dialog == DialogState::AskKnown;
    const int count = three ? 3 : 2;
    const common::Twips width = (form1_.dialog_strip.width() - margin * count) / count;
    common::Twips left = margin;
    for (platform::Button* button : {&form1_.bot_yes, &form1_.bot_no, &form1_.bot_other}) {
        if (button == &form1_.bot_other && !three)
            break;
        button->set_width(width);
        button->set_left(left);
        left += width + margin;
    }
}

} // namespace cuedrill::drill
