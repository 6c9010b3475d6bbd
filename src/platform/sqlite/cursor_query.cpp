#include "platform/sqlite/cursor_query.h"

namespace cuedrill::platform::sqlite {
namespace {

std::string name_of(const TableLayout& layout, std::optional<std::size_t> column)
{
    return column ? quoted_name(layout.columns()[*column].name) : std::string(row_id_column);
}

std::string all_columns(const TableLayout& layout)
{
    std::string text = "SELECT ";
    for (const ColumnDefinition& column : layout.columns())
        text += quoted_name(column.name) + ", ";
    return text + row_id_column + " FROM " + quoted_name(layout.name());
}

} // namespace

std::string cursor_query_text(CursorQuery query, const TableLayout& layout, std::optional<std::size_t> key)
{
    const std::string select = all_columns(layout);
    const std::string where_key = " WHERE " + name_of(layout, key);
    const std::string tie = name_of(layout, layout.primary_column());
    const bool keys_repeat = key != layout.primary_column();
    const auto in_order = [&](const std::string& direction) {
        return " ORDER BY " + (keys_repeat ? name_of(layout, key) + direction + ", " : "") + tie + direction +
               " LIMIT 1";
    };
    const std::string forward = in_order("");
    const std::string backward = in_order(" DESC");
    switch (query) {
    case CursorQuery::by_row_id:
        return select + " WHERE " + row_id_column + " = ?1";
    case CursorQuery::first:
        return select + forward;
    case CursorQuery::last:
        return select + backward;
    case CursorQuery::equal:
        return select + where_key + " IS ?1" + forward;
    case CursorQuery::next_among_equal:
        return select + where_key + " IS ?1 AND " + tie + " > ?2" + forward;
    case CursorQuery::previous_among_equal:
        return select + where_key + " IS ?1 AND " + tie + " < ?2" + backward;
    case CursorQuery::first_greater:
        return select + where_key + " > ?1" + forward;
    case CursorQuery::last_less:
        return select + where_key + " < ?1" + backward;
    case CursorQuery::first_with_key:
        return select + where_key + " IS NOT NULL" + forward;
    case CursorQuery::last_without_key:
        break;
    }
    return select + where_key + " IS NULL" + backward;
}

} // namespace cuedrill::platform::sqlite
