#include "drill/context_help.h"

#include "common/text.h"
#include "drill/commands.h"

#include <cctype>
#include <map>
#include <string>

namespace cuedrill::drill {
namespace {

using platform::Screen;

constexpr const char* level_help =
    "How many questions are at this level, and how many of all that is. The last line counts level 5 and all above it. "
    "Questions that were never tested may be in no line.\r\n\r\nThe triangle marks the level to which your last "
    "verdict led. The coloured line with the sign \u25CE is the target level, where that is 5 or less.";

constexpr const char* due_help =
    "How many questions that were tested are due now, later today, and on each of the next six days if you give no "
    "more verdicts, and how many were never tested. Questions that have reached the target level are not asked any "
    "more and do not count.\r\n\r\nThe bars up to the last day share one scale. The bar of the new questions shows how "
    "many of "
    "all questions they are.";

constexpr const char* title = "Cuedrill - Help";

} // namespace

/// Adds the help to the text of `show_all`.
/// @return a function that shows this help alone.
std::function<void()> ContextHelp::note(std::string_view name, const char* text)
{
    all_ += std::string(name) + "\r\n" + text + "\r\n\r\n";
    return
        [this, text] { desktop_.message_box({.text = text, .icon = platform::BoxIcon::information, .title = title}); };
}

void ContextHelp::offer(std::string_view name, platform::Button& button, const char* text)
{
    button.offer_help(note(name, text));
}

void ContextHelp::offer(std::string_view name, std::initializer_list<platform::ScreenLine> lines, const char* text)
{
    const std::function<void()> ask = note(name, text);
    for (const platform::ScreenLine line : lines)
        form1_.screen.offer_help(line, ask);
}

void ContextHelp::show_all()
{
    desktop_.message_box({.text = "What the buttons and figures of the window are for:",
                          .icon = platform::BoxIcon::information,
                          .title = title,
                          .details = all_});
}

void ContextHelp::attach()
{
    form1_.window.on_help = [this] { show_all(); };
    attach_toolbar();
    attach_dialog();
    attach_question_figures();
    attach_statistics();
    // A click on a list always chooses a line, so its help is shown only together with all the rest.
    for (const CommandRow& row : command_table()) {
        if (row.control_key != no_key)
            note(std::string("Ctrl+") + static_cast<char>(std::toupper(row.control_key)), row.help);
    }
    note("List",
         "A line for each record, with its level on the left. Click on a line, or go to it with the arrow keys and "
         "press Enter, to have its question on display. Escape closes the list; \"Recall last list\" shows it again.");
}

void ContextHelp::attach_toolbar()
{
    std::map<int, const CommandRow*> buttons;
    for (const CommandRow& row : command_table()) {
        if (row.button)
            buttons[row.button->number] = &row;
        else if (row.entry && row.help != nullptr)
            // A click on a menu entry chooses it, so its help is shown with all the rest only.
            note(common::replace_all(row.entry->caption, "&", ""), row.help);
    }
    for (const auto& [number, row] : buttons)
        offer(common::replace_all(row->button->caption, "&", ""), *form1_.pb.at(static_cast<std::size_t>(number - 1)),
              row->help);
}

void ContextHelp::attach_dialog()
{
    offer("Prompt", {&Screen::panel_dialog}, "What the program asks you. Answer with the buttons beside it.");
    offer("Yes", form1_.bot_yes,
          "Answers what is asked with Yes. To \"Did you know the answer?\" that is the verdict that you knew "
          "it; it can be given once the answer is shown. A click with the right button of the mouse means No.");
    offer("No", form1_.bot_no,
          "Answers what is asked with No. While no question is on display yet, that ends the program; when you are "
          "offered the answer, it leaves the question without a verdict and asks another one; to \"Did you know the "
          "answer?\" it is the verdict that you did not know it, which can be given once the answer is shown.");
    offer("Ignore", form1_.bot_other,
          "Leaves the question without a verdict and asks another one. Its level stays as it is.");
    offer("Status", {&Screen::P_status}, "Tells what has just happened, or what to do next.");
}

void ContextHelp::offer_figures(std::initializer_list<Figure> figures)
{
    for (const Figure& figure : figures)
        offer(figure.name, {figure.caption, figure.value}, figure.text);
}

void ContextHelp::attach_question_figures()
{
    offer_figures({
        {"Level", &Screen::lab_q_level, &Screen::PANEL_Q_LEVEL,
         "The level of the question on display, from 0 to 10. The higher it is, the longer the question rests before "
         "it is asked again."},
        {"Attempts", &Screen::lab_q_attempts, &Screen::PANEL_Q_ATTEMPTS,
         "How often the question on display was judged in this direction since it was last saved."},
        {"Failures", &Screen::lab_fails, &Screen::PANEL_FAILS,
         "How often the question on display was judged as not known in this direction since it was last saved."},
        {"Elapsed", &Screen::lab_elapsed, &Screen::PANEL_ELAPSED,
         "How long ago the question on display was last judged, in hours and minutes. Empty when it never was."},
    });
}

void ContextHelp::attach_statistics()
{
    form1_.screen.offer_level_help(note("Levels", level_help));
    form1_.screen.offer_due_help(note("What is due", due_help));
    offer_figures({
        {"Total", &Screen::lab_total, &Screen::panel_total, "How many questions the course has."},
        {"Unpassed", &Screen::lab_nr_unpassed, &Screen::panel_nr_unpassed,
         "How many questions are below the target level. With a target above 5, all questions at level 5 or more count "
         "as well. Those that were never tested may not count."},
        {"Score today", &Screen::lab_score, &Screen::Panel_score,
         "The score of today: a success that leaves a question above level 1 gives a point, and a failure of a "
         "question above level 0 takes one away."},
        {"Open time", &Screen::lab_open_time, &Screen::panel_open_time,
         "How long the program has been running, in hours and minutes."},
        {"Time today", &Screen::lab_time_today, &Screen::panel_time_today,
         "How long you have worked with this course today, in hours and minutes."},
        {"Time ever", &Screen::lab_time_ever, &Screen::panel_time_ever,
         "How long you have ever worked with this course, in hours and minutes."},
        {"Time now", &Screen::lab_time_now, &Screen::Panel_time_now, "The time of day."},
    });
}

void ContextHelp::ShowContextHelpHint()
{
    desktop_.message_box({.text = "Context-specific help is available for some buttons and "
                                  "indicators, when they are enabled."
                                  "\r\n\r\n"
                                  "You know that context-help is available for a given button or indicator "
                                  "as the mouse pointer changes to an upright arrow when passing over it."
                                  "\r\n\r\n"
                                  "To have help on these buttons and indicators, "
                                  "press the shift key and click on the button or indicator at the same time."});
}

} // namespace cuedrill::drill
