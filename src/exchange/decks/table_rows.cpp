#include "exchange/decks/table_rows.h"

#include <algorithm>
#include <utility>

namespace cuedrill::decks {

std::optional<TableRow> TableRows::next()
{
    if (found_.empty()) {
        if (!at_end_)
            read();
        return std::nullopt;
    }
    TableRow row = std::move(found_.front());
    found_.pop_front();
    return row;
}

void TableRows::read()
{
    const TableParser::Sink sink = [this](TableRow row) { found_.push_back(std::move(row)); };
    std::optional<std::string> text = file_.read();
    if (!text) {
        parser_.finish(sink);
        at_end_ = true;
        return;
    }
    const std::size_t skipped = std::min(skipped_, text->size());
    skipped_ -= skipped;
    parser_.add(std::string_view(*text).substr(skipped), sink);
}

std::string TableRows::left_out() const
{
    const UnclosedQuotes& quotes = parser_.unclosed();
    if (quotes.count == 0)
        return {};
    const std::string line = std::to_string(quotes.first_line);
    if (quotes.count == 1)
        return "A quotation mark in line " + line + " has no end and was read as an ordinary character.\n";
    return std::to_string(quotes.count) +
           " quotation marks have no end and were read as ordinary characters, the first in line " + line + ".\n";
}

std::string place_of(const TableRow& row)
{
    return "line " + std::to_string(row.line);
}

} // namespace cuedrill::decks
