#pragma once

#include <array>
#include <string_view>

namespace cuedrill::support {

/// The version history, newest first. An entry is "NN^yymmdd.n) L: text": its number, the date, the number of the
/// change on that date, F (bug fixed), I (improvement) or N (new function), and what has changed for the user. The
/// entries of a release are followed by its version, which is that of its newest entry.
///
/// The number of the first entry is the last part of the program's version; the build reads it here, too.
inline constexpr auto version_entries = std::to_array<std::string_view>({
    "18^261121.13) N: A user manual, opened from the menu \"?\".",
    "17^261121.12) N: An agenda of your own, opened in a text editor by \"Open agenda\".",
    "16^261121.11) N: A message window beside the main window, which shows this history.",
    "15^261121.10) N: Export of questions and answers to a text file.",
    "14^261121.9) N: Lists of questions, search in questions and answers, similar questions.",
    "------------------------- VERSION 3.0.18 -----------------------------",
    "13^261121.8) F: After Escape in the editor a verdict went to a question not on display.",
    "12^261121.7) F: A key that was pressed as a box came up answered the box unread.",
    "11^261121.6) I: Screen readers are told each question, answer and verdict.",
    "10^261121.5) I: The window comes back where it was, in its size.",
    "09^261121.4) N: Help on each button and figure: Shift and a click, or F1.",
    "08^261121.3) N: Hints: words to put the answer together from, or its shape while you type it.",
    "07^261121.2) N: Answers can be typed; a wrong one is shown beside the right one.",
    "06^261121.1) N: Questions and answers are inserted, changed and deleted in the window.",
    "------------------------- VERSION 3.0.13 -----------------------------",
    "05^261120.5) F: The keyboard went dead when the button with the focus was disabled.",
    "04^261120.4) F: The day's score was lost when the program was ended by force.",
    "03^261120.3) N: Statistics beside the drill, and undo of the last verdict.",
    "02^261120.2) N: Import of questions and answers from text files.",
    "01^261120.1) N: The first course is drilled: question, answer, your verdict, the next level.",
    "------------------------- VERSION 3.0.05 -----------------------------",
});

} // namespace cuedrill::support
