#include "drill/window_layout.h"

#include <algorithm>

namespace cuedrill::drill {
namespace {

/// Room left of, between and right of the buttons, in twips.
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
    // The toolkit would give the focus to whatever comes next.
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
    // The list may have covered the request.
    if (state_.AwaitingVerdict)
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

/// What a command needs beside its mode.
bool WindowLayout::further_condition(Command command) const
{
    switch (command) {
    case Command::show_stats:
        return row_of(state_.shared_place).show_stats;
    case Command::show_hints:
        // While the answer is being typed, the command means the other kind of hint.
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

/// The dialog takes no verdict on an answer that nobody has seen. It may ask for one: commands that go on to another
/// question leave its state as it is.
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

/// Before the first question of the dialog "No" ends the program; beside a question it would be taken for an answer.
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

/// Who drills with the keyboard goes on with it: where the button with the focus has become unusable, the first usable
/// one gets it. It stands in for one that is only disabled, until that can be used again.
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
