#include "exchange/decks/table_deck.h"

#include "exchange/collected_text.h"
#include "exchange/record_lines.h"

#include <algorithm>
#include <utility>

namespace cuedrill::decks {
namespace {

bool is_blank(const std::string& text)
{
    return text.find_first_not_of(" \t\n") == std::string::npos;
}

} // namespace

TableDeck::TableDeck(std::unique_ptr<platform::FileReading> file, const platform::TextConversions& conversions,
                     const std::string& name, const TableOptions& options)
    : file_(std::move(file), conversions, options.encoding),
      format_(recognise_table(file_.beginning(), file_.is_whole(), name, options)),
      rows_(file_, format_.shape, format_.skipped, format_.first_line), kinds_{Kind{.name = {},
                                                                                    .fields = format_.names}},
      header_is_due_(format_.has_header), header_was_said_(options.has_header.has_value())
{
}

TableDeck::Step TableDeck::step()
{
    std::optional<TableRow> row = rows_.next();
    if (!row)
        return rows_.at_end() ? Step::end : Step::reading;
    return take(std::move(*row)) ? Step::row : Step::reading;
}

/// Returns false for a row that is none of the deck.
bool TableDeck::take(TableRow row)
{
    if (std::exchange(header_is_due_, false))
        return false;
    std::vector<std::string>& texts = row.fields;
    if (std::all_of(texts.begin(), texts.end(), is_blank))
        return false;
    std::vector<std::string>& names = kinds_.front().fields;
    if (!format_.has_header && texts.size() > names.size())
        names = numbers_as_names(texts.size());
    const bool has_more = row.has_more || (texts.size() > names.size() &&
                                           !std::all_of(texts.begin() + static_cast<std::ptrdiff_t>(names.size()),
                                                        texts.end(), is_blank));
    if (has_more && longer_rows_++ == 0)
        first_longer_line_ = row.line;
    texts.resize(names.size());
    row_ = {.place = place_of(row), .kind = 0, .texts = std::move(texts)};
    return true;
}

std::string TableDeck::left_out() const
{
    std::string words;
    if (format_.has_header && !header_was_said_) {
        words += "The first row was read as the names of the fields:";
        for (const std::string& name : kinds_.front().fields)
            words += " " + exchange::quoted_line(name);
        words += "\n";
    }
    if (longer_rows_ != 0)
        words += (longer_rows_ == 1 ? "1 row has" : std::to_string(longer_rows_) + " rows have") +
                 " more fields than the table has names; the rest was left out. The first is in line " +
                 std::to_string(first_longer_line_) + ".\n";
    return words + rows_.left_out();
}

} // namespace cuedrill::decks
