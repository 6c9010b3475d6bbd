#pragma once

#include "platform/database.h"
#include "store/records.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace cuedrill::torture {

/// What a user does in the window.
enum class Act {
    open,       ///< the program starts and opens the course; left drafts are kept
    next,       ///< another question is asked
    know,       ///< a verdict: known
    know_not,   ///< a verdict: not known
    answer,     ///< an answer is typed, right or wrong
    undo,       ///< of the last verdict
    insert,     ///< a new record is typed and saved
    edit,       ///< the record on display gets other texts, which are saved
    remove,     ///< the record on display is deleted
    leave,      ///< a new record is typed and left with Escape
    draft,      ///< a new record is typed and stays in the editor until it is in the draft
    save_draft, ///< it is saved
    leave_draft,
    reset_all,
    import_texts,
    export_texts,
    option, ///< an option of the course is changed
    rest,   ///< nothing is done until the daily copy is made
    close   ///< the window is closed
};

inline constexpr int number_of_acts = 19;

[[nodiscard]] const char* name_of(Act act);

/// An act that was begun.
struct WindowStep {
    Act act = Act::open;
    std::int64_t record = 0;             ///< number of the record that is judged, changed or deleted; 0 for none
    std::vector<store::QaTexts> texts{}; ///< what is typed or imported, by columns
};

/// A record as text.
struct WindowRow {
    store::QaTexts texts{};
    std::string history{}; ///< all but the dates of the last show
    std::string shown{};   ///< these

    friend bool operator==(const WindowRow& a, const WindowRow& b)
    {
        return a.texts.q == b.texts.q && a.texts.a == b.texts.a && a.history == b.history && a.shown == b.shown;
    }
};

using WindowRows = std::map<std::int64_t, WindowRow>;
/// Values by their names.
using NamedValues = std::map<std::string, std::string>;

/// What is stored after an act.
struct WindowState {
    WindowRows rows{};
    NamedValues params{};
    NamedValues settings{};
    std::size_t exported = 0; ///< a number for the bytes of the exported file; 0 if there is none
};

/// The records of an open course, by their numbers.
[[nodiscard]] WindowRows rows_of(platform::Database& course);
/// Its parameters.
[[nodiscard]] NamedValues params_of(platform::Database& course);
/// The settings in a file.
/// @param name of the file, which the names of the settings begin with.
/// @throws common::Error when the file cannot be read.
[[nodiscard]] NamedValues settings_of(const std::string& path, const std::string& name);

/// A number for the bytes of a file, short enough for a line, and never 0.
[[nodiscard]] std::size_t number_of(const std::string& bytes);

/// Lines that a driver prints when it begins an act, and when the act is stored.
[[nodiscard]] std::string lines_of(const WindowStep& step);
[[nodiscard]] std::string lines_of(const WindowState& state);

/// Reads these lines, in pieces of any size.
class WindowReport {
public:
    /// @return whether this piece has ended an act, which is in `step` and `state` then.
    [[nodiscard]] bool take_line(std::string_view line);

    [[nodiscard]] const WindowStep& step() const { return step_; }
    [[nodiscard]] const WindowState& state() const { return state_; }
    /// Whether `step` was begun and has not ended.
    [[nodiscard]] bool under_way() const { return under_way_; }

private:
    WindowStep step_;
    WindowState state_;
    WindowState arriving_;
    bool under_way_ = false;
};

/// The whole lines at the beginning of `output`, which loses them.
[[nodiscard]] std::vector<std::string> take_lines(std::string& output);

} // namespace cuedrill::torture
