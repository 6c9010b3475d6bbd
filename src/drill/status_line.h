#pragma once

#include "drill/screen.h"
#include "platform/clock.h"

#include <optional>
#include <string_view>

namespace cuedrill::drill {

/// How long a message of the status line stays that belongs to no verdict, in seconds.
inline constexpr int status_seconds = 5;

/// The status line `P_status`.
class StatusLine {
public:
    StatusLine(MainScreen& screen, platform::Clock& clock) : screen_(screen), clock_(clock) {}

    /// Shows `text` for `seconds` seconds; 0 is until the next text.
    void ShowStatus(std::string_view text, int seconds);

    /// Asks, with emphasis, for the verdict on the answer that has been revealed.
    void ask_for_verdict();

    /// Shows, on green, that the answer was right; it stays for a second. Whoever reads the line when assistive
    /// technology gets to it finds the score there already, so it is not told from here.
    void show_right();

    /// Shows nothing but a red line, while a box tells what was wrong.
    void show_wrong();

    /// Clears the line.
    void reset_status() { ShowStatus("", 0); }

    /// Shows a text that another question makes untrue; it goes with that.
    void show_until_question(std::string_view text, int seconds);

    /// Takes the request of `ask_for_verdict` away, and what `show_until_question` told, if it is still there.
    void withdraw_request();

    /// Shows a text about the list of records; it goes with the list.
    void show_about_list(std::string_view text, int seconds);
    void withdraw_about_list();

    /// Shows when the next question is due; it goes with the next question.
    void show_about_due(std::string_view text, int seconds);
    void withdraw_about_due();
    [[nodiscard]] bool about_due() const { return about_due_; }

    /// Clears the line when its time has passed; called a few times a second.
    void expire();

private:
    platform::Line& prepare(std::string_view text, int seconds);
    void tell();

    MainScreen& screen_;
    platform::Clock& clock_;
    bool until_question_ = false;
    bool about_list_ = false;
    bool about_due_ = false;
    std::optional<double> expiry_; ///< in steady seconds; nothing for a text that stays
};

} // namespace cuedrill::drill
