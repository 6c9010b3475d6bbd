#include "store/param_rows.h"

#include "store/schema.h"

#include <utility>
#include <vector>

namespace cuedrill::store {
namespace {

using platform::Value;

void store_value(platform::Database& database, const std::string& key, const std::string& column, Value value)
{
    database.execute("Insert into params (param, " + column + ") values (?1, ?2) on conflict (param) do update set " +
                         column + "=excluded." + column,
                     {key, std::move(value)});
}

} // namespace

ParamRows read_param_rows(platform::Database& database, std::span<const std::string_view> keys)
{
    // The engine compares the keys, by the same rule by which it finds the row to be stored in.
    std::string sql = "With wanted (name) as (values ";
    std::vector<Value> values;
    for (const std::string_view key : keys) {
        sql += values.empty() ? "(?" : ", (?";
        values.emplace_back(std::string(key));
        sql += std::to_string(values.size()) + ")";
    }
    sql += ") Select name, date_value, string_value, number_value from wanted join params on param=name";
    ParamRows rows;
    for (const platform::Row row : database.query(sql, values))
        rows.insert_or_assign(
            std::get<std::string>(row.field(0)),
            ParamRow{.date_value = row.field(1), .string_value = row.field(2), .number_value = row.field(3)});
    return rows;
}

void store_number(platform::Database& database, const std::string& key, double number)
{
    store_value(database, key, "number_value", number);
}

void store_text(platform::Database& database, const std::string& key, const std::string& text)
{
    check_length("string_value", text);
    store_value(database, key, "string_value", text);
}

void store_date(platform::Database& database, const std::string& key, common::DateTime date)
{
    store_value(database, key, "date_value", date.day_number());
}

} // namespace cuedrill::store
