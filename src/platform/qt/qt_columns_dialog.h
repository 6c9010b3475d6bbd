#pragma once

#include "platform/desktop.h"

#include <QDialog>

class QComboBox;
class QDialogButtonBox;
class QTableWidget;

namespace cuedrill::platform::qt {

/// Shows the first rows of a table and lets two of its columns be chosen. What is chosen is marked in the table; OK is
/// possible only while the two differ.
class ColumnsDialog : public QDialog {
public:
    ColumnsDialog(QWidget* parent, const ColumnsBox& box);

    [[nodiscard]] ChosenColumns chosen() const;

private:
    [[nodiscard]] QComboBox* column_choice(const ColumnsBox& box, const std::string& label, int preset);
    [[nodiscard]] QTableWidget* preview(const ColumnsBox& box);
    void show_choice();

    QString first_label_;
    QString second_label_;
    QStringList names_;
    QComboBox* first_ = nullptr;
    QComboBox* second_ = nullptr;
    QTableWidget* table_ = nullptr;
    QDialogButtonBox* buttons_ = nullptr;
};

} // namespace cuedrill::platform::qt
