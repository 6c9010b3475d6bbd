#pragma once

#include "platform/desktop.h"
#include "platform/qt/qt_guard.h"

class QDialog;
class QWidget;

namespace cuedrill::platform::qt {

class OneFileDialog;
class QtDialogHost;

class QtDesktop final : public Desktop {
public:
    /// @param host parent of the file dialog while no other window is visible.
    QtDesktop(QtGuard& guard, const QtDialogHost& host) : guard_(guard), host_(host) {}

    BoxAnswer message_box(const MessageBox& box) override;
    std::optional<std::string> input_box(const InputBox& box) override;
    std::optional<ChosenColumns> columns_box(const ColumnsBox& box) override;
    ChosenFile open_file_dialog(const FileDialog& dialog) override;
    ChosenFile save_file_dialog(const FileDialog& dialog) override;
    void pump() override;
    void beep() override;
    /// Calls nest: the pointer is normal again after as many calls for the normal pointer as for the busy one.
    void set_pointer(Pointer pointer) override;

private:
    ChosenFile choose_file(OneFileDialog& widget, const FileDialog& dialog);
    /// The parent window of a file dialog; null if there is none.
    [[nodiscard]] QWidget* file_dialog_parent() const;
    int run_modal(QDialog& dialog);
    void throw_if_ending() const;

    QtGuard& guard_;
    const QtDialogHost& host_;
    int busy_ = 0;
};

} // namespace cuedrill::platform::qt
