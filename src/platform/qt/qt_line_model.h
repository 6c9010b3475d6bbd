#pragma once

#include <QAbstractListModel>
#include <string>
#include <vector>

namespace cuedrill::platform::qt {

/// Lines of text, one row each; a line end or tab within a line is shown as one blank.
class LineModel : public QAbstractListModel {
public:
    using QAbstractListModel::QAbstractListModel;

    void set_lines(std::vector<std::string> lines);

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;

    /// The line as it was set. `row` must be a row of the model.
    [[nodiscard]] const std::string& line(int row) const { return lines_[static_cast<std::size_t>(row)]; }
    /// The line as it is shown.
    [[nodiscard]] QString shown(int row) const;

    /// The row that takes the most cells of a fixed-pitch font, estimated from its bytes; -1 if there are no lines.
    [[nodiscard]] int widest_row() const { return widest_row_; }

private:
    std::vector<std::string> lines_;
    int widest_row_ = -1;
};

} // namespace cuedrill::platform::qt
