#include "drill/status_line.h"

#include "common/colour.h"

namespace cuedrill::drill {

void StatusLine::ShowStatus(std::string_view text, int seconds)
{
    prepare(seconds);
    label_.set_caption(text);
}

/// Makes the line ready for a text that stays for so many seconds, or for 0 until the next one.
void StatusLine::prepare(int seconds)
{
    until_question_ = false;
    about_list_ = false;
    about_due_ = false;
    // Not the time of day: a text must neither stay nor go because somebody puts the clock.
    expiry_ = seconds != 0 ? std::optional(clock_.steady_seconds() + seconds) : std::nullopt;
    label_.set_bold(false);
    label_.set_background(std::nullopt);
    label_.set_alignment(platform::Alignment::left);
}

void StatusLine::ask_for_verdict()
{
    ShowStatus("Press '+' or '-' to indicate success or failure", 0);
    until_question_ = true;
    label_.set_background(common::pure_red);
    label_.set_alignment(platform::Alignment::emphasised);
    label_.set_bold(true);
}

void StatusLine::show_right()
{
    prepare(1);
    label_.set_untold_caption("OK");
    label_.set_background(common::pure_green);
    label_.set_bold(true);
}

void StatusLine::show_wrong()
{
    reset_status();
    label_.set_background(common::pure_red);
}

void StatusLine::show_until_question(std::string_view text, int seconds)
{
    ShowStatus(text, seconds);
    until_question_ = true;
}

void StatusLine::withdraw_request()
{
    if (until_question_)
        reset_status();
}

void StatusLine::show_about_list(std::string_view text, int seconds)
{
    ShowStatus(text, seconds);
    about_list_ = true;
}

void StatusLine::withdraw_about_list()
{
    if (about_list_)
        reset_status();
}

void StatusLine::show_about_due(std::string_view text, int seconds)
{
    ShowStatus(text, seconds);
    about_due_ = true;
}

void StatusLine::withdraw_about_due()
{
    if (about_due_)
        reset_status();
}

void StatusLine::expire()
{
    if (expiry_ && clock_.steady_seconds() >= *expiry_)
        reset_status();
}

} // namespace cuedrill::drill
