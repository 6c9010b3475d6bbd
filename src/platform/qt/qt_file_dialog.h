#pragma once

#include <QFileDialog>

namespace cuedrill::platform::qt {

/// The toolkit's dialog for the name of one file. What was typed or clicked is that name as it stands: the toolkit
/// takes one with double quotes for a list of names.
class OneFileDialog : public QFileDialog {
public:
    explicit OneFileDialog(QWidget* parent);

    /// Full path of the file; empty before one was chosen.
    [[nodiscard]] QString chosen_path() const;

protected:
    void accept() override;

private:
    void enable_button();
    void forget_clicked_file();
    [[nodiscard]] QString typed_name() const;
    [[nodiscard]] QString path_of(const QString& name) const;
    [[nodiscard]] bool may_replace(const QString& path);

    QString quoted_path_; ///< of a name with quotes
};

} // namespace cuedrill::platform::qt
