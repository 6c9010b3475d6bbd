#pragma once

#include <QAbstractListModel>
#include <string>
#include <vector>

namespace cuedrill::platform::qt {

/// Lines of text, each shown in one row: a line end or tab within it as one blank.
class LineModel : public QAbstractListModel {
public:
    using QAbstractListModel::QAbstractListModel;

    void set_lines(std::vector<std::string> lines);

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;

    /// The line as it was set. Requires a row of the model.
    [[nodiscard]] const std::string& line(int row) const { return lines_[static_cast<std::size_t>(row)]; }
    /// What is shown of it.
    [[nodiscard]] QString shown(int row) const;

    /// The row that takes the most cells of a fixed-pitch font, as far as that can be told from its bytes; -1 without
    /// lines.
    [[nodiscard]] int widest_row() const { return widest_row_; }

private:
    std::vector<std::string> lines_;
    int widest_row_ = -1;
};

} // namespace cuedrill::platform::qt
