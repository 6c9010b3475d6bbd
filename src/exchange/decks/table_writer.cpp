#include "exchange/decks/table_writer.h"

#include "common/date_time.h"
#include "common/number_format.h"
#include "common/text.h"
#include "store/course.h"

#include <algorithm>
#include <array>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace cuedrill::decks {
namespace {

enum class Content { text, number, date };

/// A column of the table.
struct Column {
    std::string_view name;  ///< in the header
    std::string_view field; ///< of `qa`
    Content content;
};

constexpr std::array<Column, 1> number_column{{{"number", "cnt", Content::number}}};

constexpr std::array<Column, 2> text_columns{{{"question", "q", Content::text}, {"answer", "a", Content::text}}};

constexpr std::array<Column, 10> statistics_columns{{
    {"question_attempts", "q_attempts", Content::number},
    {"question_fails", "q_fails", Content::number},
    {"question_level", "q_successes", Content::number},
    {"question_last_test", "q_date_last_test", Content::date},
    {"question_last_show", "q_date_last_show", Content::date},
    {"answer_attempts", "a_attempts", Content::number},
    {"answer_fails", "a_fails", Content::number},
    {"answer_level", "a_successes", Content::number},
    {"answer_last_test", "a_date_last_test", Content::date},
    {"answer_last_show", "a_date_last_show", Content::date},
}};

std::vector<Column> columns_of(const TableForm& form)
{
    std::vector<Column> columns;
    const auto add = [&](std::span<const Column> some) { columns.insert(columns.end(), some.begin(), some.end()); };
    if (form.numbered)
        add(number_column);
    add(text_columns);
    if (form.statistics)
        add(statistics_columns);
    return columns;
}

std::string date_text(common::DateTime instant)
{
    const common::CalendarFields fields = instant.fields();
    const auto two = [](int value) { return common::format_padded(value, 2); };
    return common::format_padded(fields.year, 4) + "-" + two(fields.month) + "-" + two(fields.day) + " " +
           two(fields.hour) + ":" + two(fields.minute) + ":" + two(fields.second);
}

std::string number_text(const platform::Value& value)
{
    if (std::holds_alternative<std::monostate>(value))
        return {};
    if (const auto* const number = std::get_if<std::int64_t>(&value))
        return std::to_string(*number);
    return common::format_general(store::nz(value));
}

std::string text_of(const platform::Value& value, Content content)
{
    if (content == Content::text)
        return store::stored_text(value);
    if (content == Content::number)
        return number_text(value);
    const std::optional<common::DateTime> date = store::stored_date(value);
    return date ? date_text(*date) : std::string();
}

/// Some programs drop blanks at the ends of a field without quotation marks.
std::string quoted(const std::string& text, char separator)
{
    constexpr std::string_view blanks = " \t";
    const bool has_outer_blank = !text.empty() && (blanks.find(text.front()) != std::string_view::npos ||
                                                   blanks.find(text.back()) != std::string_view::npos);
    if (!has_outer_blank && text.find(separator) == std::string::npos &&
        text.find_first_of("\"\r\n") == std::string::npos)
        return text;
    return "\"" + common::replace_all(text, "\"", "\"\"") + "\"";
}

/// A line of the table with the text that `text` gives for each column.
template <typename Text>
std::string line_of(const std::vector<Column>& columns, char separator, const Text& text)
{
    std::string line;
    for (const Column& column : columns) {
        if (&column != &columns.front())
            line.push_back(separator);
        line += quoted(text(column), separator);
    }
    return line.append(common::cr_lf);
}

} // namespace

std::int64_t write_table(platform::Replacement& file, platform::Recordset& rows, const TableForm& form)
{
    const std::vector<Column> columns = columns_of(form);
    file.write(line_of(columns, form.separator, [](const Column& column) { return std::string(column.name); }));
    std::int64_t count = 0;
    for (; !rows.eof(); rows.move_next(), ++count)
        file.write(line_of(columns, form.separator,
                           [&](const Column& column) { return text_of(rows.field(column.field), column.content); }));
    return count;
}

} // namespace cuedrill::decks
