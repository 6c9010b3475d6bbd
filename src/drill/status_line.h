#pragma once

#include "drill/displays.h"
#include "platform/clock.h"
#include "platform/controls.h"

#include <optional>

namespace cuedrill::drill {

/// How long a message of the status line stays that belongs to no verdict, in seconds.
inline constexpr int status_seconds = 5;

/// The status line `P_status`.
class StatusLine : public StatusDisplay {
public:
    StatusLine(platform::Label& P_status, platform::Clock& clock) : m_label(P_status), m_clock(clock) {}

    void ShowStatus(std::string_view text, int seconds) override;

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
    [[nodiscard]] bool about_due() const { return m_about_due; }

    /// Clears the line when its time has passed; called a few times a second.
    void expire();

private:
    void prepare(int seconds);

    platform::Label& m_label;
    platform::Clock& m_clock;
    bool m_until_question = false;
    bool m_about_list = false;
    bool m_about_due = false;
    std::optional<double> m_expiry; ///< in steady seconds; nothing for a text that stays
};

/// The status line for what is told about the time of the next question.
class DueStatus : public StatusDisplay {
public:
    explicit DueStatus(drill::StatusLine& status) : m_status(status) {}

    void ShowStatus(std::string_view text, int seconds) override { m_status.show_about_due(text, seconds); }

private:
    drill::StatusLine& m_status;
};

} // namespace cuedrill::drill
