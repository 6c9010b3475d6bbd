#pragma once

#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

namespace cuedrill::tools {

/// Lines of columns for a terminal. A column is as wide as its longest entry, counted in code points.
class Table {
public:
    enum class Align { left, right };

    struct Column {
        std::string title;
        Align align = Align::left;
    };

    explicit Table(std::vector<Column> columns) : columns_(std::move(columns)) {}

    /// @param cells one for each column.
    void add(std::vector<std::string> cells) { rows_.push_back(std::move(cells)); }

    /// Prints the titles, unless all are empty, and the rows.
    void print(std::ostream& out) const;

private:
    std::vector<Column> columns_;
    std::vector<std::vector<std::string>> rows_;
};

/// A text of a record on one line: each line break becomes " / ".
[[nodiscard]] std::string on_one_line(std::string_view text);

} // namespace cuedrill::tools
