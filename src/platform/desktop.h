#pragma once

#include "common/text.h"
#include "common/twips.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace cuedrill::platform {

enum class BoxIcon { none, information, question, exclamation, program };
enum class BoxButtons { ok, yes_no, ok_cancel };
enum class BoxAnswer { ok, yes, no, cancel };

/// A modal message box.
struct MessageBox {
    std::string text{};
    BoxButtons buttons = BoxButtons::ok;
    BoxIcon icon = BoxIcon::none;
    /// The button that Enter presses; the first one if not set.
    std::optional<BoxAnswer> default_button{};
    /// The title; the program's title if empty.
    std::string title{};
    /// Further lines, shown in a scrolling box of their own; empty for none.
    std::string details{};
    /// Ranges of the text to highlight.
    std::vector<common::TextRange> marked{};
    /// If true, only the buttons close the box: neither Escape nor the close button of its title bar does.
    bool must_be_answered = false;
};

/// A modal box that asks for one line of text.
struct InputBox {
    std::string prompt{};
    std::string title{};
    std::string default_text{};
    int longest = 200; ///< most characters that can be typed
};

/// A modal dialog that asks for the name of a file to open or to save.
struct FileDialog {
    std::string title{};          ///< the platform's own if empty
    std::string initial_folder{}; ///< the platform's choice if empty
    std::string initial_file{};
    std::string default_extension{}; ///< added to a name typed without one; given without the dot
    /// Descriptions and patterns, separated by "|": "Text file (*.txt)|*.txt|All files (*.*)|*.*".
    std::string filter{};
};

/// The user's choice; both members are empty after a cancel.
struct ChosenFile {
    std::string path{};  ///< full path
    std::string title{}; ///< the file's name without its folder
};

/// A modal dialog that shows the first rows of a table and asks which two of its columns are to be used.
struct ColumnsBox {
    std::string title{};
    std::string prompt{};
    std::string first_label{};                    ///< what the first of the two is called: "Question"
    std::string second_label{};                   ///< the same of the second
    std::vector<std::string> names{};             ///< of the columns, at least two
    std::vector<std::vector<std::string>> rows{}; ///< first rows, each with a text for each column
};

/// The places of two columns, counted from 0; they differ.
struct ChosenColumns {
    std::size_t first = 0;
    std::size_t second = 1;

    friend bool operator==(const ChosenColumns&, const ChosenColumns&) = default;
};

enum class Pointer { normal, busy };

/// What the program asks of the desktop besides its own windows. The functions that show a box return when the user has
/// closed it; if the program is ended meanwhile, they throw common::ProgramEnded instead.
class Desktop {
public:
    virtual ~Desktop() = default;

    /// Closing the box without a button counts as No or Cancel, or as OK if that is the only button.
    virtual BoxAnswer message_box(const MessageBox& box) = 0;
    /// The typed text; std::nullopt after a cancel.
    virtual std::optional<std::string> input_box(const InputBox& box) = 0;
    /// The first two columns are preset; std::nullopt after a cancel.
    virtual std::optional<ChosenColumns> columns_box(const ColumnsBox& box) = 0;
    virtual ChosenFile open_file_dialog(const FileDialog& dialog) = 0;
    /// Asks for the name of a file to be written; the user has to confirm overwriting an existing one.
    virtual ChosenFile save_file_dialog(const FileDialog& dialog) = 0;

    /// Lets windows paint and timers tick, once; user input stays queued.
    /// @throws common::ProgramEnded when the program was ended meanwhile.
    virtual void pump() = 0;
    virtual void beep() = 0;
    virtual void set_pointer(Pointer pointer) = 0;
};

/// The small helper window that owns the file dialog. It is never visible itself.
class DialogHost {
public:
    virtual ~DialogHost() = default;

    /// Outer size of the smallest window with a title bar.
    [[nodiscard]] virtual common::Twips least_height() const = 0;
    [[nodiscard]] virtual common::Twips least_width() const = 0;
    /// Creates the window in the smallest size, centred on the screen.
    virtual void load() = 0;
    virtual void unload() = 0;
};

/// Shows the busy pointer while an object of this class lives.
class BusyPointer {
public:
    explicit BusyPointer(Desktop& desktop) : desktop_(desktop) { desktop_.set_pointer(Pointer::busy); }
    BusyPointer(const BusyPointer&) = delete;
    BusyPointer& operator=(const BusyPointer&) = delete;
    ~BusyPointer() { desktop_.set_pointer(Pointer::normal); }

private:
    Desktop& desktop_;
};

} // namespace cuedrill::platform
