#include "drill/status_line.h"

#include "common/colour.h"

#include <utility>

namespace cuedrill::drill {

void StatusLine::ShowStatus(std::string_view text, int seconds)
{
    prepare(text, seconds);
    tell();
}

/// Sets the text and how many seconds it stays; 0 means until the next text. Draws nothing yet.
platform::Line& StatusLine::prepare(std::string_view text, int seconds)
{
    if (!text.empty() && waiting_ && waiting_->waiting == Waiting::gives_way)
        waiting_.reset();
    until_question_ = false;
    about_list_ = false;
    about_due_ = false;
    // Monotonic, so that setting the system clock does not affect how long a text stays.
    expiry_ = seconds != 0 ? std::optional(clock_.steady_seconds() + seconds) : std::nullopt;
    platform::Line& line = screen_.told.status;
    line.text = text;
    line.bold = false;
    line.background.reset();
    line.alignment = platform::Alignment::left;
    return line;
}

/// Draws the line and has assistive technology read it out.
void StatusLine::tell()
{
    ++screen_.told.status.news;
    screen_.repaint();
}

void StatusLine::ask_for_verdict()
{
    platform::Line& line = prepare("Press '+' or '-' to indicate success or failure", 0);
    until_question_ = true;
    line.background = common::pure_red;
    line.alignment = platform::Alignment::emphasised;
    line.bold = true;
    tell();
}

void StatusLine::show_right()
{
    platform::Line& line = prepare("OK", 1);
    line.background = common::pure_green;
    line.bold = true;
    screen_.repaint();
}

void StatusLine::show_wrong()
{
    prepare("", 0).background = common::pure_red;
    tell();
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

void StatusLine::show_when_free(std::string text, Waiting waiting)
{
    if (waiting == Waiting::stays || !waiting_ || waiting_->waiting == Waiting::gives_way)
        waiting_ = {std::move(text), waiting};
}

void StatusLine::expire()
{
    if (expiry_ && clock_.steady_seconds() >= *expiry_)
        reset_status();
    // An empty line with a colour is a text, too.
    const platform::Line& line = screen_.told.status;
    if (waiting_ && line.text.empty() && !line.background)
        ShowStatus(std::exchange(waiting_, std::nullopt)->text, status_seconds);
}

} // namespace cuedrill::drill
