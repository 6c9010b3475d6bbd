#pragma once

#include "platform/desktop.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace cuedrill::fakes {

/// A desktop whose boxes are answered by what the test expects. A box that is not the next expected one fails the
/// test and is answered as if it were closed; so does, at the end, an expected box that was never shown.
class FakeDesktop : public platform::Desktop {
public:
    FakeDesktop();
    FakeDesktop(const FakeDesktop&) = delete;
    FakeDesktop& operator=(const FakeDesktop&) = delete;
    ~FakeDesktop() override;

    /// The next box has this text, whatever its icon and title.
    void expect_box(std::string text, platform::BoxAnswer answer = platform::BoxAnswer::ok);

    /// The next box is equal to `box` in everything but its marks.
    void expect_box_like(platform::MessageBox box, platform::BoxAnswer answer);

    /// The next box asks for a line of text; no answer is Cancel.
    void expect_input(std::string prompt, std::optional<std::string> answer);

    /// The next box asks for a file to open; an empty choice is Cancel.
    void expect_file(platform::ChosenFile chosen);

    /// The next box asks for a file to write; an empty choice is Cancel.
    void expect_save_file(platform::ChosenFile chosen);

    /// Fails the test for every expected box that was not shown so far, and forgets them.
    void check_all_shown();

    platform::BoxAnswer message_box(const platform::MessageBox& box) override;
    std::optional<std::string> input_box(const platform::InputBox& box) override;
    platform::ChosenFile open_file_dialog(const platform::FileDialog& dialog) override;
    platform::ChosenFile save_file_dialog(const platform::FileDialog& dialog) override;
    void pump() override;
    void beep() override;
    void set_pointer(platform::Pointer pointer) override;

    [[noreturn]] void end_program();

    std::vector<platform::MessageBox> boxes;
    std::vector<platform::InputBox> inputs;
    std::vector<platform::FileDialog> file_dialogs;

    /// Runs while a box of any kind is shown, after it was recorded; may throw common::ProgramEnded.
    std::function<void()> on_box;
    /// Runs inside every pump; may throw common::ProgramEnded.
    std::function<void()> on_pump;

    int pumps = 0;
    int beeps = 0;
    int pointer_depth = 0; ///< how often the pointer was set to busy and not yet back
    int ends = 0;          ///< how often the program was ended

private:
    struct Expected;

    void run_box_hook() const;
    /// The next expected box when it is of that kind; otherwise the test fails and the box stays expected.
    template <class Kind>
    std::optional<Kind> take(const std::string& shown);

    std::vector<Expected> expected_; ///< the next one first
};

} // namespace cuedrill::fakes
