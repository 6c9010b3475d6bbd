#include "store/schema.h"

#include "common/text.h"

#include <cstddef>

namespace cuedrill::store {
namespace {

using platform::ColumnDefinition;
using platform::ColumnType;
using platform::TableDefinition;

constexpr int longest_key = 20;

ColumnDefinition column(const char* name, ColumnType type, int size = 0)
{
    return {.name = name, .type = type, .size = size, .auto_increment = false};
}

TableDefinition params_table()
{
    return {.name = "params",
            .columns = {column("param", ColumnType::text, longest_key), column("date_value", ColumnType::date),
                        column("string_value", ColumnType::text, longest_text),
                        column("number_value", ColumnType::number)},
            .indexes = {{.name = "PrimaryKey", .column = "param", .primary = true, .unique = true}}};
}

TableDefinition qa_table()
{
    return {.name = "qa",
            .columns = {{.name = "cnt", .type = ColumnType::long_integer, .size = 0, .auto_increment = true},
                        column("q", ColumnType::text, longest_text),
                        column("a", ColumnType::text, longest_text),
                        column("q_attempts", ColumnType::integer),
                        column("a_attempts", ColumnType::integer),
                        column("q_fails", ColumnType::integer),
                        column("a_fails", ColumnType::integer),
                        column("q_successes", ColumnType::integer),
                        column("a_successes", ColumnType::integer),
                        column("q_date_last_test", ColumnType::date),
                        column("a_date_last_test", ColumnType::date),
                        column("q_date_last_show", ColumnType::date),
                        column("a_date_last_show", ColumnType::date)},
            // Questions may repeat, as answers may: a row is known by its number alone.
            .indexes = {{.name = "PrimaryKey", .column = "cnt", .primary = true, .unique = true},
                        {.name = "q", .column = "q", .primary = false, .unique = false},
                        {.name = "a", .column = "a", .primary = false, .unique = false}}};
}

} // namespace

const std::vector<TableDefinition>& course_tables()
{
    static const std::vector<TableDefinition> tables{params_table(), qa_table()};
    return tables;
}

void check_length(std::string_view column, std::string_view text)
{
    // No text has more characters than bytes, so most need not be counted.
    const std::size_t length = text.size() > std::size_t{longest_text} ? common::code_points(text) : 0;
    if (length > std::size_t{longest_text})
        throw platform::DatabaseError(platform::DatabaseErrorKind::constraint, 0,
                                      "The text in column " + std::string(column) + " has " + std::to_string(length) +
                                          " characters; " + std::to_string(longest_text) + " fit.");
}

void create_params_table(platform::Database& database)
{
    database.append_table(params_table());
}

void create_qa_table(platform::Database& database)
{
    database.append_table(qa_table());
}

void create_course_db(platform::Database& database, const std::string& path)
{
    database.create(path);
    try {
        create_params_table(database);
        create_qa_table(database);
        database.finish_creation();
    } catch (...) {
        database.close();
        throw;
    }
}

} // namespace cuedrill::store
