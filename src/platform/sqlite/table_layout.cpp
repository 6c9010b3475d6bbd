#include "platform/sqlite/table_layout.h"

#include "common/number_format.h"
#include "common/text.h"
#include "platform/sqlite/engine_error.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace cuedrill::platform::sqlite {
namespace {

struct Range {
    std::int64_t lowest;
    std::int64_t highest;
};

Range range_of(ColumnType type)
{
    if (type == ColumnType::integer)
        return {std::numeric_limits<std::int16_t>::min(), std::numeric_limits<std::int16_t>::max()};
    return {std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::max()};
}

[[noreturn]] void refuse(const std::string& words)
{
    throw own_error(DatabaseErrorKind::constraint, words);
}

Value stored_text(const ColumnDefinition& column, Value value)
{
    const auto* text = std::get_if<std::string>(&value);
    if (text == nullptr)
        refuse("The column " + column.name + " takes texts only.");
    const auto size = static_cast<std::size_t>(column.size);
    // No text has more characters than bytes, so most need not be counted.
    if (text->size() > size) {
        const std::size_t length = common::code_points(*text);
        if (length > size)
            refuse("The text in column " + column.name + " has " + std::to_string(length) + " characters; " +
                   std::to_string(size) + " fit.");
    }
    return value;
}

Value stored_integer(const ColumnDefinition& column, const Value& value)
{
    const Range range = range_of(column.type);
    const auto out_of_range = [&](const std::string& number) {
        refuse("The number " + number + " in column " + column.name + " does not fit; it must be between " +
               std::to_string(range.lowest) + " and " + std::to_string(range.highest) + ".");
    };
    if (const auto* number = std::get_if<std::int64_t>(&value)) {
        if (*number < range.lowest || *number > range.highest)
            out_of_range(std::to_string(*number));
        return value;
    }
    const auto* number = std::get_if<double>(&value);
    if (number == nullptr || *number != std::trunc(*number))
        refuse("The column " + column.name + " takes whole numbers only.");
    if (*number < static_cast<double>(range.lowest) || *number > static_cast<double>(range.highest))
        out_of_range(common::format_general(*number));
    return static_cast<std::int64_t>(*number);
}

Value stored_number(const ColumnDefinition& column, const Value& value)
{
    if (const auto* whole = std::get_if<std::int64_t>(&value))
        return static_cast<double>(*whole);
    const auto* number = std::get_if<double>(&value);
    // The engine would store what is not a number as null, in silence.
    if (number == nullptr || !std::isfinite(*number))
        refuse("The column " + column.name + " takes numbers only.");
    return *number;
}

} // namespace

std::string quoted_name(std::string_view name)
{
    return '"' + common::replace_all(name, "\"", "\"\"") + '"';
}

TableLayout::TableLayout(TableDefinition definition) : m_definition(std::move(definition))
{
    if (columns().empty() || columns().size() > most_columns)
        throw own_error(DatabaseErrorKind::other, "The table " + name() + " has no columns or too many.");
    for (std::size_t i = 0; i < columns().size(); ++i) {
        if (columns()[i].auto_increment)
            m_automatic = i;
    }
    for (const IndexDefinition& index : indexes()) {
        if (index.primary)
            m_primary = column(index.column);
    }
    if (m_automatic && m_primary != m_automatic)
        throw own_error(DatabaseErrorKind::other,
                        "The numbered column of table " + name() + " must be its primary key.");
}

std::size_t TableLayout::column(std::string_view name_wanted) const
{
    const auto found = std::find_if(columns().begin(), columns().end(), [&](const ColumnDefinition& one) {
        return common::equal_ascii(one.name, name_wanted);
    });
    if (found == columns().end())
        throw own_error(DatabaseErrorKind::other,
                        "There is no column " + std::string(name_wanted) + " in table " + name() + ".");
    return static_cast<std::size_t>(found - columns().begin());
}

std::size_t TableLayout::index_column(std::string_view index) const
{
    const auto found = std::find_if(indexes().begin(), indexes().end(),
                                    [&](const IndexDefinition& one) { return common::equal_ascii(one.name, index); });
    if (found == indexes().end())
        throw own_error(DatabaseErrorKind::other,
                        "There is no index " + std::string(index) + " in table " + name() + ".");
    return column(found->column);
}

Value TableLayout::stored_form(std::size_t position, Value value) const
{
    const ColumnDefinition& definition = columns()[position];
    if (definition.auto_increment)
        throw own_error(DatabaseErrorKind::other, "The column " + definition.name + " is numbered by the engine.");
    if (std::holds_alternative<std::monostate>(value))
        return value;
    switch (definition.type) {
    case ColumnType::text:
        return stored_text(definition, std::move(value));
    case ColumnType::long_integer:
    case ColumnType::integer:
        return stored_integer(definition, value);
    case ColumnType::date:
    case ColumnType::number:
        break;
    }
    return stored_number(definition, value);
}

std::string TableLayout::column_text(const ColumnDefinition& column) const
{
    const std::string name_text = quoted_name(column.name);
    if (column.auto_increment)
        return name_text + " INTEGER PRIMARY KEY AUTOINCREMENT";
    switch (column.type) {
    case ColumnType::text:
        return name_text + " TEXT COLLATE CUEDRILL CHECK (length(" + name_text + ") <= " + std::to_string(column.size) +
               ")";
    case ColumnType::long_integer:
    case ColumnType::integer: {
        const Range range = range_of(column.type);
        return name_text + " INTEGER CHECK (" + name_text + " BETWEEN " + std::to_string(range.lowest) + " AND " +
               std::to_string(range.highest) + ")";
    }
    case ColumnType::date:
    case ColumnType::number:
        break;
    }
    return name_text + " REAL";
}

std::vector<std::string> TableLayout::create_statements() const
{
    std::string table = "CREATE TABLE " + quoted_name(name()) + " (";
    std::string separator;
    for (const ColumnDefinition& one : columns()) {
        table += separator + column_text(one);
        separator = ", ";
    }
    std::vector<std::string> rest;
    for (const IndexDefinition& index : indexes()) {
        // Index names are one namespace in a file, so the table's name stands before them.
        const std::string physical_name = quoted_name(name() + "_" + index.name);
        if (!index.primary)
            rest.push_back((index.unique ? "CREATE UNIQUE INDEX " : "CREATE INDEX ") + physical_name + " ON " +
                           quoted_name(name()) + " (" + quoted_name(index.column) + ")");
        else if (!m_automatic)
            table += ", CONSTRAINT " + physical_name + " PRIMARY KEY (" + quoted_name(index.column) + ")";
    }
    std::vector<std::string> statements{table + ") STRICT"};
    statements.insert(statements.end(), rest.begin(), rest.end());
    return statements;
}

} // namespace cuedrill::platform::sqlite
