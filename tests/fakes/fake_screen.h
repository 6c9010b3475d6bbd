#pragma once

#include "fakes/fake_control.h"
#include "platform/screen.h"

#include <functional>
#include <map>
#include <string>

namespace cuedrill::fakes {

/// Keeps the screen that was shown last, and notes in the journal what has changed.
class FakeScreen : public platform::ScreenView {
public:
    explicit FakeScreen(Journal* shared_journal = nullptr) : journal(shared_journal) {}

    void show(const platform::Screen& screen) override;
    void offer_help(platform::ScreenLine line, const std::function<void()>& ask) override;
    void offer_level_help(const std::function<void()>& ask) override;
    void offer_due_help(const std::function<void()>& ask) override;

    /// The user holds Shift and clicks on the line.
    void shift_click(platform::ScreenLine line) const;
    /// The same on one of the level panels.
    void shift_click_level() const;
    /// The same on the picture of what is due.
    void shift_click_due() const;

    platform::Screen shown;
    Journal* journal;

private:
    void note(const std::string& name, const char* property, const std::string& value) const;
    void note_line(const std::string& name, const platform::Line& line, const platform::Line& before) const;

    std::map<std::string, std::function<void()>> help_; ///< by the names of the lines
    std::function<void()> level_help_;
    std::function<void()> due_help_;
};

} // namespace cuedrill::fakes
