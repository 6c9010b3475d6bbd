#include "fakes/fake_desktop.h"

#include "common/errors.h"
#include "common/text.h"

#include <cstddef>
#include <gtest/gtest.h>
#include <utility>
#include <variant>

namespace cuedrill::fakes {

namespace {

struct ExpectedBox {
    platform::MessageBox box;
    bool whole = false; ///< compare all members, not only the text
    platform::BoxAnswer answer = platform::BoxAnswer::ok;
};
struct ExpectedInput {
    std::string prompt;
    std::optional<std::string> answer;
};
struct ExpectedColumns {
    std::vector<std::string> names;
    std::optional<platform::ChosenColumns> chosen;
};
struct ExpectedFile {
    platform::ChosenFile chosen;
};
struct ExpectedSaveFile : ExpectedFile {};
using AnyExpected = std::variant<ExpectedBox, ExpectedInput, ExpectedColumns, ExpectedFile, ExpectedSaveFile>;

std::string describe(const AnyExpected& expected)
{
    if (const auto* box = std::get_if<ExpectedBox>(&expected))
        return "message box \"" + box->box.text + "\"";
    if (const auto* input = std::get_if<ExpectedInput>(&expected))
        return "input box \"" + input->prompt + "\"";
    if (const auto* columns = std::get_if<ExpectedColumns>(&expected))
        return "dialog for " + std::to_string(columns->names.size()) + " columns";
    if (const auto* file = std::get_if<ExpectedFile>(&expected))
        return "file dialog answered with \"" + file->chosen.path + "\"";
    return "save dialog answered with \"" + std::get<ExpectedSaveFile>(expected).chosen.path + "\"";
}

bool has_button(const platform::MessageBox& box, platform::BoxAnswer answer)
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

platform::BoxAnswer closed(const platform::MessageBox& box)
{
    if (box.buttons == platform::BoxButtons::ok)
        return platform::BoxAnswer::ok;
    return box.buttons == platform::BoxButtons::yes_no ? platform::BoxAnswer::no : platform::BoxAnswer::cancel;
}

void compare(const ExpectedBox& expected, const platform::MessageBox& box)
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

} // namespace

struct FakeDesktop::Expected {
    AnyExpected what;
};

FakeDesktop::FakeDesktop() = default;

FakeDesktop::~FakeDesktop()
{
    check_all_shown();
    if (pointer_depth != 0)
        ADD_FAILURE() << "The pointer is left busy.";
}

void FakeDesktop::expect_box(std::string text, platform::BoxAnswer answer)
{
    platform::MessageBox box;
    box.text = std::move(text);
    expected_.push_back({ExpectedBox{std::move(box), false, answer}});
}

void FakeDesktop::expect_box_like(platform::MessageBox box, platform::BoxAnswer answer)
{
    expected_.push_back({ExpectedBox{std::move(box), true, answer}});
}

void FakeDesktop::expect_input(std::string prompt, std::optional<std::string> answer)
{
    expected_.push_back({ExpectedInput{std::move(prompt), std::move(answer)}});
}

void FakeDesktop::expect_columns(std::vector<std::string> names, std::optional<platform::ChosenColumns> chosen)
{
    expected_.push_back({ExpectedColumns{std::move(names), chosen}});
}

void FakeDesktop::expect_file(platform::ChosenFile chosen)
{
    expected_.push_back({ExpectedFile{std::move(chosen)}});
}

void FakeDesktop::expect_save_file(platform::ChosenFile chosen)
{
    expected_.push_back({ExpectedSaveFile{{std::move(chosen)}}});
}

void FakeDesktop::check_all_shown()
{
    for (const Expected& missing : expected_)
        ADD_FAILURE() << "Never shown: " << describe(missing.what);
    expected_.clear();
}

template <class Kind>
std::optional<Kind> FakeDesktop::take(const std::string& shown)
{
    if (expected_.empty() || !std::holds_alternative<Kind>(expected_.front().what)) {
        ADD_FAILURE() << "Unexpected " << shown
                      << (expected_.empty() ? "" : "; expected: " + describe(expected_.front().what));
        return std::nullopt;
    }
    Kind result = std::get<Kind>(std::move(expected_.front().what));
    expected_.erase(expected_.begin());
    return result;
}

platform::BoxAnswer FakeDesktop::message_box(const platform::MessageBox& box)
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

std::optional<std::string> FakeDesktop::input_box(const platform::InputBox& box)
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

std::optional<platform::ChosenColumns> FakeDesktop::columns_box(const platform::ColumnsBox& box)
{
    columns_boxes.push_back(box);
    run_box_hook();
    const auto expected = take<ExpectedColumns>("dialog for columns \"" + box.prompt + "\"");
    if (!expected)
        return std::nullopt;
    EXPECT_EQ(box.names, expected->names);
    return expected->chosen;
}

platform::ChosenFile FakeDesktop::open_file_dialog(const platform::FileDialog& dialog)
{
    file_dialogs.push_back(dialog);
    run_box_hook();
    const auto expected = take<ExpectedFile>("file dialog \"" + dialog.title + "\"");
    return expected ? expected->chosen : platform::ChosenFile{};
}

platform::ChosenFile FakeDesktop::save_file_dialog(const platform::FileDialog& dialog)
{
    file_dialogs.push_back(dialog);
    run_box_hook();
    const auto expected = take<ExpectedSaveFile>("save dialog \"" + dialog.title + "\"");
    return expected ? expected->chosen : platform::ChosenFile{};
}

void FakeDesktop::pump()
{
    ++pumps;
    if (on_pump)
        on_pump();
}

void FakeDesktop::beep()
{
    ++beeps;
}

void FakeDesktop::set_pointer(platform::Pointer pointer)
{
    pointer_depth += pointer == platform::Pointer::busy ? 1 : -1;
    if (pointer_depth < 0)
        ADD_FAILURE() << "The pointer was set to normal more often than to busy.";
}

void FakeDesktop::end_program()
{
    ++ends;
    throw common::ProgramEnded{};
}

void FakeDesktop::run_box_hook() const
{
    if (on_box)
        on_box();
}

} // namespace cuedrill::fakes
