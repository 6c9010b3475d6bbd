#pragma once

#include "common/text.h"
#include "common/twips.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace cuedrill::platform {

enum class BoxIcon { none, information, question, exclamation };
enum class BoxButtons { ok, yes_no, ok_cancel };
enum class BoxAnswer { ok, yes, no, cancel };

/// A modal message box.
struct MessageBox {
    std::string text{};
    BoxButtons buttons = BoxButtons::ok;
    BoxIcon icon = BoxIcon::none;
    /// Which button Enter presses; nothing is the first one.
    std::optional<BoxAnswer> default_button{};
    /// Empty is the program's title.
    std::string title{};
    /// Further lines, shown in a box of their own that scrolls; empty for none.
    std::string details{};
    /// Characters of the text that are to catch the eye.
    std::vector<common::TextRange> marked{};
    /// Only its buttons answer it, neither Escape nor a click on the cross in its corner.
    bool must_be_answered = false;
};

/// A modal box that asks for a line of text.
struct InputBox {
    std::string prompt{};
    std::string title{};
    std::string default_text{};
    int longest = 200; ///< the most characters that can be typed
};

/// A modal dialog that asks for the name of a file to open or to write.
struct FileDialog {
    std::string title{};          ///< empty is the platform's own
    std::string initial_folder{}; ///< empty is the platform's choice
    std::string initial_file{};
    std::string default_extension{}; ///< added to a name typed without one; without the point
    /// Descriptions and patterns, separated by "|": "Text file (*.txt)|*.txt|All files (*.*)|*.*".
    std::string filter{};
};

/// What the user chose: both are empty after a cancel.
struct ChosenFile {
    std::string path{};  ///< full path
    std::string title{}; ///< the file's name without its folder
};

enum class Pointer { normal, busy };

/// What the program asks of the desktop beside its own windows. The functions that show a box return when the user
/// has closed it; where the program is ended meanwhile, they throw common::ProgramEnded instead.
class Desktop {
public:
    virtual ~Desktop() = default;

    /// Closing the box without a button is No or Cancel, or OK where there is only that.
    virtual BoxAnswer message_box(const MessageBox& box) = 0;
    /// The typed text; nothing after a cancel.
    virtual std::optional<std::string> input_box(const InputBox& box) = 0;
    virtual ChosenFile open_file_dialog(const FileDialog& dialog) = 0;
    /// Asks for the name of a file to be written; before an existing one is chosen, the user has to confirm it.
    virtual ChosenFile save_file_dialog(const FileDialog& dialog) = 0;

    /// Lets windows paint and timers tick, once; what the user presses meanwhile waits.
    /// @throws common::ProgramEnded when the program was ended meanwhile.
    virtual void pump() = 0;
    virtual void beep() = 0;
    virtual void set_pointer(Pointer pointer) = 0;
};

/// The small helper window that owns the file dialog. It is never shown itself.
class DialogHost {
public:
    virtual ~DialogHost() = default;

    /// Outer size of the smallest window with a title bar.
    [[nodiscard]] virtual common::Twips least_height() const = 0;
    [[nodiscard]] virtual common::Twips least_width() const = 0;
    /// Makes the window, of the least size, in the centre of the screen.
    virtual void load() = 0;
    virtual void unload() = 0;
};

/// The pointer is busy while an object of this class lives.
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
