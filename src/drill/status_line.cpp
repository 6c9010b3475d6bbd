#include "drill/status_line.h"

#include "common/colour.h"

namespace cuedrill::drill {

void StatusLine::ShowStatus(std::string_view text, int seconds)
{
    prepare(seconds);
    m_label.set_caption(text);
}

/// Makes the line ready for a text that stays for so many seconds, or for 0 until the next one.
void StatusLine::prepare(int seconds)
{
    m_until_question = false;
    m_about_list = false;
    m_about_due = false;
    // Not the time of day: a text must neither stay nor go because somebody puts the clock.
    m_expiry = seconds != 0 ? std::optional(m_clock.steady_seconds() + seconds) : std::nullopt;
    m_label.set_bold(false);
    m_label.set_background(std::nullopt);
    m_label.set_alignment(platform::Alignment::left);
}

void StatusLine::ask_for_verdict()
{
    ShowStatus("Press '+' or '-' to indicate success or failure", 0);
    m_until_question = true;
    m_label.set_background(common::pure_red);
    m_label.set_alignment(platform::Alignment::emphasised);
    m_label.set_bold(true);
}

void StatusLine::show_right()
{
    prepare(1);
    m_label.set_untold_caption("OK");
    m_label.set_background(common::pure_green);
    m_label.set_bold(true);
}

void StatusLine::show_wrong()
{
    reset_status();
    m_label.set_background(common::pure_red);
}

void StatusLine::show_until_question(std::string_view text, int seconds)
{
    ShowStatus(text, seconds);
    m_until_question = true;
}

void StatusLine::withdraw_request()
{
    if (m_until_question)
        reset_status();
}

void StatusLine::show_about_list(std::string_view text, int seconds)
{
    ShowStatus(text, seconds);
    m_about_list = true;
}

void StatusLine::withdraw_about_list()
{
    if (m_about_list)
        reset_status();
}

void StatusLine::show_about_due(std::string_view text, int seconds)
{
    ShowStatus(text, seconds);
    m_about_due = true;
}

void StatusLine::withdraw_about_due()
{
    if (m_about_due)
        reset_status();
}

void StatusLine::expire()
{
    if (m_expiry && m_clock.steady_seconds() >= *m_expiry)
        reset_status();
}

} // namespace cuedrill::drill
