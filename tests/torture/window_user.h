#pragma once

#include <QTimer>
#include <deque>
#include <map>
#include <string>
#include <string_view>

class QDialog;
class QWidget;

namespace cuedrill::torture {

/// Writes lines to a file descriptor at once, so that nothing is lost when the process dies.
class Teller {
public:
    explicit Teller(int descriptor) : descriptor_(descriptor) {}

    /// Line ends in the text become " / ".
    void tell(std::string_view text) const;

private:
    int descriptor_;
};

/// Operates the windows of the program as a user does and tells what they show. Boxes are answered as soon as they
/// open: "Yes", otherwise the only button.
class WindowUser {
public:
    explicit WindowUser(const Teller& teller);

    /// Presses a button, a menu entry, or tells that it cannot be used.
    void press(QWidget& window, const std::string& name);
    void choose(QWidget& window, const std::string& name);
    /// Types into a control, or into the one with the focus if `name` is empty.
    void type(QWidget& window, const std::string& name, const std::string& text);

    /// The path for the next file dialog, which is otherwise cancelled, and the text for the next input box.
    void prepare_path(const std::string& path) { paths_.push_back(path); }
    void prepare_input(const std::string& text) { inputs_.push_back(text); }

    /// Tells all texts of the visible windows that have changed since the last call.
    void tell_screen();

    /// The text of the last box; empty if none has been open since `forget_box`.
    [[nodiscard]] const std::string& last_box() const { return last_box_; }
    void forget_box() { last_box_.clear(); }

private:
    void answer();
    void answer_file_dialog(QDialog& dialog);

    const Teller& teller_;
    QTimer watch_;
    std::deque<std::string> paths_;
    std::deque<std::string> inputs_;
    std::map<std::string, std::string> shown_;
    std::string last_box_;
};

} // namespace cuedrill::torture
