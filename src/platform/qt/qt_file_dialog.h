#pragma once

#include <QFileDialog>

namespace cuedrill::platform::qt {

/// The toolkit's dialog for the name of one file. It takes the typed or clicked name literally, whereas the toolkit
/// reads a name with double quotes as a list of names.
class OneFileDialog : public QFileDialog {
public:
    explicit OneFileDialog(QWidget* parent);

    /// Gives the dialog its size: the usual one, or what the screen has room for. Call this before it is shown.
    void take_size();

    /// Full path of the file; empty until one was chosen.
    [[nodiscard]] QString chosen_path() const;

protected:
    void accept() override;

private:
    void lower_lists();
    void enable_button();
    void forget_clicked_file();
    [[nodiscard]] QString typed_name() const;
    [[nodiscard]] QString path_of(const QString& name) const;
    [[nodiscard]] bool may_replace(const QString& path);

    QString quoted_path_; ///< set for a name with quotes
};

} // namespace cuedrill::platform::qt
