#include "exchange/decks/anki_text_deck.h"

#include "common/errors.h"
#include "common/text.h"
#include "exchange/decks/table_format.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

namespace cuedrill::decks {
namespace {

struct NamedSeparator {
    std::string_view name;
    char separator;
};

constexpr std::array<NamedSeparator, 6> named_separators{
    {{"tab", '\t'}, {"comma", ','}, {"semicolon", ';'}, {"space", ' '}, {"pipe", '|'}, {"colon", ':'}}};

[[noreturn]] void refuse(std::string_view key, std::string_view value, std::int64_t line)
{
    throw common::Error("Line " + std::to_string(line) + " says \"" + std::string(value) + "\" for \"" +
                        std::string(key) + "\", which has no such value.");
}

char separator_of(std::string_view value, std::int64_t line)
{
    for (const NamedSeparator& named : named_separators) {
        if (common::equal_ascii(value, named.name))
            return named.separator;
    }
    if (value.size() != 1 || value.front() == '"')
        refuse("separator", value, line);
    return value.front();
}

bool truth_of(std::string_view key, std::string_view value, std::int64_t line)
{
    if (common::equal_ascii(value, "true"))
        return true;
    if (!common::equal_ascii(value, "false"))
        refuse(key, value, line);
    return false;
}

/// A column, counted from 0.
std::size_t column_of(std::string_view key, std::string_view value, std::int64_t line)
{
    std::size_t number = 0;
    const char* const end = value.data() + value.size();
    const auto [rest, code] = std::from_chars(value.data(), end, number);
    if (code != std::errc() || rest != end || number == 0 || number > TableParser::most_fields)
        refuse(key, value, line);
    return number - 1;
}

std::vector<std::string> columns_of(std::string_view value, const TableShape& shape)
{
    std::vector<std::string> columns;
    const TableParser::Sink sink = [&](const TableRow& row) { columns = row.fields; };
    TableParser parser(shape);
    parser.add(value, sink);
    parser.finish(sink);
    return names_of_header(columns);
}

/// What a line says.
struct Saying {
    std::string key;
    std::string value;
    std::int64_t line = 1;
};

/// Notes all that does not depend on the separator.
void note(const Saying& saying, AnkiTextHead& head)
{
    const auto& [key, value, line] = saying;
    if (key == "separator")
        head.shape.separator = separator_of(value, line);
    else if (key == "html")
        head.is_html = truth_of(key, value, line);
    else if (key == "notetype")
        head.kind = value;
    else if (key == "notetype column")
        head.kind_column = column_of(key, value, line);
    else if (key == "tags column" || key == "deck column" || key == "guid column")
        head.left_out.insert(column_of(key, value, line));
}

std::string lower_ascii(std::string_view text)
{
    std::string lower(text);
    for (char& c : lower)
        c = c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
    return lower;
}

} // namespace

AnkiTextHead read_anki_text_head(std::string_view text)
{
    AnkiTextHead head;
    std::optional<Saying> columns;
    std::string_view rest = text;
    while (rest.starts_with('#')) {
        const std::size_t end = std::min(rest.find_first_of("\r\n"), rest.size());
        const std::string_view content = rest.substr(1, end - 1);
        rest.remove_prefix(end);
        rest.remove_prefix(rest.starts_with(common::cr_lf) ? 2 : std::min<std::size_t>(rest.size(), 1));
        ++head.lines;
        const std::size_t colon = content.find(':');
        if (colon == std::string_view::npos)
            continue;
        const std::string_view value = content.substr(colon + 1);
        Saying saying{.key = lower_ascii(common::trim_blanks(content.substr(0, colon))),
                      .value = std::string(value.size() == 1 ? value : common::trim_blanks(value)),
                      .line = head.lines};
        if (saying.key == "columns")
            columns = {.key = saying.key, .value = std::string(value), .line = saying.line};
        else
            note(saying, head);
    }
    if (columns)
        head.columns = columns_of(columns->value, head.shape);
    if (head.kind_column)
        head.left_out.insert(*head.kind_column);
    head.size = text.size() - rest.size();
    return head;
}

AnkiTextDeck::AnkiTextDeck(std::unique_ptr<platform::FileReading> file, const platform::TextConversions& conversions,
                           std::optional<Encoding> encoding)
    : file_(std::move(file), conversions, encoding), head_(read_anki_text_head(file_.beginning())),
      rows_(file_, head_.shape, head_.size, head_.lines + 1)
{
    find_first_kinds();
}

/// Looks through the beginning of the file, so that a user can be told the kinds before anything is read.
void AnkiTextDeck::find_first_kinds()
{
    give_fields(head_.columns.size());
    const TableParser::Sink sink = [this](const TableRow& row) {
        give_fields(row.fields.size());
        static_cast<void>(kind_of(row));
    };
    TableParser parser(head_.shape, head_.lines + 1);
    parser.add(std::string_view(file_.beginning()).substr(head_.size), sink);
    if (file_.is_whole())
        parser.finish(sink);
    if (kinds_.empty())
        kinds_.push_back({.name = head_.kind, .fields = fields_});
}

/// Gives all kinds a field for each of so many columns.
void AnkiTextDeck::give_fields(std::size_t columns)
{
    const bool has_names = !head_.columns.empty();
    if (has_names)
        columns = head_.columns.size();
    std::vector<std::string> fields;
    for (std::size_t column = 0; column < columns; ++column) {
        if (!head_.left_out.contains(column))
            fields.push_back(has_names ? head_.columns[column] : std::to_string(fields.size() + 1));
    }
    if (fields.size() <= fields_.size())
        return;
    fields_ = std::move(fields);
    for (Kind& kind : kinds_)
        kind.fields = fields_;
}

std::size_t AnkiTextDeck::kind_of(const TableRow& row)
{
    const bool says_kind = head_.kind_column && *head_.kind_column < row.fields.size();
    const std::string& name = says_kind ? row.fields[*head_.kind_column] : head_.kind;
    const auto [place, is_new] = kind_places_.try_emplace(name, kinds_.size());
    if (is_new && kinds_.size() == most_kinds)
        throw common::Error(place_of(row) + ": The column of note types has more than " + std::to_string(most_kinds) +
                            " of them.");
    if (is_new)
        kinds_.push_back({.name = name, .fields = fields_});
    return place->second;
}

AnkiTextDeck::Step AnkiTextDeck::step()
{
    std::optional<TableRow> row = rows_.next();
    if (!row)
        return rows_.at_end() ? Step::end : Step::reading;
    take(std::move(*row));
    return Step::row;
}

void AnkiTextDeck::take(TableRow row)
{
    give_fields(row.fields.size());
    row_ = {.place = place_of(row), .kind = kind_of(row), .texts = {}};
    for (std::size_t column = 0; column < row.fields.size() && row_.texts.size() < fields_.size(); ++column) {
        if (head_.left_out.contains(column))
            continue;
        std::string& text = row.fields[column];
        row_.texts.push_back(head_.is_html ? html_to_text(text, losses_) : std::move(text));
    }
    row_.texts.resize(fields_.size());
}

std::string AnkiTextDeck::left_out() const
{
    return words_of(losses_) + rows_.left_out();
}

} // namespace cuedrill::decks
