#pragma once

#include "common/errors.h"
#include "common/text.h"
#include "platform/desktop.h"

#include <cstddef>
#include <deque>
#include <functional>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace cuedrill::fakes {

/// A desktop whose boxes are answered by what the test expects. A box that is not the next expected one fails the
/// test and is answered as if it were closed; so does, at the end, an expected box that was never shown.
class FakeDesktop : public platform::Desktop {
public:
    FakeDesktop() = default;
    ~FakeDesktop() override
    {
        check_all_shown();
        if (pointer_depth != 0)
            ADD_FAILURE() << "The pointer is left busy.";
    }

    /// The next box has this text, whatever its icon and title.
    void expect_box(std::string text, platform::BoxAnswer answer = platform::BoxAnswer::ok)
    {
        platform::MessageBox box;
        box.text = std::move(text);
        m_expected.push_back(ExpectedBox{std::move(box), false, answer});
    }

    /// The next box is equal to `box` in everything but its marks.
    void expect_box_like(platform::MessageBox box, platform::BoxAnswer answer)
    {
        m_expected.push_back(ExpectedBox{std::move(box), true, answer});
    }

    /// The next box asks for a line of text; no answer is Cancel.
    void expect_input(std::string prompt, std::optional<std::string> answer)
    {
        m_expected.push_back(ExpectedInput{std::move(prompt), std::move(answer)});
    }

    /// The next box asks for a file to open; an empty choice is Cancel.
    void expect_file(platform::ChosenFile chosen) { m_expected.push_back(ExpectedFile{std::move(chosen)}); }

    /// The next box asks for a file to write; an empty choice is Cancel.
    void expect_save_file(platform::ChosenFile chosen) { m_expected.push_back(ExpectedSaveFile{{std::move(chosen)}}); }

    /// Fails the test for every expected box that was not shown so far, and forgets them.
    void check_all_shown()
    {
        for (const Expected& missing : m_expected)
            ADD_FAILURE() << "Never shown: " << describe(missing);
        m_expected.clear();
    }

    platform::BoxAnswer message_box(const platform::MessageBox& box) override
    {
        boxes.push_back(box);
        run_box_hook();
        const auto expected = take<ExpectedBox>("message box \"" + box.text + "\"");
        if (!expected)
            return closed(box);
        compare(*expected, box);
        if (!has_button(box, expected->answer)) {
            ADD_FAILURE() << "The answer is no button of the box \"" << box.text << "\"";
            return closed(box);
        }
        return expected->answer;
    }

    std::optional<std::string> input_box(const platform::InputBox& box) override
    {
        inputs.push_back(box);
        run_box_hook();
        const auto expected = take<ExpectedInput>("input box \"" + box.prompt + "\"");
        if (!expected)
            return std::nullopt;
        EXPECT_EQ(box.prompt, expected->prompt);
        if (expected->answer && common::code_points(*expected->answer) > static_cast<std::size_t>(box.longest))
            ADD_FAILURE() << "The answer cannot be typed, it is longer than " << box.longest << " characters.";
        return expected->answer;
    }

    platform::ChosenFile open_file_dialog(const platform::FileDialog& dialog) override
    {
        file_dialogs.push_back(dialog);
        run_box_hook();
        const auto expected = take<ExpectedFile>("file dialog \"" + dialog.title + "\"");
        return expected ? expected->chosen : platform::ChosenFile{};
    }

    platform::ChosenFile save_file_dialog(const platform::FileDialog& dialog) override
    {
        file_dialogs.push_back(dialog);
        run_box_hook();
        const auto expected = take<ExpectedSaveFile>("save dialog \"" + dialog.title + "\"");
        return expected ? expected->chosen : platform::ChosenFile{};
    }

    void pump() override
    {
        ++pumps;
        if (on_pump)
            on_pump();
    }

    void beep() override { ++beeps; }

    void set_pointer(platform::Pointer pointer) override
    {
        pointer_depth += pointer == platform::Pointer::busy ? 1 : -1;
        if (pointer_depth < 0)
            ADD_FAILURE() << "The pointer was set to normal more often than to busy.";
    }

    [[noreturn]] void end_program()
    {
        ++ends;
        throw common::ProgramEnded{};
    }

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
    struct ExpectedBox {
        platform::MessageBox box;
        bool whole = false; ///< everything counts, not only the text
        platform::BoxAnswer answer = platform::BoxAnswer::ok;
    };
    struct ExpectedInput {
        std::string prompt;
        std::optional<std::string> answer;
    };
    struct ExpectedFile {
        platform::ChosenFile chosen;
    };
    struct ExpectedSaveFile : ExpectedFile {};
    using Expected = std::variant<ExpectedBox, ExpectedInput, ExpectedFile, ExpectedSaveFile>;

    static std::string describe(const Expected& expected)
    {
        if (const auto* box = std::get_if<ExpectedBox>(&expected))
            return "message box \"" + box->box.text + "\"";
        if (const auto* input = std::get_if<ExpectedInput>(&expected))
            return "input box \"" + input->prompt + "\"";
        if (const auto* file = std::get_if<ExpectedFile>(&expected))
            return "file dialog answered with \"" + file->chosen.path + "\"";
        return "save dialog answered with \"" + std::get<ExpectedSaveFile>(expected).chosen.path + "\"";
    }

    static bool has_button(const platform::MessageBox& box, platform::BoxAnswer answer)
    {
        using platform::BoxAnswer;
        switch (box.buttons) {
        case platform::BoxButtons::ok:
            return answer == BoxAnswer::ok;
        case platform::BoxButtons::yes_no:
            return answer == BoxAnswer::yes || answer == BoxAnswer::no;
        case platform::BoxButtons::ok_cancel:
            break;
        }
        return answer == BoxAnswer::ok || answer == BoxAnswer::cancel;
    }

    static platform::BoxAnswer closed(const platform::MessageBox& box)
    {
        if (box.buttons == platform::BoxButtons::ok)
            return platform::BoxAnswer::ok;
        return box.buttons == platform::BoxButtons::yes_no ? platform::BoxAnswer::no : platform::BoxAnswer::cancel;
    }

    static void compare(const ExpectedBox& expected, const platform::MessageBox& box)
    {
        EXPECT_EQ(box.text, expected.box.text);
        if (!expected.whole)
            return;
        EXPECT_EQ(box.buttons, expected.box.buttons) << "of the box \"" << box.text << "\"";
        EXPECT_EQ(box.icon, expected.box.icon) << "of the box \"" << box.text << "\"";
        EXPECT_EQ(box.default_button, expected.box.default_button) << "of the box \"" << box.text << "\"";
        EXPECT_EQ(box.must_be_answered, expected.box.must_be_answered) << "of the box \"" << box.text << "\"";
        EXPECT_EQ(box.title, expected.box.title) << "of the box \"" << box.text << "\"";
        EXPECT_EQ(box.details, expected.box.details) << "of the box \"" << box.text << "\"";
    }

    void run_box_hook() const
    {
        if (on_box)
            on_box();
    }

    /// The next expected box when it is of that kind; otherwise the test fails and the box stays expected.
    template <class Kind>
    std::optional<Kind> take(const std::string& shown)
    {
        if (m_expected.empty() || !std::holds_alternative<Kind>(m_expected.front())) {
            ADD_FAILURE() << "Unexpected " << shown
                          << (m_expected.empty() ? "" : "; expected: " + describe(m_expected.front()));
            return std::nullopt;
        }
        Kind result = std::get<Kind>(std::move(m_expected.front()));
        m_expected.pop_front();
        return result;
    }

    std::deque<Expected> m_expected;
};

} // namespace cuedrill::fakes
