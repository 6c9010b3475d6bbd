#include "drill/context_help.h"

#include "common/text.h"

#include <array>
#include <string>

namespace cuedrill::drill {
namespace {

constexpr std::array<const char*, platform::toolbar_buttons> toolbar_help{
    "Asks the next question. The one on display gets no verdict; it is marked as shown, so that it does not come again "
    "at once. While you are typing or changing a record, you are asked whether to save it first.\r\n\r\nKey: Q",
    "Shows the answer. Then press + if you knew it, or - if you did not.\r\n\r\nKeys: A, or Enter while the answer box "
    "is empty; * in the answer box, unless you are typing the answer",
    "Shows the statistics of the course in place of the hint or the list.\r\n\r\nKey: S",
    "Shows words from which you can put the answer together: click them in their order, or go to them with Tab and the "
    "arrow keys and choose with Enter. One wrong word ends the question as not known.\r\n\r\nWhile you are typing the "
    "answer, shows its shape instead: the letters A to Z and the digits are hidden.\r\n\r\nAn answer that you type "
    "after a hint counts as not known.\r\n\r\nKey: H, outside of the boxes; Escape leaves them",
    "Puts the caret into the answer box. Type the answer and press Enter to have it judged; upper and lower case do "
    "not matter. Until the answer is shown, *, + and - are ordinary characters.\r\n\r\nKey: T",
    "You knew the answer: the question's level rises as far as the time since its last test allows, and the next "
    "question is asked.\r\n\r\nKey: +, once the answer is shown",
    "You did not know the answer: the question goes back to level 0, and the next question is asked.\r\n\r\nKey: -, "
    "once the answer is shown",
    "Lets you change the question on display and its answer. When you save it, the question starts its history again: "
    "attempts, failures and level go back to 0, in both directions.\r\n\r\nKey: E",
    "Empties both boxes for a new question and its answer. Texts that you left unsaved come back with Ctrl+Z "
    "in each box.\r\n\r\nKey: I",
    "Stores the question and the answer that you have typed. Blanks around them are dropped; 200 characters fit into "
    "each.",
    "Deletes the question on display and its answer, after asking you. This cannot be undone. Without a question on "
    "display it only empties the boxes.\r\n\r\nKey: D",
};

constexpr const char* level_help =
    "How many questions are at this level, and how many of all that is. The last line counts level 5 and all above it. "
    "Questions that were never tested may be in no line.\r\n\r\nThe triangle marks the level to which your last "
    "verdict led. The coloured line with the sign \u25CE is the target level, where that is 5 or less.";

constexpr const char* title = "Cuedrill - Help";

} // namespace

void ContextHelp::offer(std::string_view name, std::initializer_list<platform::HelpfulControl*> controls,
                        const char* text)
{
    for (platform::HelpfulControl* control : controls) {
        control->offer_help([this, text] {
            m_desktop.message_box({.text = text, .icon = platform::BoxIcon::information, .title = title});
        });
    }
    m_all += std::string(name) + "\r\n" + text + "\r\n\r\n";
}

void ContextHelp::show_all()
{
    m_desktop.message_box({.text = "What the buttons and figures of the window are for:",
                           .icon = platform::BoxIcon::information,
                           .title = title,
                           .details = m_all});
}

void ContextHelp::attach()
{
    attach_toolbar();
    attach_dialog();
    attach_question_figures();
    attach_statistics();
    // A list takes every click for the choice of a line, so its help is told with all the rest only.
    offer("List", {},
          "A line for each record, with its level on the left. Click on a line, or go to it with the arrow keys and "
          "press Enter, to have its question on display. Escape closes the list; \"Recall last list\" shows it again.");
}

void ContextHelp::attach_toolbar()
{
    for (std::size_t place = 0; place < toolbar_help.size(); ++place)
        offer(common::replace_all(m_form1.pb[place]->caption(), "&", ""), {m_form1.pb[place]}, toolbar_help[place]);
}

void ContextHelp::attach_dialog()
{
    offer("Prompt", {&m_form1.panel_dialog}, "What the program asks you. Answer with the buttons beside it.");
    offer("Yes", {&m_form1.bot_yes},
          "Answers what is asked with Yes. To \"Did you know the answer?\" that is the verdict that you knew "
          "it; it can be given once the answer is shown. A click with the right button of the mouse means No.");
    offer("No", {&m_form1.bot_no},
          "Answers what is asked with No. While no question is on display yet, that ends the program; when you are "
          "offered the answer, it leaves the question without a verdict and asks another one; to \"Did you know the "
          "answer?\" it is the verdict that you did not know it, which can be given once the answer is shown.");
    offer("Ignore", {&m_form1.bot_other},
          "Leaves the question without a verdict and asks another one. Its level stays as it is.");
    offer("Status", {&m_form1.P_status}, "Tells what has just happened, or what to do next.");
}

void ContextHelp::offer_figures(std::initializer_list<Figure> figures)
{
    for (const Figure& figure : figures)
        offer(figure.name, {&figure.caption, &figure.value}, figure.text);
}

void ContextHelp::attach_question_figures()
{
    offer_figures({
        {"Level", m_form1.lab_q_level, m_form1.PANEL_Q_LEVEL,
         "The level of the question on display, from 0 to 10. The higher it is, the longer the question rests before "
         "it is asked again."},
        {"Attempts", m_form1.lab_q_attempts, m_form1.PANEL_Q_ATTEMPTS,
         "How often the question on display was judged in this direction since it was last saved."},
        {"Failures", m_form1.lab_fails, m_form1.PANEL_FAILS,
         "How often the question on display was judged as not known in this direction since it was last saved."},
        {"Elapsed", m_form1.lab_elapsed, m_form1.PANEL_ELAPSED,
         "How long ago the question on display was last judged, in hours and minutes. Empty when it never was."},
    });
}

void ContextHelp::attach_statistics()
{
    const auto& levels = m_form1.panel_level;
    offer("Levels", {levels[0], levels[1], levels[2], levels[3], levels[4], levels[5]}, level_help);
    offer_figures({
        {"Total", m_form1.lab_total, m_form1.panel_total, "How many questions the course has."},
        {"Unpassed", m_form1.lab_nr_unpassed, m_form1.panel_nr_unpassed,
         "How many questions are below the target level. With a target above 5, all questions at level 5 or more count "
         "as well. Those that were never tested may not count."},
        {"Score today", m_form1.lab_score, m_form1.Panel_score,
         "The score of today: a success that leaves a question above level 1 gives a point, and a failure of a "
         "question above level 0 takes one away."},
        {"Open time", m_form1.lab_open_time, m_form1.panel_open_time,
         "How long the program has been running, in hours and minutes."},
        {"Time today", m_form1.lab_time_today, m_form1.panel_time_today,
         "How long you have worked with this course today, in hours and minutes."},
        {"Time ever", m_form1.lab_time_ever, m_form1.panel_time_ever,
         "How long you have ever worked with this course, in hours and minutes."},
        {"Time now", m_form1.lab_time_now, m_form1.Panel_time_now, "The time of day."},
    });
}

void ContextHelp::ShowContextHelpHint()
{
    m_desktop.message_box({.text = "Context-specific help is available for some buttons and "
                                   "indicators, when they are enabled."
                                   "\r\n\r\n"
                                   "You know that context-help is available for a given button or indicator "
                                   "as the mouse pointer changes to an upright arrow when passing over it."
                                   "\r\n\r\n"
                                   "To have help on these buttons and indicators, "
                                   "press the shift key and click on the button or indicator at the same time."});
}

} // namespace cuedrill::drill
