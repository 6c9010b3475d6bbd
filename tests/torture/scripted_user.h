#pragma once

#include "program/program.h"
#include "torture/window_report.h"

#include <QMainWindow>
#include <QString>
#include <QTimer>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <random>
#include <string>
#include <vector>

namespace cuedrill::torture {

/// Where the program and its user find their files.
struct WindowPlaces {
    std::string course;   ///< full path
    std::string exported; ///< full path of the file to export to
    std::string import;   ///< full path of the file to import from, which is written by the user
    std::string data;     ///< the folder of removed.txt, drafts and copies
};

/// Answers boxes and dialogs, also those that come before there is a window. A box about a failure ends the process.
class BoxUser {
public:
    BoxUser();

    std::string chosen_file{}; ///< for file dialogs
    std::string entered{};     ///< for input boxes

private:
    void look();

    QTimer watch_;
};

/// Operates the window with real key events, buttons, menu entries and boxes.
class ScriptedUser {
public:
    ScriptedUser(program::Program& program, BoxUser& boxes, const WindowPlaces& places, std::mt19937_64& random,
                 std::string prefix);

    /// What to do next; the same for the same random numbers and the same course.
    [[nodiscard]] WindowStep choose();

    /// Does it.
    /// @throws std::runtime_error when the window does not let it be done.
    void perform(const WindowStep& step);

    /// Whether a record stands in the editor, which is saved or left next.
    [[nodiscard]] bool has_draft() const { return has_draft_; }

    void close_window() { program_.form1().widget().close(); }

private:
    [[nodiscard]] std::vector<store::QaTexts> new_texts(std::size_t count);
    [[nodiscard]] WindowStep with_question(Act act);
    [[nodiscard]] bool is_usable(const char* name) const;
    [[nodiscard]] bool editing() const { return is_usable("pb_10"); }
    void press(const char* name);
    void choose_entry(const char* name);
    void press_key(int key, const QString& text);
    void type(const std::string& text);
    void type_record(const store::QaTexts& by_column);
    void save();
    void leave_with_escape();
    void wait_until(const char* what, const std::function<bool()>& holds);
    void wait_for_draft(const store::QaTexts& texts);
    void rest();
    void change_option(std::uint64_t number);
    void write_import(const WindowStep& step);

    program::Program& program_;
    BoxUser& boxes_;
    WindowPlaces places_;
    std::mt19937_64& random_;
    std::string prefix_; ///< of all texts, which occur once only
    int texts_ = 0;
    store::QaTexts draft_{};
    bool has_draft_ = false;
    quint64 moment_ = 1'000'000; ///< of the last key event, in milliseconds
};

} // namespace cuedrill::torture
