#include "drill/status_line.h"

#include "common/colour.h"

namespace cuedrill::drill {

void StatusLine::ShowStatus(std::string_view text, int seconds)
{
    m_requesting = false;
    m_about_list = false;
    m_shown_at = m_clock.seconds_since_midnight();
    m_expiry = seconds != 0 ? m_shown_at + seconds : 0;
    m_label.set_bold(false);
    m_label.set_background(std::nullopt);
    m_label.set_alignment(platform::Alignment::left);
    m_label.set_caption(text);
}

void StatusLine::ask_for_verdict()
{
    ShowStatus("Press '+' or '-' to indicate success or failure", 0);
    m_requesting = true;
    m_label.set_background(common::pure_red);
    m_label.set_alignment(platform::Alignment::emphasised);
    m_label.set_bold(true);
}

void StatusLine::show_right()
{
    ShowStatus("OK", 1);
    m_label.set_background(common::pure_green);
    m_label.set_bold(true);
}

void StatusLine::show_wrong()
{
    reset_status();
    m_label.set_background(common::pure_red);
}

void StatusLine::withdraw_request()
{
    if (m_requesting)
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

void StatusLine::expire()
{
    if (m_expiry == 0)
        return;
    const double now = m_clock.seconds_since_midnight();
    // Behind midnight the seconds start again: a time that lies before the text was shown has passed as well.
    if (now >= m_expiry || now < m_shown_at)
        reset_status();
}

} // namespace cuedrill::drill
