#include "tools/table.h"

#include "common/text.h"

#include <algorithm>
#include <cstddef>
#include <ostream>

namespace cuedrill::tools {
namespace {

constexpr std::string_view between_columns = "  ";

std::string padded(const std::string& cell, std::size_t width, Table::Align align)
{
    const std::string blanks(width - std::min(width, common::code_points(cell)), ' ');
    return align == Table::Align::left ? cell + blanks : blanks + cell;
}

/// Prints a line without blanks at its end.
void print_line(std::string line, std::ostream& out)
{
    line.erase(line.find_last_not_of(' ') + 1);
    out << line << '\n';
}

} // namespace

void Table::print(std::ostream& out) const
{
    std::vector<std::size_t> widths;
    std::vector<std::string> titles;
    for (std::size_t i = 0; i < columns_.size(); ++i) {
        titles.push_back(columns_[i].title);
        widths.push_back(common::code_points(columns_[i].title));
        for (const auto& row : rows_)
            widths[i] = std::max(widths[i], common::code_points(row[i]));
    }
    const auto print_row = [&](const std::vector<std::string>& cells) {
        std::string line;
        for (std::size_t i = 0; i < cells.size(); ++i)
            line.append(i == 0 ? "" : between_columns).append(padded(cells[i], widths[i], columns_[i].align));
        print_line(std::move(line), out);
    };
    if (std::any_of(titles.begin(), titles.end(), [](const std::string& title) { return !title.empty(); }))
        print_row(titles);
    for (const auto& row : rows_)
        print_row(row);
}

std::string on_one_line(std::string_view text)
{
    text = common::trim_blanks_and_line_ends(text);
    std::string line;
    for (const char c : text) {
        if (c == '\n')
            line += " / ";
        else if (c != '\r')
            line += static_cast<unsigned char>(c) < 0x20 ? ' ' : c;
    }
    return line;
}

} // namespace cuedrill::tools
