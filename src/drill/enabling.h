#pragma once

#include "drill/drill_state.h"
#include "drill/mode.h"

#include <array>

namespace cuedrill::drill {

/// Controls that take input besides the commands: the dialog buttons and the two text boxes.
enum class Input { yes, no, ignore, question_box, answer_box };

struct InputRow {
    Input input;
    InModes modes; ///< modes in which it is enabled
};

/// "Yes" and "No" have further conditions: a verdict requires that the answer is shown, "Show the answer?" requires a
/// question on display, and "No" ends the program only while no question is on display.
inline constexpr std::array input_table{
    //                            empty, nothing, question, answer, new, edit
    InputRow{Input::yes, {true, true, true, true, false, false}},
    InputRow{Input::no, {true, true, true, true, false, false}},
    InputRow{Input::ignore, {true, true, true, true, false, false}},
    InputRow{Input::question_box, {false, false, false, false, true, true}},
    InputRow{Input::answer_box, {false, false, true, false, true, true}},
};

/// What is visible and which commands are enabled, depending on what the shared area shows.
struct PlaceRow {
    SharedPlace place;
    bool frame_stats;
    bool panel_lista;
    bool t_hint;
    bool listav;
    bool show_stats; ///< enabled, if the mode allows it as well
    bool show_hints;
};

inline constexpr std::array place_table{
    //                               frame_stats, panel_lista, t_hint, listav, show_stats, show_hints
    PlaceRow{SharedPlace::statistics, true, false, false, false, false, true},
    PlaceRow{SharedPlace::hint, false, true, true, false, true, false},
    PlaceRow{SharedPlace::list, false, true, false, true, true, true},
};

} // namespace cuedrill::drill
