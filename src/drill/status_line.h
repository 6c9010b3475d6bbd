#pragma once

#include "drill/screen.h"
#include "platform/clock.h"

#include <optional>
#include <string>
#include <string_view>

namespace cuedrill::drill {

/// How long a message stays in the status line, in seconds, unless it belongs to a verdict.
inline constexpr int status_seconds = 5;

/// The status line `P_status`.
class StatusLine {
public:
    StatusLine(MainScreen& screen, platform::Clock& clock) : screen_(screen), clock_(clock) {}

    /// Shows `text` for `seconds` seconds; 0 means until the next text.
    void ShowStatus(std::string_view text, int seconds);

    /// Asks, with emphasis, for the verdict on the revealed answer.
    void ask_for_verdict();

    /// Shows, on green for a second, that the answer was right. It is not read out: by the time assistive technology
    /// reads the line, the score has replaced it.
    void show_right();

    /// Shows an empty red line while a box says what was wrong.
    void show_wrong();

    /// Clears the line.
    void reset_status() { ShowStatus("", 0); }

    /// Shows a text that holds only until the next question; it is cleared then.
    void show_until_question(std::string_view text, int seconds);

    /// Clears the text of `ask_for_verdict` or `show_until_question`, if it is still there.
    void withdraw_request();

    /// Shows a text about the list of records; it is cleared when the list is closed.
    void show_about_list(std::string_view text, int seconds);
    void withdraw_about_list();

    /// Shows when the next question is due; the text is cleared when the next question is asked.
    void show_about_due(std::string_view text, int seconds);
    void withdraw_about_due();
    [[nodiscard]] bool about_due() const { return about_due_; }

    /// Whether a text that waits for the line is dropped when another one is shown before it.
    enum class Waiting { gives_way, stays };

    /// Shows `text` for `status_seconds` as soon as `expire` finds the line empty, so that it takes no other text away.
    /// One text can wait; one that stays is not replaced by one that gives way.
    void show_when_free(std::string text, Waiting waiting);

    /// Whether a text that stays waits for the line.
    [[nodiscard]] bool is_awaited() const { return waiting_ && waiting_->waiting == Waiting::stays; }

    /// Clears the line when its time is over, and shows the text that waits. Call it several times a second.
    void expire();

private:
    struct WaitingText {
        std::string text;
        Waiting waiting = Waiting::gives_way;
    };

    platform::Line& prepare(std::string_view text, int seconds);
    void tell();

    MainScreen& screen_;
    platform::Clock& clock_;
    bool until_question_ = false;
    bool about_list_ = false;
    bool about_due_ = false;
    std::optional<double> expiry_; ///< monotonic time in seconds; std::nullopt for a text that stays
    std::optional<WaitingText> waiting_;
};

} // namespace cuedrill::drill
