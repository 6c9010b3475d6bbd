#pragma once

#include "platform/desktop.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace cuedrill::fakes {

/// A desktop whose boxes are answered as the test expects. An unexpected box fails the test and is answered as if it
/// were closed. An expected box that was never shown fails the test at the end.
class FakeDesktop : public platform::Desktop {
public:
    FakeDesktop();
    FakeDesktop(const FakeDesktop&) = delete;
    FakeDesktop& operator=(const FakeDesktop&) = delete;
    ~FakeDesktop() override;

    /// Expects a box with this text, whatever its icon and title.
    void expect_box(std::string text, platform::BoxAnswer answer = platform::BoxAnswer::ok);

    /// Expects a box equal to `box` in everything except the marks.
    void expect_box_like(platform::MessageBox box, platform::BoxAnswer answer);

    /// Expects an input box; std::nullopt is Cancel.
    void expect_input(std::string prompt, std::optional<std::string> answer);

    /// Expects a dialog for two columns among these; std::nullopt is Cancel.
    void expect_columns(std::vector<std::string> names, std::optional<platform::ChosenColumns> chosen);

    /// Expects a dialog for a file to open; an empty choice is Cancel.
    void expect_file(platform::ChosenFile chosen);

    /// Expects a dialog for a file to write; an empty choice is Cancel.
    void expect_save_file(platform::ChosenFile chosen);

    /// Fails the test for each expected box that was not shown yet, and forgets them.
    void check_all_shown();

    platform::BoxAnswer message_box(const platform::MessageBox& box) override;
    std::optional<std::string> input_box(const platform::InputBox& box) override;
    std::optional<platform::ChosenColumns> columns_box(const platform::ColumnsBox& box) override;
    platform::ChosenFile open_file_dialog(const platform::FileDialog& dialog) override;
    platform::ChosenFile save_file_dialog(const platform::FileDialog& dialog) override;
    void pump() override;
    void beep() override;
    void set_pointer(platform::Pointer pointer) override;

    [[noreturn]] void end_program();

    std::vector<platform::MessageBox> boxes;
    std::vector<platform::InputBox> inputs;
    std::vector<platform::ColumnsBox> columns_boxes;
    std::vector<platform::FileDialog> file_dialogs;

    /// Called while a box of any kind is shown, after it was recorded; may throw common::ProgramEnded.
    std::function<void()> on_box;
    /// Called during every pump; may throw common::ProgramEnded.
    std::function<void()> on_pump;

    int pumps = 0;
    int beeps = 0;
    int pointer_depth = 0; ///< calls that set the pointer to busy minus those that set it back
    int ends = 0;          ///< how often end was called

private:
    struct Expected;

    void run_box_hook() const;
    /// Removes and returns the next expected box if it is of this kind; otherwise fails the test and keeps the box.
    template <class Kind>
    std::optional<Kind> take(const std::string& shown);

    std::vector<Expected> expected_; ///< in order
};

} // namespace cuedrill::fakes
