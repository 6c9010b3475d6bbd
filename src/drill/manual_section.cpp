#include "drill/manual_section.h"

namespace cuedrill::drill {
namespace {

/// The section about the drill itself, while nothing takes the place of the statistics.
const char* section_of_drill(Mode mode, const DrillState& state)
{
    switch (mode) {
    case Mode::nothing:
        // After the drill has begun, there is no question because none is mature.
        return state.dialog == DialogState::AskToStart ? "first-drill" : "next";
    case Mode::question:
        return state.TypingMode ? "typing" : "first-drill";
    case Mode::answer:
        return "levels";
    case Mode::empty_course:
        return "own-course";
    case Mode::new_record:
    case Mode::edit_record:
        break;
    }
    return "writing";
}

} // namespace

const char* manual_section(Mode mode, const DrillState& state)
{
    // A list that was there before stays while a record is being written.
    const bool editing = mode == Mode::new_record || mode == Mode::edit_record;
    if (!editing && state.shared_place == SharedPlace::list)
        return "lists";
    if (!editing && state.shared_place == SharedPlace::hint)
        return "hints";
    return section_of_drill(mode, state);
}

} // namespace cuedrill::drill
